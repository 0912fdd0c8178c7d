// What the cells of F, F-1 and F-2 are.

#include <array>

#include "worksheets/Descriptions.h"

namespace zolmara {
namespace {

using Spans = std::vector<LineSpan>;

/// All lines but the grand total.
const Spans kParts = {LinesBelow(kPartTotal), OnLine(kPartTotal)};

DescriptionTable MakeF() {
    DescriptionTable rules = {
        {"Fp?", kParts, "Col_1", "The total of this line on B.", SameLine("Bp?", "Col_7")},
        {"Fp?", kParts, "Col_2", "The total of this line on C.", SameLine("Cp?", "Col_3")},
        {"Fp?", kParts, "Col_3",
         "The capital related pools of this line on E-1: columns 1 and 2 with their subscripts.",
         Stated(Sum({RowOf("E1p?", {CostClass::Capital})}))},
        {"Fp?", kParts, "Col_4", "The sum of columns 1 to 3.",
         Sum({Here("Col_1"), Here("Col_2"), Here("Col_3")})},
    };
    for (const char* field : {"Col_1", "Col_2", "Col_3", "Col_4"}) {
        rules.push_back({"Fp3",
                         {OnLine(kGrandTotal)},
                         field,
                         "The sum of the totals of the three parts.",
                         Stated(Sum({SameColumn("Fp1", kPartTotal), SameColumn("Fp2", kPartTotal),
                                     SameColumn("Fp3", kPartTotal)}))});
    }
    return rules;
}

/// The columns of a class: what B-1, D and E-1 gave the component, and their sum.
struct ClassColumns {
    std::string Items;
    CostClass Kind;
    std::string Name;
    std::array<const char*, 4> Fields;
    std::string SumWords;
};

void AddClass(DescriptionTable& rules, const ClassColumns& columns) {
    constexpr std::array<std::pair<const char*, const char*>, 3> kSources = {
        {{"B1p?", "on B-1."}, {"Dp?", "on D."}, {"E1p?", "on E-1."}}};
    for (std::size_t i = 0; i < kSources.size(); ++i) {
        rules.push_back({columns.Items,
                         {},
                         columns.Fields[i],
                         columns.Name + " of this line " + kSources[i].second,
                         Stated(Sum({RowOf(kSources[i].first, {columns.Kind})}))});
    }
    rules.push_back(
        {columns.Items,
         {},
         columns.Fields[3],
         columns.SumWords,
         Sum({Here(columns.Fields[0]), Here(columns.Fields[1]), Here(columns.Fields[2])})});
}

DescriptionTable MakeDescriptions() {
    DescriptionTable rules = MakeF();
    AddClass(rules, {"F1p?",
                     CostClass::Salaries,
                     "The salaries",
                     {"Col_1", "Col_2", "Col_3", "Col_4"},
                     "The sum of columns 1 to 3."});
    AddClass(rules, {"F1p?",
                     CostClass::AllOther,
                     "All other non-capital cost",
                     {"Col_5", "Col_6", "Col_7", "Col_8"},
                     "The sum of columns 5 to 7."});
    rules.push_back({"F1p?",
                     {},
                     "Col_9",
                     "Salaries and all other non-capital cost, columns 1 to 3 and 5 to 7.",
                     Sum({Here("Col_1"), Here("Col_2"), Stated(Sum({Here("Col_3"), Here("Col_7")})),
                          Here("Col_5"), Here("Col_6")})});
    AddClass(rules, {"F2p?",
                     CostClass::Interest,
                     "The interest income",
                     {"Col_1", "Col_2", "Col_3", "Col_4"},
                     "The sum of columns 1 to 3."});
    return rules;
}

}  // namespace

const DescriptionTable& Descriptions_Fx() {
    static const DescriptionTable rules = MakeDescriptions();
    return rules;
}

}  // namespace zolmara
