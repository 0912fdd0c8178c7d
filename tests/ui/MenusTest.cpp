#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <set>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "ui/main/MenuTable.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {
namespace {

class Menus : public UiTest {
protected:
    Menus() {
        gShowWorksheet = [this](const std::string& mode, const std::string& item,
                                std::optional<Currency>,
                                const std::string&) { Opened.push_back(mode + " " + item); };
    }
    ~Menus() override { gShowWorksheet = kept_; }

    QMenu* MenuOf(const std::string& name) const {
        return main->menuBar()->findChild<QMenu*>(Q(name));
    }
    std::vector<std::string> NamesIn(const std::string& menu) const {
        std::vector<std::string> names;
        for (const QAction* action : MenuOf(menu)->actions())
            names.push_back(S(action->objectName()));
        return names;
    }
    void ExpectOff(std::initializer_list<const char*> names) {
        for (const char* name : names) EXPECT_FALSE(Enabled(name)) << name;
    }
    void ExpectOn(std::initializer_list<const char*> names) {
        for (const char* name : names) EXPECT_TRUE(Enabled(name)) << name;
    }

    std::vector<std::string> Opened;

    decltype(gShowWorksheet) kept_ = gShowWorksheet;
};

// --- The tree ------------------------------------------------------------------------------

TEST_F(Menus, TheReportMenuHasTheToldEntries) {
    Start();
    EXPECT_EQ(
        NamesIn("mnuReport"),
        (std::vector<std::string>{
            "mnuReportNew", "mnuReportOpen", "mnuReportClose", "mnuReportSaveAs", "mnuReportLine1",
            "mnuReportEditCheck", "mnuReportCalculate", "mnuReportLine2", "mnuReportPrinterSetup",
            "mnuReportPrintSelect", "mnuReportPrint", "mnuReportLine3", "mnuReportImport",
            "mnuReportSubmit", "mnuReportUtilities", "mnuReportLine4", "mnuReportExit"}));
    EXPECT_EQ(NamesIn("mnuReportImport"),
              (std::vector<std::string>{"mnuReportImportASCII", "mnuReportImportCRF"}));
    EXPECT_EQ(NamesIn("mnuReportSubmit"),
              (std::vector<std::string>{"mnuReportManually", "mnuReportElectronically"}));
    EXPECT_EQ(NamesIn("mnuHelp"),
              (std::vector<std::string>{"mnuHelpContents", "mnuHelpLine1", "mnuHelpAbout"}));
}

TEST_F(Menus, CaptionsAndAcceleratorsAreTheTold) {
    Start();
    const std::pair<const char*, const char*> told[] = {
        {"mnuReport", "&Report File"},
        {"mnuReportNew", "&New ..."},
        {"mnuReportSaveAs", "Save &As ..."},
        {"mnuReportEditCheck", "Just run the edit checks"},
        {"mnuReportCalculate", "Ca&lculate CRF"},
        {"mnuReportPrinterSetup", "Prin&ter Setup ..."},
        {"mnuReportPrintSelect", "Print Select Worksheets"},
        {"mnuReportPrint", "&Print Entire CRF"},
        {"mnuReportImport", "&Import ...."},
        {"mnuReportSubmit", "&Build an ECR file ..."},
        {"mnuReportUtilities", "Zolmara &Utilities ..."},
        {"mnuReportUtilitiesReBuild", "&ReBuild A Worksheet"},
        {"mnuReportUtilitiesHeader", "Set/Change Custom &Header Lines"},
        {"mnuReportUtilitiesLog", "View Last &Edit Check Entries"},
        {"mnuReportExit", "E&xit"},
        {"mnuEditClose", "&Close All Edits"},
        {"mnuViewCloseAll", "&Close All Views"},
        {"mnuEditOpenA7", "A-7 ...."},
        {"mnuViewOpenB_", "B ..."},
        {"mnuEditOpenB", "B ..."},
        {"mnuEditE", "E ..."},
        {"mnuViewOpenES", "Pooled Allocation Statistical Basis"},
        {"mnuViewOpenF1p2", "F-1 Part II"},
        {"mnuEditOpenD1p3", "D-1 Part III"},
        {"mnuEditOpenCCs", "Cost Centers"},
        {"mnuHelpContents", "&CMS Instructions"},
        {"mnuHelpAbout", "&About Zolmara 287-22"},
    };
    for (const auto& [name, caption] : told) {
        ASSERT_NE(main->Menu(name), nullptr) << name;
        EXPECT_EQ(S(main->Menu(name)->text()), caption);
    }
}

TEST_F(Menus, NoNameStandsTwice) {
    std::set<std::string> names;
    for (const MenuEntry& entry : MenuTable()) EXPECT_TRUE(names.insert(entry.Name).second);
}

TEST_F(Menus, EveryCommandCanBeReachedByItsMenu) {
    StartDebug();
    std::set<QAction*> seen;
    QList<QAction*> open = main->menuBar()->actions();
    while (!open.empty()) {
        QAction* const action = open.back();
        open.pop_back();
        seen.insert(action);
        if (action->menu())
            for (QAction* child : action->menu()->actions()) open.push_back(child);
    }
    for (const MenuEntry& entry : MenuTable()) {
        if (entry.Kind == MenuKind::Separator) continue;
        EXPECT_TRUE(seen.contains(main->Menu(entry.Name))) << entry.Name;
    }
}

TEST_F(Menus, EveryEntryOfTheViewListOpensItsWorksheet) {
    Start();
    Open(MakeCrf("One.CRF"));
    std::vector<std::string> expected;
    for (const MenuEntry& entry : MenuTable()) {
        if (entry.Mode != "view" || entry.Kind != MenuKind::Command || entry.Item == "S") continue;
        Trigger(entry.Name);
        expected.push_back("view " + entry.Item);
    }
    EXPECT_EQ(Opened, expected);
    EXPECT_EQ(Opened.size(), 42U);
}

TEST_F(Menus, TheEditListOpensWhatIsKeyedAlone) {
    Start();
    Open(MakeCrf("One.CRF"));
    for (const char* name :
         {"mnuEditOpenA6", "mnuEditA7(2)", "mnuEditOpenA81p1", "mnuEditOpenB1p3", "mnuEditOpenC1p2",
          "mnuEditOpenES", "mnuEditOpenE1p1", "mnuEditOpenG1", "mnuEditOpenCp1", "mnuEditOpenDp3",
          "mnuEditOpenE", "mnuEditOpenFp2", "mnuEditOpenF1p1", "mnuEditOpenF2p3"})
        Trigger(name);
    EXPECT_EQ(Opened, (std::vector<std::string>{"edit A6", "edit A7p2", "edit A81p1", "edit B1p3",
                                                "edit C1p2", "edit ES", "edit E1p1", "edit G1"}));
}

TEST_F(Menus, AnUnknownWorksheetIsToldPlainly) {
    gShowWorksheet = kept_;
    Start();
    Open(MakeCrf("One.CRF"));
    OpenWorksheet("edit", "Z9");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_EQ(Boxes[0].Text, "Unknown worksheet requested (Z9) for edit.");
    EXPECT_EQ(FindOpenForm("edit", "Z9"), nullptr);
}

// --- States --------------------------------------------------------------------------------

constexpr std::initializer_list<const char*> kAlwaysOff = {
    "mnuEditOpenCp1",  "mnuEditOpenCp2",    "mnuEditOpenCp3",  "mnuEditOpenDp1",  "mnuEditOpenDp2",
    "mnuEditOpenDp3",  "mnuEditOpenE",      "mnuEditOpenFp1",  "mnuEditOpenFp2",  "mnuEditOpenFp3",
    "mnuEditOpenF1p1", "mnuEditOpenF1p2",   "mnuEditOpenF1p3", "mnuEditOpenF2p1", "mnuEditOpenF2p2",
    "mnuEditOpenF2p3", "mnuReportImportCRF"};
constexpr std::initializer_list<const char*> kNeedCrf = {
    "mnuReportCalculate",    "mnuReportClose",           "mnuReportImport",
    "mnuReportPrint",        "mnuReportPrintSelect",     "mnuReportSaveAs",
    "mnuReportUtilities",    "mnuReportUtilitiesHQ",     "mnuReportUtilitiesHeader",
    "mnuReportUtilitiesLog", "mnuReportUtilitiesReBuild"};

TEST_F(Menus, WithoutACrf) {
    Start();
    ExpectOn({"mnuReport", "mnuReportNew", "mnuReportOpen", "mnuReportPrinterSetup",
              "mnuReportExit", "mnuHelp", "mnuHelpContents", "mnuHelpAbout"});
    ExpectOff(kNeedCrf);
    ExpectOff(kAlwaysOff);
    ExpectOff({"mnuEditOpen", "mnuViewOpen", "mnuEditClose", "mnuViewCloseAll", "mnuReportSubmit"});
    EXPECT_FALSE(main->Menu("mnuReportEditCheck")->isVisible());
    EXPECT_TRUE(Visible("fraWelcome"));
}

TEST_F(Menus, WithACrf) {
    Start();
    Open(MakeCrf("One.CRF"));
    ExpectOn(kNeedCrf);
    ExpectOn({"mnuEditOpen", "mnuViewOpen", "mnuReportOpen", "mnuReportNew"});
    ExpectOff(kAlwaysOff);
    ExpectOff({"mnuEditClose", "mnuViewCloseAll", "mnuReportSubmit"});
    EXPECT_FALSE(Visible("fraWelcome"));
}

TEST_F(Menus, CostCentersAndS1BarTheOtherWorksheets) {
    Start();
    Open(MakeCrf("One.CRF"));
    for (const char* name : {"frmEditCCs", "frmEditS1p1"}) {
        QWidget* const window = AddWindow(name);
        main->RefreshMenus();
        ExpectOff({"mnuEditOpen", "mnuViewOpen"});
        ExpectOn({"mnuEditClose", "mnuReportCalculate", "mnuReportClose"});
        window->close();
        main->RefreshMenus();
        ExpectOn({"mnuEditOpen", "mnuViewOpen"});
        ExpectOff({"mnuEditClose"});
    }
}

TEST_F(Menus, TheDeveloperIsNotBarred) {
    StartDebug();
    Open(MakeCrf("One.CRF"));
    AddWindow("frmEditCCs");
    main->RefreshMenus();
    ExpectOn({"mnuEditOpen", "mnuViewOpen", "mnuEditClose", "mnuReportSubmit"});
    EXPECT_TRUE(main->Menu("mnuReportEditCheck")->isVisible());
}

TEST_F(Menus, AWindowOfTheViewKindCanBeClosedFromTheMenu) {
    Start();
    Open(MakeCrf("One.CRF"));
    AddWindow("frmViewA", "View Worksheet A");
    AddWindow("frmEditA", "Edit Worksheet A");
    main->RefreshMenus();
    ExpectOn({"mnuViewCloseAll", "mnuEditClose"});
    Trigger("mnuViewCloseAll");
    EXPECT_EQ(FindForm("frmViewA"), nullptr);
    EXPECT_NE(FindForm("frmEditA"), nullptr);
    Trigger("mnuEditClose");
    EXPECT_EQ(FindForm("frmEditA"), nullptr);
    ExpectOff({"mnuViewCloseAll", "mnuEditClose"});
}

TEST_F(Menus, AHelperWindowLeavesWhatNeedsNoCrf) {
    Start();
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesHeader");
    ASSERT_NE(FindForm("frmHeaderLines"), nullptr);
    main->RefreshMenus();
    ExpectOff(kNeedCrf);
    ExpectOff({"mnuEditOpen", "mnuViewOpen", "mnuReportOpen"});
    Click("frmHeaderLines", "cmdCancel");
    ExpectOn(kNeedCrf);
    ExpectOn({"mnuReportOpen"});
}

TEST_F(Menus, SubmitKeepsItsStateOverARefresh) {
    Start();
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportSubmit", true);
    main->RefreshMenus();
    ExpectOn({"mnuReportSubmit"});
    host->RefreshWorksheetForm("View", "A");
    ExpectOff({"mnuReportSubmit"});
}

// --- The S worksheets ----------------------------------------------------------------------

TEST_F(Menus, TheSListIsReadFromTheCrf) {
    Start();
    Open(MakeCrf("One.CRF"));
    std::vector<std::string> captions;
    for (const QAction* action : MenuOf("mnuViewOpenS")->actions())
        captions.push_back(S(action->text()));
    EXPECT_EQ(captions, (std::vector<std::string>{"S  Part-1 (Sp1)", "S-1  Part-1 (S1p1)",
                                                  "S-1  Part-2 (S1p2)", "S-2  Part-1 (S2p1)",
                                                  "S-2  Part-2 (S2p2)", "S-2  Part-3 (S2p3)"}));
    Trigger("mnuViewSx(1)");
    Trigger("mnuEditSx(5)");
    EXPECT_EQ(Opened, (std::vector<std::string>{"view S1p1", "edit S2p3"}));
}

TEST_F(Menus, WithoutSWorksheetsTheListStaysOff) {
    Start();
    Open(MakeCrf("One.CRF"));
    gDB.Execute("DELETE * FROM Worksheets WHERE Left(Item, 1) = 'S';");
    main->RefreshMenus();
    ExpectOff({"mnuEditOpenS", "mnuViewOpenS"});
    EXPECT_EQ(MenuOf("mnuEditOpenS")->actions().size(), 1);
}

TEST_F(Menus, NoToTheS1QuestionAsksForEachWindowAndOpensTheEditorBesideThem) {
    Start();
    Open(MakeCrf("One.CRF"));
    AddWindow("frmViewA", "View Worksheet A");
    AddWindow("frmEditG", "Edit Worksheet G");
    Answers = {kNo, kCancel};
    Trigger("mnuEditSx(1)");
    ASSERT_EQ(Boxes.size(), 2U);
    EXPECT_EQ(Boxes[0].Title, "Close Forms");
    EXPECT_EQ(Boxes[0].Style, kYesNoCancel);
    EXPECT_EQ(Boxes[0].Text,
              "In order to edit S1p1 Zolmara needs to close all other open forms. May Zolmara "
              "close the open forms?");
    EXPECT_EQ(Opened, std::vector<std::string>{"edit S1p1"});
    EXPECT_NE(FindForm("frmViewA"), nullptr);
    EXPECT_NE(FindForm("frmEditG"), nullptr);
}

TEST_F(Menus, YesToTheS1QuestionClosesTheWindowsOnce) {
    Start();
    Open(MakeCrf("One.CRF"));
    AddWindow("frmViewA", "View Worksheet A");
    AddWindow("frmEditG", "Edit Worksheet G");
    Answers = {kYes};
    Trigger("mnuEditSx(1)");
    EXPECT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(FindForm("frmViewA"), nullptr);
    EXPECT_EQ(FindForm("frmEditG"), nullptr);
    EXPECT_EQ(Opened, std::vector<std::string>{"edit S1p1"});
}

// --- Windows -------------------------------------------------------------------------------

TEST_F(Menus, ClosingAllFormsAsksFirst) {
    Start();
    EXPECT_EQ(host->CloseAllForms(false), 0);
    EXPECT_TRUE(Boxes.empty());
    AddWindow("frmEditA", "Edit Worksheet A");
    AddWindow("frmViewA", "View Worksheet A");
    EXPECT_EQ(host->CloseAllForms(false), 1);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Close form frmEditA");
    EXPECT_EQ(Boxes[0].Style, 289);
    EXPECT_EQ(Boxes[0].Text,
              "This process requires all forms to be closed.  Pressing OK will close all open "
              "forms.");
    Answers = {kOk};
    EXPECT_EQ(host->CloseAllForms(false), 0);
    EXPECT_EQ(OpenForms().size(), 1U);
}

TEST_F(Menus, TheCostCenterWindowsMayBeKept) {
    Start();
    AddWindow("frmEditCCs");
    EXPECT_EQ(host->CloseAllForms(true), 0);
    EXPECT_TRUE(Boxes.empty());
    EXPECT_NE(FindForm("frmEditCCs"), nullptr);
}

class StuckWindow : public QWidget {
public:
    bool Stuck = true;

protected:
    void closeEvent(QCloseEvent* event) override;
};

void StuckWindow::closeEvent(QCloseEvent* event) { event->setAccepted(!Stuck); }

TEST_F(Menus, AWindowThatWillNotCloseIsNamed) {
    Start();
    StuckWindow stuck;
    stuck.setObjectName("frmEditA6");
    AddForm(&stuck);
    stuck.show();
    Answers = {kOk, kOk};
    EXPECT_EQ(host->CloseAllForms(false), 2);
    EXPECT_EQ(Boxes.back().Text, "Unable to close forms: frmEditA6");
    EXPECT_EQ(Boxes.back().Style, kCritical);
    stuck.Stuck = false;
}

TEST_F(Menus, AFormIsFoundByItsNameOrItsWorksheet) {
    Start();
    AddWindow("frmViewBpx", "View Worksheet B1p3");
    EXPECT_TRUE(host->FormIsOpen("FRMVIEWBPX"));
    EXPECT_TRUE(host->FormIsOpen("frmViewB1p3"));
    EXPECT_FALSE(host->FormIsOpen("frmViewB1p2"));
}

}  // namespace
}  // namespace zolmara::ui
