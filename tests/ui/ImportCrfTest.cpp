#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QWindow>

#include "UiTest.h"
#include "core/Globals.h"

namespace zolmara::ui {
namespace {

class ImportWindows : public UiTest {
protected:
    ImportWindows() { Start(); }

    /// Last year's file, with one amount and one component, and this year's, open.
    void MakePair() {
        source_ = MakeCrf("Last.CRF");
        gDB = DBEngine::OpenDatabase(source_);
        gDB.Execute("UPDATE A SET Col_1=5000 WHERE LineNum=8;");
        gDB.Execute("INSERT INTO S2p2 (LineNum,Col_1) VALUES (1,'Parking');");
        gDB.Close();
        Open(MakeCrf("This.CRF"));
        Boxes.clear();
        Dialogs.clear();
    }
    void TakeOver() {
        Files.emplace_back(source_);
        Tool("tlsImportCRF");
    }
    void Tool(const char* name) {
        auto* const action = main->findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        ASSERT_TRUE(action->isEnabled()) << name;
        action->trigger();
    }
    QWidget* Step(const char* name) const {
        QWidget* const window = Form("frmImportMDI");
        QWidget* const step = window ? window->findChild<QWidget*>(name) : nullptr;
        if (!step) ADD_FAILURE() << name;
        return step;
    }
    void Press(const char* step, const char* button) {
        auto* const found = Step(step)->findChild<QPushButton*>(button);
        ASSERT_NE(found, nullptr) << button;
        found->click();
    }
    std::string LabelOf(const char* form, const char* name) const {
        const QLabel* const label = Control<QLabel>(form, name);
        return label ? S(label->text()) : "";
    }
    QListWidget* List() const {
        return Step("frmImportWkshts")->findChild<QListWidget*>("lbWorksheets");
    }
    void Choose(const QString& entry) {
        for (int row = 0; row < List()->count(); ++row)
            if (List()->item(row)->text() == entry)
                return List()->item(row)->setCheckState(Qt::Checked);
        ADD_FAILURE() << S(entry);
    }

    std::string source_;
};

TEST_F(ImportWindows, TheThreeStepsTakeAWorksheetOver) {
    MakePair();
    TakeOver();
    EXPECT_EQ(Dialogs[0].Title, "Import From An Existing CRF");
    EXPECT_EQ(Form("frmImportMDI")->windowTitle(), "CRF to CRF Import");
    EXPECT_EQ(LabelOf("frmImportMDI", "lblCurrentCRF"), "Current CRF\nThis.CRF");
    EXPECT_EQ(LabelOf("frmImportMDI", "lblImportCRF"), "Import CRF\nLast.CRF");
    EXPECT_EQ(LabelOf("frmImportMDI", "lblWarning"),
              "Check all Cost Centers to insure that they are the same.");
    auto* const grid = Step("frmImportCCMis")->findChild<QTableWidget*>("grd");
    EXPECT_EQ(grid->rowCount(), 26);
    EXPECT_EQ(grid->item(25, 0)->text(), "28    Interest Income");
    Press("frmImportCCMis", "mnuNext");
    EXPECT_EQ(LabelOf("frmImportMDI", "lblWorksheets"),
              "Worksheets in the import CRF:\n(\"Last.CRF\")\nthat are also in the current CRF");
    EXPECT_EQ(List()->count(), 45);
    EXPECT_EQ(List()->item(0)->text(), "A (A)");
    Choose("A (A)");
    Press("frmImportWkshts", "mnuNext");
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(LabelOf("frmImportMDI", "lblProgress"),
              "1 of 1 worksheets were imported.  Nothing has been recalculated yet.");
    EXPECT_EQ(Done(), "Took over 1 of 1 worksheets from Last.CRF");
    EXPECT_EQ(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=8;"), Variant(5000.0));
    EXPECT_FALSE(main->InLongStep());
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
}

TEST_F(ImportWindows, EscapeLeavesItAndAsksBehindTheLists) {
    MakePair();
    const auto escape = [this] {
        QWidget* const window = Form("frmImportMDI");
        ASSERT_TRUE(WaitFor([&] {
            window->activateWindow();
            return QApplication::focusWindow() == window->windowHandle();
        }));
        QTest::keyPress(window->windowHandle(), Qt::Key_Escape);
    };
    const auto gone = [] { return !FindForm("frmImportMDI"); };
    TakeOver();
    escape();
    EXPECT_TRUE(WaitFor(gone));
    EXPECT_TRUE(Boxes.empty());
    TakeOver();
    Press("frmImportCCMis", "mnuNext");
    Answers = {kNo, kYes};
    escape();
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Cancel Import?");
    EXPECT_FALSE(gone());
    escape();
    EXPECT_TRUE(WaitFor(gone));
    EXPECT_EQ(Boxes.size(), 2U);
}

TEST_F(ImportWindows, AWorksheetThatDidNotComeOverIsNamedAtTheEnd) {
    MakePair();
    {
        Database source = DBEngine::OpenDatabase(source_);
        source.AppendField("A6", {.Name = "Col_9", .Type = FieldType::dbDouble});
    }
    TakeOver();
    Press("frmImportCCMis", "mnuNext");
    Choose("A (A)");
    Choose("A-6 (A6)");
    Press("frmImportWkshts", "mnuNext");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, "Unable to import worksheet A6 due to column mismatch.");
    EXPECT_EQ(LabelOf("frmImportMDI", "lblProgress"),
              "1 of 2 worksheets were imported.  Not imported: A6.  Nothing has been recalculated "
              "yet.");
}

TEST_F(ImportWindows, NothingChosenIsSaidAndTheListHasTheFocus) {
    MakePair();
    TakeOver();
    Press("frmImportCCMis", "mnuNext");
    Press("frmImportWkshts", "mnuNext");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "No Worksheets Selected");
    EXPECT_EQ(Boxes[0].Text,
              "No worksheets were selected for import.  Please select one or more worksheets.");
    Press("frmImportWkshts", "cmdSelectAll");
    EXPECT_EQ(List()->item(44)->checkState(), Qt::Checked);
    Press("frmImportWkshts", "cmdClearAll");
    EXPECT_EQ(List()->item(0)->checkState(), Qt::Unchecked);
}

TEST_F(ImportWindows, OtherCostCentersCloseTheWayOn) {
    MakePair();
    gDB.Execute("UPDATE CostCenters SET CCName='Pay' WHERE LineNum=8;");
    TakeOver();
    EXPECT_EQ(LabelOf("frmImportMDI", "lblWarning"),
              "Cost Centers must match exactly to allow CRF importing.");
    EXPECT_FALSE(Step("frmImportCCMis")->findChild<QPushButton*>("mnuNext")->isEnabled());
    Press("frmImportCCMis", "cmdClose");
    EXPECT_TRUE(WaitFor([] { return !FindForm("frmImportMDI"); }));
    EXPECT_TRUE(Boxes.empty());
    EXPECT_FALSE(gImportDB.IsOpen());
}

TEST_F(ImportWindows, WarningsAreListedAndOneMayGoOn) {
    MakePair();
    TakeOver();
    Press("frmImportCCMis", "mnuNext");
    Choose("S-2  Part-2 (S2p2)");
    Press("frmImportWkshts", "mnuNext");
    auto* const messages = Step("frmImportProgress")->findChild<QListWidget*>("lbMessages");
    ASSERT_EQ(messages->count(), 1);
    EXPECT_TRUE(messages->item(0)->text().startsWith("Warning: Line 1 of S2p2, \"Parking\""));
    Press("frmImportProgress", "cmdBack");
    EXPECT_TRUE(List()->isVisible());
}

TEST_F(ImportWindows, ClosingAsksWhetherOneIsFinished) {
    MakePair();
    TakeOver();
    Press("frmImportCCMis", "mnuNext");
    Answers = {kNo, kYes};
    Press("frmImportWkshts", "cmdClose");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Cancel Import?");
    EXPECT_EQ(Boxes[0].Text, "Are you finished importing \"Last.CRF\"?");
    EXPECT_EQ(Boxes[0].Style & 15, kYesNo);
    EXPECT_TRUE(gImportDB.IsOpen());
    Press("frmImportWkshts", "cmdClose");
    EXPECT_TRUE(WaitFor([] { return !FindForm("frmImportMDI"); }));
    EXPECT_FALSE(gImportDB.IsOpen());
    EXPECT_TRUE(CrfIsOpen());
}

TEST_F(ImportWindows, ClosingIsRefusedWhileItRuns) {
    MakePair();
    TakeOver();
    Press("frmImportCCMis", "mnuNext");
    Press("frmImportWkshts", "cmdSelectAll");
    auto* const label = Form("frmImportMDI")->findChild<QLabel*>("lblProgress");
    bool asked = false;
    // The interface breathes between the worksheets.
    QObject watcher;
    QMetaObject::invokeMethod(
        &watcher,
        [&] {
            asked = true;
            EXPECT_TRUE(label->text().startsWith("Processing worksheet ")) << S(label->text());
            Form("frmImportMDI")->close();
        },
        Qt::QueuedConnection);
    Press("frmImportWkshts", "mnuNext");
    EXPECT_TRUE(asked);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Unable to cancel");
    EXPECT_EQ(Boxes[0].Text, "Unable to cancel import while import is in progress.");
    EXPECT_NE(FindForm("frmImportMDI"), nullptr);
}

TEST_F(ImportWindows, ARefusedSourceShowsNoWindow) {
    MakePair();
    Files.emplace_back(gCRFPath);
    Tool("tlsImportCRF");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Invalid CRF");
    EXPECT_EQ(FindForm("frmImportMDI"), nullptr);
}

TEST_F(ImportWindows, TheReportMenusEntryStaysOff) {
    EXPECT_FALSE(main->findChild<QAction*>("tlsImportCRF")->isEnabled());
    Open(MakeCrf("One.CRF"));
    EXPECT_FALSE(Enabled("mnuReportImportCRF"));
    EXPECT_TRUE(main->findChild<QAction*>("tlsImportCRF")->isEnabled());
    EXPECT_EQ(main->findChild<QAction*>("tlsImportCRF")->text(), "&Take Over From Another CRF ...");
    EXPECT_EQ(main->findChild<QAction*>("tlsNewFromLastYear")->text(), "New From &Last Year ...");
}

// --- Rebuild -----------------------------------------------------------------------------------

TEST_F(ImportWindows, RebuildMakesTheChosenWorksheetAnew) {
    Open(MakeCrf("One.CRF"));
    gDB.Execute("UPDATE A SET Col_1=5 WHERE LineNum=8;");
    Trigger("mnuReportUtilitiesReBuild");
    auto* const combo = Control<QComboBox>("frmReBuild_A_Worksheet", "cboReBuild");
    EXPECT_EQ(combo->count(), 42);
    EXPECT_EQ(combo->itemText(0), "A");
    EXPECT_EQ(combo->itemText(41), "S2p3");
    auto* const execute = Control<QPushButton>("frmReBuild_A_Worksheet", "cmdExecute");
    EXPECT_FALSE(execute->isEnabled());
    combo->setCurrentIndex(0);
    EXPECT_TRUE(execute->isEnabled());
    execute->click();
    EXPECT_EQ(FindForm("frmReBuild_A_Worksheet"), nullptr);
    EXPECT_EQ(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=8;"), Variant());
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(Done(), "Rebuilt A");
}

TEST_F(ImportWindows, RebuildThatFailsSaysSoAndClosesAndCancelDoesNothing) {
    Open(MakeCrf("One.CRF"));
    gDB.DeleteTable("S2p1");
    Trigger("mnuReportUtilitiesReBuild");
    Click("frmReBuild_A_Worksheet", "cmdCancel");
    EXPECT_EQ(FindForm("frmReBuild_A_Worksheet"), nullptr);
    Trigger("mnuReportUtilitiesReBuild");
    Control<QComboBox>("frmReBuild_A_Worksheet", "cboReBuild")->setCurrentText("Bp1");
    Click("frmReBuild_A_Worksheet", "cmdExecute");
    ASSERT_EQ(Boxes.size(), 2U);
    EXPECT_EQ(Boxes[1].Title, "Worksheet Not Built\"");
    EXPECT_EQ(Boxes[1].Text, "ERROR, worksheet 'Bp1' has NOT been successfully rebuilt.");
    EXPECT_EQ(FindForm("frmReBuild_A_Worksheet"), nullptr);
    EXPECT_EQ(Done(), "") << "nothing ended well";
}

// --- New From Last Year ------------------------------------------------------------------------

TEST_F(ImportWindows, NewFromLastYearProposesThePeriodAndOpensTheNewFile) {
    MakePair();
    const std::string made = folder.File("Next.CRF");
    Files = {source_, made};
    Tool("tlsNewFromLastYear");
    EXPECT_EQ(LabelOf("frmNewFromLastYear", "lblLastYear"), "Last.CRF");
    EXPECT_EQ(TextOf("frmNewFromLastYear", "txtFYStart"), "10/1/2023");
    EXPECT_EQ(TextOf("frmNewFromLastYear", "txtFYEnd"), "9/30/2024");
    auto* const list = Control<QListWidget>("frmNewFromLastYear", "lbWorksheets");
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->text() == "A (A)") list->item(row)->setCheckState(Qt::Checked);
    Click("frmNewFromLastYear", "cmdCreate");
    EXPECT_EQ(FindForm("frmNewFromLastYear"), nullptr);
    EXPECT_EQ(gCRFPath, made);
    EXPECT_EQ(gFYStart, Variant(DateTime(2023, 10, 1)));
    EXPECT_EQ(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=8;"), Variant(5000.0));
    EXPECT_EQ(gDB.Scalar("SELECT Description FROM Bp2 WHERE LineNum=1;"), Variant("Parking"));
    EXPECT_FALSE(gImportDB.IsOpen());
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
    EXPECT_EQ(Done(), "Created Next.CRF from last year's");
}

TEST_F(ImportWindows, NewFromLastYearRefusesDatesAndLastYearsName) {
    MakePair();
    Files = {source_, source_};
    Tool("tlsNewFromLastYear");
    Key("frmNewFromLastYear", "txtFYStart", "soon");
    Click("frmNewFromLastYear", "cmdCreate");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Error: Invalid Fiscal Year Start Date");
    Key("frmNewFromLastYear", "txtFYStart", "10/1/2023");
    Click("frmNewFromLastYear", "cmdCreate");
    ASSERT_EQ(Boxes.size(), 2U);
    EXPECT_EQ(Boxes[1].Text, "The file selected is last year's.  Please name another one.");
    EXPECT_NE(FindForm("frmNewFromLastYear"), nullptr);
    Click("frmNewFromLastYear", "cmdCancel");
    EXPECT_FALSE(gImportDB.IsOpen());
}

}  // namespace
}  // namespace zolmara::ui
