#pragma once

// What stands above the columns of every sheet: the head of the printed form.

#include <string>
#include <vector>

#include "spreadsheet/Workbook.h"

namespace zolmara {

struct SheetHead {
    std::vector<std::string> Lines;  ///< of the home office, the same on every sheet

    /// The rows above the first line: the head, the worksheet's name, a blank row, the numbers and
    /// the titles of the columns.
    int Rows() const { return static_cast<int>(Lines.size()) + kOwnRows; }
    int NumberRow() const { return Rows() - 2; }  ///< from 0
    int TitleRow() const { return Rows() - 1; }

private:
    static constexpr int kOwnRows = 4;
};

/// Name, number and period of the home office, and its own header lines.
SheetHead ReadSheetHead();

/// The columns that a sheet of several pages across has on each. A text that flows over into the
/// columns behind them would be cut off at another page's.
struct HeadRoom {
    int Columns = 0;        ///< 0 on a sheet of one page across
    double Characters = 0;  ///< the width of those that are shown
};

/// The lines that the longest text of the head would take in room so wide.
int HeadLines(const SheetHead& head, const std::string& title, double characters);

/// Writes them with the worksheet's name as the form calls it.
void WriteSheetHead(Workbook& book, lxw_worksheet* sheet, const SheetHead& head,
                    const std::string& title, const HeadRoom& room);

}  // namespace zolmara
