#include "spreadsheet/WriteCells.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/CsvText.h"
#include "core/Globals.h"
#include "spreadsheet/Workbook.h"
#include "store/OneState.h"
#include "store/files/FileDoor.h"
#include "store/session/Session.h"
#include "worksheets/CellNames.h"

namespace zolmara {

namespace {

/// An entry that empties its cell is a blank, since an empty cell is no entry.
std::string EntryOf(const KeyedCell& cell) { return cell.Contents.empty() ? " " : cell.Contents; }

CellRef RefOf(const KeyedCell& cell) { return {cell.WorkSheet, cell.Row, NumberText(cell.Col)}; }

/// Cells in a file look the same whoever keyed them: somebody may have filled in or mended an
/// earlier one, so that the person is asked for every file that stands there.
bool IsNobodysOutput(std::string_view /*head*/) { return false; }

bool HoldsBreak(const std::string& text) {
    return text.find_first_of("\t\r\n") != std::string::npos;
}

// --- Text ------------------------------------------------------------------------------------

constexpr const char* kNoLine = "a line of text cannot hold its tab or line break";
constexpr const char* kNoQuotes =
    "a line of text cannot hold a quote beside a comma, a \"$\" or a blank at its end; write .csv "
    "or .xlsx";

/// Quotes let commas, "$" and blanks at the ends through.
bool NeedsQuotes(const std::string& text) {
    if (text.empty()) return false;
    return text.find_first_of("$,") != std::string::npos || text.front() == '"' ||
           text.front() == ' ' || text.back() == ' ';
}

class TextCells {
public:
    explicit TextCells(const std::string& path) : file_(path, IsNobodysOutput) {}

    void Take(const KeyedCell& cell) {
        const bool quoted = NeedsQuotes(cell.Contents);
        if (HoldsBreak(cell.Contents)) return Leave(cell, kNoLine);
        if (quoted && cell.Contents.find('"') != std::string::npos) return Leave(cell, kNoQuotes);
        const char* mark = quoted ? "\"" : "";
        file_.Write(fmt::format("{}\t{}\t{}\t{}{}{}\n", cell.WorkSheet, NumberText(cell.Row),
                                NumberText(cell.Col), mark, cell.Contents, mark));
    }
    void Put() { file_.Put(); }
    std::vector<LeftCell> Left() { return std::move(left_); }

private:
    void Leave(const KeyedCell& cell, const char* reason) {
        left_.push_back({RefOf(cell), cell.Contents, reason});
    }

    OutFile file_;
    std::vector<LeftCell> left_;
};

// --- Separated values ------------------------------------------------------------------------

class CsvCells {
public:
    explicit CsvCells(const std::string& path) : file_(path, IsNobodysOutput) {
        file_.Write("Worksheet,Line,Column,Contents\r\n");
    }
    void Take(const KeyedCell& cell) {
        file_.Write(fmt::format("{},{},{},{}\r\n", cell.WorkSheet, NumberText(cell.Row),
                                NumberText(cell.Col), CsvQuoted(Field(cell))));
    }
    void Put() { file_.Put(); }
    std::vector<LeftCell> Left() { return {}; }

private:
    /// An amount stays a number for whoever opens the file.
    static std::string Field(const KeyedCell& cell) {
        return cell.IsNumber ? cell.Contents : CsvMarked(EntryOf(cell));
    }
    OutFile file_;
};

// --- Workbook --------------------------------------------------------------------------------

class SheetCells {
public:
    explicit SheetCells(const std::string& path) : book_(path, true) {
        sheet_ = book_.AddSheet("Cells");
        worksheet_freeze_panes(sheet_, 1, 0);
        constexpr double kWidths[] = {12, 8, 8, 50};
        lxw_format* heading = book_.Format({.Bold = true, .Shaded = true});
        for (int i = 0; i < 4; ++i) {
            const auto column = static_cast<lxw_col_t>(i);
            worksheet_set_column(sheet_, column, column, kWidths[i], nullptr);
            PutText(sheet_, 0, i, kCellHeadings[i], heading);
        }
    }
    void Take(const KeyedCell& cell) {
        ++row_;
        PutText(sheet_, row_, 0, cell.WorkSheet);
        PutNumber(sheet_, row_, 1, cell.Row.ToDouble());
        PutNumber(sheet_, row_, 2, cell.Col.ToDouble());
        if (cell.IsNumber)
            PutNumber(sheet_, row_, 3, NumOr(Variant(cell.Contents)));
        else
            PutText(sheet_, row_, 3, EntryOf(cell));
    }
    void Put() { book_.Put(); }
    std::vector<LeftCell> Left() { return {}; }

private:
    Workbook book_;
    lxw_worksheet* sheet_ = nullptr;
    lxw_row_t row_ = 0;
};

template <class Target>
std::vector<LeftCell> Write(const std::string& path) {
    std::vector<LeftCell> left;
    RunInOneState(gDB, path, [&](const OneState& state) {
        Target target(path);
        left = WalkKeyedCells([&](const KeyedCell& cell) { target.Take(cell); });
        for (LeftCell& cell : target.Left()) left.push_back(std::move(cell));
        state.NeedToHold(path);
        target.Put();
    });
    return left;
}

}  // namespace

std::vector<LeftCell> WriteCells(const std::string& path) {
    const std::string extension = LCase(std::filesystem::path(path).extension().string());
    for (const char* other : {".ods", ".xlsm", ".xls"})
        if (extension == other)
            throw StoreError(StoreError::Kind::Other,
                             path + ": cells are written to .txt, .csv or .xlsx");
    if (extension == ".xlsx") return Write<SheetCells>(path);
    if (extension == ".csv") return Write<CsvCells>(path);
    return Write<TextCells>(path);
}

}  // namespace zolmara
