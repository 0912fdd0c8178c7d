// Worksheet S-2: the components of the chain, in three parts.

#include <array>

#include "print/Report.h"
#include "print/Reports.h"

namespace zolmara {
namespace {

using enum CellForm;

constexpr std::string_view kTitle = "LISTING OF COMPONENTS";

// --- Part I --------------------------------------------------------------------------------

constexpr std::array<std::string_view, 2> kTitles_Part1 = {
    kTitle, "Part I - Healthcare Provider Components"};

constexpr std::array<HeadText, 36> kHead_Part1 = {{
    {1, 69, "--Reporting Period Ending--"},
    {1, 108, "Date Sold /"},
    {1, 121, "Medicaid"},
    {1, 134, "Medicare"},
    {1, 147, "Medicare"},
    {1, 158, "Medicaid"},
    {2, 57, "Owned or"},
    {2, 69, "---During HO Fiscal Year---"},
    {2, 100, "Date"},
    {2, 109, "Closed /"},
    {2, 121, "Partici-"},
    {2, 133, "Reimburse-"},
    {2, 145, "Contractor"},
    {2, 157, "Contractor"},
    {3, 18, "Component Name"},
    {3, 46, "CCN"},
    {3, 57, "Managed"},
    {3, 69, "-Beginning-"},
    {3, 81, "---Ending------"},
    {3, 98, "Acquired"},
    {3, 109, "Ceased Op."},
    {3, 122, "pation"},
    {3, 133, "ment Type"},
    {3, 147, "Number"},
    {3, 159, "Name"},
    {4, 25, "1"},
    {4, 47, "2"},
    {4, 60, "3"},
    {4, 74, "4"},
    {4, 86, "5"},
    {4, 102, "6"},
    {4, 114, "7"},
    {4, 124, "8"},
    {4, 137, "9"},
    {4, 149, "10"},
    {4, 161, "11"},
}};

constexpr std::array<CellLayout, 12> kCells_Part1 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 37},
    {"Col_2", Text, 46, 10},
    {"Col_3", Text, 57, 11},
    {"Col_4", Text, 70, 11},
    {"Col_5", Text, 82, 15},
    {"Col_6", Text, 98, 10},
    {"Col_7", Text, 109, 11},
    {"Col_8", Text, 121, 11},
    {"Col_9", Text, 133, 11},
    {"Col_10", Text, 145, 11},
    {"Col_11", Text, 157, 20},
}};

constexpr TableLayout kLayout_Part1 = {.Label = "S-2",
                                       .Query = "SELECT * FROM S2p1  ORDER BY LineNum;",
                                       .Titles = kTitles_Part1,
                                       .Head = kHead_Part1,
                                       .Cells = kCells_Part1};

// --- Part II -------------------------------------------------------------------------------

constexpr std::array<std::string_view, 2> kTitles_Part2 = {
    kTitle, "Part II - Non-Healthcare Provider Components"};

constexpr std::array<HeadText, 15> kHead_Part2 = {{
    {1, 69, "-Accounting Period Ending--"},
    {1, 111, "Date"},
    {2, 69, "---During HO Fiscal Year---"},
    {2, 100, "Date"},
    {2, 111, "Sold /"},
    {3, 18, "Component Name"},
    {3, 69, "-Beginning-"},
    {3, 81, "---Ending------"},
    {3, 98, "Acquired"},
    {3, 110, "Closed"},
    {4, 25, "1"},
    {4, 74, "4"},
    {4, 86, "5"},
    {4, 102, "6"},
    {4, 114, "7"},
}};

constexpr std::array<CellLayout, 6> kCells_Part2 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 60},
    {"Col_4", Text, 70, 11},
    {"Col_5", Text, 82, 15},
    {"Col_6", Text, 98, 10},
    {"Col_7", Text, 109, 11},
}};

constexpr TableLayout kLayout_Part2 = {.Label = "S-2 Part II",
                                       .Query = "SELECT * FROM S2p2  ORDER BY LineNum;",
                                       .Titles = kTitles_Part2,
                                       .Head = kHead_Part2,
                                       .Cells = kCells_Part2};

// --- Part III ------------------------------------------------------------------------------

constexpr std::array<std::string_view, 2> kTitles_Part3 = {
    kTitle, "Part III - Region / Division Components"};

constexpr std::array<HeadText, 24> kHead_Part3 = {{
    {1, 136, "Costs"},
    {1, 147, "Separate"},
    {2, 134, "Included"},
    {2, 149, "Cost"},
    {2, 158, "Region /"},
    {3, 45, "Regional"},
    {3, 69, "------------------Region / Division Location------------------"},
    {3, 133, "In This Cost"},
    {3, 146, "Statement"},
    {3, 158, "Division"},
    {4, 18, "Component Name"},
    {4, 45, "HO Number"},
    {4, 69, "----City"},
    {4, 121, "--State---"},
    {4, 134, "Statement"},
    {4, 146, "Submitted"},
    {4, 157, "Contractor"},
    {5, 25, "1"},
    {5, 47, "2"},
    {5, 74, "4"},
    {5, 124, "5"},
    {5, 137, "6"},
    {5, 149, "7"},
    {5, 161, "8"},
}};

constexpr std::array<CellLayout, 8> kCells_Part3 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 36},
    {"Col_2", Text, 45, 23},
    {"Col_4", Text, 69, 51},
    {"Col_5", Text, 121, 11},
    {"Col_6", Amount, 133, kAmountWidth},
    {"Col_7", Text, 146, 10},
    {"Col_8", Text, 157, 20},
}};

constexpr TableLayout kLayout_Part3 = {.Label = "S-2 Part III",
                                       .Query = "SELECT * FROM S2p3  ORDER BY LineNum;",
                                       .Titles = kTitles_Part3,
                                       .Head = kHead_Part3,
                                       .Cells = kCells_Part3};

}  // namespace

void Print_S2(PrintRun& run) {
    run.SetPageLandscape();
    PrintReport(run, "S2.prt", {{&kLayout_Part1}, {&kLayout_Part2}, {&kLayout_Part3}});
}

}  // namespace zolmara
