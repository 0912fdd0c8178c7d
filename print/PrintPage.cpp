#include "print/PrintPage.h"

#include <fmt/format.h>

#include <cmath>

#include "core/Capitals.h"
#include "core/Clock.h"
#include "core/Globals.h"
#include "print/TextFields.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

/// From the right edge of the page to the words of the form's approval.
constexpr int kApprovalWidth = 27;

/// A line of the head that is centred, with words of the form's approval to the right of it.
void PrintHeadLine(const PrintRun& run, const std::string& text, std::string_view approval) {
    TextLine line;
    line.At(CenteredColumn(text, run), text);
    if (!approval.empty()) line.At(run.gPageWidth - kApprovalWidth, approval);
    PrintLine(run.File, line.Text());
}

void PrintIdentity(const PrintRun& run, bool approved) {
    PrintHeadLine(run, UCaseIn1252(gProviderName), approved ? "Form Approved" : "");
    PrintHeadLine(run, "Provider CCN: " + gProviderNumber, approved ? "OMB No. 0938-0202" : "");
    PrintHeadLine(run, fmt::format("Period from  {}  to  {}", Text(gFYStart), Text(gFYEnd)),
                  approved ? "Approval Expires 11-30-2024" : "");
}

/// The user's own lines; blank ones take no place.
std::vector<std::string> ReadHeaderLines() {
    std::vector<std::string> lines;
    if (!gDB.HasTable("HeaderLines")) {
        if (gDB.IsReadOnly()) return lines;
        Build_HeaderLines();
    }
    Recordset rows =
        gDB.OpenRecordset("SELECT * FROM HeaderLines Order By LineNum;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        if (!IsBlankValue(rows["Linetext"])) lines.push_back(Text(rows["Linetext"]));
    return lines;
}

/// They are read with the first page of a report.
void PrintHeaderLines(PrintRun& run, std::int16_t page, std::int16_t& linesUsed) {
    if (page == 1 || !run.HeaderLines) run.HeaderLines = ReadHeaderLines();
    const std::vector<std::string>& lines = *run.HeaderLines;
    for (const std::string& line : lines) PrintCentered(line, run);
    linesUsed = static_cast<std::int16_t>(linesUsed + lines.size());
}

void PrintWorksheetLine(const PrintRun& run, std::string_view label) {
    const DateTime now = Now();
    PrintCentered(
        fmt::format("Worksheet {}        {} at {}", label, FormatDate(now, "dddd, mmmm d, yyyy"),
                    FormatDate(now, "h:nn:ss AM/PM")),
        run);
}

/// How many characters of a text that is too long go on the line.
std::size_t RunOnEnd(std::string_view text, std::size_t width) {
    for (const std::string_view mark : {" ", ".", ")"}) {
        for (std::size_t i = width; i > 0; --i) {
            if (MidText(text, i, 1) == mark) return i;
        }
    }
    return width;
}

}  // namespace

void StartPage(PrintRun& run) {
    std::string control(1, kFormFeed);
    if (run.gPageOrient != run.gPageOrientDone) control += static_cast<char>(run.gPageOrient);
    run.gPageOrientDone = run.gPageOrient;
    PrintPageChange(run.File, control);
}

void PrintPageHeader(PrintRun& run, std::string_view worksheetLabel, std::int16_t& pageNumber,
                     std::int16_t& linesUsed) {
    linesUsed = 0;
    ++pageNumber;
    StartPage(run);
    PrintCentered(fmt::format("{}{}{}]", gTitlePrefix, kReportMark, gVersion), run);
    PrintCentered(fmt::format("In lieu of Form CMS-287-22{}", pageNumber > 1 ? ", continued" : ""),
                  run);
    PrintLine(run.File);
    PrintIdentity(run, worksheetLabel == "S");
    linesUsed = 7;
    PrintHeaderLines(run, pageNumber, linesUsed);
    PrintLine(run.File);
    PrintWorksheetLine(run, worksheetLabel);
    PrintLine(run.File);
    linesUsed = static_cast<std::int16_t>(linesUsed + 3);
}

int CenteredColumn(std::string_view text, const PrintRun& run, int center) {
    const double half = (static_cast<double>(TextLength(text)) - 0.5) / 2;
    return (center < 1 ? run.gPageCenter : center) - static_cast<int>(std::lrint(half));
}

void PrintCentered(std::string_view text, const PrintRun& run, int center) {
    PrintLine(run.File, TextLine().At(CenteredColumn(text, run, center), text).Text());
}

std::int16_t PrintWrapped(FileNumber file, int column, int width, std::string_view text) {
    const std::vector<std::string> lines = CutAtWords(text, width);
    if (file >= 1) {
        for (const std::string& line : lines) PrintLine(file, TextLine().At(column, line).Text());
    }
    return static_cast<std::int16_t>(lines.size());
}

std::string PrintRunOn(FileNumber file, int column, std::string_view text, int width,
                       std::int16_t& linesUsed) {
    const auto most = static_cast<std::size_t>(std::max(width, 1));
    while (TextLength(text) > most) {
        const std::size_t end = RunOnEnd(text, most);
        PrintLine(file, TextLine().At(column, RTrim(LeftText(text, end))).Text());
        text = LTrim(MidText(text, end + 1));
        ++linesUsed;
    }
    return std::string(text);
}

}  // namespace zolmara
