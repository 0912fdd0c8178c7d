#include "print/SendPrtFile.h"

#include <fmt/format.h>

#include <fstream>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/PrinterPort.h"
#include "core/Status.h"
#include "print/PageDevice.h"
#include "print/PrintPage.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kFont = "COURIER NEW";
constexpr double kFontSize = 7;
constexpr double kListingFontSize = 9.5;
constexpr int kHighQuality = -4;

bool HasFont(const std::string& name) { return UCase(name).find(kFont) != std::string::npos; }

void ChooseFont(PageDevice& printer) {
    if (HasFont(printer.FontName())) return;
    for (int i = 0; i < printer.FontCount(); ++i) {
        if (!HasFont(printer.Font(i))) continue;
        printer.SetFontName(printer.Font(i));
        return;
    }
}

void SetUp(PageDevice& printer, const std::string& fileName, int orientation) {
    printer.SetOrientation(orientation);
    printer.SetFontSize(kFontSize);
    if (HighQualityPrinting()) printer.SetPrintQuality(kHighQuality);
    printer.SetBold(true);
    if (fileName.ends_with(".LST")) printer.SetFontSize(kListingFontSize);
}

/// Takes the form feeds off the beginning of a line and carries them out. The very first line
/// begins no new page.
void TurnPages(PageDevice& printer, std::string_view& line, bool first) {
    while (line.starts_with(kFormFeed)) {
        if (!first) printer.NewPage();
        const char code = line.size() > 1 ? line[1] : ' ';
        const bool turns = code == kPortrait || code == kLandscape;
        if (turns) printer.SetOrientation(code);
        line.remove_prefix(turns ? 2 : 1);
    }
}

void PrintFile(PageDevice& printer, std::istream& file) {
    std::string text;
    for (bool first = true; std::getline(file, text); first = false) {
        if (text.ends_with('\r')) text.pop_back();
        std::string_view line = text;
        TurnPages(printer, line, first);
        printer.Print(FromCodePage1252(line));
    }
    printer.EndDoc();
}

void ReportError(const std::string& fileName, const std::string& error) {
    TheDialogs().MsgBox(
        fmt::format("The following error occurred during print of document:\r\n{}\r\n{}", fileName,
                    error),
        kExclamation, "Printing Error");
}

bool Declined(const std::string& fileName) {
    return gDebug &&
           TheDialogs().MsgBox(fmt::format("Print {}?", fileName), kYesNo + kDefaultButton2,
                               std::string(kProductName)) != kYes;
}

}  // namespace

bool HighQualityPrinting() {
    return TheMachine().GetSetting("Zolmara-10", "Printing", "PrintQuality", "True") == "True";
}

void SetHighQualityPrinting(bool on) {
    TheMachine().SaveSetting(on ? "Zolmara-10" : "Zolmara", "Printing", "PrintQuality",
                             on ? "True" : "False");
}

std::string HighQualityCaption() {
    return fmt::format("Turn High Quality Printing {}", HighQualityPrinting() ? "Off" : "On");
}

std::int16_t SendPrtFile(const std::string& fileName, std::int16_t orientation, PrintRun& run) {
    if (Declined(fileName)) return 0;
    PageDevice* const printer = ThePrinterPort().Printer();
    if (!printer || printer->Orientation() < 1) return 1;
    if (orientation != kPortrait && orientation != kLandscape) orientation = run.gPageOrient;
    try {
        ChooseFont(*printer);
        std::ifstream file(fileName, std::ios::binary);
        if (!file.is_open()) return 2;
        SetUp(*printer, fileName, orientation);
        TheStatus().SetPointer(Pointer::Hourglass);
        PrintFile(*printer, file);
    } catch (const std::exception& error) {
        ReportError(fileName, PlainWords(error));
    }
    TheStatus().SetPointer(Pointer::Normal);
    run.gPageOrientDone = 0;
    return 0;
}

}  // namespace zolmara
