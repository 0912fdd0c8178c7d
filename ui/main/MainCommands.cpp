#include "ui/main/MainCommands.h"

#include <QAction>
#include <filesystem>

#include "calc/Calc_All.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/Windows.h"
#include "editchecks/modEditChecks.h"
#include "import/ImportASCII.h"
#include "print/PrintDriver.h"
#include "print/SendPrtFile.h"
#include "store/session/Session.h"
#include "ui/dialogs/BuildEcr.h"
#include "ui/dialogs/frmCreateNewCRF.h"
#include "ui/dialogs/frmHeaderLines.h"
#include "ui/dialogs/frmHelpAbout.h"
#include "ui/dialogs/frmImportMDI.h"
#include "ui/dialogs/frmReBuild_A_Worksheet.h"
#include "ui/dialogs/frmViewError.h"
#include "ui/main/Desktop.h"
#include "ui/main/Done.h"
#include "ui/main/FileRoads.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/frmMain.h"
#include "ui/overview/StatementNotes.h"
#include "ui/printing/frmSelectivePrints.h"
#include "ui/worksheets/BlockCopy.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {
namespace {

void ReportNew(frmMain& main) {
    if (CloseAllForms(false) != 0) return;
    if (!gCRFPath.empty()) mnuReportClose();
    if (!gCRFPath.empty()) return;
    ShowForm(new frmCreateNewCRF);
    main.RefreshMenus();
}

void ReportOpen(frmMain&) { mnuReportOpen(); }
void ReportClose(frmMain&) { mnuReportClose(); }
void ReportSaveAs(frmMain&) {
    // The windows stay, and the file that a block is copied from is closed.
    FinishCopy();
    mnuReportSaveAs();
}
void ReportEditCheck(frmMain&) {
    const FiguresStay stay;
    mnuReportEditCheck();
    TellDone("Checked");
}
void ReportCalculate(frmMain&) {
    mnuReportCalculate(Calc_Changed);
    NoteCalculation(true);
    TellDone("Calculated and checked");
}
void ReportPrintSelect(frmMain&) {
    if (!ShowOpenForm("frmSelectivePrints")) ShowForm(new frmSelectivePrints);
}
void ReportPrint(frmMain&) {
    const FiguresStay stay;
    Print_All(0);
}
void ReportImportASCII(frmMain&) { mnuReportImportASCII(ImportAndTell); }
void ReportImportCRF(frmMain&) { ShowImportCRF(); }
void ReportExit(frmMain& main) { main.close(); }

void ReportPrinterSetup(frmMain&) {
    const bool welcome = TheWindows().WelcomeVisible();
    TheWindows().SetWelcomeVisible(false);
    TheQtHost().SetUpPrinter("Printer Setup");
    TheWindows().SetWelcomeVisible(welcome);
}

void ReportManually(frmMain&) { BuildSignedByHand(); }

void ReportElectronically(frmMain&) {
    if (CloseAllForms(false) == 0) ShowCertification();
}

void UtilitiesReBuild(frmMain&) {
    if (CloseAllForms(false) != 0) return;
    ShowForm(new frmReBuild_A_Worksheet);
}

void UtilitiesHQ(frmMain& main) {
    QAction* const entry = main.Menu("mnuReportUtilitiesHQ");
    const bool turnOff = entry->text().endsWith("Off");
    SetHighQualityPrinting(!turnOff);
    entry->setText(turnOff ? "Turn High Quality Printing On" : "Turn High Quality Printing Off");
    TellDone(turnOff ? "High quality printing is off" : "High quality printing is on");
}

void UtilitiesHeader(frmMain&) {
    if (!ShowOpenForm("frmHeaderLines")) ShowForm(new frmHeaderLines);
}

void UtilitiesLog(frmMain&) {
    if (FormIsOpen("frmViewError")) {
        TheWindows().SetGrd("frmViewError");
        ShowOpenForm("frmViewError");
    } else
        TheWindows().ShowErrors("Edit Check Results");
}

void EditClose(frmMain& main) {
    UnloadFormsLike("frmEdit");
    main.RefreshMenus();
}

void ViewCloseAll(frmMain& main) {
    UnloadFormsLike("frmView");
    main.RefreshMenus();
}

void HelpContents(frmMain&) {
    TheDesktop().OpenDocument(
        (std::filesystem::path(TheMachine().ProgramFolder()) / "R3P248i.pdf").string());
}

void HelpAbout(frmMain&) {
    if (!ShowOpenForm("frmHelpAbout")) ShowForm(new frmHelpAbout);
}

struct Command {
    std::string_view Name;
    void (*Run)(frmMain&);
};

constexpr Command kCommands[] = {
    {"mnuReportNew", ReportNew},
    {"mnuReportOpen", ReportOpen},
    {"mnuReportClose", ReportClose},
    {"mnuReportSaveAs", ReportSaveAs},
    {"mnuReportEditCheck", ReportEditCheck},
    {"mnuReportCalculate", ReportCalculate},
    {"mnuReportPrinterSetup", ReportPrinterSetup},
    {"mnuReportPrintSelect", ReportPrintSelect},
    {"mnuReportPrint", ReportPrint},
    {"mnuReportImportASCII", ReportImportASCII},
    {"mnuReportImportCRF", ReportImportCRF},
    {"mnuReportManually", ReportManually},
    {"mnuReportElectronically", ReportElectronically},
    {"mnuReportUtilitiesReBuild", UtilitiesReBuild},
    {"mnuReportUtilitiesHQ", UtilitiesHQ},
    {"mnuReportUtilitiesHeader", UtilitiesHeader},
    {"mnuReportUtilitiesLog", UtilitiesLog},
    {"mnuReportExit", ReportExit},
    {"mnuEditClose", EditClose},
    {"mnuViewCloseAll", ViewCloseAll},
    {"mnuHelpContents", HelpContents},
    {"mnuHelpAbout", HelpAbout},
};

/// S-1 Part I holds the identity of the home office: it is edited alone. The question comes once
/// for each window that is open, and the editor opens whatever the answer.
void AskToCloseForms() {
    const std::vector<QWidget*> open = OpenForms();
    for (auto form = open.rbegin(); form != open.rend(); ++form) {
        if (!IsWorksheetForm(*form)) continue;
        const int answer = TheDialogs().MsgBox(
            "In order to edit S1p1 Zolmara needs to close all other open forms. May Zolmara close "
            "the open forms?",
            kYesNoCancel, "Close Forms");
        if (answer != kYes) continue;
        UnloadFormsLike("frmEdit");
        UnloadFormsLike("frmView");
        TheWindows().RefreshMenus();
        return;
    }
}

}  // namespace

namespace {

/// What a command that turns to another file says; `before` is the file that was open ahead of it.
std::string DoneText(std::string_view command, const std::string& before) {
    const bool other = before != gCRFPath;
    if (command == "mnuReportOpen" && other && CrfIsOpen()) return "Opened " + gCRFTitle;
    if (command == "mnuReportSaveAs" && other) return "Saved as " + gCRFTitle;
    if (command == "mnuReportClose" && other) return "Closed " + FileName(before);
    return {};
}

}  // namespace

void RunCommand(frmMain& main, const std::string& name) {
    const std::string before = gCRFPath;
    for (const Command& command : kCommands)
        if (command.Name == name) command.Run(main);
    if (const std::string text = DoneText(name, before); !text.empty()) TellDone(text);
}

void RunWorksheetEntry(const std::string& mode, const std::string& item,
                       std::optional<Currency> line, const std::string& column) {
    if (mode == "edit" && item == "S1p1") AskToCloseForms();
    OpenWorksheet(mode, item, line, column);
}

std::string ItemOfCaption(const std::string& caption) {
    const std::size_t bracket = caption.find('(', 2);
    if (bracket == std::string::npos) return {};
    return caption.substr(bracket + 1, caption.find(')', bracket) - bracket - 1);
}

}  // namespace zolmara::ui
