#include "spreadsheet/SheetLines.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "forms/CellRoads.h"
#include "forms/PasteText.h"
#include "spreadsheet/SheetDates.h"

namespace zolmara {

namespace {

/// Headings that name the same, without regard to case, by the order of ImportField.
constexpr std::string_view kHeadings[][4] = {{"Worksheet", "Sheet", "Item", "Table"},
                                             {"Line", "Row", "Line #", "Line Number"},
                                             {"Column", "Col", "Col #", "Column Number"},
                                             {"Contents", "Value", "Amount", "Entry"}};
constexpr std::int64_t kRowsToSearch = 100;

constexpr std::string_view kErrorValue =
    "The cell holds an error instead of a value in ASCII Import line: ";
constexpr std::string_view kNoResult =
    "The cell holds a formula without its result in ASCII Import line: ";
constexpr std::string_view kMergedCells =
    "Merged cells hold one value for several lines; take them apart in ASCII Import line: ";

constexpr std::string_view kErrorTexts[] = {"#VALUE!", "#REF!", "#DIV/0!", "#N/A",
                                            "#NAME?",  "#NUM!", "#NULL!"};

bool IsError(const SheetCell& cell) {
    return cell.Kind == SheetCellKind::Error ||
           std::ranges::find(kErrorTexts, Trim(cell.Text)) != std::end(kErrorTexts);
}

std::string KeptDate(const std::string& text) {
    const auto date = DateOf(Variant(PlainText(text)));
    return date ? FormatDate(*date, "mm/dd/yyyy") : PlainText(text);
}

/// A date that a workbook keeps as a number, in years that the form can speak of.
std::string DateOfNumber(const std::string& text) {
    const std::string date = DateOfSerial(Val(text));
    return date.empty() || !IsValidDate(Variant(date)) ? text : KeptDate(date);
}

std::string AnswerOf(const SheetCell& cell) {
    if (cell.Kind != SheetCellKind::Truth) return PlainText(cell.Text);
    return cell.Text == "TRUE" ? "Yes" : "No";
}

/// What a cell says, in the form in which the CRF keeps it.
std::string Meaning(const SheetCell& cell, ContentKind kind) {
    const bool isNumber = cell.Kind == SheetCellKind::Number;
    switch (kind) {
        case ContentKind::Amount:
            return PlainNumber(cell.Text);
        case ContentKind::Date:
            return isNumber || ParseNumber(cell.Text) ? DateOfNumber(cell.Text)
                                                      : KeptDate(cell.Text);
        case ContentKind::Answer:
            return AnswerOf(cell);
        case ContentKind::Text:
        case ContentKind::Unknown:
            break;
    }
    return cell.Kind == SheetCellKind::Date ? KeptDate(cell.Text) : PlainText(cell.Text);
}

std::string TextOf(const SheetCell* cell) { return cell == nullptr ? "" : PlainText(cell->Text); }

}  // namespace

SheetLines::SheetLines(const std::string& path, SheetFileKind kind, const SheetLimits& limits)
    : path_(path), process_(path, kind, limits) {}

bool SheetLines::Next(ImportLine& line) {
    while (auto row = process_.Next()) {
        auto found = LineOf(*row);
        if (!found) continue;
        line = std::move(*found);
        return true;
    }
    EndSheet();
    return false;
}

std::string SheetLines::Failure() const {
    if (!process_.Failure().empty())
        return fmt::format("The import file {} cannot be read: {}.  Nothing was imported.", path_,
                           process_.Failure());
    if (anyHeadings_) return {};
    return fmt::format(
        "The import file {} has no sheet with the headings Worksheet, Line, Column and Contents.  "
        "Nothing was imported.",
        path_);
}

std::vector<std::string> SheetLines::Notes() const {
    std::vector<std::string> notes;
    if (!anyHeadings_) return notes;
    for (const std::string& name : passedOver_)
        notes.push_back(fmt::format(
            "Sheet {} was passed over: it has no headings Worksheet, Line, Column and Contents.",
            name));
    return notes;
}

void SheetLines::BeginSheet(const std::string& name) {
    EndSheet();
    sheet_ = Sheet{};
    sheet_->Name = name;
}

void SheetLines::EndSheet() {
    if (sheet_ && sheet_->HeadingRow == 0 && sheet_->Rows > 0) passedOver_.push_back(sheet_->Name);
    sheet_.reset();
}

/// True where the row is that of the headings.
bool SheetLines::TakeHeadings(const SheetRow& row) {
    Columns places = {-1, -1, -1, -1};
    for (const SheetCell& cell : row.Cells)
        for (std::size_t i = 0; i < kFields; ++i)
            for (const std::string_view heading : kHeadings[i])
                if (places[i] < 0 && SameText(PlainText(cell.Text), heading))
                    places[i] = cell.Column;
    if (std::ranges::find(places, -1) != places.end()) return false;
    sheet_->Places = places;
    sheet_->HeadingRow = row.Row;
    anyHeadings_ = true;
    return true;
}

std::optional<ImportLine> SheetLines::LineOf(const SheetRow& row) {
    if (!sheet_ || sheet_->Name != row.Sheet) BeginSheet(row.Sheet);
    if (!row.Merged.empty()) return Merged(row);
    ++sheet_->Rows;
    if (sheet_->HeadingRow == 0) {
        if (sheet_->Rows <= kRowsToSearch) TakeHeadings(row);
        return std::nullopt;
    }
    Cells cells = {};
    for (const SheetCell& cell : row.Cells)
        for (std::size_t i = 0; i < kFields; ++i)
            if (cell.Column == sheet_->Places[i]) cells[i] = &cell;
    if (cells.back() == nullptr) return std::nullopt;
    return CheckedLine(row, cells);
}

std::string SheetLines::PlaceOf(const SheetRow& row, ImportField field) const {
    return CellAddressOf(row.Sheet, sheet_->Places[static_cast<std::size_t>(field)], row.Row);
}

std::optional<ImportLine> SheetLines::CheckedLine(const SheetRow& row, const Cells& cells) const {
    std::string contents = TextOf(cells[3]);
    const std::string texts[] = {TextOf(cells[0]), PlainNumber(TextOf(cells[1])),
                                 PlainNumber(TextOf(cells[2]))};
    ImportField wrong = ImportField::Contents;
    ImportLine line = CheckImportLine({texts[0], texts[1], texts[2], contents}, wrong);
    if (line.Complaint.empty()) {
        wrong = ImportField::Contents;
        line.Contents = Meaning(*cells[3], ContentOf(line.WorkSheet, line.Row, line.Col));
    }
    for (std::size_t i = 0; i < kFields; ++i) {
        if (cells[i] == nullptr) continue;
        if (IsError(*cells[i])) line.Complaint = kErrorValue;
        if (cells[i]->Kind == SheetCellKind::Formula) line.Complaint = kNoResult;
        if (line.Complaint != kErrorValue && line.Complaint != kNoResult) continue;
        wrong = static_cast<ImportField>(i);
        break;
    }
    line.Origin = PlaceOf(row, wrong);
    line.Echo = fmt::format("{}: {}", line.Origin, line.Echo);
    return line;
}

namespace {

struct CellRange {
    std::int64_t FirstRow = 0, LastRow = 0;
    int FirstColumn = 0, LastColumn = 0;
};

/// "A2:B5"; nothing for what is no range.
std::optional<CellRange> RangeOf(std::string_view text) {
    CellRange range;
    const auto take = [&](std::int64_t& row, int& column) {
        column = -1;
        while (!text.empty() && text.front() >= 'A' && text.front() <= 'Z' &&
               column < kMaxSheetColumns) {
            column = (column + 1) * 26 + (text.front() - 'A');
            text.remove_prefix(1);
        }
        row = static_cast<std::int64_t>(Val(text.substr(0, text.find(':'))));
        return row > 0 && column >= 0;
    };
    if (!take(range.FirstRow, range.FirstColumn)) return std::nullopt;
    text.remove_prefix(std::min(text.find(':'), text.size() - 1) + 1);
    if (!take(range.LastRow, range.LastColumn)) return std::nullopt;
    return range;
}

}  // namespace

/// Below the headings a merged cell hides what stands under it.
std::optional<ImportLine> SheetLines::Merged(const SheetRow& row) const {
    const auto range = RangeOf(row.Merged);
    if (sheet_->HeadingRow == 0 || !range || range->LastRow <= sheet_->HeadingRow)
        return std::nullopt;
    const bool touches = std::ranges::any_of(sheet_->Places, [&](int column) {
        return Between(column, range->FirstColumn, range->LastColumn);
    });
    if (!touches) return std::nullopt;
    ImportLine line;
    line.Complaint = kMergedCells;
    line.Echo = row.Sheet + "!" + row.Merged;
    return line;
}

}  // namespace zolmara
