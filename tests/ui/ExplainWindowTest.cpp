// The window that tells where a number comes from, and the findings' compared figures.

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QRadioButton>
#include <QTableWidget>
#include <QTreeView>

#include "SheetTest.h"
#include "ui/dialogs/frmViewError.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/tools/ExplainWindow.h"

namespace zolmara::ui {
namespace {

class ExplainWindowTest : public SheetTest {
protected:
    ExplainWindowTest() {
        Start();
        Open(MakeSample("Sample.CRF"));
        // Worksheet A, line 8: 1,000 + 50 - 150 + 0 = 900, of which 200 and 300 are allocated.
        gDB.Execute(
            "UPDATE A SET Col_1=1000,Col_2=50,Col_3=1050,Col_4=-150,Col_5=900,Col_6=200,Col_7=300,"
            "Col_8=400 WHERE LineNum=8;");
        Boxes.clear();
    }
    static QWidget* Window() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "wndExplain" && !window->isHidden()) return window;
        return nullptr;
    }
    static QTreeView* Tree() { return Window()->findChild<QTreeView*>("treCells"); }
    static std::string Label(const char* name) {
        const auto* const label = Window()->findChild<QLabel*>(name);
        return label->isHidden() ? "" : S(label->text());
    }
    static std::string Row(const QModelIndex& at) {
        return S(at.data().toString() + " | " + at.siblingAtColumn(1).data().toString() + " | " +
                 at.siblingAtColumn(2).data().toString() + " | " +
                 at.siblingAtColumn(3).data().toString());
    }
    static QModelIndex Child(const QModelIndex& parent, int row) {
        return Tree()->model()->index(row, 0, parent);
    }
    static QModelIndex Root() { return Child({}, 0); }
    void ExplainAt(const std::string& mode, const std::string& item, double line,
                   const std::string& field) {
        At(Sheet(mode, item), line, field);
        Press(Qt::Key_F3);
        ASSERT_NE(Window(), nullptr);
    }
    QAction* Tool(const char* name) const { return main->findChild<QAction*>(name); }
};

TEST_F(ExplainWindowTest, F3TellsTheRuleWithTheFiguresInIt) {
    ExplainAt("view", "A", 8, "Col_3");
    EXPECT_EQ(Window()->windowTitle(), "Explain This Number");
    EXPECT_TRUE(Label("lblCell").starts_with("A, line 8, column 3 - ")) << Label("lblCell");
    EXPECT_EQ(Label("lblValue"), "1,050");
    EXPECT_EQ(Label("lblFormula"), "1,000 + 50 = 1,050");
    EXPECT_NE(Label("lblRule"), "");
    ASSERT_EQ(Tree()->model()->rowCount(Root()), 2);
    EXPECT_TRUE(Tree()->isExpanded(Root()));
    EXPECT_TRUE(Row(Child(Root(), 0)).starts_with("A, line 8, column 1 | "))
        << Row(Child(Root(), 0));
    EXPECT_TRUE(Row(Child(Root(), 0)).ends_with(" | 1,000 | keyed"));
    EXPECT_TRUE(Row(Child(Root(), 1)).ends_with(" | 50 | computed"));
}

TEST_F(ExplainWindowTest, TheTreeOpensDownToKeyedCells) {
    ExplainAt("view", "A", 8, "Col_8");
    const QModelIndex net = Child(Root(), 0);
    EXPECT_TRUE(Row(net).starts_with("A, line 8, column 5 | ")) << Row(net);
    EXPECT_EQ(Tree()->model()->rowCount(net), 0) << "read before it is opened";
    Tree()->expand(net);
    EXPECT_EQ(Tree()->model()->rowCount(net), 2);
    const QModelIndex expenses = Child(net, 0);
    Tree()->expand(expenses);
    const QModelIndex keyed = Child(expenses, 0);
    EXPECT_TRUE(Row(keyed).ends_with(" | 1,000 | keyed")) << Row(keyed);
    EXPECT_FALSE(Tree()->model()->hasChildren(keyed));
}

TEST_F(ExplainWindowTest, TheTextFollowsTheCurrentCellOfTheTree) {
    ExplainAt("view", "A", 8, "Col_3");
    Tree()->setCurrentIndex(Child(Root(), 0));
    EXPECT_TRUE(Label("lblCell").starts_with("A, line 8, column 1"));
    EXPECT_EQ(Label("lblRule"), "Keyed in the editor of worksheet A, or imported.");
    EXPECT_EQ(Label("lblFormula"), "");
}

TEST_F(ExplainWindowTest, ReturnGoesToAKeyedCellInItsEditor) {
    ExplainAt("view", "A", 8, "Col_3");
    Tree()->setCurrentIndex(Child(Root(), 0));
    Activate(Window());
    QTest::keyClick(Tree(), Qt::Key_Return);
    auto* editor = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "A"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(Current(editor), "8 Col_1");
}

TEST_F(ExplainWindowTest, ADoubleClickGoesToAComputedCellInItsView) {
    ExplainAt("edit", "A", 8, "Col_1");
    UnloadForm(FindOpenForm("edit", "A"));
    ShowExplanation({"A", Currency(8.0), "Col_8"}, Direction::From);
    const QRect place = Tree()->visualRect(Root());
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    auto* view = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "A"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Current(view), "8 Col_8");
}

TEST_F(ExplainWindowTest, ShiftF3TellsWhatDependsOnACell) {
    At(Sheet("edit", "A"), 8, "Col_1");
    Press(Qt::Key_F3, Qt::ShiftModifier);
    ASSERT_NE(Window(), nullptr);
    EXPECT_TRUE(Window()->findChild<QRadioButton*>("optUses")->isChecked());
    std::set<std::string> users;
    for (int row = 0; row < Tree()->model()->rowCount(Root()); ++row)
        users.insert(S(Child(Root(), row).data().toString()));
    EXPECT_EQ(users.count("A, line 8, column 3"), 1u);
    EXPECT_EQ(users.count("A, line 99, column 1"), 1u);
}

TEST_F(ExplainWindowTest, TheOtherDirectionAndBack) {
    ExplainAt("view", "A", 8, "Col_3");
    EXPECT_FALSE(Window()->findChild<QPushButton*>("cmdBack")->isEnabled());
    Tree()->setCurrentIndex(Child(Root(), 1));
    Window()->findChild<QRadioButton*>("optUses")->click();
    EXPECT_TRUE(Row(Root()).starts_with("A, line 8, column 2"));
    Window()->findChild<QPushButton*>("cmdBack")->click();
    EXPECT_TRUE(Row(Root()).starts_with("A, line 8, column 3"));
    EXPECT_TRUE(Window()->findChild<QRadioButton*>("optFrom")->isChecked());
    EXPECT_FALSE(Window()->findChild<QPushButton*>("cmdBack")->isEnabled());
}

TEST_F(ExplainWindowTest, F3InItsTreeExplainsTheCellThere) {
    ExplainAt("view", "A", 8, "Col_8");
    Activate(Window());
    Tree()->setCurrentIndex(Child(Root(), 0));
    Press(Qt::Key_F3);
    EXPECT_TRUE(Row(Root()).starts_with("A, line 8, column 5"));
}

TEST_F(ExplainWindowTest, AStoredRowIsToldAfresh) {
    ExplainAt("view", "A", 8, "Col_1");
    EXPECT_EQ(Label("lblValue"), "1,000");
    auto* editor = Sheet("edit", "A");
    Enter(editor, 8, "Col_1", "1234");
    ASSERT_TRUE(editor->CommitGrid());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Label("lblValue") == "1,234"; }, 5000))
        << Label("lblValue");
}

TEST_F(ExplainWindowTest, ItIsNoFormAndBarsNoMenu) {
    ExplainAt("view", "A", 8, "Col_3");
    EXPECT_EQ(FindForm("wndExplain"), nullptr);
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
    EXPECT_TRUE(Enabled("mnuEditOpen"));
    Answers = {kOk};
    Trigger("mnuReportClose");
    ASSERT_FALSE(CrfIsOpen()) << ::testing::PrintToString(BoxTexts());
    EXPECT_EQ(Window(), nullptr) << "it closes with the CRF";
}

TEST_F(ExplainWindowTest, TheCommandsAreOnWithAWorksheetAlone) {
    ASSERT_NE(Tool("tlsExplain"), nullptr);
    EXPECT_FALSE(Tool("tlsExplain")->isEnabled());
    EXPECT_FALSE(Tool("tlsUses")->isEnabled());
    auto* sheet = Sheet("view", "A");
    EXPECT_TRUE(Tool("tlsExplain")->isEnabled());
    At(sheet, 8, "Col_3");
    Activate(main.get());
    Tool("tlsExplain")->trigger();
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Label("lblValue"), "1,050");
}

TEST_F(ExplainWindowTest, TheContextMenuOfAWorksheetHasBoth) {
    auto* sheet = Sheet("view", "A");
    At(sheet, 8, "Col_3");
    for (const char* name : {"actExplain", "actUses"}) {
        auto* const action = sheet->findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        EXPECT_TRUE(sheet->Grid().actions().contains(action));
        EXPECT_TRUE(action->shortcuts().isEmpty()) << "two commands on one key are none";
    }
    sheet->findChild<QAction*>("actExplain")->trigger();
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Label("lblFormula"), "1,000 + 50 = 1,050");
}

TEST_F(ExplainWindowTest, ACostCenterIsKeyedInItsOwnWindow) {
    ExplainAt("edit", "CCs", 8, "StatLabel1");
    EXPECT_EQ(Label("lblRule"), "Keyed in the cost centers, or imported.");
    EXPECT_TRUE(Label("lblCell").starts_with("CostCenters, line 8, ")) << Label("lblCell");
}

TEST_F(ExplainWindowTest, ANameOfTheFormsOwnCostCentersIsNotSaidToBeKeyed) {
    ExplainAt("edit", "CCs", 8, "CCName");
    EXPECT_EQ(Label("lblRule"), "Imported; in the cost centers it is locked as its line stands.");
}

TEST_F(ExplainWindowTest, EveryControlHasANameForTheScreenReader) {
    ExplainAt("view", "A", 8, "Col_3");
    EXPECT_EQ(Tree()->accessibleName(), "Cells");
    EXPECT_EQ(Window()->findChild<QLabel*>("lblFormula")->accessibleName(),
              "With the figures: 1,000 + 50 = 1,050");
}

// --- Roads to a cell -----------------------------------------------------------------------

TEST_F(ExplainWindowTest, WhatBarsTheMenusBarsEveryOtherRoadAndIsTold) {
    Sheet("edit", "CCs");
    ASSERT_FALSE(Enabled("mnuViewOpen"));
    EXPECT_FALSE(GoToCell({"A", Currency(8.0), "Col_8"}));
    EXPECT_EQ(
        BoxTexts(),
        (std::vector<std::string>{
            "Worksheet A cannot be opened to view now.  \"EDIT: Cost Centers Structure Table\" "
            "must be closed first."}));
    EXPECT_EQ(FindOpenForm("view", "A"), nullptr);
    EXPECT_TRUE(GoToCell({"CostCenters", Currency(8.0), "CCName"})) << "it stands open";
}

TEST_F(ExplainWindowTest, AKeyedCellOfS1AsksToCloseTheOthersAsItsMenuDoes) {
    Sheet("view", "A");
    Answers = {kYes};
    EXPECT_TRUE(GoToCell({"S1p1", Currency(3.0), "Col_1"}));
    ASSERT_EQ(Boxes.size(), 1u);
    EXPECT_EQ(Boxes[0].Title, "Close Forms");
    EXPECT_EQ(FindOpenForm("view", "A"), nullptr);
    EXPECT_NE(FindOpenForm("edit", "S1p1"), nullptr);
}

// --- Findings ------------------------------------------------------------------------------

class ComparedFindings : public ExplainWindowTest {
protected:
    void AddFinding(const char* code, const char* message) {
        gDB.Execute("INSERT INTO Error ([Level], Code, Message) VALUES ('Non-Fatal Error', ?, ?);",
                    {code, message});
    }
    frmViewError* Findings() {
        Trigger("mnuReportUtilitiesLog");
        return dynamic_cast<frmViewError*>(FindForm("frmViewError"));
    }
    QLabel* Compared() const { return Control<QLabel>("frmViewError", "lblCompared"); }
};

TEST_F(ComparedFindings, ShowBothFiguresWithTheirCellsAndTheDifference) {
    Trigger("mnuReportCalculate");
    gDB.Execute("DELETE FROM Error;");
    gDB.Execute("UPDATE A6 SET Col_5=1500, Col_8=1200 WHERE LineNum=100;");
    AddFinding("1020A", "Worksheet A-6: Line 100, column 5 must equal column 8.");
    AddFinding("2010G", "Worksheet G: line 48 should be greater than zero.");
    auto* findings = Findings();
    ASSERT_NE(findings, nullptr);
    findings->SetGrd();
    findings->Select(0);
    EXPECT_FALSE(Compared()->isHidden());
    EXPECT_EQ(Compared()->accessibleName(),
              "A-6, line 100, column 5: 1,500; A-6, line 100, column 8: 1,200; difference 300");
    EXPECT_TRUE(Compared()->text().contains(">A-6, line 100, column 8</a>: <b>1,200</b>"));
    findings->Select(1);
    EXPECT_TRUE(Compared()->isHidden()) << "a check of one figure";
    findings->Select(0);
    emit Compared()->linkActivated("1");
    auto* sheet = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "A6"));
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(Current(sheet), "100 Col_8");
}

TEST_F(ComparedFindings, ADoubleClickGoesToLineAndColumn) {
    Trigger("mnuReportCalculate");
    gDB.Execute("DELETE FROM Error;");
    AddFinding("1020A", "Worksheet A-8: line 2 column 3 must");
    auto* findings = Findings();
    ASSERT_NE(findings, nullptr);
    findings->SetGrd();
    auto* const grid = findings->findChild<QTableWidget*>("grd");
    const QRect place = grid->visualItemRect(grid->item(0, 2));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    auto* sheet = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "A8"));
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(Current(sheet), "2 Col_3");
}

}  // namespace
}  // namespace zolmara::ui
