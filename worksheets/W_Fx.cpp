#include "worksheets/W_Fx.h"

#include <fmt/format.h>

#include <array>

#include "worksheets/Build.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

constexpr std::array<std::string_view, 4> kTitles_F = {"Direct", "Functional", "Pooled",
                                                       "Total|Capital Cost"};
constexpr std::array<std::string_view, 9> kTitles_F1 = {"Direct",
                                                        "Functional",
                                                        "Pooled",
                                                        "Subtotal|Salaries",
                                                        "Direct",
                                                        "Functional",
                                                        "Pooled",
                                                        "Subtotal All|Other|Non-Capital",
                                                        "Total|Non-Capital|Cost"};
constexpr std::array<std::string_view, 4> kTitles_F2 = {"Direct", "Functional", "Pooled",
                                                        "Total|Interest|Income"};
constexpr std::array<std::span<const std::string_view>, 3> kTitles = {kTitles_F, kTitles_F1,
                                                                      kTitles_F2};
constexpr std::array<std::string_view, 3> kNumberTitles = {"CCN", "", "Region-|al HO|#"};

std::vector<WorksheetField> MakeFields(std::span<const std::string_view> titles,
                                       std::string_view numberTitle) {
    std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line|#", Key},
        {"Description", dbText, 40, "Component Name", Label},
        {"Col_0", dbText, 40, std::string(numberTitle), Label},
    };
    int number = 0;
    for (const std::string_view title : titles) {
        fields.push_back(
            {fmt::format("Col_{}", ++number), dbDouble, 0, std::string(title), Computed});
    }
    return fields;
}

/// F, F-1 and F-2, each for the three parts.
std::array<std::array<std::vector<WorksheetField>, 3>, 3> MakeAllFields() {
    std::array<std::array<std::vector<WorksheetField>, 3>, 3> all;
    for (std::size_t form = 0; form < 3; ++form) {
        for (std::size_t part = 0; part < 3; ++part) {
            all[form][part] = MakeFields(kTitles[form], kNumberTitles[part]);
        }
    }
    return all;
}

}  // namespace

const std::vector<WorksheetField>& Fields_Fx(std::string_view item) {
    static const auto all = MakeAllFields();
    const char form = item[1];
    return all.at(form == '1'   ? 1
                  : form == '2' ? 2
                                : 0)
        .at(static_cast<std::size_t>(PartOf(item) - '1'));
}

void Build_Fx(std::string_view item) {
    if (!DropWorksheetTable(item)) return;
    MakeWorksheetTable(item);
    MakeWorksheetIndex(item);
    InsertComponentRows(item);
    RegisterBuiltWorksheet(item);
}

}  // namespace zolmara
