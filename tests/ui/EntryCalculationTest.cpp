// "Calculate after each entry", the menu Tools, and the window of the home office's identity.

#include <QMenuBar>

#include "SheetTest.h"
#include "calc/Calc_All.h"
#include "ui/main/Guard.h"
#include "ui/tools/EntryCalculation.h"

namespace zolmara::ui {
namespace {

class EntryCalculationTest : public SheetTest {
protected:
    EntryCalculationTest() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Calc_All();
        Boxes.clear();
    }
    QAction* Switch() const { return main->menuBar()->findChild<QAction*>("tlsEntryCalculation"); }
};

TEST_F(EntryCalculationTest, IsOffAtFirstAndRemembered) {
    ASSERT_NE(Switch(), nullptr);
    EXPECT_FALSE(Switch()->isChecked());
    Switch()->trigger();
    EXPECT_TRUE(Switch()->isChecked());
    EXPECT_TRUE(EntryCalculation::IsOn());
    EXPECT_EQ(host->GetSetting("Zolmara 287-22", "Windows", "CalculateAfterEntry", ""), "True");
}

TEST_F(EntryCalculationTest, OffARowLeavesTheOthersAsTheyAre) {
    auto* a = Sheet("edit", "A");
    const std::string total = Stored("A", 100, "Col_1");
    Enter(a, 12, "Col_1", "1");
    EXPECT_FALSE(EntryCalculation::IsDue());
    EXPECT_EQ(Stored("A", 100, "Col_1"), total);
}

TEST_F(EntryCalculationTest, EachSavedRowCalculatesAndOpenViewsFollow) {
    Switch()->trigger();
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    auto* view = Sheet("view", "A");
    auto* a = Sheet("edit", "A");
    const double former = NumOr(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum = 12;"));
    const double total = NumOr(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum = 100;"));
    Enter(a, 12, "Col_1", NumberText(former + 1000));
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    EXPECT_EQ(Stored("A", 100, "Col_1"), NumberText(total + 1000));
    EXPECT_EQ(Shown(view, 100, "Col_1"), FormatNumber(total + 1000, "#,##0"));
    EXPECT_TRUE(Boxes.empty());
    EXPECT_NE(Status(a).find("Calculated"), std::string::npos);
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
}

TEST_F(EntryCalculationTest, ARunWaitsForTheEndOfACommand) {
    // A new column of a cost center lets the windows breathe while its tables are made anew.
    Switch()->trigger();
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    const double total = NumOr(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum = 100;"));
    gDB.Execute("UPDATE A SET Col_1 = Col_1 + 10 WHERE LineNum = 12;");
    Guarded([&] {
        EntryCalculation::RowSaved();
        Wait(5);
        EXPECT_EQ(Stored("A", 100, "Col_1"), NumberText(total));
        EXPECT_TRUE(EntryCalculation::IsDue());
    });
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    EXPECT_EQ(Stored("A", 100, "Col_1"), NumberText(total + 10));
}

TEST_F(EntryCalculationTest, TheRunKeepsCellSelectionScrollAndOpenEditor) {
    Switch()->trigger();
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    auto* a = Sheet("edit", "A");
    a->resize(a->width(), 300);
    Enter(a, 12, "Col_1", "5");
    At(a, 24, "Col_1");
    Type("12");
    const int top = a->Grid().rowAt(0);
    EntryCalculation::RowSaved();
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    Type("34");
    auto* editor = qobject_cast<QLineEdit*>(a->Grid().Editor());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(S(editor->text()), "1234");
    EXPECT_EQ(Current(a), "24 Col_1");
    EXPECT_EQ(a->Grid().rowAt(0), top);
}

/// A statement whose calculation takes long.
class LongCalculation : public EntryCalculationTest {
protected:
    LongCalculation() : former_(EntryCalculation::ThePace()) {
        EntryCalculation::Pace& pace = EntryCalculation::ThePace();
        pace.Pause = 3'600'000;
        pace.TimeOf = [this](const std::function<void()>& run) {
            ++runs_;
            run();
            return qint64{10'000};
        };
        Switch()->trigger();
        EXPECT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    }
    ~LongCalculation() override { EntryCalculation::ThePace() = former_; }

    static void KeyingPauses() {
        qApp->findChild<QTimer*>("tmrEntryCalculation")->start(0);
        EXPECT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    }
    int runs_ = 0;

private:
    const EntryCalculation::Pace former_;
};

TEST_F(LongCalculation, WaitsUntilTheKeyingPausesAndSwallowsNoKey) {
    ASSERT_EQ(runs_, 1) << "the first run tells how long it takes";
    const double total = NumOr(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum = 100;"));
    const double former =
        NumOr(gDB.Scalar("SELECT Sum(Col_1) FROM A WHERE LineNum In (12,13,14);"));
    auto* a = Sheet("edit", "A");
    At(a, 12, "Col_1");
    for (const char* keyed : {"1200", "1300", "1400"}) {
        Type(keyed);
        Press(Qt::Key_Return);
        EXPECT_TRUE(EntryCalculation::IsDue());
    }
    Type("15");
    EXPECT_EQ(runs_, 1);
    EXPECT_EQ(Stored("A", 100, "Col_1"), NumberText(total));
    KeyingPauses();
    EXPECT_EQ(runs_, 2);
    EXPECT_EQ(Stored("A", 100, "Col_1"), NumberText(total - former + 3900));
    Type("00");
    auto* editor = qobject_cast<QLineEdit*>(a->Grid().Editor());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(S(editor->text()), "1500");
    for (const auto& [line, keyed] : {std::pair{12, "1200"}, {13, "1300"}, {14, "1400"}})
        EXPECT_EQ(Stored("A", line, "Col_1"), keyed);
}

TEST_F(EntryCalculationTest, BoxesOfTheRunAreCountedInstead) {
    gDB.Execute("UPDATE A8 SET Col_5 = 77, Col_3 = 5 WHERE LineNum = 2;");
    Switch()->trigger();
    auto* a8 = Sheet("edit", "A8");
    ASSERT_TRUE(WaitFor([] { return !EntryCalculation::IsDue(); }));
    EXPECT_TRUE(Boxes.empty());
    EXPECT_NE(Status(a8).find("message"), std::string::npos);
}

// --- The identity ----------------------------------------------------------------------------

class EditInfo : public EntryCalculationTest {};

TEST_F(EditInfo, EnteringTheIdentityOpensTheWindowInsteadOfTheCell) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    ASSERT_NE(FindForm("frmCRFEditInfo"), nullptr);
    EXPECT_EQ(s1->Grid().Editor(), nullptr);
    EXPECT_EQ(TextOf("frmCRFEditInfo", "txtProviderNum"), "14-9012");
    EXPECT_EQ(TextOf("frmCRFEditInfo", "txtFacilityName"), "Northfield Health System");
    EXPECT_TRUE(Control<QPushButton>("frmCRFEditInfo", "cmdSaveAs")->isEnabled());
}

TEST_F(EditInfo, CancelLeavesEveryWindowOpen) {
    auto* s1 = Sheet("edit", "S1p1");
    Sheet("view", "A");
    Activate(s1);
    At(s1, 2, "Col_2");
    Press(Qt::Key_F2);
    Click("frmCRFEditInfo", "cmdCancel");
    EXPECT_TRUE(WaitFor([] { return !FindForm("frmCRFEditInfo"); }));
    EXPECT_NE(FindOpenForm("edit", "S1p1"), nullptr);
    EXPECT_NE(FindOpenForm("view", "A"), nullptr);
}

TEST_F(EditInfo, ASavedIdentityStartsAnewWithTheMainWindowAndTheSplash) {
    gDB.Execute("UPDATE Master SET ESFirstName = 'A';");
    auto* s1 = Sheet("edit", "S1p1");
    Sheet("view", "A");
    Activate(s1);
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    Key("frmCRFEditInfo", "txtFacilityName", "Southfield");
    Click("frmCRFEditInfo", "cmdSave");
    ASSERT_TRUE(WaitFor([] { return FindForm("frmSplash") && WorksheetWindows().empty(); }));
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
    EXPECT_EQ(FindForm("frmCRFEditInfo"), nullptr);
    EXPECT_EQ(gProviderName, "Southfield");
    EXPECT_EQ(Done(), "Saved the provider information");
    EXPECT_EQ(Stored("S1p1", 2, "Col_1"), "Southfield");
    EXPECT_TRUE(gDB.Scalar("SELECT ESFirstName FROM Master;").IsNull());
    EXPECT_TRUE(WorksheetWindows().empty());
    EXPECT_NE(FindForm("frmSplash"), nullptr);
}

TEST_F(EditInfo, ARefusalLeavesTheWindowOpenAndTheFieldUnderTheCursor) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    Key("frmCRFEditInfo", "txtProviderNum", "12");
    Click("frmCRFEditInfo", "cmdSave");
    EXPECT_NE(FindForm("frmCRFEditInfo"), nullptr);
    EXPECT_FALSE(Boxes.empty());
    EXPECT_EQ(gProviderNumber, "14-9012");
}

TEST_F(EditInfo, SaveAsOntoTheOpenFileIsRefused) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    Files.emplace_back(gCRFPath);
    Click("frmCRFEditInfo", "cmdSaveAs");
    EXPECT_EQ(Boxes.back().Title, "Selection Error");
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_NE(FindForm("frmCRFEditInfo"), nullptr);
}

TEST_F(EditInfo, ARefusedRowAsksBeforeTheIdentityIsSaved) {
    auto* s1 = Sheet("edit", "S1p1");
    auto* a6 = Sheet("edit", "A6");
    Button(a6, "cmdAdd")->click();
    Enter(a6, a6->Model().Line(a6->Grid().currentIndex().row()).ToDouble(), "Col_2", "Z");
    Activate(s1);
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    Key("frmCRFEditInfo", "txtFacilityName", "Southfield");
    Answers = {kOk, kNo};
    Boxes.clear();
    Click("frmCRFEditInfo", "cmdSave");
    EXPECT_EQ(gProviderName, "Northfield Health System");
    EXPECT_NE(FindForm("frmCRFEditInfo"), nullptr);
    EXPECT_GE(a6->Model().KeyedRow(), 0);
    Answers = {kOk, kYes};
    Click("frmCRFEditInfo", "cmdSave");
    ASSERT_TRUE(WaitFor([] { return WorksheetWindows().empty(); }));
    EXPECT_EQ(gProviderName, "Southfield");
}

TEST_F(EditInfo, AWindowThatStaysAfterSaveAsShowsTheCopy) {
    auto* s1 = Sheet("edit", "S1p1");
    auto* sp1 = Sheet("edit", "Sp1");
    Enter(sp1, 1, "Col_1", "y");
    Activate(s1);
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    Files.emplace_back(folder.File("Copy.CRF"));
    Click("frmCRFEditInfo", "cmdSaveAs");
    ASSERT_TRUE(WaitFor([] { return FindForm("frmSplash") && !FindForm("frmEditS1p1"); }));
    EXPECT_EQ(gCRFPath, folder.File("Copy.CRF"));
    ASSERT_EQ(FindOpenForm("edit", "Sp1"), sp1) << "amended, and without a number";
    EXPECT_EQ(Shown(sp1, 1, "Col_1"), "Yes");
    Activate(sp1);
    Enter(sp1, 2, "Col_1", "4");
    EXPECT_TRUE(sp1->CommitGrid());
    EXPECT_EQ(Stored("Sp1", 2, "Col_1"), "4");
}

TEST_F(EditInfo, SaveAsGoesOnWithTheCopy) {
    const std::string before = gCRFPath;
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 2, "Col_1");
    Press(Qt::Key_F2);
    Key("frmCRFEditInfo", "txtFacilityName", "Copy");
    Files.emplace_back(folder.File("Copy.CRF"));
    Click("frmCRFEditInfo", "cmdSaveAs");
    ASSERT_TRUE(WaitFor([] { return FindForm("frmSplash") && WorksheetWindows().empty(); }));
    EXPECT_EQ(gCRFPath, folder.File("Copy.CRF"));
    EXPECT_EQ(gProviderName, "Copy");
    EXPECT_EQ(Done(), "Saved as Copy.CRF");
    Database old = DBEngine::OpenDatabase(before);
    EXPECT_EQ(Text(old.Scalar("SELECT ProviderName FROM Master;")), "Northfield Health System");
}

}  // namespace
}  // namespace zolmara::ui
