#include "print/Report.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "core/PlainName.h"
#include "print/SendPrtFile.h"
#include "print/TextFields.h"
#include "store/session/Session.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

constexpr int kSectionTab = 6;

bool IsText(CellForm form) { return form == CellForm::Text || form == CellForm::Cut; }
bool IsSummed(CellForm form) { return form == CellForm::Amount || form == CellForm::Ratio; }

/// The lines of a text that goes on.
std::vector<std::string> CellLines(const Variant& value, const CellLayout& cell) {
    return CutAtWords(Trim(Replace(Text(value), "\r\n", " ")), cell.Width);
}

/// A number is aligned to the right end of its field, also where it is wider by one.
int TabOf(const CellLayout& cell, const std::string& text) {
    if (IsText(cell.Form)) return cell.Tab;
    return cell.Tab + cell.Width - static_cast<int>(text.size());
}

std::string_view SectionOf(std::span<const SectionWord> sections, Currency line) {
    std::string_view word;
    for (const SectionWord& section : sections) {
        if (line >= Currency::FromWhole(section.From)) word = section.Text;
    }
    return word;
}

const TotalLine* TotalOf(std::span<const TotalLine> totals, Currency line) {
    const auto found = std::ranges::find_if(
        totals, [&](const TotalLine& total) { return line == Currency::FromWhole(total.Line); });
    return found == totals.end() ? nullptr : &*found;
}

/// One walk down a table.
class TableWalk {
public:
    TableWalk(ReportPage& page, const TableLayout& layout) : page_(page), layout_(layout) {}

    void Row(const Recordset& row) {
        const Currency line = LineOf(row);
        const TotalLine* const total = TotalOf(layout_.Totals, line);
        const std::vector<std::string> sections = SectionLines(line);
        const std::vector<std::string> texts = RowLines(row, layout_.Cells);
        const std::size_t left = MakeRoom(line, texts.size(), sections);
        for (std::size_t i = left; i < sections.size(); ++i) page_.Print(sections[i]);
        if (total && total->Above != ' ') page_.Print(RuleLine(layout_.Cells, total->Above));
        for (const std::string& text : texts) page_.Print(text);
        if (total && total->Under != ' ') page_.Print(RuleLine(layout_.Cells, total->Under));
    }

private:
    /// The sections that begin with this row.
    std::vector<std::string> SectionLines(Currency line) {
        std::vector<std::string> lines;
        for (; section_ < layout_.Sections.size() &&
               line >= Currency::FromWhole(layout_.Sections[section_].From);
             ++section_) {
            lines.push_back(TextLine().At(kSectionTab, layout_.Sections[section_].Text).Text());
        }
        return lines;
    }

    /// Turns the page, or prints the first heads, where a row of so many lines needs it: what
    /// stands with the row above and under it asks for no room. Gives how many of the row's
    /// sections the head already says.
    std::size_t MakeRoom(Currency line, std::size_t size,
                         const std::vector<std::string>& sections) {
        const std::string_view word = SectionOf(layout_.HeadWords, line);
        const std::vector<std::string> head = HeadLines(layout_.Head, word);
        if (page_.IsFull(size + (begun_ ? 0 : head.size() + 1))) {
            page_.Begin(layout_.Label, layout_.Titles);
        } else if (begun_) {
            return 0;
        } else {
            page_.Print();
        }
        for (const std::string& text : head) page_.Print(text);
        begun_ = true;
        return !sections.empty() && !word.empty() && Trim(sections[0]) == word ? 1 : 0;
    }

    ReportPage& page_;
    const TableLayout& layout_;
    std::size_t section_ = 0;
    bool begun_ = false;
};

}  // namespace

bool ReportPage::IsFull(std::size_t blockLines) const {
    const std::size_t last = static_cast<std::size_t>(Lines) + std::max<std::size_t>(blockLines, 1);
    return last > static_cast<std::size_t>(Run.gPageLines) + 1;
}

void ReportPage::Print(std::string_view line) {
    PrintLine(Run.File, line);
    ++Lines;
}

void ReportPage::PrintCentered(std::string_view text) {
    Print(TextLine().At(CenteredColumn(text, Run), text).Text());
}

void ReportPage::BeginBare() {
    StartPage(Run);
    ++PageNumber;
    Lines = 1;
}

void ReportPage::Begin(std::string_view label, std::span<const std::string_view> titles) {
    PrintPageHeader(Run, label, PageNumber, Lines);
    for (const std::string_view title : titles) PrintCentered(title);
    Print();
}

namespace {

std::vector<std::string> TextsOf(const std::vector<TextLine>& lines) {
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (const TextLine& line : lines) texts.push_back(line.Text());
    return texts;
}

}  // namespace

std::vector<std::string> HeadLines(std::span<const HeadText> head, std::string_view section) {
    std::vector<TextLine> lines(head.empty() ? 0 : static_cast<std::size_t>(head.back().Line));
    for (const HeadText& text : head) {
        lines[static_cast<std::size_t>(text.Line - 1)].At(
            text.Tab, text.Text == kSectionWord ? section : text.Text);
    }
    return TextsOf(lines);
}

std::string CellText(const Variant& value, CellForm form, int width) {
    switch (form) {
        case CellForm::LineNum:
            return FormatLineNum(value, width);
        case CellForm::Text:
            return Text(value);
        case CellForm::Cut:
            return PadRight(value, width);
        case CellForm::Amount:
            return FormatAmount(value, width);
        case CellForm::Percent:
            return FormatDecimals(value, width, "#,##0.00");
        case CellForm::Ratio:
            return FormatDecimals(value, width, "0.000000");
    }
    return {};
}

namespace {

void PutText(TextLine& line, const std::string& text, const CellLayout& cell) {
    const int tab = TabOf(cell, text);
    IsSummed(cell.Form) ? line.AmountAt(tab, text) : line.At(tab, text);
}

void PutCell(std::vector<TextLine>& lines, const Variant& value, const CellLayout& cell) {
    if (cell.Form != CellForm::Text)
        return PutText(lines.front(), CellText(value, cell.Form, cell.Width), cell);
    const std::vector<std::string> texts = CellLines(value, cell);
    if (texts.size() > lines.size()) lines.resize(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) PutText(lines[i], texts[i], cell);
}

}  // namespace

std::vector<std::string> RowLines(const Recordset& row, std::span<const CellLayout> cells) {
    std::vector<TextLine> lines(1);
    for (const CellLayout& cell : cells) PutCell(lines, row[cell.Field], cell);
    return TextsOf(lines);
}

std::vector<TextLine> RowTextLines(std::span<const Variant> values,
                                   std::span<const CellLayout> cells) {
    std::vector<TextLine> lines(1);
    for (std::size_t i = 0; i < cells.size(); ++i) PutCell(lines, values[i], cells[i]);
    return lines;
}

std::string RuleLine(std::span<const CellLayout> cells, char mark) {
    TextLine line;
    for (const CellLayout& cell : cells) {
        if (!IsSummed(cell.Form)) continue;
        line.At(cell.Tab + cell.Width - kAmountWidth, std::string(kAmountWidth, mark));
    }
    return line.Text();
}

void PrintTable(ReportPage& page, const TableLayout& layout) {
    Recordset rows = gDB.OpenRecordset(layout.Query, dbOpenSnapshot);
    TableWalk walk(page, layout);
    for (; !rows.Eof(); rows.MoveNext()) walk.Row(rows);
}

void RunReport(PrintRun& run, std::string_view name, const std::function<void(PrintRun&)>& write) {
    if (run.File >= 1) {
        write(run);
        return;
    }
    const std::string path = PrintFilePath(name);
    OwnPrintFile own(path);
    PrintRun ownRun = run.For(own.Number());
    write(ownRun);
    own.Close();
    SendPrtFile(path, ownRun.gPageOrient, ownRun);
}

void PrintReport(PrintRun& run, std::string_view name, const std::vector<ReportPart>& parts) {
    RunReport(run, name, [&](PrintRun& open) {
        for (const ReportPart& part : parts) {
            ReportPage page(open);
            for (const TableLayout* table : part) PrintTable(page, *table);
        }
    });
}

std::string PrintFilePath(std::string_view name) {
    return fmt::format("{}/{}", gCRFDir, PlainFileName(name));
}

}  // namespace zolmara
