#pragma once

// One formula on its way from nodes to text.

#include <string>
#include <vector>

#include "spreadsheet/BookLayout.h"

namespace zolmara {

class FormulaDraft {
public:
    /// Raised where a formula reads a sheet that the workbook lacks, or a node that spreadsheets
    /// have no words for: the cell is then written as a value.
    struct CannotWrite {};

    /// Stands in the text for the number of the own row.
    static constexpr char kOwnRow = '\x01';

    FormulaDraft(const BookLayout& layout, CellSource& cells, const SheetLayout& sheet, CellRef own)
        : layout_(layout), cells_(cells), sheet_(sheet), own_(std::move(own)) {}

    /// The node's value on the own line.
    std::string Scalar(const Node& node);
    /// The shares of a closing on its rows of this sheet, and what the largest is sought by.
    std::string Shares(const Closing& group, const RowSpan& rows);
    std::string Sizes(const Closing& group, const RowSpan& rows);

    /// True where the text holds for every line of the column, the own row filled in.
    bool SameOnEveryLine() const { return sameOnEveryLine_; }

private:
    std::string Reference(const Place& place);
    std::string RowText(const Place& place, const SheetLayout& target, int row);
    std::string RangeOf(const Place& place);
    std::string Terms(const Node& node);
    std::string ColumnTerms(const Node& node);
    std::string RowTerms(const Node& node);
    std::string Posted(const EntrySource& source);
    std::string Difference(const std::vector<Node>& parts);
    std::string Name(const Place& place);
    std::string Kept(const Node& node);
    std::string Rounded(const std::string& value, int digits) const;
    std::string ClosedShare(const Closing& group);
    const SheetLayout& Sheet(const std::string& item) const;

    const BookLayout& layout_;
    CellSource& cells_;
    const SheetLayout& sheet_;
    CellRef own_;
    bool sameOnEveryLine_ = true;
    const RowSpan* array_ = nullptr;  ///< own lines stand for these rows
};

}  // namespace zolmara
