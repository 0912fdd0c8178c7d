#include "worksheets/SheetStates.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

/// So many fields are asked for in one statement.
constexpr std::size_t kFieldsAtOnce = 32;

CellKind KindOf(const Worksheet& sheet, const FieldDef& field) {
    if (IsCostCenterColumn(field.Name)) return sheet.CostCenterCells.value_or(CellKind::Label);
    for (const WorksheetField& each : sheet.FixedFields(sheet.Item))
        if (SameText(each.Name, field.Name)) return each.Kind;
    return CellKind::Label;
}

std::string IsFilled(const FieldDef& field) {
    const bool text = field.Type == FieldType::dbText || field.Type == FieldType::dbMemo;
    if (text) return fmt::format("Len({})>0", field.Name);
    if (field.Type == FieldType::dbDate) return fmt::format("Not IsNull({})", field.Name);
    return fmt::format("{}<>0", field.Name);
}

/// The lines on which a calculation writes, as a condition; empty where there are none.
std::string ComputedLinesOf(const Worksheet& sheet) {
    std::string lines;
    for (const ComputedLine& line : sheet.ComputedLines) {
        if (!lines.empty()) lines += " Or ";
        lines += fmt::format("({0}>={1} And {0}<{2})", sheet.Key, line.Line, line.Line + 1);
    }
    return lines;
}

bool AnyFilled(const Worksheet& sheet, const std::vector<FieldDef>& fields,
               const std::string& lines) {
    for (std::size_t first = 0; first < fields.size(); first += kFieldsAtOnce) {
        std::vector<std::string> filled;
        const std::size_t end = std::min(first + kFieldsAtOnce, fields.size());
        for (std::size_t i = first; i < end; ++i) filled.push_back(IsFilled(fields[i]));
        std::string condition = fmt::format("({})", fmt::join(filled, " Or "));
        if (!lines.empty()) condition += fmt::format(" And ({})", lines);
        Recordset rows = gDB.OpenRecordset(
            fmt::format("SELECT Top 1 {0} FROM {1} WHERE {2};", sheet.Key, sheet.Item, condition),
            dbOpenSnapshot);
        if (!rows.Eof()) return true;
    }
    return false;
}

/// The form fills in texts beside the amounts of a worksheet that is calculated: they say nothing.
bool OnlyAmountsCount(const Worksheet& sheet) {
    return sheet.Calc != nullptr &&
           std::ranges::any_of(gDB.Table(sheet.Item).Fields, [](const FieldDef& field) {
               return field.Type == FieldType::dbDouble;
           });
}

/// The fields of a kind that tell whether something stands there.
std::vector<FieldDef> FieldsOf(const Worksheet& sheet, CellKind kind) {
    const bool amounts = OnlyAmountsCount(sheet);
    std::vector<FieldDef> fields;
    for (const FieldDef& field : gDB.Table(sheet.Item).Fields) {
        if (amounts && field.Type != FieldType::dbDouble) continue;
        if (KindOf(sheet, field) == kind) fields.push_back(field);
    }
    return fields;
}

bool IsCalculated(const Worksheet& sheet) {
    if (sheet.Calc == nullptr) return false;
    if (AnyFilled(sheet, FieldsOf(sheet, CellKind::Computed), "")) return true;
    const std::string lines = ComputedLinesOf(sheet);
    return !lines.empty() && AnyFilled(sheet, FieldsOf(sheet, CellKind::Keyed), lines);
}

bool IsKeyed(const Worksheet& sheet) {
    const std::string lines = ComputedLinesOf(sheet);
    return AnyFilled(sheet, FieldsOf(sheet, CellKind::Keyed),
                     lines.empty() ? lines : fmt::format("Not ({})", lines));
}

}  // namespace

std::string_view NameOf(SheetState state) {
    switch (state) {
        case SheetState::Keyed:
            return "keyed";
        case SheetState::Calculated:
            return "calculated";
        case SheetState::Empty:
            break;
    }
    return "empty";
}

SheetState StateOfSheet(const std::string& item) {
    const Worksheet* const sheet = FindWorksheet(item);
    if (sheet == nullptr || !gDB.HasTable(item)) return SheetState::Empty;
    if (IsCalculated(*sheet)) return SheetState::Calculated;
    return IsKeyed(*sheet) ? SheetState::Keyed : SheetState::Empty;
}

}  // namespace zolmara
