#include "worksheets/W_Ex.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/W_Bpx.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

std::vector<WorksheetField> MakeFixedFields(std::string_view numberTitle, bool ofComponents) {
    std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line|#", Key},
        {"Description", dbText, 40, "Component Name", Label},
    };
    if (ofComponents) fields.push_back({"Col_0", dbText, 40, std::string(numberTitle), Label});
    fields.push_back(
        {"Col_1", dbDouble, 0, "Allocation|Statistics", ofComponents ? Keyed : Computed});
    fields.push_back({"Col_2", dbDouble, 0, "Allocation|Ratio", Computed});
    fields.push_back({std::string(kAllOtherPools), dbDouble, 0, "All Other|Non-CRC", Computed});
    return fields;
}

}  // namespace

const std::vector<WorksheetField>& FixedFields_Ex(std::string_view item) {
    static const std::array<std::vector<WorksheetField>, 4> all = {
        MakeFixedFields("", false), MakeFixedFields("CCN", true), MakeFixedFields("", true),
        MakeFixedFields("Region-|al HO|#", true)};
    return SameText(item, "E") ? all[0] : all.at(static_cast<std::size_t>(PartOf(item) - '0'));
}

std::vector<WorksheetField> Fields_Ex(std::string_view item) {
    std::vector<WorksheetField> fields = FixedFields_Ex(item);
    const WorksheetField otherPools = fields.back();
    fields.pop_back();
    for (const WorksheetField& pool : CostCenterFields(*FindSchedule(item), Computed, false)) {
        if (LineOfColumn(pool.Name) == kInterestIncome) fields.push_back(otherPools);
        fields.push_back(pool);
    }
    return fields;
}

void Build_Ex(std::string_view item) {
    static constexpr std::array<SeedRow, 4> kParts = {{{1, "Healthcare Provider Components"},
                                                       {2, "Non-Healthcare Components"},
                                                       {3, "Region / Division Components"},
                                                       {4, "Total"}}};
    if (!DropWorksheetTable(item)) return;
    MakeWorksheetTable(item);
    MakeWorksheetIndex(item);
    if (SameText(item, "E")) {
        InsertSeedRows(item, "Description", kParts);
    } else {
        InsertComponentRows(item);
    }
    RegisterBuiltWorksheet(item);
}

}  // namespace zolmara
