#include "worksheets/Schedules.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "core/Globals.h"

namespace zolmara {
namespace {

constexpr LineSpan Lines(int from, int below) {
    return {Currency::FromWhole(from), Currency::FromWhole(below)};
}

struct ClassOfRange {
    LineSpan Lines;
    CostClass Kind;
};

constexpr std::array<ClassOfRange, 6> kClasses = {{
    {Lines(1, 3), CostClass::Capital},
    {Lines(4, 7), CostClass::OtherCapital},
    {Lines(8, 10), CostClass::Salaries},
    {Lines(10, 28), CostClass::AllOther},
    {Lines(28, 29), CostClass::Interest},
    {Lines(29, 99), CostClass::AllOther},
}};

constexpr LineSpan kCapital = Lines(0, 3);
constexpr LineSpan kAllCapital = Lines(0, 7);
constexpr LineSpan kNonCapital = Lines(7, 10000);
constexpr LineSpan kAll = Lines(0, 10000);

using enum ScheduleKind;

constexpr std::array<Schedule, 11> kSchedules = {{
    {"Bp", Direct, true, kAllCapital, "Col_7"},
    {"B1p", Direct, true, kNonCapital, "Col_99"},
    {"Cp", Functional, true, kCapital, "Col_3", "C1p"},
    {"C1p", Statistics, true, kCapital},
    {"Dp", Functional, true, kNonCapital, "Col_99", "D1p"},
    {"D1p", Statistics, true, kNonCapital},
    {"E", Pooled, false, kAll, "", "", 4},
    {"E1p", Pooled, true, kAll, "", "", 5},
    {"Fp", Summary, true},
    {"F1p", Summary, true},
    {"F2p", Summary, true},
}};

bool IsPoolOfItsOwn(CostClass kind) {
    return kind == CostClass::Capital || kind == CostClass::Salaries || kind == CostClass::Interest;
}

}  // namespace

// --- Classes of cost -------------------------------------------------------------------------

CostClass ClassOfLine(Currency line) {
    const auto found = std::ranges::find_if(
        kClasses, [&](const ClassOfRange& range) { return range.Lines.Holds(line); });
    return found == kClasses.end() ? CostClass::None : found->Kind;
}

std::string ConditionFor(CostClass kind, std::string_view field) {
    std::string condition;
    for (const ClassOfRange& range : kClasses) {
        if (range.Kind != kind) continue;
        if (!condition.empty()) condition += " Or ";
        condition += fmt::format("({0}>={1} And {0}<{2})", field, range.Lines.From.Whole(),
                                 range.Lines.Below.Whole());
    }
    return condition;
}

// --- Schedules -------------------------------------------------------------------------------

std::span<const Schedule> AllSchedules() { return kSchedules; }

std::string_view FamilyOf(std::string_view item) {
    const bool hasPart = item.size() > 1 && Between(item.back(), '1', '3');
    return hasPart ? item.substr(0, item.size() - 1) : item;
}

const Schedule* FindSchedule(std::string_view item) {
    const auto found = std::ranges::find_if(kSchedules, [&](const Schedule& schedule) {
        return SameText(schedule.Family, item) ||
               (schedule.HasParts && SameText(schedule.Family, FamilyOf(item)));
    });
    return found == kSchedules.end() ? nullptr : &*found;
}

bool TakesColumn(const Schedule& schedule, Currency line) {
    if (schedule.Kind == Pooled) return IsPoolOfItsOwn(ClassOfLine(line));
    return schedule.CostCenters.Holds(line);
}

std::string TableOf(std::string_view family, int part) { return fmt::format("{}{}", family, part); }

std::string TableOf(const Schedule& schedule, int part) {
    return schedule.HasParts ? TableOf(schedule.Family, part) : std::string(schedule.Family);
}

Currency PoolColumn(Currency line) {
    if (line < kCapitalSubtotal) return line + Currency::FromWhole(2);
    if (line < kInterestIncome) return line - Currency::FromWhole(3);
    return line - Currency::FromWhole(20);
}

}  // namespace zolmara
