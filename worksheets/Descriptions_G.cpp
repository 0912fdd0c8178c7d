// What the computed lines of G and G-1 are.

#include "worksheets/Descriptions.h"

namespace zolmara {
namespace {

using Spans = std::vector<LineSpan>;

/// Lines from one to another, the second one without its subscripts.
LineSpan FromTo(int from, int to) { return {Currency::FromWhole(from), OnLine(to).Below}; }

Spans Each(std::initializer_list<int> lines) {
    Spans spans;
    for (const int line : lines) spans.push_back(OnLine(line));
    return spans;
}

Node Total(Spans lines) { return Money(Sum({ColumnOn(std::move(lines))})); }
Node Line(int line) { return OnOther(Currency::FromWhole(line)); }

CellDescription Balance(int line, std::string words, Node formula) {
    return {"G", {OnLine(line)}, "Col_1", std::move(words), std::move(formula)};
}

CellDescription Income(int line, std::string words, Node formula) {
    return {"G1", {OnLine(line)}, "Col_2", std::move(words), Stated(std::move(formula))};
}

DescriptionTable MakeDescriptions_G() {
    const Spans currentAssets = {{Currency::FromWhole(1), Currency::FromWhole(6)},
                                 LinesBetween(Currency::FromWhole(6), OnLine(9).Below)};
    const Spans fixedAssets = Each({11, 12, 14, 16, 18, 20, 22, 24, 25});
    const Spans depreciation = Each({13, 15, 17, 19, 21, 23});
    return {
        Balance(10, "Lines 1 to 9, less the allowances on line 6.",
                Money(Less({Total(currentAssets), Money(Sum({Line(6)}))}))),
        Balance(26, "Lines 11 to 25, less the accumulated depreciation.",
                Money(Less({Total(fixedAssets), Total(depreciation)}))),
        Balance(31, "The sum of lines 27 to 30.", Total({FromTo(27, 30)})),
        Balance(32, "The sum of lines 10, 26 and 31.", Money(Sum({Line(10), Line(26), Line(31)}))),
        Balance(40, "The sum of lines 33 to 39.", Total({FromTo(33, 39)})),
        Balance(45, "The sum of lines 41 to 44.", Total({FromTo(41, 44)})),
        Balance(46, "Line 40 plus line 45.", Money(Sum({Line(40), Line(45)}))),
        Balance(48, "Line 46 plus line 47.", Total(Each({46, 47}))),
    };
}

DescriptionTable MakeDescriptions_G1() {
    const Spans expenses = {LinesBetween(Currency::FromWhole(1), OnLine(2).Below)};
    return {
        Income(2, "The reclassified total of A, line 100, column 3.",
               Sum({There("A", kTotalOfA, "Col_3")})),
        Income(3, "Line 1 less line 2.", Less({Line(1), ColumnOn(expenses)})),
        Income(15, "The sum of lines 4 to 14.",
               Sum({ColumnOn({{Currency::FromWhole(4), Currency::FromWhole(15)}})})),
        Income(21, "The sum of lines 16 to 20.",
               Sum({ColumnOn({{Currency::FromWhole(16), Currency::FromWhole(21)}})})),
        Income(22, "Line 3 plus line 15 less line 21.", Less({Sum({Line(3), Line(15)}), Line(21)})),
    };
}

}  // namespace

const DescriptionTable& Descriptions_G() {
    static const DescriptionTable rules = MakeDescriptions_G();
    return rules;
}

const DescriptionTable& Descriptions_G1() {
    static const DescriptionTable rules = MakeDescriptions_G1();
    return rules;
}

}  // namespace zolmara
