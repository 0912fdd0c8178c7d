#include "forms/ExplainByForm.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/CellRoads.h"
#include "forms/CellRules.h"
#include "forms/WorksheetForm.h"
#include "store/session/Session.h"
#include "worksheets/Descriptions.h"

namespace zolmara {
namespace {

/// Line 2 of S-1 Part I is the identity of the file.
bool IsIdentity(const CellRef& cell) {
    constexpr Currency kIdentityLine = Currency::FromWhole(2);
    return cell.Item == "S1p1" && cell.Line == kIdentityLine && cell.Field != "Col_6";
}

/// The names beside the line numbers of an entry.
bool IsNameOfEntry(const CellRef& cell) {
    return cell.Item == "A6" && (cell.Field == "Col_3" || cell.Field == "Col_6");
}

bool IsImported(const CellRef& cell) {
    const int field = gDB.Table(cell.Item).FieldIndex(cell.Field);
    return field >= 0 && TableRoads(cell.Item).ColumnOf(field, cell.Line).has_value();
}

/// Empty where nothing takes the cell.
std::string WhereKeyed(const CellRef& cell) {
    const bool keyed = IsCellOpen(cell.Item, cell.Line, cell.Field);
    const bool imported = IsImported(cell);
    const std::string editor = EditorOf(cell.Item);
    if (keyed && imported) return fmt::format("Keyed in {}, or imported.", editor);
    if (keyed) return fmt::format("Keyed in {}; the import does not take it.", editor);
    if (imported) return fmt::format("Imported; in {} it is locked as its line stands.", editor);
    if (IsIdentity(cell)) return "Changed with the identity of the home office, on line 2 of S-1.";
    if (IsNameOfEntry(cell)) return "The name follows the line number that is keyed beside it.";
    return "";
}

std::string TitleOf(const CellRef& cell) {
    const auto form = DescribeForm(FormMode::View, cell.Item == "CostCenters" ? "CCs" : cell.Item);
    const int column = form ? form->ColumnOf(cell.Field) : -1;
    if (column < 0) return "";
    return Replace(TitleOnRow(*form, BeginRow(*form, cell.Line), column), "|", " ");
}

}  // namespace

void TellByForm(Explanation& told) {
    if (told.Title.empty()) told.Title = TitleOf(told.Cell);
    if (told.Kind != CellState::Keyed || !HasRow(told.Cell.Item, told.Cell.Line)) return;
    const CellDescription* over = FindOverwriting(told.Cell);
    std::string where = WhereKeyed(told.Cell);
    if (where.empty()) {
        where = FixedRule(told.Cell);
        if (over == nullptr) told.Kind = CellState::Fixed;
    }
    told.Rule = over == nullptr ? where : where + " " + over->Words;
}

}  // namespace zolmara
