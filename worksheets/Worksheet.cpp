#include "worksheets/Worksheet.h"

#include <algorithm>
#include <array>

#include "core/Globals.h"
#include "core/Status.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/DeleteIfThere.h"
#include "store/session/Session.h"
#include "worksheets/SheetNames.h"
#include "worksheets/W_A.h"
#include "worksheets/W_A6.h"
#include "worksheets/W_A7.h"
#include "worksheets/W_A8.h"
#include "worksheets/W_A81.h"
#include "worksheets/W_Bpx.h"
#include "worksheets/W_Ex.h"
#include "worksheets/W_Fx.h"
#include "worksheets/W_G.h"
#include "worksheets/W_G1.h"
#include "worksheets/W_S1p1.h"
#include "worksheets/W_S1p2.h"
#include "worksheets/W_S2.h"
#include "worksheets/W_Sp1.h"

namespace zolmara {
namespace {

using CalcOf = void (*)(std::string_view item, KeptColumns& kept);
using FieldsOf = const std::vector<WorksheetField>& (*)(std::string_view);

/// A worksheet of the form's own lines and columns, with a calculation or, where it is only
/// keyed, without.
template <FieldsOf kFields, void (*kBuild)(), void (*... kCalc)()>
constexpr Worksheet Plain(std::string_view item, int level,
                          std::span<const ComputedLine> computed = {},
                          std::string_view key = "LineNum") {
    Worksheet sheet{.Item = item,
                    .Calc_Lvl = level,
                    .Key = key,
                    .Fields = [](std::string_view name) { return kFields(name); },
                    .Build = [](std::string_view) { kBuild(); },
                    .Calc = nullptr,
                    .FixedFields = kFields,
                    .ComputedLines = computed};
    if constexpr (sizeof...(kCalc) > 0)
        sheet.Calc = [](std::string_view, KeptColumns&) { (kCalc(), ...); };
    return sheet;
}

constexpr Worksheet Allocation(std::string_view item, int level, CellKind cells) {
    return {.Item = item,
            .Calc_Lvl = level,
            .Key = "LineNum",
            .Fields = Fields_Bpx,
            .Build = Build_Bpx,
            .Calc = Calc_Bpx,
            .FixedFields = FixedFields_Bpx,
            .ComputedLines = kComputedLines_Bpx,
            .CostCenterCells = cells};
}

constexpr Worksheet Pooled(std::string_view item, int level, CalcOf calc,
                           std::span<const ComputedLine> computed) {
    return {.Item = item,
            .Calc_Lvl = level,
            .Key = "LineNum",
            .Fields = Fields_Ex,
            .Build = Build_Ex,
            .Calc = calc,
            .FixedFields = FixedFields_Ex,
            .ComputedLines = computed,
            .CostCenterCells = CellKind::Computed};
}

constexpr Worksheet Summary(std::string_view item, int level, CalcOf calc) {
    return {.Item = item,
            .Calc_Lvl = level,
            .Key = "LineNum",
            .Fields = [](std::string_view name) { return Fields_Fx(name); },
            .Build = Build_Fx,
            .Calc = calc,
            .FixedFields = Fields_Fx};
}

constexpr auto kKeyed = CellKind::Keyed;
constexpr auto kComputed = CellKind::Computed;

const std::array<Worksheet, 46> kWorksheets = {
    Plain<Fields_Sp1, Build_Sp1, Calc_Sp1>("Sp1", 0),
    Plain<Fields_S1p1, Build_S1p1, Calc_S1p1>("S1p1", 0),
    Plain<Fields_S1p2, Build_S1p2>("S1p2", 0),
    Plain<Fields_S2, Build_S2p1, Calc_S2>("S2p1", 0),
    Plain<Fields_S2, Build_S2p2, Calc_S2>("S2p2", 0),
    Plain<Fields_S2, Build_S2p3, Calc_S2>("S2p3", 0),
    Plain<Fields_A6, Build_A6, Calc_A6>("A6", 0, kComputedLines_A6),
    Plain<Fields_A7, Build_A7p1, Calc_A7p1>("A7p1", 0, kComputedLines_A7p1),
    Plain<Fields_A81p1, Build_A81p1, Calc_A81p1>("A81p1", 0, kComputedLines_A81p1, "SeqNum"),
    Plain<Fields_A81p2, Build_A81p2>("A81p2", 0, {}, "SeqNum"),
    Plain<Fields_A8, Build_A8, Calc_A8>("A8", 5, kComputedLines_A8),
    Allocation("B1p1", 7, kKeyed),
    Allocation("B1p2", 7, kKeyed),
    Allocation("B1p3", 7, kKeyed),
    Allocation("Bp1", 8, kKeyed),
    Allocation("Bp2", 8, kKeyed),
    Allocation("Bp3", 8, kKeyed),
    Plain<Fields_A7, Build_A7p2, Calc_A7p2>("A7p2", 9, kComputedLines_A7p2),
    Allocation("C1p1", 9, kKeyed),
    Allocation("C1p2", 9, kKeyed),
    Allocation("C1p3", 9, kKeyed),
    Allocation("Cp1", 10, kComputed),
    Allocation("Cp2", 10, kComputed),
    Allocation("Cp3", 10, kComputed),
    Allocation("D1p1", 11, kKeyed),
    Allocation("D1p2", 11, kKeyed),
    Allocation("D1p3", 11, kKeyed),
    Allocation("Dp1", 12, kComputed),
    Allocation("Dp2", 12, kComputed),
    Allocation("Dp3", 12, kComputed),
    Plain<Fields_A, Build_A, Calc_A>("A", 13, kComputedLines_A),
    Pooled("E", 14, [](std::string_view, KeptColumns&) { Calc_E(); }, {}),
    Pooled("E1p1", 15, Calc_E1px, kComputedLines_E1px),
    Pooled("E1p2", 15, Calc_E1px, kComputedLines_E1px),
    Pooled("E1p3", 15, Calc_E1px, kComputedLines_E1px),
    Summary("Fp1", 19, Calc_Fpx),
    Summary("Fp2", 19, Calc_Fpx),
    Summary("Fp3", 19, Calc_Fpx),
    Summary("F1p1", 20, Calc_F1px),
    Summary("F1p2", 20, Calc_F1px),
    Summary("F1p3", 20, Calc_F1px),
    Summary("F2p1", 21, Calc_F2px),
    Summary("F2p2", 21, Calc_F2px),
    Summary("F2p3", 21, Calc_F2px),
    Plain<Fields_G, Build_G, Calc_G>("G", 22, kComputedLines_G),
    Plain<Fields_G1, Build_G1, Calc_G1>("G1", 23, kComputedLines_G1),
};

const WorksheetField* FindIn(const std::vector<WorksheetField>& fields, std::string_view name) {
    const auto found = std::ranges::find_if(
        fields, [&](const WorksheetField& field) { return SameText(field.Name, name); });
    return found == fields.end() ? nullptr : &*found;
}

std::optional<CellKind> KindOfField(const Worksheet& sheet, std::string_view field) {
    if (IsCostCenterColumn(field)) return sheet.CostCenterCells;
    const WorksheetField* fixed = FindIn(sheet.FixedFields(sheet.Item), field);
    return fixed == nullptr ? std::nullopt : std::optional(fixed->Kind);
}

/// The tables that a CRF cannot do without; no name given by mistake may drop one.
constexpr std::array<std::string_view, 7> kCoreTables = {
    "Master", "Worksheets", "CostCenters", "ES", "HeaderLines", "Log", "Error"};

/// A table that cannot be deleted shows when it is created.
void DropWorksheet(std::string_view item) {
    const bool core = std::ranges::any_of(
        kCoreTables, [&](std::string_view name) { return SameText(name, item); });
    if (!core) DeleteIfThere(item);
}

bool IsComputedLine(const Worksheet& sheet, Currency line, std::string_view field) {
    return std::ranges::any_of(sheet.ComputedLines, [&](const ComputedLine& computed) {
        return computed.Line == line.Whole() &&
               (computed.Field.empty() || SameText(computed.Field, field));
    });
}

}  // namespace

std::span<const Worksheet> AllWorksheets() { return kWorksheets; }

const Worksheet* FindWorksheet(std::string_view item) {
    const auto found = std::ranges::find_if(
        kWorksheets, [&](const Worksheet& sheet) { return SameText(sheet.Item, item); });
    return found == kWorksheets.end() ? nullptr : &*found;
}

bool BuildWorksheet(std::string_view item) {
    const Worksheet* sheet = FindWorksheet(item);
    RunAct("Make worksheet " + PrintedName(item), [&] {
        DropWorksheet(item);
        if (sheet != nullptr) sheet->Build(sheet->Item);
    });
    TheStatus().DoEvents();
    return sheet != nullptr;
}

std::optional<WorksheetField> FindField(std::string_view item, std::string_view field) {
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet == nullptr) return std::nullopt;
    if (const WorksheetField* fixed = FindIn(sheet->FixedFields(sheet->Item), field)) {
        return *fixed;
    }
    const std::vector<WorksheetField> all = sheet->Fields(sheet->Item);
    const WorksheetField* found = FindIn(all, field);
    return found == nullptr ? std::nullopt : std::optional(*found);
}

bool IsComputedCell(std::string_view item, Currency line, std::string_view field) {
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet == nullptr) return false;
    const std::optional<CellKind> kind = KindOfField(*sheet, field);
    if (kind == CellKind::Computed) return true;
    return kind == CellKind::Keyed && IsComputedLine(*sheet, line, field);
}

}  // namespace zolmara
