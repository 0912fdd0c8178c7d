// What the computed cells of E and E-1 are.

#include <array>

#include "worksheets/Descriptions.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

using Spans = std::vector<LineSpan>;

constexpr std::array<std::string_view, 3> kParts = {"E1p1", "E1p2", "E1p3"};
const std::string kCenters = "CC_*";
const std::string kOthers(kAllOtherPools);

const LineSpan kPartLines = LinesBelow(kTotalOfE);
const LineSpan kComponents = LinesBelow(kPartTotal);
const Spans kAllOtherLines = {{Currency::FromWhole(10), kInterestIncome},
                              {Currency::FromWhole(29), kNonCapitalSubtotal}};

/// Without any statistics the cell stays as the last calculation left it.
Node KeptWithout(Node formula) {
    Node statistics = Sum({There("E1p1", kPartTotal, "Col_1"), There("E1p2", kPartTotal, "Col_1"),
                           There("E1p3", kPartTotal, "Col_1")});
    return Pair(NodeKind::KeptIfZero, std::move(statistics), std::move(formula));
}

Node PartRatio() {
    return Closed({.Share = Stated(Rounded(Ratio(Here("Col_1"), There("", kTotalOfE, "Col_1")), 6)),
                   .Want = Constant(1),
                   .Lines = kPartLines,
                   .Weight = Here("Col_1"),
                   .LeavesZero = true,
                   .Because = "the largest statistic",
                   .Closes = "to close the ratios on 1"});
}

/// A part's share of a pool.
Node PartShare(const Node& pool) {
    return Closed({.Share = Rounded(Product(Here("Col_2"), pool), 0),
                   .Want = pool,
                   .Lines = kPartLines,
                   .Weight = Here("Col_1"),
                   .Because = "the largest statistic",
                   .Closes = "to close the pool on its amount"});
}

void AddE(DescriptionTable& rules) {
    for (std::size_t i = 0; i < kParts.size(); ++i) {
        rules.push_back({"E",
                         {OnLine(static_cast<int>(i) + 1)},
                         "Col_1",
                         "The statistics of this part's components, from E-1.",
                         KeptWithout(Stated(There(kParts[i], kPartTotal, "Col_1")))});
    }
    const Spans total = {OnLine(kTotalOfE)};
    rules.push_back({"E", total, "Col_1", "The sum of the three parts.",
                     KeptWithout(Stated(Sum({There("E1p1", kPartTotal, "Col_1"),
                                             There("E1p2", kPartTotal, "Col_1"),
                                             There("E1p3", kPartTotal, "Col_1")})))});
    rules.push_back({"E",
                     {kPartLines},
                     "Col_2",
                     "The part's statistics divided by the total, to six decimals; the ratios "
                     "close on 1.",
                     KeptWithout(PartRatio())});
    rules.push_back({"E", total, "Col_2", "The ratios close on 1.", KeptWithout(Constant(1))});
    const Node ownPool = CellAt({"A", Place::LineIs::OfColumn, {}, Place::FieldIs::Fixed, "Col_8"});
    const Node allOthers = Sum({ColumnOf("A", "Col_8", kAllOtherLines)});
    const std::string share =
        "The part's ratio times the pool, in whole dollars; the shares close on the pool.";
    rules.push_back({"E", {kPartLines}, kCenters, share, PartShare(ownPool)});
    rules.push_back({"E", {kPartLines}, kOthers, share, PartShare(allOthers)});
    rules.push_back(
        {"E", total, kCenters, "The pooled amount of A, column 8.", Stated(Sum({ownPool}))});
    rules.push_back({"E", total, kOthers,
                     "The pooled amounts of A, column 8, lines 10 to 98 without line 28.",
                     Stated(allOthers)});
}

/// The share of a component in its part's share of a pool.
Node ComponentShare(Currency part) {
    return Closed({.Share = Rounded(Product(Here("Col_2"), SameColumn("E", part)), 0),
                   .Want = OnOther(kPartTotal),
                   .Lines = kComponents,
                   .WantFirst = true,
                   .Because = "the largest amount",
                   .Closes = "to close the column on the part's share"});
}

Node ComponentRatio() {
    return Closed({.Share = Rounded(Ratio(Here("Col_1"), There("", kPartTotal, "Col_1")), 6),
                   .Want = Constant(1),
                   .Lines = kComponents,
                   .Largest = Closing::By::Value,
                   .Weight = Here("Col_1"),
                   .LeavesZero = true,
                   .Because = "the largest statistic",
                   .Closes = "to close the ratios on 1"});
}

void AddPools(DescriptionTable& rules, const std::string& item, Currency part) {
    for (const std::string& field : {kCenters, kOthers}) {
        rules.push_back({item,
                         {kComponents},
                         field,
                         "The component's ratio times its part's share on E, in whole dollars; the "
                         "column closes on the part's share.",
                         ComponentShare(part)});
        rules.push_back({item,
                         {OnLine(kPartTotal)},
                         field,
                         "The part's share on E, in whole dollars.",
                         Rounded(Product(Here("Col_2"), SameColumn("E", part)), 0)});
    }
}

void AddE1(DescriptionTable& rules) {
    const Spans total = {OnLine(kPartTotal)};
    const Spans grandTotal = {OnLine(kGrandTotal)};
    rules.push_back({"E1p?", total, "Col_1", "The sum of the components.",
                     Stated(Sum({ColumnOn({kComponents})}))});
    rules.push_back({"E1p?",
                     {kComponents},
                     "Col_2",
                     "The component's statistic divided by the total, to six decimals; the ratios "
                     "close on 1.",
                     ComponentRatio()});
    rules.push_back({"E1p?", total, "Col_2", "The ratios close on 1.", Constant(1)});
    for (int part = 1; part <= 3; ++part) {
        AddPools(rules, TableOf("E1p", part), Currency::FromWhole(part));
    }
    for (const std::string& field : {kCenters, kOthers}) {
        rules.push_back({"E1p3", grandTotal, field, "The sum of the totals of the three parts.",
                         Sum({SameColumn("E1p1", kPartTotal), SameColumn("E1p2", kPartTotal),
                              SameColumn("E1p3", kPartTotal)})});
    }
    for (const char* field : {"Col_1", "Col_2"}) {
        rules.push_back(
            {"E1p3", grandTotal, field, "The grand total has no statistic and no ratio.", {}});
    }
}

DescriptionTable MakeDescriptions() {
    DescriptionTable rules;
    AddE(rules);
    AddE1(rules);
    return rules;
}

}  // namespace

const DescriptionTable& Descriptions_Ex() {
    static const DescriptionTable rules = MakeDescriptions();
    return rules;
}

}  // namespace zolmara
