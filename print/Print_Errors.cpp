// The findings of the last edit checks.

#include <fmt/format.h>

#include "core/Clock.h"
#include "core/Globals.h"
#include "print/PrintPage.h"
#include "print/Report.h"
#include "print/Reports.h"
#include "print/TextFields.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr int kLevelTab = 1;
constexpr int kCodeTab = 19;
constexpr int kMessageTab = 27;
constexpr int kMessageWidth = 110;

std::string FindingLine(std::string_view level, std::string_view code, std::string_view message) {
    return TextLine().At(kLevelTab, level).At(kCodeTab, code).At(kMessageTab, message).Text();
}

void BeginPage(ReportPage& page) {
    const DateTime now = Now();
    page.BeginBare();
    page.PrintCentered(
        fmt::format("{}{}", kFindingsMark, page.PageNumber > 1 ? ", continued" : ""));
    page.PrintCentered(fmt::format("{} ({})", gProviderName, gProviderNumber));
    page.PrintCentered(
        fmt::format("{} at {}", FormatDate(now, "mmmm d, yyyy"), FormatDate(now, "Medium Time")));
    page.Print();
    page.Print(FindingLine("Level", "Code", "Description"));
    page.Print(FindingLine(std::string(kCodeTab - kLevelTab - 2, '-'),
                           std::string(kMessageTab - kCodeTab - 2, '-'),
                           std::string(kMessageWidth, '-')));
}

/// A message line by line; a line that is too long runs on in the next.
void PrintMessage(ReportPage& page, std::string_view first, std::string_view code,
                  std::string_view message) {
    const std::vector<std::string> lines = CutAtWords(message, kMessageWidth);
    if (page.IsFull(lines.size())) BeginPage(page);
    if (lines.empty()) page.Print(FindingLine(first, code, ""));
    for (std::size_t i = 0; i < lines.size(); ++i)
        page.Print(FindingLine(i == 0 ? first : "", i == 0 ? code : "", lines[i]));
}

/// Each line break of a message begins a line.
void PrintFinding(ReportPage& page, const Recordset& finding) {
    const std::string text = Replace(Replace(Text(finding["Message"]), "\r\n", "\n"), "\r", "\n");
    std::string_view rest = text;
    std::string level = Text(finding["Level"]);
    std::string code = Text(finding["Code"]);
    for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
        PrintMessage(page, std::exchange(level, ""), std::exchange(code, ""), rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    PrintMessage(page, level, code, rest);
}

}  // namespace

void Print_Errors() {
    PrintRun run;
    run.SetPagePortrait();
    RunReport(run, "CalcErrors.prt", [](PrintRun& open) {
        if (!TableExists("Error", false)) return;
        ReportPage page(open);
        Recordset rows = gDB.OpenRecordset("Select * From Error;");
        for (; !rows.Eof(); rows.MoveNext()) PrintFinding(page, rows);
    });
}

}  // namespace zolmara
