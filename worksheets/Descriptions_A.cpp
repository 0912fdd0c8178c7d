// What the computed cells of worksheet A and of A-6 to A-8-1 are.

#include "worksheets/Descriptions.h"
#include "worksheets/W_A.h"

namespace zolmara {
namespace {

using Spans = std::vector<LineSpan>;

const Currency kSeven = kOtherCapitalSubtotal;
const Currency kEight = Currency::FromWhole(8);

/// The lines of cost centers; those that take adjustments and pooled amounts; the others.
const Spans kCenters = {LinesBelow(kCapitalSubtotal), LinesBetween(kCapitalSubtotal, kSeven),
                        LinesBetween(kSeven, kNonCapitalSubtotal)};
const Spans kAdjusted = {LinesBelow(kCapitalSubtotal), {kEight, kNonCapitalSubtotal}};
const Spans kNotAdjusted = {LinesBetween(kCapitalSubtotal, kEight)};
const Spans kOtherCapitalLines = {LinesBetween(kCapitalSubtotal, kSeven),
                                  LinesBetween(kSeven, kEight)};
const Spans kEntries = {LinesBelow(kTotalOfEntries)};

/// The cell of a schedule's grand total in the column of the own line.
Node GrandTotalOf(std::string_view schedule) {
    return Stated(
        Sum({CellAt({schedule, Place::LineIs::Fixed, kGrandTotal, Place::FieldIs::OfLine})}));
}

void AddSubtotal(DescriptionTable& rules, Currency line, std::string_view columns,
                 const Node& formula, const std::string& words) {
    for (const char column : columns) {
        rules.push_back(
            {"A", {OnLine(line)}, std::string("Col_") + column, words, Stated(formula)});
    }
}

// NOLINTNEXTLINE(readability-function-size): a table.
DescriptionTable MakeDescriptions() {
    const std::string noneHere = "The other capital related lines carry no amount in this column.";
    DescriptionTable rules = {
        {"A", kCenters, "Col_2",
         "The reclassifications of A-6 that increase this line, less those that decrease it.",
         Sum({PostingsOf(kUpEntries), PostingsOf(kDownEntries)})},
        {"A", kCenters, "Col_3", "Column 1 plus column 2.", Sum({Here("Col_1"), Here("Col_2")})},
        {"A", kAdjusted, "Col_4", "The adjustments of A-8 and of A-8-1 Part I that name this line.",
         Sum({PostingsOf(kAdjustments), PostingsOf(kRelatedCosts)})},
        {"A", kNotAdjusted, "Col_4", noneHere, Constant(0)},
        {"A", kAdjusted, "Col_5", "Column 3 plus column 4.", Sum({Here("Col_3"), Here("Col_4")})},
        {"A", kOtherCapitalLines, "Col_5",
         "Column 3 plus what A-8 and A-8-1 Part I adjust on this line; column 4 does not show it.",
         Sum({Here("Col_3"), Sum({PostingsOf(kAdjustments), PostingsOf(kRelatedCosts)})})},
        {"A",
         {LinesBelow(kCapitalSubtotal), LinesBetween(kCapitalSubtotal, kSeven)},
         "Col_6",
         "The grand total of this cost center's column on B Part III.",
         GrandTotalOf("Bp3")},
        {"A",
         {LinesBetween(kSeven, kNonCapitalSubtotal)},
         "Col_6",
         "The grand total of this cost center's column on B-1 Part III.",
         GrandTotalOf("B1p3")},
        {"A",
         {LinesBelow(kCapitalSubtotal)},
         "Col_7",
         "The grand total of this cost center's column on C Part III.",
         GrandTotalOf("Cp3")},
        {"A",
         {{kEight, kNonCapitalSubtotal}},
         "Col_7",
         "The grand total of this cost center's column on D Part III.",
         GrandTotalOf("Dp3")},
        {"A", kNotAdjusted, "Col_7", noneHere, Constant(0)},
        {"A", kAdjusted, "Col_8", "Column 5 less columns 6 and 7.",
         Less({Here("Col_5"), Here("Col_6"), Here("Col_7")})},
        {"A", kNotAdjusted, "Col_8", noneHere, Constant(0)},
    };
    AddSubtotal(rules, kCapitalSubtotal, "12345678",
                Sum({ColumnOn({LinesBelow(kCapitalSubtotal)})}),
                "The sum of lines 1 and 2 with their subscripts.");
    AddSubtotal(rules, kSeven, "12356", Sum({ColumnOn({LinesBetween(kCapitalSubtotal, kSeven)})}),
                "The sum of lines 4 to 6 with their subscripts.");
    AddSubtotal(rules, kNonCapitalSubtotal, "12345678",
                Sum({ColumnOn({LinesBetween(kSeven, kNonCapitalSubtotal)})}),
                "The sum of lines 8 to 98 with their subscripts.");
    AddSubtotal(rules, kTotalOfA, "12345678",
                Sum({OnOther(kCapitalSubtotal), OnOther(kSeven), OnOther(kNonCapitalSubtotal)}),
                "The sum of lines 3, 7 and 99.");
    return rules;
}

// --- A-7 -------------------------------------------------------------------------------------

const Currency kTotalOfPart2 = kCapitalSubtotal;
const Spans kPart2Lines = {LinesBelow(kTotalOfPart2)};

/// The ratio of each line's assets, which close on 1.
Node AssetRatio() {
    return Closed({.Share = Rounded(Ratio(Here("Col_3"), There("", kTotalOfPart2, "Col_3")), 6),
                   .Want = Constant(1),
                   .Lines = LinesBelow(kTotalOfPart2),
                   .Largest = Closing::By::Value,
                   .OnlyAboveZero = true,
                   .Because = "the largest ratio",
                   .Closes = "to close the ratios on 1"});
}

/// A line's share of the other capital related costs.
Node SpreadCost() {
    return Closed({.Share = Rounded(Product(Here("Col_4"), OnOther(kTotalOfPart2)), 0),
                   .Want = OnOther(kTotalOfPart2),
                   .Lines = LinesBelow(kTotalOfPart2),
                   .Largest = Closing::By::Value,
                   .WantFirst = true,
                   .Because = "the largest amount",
                   .Closes = "to close the column on its total"});
}

void AddPart1(DescriptionTable& rules) {
    const Spans assets = {LinesBelow(Currency::FromWhole(7)), OnLine(8)};
    rules.push_back(
        {"A7p1", assets, "Col_4", "Column 2 plus column 3.", Sum({Here("Col_2"), Here("Col_3")})});
    rules.push_back({"A7p1", assets, "Col_6", "Column 1 plus column 4 less column 5.",
                     Less({Sum({Here("Col_1"), Here("Col_4")}), Here("Col_5")})});
    for (int column = 1; column <= 7; ++column) {
        const std::string field = "Col_" + std::to_string(column);
        rules.push_back({"A7p1",
                         {OnLine(7)},
                         field,
                         "The sum of lines 1 to 6.",
                         Stated(Sum({ColumnOn({LinesBelow(Currency::FromWhole(7))})}))});
        rules.push_back(
            {"A7p1",
             {OnLine(9)},
             field,
             "Line 7 plus line 8.",
             Stated(Sum({OnOther(Currency::FromWhole(7)), OnOther(Currency::FromWhole(8))}))});
    }
}

void AddPart2(DescriptionTable& rules) {
    const Spans total = {OnLine(kTotalOfPart2)};
    for (const int column : {1, 2, 9, 10, 11, 12, 13, 14}) {
        rules.push_back({"A7p2", total, "Col_" + std::to_string(column),
                         "The sum of lines 1 and 2 with their subscripts.",
                         Stated(Sum({ColumnOn(kPart2Lines)}))});
    }
    rules.push_back(
        {"A7p2", {}, "Col_3", "Column 1 less column 2.", Less({Here("Col_1"), Here("Col_2")})});
    rules.push_back({"A7p2", kPart2Lines, "Col_4",
                     "Column 3 divided by its total, to six decimals; the ratios close on 1.",
                     AssetRatio()});
    rules.push_back({"A7p2", total, "Col_4", "1, or 0 without any assets.",
                     Rounded(Ratio(Here("Col_3"), There("", kTotalOfPart2, "Col_3")), 6)});
    for (int column = 5; column <= 7; ++column) {
        const std::string field = "Col_" + std::to_string(column);
        const Currency line = Currency::FromWhole(column - 1);
        rules.push_back({"A7p2", total, field,
                         "Column 1 of A, line " + std::to_string(column - 1) +
                             ", less its direct allocations in column 6.",
                         Stated(Less({There("A", line, "Col_1"), There("A", line, "Col_6")}))});
        rules.push_back({"A7p2", kPart2Lines, field,
                         "The ratio of column 4 times the total on line 3, in whole dollars; the "
                         "shares close on the total.",
                         SpreadCost()});
    }
    rules.push_back({"A7p2",
                     {},
                     "Col_8",
                     "The sum of columns 5 to 7.",
                     Sum({Here("Col_5"), Here("Col_6"), Here("Col_7")})});
    rules.push_back({"A7p2",
                     {},
                     "Col_15",
                     "The sum of columns 9 to 14.",
                     Sum({Here("Col_9"), Here("Col_10"), Here("Col_11"), Here("Col_12"),
                          Here("Col_13"), Here("Col_14")})});
}

DescriptionTable MakeDescriptions_A7() {
    DescriptionTable rules;
    AddPart1(rules);
    AddPart2(rules);
    return rules;
}

}  // namespace

const DescriptionTable& Descriptions_A() {
    static const DescriptionTable rules = MakeDescriptions();
    return rules;
}

const DescriptionTable& Descriptions_A6() {
    static const Spans total = {OnLine(kTotalOfEntries)};
    static const DescriptionTable rules = {
        {"A6", total, "Col_5", "The sum of the increases.", Stated(Sum({ColumnOn(kEntries)}))},
        {"A6", total, "Col_8", "The sum of the decreases.", Stated(Sum({ColumnOn(kEntries)}))},
        {"A6", total, "Col_4", "The total has no cost center.", {}},
        {"A6", total, "Col_7", "The total has no cost center.", {}},
    };
    return rules;
}

const DescriptionTable& Descriptions_A7() {
    static const DescriptionTable rules = MakeDescriptions_A7();
    return rules;
}

const DescriptionTable& Descriptions_A8() {
    static const DescriptionTable rules = {
        {"A8",
         {OnLine(kRelatedOrganizations)},
         "Col_3",
         "The total of A-8-1 Part I, column 7.",
         Stated(Sum({There("A81p1", kTotalOfEntries, "Col_7")}))},
        {"A8",
         {OnLine(kTotalOfEntries)},
         "Col_3",
         "The sum of the adjustments.",
         Stated(Sum({ColumnOn(kEntries)}))},
        {"A8", {}, "Col_4", "The name of the cost center in column 5.", NameBy("Col_5")},
    };
    return rules;
}

const DescriptionTable& Descriptions_A81() {
    static const Spans total = {OnLine(kTotalOfEntries)};
    static const std::string nothing = "Nothing stands in this column of the total.";
    static const DescriptionTable rules = {
        {"A81p1", kEntries, "Col_2", "The name of the cost center in column 1.", NameBy("Col_1")},
        {"A81p1", total, "Col_2", "The word of the total line.", Words("Total")},
        {"A81p1", total, "Col_1", nothing, {}},
        {"A81p1", total, "Col_3", nothing, {}},
        {"A81p1", total, "Col_4", nothing, {}},
        {"A81p1", kEntries, "Col_7", "Column 5 less column 6.",
         Less({Here("Col_5"), Here("Col_6")})},
        {"A81p1", total, "Col_5", "The sum of the lines above.", Stated(Sum({ColumnOn(kEntries)}))},
        {"A81p1", total, "Col_6", "The sum of the lines above.", Stated(Sum({ColumnOn(kEntries)}))},
        {"A81p1", total, "Col_7", "The sum of the lines above.", Stated(Sum({ColumnOn(kEntries)}))},
    };
    return rules;
}

}  // namespace zolmara
