// Blocks from a spreadsheet, pasted into the grid.

#include <QClipboard>
#include <QDialog>
#include <QTableWidget>

#include "SheetTest.h"
#include "ui/worksheets/BlockText.h"

namespace zolmara::ui {
namespace {

class SheetPaste : public SheetTest {
protected:
    SheetPaste() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Boxes.clear();
    }
    static void Clip(const std::string& text) { QApplication::clipboard()->setText(Q(text)); }
    static QDialog* Report() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "wndBlockReport" && window->isVisible())
                return qobject_cast<QDialog*>(window);
        return nullptr;
    }
    static std::string ReportCell(int row, int column) {
        return S(Report()->findChild<QTableWidget*>("grdFindings")->item(row, column)->text());
    }
};

TEST(BlockText, CellsWithTabsLineEndsAndQuotesComeBack) {
    const std::vector<QStringList> rows{{"a", "b\tc", "\"d\""}, {"", "e\nf", ""}};
    EXPECT_EQ(ReadBlock(WriteBlock(rows)), rows);
    EXPECT_EQ(ReadBlock("1\t2\r\n3\t4\r\n"), (std::vector<QStringList>{{"1", "2"}, {"3", "4"}}));
    EXPECT_EQ(ReadBlock("5\" pipe\t1"), (std::vector<QStringList>{{"5\" pipe", "1"}}));
    EXPECT_TRUE(ReadBlock("").empty());
}

TEST_F(SheetPaste, NumbersInTheStylesOfSpreadsheetsAreUnderstood) {
    auto* a = Sheet("edit", "A");
    At(a, 12, "Col_1");
    Clip("1,234\n(1,234)\n$1,234.00\n1 234 \n\n");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Stored("A", 12, "Col_1"), "1234");
    EXPECT_EQ(Stored("A", 13, "Col_1"), "-1234");
    EXPECT_EQ(Stored("A", 14, "Col_1"), "1234");
    EXPECT_EQ(Stored("A", 14.01, "Col_1"), "1234");
    EXPECT_EQ(Report(), nullptr);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(SheetPaste, ASingleValueFillsTheSelection) {
    auto* a = Sheet("edit", "A");
    At(a, 16, "Col_1");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Clip("7");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Stored("A", 16, "Col_1"), "7");
    EXPECT_EQ(Stored("A", 17, "Col_1"), "7");
}

TEST_F(SheetPaste, ABlockOf100By10WithErrorsInIt) {
    // Rows 1 to 100 of A-6, from the code on: code, two names that are locked, lines and amounts.
    auto* a6 = Sheet("edit", "A6");
    const int before = a6->Model().rowCount();
    const std::int64_t commits = gDB.CommitCount();
    std::string text;
    for (int row = 1; row <= 100; ++row) {
        const bool badCode = row % 25 == 0;
        const bool rounded = row == 3;
        text += "Pasted " + std::to_string(row) + "\t" + (badCode ? "7" : "A") + "\t\t9\t" +
                (rounded ? "10.5" : std::to_string(row)) + "\t\t8\t" + std::to_string(row) +
                "\tbeyond\tbeyond\n";
    }
    At(a6, 1, "Col_1");
    Clip(text);
    Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_NE(Report(), nullptr);
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(gDB.CommitCount() - commits, 1);
    EXPECT_GT(a6->Model().rowCount(), before);
    EXPECT_EQ(Stored("A6", 1, "Col_1"), "Pasted 1");
    EXPECT_EQ(Stored("A6", 1, "Col_5"), "1");
    EXPECT_EQ(Stored("A6", 3, "Col_5"), "11") << "rounded";
    auto* grid = Report()->findChild<QTableWidget*>("grdFindings");
    bool told = false;
    for (int row = 0; row < grid->rowCount(); ++row)
        told = told || (ReportCell(row, 0) == "A6" && ReportCell(row, 1) == "3" &&
                        ReportCell(row, 3) == "10.5" && ReportCell(row, 4) == "changed");
    EXPECT_TRUE(told);
    Report()->close();
}

TEST_F(SheetPaste, AnEmptyWorksheetTakesABlockFromItsFirstColumnOn) {
    gDB.Execute("DELETE FROM A6 WHERE LineNum < 100;");
    auto* a6 = Sheet("edit", "A6");
    ASSERT_EQ(a6->Model().rowCount(), 0);
    Clip("Rent\tA\t\t16\t1,200\t\t17\t1,200\nRent\tA\t\t18\t50\t\t17\t50\n");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(a6->Model().rowCount(), 2);
    EXPECT_EQ(Stored("A6", 1, "Col_1"), "Rent");
    EXPECT_EQ(Stored("A6", 1, "Col_5"), "1200");
    EXPECT_EQ(Stored("A6", 2, "Col_8"), "50");
    EXPECT_EQ(Report(), nullptr);
}

TEST_F(SheetPaste, AnEmptyWorksheetThatTakesNoLinesSaysSo) {
    Trigger("mnuReportClose");
    Open(MakeCrf("New.CRF"));
    auto* s2 = Sheet("edit", "S2p2");
    ASSERT_EQ(s2->Model().rowCount(), 0);
    Clip("Northfield Clinic\n");
    Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_NE(Report(), nullptr);
    EXPECT_EQ(ReportCell(0, 3), "Northfield Clinic");
    EXPECT_EQ(ReportCell(0, 5), "The worksheet has no line there, and takes none.");
    EXPECT_EQ(s2->Model().rowCount(), 0);
}

TEST_F(SheetPaste, RowsPastTheEndOfAFormsOwnLinesAreRefused) {
    auto* a = Sheet("edit", "A");
    const int rows = a->Model().rowCount();
    a->Grid().GoTo(a->Model().index(rows - 1, a->Form().ColumnOf("Col_1")));
    Clip("1\n2\n3\n");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(a->Model().rowCount(), rows);
    ASSERT_NE(Report(), nullptr);
    EXPECT_EQ(Report()->findChild<QTableWidget*>("grdFindings")->rowCount(), 2);
    Report()->close();
}

TEST_F(SheetPaste, TheIdentityIsNotPastedOver) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 2, "Col_1");
    Clip("Another Home Office\t99-9999\n");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Stored("S1p1", 2, "Col_1"), "Northfield Health System");
    ASSERT_NE(Report(), nullptr);
    EXPECT_EQ(ReportCell(0, 4), "refused");
    Report()->close();
}

TEST_F(SheetPaste, AViewTakesNothing) {
    auto* a = Sheet("view", "A");
    At(a, 12, "Col_1");
    const std::string before = Stored("A", 12, "Col_1");
    Clip("1\n");
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Stored("A", 12, "Col_1"), before);
}

}  // namespace
}  // namespace zolmara::ui
