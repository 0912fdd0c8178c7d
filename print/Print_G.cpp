// Worksheets G and G-1.

#include <array>

#include "print/Report.h"
#include "print/Reports.h"

namespace zolmara {
namespace {

using enum CellForm;

constexpr std::array<HeadText, 5> kHead = {{
    {1, 85, "Amount"},
    {2, 0, "Line"},
    {2, 8, kSectionWord},
    {3, 0, " #"},
    {3, 88, "1"},
}};

/// The amount is wider by the blank ahead of it, as its rule is: " ------------" at 80.
constexpr int kAmountTab = 80;

// --- G -------------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_G = {"BALANCE SHEET"};

constexpr std::array<CellLayout, 3> kCells_G = {{
    {"LineNum", LineNum, 1, 6},
    {"Description", Text, 8, 71},
    {"Col_1", Amount, kAmountTab, kAmountWidth + 1},
}};

constexpr std::array<TotalLine, 8> kTotals_G = {{{10, '-', ' '},
                                                 {26, '-', ' '},
                                                 {31, '-', ' '},
                                                 {32, '-', '='},
                                                 {40, '-', ' '},
                                                 {45, '-', ' '},
                                                 {46, '-', ' '},
                                                 {48, '-', '='}}};

constexpr std::array<SectionWord, 2> kHeadWords_G = {{{1, "ASSETS"}, {33, "LIABILITIES"}}};

constexpr std::array<SectionWord, 7> kSections_G = {{{1, "CURRENT ASSETS"},
                                                     {11, "FIXED ASSETS"},
                                                     {27, "OTHER ASSETS"},
                                                     {33, "LIABILITIES"},
                                                     {33, "CURRENT LIABILITIES"},
                                                     {41, "LONG TERM LIABILITIES"},
                                                     {47, "CAPITAL"}}};

constexpr TableLayout kLayout_G = {.Label = "G",
                                   .Query = "SELECT * FROM G ORDER BY LineNum;",
                                   .Titles = kTitles_G,
                                   .Head = kHead,
                                   .Cells = kCells_G,
                                   .Totals = kTotals_G,
                                   .Sections = kSections_G,
                                   .HeadWords = kHeadWords_G};

// --- G-1 -----------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_G1 = {"Statement of Revenue And Expenses"};

constexpr std::array<CellLayout, 3> kCells_G1 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 71},
    {"Col_2", Amount, kAmountTab, kAmountWidth + 1},
}};

constexpr std::array<TotalLine, 4> kTotals_G1 = {
    {{3, '-', ' '}, {15, '-', ' '}, {21, '-', ' '}, {22, '-', '='}}};

/// The first page says the first section in its head.
constexpr std::array<SectionWord, 3> kSections_G1 = {
    {{1, "INCOME"}, {4, "OTHER INCOME"}, {16, "OTHER EXPENSES"}}};

constexpr TableLayout kLayout_G1 = {.Label = "G-1",
                                    .Query = "SELECT * FROM G1 ORDER BY LineNum;",
                                    .Titles = kTitles_G1,
                                    .Head = kHead,
                                    .Cells = kCells_G1,
                                    .Totals = kTotals_G1,
                                    .Sections = kSections_G1,
                                    .HeadWords = kSections_G1};

}  // namespace

void Print_G(PrintRun& run) {
    run.SetPagePortrait();
    PrintReport(run, "G.prt", {{&kLayout_G}});
}

void Print_G1(PrintRun& run) {
    run.SetPagePortrait();
    PrintReport(run, "G1.prt", {{&kLayout_G1}});
}

}  // namespace zolmara
