#include "worksheets/Descriptions.h"

#include <array>
#include <string_view>
#include <unordered_map>

#include "worksheets/Evaluator.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

using ByFamily = std::unordered_map<std::string_view, std::vector<const CellDescription*>>;

/// "Bp?" and "Bp3" are of the family "Bp"; a worksheet without parts is its own.
std::string_view FamilyOfRule(std::string_view items) {
    if (items.ends_with('?')) return items.substr(0, items.size() - 1);
    return FamilyOf(items);
}

ByFamily Index(const std::vector<const CellDescription*>& rules) {
    ByFamily index;
    for (const CellDescription* rule : rules) index[FamilyOfRule(rule->Items)].push_back(rule);
    return index;
}

std::vector<const CellDescription*> Gather() {
    std::vector<const CellDescription*> all;
    for (const DescriptionTable* table :
         {&Descriptions_A(), &Descriptions_A6(), &Descriptions_A7(), &Descriptions_A8(),
          &Descriptions_A81(), &Descriptions_Bpx(), &Descriptions_Ex(), &Descriptions_Fx(),
          &Descriptions_G(), &Descriptions_G1()}) {
        for (const CellDescription& rule : *table) all.push_back(&rule);
    }
    return all;
}

std::vector<const CellDescription*> GatherOverwritten() {
    std::vector<const CellDescription*> all;
    for (const CellDescription& rule : OverwrittenCells()) all.push_back(&rule);
    return all;
}

const CellDescription* FindIn(const ByFamily& index, const CellRef& cell) {
    const auto family = index.find(FamilyOf(cell.Item));
    if (family == index.end()) return nullptr;
    for (const CellDescription* rule : family->second) {
        if (Holds(*rule, cell)) return rule;
    }
    return nullptr;
}

}  // namespace

bool HoldsItem(const CellDescription& rule, std::string_view item) {
    if (!rule.Items.ends_with('?')) return rule.Items == item;
    return item.size() == rule.Items.size() && FamilyOf(item) == FamilyOfRule(rule.Items);
}

bool Holds(const CellDescription& rule, const CellRef& cell) {
    return HoldsItem(rule, cell.Item) && MatchesField(rule.Field, cell.Field) &&
           HoldsLine(rule.Lines, cell.Line);
}

const std::vector<const CellDescription*>& AllDescriptions() {
    static const std::vector<const CellDescription*> all = Gather();
    return all;
}

const CellDescription* FindDescription(const CellRef& cell) {
    static const ByFamily index = Index(AllDescriptions());
    return FindIn(index, cell);
}

const CellDescription* FindOverwriting(const CellRef& cell) {
    static const ByFamily index = Index(GatherOverwritten());
    return FindIn(index, cell);
}

}  // namespace zolmara
