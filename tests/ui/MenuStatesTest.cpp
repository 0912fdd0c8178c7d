// What is on and off in the menus, after every command and in every state of the session.

#include <QAction>
#include <QMenuBar>
#include <algorithm>
#include <set>

#include "UiTest.h"
#include "core/Globals.h"
#include "support/Paths.h"
#include "ui/main/MenuState.h"
#include "ui/main/MenuTable.h"
#include "ui/tools/Tools.h"

namespace zolmara::ui {
namespace {

using Names = std::set<std::string>;

const Names kAlways = {"mnuReport",     "mnuReportNew", "mnuReportPrinterSetup",
                       "mnuReportExit", "mnuEdit",      "mnuView",
                       "mnuHelp",       "mnuHelpAbout", "mnuHelpContents"};
const Names kWithCrf = {"mnuReportOpen",
                        "mnuReportClose",
                        "mnuReportSaveAs",
                        "mnuReportEditCheck",
                        "mnuReportCalculate",
                        "mnuReportPrintSelect",
                        "mnuReportPrint",
                        "mnuReportImport",
                        "mnuReportImportASCII",
                        "mnuReportUtilities",
                        "mnuReportUtilitiesReBuild",
                        "mnuReportUtilitiesHQ",
                        "mnuReportUtilitiesHeader",
                        "mnuReportUtilitiesLog"};
const Names kSubmit = {"mnuReportSubmit", "mnuReportManually", "mnuReportElectronically"};
const Names kCalculated = {
    "mnuEditOpenCp1",  "mnuEditOpenCp2",  "mnuEditOpenCp3",  "mnuEditOpenDp1",
    "mnuEditOpenDp2",  "mnuEditOpenDp3",  "mnuEditOpenE",    "mnuEditOpenFp1",
    "mnuEditOpenFp2",  "mnuEditOpenFp3",  "mnuEditOpenF1p1", "mnuEditOpenF1p2",
    "mnuEditOpenF1p3", "mnuEditOpenF2p1", "mnuEditOpenF2p2", "mnuEditOpenF2p3"};

class MenuStates : public UiTest {
protected:
    Names OnNow() const {
        Names on;
        for (const MenuEntry& entry : MenuTable())
            if (entry.Kind != MenuKind::Separator && Enabled(entry.Name)) on.insert(entry.Name);
        return on;
    }
    /// Everything below the list "Open" of a menu, and the list.
    static Names Sheets(const std::string& menu) {
        Names sheets = {menu + "Open"};
        for (const MenuEntry& entry : MenuTable())
            if (sheets.contains(entry.Parent)) sheets.insert(entry.Name);
        for (const std::string& name : kCalculated) sheets.erase(name);
        return sheets;
    }
    static Names Sum(std::initializer_list<Names> parts) {
        Names sum;
        for (const Names& part : parts) sum.insert(part.begin(), part.end());
        return sum;
    }
    /// What differs from the expected states: "-name" is wrongly off, "+name" wrongly on.
    Names Wrong(Names expected) const {
        // Entries that do not show are off.
        if (!gDebug) expected.erase("mnuReportEditCheck");
        const Names on = OnNow();
        Names wrong;
        for (const std::string& name : expected)
            if (!on.contains(name)) wrong.insert("-" + name);
        for (const std::string& name : on)
            if (!expected.contains(name)) wrong.insert("+" + name);
        return wrong;
    }
    static Names NoCrf() { return Sum({kAlways, {"mnuReportOpen"}}); }
    static Names Crf() { return Sum({kAlways, kWithCrf, Sheets("mnuEdit"), Sheets("mnuView")}); }
};

TEST_F(MenuStates, AfterEveryCommandOfASession) {
    Start();
    EXPECT_EQ(Wrong(NoCrf()), Names());
    const std::string path = MakeSample("One.CRF");
    const std::string other = MakeCrf("Other.CRF");
    Trigger("mnuReportOpen");
    EXPECT_EQ(Wrong(NoCrf()), Names()) << "open cancelled";
    Open(path);
    EXPECT_EQ(Wrong(Crf()), Names()) << "open";
    Trigger("mnuReportCalculate");
    const Names checked = Sum({Crf(), kSubmit, {"mnuViewCloseAll"}});
    EXPECT_EQ(Wrong(checked), Names()) << "calculate";
    Trigger("mnuReportClose");
    ASSERT_TRUE(CrfIsOpen());
    EXPECT_EQ(Wrong(checked), Names()) << "close cancelled";
    Trigger("mnuReportPrint");
    EXPECT_EQ(Wrong(checked), Names()) << "print";
    Trigger("mnuReportPrinterSetup");
    EXPECT_EQ(Wrong(checked), Names()) << "printer setup";
    Trigger("mnuReportUtilitiesHQ");
    EXPECT_EQ(Wrong(checked), Names()) << "high quality";
    Trigger("mnuReportUtilitiesLog");
    EXPECT_EQ(Wrong(checked), Names()) << "last entries";
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(Wrong(checked), Names()) << "save as cancelled";
    Trigger("mnuViewCloseAll");
    EXPECT_EQ(Wrong(Sum({Crf(), kSubmit})), Names()) << "close all views";
    Trigger("mnuReportOpen");
    EXPECT_EQ(Wrong(Sum({Crf(), kSubmit})), Names()) << "open cancelled over a CRF";
    Files.emplace_back(folder.File("Two.CRF"));
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(Wrong(Crf()), Names()) << "save as";
    Trigger("mnuReportClose");
    EXPECT_EQ(Wrong(NoCrf()), Names()) << "close";
    Open(other);
    EXPECT_EQ(Wrong(Crf()), Names()) << "another CRF";
}

TEST_F(MenuStates, AfterAnImportTheBuildIsOff) {
    Start();
    Open(MakeSample("One.CRF"));
    Trigger("mnuReportCalculate");
    ASSERT_TRUE(Enabled("mnuReportSubmit"));
    Answers = {kYes};
    Files.emplace_back(std::string(test::kSamples) + "/northfield.txt");
    Trigger("mnuReportImportASCII");
    EXPECT_EQ(Wrong(Sum({Crf(), {"mnuViewCloseAll"}})), Names());
}

TEST_F(MenuStates, ACalculationWithErrorsShutsTheBuild) {
    Start();
    Open(MakeSample("One.CRF"));
    Trigger("mnuReportCalculate");
    ASSERT_TRUE(Enabled("mnuReportSubmit"));
    gDB.Execute("UPDATE S1p1 SET Col_1 = Null;");
    Trigger("mnuReportCalculate");
    EXPECT_EQ(Wrong(Sum({Crf(), {"mnuViewCloseAll"}})), Names());
}

TEST_F(MenuStates, AHelperWindowLeavesTheBuildAsItWas) {
    Start();
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportSubmit", true);
    Trigger("mnuHelpAbout");
    EXPECT_EQ(Wrong(Sum({kAlways, kSubmit})), Names());
    Click("frmHelpAbout", "cmdHelpAboutOK");
    EXPECT_EQ(Wrong(Sum({Crf(), kSubmit})), Names());
}

TEST_F(MenuStates, AWindowThatBarsTheWorksheetsLeavesTheRest) {
    Start();
    Open(MakeCrf("One.CRF"));
    AddWindow("frmEditS1p1");
    main->RefreshMenus();
    EXPECT_EQ(Wrong(Sum({kAlways, kWithCrf, {"mnuEditClose"}})), Names());
}

TEST_F(MenuStates, NothingIsOnWhileAStepHoldsTheWindow) {
    Start();
    Open(MakeCrf("One.CRF"));
    const Names before = OnNow();
    host->EnableMain(false);
    main->RefreshMenus();
    EXPECT_EQ(Wrong(Names()), Names());
    host->EnableMain(true);
    EXPECT_EQ(Wrong(before), Names());
}

TEST_F(MenuStates, WhatAStepHoldsStaysOffOverARefresh) {
    Start();
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportCalculate", false);
    main->RefreshMenus();
    EXPECT_FALSE(Enabled("mnuReportCalculate"));
    host->EnableMenu("mnuReportCalculate", true);
    EXPECT_EQ(Wrong(Crf()), Names());
}

TEST_F(MenuStates, TheDeveloperMayAlwaysBuild) {
    StartDebug();
    EXPECT_EQ(Wrong(NoCrf()), Names());
    Open(MakeCrf("One.CRF"));
    EXPECT_EQ(Wrong(Sum({Crf(), kSubmit})), Names());
}

// --- Tools ---------------------------------------------------------------------------------

TEST_F(MenuStates, ToolsStandsBetweenViewAndHelpOnceItHasCommands) {
    const auto bar = [this] {
        std::vector<std::string> shown;
        for (const QAction* action : main->menuBar()->actions())
            if (action->isVisible()) shown.push_back(S(action->text()));
        return shown;
    };
    const std::vector<Tool> own = std::exchange(Tools(), {});
    Start();
    EXPECT_EQ(bar(), (std::vector<std::string>{"&Report File", "&Edit", "&View", "&Help"}));
    main.reset();
    Tools() = {{.Name = "tlsProbe", .Caption = "Probe", .Run = [] {}}};
    Start();
    EXPECT_EQ(bar(),
              (std::vector<std::string>{"&Report File", "&Edit", "&View", "&Tools", "&Help"}));
    Tools() = own;
}

TEST_F(MenuStates, ACommandOfToolsIsOnByItsOwnRule) {
    // The menu asks until the main window goes, which is behind the end of the test.
    static int runs = 0;
    static bool on = false;
    const std::vector<Tool> own = std::exchange(Tools(), {{.Name = "tlsProbe",
                                                           .Caption = "Probe",
                                                           .IsOn = [] { return on; },
                                                           .Run = [] { ++runs; }}});
    Start();
    auto* const probe = main->menuBar()->findChild<QAction*>("tlsProbe");
    ASSERT_NE(probe, nullptr);
    EXPECT_FALSE(probe->isEnabled());
    on = true;
    RefreshTools();
    EXPECT_TRUE(probe->isEnabled());
    probe->trigger();
    EXPECT_EQ(runs, 1);
    // Not one of the system's menus: a helper window does not turn it off, a long step does.
    Open(MakeCrf("One.CRF"));
    Trigger("mnuHelpAbout");
    EXPECT_TRUE(probe->isEnabled());
    host->ShowCalcMsg(" Calculating");
    EXPECT_FALSE(probe->isEnabled());
    host->HideCalcMsg();
    EXPECT_TRUE(probe->isEnabled());
    on = false;
    probe->trigger();
    EXPECT_EQ(runs, 1);
    Tools() = own;
}

TEST_F(MenuStates, NoToolBearsTheNameOfAMenu) {
    for (const Tool& tool : Tools()) EXPECT_FALSE(tool.Name.starts_with("mnu")) << tool.Name;
}

}  // namespace
}  // namespace zolmara::ui
