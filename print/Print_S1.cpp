// Worksheet S-1: the home office's particulars, each line with column heads of its own, and the key
// officers.

#include <array>

#include "core/Globals.h"
#include "print/Report.h"
#include "print/Reports.h"
#include "store/session/Session.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum CellForm;

// --- Part I --------------------------------------------------------------------------------

/// A line of the form, or a part of it: its heads and its columns. Every line begins with its
/// number and description.
struct FormLine {
    std::span<const HeadText> Head;
    std::span<const CellLayout> Cells;
};

constexpr std::array<std::string_view, 1> kTitles_Part1 = {"PART I - HOME OFFICE DATA"};

constexpr CellLayout kLine = {"LineNum", LineNum, 1, 6};
constexpr CellLayout kDescription = {"Description", Text, 8, 23};

constexpr std::array<HeadText, 12> kHead_Location = {{
    {1, 38, "Street Address Line 1"},
    {1, 75, "Street Address Line 2"},
    {1, 106, "P O Box"},
    {1, 130, "City"},
    {1, 153, "State"},
    {1, 162, "Zip"},
    {2, 48, "1"},
    {2, 85, "2"},
    {2, 109, "3"},
    {2, 132, "4"},
    {2, 155, "5"},
    {2, 163, "6"},
}};
constexpr std::array<CellLayout, 8> kCells_Location = {{
    kLine,
    kDescription,
    {"Col_1", Text, 32, 35},
    {"Col_2", Text, 68, 36},
    {"Col_3", Text, 106, 16},
    {"Col_4", Text, 123, 29},
    {"Col_5", Text, 153, 8},
    {"Col_6", Text, 162, 14},
}};

constexpr std::array<HeadText, 13> kHead_Office = {{
    {1, 68, "Home Office"},
    {1, 82, "Date Operations"},
    {1, 100, "--Reporting Period---"},
    {2, 41, "Home Office Name"},
    {2, 70, "Number"},
    {2, 87, "Began"},
    {2, 100, "Beginning"},
    {2, 113, "Ending"},
    {3, 48, "1"},
    {3, 72, "2"},
    {3, 88, "3"},
    {3, 104, "4"},
    {3, 115, "5"},
}};
constexpr std::array<CellLayout, 7> kCells_Office = {{
    kLine,
    kDescription,
    {"Col_1", Text, 32, 35},
    {"Col_2", Text, 69, 12},
    {"Col_3", Text, 84, 15},
    {"Col_4", Text, 100, 12},
    {"Col_5", Text, 113, 12},
}};

constexpr std::array<HeadText, 3> kHead_Control = {{
    {1, 31, "Type of Control"},
    {2, 38, "1"},
    {2, 60, "2"},
}};
constexpr std::array<CellLayout, 4> kCells_Control = {{
    kLine,
    kDescription,
    {"Col_1", Text, 38, 14},
    {"Col_2", Text, 53, 40},
}};

constexpr std::array<HeadText, 13> kHead_Statements = {{
    {1, 31, "Prepared"},
    {1, 52, "Accrued/Compiled/"},
    {1, 116, "Reconcile to"},
    {2, 32, "by CPA"},
    {2, 56, "Reviewed"},
    {2, 73, "Submitted"},
    {2, 94, "Date Available"},
    {2, 115, "Cost Statement"},
    {3, 35, "1"},
    {3, 60, "2"},
    {3, 77, "3"},
    {3, 100, "4"},
    {3, 120, "5"},
}};
constexpr std::array<CellLayout, 7> kCells_Statements = {{
    kLine,
    kDescription,
    {"Col_1", Text, 34, 20},
    {"Col_2", Text, 57, 17},
    {"Col_3", Text, 76, 17},
    {"Col_4", Text, 96, 18},
    {"Col_5", Text, 119, 40},
}};

constexpr std::array<HeadText, 6> kHead_Contact = {{
    {1, 43, "First Name"},
    {1, 81, "Last Name"},
    {1, 120, "Title"},
    {2, 48, "1"},
    {2, 85, "2"},
    {2, 122, "3"},
}};
constexpr std::array<CellLayout, 5> kCells_Contact = {{
    kLine,
    kDescription,
    {"Col_1", Text, 38, 37},
    {"Col_2", Text, 76, 39},
    {"Col_3", Text, 116, 40},
}};

constexpr std::array<HeadText, 6> kHead_Address = {{
    {1, 41, "Telephone Number"},
    {1, 79, "Email Address"},
    {1, 119, "Employer"},
    {2, 48, "4"},
    {2, 85, "5"},
    {2, 122, "6"},
}};
constexpr std::array<CellLayout, 3> kCells_Address = {{
    {"Col_4", Text, 38, 37},
    {"Col_5", Text, 76, 39},
    {"Col_6", Text, 116, 40},
}};

/// A further line of the contact has an e-mail address alone, in its sixth column.
constexpr std::array<HeadText, 2> kHead_MoreAddress = {{{1, 119, "Email Address"}, {2, 122, "6"}}};
constexpr std::array<CellLayout, 3> kCells_MoreAddress = {
    {kLine, kDescription, {"Col_6", Text, 116, 40}}};

constexpr std::array<FormLine, 1> kLocation = {{{kHead_Location, kCells_Location}}};
constexpr std::array<FormLine, 1> kOffice = {{{kHead_Office, kCells_Office}}};
constexpr std::array<FormLine, 1> kControl = {{{kHead_Control, kCells_Control}}};
constexpr std::array<FormLine, 1> kStatements = {{{kHead_Statements, kCells_Statements}}};
constexpr std::array<FormLine, 2> kContact = {
    {{kHead_Contact, kCells_Contact}, {kHead_Address, kCells_Address}}};
constexpr std::array<FormLine, 1> kMoreAddress = {{{kHead_MoreAddress, kCells_MoreAddress}}};

constexpr std::array<std::span<const FormLine>, 5> kFormLines = {kLocation, kOffice, kControl,
                                                                 kStatements, kContact};

std::span<const FormLine> FormOf(Currency line) {
    const std::int64_t whole = line.Whole();
    if (!line.IsWhole() || !Between<std::int64_t>(whole, 1, std::ssize(kFormLines)))
        return kMoreAddress;
    return kFormLines.at(static_cast<std::size_t>(whole - 1));
}

/// A line of the form with its heads, and the blank line that sets it off.
std::vector<std::string> Block(const Recordset& row) {
    std::vector<std::string> block;
    for (const FormLine& part : FormOf(LineOf(row))) {
        std::ranges::move(HeadLines(part.Head), std::back_inserter(block));
        std::ranges::move(RowLines(row, part.Cells), std::back_inserter(block));
    }
    block.emplace_back();
    return block;
}

void PrintPart1(PrintRun& run) {
    ReportPage page(run);
    Recordset rows = gDB.OpenRecordset("SELECT * FROM S1p1 ORDER BY LineNum;");
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::vector<std::string> block = Block(rows);
        if (page.IsFull(block.size())) page.Begin("S-1 Part I", kTitles_Part1);
        for (const std::string& line : block) page.Print(line);
    }
}

// --- Part II -------------------------------------------------------------------------------

constexpr std::array<std::string_view, 1> kTitles_Part2 = {"PART II - KEY OFFICER DATA"};

constexpr std::array<HeadText, 4> kHead_Part2 = {{
    {1, 6, "Position/Job Title"},
    {1, 43, "Key Officer Name"},
    {2, 14, "1"},
    {2, 51, "2"},
}};

constexpr std::array<CellLayout, 3> kCells_Part2 = {{
    {"LineNum", LineNum, 1, 6},
    {"Col_1", Text, 8, 34},
    {"Col_2", Text, 43, 36},
}};

constexpr TableLayout kLayout_Part2 = {.Label = "S-1 Part II",
                                       .Query = "SELECT * FROM S1p2 ORDER BY LineNum;",
                                       .Titles = kTitles_Part2,
                                       .Head = kHead_Part2,
                                       .Cells = kCells_Part2};

}  // namespace

void Print_S1(PrintRun& run) {
    run.SetPageLandscape();
    RunReport(run, "S1.prt", [](PrintRun& open) {
        PrintPart1(open);
        ReportPage page(open);
        PrintTable(page, kLayout_Part2);
    });
}

}  // namespace zolmara
