// What the computed cells of B, B-1, C, C-1, D and D-1 are.

#include <fmt/format.h>

#include "worksheets/Descriptions.h"
#include "worksheets/Schedules.h"
#include "worksheets/SheetNames.h"

namespace zolmara {
namespace {

using Spans = std::vector<LineSpan>;
constexpr std::string_view kCenters = "CC_*";

const Spans& Components() {
    static const Spans lines = {LinesBelow(kPartTotal)};
    return lines;
}

/// The items of a family, and names of single tables that live as long as the program.
struct Family {
    const Schedule* Kind;
    std::string Items;
    std::array<std::string_view, 3> Tables;
    std::string_view CostTable;
};

std::string_view Kept(std::string name) {
    static std::vector<std::unique_ptr<std::string>> names;
    names.push_back(std::make_unique<std::string>(std::move(name)));
    return *names.back();
}

Family MakeFamily(const Schedule& schedule) {
    return {&schedule,
            fmt::format("{}?", schedule.Family),
            {Kept(TableOf(schedule, 1)), Kept(TableOf(schedule, 2)), Kept(TableOf(schedule, 3))},
            Kept(TableOf(schedule.Statistics, 3))};
}

/// "C-1" of "C1p".
std::string FamilyName(std::string_view family) {
    const std::string name = PrintedName(TableOf(family, 1));
    return name.substr(0, name.find(" Part"));
}

/// The totals of C and D were moved with the amounts that close their columns, in text form.
Node Total(const Family& family, Node sum) {
    return family.Kind->Kind == ScheduleKind::Functional ? Stated(std::move(sum)) : sum;
}

Node SumOfParts(const Family& family) {
    return Total(family, Sum({OnOther(kPartTotal), SameColumn(family.Tables[0], kPartTotal),
                              SameColumn(family.Tables[1], kPartTotal)}));
}

/// The unit cost multiplier times the statistic, in whole dollars. Each column closes on the cost
/// that is to be allocated.
Node Allocated(const Family& family) {
    const std::string_view statistics = Kept(fmt::format("{}?", family.Kind->Statistics));
    const Node unitCost = SameColumn(family.CostTable, kUnitCostMultiplier);
    return Closed({.Share = Pair(NodeKind::UnlessZero, SameCell(statistics),
                                 Rounded(Product(unitCost, SameCell(statistics), "times"), 0)),
                   .Want = SameColumn(family.CostTable, kCostToAllocate),
                   .Items = {family.Tables.begin(), family.Tables.end()},
                   .Lines = LinesBelow(kPartTotal),
                   .Because = "the largest amount",
                   .Closes = "to close the column on the dollar"});
}

void AddTotals(DescriptionTable& rules, const Family& family) {
    const std::string third(family.Tables[2]);
    rules.push_back({family.Items,
                     {OnLine(kPartTotal)},
                     std::string(kCenters),
                     "The sum of the components.",
                     Total(family, Sum({ColumnOn(Components())}))});
    rules.push_back({third,
                     {OnLine(kGrandTotal)},
                     std::string(kCenters),
                     "The sum of the totals of the three parts.",
                     SumOfParts(family)});
    const std::string total(family.Kind->TotalField);
    if (total.empty()) return;
    rules.push_back({family.Items,
                     {LinesBelow(kPartTotal), OnLine(kPartTotal)},
                     total,
                     "The sum of the columns of this line.",
                     Total(family, Sum({RowOf("")}))});
    rules.push_back({third,
                     {OnLine(kGrandTotal)},
                     total,
                     "The sum of the totals of the three parts.",
                     SumOfParts(family)});
}

void AddSchedule(DescriptionTable& rules, const Schedule& schedule) {
    const Family family = MakeFamily(schedule);
    AddTotals(rules, family);
    if (schedule.Kind == ScheduleKind::Functional) {
        rules.push_back(
            {family.Items, Components(), std::string(kCenters),
             fmt::format("The unit cost multiplier on line 54 of {0} Part III times the statistic "
                         "on {0}, in whole dollars; the column closes on the cost to be "
                         "allocated, line 53.",
                         FamilyName(schedule.Statistics)),
             Allocated(family)});
    }
    if (schedule.Kind == ScheduleKind::Statistics) {
        rules.push_back(
            {std::string(family.Tables[2]),
             {OnLine(kUnitCostMultiplier)},
             std::string(kCenters),
             "The cost to be allocated on line 53 divided by the statistics on line 52, to six "
             "decimals.",
             Rounded(Ratio(OnOther(kCostToAllocate), OnOther(kGrandTotal)), 6)});
    }
}

DescriptionTable MakeDescriptions() {
    DescriptionTable rules;
    for (const Schedule& schedule : AllSchedules()) {
        using enum ScheduleKind;
        if (schedule.Kind == Direct || schedule.Kind == Statistics || schedule.Kind == Functional) {
            AddSchedule(rules, schedule);
        }
    }
    return rules;
}

}  // namespace

const DescriptionTable& Descriptions_Bpx() {
    static const DescriptionTable rules = MakeDescriptions();
    return rules;
}

}  // namespace zolmara
