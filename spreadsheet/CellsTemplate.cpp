#include "spreadsheet/CellsTemplate.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "forms/CellRoads.h"
#include "forms/CellRules.h"
#include "forms/WorksheetForm.h"
#include "spreadsheet/KeyedCells.h"
#include "spreadsheet/Workbook.h"
#include "spreadsheet/WriteCells.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

constexpr int kContents = 3;
constexpr const char* kHeadings[] = {kCellHeadings[0], kCellHeadings[1], kCellHeadings[2],
                                     kCellHeadings[3], "Name",           "Title"};
constexpr double kWidths[] = {12, 8, 8, 24, 50, 50};

class TemplateSheet {
public:
    TemplateSheet(Workbook& book, const std::string& table)
        : book_(book),
          table_(table),
          roads_(table),
          form_(*DescribeForm(FormMode::Edit, table == "CostCenters" ? "CCs" : table)) {}

    /// The sheet is made with its first cell; one without any is none.
    void Write() {
        Recordset rows = gDB.OpenRecordset(
            fmt::format("SELECT * FROM [{}] ORDER BY {};", table_, form_.Key), dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext())
            for (int i = 1; i < rows.FieldCount(); ++i) WriteCell(rows, i);
    }

private:
    void WriteCell(const Recordset& row, int field) {
        const Currency line = CurOr(row[0]);
        const auto column = roads_.ColumnOf(field, line);
        if (!column || !IsCellOpen(table_, line, row.FieldName(field))) return;
        if (sheet_ == nullptr) Begin();
        const FormColumn& shown =
            form_.Columns.at(static_cast<std::size_t>(form_.ColumnOf(row.FieldName(field))));
        ++row_;
        PutText(sheet_, row_, 0, ImportNameOf(table_));
        PutNumber(sheet_, row_, 1, line.ToDouble());
        PutNumber(sheet_, row_, 2, column->ToDouble());
        PutText(sheet_, row_, kContents, "", ToKey(shown));
        PutText(sheet_, row_, 4, NameOf(row));
        PutText(
            sheet_, row_, 5,
            Replace(TitleOnRow(form_, BeginRow(form_, line), form_.ColumnOf(row.FieldName(field))),
                    "|", " "));
    }

    lxw_format* ToKey(const FormColumn& shown) {
        return book_.Format(
            {.NumberFormat = shown.IsNumber() ? shown.NumberFormat : "@", .Unlocked = true});
    }

    /// What says which row it is, beside the line number.
    std::string NameOf(const Recordset& row) const {
        std::string name;
        for (const FormColumn& column : form_.Columns)
            if (column.Identity && !SameText(column.Field, form_.Key))
                name += (name.empty() ? "" : " ") + Text(row[column.Field]);
        return name;
    }

    void Begin() {
        sheet_ = book_.AddSheet(table_);
        worksheet_freeze_panes(sheet_, 1, 0);
        worksheet_protect(sheet_, nullptr, nullptr);
        lxw_format* heading = book_.Format({.Bold = true, .Shaded = true});
        for (int i = 0; i < 6; ++i) {
            const auto column = static_cast<lxw_col_t>(i);
            worksheet_set_column(sheet_, column, column, kWidths[i], nullptr);
            PutText(sheet_, 0, i, kHeadings[i], heading);
        }
    }

    Workbook& book_;
    const std::string& table_;
    TableRoads roads_;
    WorksheetForm form_;
    lxw_worksheet* sheet_ = nullptr;
    lxw_row_t row_ = 0;
};

}  // namespace

void WriteCellsTemplate(const std::string& path) {
    NeedWorkbookName(path);
    Workbook book(path, true);
    for (const std::string& table : KeyedTables())
        if (gDB.HasTable(table)) TemplateSheet(book, table).Write();
    book.Put();
}

}  // namespace zolmara
