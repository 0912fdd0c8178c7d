// Worksheet A-7: the roll forward of capital assets, and the ratios with the summary of capital
// under them, which is the same table's further columns.

#include <array>

#include "print/Report.h"
#include "print/Reports.h"

namespace zolmara {
namespace {

using enum CellForm;

// --- Part I --------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_Part1 = {
    "Part I Analysis of changes in capital asset balances"};

constexpr std::array<HeadText, 24> kHead_Part1 = {{
    {1, 88, "Disposals"},
    {1, 118, "Fully"},
    {2, 36, "Beginning"},
    {2, 46, " Acquisitions "},
    {2, 94, "and"},
    {2, 104, "Ending"},
    {2, 112, "Depreciated"},
    {3, 0, "CMS"},
    {3, 37, "Balances"},
    {3, 50, "Purchase"},
    {3, 63, "Donation"},
    {3, 79, "Total"},
    {3, 86, "Retirements"},
    {3, 103, "Balance"},
    {3, 117, "Assets"},
    {4, 0, " #"},
    {4, 8, "Description"},
    {4, 41, "1"},
    {4, 54, "2"},
    {4, 67, "3"},
    {4, 80, "4"},
    {4, 93, "5"},
    {4, 106, "6"},
    {4, 119, "7"},
}};

/// Descriptions end ahead of the first amount.
constexpr CellLayout kLine = {"LineNum", LineNum, 1, 6};
constexpr CellLayout kDescription = {"Description", Text, 8, 24};

constexpr std::array<CellLayout, 9> kCells_Part1 = {{
    kLine,
    kDescription,
    {"Col_1", Amount, 33, kAmountWidth},
    {"Col_2", Amount, 46, kAmountWidth},
    {"Col_3", Amount, 59, kAmountWidth},
    {"Col_4", Amount, 72, kAmountWidth},
    {"Col_5", Amount, 85, kAmountWidth},
    {"Col_6", Amount, 98, kAmountWidth},
    {"Col_7", Amount, 111, kAmountWidth},
}};

constexpr std::array<TotalLine, 2> kTotals_Part1 = {{{7, '-', ' '}, {9, '-', '='}}};

constexpr TableLayout kLayout_Part1 = {.Label = "A-7",
                                       .Query = "SELECT * FROM A7p1 ORDER BY LineNum;",
                                       .Titles = kTitles_Part1,
                                       .Head = kHead_Part1,
                                       .Cells = kCells_Part1,
                                       .Totals = kTotals_Part1};

// --- Part II -------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_Part2 = {
    "Part II - Reconciliation of Capital Cost Centers"};
constexpr std::string_view kQuery_Part2 = "SELECT * FROM A7p2  ORDER BY LineNum;";
constexpr std::array<TotalLine, 1> kTotals_Part2 = {{{3, '-', '='}}};

constexpr std::array<HeadText, 29> kHead_Ratios = {{
    {1, 33, "Computation of Ratios"},
    {1, 85, "Allocation of Other Capital Related Costs"},
    {2, 88, "Insurance"},
    {2, 103, "Taxes &"},
    {2, 114, "All Other"},
    {3, 40, "Gross"},
    {3, 47, "Capitalized"},
    {3, 59, "Gross Assets"},
    {3, 88, "Premiums-"},
    {3, 101, "Licenses-"},
    {3, 116, "Cap Rel"},
    {3, 126, "Allocation"},
    {4, 39, "Assets"},
    {4, 52, "Leases"},
    {4, 62, "For Ratio"},
    {4, 79, "Ratio"},
    {4, 88, "Other CRC"},
    {4, 101, "Other CRC"},
    {4, 118, "Costs"},
    {4, 131, "Total"},
    {5, 8, "Description"},
    {5, 41, "1"},
    {5, 54, "2"},
    {5, 67, "3"},
    {5, 80, "4"},
    {5, 93, "5"},
    {5, 106, "6"},
    {5, 119, "7"},
    {5, 132, "8"},
}};

constexpr std::array<CellLayout, 10> kCells_Ratios = {{
    kLine,
    kDescription,
    {"Col_1", Amount, 33, kAmountWidth},
    {"Col_2", Amount, 46, kAmountWidth},
    {"Col_3", Amount, 59, kAmountWidth},
    {"Col_4", Ratio, 72, kAmountWidth},
    {"Col_5", Amount, 85, kAmountWidth},
    {"Col_6", Amount, 98, kAmountWidth},
    {"Col_7", Amount, 111, kAmountWidth},
    {"Col_8", Amount, 124, kAmountWidth},
}};

constexpr TableLayout kLayout_Ratios = {.Label = "A-7",
                                        .Query = kQuery_Part2,
                                        .Titles = kTitles_Part2,
                                        .Head = kHead_Ratios,
                                        .Cells = kCells_Ratios,
                                        .Totals = kTotals_Part2};

constexpr std::array<HeadText, 23> kHead_Summary = {{
    {1, 46, "Summary of Capital"},
    {2, 88, "Insurance"},
    {2, 103, "Taxes &"},
    {2, 114, "All Other"},
    {3, 88, "Premiums-"},
    {3, 101, "Licenses-"},
    {3, 116, "Cap Rel"},
    {3, 126, "Allocation"},
    {4, 46, "Depreciation"},
    {4, 66, "Lease"},
    {4, 76, "Interest"},
    {4, 88, "Other CRC"},
    {4, 101, "Other CRC"},
    {4, 118, "Costs"},
    {4, 131, "Total"},
    {5, 8, "Description"},
    {5, 54, "9"},
    {5, 66, "10"},
    {5, 79, "11"},
    {5, 92, "12"},
    {5, 105, "13"},
    {5, 118, "14"},
    {5, 131, "15"},
}};

constexpr std::array<CellLayout, 9> kCells_Summary = {{
    kLine,
    {"Description", Text, 8, 37},
    {"Col_9", Amount, 46, kAmountWidth},
    {"Col_10", Amount, 59, kAmountWidth},
    {"Col_11", Amount, 72, kAmountWidth},
    {"Col_12", Amount, 85, kAmountWidth},
    {"Col_13", Amount, 98, kAmountWidth},
    {"Col_14", Amount, 111, kAmountWidth},
    {"Col_15", Amount, 124, kAmountWidth},
}};

constexpr TableLayout kLayout_Summary = {.Label = "A-7",
                                         .Query = kQuery_Part2,
                                         .Titles = kTitles_Part2,
                                         .Head = kHead_Summary,
                                         .Cells = kCells_Summary,
                                         .Totals = kTotals_Part2};

}  // namespace

void Print_A7(PrintRun& run) {
    run.SetPagePortrait();
    PrintReport(run, "A7.prt", {{&kLayout_Part1}, {&kLayout_Ratios, &kLayout_Summary}});
}

}  // namespace zolmara
