#include "spreadsheet/FindingsSheet.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "editchecks/modEditChecks.h"
#include "forms/CellAddress.h"
#include "forms/FindingTarget.h"
#include "spreadsheet/Export.h"
#include "store/session/Session.h"
#include "worksheets/SheetNames.h"

namespace zolmara {

namespace {

constexpr const char* kHeadings[] = {"Level", "Code", "Message", "Cell"};
constexpr double kWidths[] = {18, 8, 100, 26};
/// A sheet takes no more links.
constexpr lxw_row_t kMaxLinks = 65000;

/// The cell that a finding speaks of, as a link inside the workbook; empty without one.
struct Link {
    std::string Place;
    std::string Text;
};
Link LinkOf(const std::string& message, const BookLayout& layout) {
    const auto target = TargetOf(message);
    const SheetLayout* sheet = target ? layout.Find(target->Item) : nullptr;
    if (sheet == nullptr) return {};
    int row = target->Line ? sheet->RowOf(*target->Line) : 0;
    int column = 0;
    if (const auto field = FieldOfColumn(target->Item, target->Column))
        column = sheet->ColumnOf.at(*field);
    std::string text = PrintedName(target->Item);
    if (row != 0) text += ", line " + NumberText(*target->Line);
    if (row == 0) row = sheet->FirstRow;
    return {fmt::format("internal:'{}'!{}{}", sheet->Item, ColumnLetters(column), row), text};
}

void WriteHeadings(Workbook& book, lxw_worksheet* sheet) {
    lxw_format* heading = book.Format({.Bold = true, .Shaded = true});
    for (int i = 0; i < 4; ++i) {
        const auto column = static_cast<lxw_col_t>(i);
        worksheet_set_column(sheet, column, column, kWidths[i], nullptr);
        PutText(sheet, 0, i, kHeadings[i], heading);
    }
    worksheet_freeze_panes(sheet, 1, 0);
    worksheet_repeat_rows(sheet, 0, 0);
    worksheet_set_landscape(sheet);
    worksheet_fit_to_pages(sheet, 1, 0);
}

}  // namespace

void WriteFindings(Workbook& book, const BookLayout& layout) {
    if (!gDB.HasTable("Error")) return;
    Recordset rows =
        gDB.OpenRecordset("SELECT Level, Code, Message FROM Error WHERE Level In(?,?);",
                          {kNonFatalError, kPotentialError}, dbOpenSnapshot);
    if (rows.Eof()) return;
    lxw_worksheet* sheet = book.AddSheet(kFindingsSheet);
    WriteHeadings(book, sheet);
    lxw_format* wrapped = book.Format({.Wrap = true});
    lxw_format* linked = book.Format({.Link = true});
    for (lxw_row_t row = 1; !rows.Eof(); rows.MoveNext(), ++row) {
        PutText(sheet, row, 0, Text(rows[0]));
        PutText(sheet, row, 1, Text(rows[1]));
        PutText(sheet, row, 2, Text(rows[2]), wrapped);
        const Link link = LinkOf(Text(rows[2]), layout);
        if (link.Place.empty() || row > kMaxLinks) continue;
        worksheet_write_url_opt(sheet, row, 3, link.Place.c_str(), linked, link.Text.c_str(),
                                nullptr);
    }
}

}  // namespace zolmara
