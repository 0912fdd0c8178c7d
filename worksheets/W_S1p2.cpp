#include "worksheets/W_S1p2.h"

#include <array>

#include "worksheets/Build.h"

namespace zolmara {

using enum FieldType;
using enum CellKind;

const std::vector<WorksheetField>& Fields_S1p2(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Col_1", dbText, 36, "Position / Job Title", Keyed},
        {"Col_2", dbText, 36, "Key Officer Name", Keyed},
    };
    return fields;
}

namespace {

constexpr std::array<SeedRow, 5> kSeeds = {{{1, "President"},
                                            {2, "Vice President"},
                                            {3, "Secretary"},
                                            {4, "Treasurer"},
                                            {5, "Controller"}}};

}  // namespace

std::span<const SeedRow> Seeds_S1p2() { return kSeeds; }

void Build_S1p2() {
    MakeWorksheetTable("S1p2");
    InsertSeedRows("S1p2", "Col_1", kSeeds);
    MakeWorksheetIndex("S1p2");
    RegisterBuiltWorksheet("S1p2");
}

}  // namespace zolmara
