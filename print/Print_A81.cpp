// Worksheet A-8-1: costs from related organizations, and the organizations.

#include <array>

#include "print/Report.h"
#include "print/Reports.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

using enum CellForm;

constexpr std::array<std::string_view, 1> kTitles_Part1 = {
    "Costs Of Services From Related Organizaionts"};

constexpr std::array<HeadText, 23> kHead_Part1 = {{
    {1, 89, "Sch A81"},
    {1, 102, "Amount"},
    {1, 115, "Amount"},
    {2, 89, "Part II"},
    {2, 100, "Allowable"},
    {2, 113, "Included in"},
    {2, 130, "Net"},
    {3, 0, "Line"},
    {3, 8, "CC #"},
    {3, 15, "Description"},
    {3, 52, "Expense Item Description"},
    {3, 89, "Line #"},
    {3, 101, "In Cost"},
    {3, 113, "Wkst A Col3"},
    {3, 127, "Adjustment"},
    {4, 0, "  #"},
    {4, 9, "1"},
    {4, 20, "2"},
    {4, 60, "3"},
    {4, 92, "4"},
    {4, 105, "5"},
    {4, 118, "6"},
    {4, 131, "7"},
}};

constexpr std::array<CellLayout, 8> kCells_Part1 = {{
    {"SeqNum", LineNum, 1, 6},
    {"Col_1", LineNum, 8, 6},
    {"Col_2", Text, 15, 36},
    {"Col_3", Text, 52, 36},
    {"Col_4", LineNum, 89, 6},
    {"Col_5", Amount, 99, kAmountWidth},
    {"Col_6", Amount, 112, kAmountWidth},
    {"Col_7", Amount, 125, kAmountWidth},
}};

constexpr std::array<TotalLine, 1> kTotals_Part1 = {{{kTotalOfEntries.Whole(), '-', '='}}};

constexpr TableLayout kLayout_Part1 = {.Label = "A-8-1",
                                       .Query = "SELECT * FROM A81p1 Order By SeqNum;",
                                       .Titles = kTitles_Part1,
                                       .Head = kHead_Part1,
                                       .Cells = kCells_Part1,
                                       .Totals = kTotals_Part1};

constexpr std::array<std::string_view, 1> kTitles_Part2 = {
    "Statement of Costs of Services from Related Organizations"};

constexpr std::array<HeadText, 17> kHead_Part2 = {{
    {1, 83, "Percentage"},
    {1, 129, "Percentage"},
    {2, 5, "Symbol"},
    {2, 16, "Interrelationship Description"},
    {2, 48, "Name Of Related Individual"},
    {2, 84, "Ownership"},
    {2, 95, "Related Organization Name"},
    {2, 130, "Ownership"},
    {2, 141, "Type of Business"},
    {3, 0, "  "},
    {3, 8, "1"},
    {3, 20, "2"},
    {3, 58, "3"},
    {3, 88, "4"},
    {3, 104, "5"},
    {3, 133, "6"},
    {3, 146, "7"},
}};

constexpr std::array<CellLayout, 8> kCells_Part2 = {{
    {"SeqNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 7},
    {"Col_2", Text, 16, 31},
    {"Col_3", Text, 48, 34},
    {"Col_4", Percent, 83, 10},
    {"Col_5", Text, 95, 33},
    {"Col_6", Percent, 129, 10},
    {"Col_7", Text, 141, 36},
}};

constexpr TableLayout kLayout_Part2 = {.Label = "A-8-1",
                                       .Query = "SELECT * FROM A81p2 Order By SeqNum;",
                                       .Titles = kTitles_Part2,
                                       .Head = kHead_Part2,
                                       .Cells = kCells_Part2};

}  // namespace

void Print_A81(PrintRun& run) {
    run.SetPageLandscape();
    PrintReport(run, "A81.prt", {{&kLayout_Part1}, {&kLayout_Part2}});
}

}  // namespace zolmara
