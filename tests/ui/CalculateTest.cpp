#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <set>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "ui/worksheets/FindingTarget.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {
namespace {

class Calculate : public UiTest {
protected:
    Calculate() { Start(); }
    QTableWidget* Grid() const { return Control<QTableWidget>("frmViewError", "grd"); }
    /// An open CRF whose table Error has these rows.
    void OpenWithFindings(std::initializer_list<std::array<const char*, 3>> rows) {
        Open(MakeCrf("One.CRF"));
        Build_Error();
        for (const auto& row : rows) AddErrorRow(row[0], row[1], row[2]);
        Trigger("mnuReportUtilitiesLog");
    }
};

TEST_F(Calculate, ACleanStatementMayBeSubmitted) {
    Open(MakeSample("Sample.CRF"));
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    Trigger("mnuReportCalculate");
    EXPECT_TRUE(BoxTexts().empty());
    EXPECT_TRUE(Enabled("mnuReportSubmit"));
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
    ASSERT_NE(FindForm("frmViewError"), nullptr);
    EXPECT_EQ(Form("frmViewError")->windowTitle(), "Edit Check Results");
    EXPECT_TRUE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
    EXPECT_FALSE(Visible("txtCalcMsg"));
}

TEST_F(Calculate, AnEmptyStatementMayNot) {
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportCalculate");
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_FALSE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
}

TEST_F(Calculate, ItShowsHowFarItIsAndCannotBeStartedTwice) {
    Open(MakeCrf("One.CRF"));
    std::set<std::string> texts;
    int highest = 0;
    bool barVisible = false;
    int enabled = 0;
    QTimer look;
    look.callOnTimeout([&] {
        if (!main->InLongStep()) return;
        texts.insert(TextOf("frmMain", "txtCalcMsg"));
        const auto* bar = Control<QProgressBar>("frmMain", "prgCalc");
        highest = std::max(highest, bar->value());
        barVisible |= bar->isVisible();
        if (Enabled("mnuReportCalculate")) ++enabled;
        // A shortcut or a click that comes in between.
        main->Run([&] { ADD_FAILURE() << "a second command ran"; });
        QEvent activation(QEvent::ActivationChange);
        QCoreApplication::sendEvent(main.get(), &activation);
    });
    look.start(0);
    Trigger("mnuReportCalculate");
    look.stop();
    EXPECT_EQ(enabled, 0);
    EXPECT_TRUE(barVisible);
    EXPECT_GT(highest, 500);
    EXPECT_TRUE(texts.contains(" Calculating level 13: A"));
    EXPECT_GT(texts.size(), 10U);
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
}

TEST_F(Calculate, TheFindingsWindowIsMadeAnew) {
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportCalculate");
    QWidget* const first = Form("frmViewError");
    Trigger("mnuReportCalculate");
    int open = 0;
    for (const QWidget* form : OpenForms()) open += form->objectName() == "frmViewError";
    EXPECT_EQ(open, 1);
    EXPECT_NE(first, nullptr);
}

TEST_F(Calculate, AFailureIsReportedAndTheMenusComeBack) {
    Open(MakeCrf("One.CRF"));
    gDB.DeleteTable("G1");
    Trigger("mnuReportCalculate");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_EQ(Boxes[0].Text.substr(0, 3), "G-1");
    EXPECT_TRUE(Enabled("mnuReport"));
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_FALSE(main->InLongStep());
}

TEST_F(Calculate, TheChecksAloneLeaveSubmitAsItIs) {
    host->SaveSetting("Zolmara 287-22", "Startup", "Debug", "True");
    main.reset();
    Start();
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportSubmit", false);
    gDebug = false;
    Trigger("mnuReportEditCheck");
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_NE(FindForm("frmViewError"), nullptr);
}

// --- frmViewError --------------------------------------------------------------------------

TEST_F(Calculate, TheFindingsStandInTheirOrder) {
    OpenWithFindings({{"Potential Error", "2000", "A line 4 column Col_1"},
                      {"Non-Fatal Error", "1000A", "Worksheet A: \"line 100\""}});
    QTableWidget* const grid = Grid();
    ASSERT_EQ(grid->rowCount(), 2);
    EXPECT_EQ(grid->horizontalHeaderItem(0)->text(), "Level");
    EXPECT_EQ(grid->horizontalHeaderItem(1)->text(), "Code");
    EXPECT_EQ(grid->horizontalHeaderItem(2)->text(), "Message");
    EXPECT_EQ(grid->item(0, 1)->text(), "2000");
    EXPECT_EQ(grid->item(1, 2)->text(), "Worksheet A: \"line 100\"");
    EXPECT_FALSE(grid->item(0, 2)->flags() & Qt::ItemIsEditable);
    auto* note = Control<QLabel>("frmViewError", "lblNonFatal");
    EXPECT_FALSE(note->isHidden());
    EXPECT_EQ(note->text(),
              "NOTE: This cost report contains Non-Fatal Errors.  These errors must be corrected "
              "before you can buld an Electronic File.");
    EXPECT_GT(note->palette().color(QPalette::WindowText).red(), 180);
    EXPECT_FALSE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
}

TEST_F(Calculate, RowsHaveTheHeightOfTheirLines) {
    OpenWithFindings(
        {{"Potential Error", "2000", "one"}, {"Potential Error", "2000", "one\rtwo\rthree"}});
    QTableWidget* const grid = Grid();
    // 230 twips a line, 1440 to the inch.
    EXPECT_GE(grid->rowHeight(0), 230 * grid->logicalDpiX() / 1440);
    EXPECT_GE(grid->rowHeight(1), 3 * 230 * grid->logicalDpiX() / 1440);
    EXPECT_GT(grid->rowHeight(1), grid->rowHeight(0));
}

TEST_F(Calculate, TheNoteCanBeReadOnADarkDesktop) {
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    OpenWithFindings({{"Non-Fatal Error", "1000A", "Worksheet A"}});
    const auto* note = Control<QLabel>("frmViewError", "lblNonFatal");
    const QColor ground = note->palette().color(QPalette::Window);
    const QColor text = note->palette().color(QPalette::WindowText);
    EXPECT_LT(ground.lightness(), 100);
    EXPECT_GT(text.lightness() - ground.lightness(), 80);
    QApplication::setPalette(light);
}

TEST_F(Calculate, TheBuildOfTheFindingsWindowFollowsTheMenu) {
    OpenWithFindings({{"Potential Error", "2000", "A line 4 column Col_1"}});
    const auto* build = Control<QPushButton>("frmViewError", "cmdBuildECR");
    EXPECT_FALSE(build->isEnabled());
    host->EnableMenu("mnuReportSubmit", true);
    EXPECT_TRUE(build->isEnabled());
    host->RefreshWorksheetForm("View", "A");
    EXPECT_FALSE(build->isEnabled());
}

TEST_F(Calculate, FindingsThatBlockAllowNoBuildWhateverTheMenuSays) {
    OpenWithFindings({{"Non-Fatal Error", "1000A", "Worksheet A"}});
    host->EnableMenu("mnuReportSubmit", true);
    EXPECT_FALSE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
}

TEST_F(Calculate, LastEntriesOfACleanRunAllowNoBuildInALaterSession) {
    const std::string path = MakeSample("Sample.CRF");
    Open(path);
    Trigger("mnuReportCalculate");
    ASSERT_TRUE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
    Answers = {kOk};
    Trigger("mnuReportClose");
    Open(path);
    Trigger("mnuReportUtilitiesLog");
    EXPECT_FALSE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
}

TEST_F(Calculate, PotentialErrorsAloneAllowTheBuild) {
    OpenWithFindings({{"Potential Error", "2000", "A line 4 column Col_1"}});
    host->EnableMenu("mnuReportSubmit", true);
    EXPECT_TRUE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
    Click("frmViewError", "cmdBuildECR");
    EXPECT_EQ(FindForm("frmViewError"), nullptr);
    EXPECT_NE(FindForm("frmESCert"), nullptr);
}

TEST_F(Calculate, LastEntriesAreReadAgainInTheSameWindow) {
    OpenWithFindings({{"No errors found", " ", " "}});
    EXPECT_EQ(Grid()->rowCount(), 1);
    AddErrorRow("Potential Error", "2000", "more");
    Trigger("mnuReportUtilitiesLog");
    EXPECT_EQ(Grid()->rowCount(), 2);
    Click("frmViewError", "cmdClose");
    EXPECT_EQ(FindForm("frmViewError"), nullptr);
}

TEST_F(Calculate, APrintedListOfFindingsIsOneJob) {
    OpenWithFindings({{"Potential Error", "2000", "A line 4 column Col_1"}});
    Click("frmViewError", "cmdPrint");
    ASSERT_EQ(Jobs.size(), 1U);
    std::string text;
    for (const std::string& line : Jobs[0].Pages.At(0).Lines) text += line + "\n";
    EXPECT_NE(text.find("Error Report For"), std::string::npos);
    EXPECT_NE(text.find("A line 4 column Col_1"), std::string::npos);
}

TEST_F(Calculate, AFindingOpensTheWorksheetThatItNames) {
    const auto kept = gShowWorksheet;
    std::string opened;
    gShowWorksheet = [&](const std::string& mode, const std::string& item,
                         std::optional<Currency> line, const std::string&) {
        opened = mode + " " + item + " " + (line ? NumberText(*line) : "");
    };
    OpenWithFindings({{"Non-Fatal Error", "1065", "Worksheet A-6: Line 4.01 must"},
                      {"No errors found", " ", " "}});
    emit Grid()->itemActivated(Grid()->item(0, 0));
    EXPECT_EQ(opened, "edit A6 4.01");
    opened.clear();
    emit Grid()->itemActivated(Grid()->item(1, 0));
    EXPECT_EQ(opened, "");
    gShowWorksheet = kept;
}

TEST(FindingTarget, NamesOfWorksheetsAreReadInEveryForm) {
    const auto target = [](const char* item, double line, const char* column = "") {
        return std::optional(FindingTarget{item, Currency(line), column});
    };
    EXPECT_EQ(TargetOf("Worksheet A-8: line 12 column 4 must"), target("A8", 12, "4"));
    EXPECT_EQ(TargetOf("Worksheet A-8-1 Part I: line 3 column 4 must"), target("A81p1", 3, "4"));
    EXPECT_EQ(TargetOf("Worksheet S-1 Part II: lines 1 through 5 column 2"),
              target("S1p2", 1, "2"));
    EXPECT_EQ(TargetOf("Worksheet A6: LineNum (4.02) cost center (31) is not defined"),
              target("A6", 4.02));
    EXPECT_EQ(TargetOf("Worksheet A81p1: SeqNum (7) cost center (31) is not"), target("A81p1", 7));
    EXPECT_EQ(TargetOf("B1p3 line 52 column CC_100 must be greater"), target("B1p3", 52, "CC_100"));
    EXPECT_EQ(TargetOf("Worksheet B-1  Part-3, Line 4, Column Col_7 Numeric"),
              target("B1p3", 4, "Col_7"));
    EXPECT_EQ(TargetOf("B Part III, line 52, column 5 must equal A, line 5"),
              target("Bp3", 52, "5"));
    EXPECT_EQ(TargetOf("Worksheet E-1, line 52, column 7 must equal"), target("E1p3", 52, "7"));
    EXPECT_EQ(TargetOf("Worksheet E, line 4, column 3 must equal A"), target("E", 4, "3"));
    EXPECT_EQ(TargetOf("Worksheet G-1: line 22 should not equal zero."), target("G1", 22));
    EXPECT_EQ(TargetOf("Worksheet A-7 Part I: Line 9 column 6 must"), target("A7p1", 9, "6"));
    EXPECT_EQ(TargetOf("Worksheet S2p1: line 1.01 column 11"), target("S2p1", 1.01, "11"));
}

TEST(FindingTarget, OtherMessagesNameNoWorksheet) {
    EXPECT_EQ(TargetOf(" "), std::nullopt);
    EXPECT_EQ(TargetOf("Each component CCN reported more than once"), std::nullopt);
    EXPECT_EQ(TargetOf("Worksheet Z-1: line 4"), std::nullopt);
    EXPECT_EQ(TargetOf("Amounts on line 4 must be positive"), std::nullopt);
    EXPECT_EQ(TargetOf("For each reclassification code (A) the sum"), std::nullopt);
}

TEST(FindingTarget, AWorksheetMayBeNamedWithoutALine) {
    EXPECT_EQ(TargetOf("Worksheet A-6: For each reclassification code"),
              std::optional(FindingTarget{"A6", std::nullopt}));
}

}  // namespace
}  // namespace zolmara::ui
