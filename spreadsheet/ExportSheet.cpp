#include "spreadsheet/ExportSheet.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "core/Globals.h"
#include "spreadsheet/PassingRows.h"
#include "spreadsheet/SheetPage.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/SheetNames.h"
#include "worksheets/SheetTitles.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

std::string TitleOf(const std::string& item) {
    if (FindWorksheet(item) == nullptr)
        return item == "ES" ? "Pooled Allocation Statistical Basis" : "Cost Centers";
    return fmt::format("Worksheet {}: {}", PrintedName(item), SheetTitle(item));
}

/// A description that may come to nothing shows nothing then; any other shows 0.
bool MayBeEmpty(const Node& node) {
    if (node.Kind == NodeKind::Closed) return MayBeEmpty(node.Group->Share);
    return node.Kind == NodeKind::UnlessZero || node.Kind == NodeKind::Name;
}

}  // namespace

ExportSheet::ExportSheet(Workbook& book, const SheetLayout& layout, const SheetHead& head,
                         Formulas* formulas)
    : book_(book),
      layout_(layout),
      head_(head),
      formulas_(formulas),
      sheet_(book.AddSheet(layout.Item)),
      form_(*DescribeForm(FormMode::View, layout.Item == "CostCenters" ? "CCs" : layout.Item)) {
    for (const std::string& field : layout.Fields) {
        const int column = form_.ColumnOf(field);
        const FormColumn shown = form_.Columns.at(static_cast<std::size_t>(column));
        const std::string format = shown.IsNumber() ? shown.NumberFormat : "@";
        columns_.push_back(
            {shown, ColumnRules(layout.Item, field),
             book.Format(
                 {.NumberFormat = format, .Wrap = shown.Wrap, .Indented = !shown.IsNumber()})});
    }
}

void ExportSheet::Write() {
    SetUpPage();
    WriteSheetHead(book_, sheet_, head_, TitleOf(layout_.Item), RoomOfHead());
    WriteHeadings();
    const lxw_row_t last = WriteRows();
    worksheet_print_area(sheet_, 0, 0, last, LastPrintedColumn());
    if (formulas_ != nullptr && !layout_.Closed.empty()) WriteHelpers();
}

void ExportSheet::SetUpPage() {
    constexpr std::uint8_t kLetter = 1;
    const auto frozen = static_cast<lxw_col_t>(form_.FrozenColumns);
    const bool landscape = IsLandscape(layout_.Item);
    const auto across = static_cast<std::uint16_t>(PagesAcross(form_, landscape));
    if (landscape) worksheet_set_landscape(sheet_);
    worksheet_set_paper(sheet_, kLetter);
    worksheet_fit_to_pages(sheet_, across, 0);
    worksheet_repeat_rows(sheet_, 0, static_cast<lxw_row_t>(head_.TitleRow()));
    if (frozen > 0) worksheet_repeat_columns(sheet_, 0, static_cast<lxw_col_t>(frozen - 1));
    worksheet_freeze_panes(sheet_, static_cast<lxw_row_t>(head_.Rows()), frozen);
    worksheet_set_footer(sheet_, "&L&A&RPage &P of &N");
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const FormColumn& shown = columns_[i].Shown;
        lxw_row_col_options options = {};
        options.hidden = shown.Hidden ? LXW_TRUE : LXW_FALSE;
        const auto column = static_cast<lxw_col_t>(i);
        worksheet_set_column_opt(sheet_, column, column, CharactersOf(shown), nullptr, &options);
    }
}

HeadRoom ExportSheet::RoomOfHead() const {
    HeadRoom room;
    if (PagesAcross(form_, IsLandscape(layout_.Item)) == 1) return room;
    for (; room.Columns < form_.FrozenColumns; ++room.Columns) {
        const FormColumn& shown = columns_[static_cast<std::size_t>(room.Columns)].Shown;
        if (!shown.Hidden) room.Characters += CharactersOf(shown);
    }
    return room;
}

/// A word that is longer than its column, or does not fit behind the others, takes a line more.
double ExportSheet::TitleHeight() const {
    int lines = 1;
    for (const Column& column : columns_) {
        const std::string title = Replace(column.Shown.Title, "|", "\n");
        const int told = LinesIn(title, CharactersOf(column.Shown));
        lines = std::max(lines, told > 1 ? told + 1 : told);
    }
    return kLineHeight * lines;
}

/// Spreadsheets do not all make room for texts of several lines when they open a file.
void ExportSheet::SetHeight(lxw_row_t row, const PassingRows& cells) {
    int lines = 1;
    for (int i = 0; i < cells.FieldCount(); ++i) {
        const FormColumn& shown = columns_[static_cast<std::size_t>(i)].Shown;
        if (shown.Wrap && !shown.IsNumber() && !shown.Hidden)
            lines = std::max(lines, LinesIn(Text(cells[i]), CharactersOf(shown)));
    }
    if (lines > 1) worksheet_set_row(sheet_, row, kLineHeight * lines, nullptr);
}

void ExportSheet::WriteHeadings() {
    lxw_format* heading =
        book_.Format({.Bold = true, .Wrap = true, .Centered = true, .Shaded = true});
    const auto numbers = static_cast<lxw_row_t>(head_.NumberRow());
    const auto titles = static_cast<lxw_row_t>(head_.TitleRow());
    for (std::size_t i = 0; i < columns_.size(); ++i)
        PutText(sheet_, numbers, static_cast<int>(i), columns_[i].Shown.Number, heading);
    worksheet_set_row(sheet_, titles, TitleHeight(), nullptr);
    for (std::size_t i = 0; i < columns_.size(); ++i)
        PutText(sheet_, titles, static_cast<int>(i), Replace(columns_[i].Shown.Title, "|", "\n"),
                heading);
}

/// The head of a sheet of one page across flows over into empty columns behind the last one; they
/// go on the paper with it.
lxw_col_t ExportSheet::LastPrintedColumn() const {
    constexpr double kUsualColumn = 8.43;
    const HeadRoom wrapped = RoomOfHead();
    double room = 0;
    for (const Column& column : columns_)
        if (!column.Shown.Hidden) room += CharactersOf(column.Shown);
    auto last = static_cast<lxw_col_t>(columns_.size() - 1);
    if (wrapped.Columns > 0) return last;
    for (; HeadLines(head_, TitleOf(layout_.Item), room) > 1; room += kUsualColumn) ++last;
    return last;
}

/// Gives the last row that is written: the titles' where there is no line.
lxw_row_t ExportSheet::WriteRows() {
    PassingRows rows(layout_.Item, layout_.Fields.front(), layout_.Lines);
    auto row = static_cast<lxw_row_t>(layout_.FirstRow - 1);
    for (; !rows.Eof(); rows.MoveNext(), ++row) {
        const Currency line = rows.Line();
        if (formulas_ != nullptr) formulas_->Cells.Pass(line);
        SetHeight(row, rows);
        for (int column = 0; column < rows.FieldCount(); ++column)
            WriteCell(row, column, line, rows[column]);
    }
    return row - 1;
}

void ExportSheet::WriteCell(lxw_row_t row, int column, Currency line, const Variant& value) {
    const Column& told = columns_[static_cast<std::size_t>(column)];
    const CellDescription* rule = formulas_ == nullptr ? nullptr : told.Rules.On(line);
    if (rule != nullptr) return WriteFormula(row, column, *rule, line, value);
    if (value.IsNumber())
        PutNumber(sheet_, row, column, value.Number(), told.Format);
    else if (!value.IsNull())
        PutText(sheet_, row, column, Text(value), told.Format);
}

void ExportSheet::WriteFormula(lxw_row_t row, int column, const CellDescription& rule,
                               Currency line, const Variant& value) {
    const Column& told = columns_[static_cast<std::size_t>(column)];
    const auto place = static_cast<lxw_col_t>(column);
    const auto formula = formulas_->Writer.Of(
        rule, layout_, {layout_.Item, line, layout_.Fields[static_cast<std::size_t>(column)]});
    if (formula && (value.IsNumber() || (value.IsNull() && !MayBeEmpty(rule.Formula))))
        worksheet_write_formula_num(sheet_, row, place, ("=" + *formula).c_str(), told.Format,
                                    NumOr(value));
    else if (formula)
        worksheet_write_formula_str(
            sheet_, row, place, ("=" + *formula).c_str(),
            book_.Format(
                {.NumberFormat = told.Shown.NumberFormat, .AtTop = true, .Indented = true}),
            SheetText(Text(value)).c_str());
    else if (value.IsNumber())
        PutNumber(sheet_, row, column, value.Number(), told.Format);
    else
        PutText(sheet_, row, column, Text(value), told.Format);
}

// --- Helper cells ----------------------------------------------------------------------------

/// Hidden rows below the lines. A column with two closings has two sets of them.
void ExportSheet::WriteHelpers() {
    int last = 0;
    for (const ClosedColumn& column : layout_.Closed)
        last = std::max(last, column.FirstHelper + kHelpers - 1);
    lxw_row_col_options hidden = {};
    hidden.hidden = LXW_TRUE;
    for (int row = layout_.FirstHelper; row <= last; ++row) {
        const auto place = static_cast<lxw_row_t>(row - 1);
        worksheet_set_row_opt(sheet_, place, LXW_DEF_ROW_HEIGHT, nullptr, &hidden);
        const auto helper = static_cast<Helper>((row - layout_.FirstHelper) % kHelpers);
        PutText(sheet_, place, 0, FormulaWriter::NameOf(helper));
        for (const ClosedColumn& column : layout_.Closed) {
            const int offset = row - column.FirstHelper;
            if (offset >= 0 && offset < kHelpers)
                WriteHelper(place, column, helper, formulas_->Helpers.Of(column, helper));
        }
    }
}

void ExportSheet::WriteHelper(lxw_row_t row, const ClosedColumn& column, Helper helper,
                              double result) {
    const auto formula = formulas_->Writer.OfHelper(helper, column, layout_);
    if (!formula) return;
    const auto place = static_cast<lxw_col_t>(column.Column);
    if (formula->IsArray)
        worksheet_write_array_formula_num(sheet_, row, place, row, place,
                                          fmt::format("{{={}}}", formula->Text).c_str(), nullptr,
                                          result);
    else
        worksheet_write_formula_num(sheet_, row, place, ("=" + formula->Text).c_str(), nullptr,
                                    result);
}

}  // namespace zolmara
