#include "forms/FormColumns.h"

#include <fmt/format.h>

#include <map>

#include "core/Globals.h"
#include "forms/CellRules.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/ColumnCaption.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

constexpr int kLineWidth = 650;
constexpr int kNumberWidth = 1400;
constexpr int kNameWidth = 3300;
constexpr int kComponentNumberWidth = 1100;

/// Characters from which a text field takes the width of a name.
constexpr int kShortText = 16;

constexpr std::string_view kLineFormat = "##0.00";
constexpr std::string_view kMoneyFormat = "#,##0;(#,##0)";
constexpr std::string_view kScheduleFormat = "#,###,###,##0;(#,###,###,##0)";

/// The headings of the cost centers' columns, by line.
using Headings = std::map<Currency, std::string>;

/// The three labels that the cost center's column was given, or else its name; on the schedules
/// of statistics the words of the basis ahead of them.
std::string Heading(const Recordset& row, bool withBasis) {
    std::string labels;
    for (const std::string_view field : {"ColLabel1", "ColLabel2", "ColLabel3"}) {
        const std::string label(Trim(StrOr(row[field])));
        if (!label.empty()) labels += (labels.empty() ? "" : "|") + label;
    }
    const Variant name = labels.empty() ? row["CCName"] : Variant(labels);
    return CostCenterTitle(name, row["StatLabel1"], row["StatLabel2"], withBasis);
}

Headings ReadHeadings(std::string_view table) {
    Headings headings;
    auto rows = gDB.OpenRecordset("SELECT * FROM CostCenters ORDER BY LineNum", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        headings[CurOr(rows["LineNum"])] = Heading(rows, ShowsBasis(table));
    return headings;
}

/// What a worksheet's unit says of its fields, by name in lower case.
using SheetFields = std::map<std::string, WorksheetField>;

SheetFields ReadSheetFields(std::string_view table) {
    SheetFields fields;
    if (const Worksheet* sheet = FindWorksheet(table))
        for (const WorksheetField& field : sheet->FixedFields(table))
            fields[LCase(field.Name)] = field;
    return fields;
}

class ColumnMaker {
public:
    ColumnMaker(const FormSpec& spec, const std::string& table, FormMode mode)
        : spec_(spec), table_(table), mode_(mode), fields_(ReadSheetFields(table)) {}

    std::vector<FormColumn> Make() {
        std::vector<FormColumn> columns;
        for (const FieldDef& field : gDB.Table(table_).Fields)
            columns.push_back(Column(field, columns.empty()));
        return columns;
    }

private:
    FormColumn Column(const FieldDef& field, bool isKey) {
        FormColumn column;
        column.Field = field.Name;
        column.Type = field.Type;
        column.Size = field.Size;
        column.Identity = isKey || SameText(field.Name, "Description") ||
                          SameText(field.Name, "CCName") || SameText(field.Name, "Col_0");
        column.Align = column.IsNumber() ? CellAlign::Right : CellAlign::Left;
        SetLooks(column, isKey);
        SetHeading(column);
        SetLocks(column);
        return column;
    }

    void SetLooks(FormColumn& column, bool isKey) const {
        const ColumnSpec* spec = FindColumnSpec(table_, column.Field);
        if (column.IsNumber())
            column.NumberFormat = isKey                           ? kLineFormat
                                  : spec_.ViewName.ends_with("x") ? kScheduleFormat
                                                                  : kMoneyFormat;
        column.Width = isKey                             ? kLineWidth
                       : column.IsNumber()               ? kNumberWidth
                       : SameText(column.Field, "Col_0") ? kComponentNumberWidth
                       : column.Size <= kShortText       ? kNumberWidth
                                                         : kNameWidth;
        column.Wrap = !column.IsNumber() && column.Width >= kNameWidth;
        if (spec == nullptr) return;
        if (spec->Width > 0) column.Width = spec->Width;
        if (!spec->NumberFormat.empty()) column.NumberFormat = spec->NumberFormat;
        column.Hidden = spec->Hidden;
    }

    void SetHeading(FormColumn& column) {
        if (IsCostCenterColumn(column.Field)) return SetCostCenterHeading(column);
        const ColumnSpec* spec = FindColumnSpec(table_, column.Field);
        const auto field = fields_.find(LCase(column.Field));
        if (field != fields_.end()) column.Title = field->second.Title;
        if (SameText(LeftText(column.Field, 4), "Col_") && !SameText(column.Field, "Col_0"))
            column.Number = column.Field.substr(4);
        if (spec == nullptr) return;
        if (!spec->Title.empty()) column.Title = spec->Title;
        if (mode_ == FormMode::Edit && !spec->EditTitle.empty()) column.Title = spec->EditTitle;
        if (!spec->Number.empty()) column.Number = spec->Number;
    }

    void SetCostCenterHeading(FormColumn& column) {
        if (headings_.empty()) headings_ = ReadHeadings(table_);
        const Currency line = LineOfColumn(column.Field);
        const auto heading = headings_.find(line);
        column.Number = NumberText(line);
        column.Title = heading == headings_.end() ? "<Bad CC Num>" : heading->second;
    }

    void SetLocks(FormColumn& column) const {
        // A field without a meaning in this part has no title; S-1 Part I has its titles by line.
        const bool unused = column.Title.empty() && !SameText(table_, "S1p1");
        if (unused) column.Hidden = true;
        if (mode_ == FormMode::View) return;
        column.Locked = !IsKeyed(column.Field);
        column.HasList = !column.Locked && !ListOf(table_, column.Field).Entries.empty();
        if (column.Locked && !column.Identity && IsHiddenInEdit(column.Field)) column.Hidden = true;
    }

    bool IsKeyed(const std::string& field) const {
        const auto fixed = fields_.find(LCase(field));
        if (fixed != fields_.end() && fixed->second.Kind == CellKind::Computed) return false;
        return IsKeyedField(table_, field);
    }

    bool IsHiddenInEdit(const std::string& field) const {
        if (spec_.Locked == LockedColumns::Hidden) return true;
        return spec_.Locked == LockedColumns::TotalHidden && !IsCostCenterColumn(field);
    }

    const FormSpec& spec_;
    const std::string& table_;
    FormMode mode_;
    SheetFields fields_;
    Headings headings_;
};

}  // namespace

std::vector<FormColumn> FormColumns(const FormSpec& spec, const std::string& table, FormMode mode) {
    return ColumnMaker(spec, table, mode).Make();
}

}  // namespace zolmara
