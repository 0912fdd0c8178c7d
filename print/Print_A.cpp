// Worksheets A, A-6 and A-8.

#include <array>

#include "print/Report.h"
#include "print/Reports.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

using enum CellForm;

// --- A -------------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_A = {
    "Reclassification and Adjustment of Trial Balance of Expenses"};

constexpr std::array<HeadText, 33> kHead_A = {{
    {1, 133, "Direct"},
    {1, 144, "Functional"},
    {2, 64, "Expenses Per"},
    {2, 90, "Reclassified"},
    {2, 121, "Net"},
    {2, 130, "Allocations"},
    {2, 143, "Allocations"},
    {3, 65, "Home Office"},
    {3, 79, "Reclassi-"},
    {3, 94, "Trial"},
    {3, 118, "Allowable"},
    {3, 134, "To"},
    {3, 147, "To"},
    {3, 158, "Pooled"},
    {4, 0, "CMS"},
    {4, 8, "DESCRIPTION"},
    {4, 68, "Books"},
    {4, 78, "ifications"},
    {4, 93, "Balance"},
    {4, 104, "Adjustments"},
    {4, 118, "Expenses"},
    {4, 130, "Components"},
    {4, 143, "Components"},
    {4, 156, "Allocations"},
    {5, 0, " #"},
    {5, 73, "1"},
    {5, 86, "2"},
    {5, 99, "3"},
    {5, 112, "4"},
    {5, 125, "5"},
    {5, 138, "6"},
    {5, 151, "7"},
    {5, 164, "8"},
}};

constexpr std::array<CellLayout, 10> kCells_A = {{
    {"LineNum", LineNum, 1, 6},
    {"CCName", Text, 8, 55},
    {"Col_1", Amount, 64, kAmountWidth},
    {"Col_2", Amount, 77, kAmountWidth},
    {"Col_3", Amount, 90, kAmountWidth},
    {"Col_4", Amount, 103, kAmountWidth},
    {"Col_5", Amount, 116, kAmountWidth},
    {"Col_6", Amount, 129, kAmountWidth},
    {"Col_7", Amount, 142, kAmountWidth},
    {"Col_8", Amount, 155, kAmountWidth},
}};

constexpr std::array<TotalLine, 4> kTotals_A = {{{kCapitalSubtotal.Whole(), '-', ' '},
                                                 {kOtherCapitalSubtotal.Whole(), '-', ' '},
                                                 {kNonCapitalSubtotal.Whole(), '-', ' '},
                                                 {kTotalOfA.Whole(), '-', '='}}};

constexpr std::array<SectionWord, 3> kSections_A = {{{1, "CAPITAL RELATED COST CENTERS"},
                                                     {4, "OTHER CAPITAL RELATED COST CENTERS"},
                                                     {8, "NON-CAPITAL COST CENTERS"}}};

constexpr TableLayout kLayout_A = {.Label = "A",
                                   .Query = "Select * From A Order by LineNum ;",
                                   .Titles = kTitles_A,
                                   .Head = kHead_A,
                                   .Cells = kCells_A,
                                   .Totals = kTotals_A,
                                   .Sections = kSections_A};

// --- A-6 -----------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_A6 = {"Reclassifications"};

constexpr std::array<HeadText, 19> kHead_A6 = {{
    {1, 48,
     "------------------------- Increases ------------------------- "
     "---------------------- Decreases -----------------------"},
    {2, 0, "Line"},
    {2, 8, "Expanation of Reclassification"},
    {2, 43, "Code"},
    {2, 56, "Cost Center"},
    {2, 89, "CC #"},
    {2, 103, "Amount"},
    {2, 115, "Cost Center"},
    {2, 147, "CC #"},
    {2, 159, "Amount"},
    {3, 0, " #"},
    {3, 13, "1"},
    {3, 46, "2"},
    {3, 61, "3"},
    {3, 91, "4"},
    {3, 105, "5"},
    {3, 120, "6"},
    {3, 149, "7"},
    {3, 161, "8"},
}};

/// The amounts are wider by the blank ahead of them: their rules stand at 97 and 154.
constexpr std::array<CellLayout, 9> kCells_A6 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Cut, 8, 36},
    {"Col_2", Text, 46, 4},
    {"Col_3", Text, 51, 38},
    {"Col_4", LineNum, 89, 6},
    {"Col_5", Amount, 96, kAmountWidth + 1},
    {"Col_6", Text, 110, 37},
    {"Col_7", LineNum, 147, 6},
    {"Col_8", Amount, 153, kAmountWidth + 1},
}};

constexpr std::array<TotalLine, 1> kTotals_A6 = {{{kTotalOfEntries.Whole(), '-', '='}}};

constexpr TableLayout kLayout_A6 = {.Label = "A-6",
                                    .Query = "SELECT * FROM A6 ORDER BY LineNum;",
                                    .Titles = kTitles_A6,
                                    .Head = kHead_A6,
                                    .Cells = kCells_A6,
                                    .Totals = kTotals_A6};

// --- A-8 -----------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_A8 = {"Adjustments to Expenses"};

constexpr std::array<HeadText, 13> kHead_A8 = {{
    {1, 90, " Schedule A Cost Center "},
    {2, 0, "CMS"},
    {2, 8, "Description"},
    {2, 69, "Basis"},
    {2, 82, "Amount"},
    {2, 90, "Description"},
    {2, 131, "Line No."},
    {3, 0, " #"},
    {3, 17, "1"},
    {3, 71, "2"},
    {3, 84, "3"},
    {3, 93, "4"},
    {3, 136, "5"},
}};

constexpr std::array<CellLayout, 6> kCells_A8 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 60},
    {"Col_2", Text, 69, 6},
    {"Col_3", Amount, 77, kAmountWidth},
    {"Col_4", Text, 90, 40},
    {"Col_5", LineNum, 132, 6},
}};

constexpr std::array<TotalLine, 1> kTotals_A8 = {{{kTotalOfEntries.Whole(), '-', '='}}};

constexpr TableLayout kLayout_A8 = {.Label = "A-8",
                                    .Query = "SELECT * FROM A8 ORDER BY LineNum;",
                                    .Titles = kTitles_A8,
                                    .Head = kHead_A8,
                                    .Cells = kCells_A8,
                                    .Totals = kTotals_A8};

}  // namespace

void Print_A(PrintRun& run) {
    run.SetPageLandscape();
    PrintReport(run, "A.prt", {{&kLayout_A}});
}

void Print_A6(PrintRun& run) {
    run.SetPageLandscape();
    PrintReport(run, "A6.prt", {{&kLayout_A6}});
}

void Print_A8(PrintRun& run) {
    run.SetPagePortrait();
    PrintReport(run, "A8.prt", {{&kLayout_A8}});
}

}  // namespace zolmara
