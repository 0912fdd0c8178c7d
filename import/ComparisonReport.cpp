#include "import/ComparisonReport.h"

#include <fmt/format.h>

#include <array>

#include "core/Clock.h"
#include "core/CsvText.h"
#include "core/Globals.h"
#include "print/PrintPage.h"
#include "print/Report.h"
#include "print/TextFields.h"
#include "store/files/FileDoor.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kMark = "Comparison Of";
constexpr std::string_view kCsvHead = "item,line,column,name,here,there,difference,percent\n";

struct PrintedColumn {
    int Tab;
    int Width;
    std::string_view Head;
    bool Right;
};
constexpr std::array<PrintedColumn, 8> kPrinted{{{1, 11, "Worksheet", false},
                                                 {13, 8, "Line", true},
                                                 {23, 9, "Column", false},
                                                 {33, 34, "Name", false},
                                                 {68, 17, "Here", true},
                                                 {86, 17, "There", true},
                                                 {104, 16, "Difference", true},
                                                 {121, 10, "Per Cent", true}}};

std::string Cut(const std::string& text, const PrintedColumn& column) {
    return column.Right ? PadLeft(text, column.Width) : PadRight(text, column.Width);
}

std::string LineOfTexts(const std::array<std::string, kPrinted.size()>& texts) {
    TextLine line;
    for (std::size_t i = 0; i < kPrinted.size(); ++i)
        line.At(kPrinted[i].Tab, Cut(texts[i], kPrinted[i]));
    return std::string(RTrim(line.Text()));
}

void BeginPage(ReportPage& page, const std::string& other) {
    const DateTime now = Now();
    page.BeginBare();
    page.PrintCentered(
        fmt::format("{} {}{}", kMark, gCRFTitle, page.PageNumber > 1 ? ", continued" : ""));
    page.PrintCentered("With " + other);
    page.PrintCentered(
        fmt::format("{} at {}", FormatDate(now, "mmmm d, yyyy"), FormatDate(now, "Medium Time")));
    page.Print();
    std::array<std::string, kPrinted.size()> heads;
    std::array<std::string, kPrinted.size()> rules;
    for (std::size_t i = 0; i < kPrinted.size(); ++i) {
        heads[i] = kPrinted[i].Head;
        rules[i] = std::string(static_cast<std::size_t>(kPrinted[i].Width), '-');
    }
    page.Print(LineOfTexts(heads));
    page.Print(LineOfTexts(rules));
}

std::string OneLine(std::string text) {
    for (char& letter : text)
        if (static_cast<unsigned char>(letter) < ' ') letter = ' ';
    return text;
}

std::string CsvField(const Variant& value) {
    return value.IsNumber() ? NumberText(value.Number()) : CsvQuoted(CsvMarked(Text(value)));
}

bool IsComparisonCsv(std::string_view head) { return head.starts_with(kCsvHead); }

}  // namespace

const std::vector<std::string>& ComparisonColumns() {
    static const std::vector<std::string> columns = {
        "Worksheet", "Line", "Column", "Name", "Here", "There", "Difference", "Per Cent"};
    return columns;
}

std::vector<Variant> ComparisonRow(const CellDifference& cell) {
    return {cell.Item, cell.Line,  cell.Column,     cell.Name,
            cell.Here, cell.There, cell.Difference, cell.Percent};
}

void Print_Comparison(const std::vector<CellDifference>& differences, const std::string& other) {
    PrintRun run;
    run.SetPageLandscape();
    RunReport(run, "Compare.prt", [&](PrintRun& open) {
        ReportPage page(open);
        BeginPage(page, other);
        if (differences.empty()) page.Print("No differences.");
        for (const CellDifference& difference : differences) {
            if (page.IsFull(1)) BeginPage(page, other);
            std::array<std::string, kPrinted.size()> texts;
            const auto row = ComparisonRow(difference);
            for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = OneLine(Text(row[i]));
            page.Print(LineOfTexts(texts));
        }
    });
}

void SaveComparisonCsv(const std::vector<CellDifference>& differences, const std::string& path) {
    OutFile file(path, IsComparisonCsv);
    file.Write(kCsvHead);
    for (const CellDifference& difference : differences) {
        std::string line;
        for (const Variant& value : ComparisonRow(difference)) line += CsvField(value) + ",";
        line.back() = '\n';
        file.Write(line);
    }
    file.Put();
}

}  // namespace zolmara
