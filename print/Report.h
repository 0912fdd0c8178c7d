#pragma once

// Reports as data: where the head lines, the columns and the totals of a worksheet stand, and the
// one procedure that walks them.

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "print/PrintPage.h"
#include "print/TextFields.h"
#include "store/Dao.h"

namespace zolmara {

/// A text of a report's column heads. A tab of 0 is the left margin.
struct HeadText {
    int Line;  ///< of the head, from 1
    int Tab;
    std::string_view Text;
};
/// Stands in a head for the section of the row that opens the page.
inline constexpr std::string_view kSectionWord = "";

enum class CellForm {
    LineNum,  ///< a line number, aligned on its units
    Text,     ///< goes on in further lines where it is too long
    Cut,      ///< a text that ends with its width
    Amount,   ///< "#,##0"
    Percent,  ///< "#,##0.00"
    Ratio,    ///< "0.000000"
};

/// A column of a report.
struct CellLayout {
    std::string_view Field;
    CellForm Form;
    int Tab;
    int Width;
};

/// The width of an amount, and of the rules above and under it.
inline constexpr int kAmountWidth = 12;

/// A line of the form that is a total, and what its rules are made of; a blank is no rule.
struct TotalLine {
    std::int64_t Line;
    char Above;
    char Under;
};

/// A heading between rows, ahead of the first row from a line of the form on.
struct SectionWord {
    int From;
    std::string_view Text;
};

struct TableLayout {
    std::string_view Label;  ///< in the head of the page, behind "Worksheet "
    std::string_view Query;
    std::span<const std::string_view> Titles;
    std::span<const HeadText> Head;
    std::span<const CellLayout> Cells;
    std::span<const TotalLine> Totals = {};
    std::span<const SectionWord> Sections = {};
    /// What kSectionWord is, by the row that opens the page.
    std::span<const SectionWord> HeadWords = {};
};

/// A report on its way down the pages.
struct ReportPage {
    PrintRun& Run;
    std::int16_t PageNumber = 0;
    std::int16_t Lines = 999;  ///< used on this page; so the first row brings a head

    explicit ReportPage(PrintRun& run) : Run(run) {}

    /// True where a row of so many lines passes the end of the page: a row of one line when the
    /// counter is above gPageLines.
    bool IsFull(std::size_t blockLines) const;
    void Print(std::string_view line = "");
    void PrintCentered(std::string_view text);
    /// A page without the head of the form.
    void BeginBare();
    /// The head of the form, the titles and a blank line.
    void Begin(std::string_view label, std::span<const std::string_view> titles);
};

/// Column heads, one text a line.
std::vector<std::string> HeadLines(std::span<const HeadText> head, std::string_view section = "");

/// A cell of a row as it is printed: its column and its text, without blanks around an amount.
std::string CellText(const Variant& value, CellForm form, int width);

/// A row's cells as one block of lines: as many as its longest text takes.
std::vector<std::string> RowLines(const Recordset& row, std::span<const CellLayout> cells);
/// The same of values at hand, one for each layout, for lines that go on.
std::vector<TextLine> RowTextLines(std::span<const Variant> values,
                                   std::span<const CellLayout> cells);

/// The rules above or under the amounts.
std::string RuleLine(std::span<const CellLayout> cells, char mark);

/// Prints a table of the CRF, page by page. On a page that has been begun, the column heads follow
/// what stands there if the first row finds room too.
void PrintTable(ReportPage& page, const TableLayout& layout);

/// Runs a report whose page is set up: into the run's file, or where that has none into a file of
/// its own in the CRF's folder, which is then sent to the printer. `write` takes the run of the
/// file that it writes to.
void RunReport(PrintRun& run, std::string_view name, const std::function<void(PrintRun&)>& write);

/// A report whose parts are told by layouts alone. Each part begins a page of its own and counts
/// its pages anew; the tables of one part stand under each other.
using ReportPart = std::vector<const TableLayout*>;
void PrintReport(PrintRun& run, std::string_view name, const std::vector<ReportPart>& parts);

/// The path of a print file in the CRF's folder.
std::string PrintFilePath(std::string_view name);

}  // namespace zolmara
