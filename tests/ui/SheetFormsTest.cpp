// The worksheets' windows as they are opened through the menus: views take no keys, headings fold
// and follow the line, schedules have the columns of their cost centers.

#include <QAction>
#include <QHeaderView>

#include "SheetTest.h"
#include "ui/main/MenuTable.h"
#include "ui/worksheets/CellDelegate.h"

namespace zolmara::ui {
namespace {

class SheetForms : public SheetTest {
protected:
    SheetForms() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Trigger("mnuReportCalculate");
        Trigger("mnuViewCloseAll");
        Boxes.clear();
    }

    frmWorksheet* Last() const {
        return WorksheetWindows().empty() ? nullptr : WorksheetWindows().back();
    }
};

TEST_F(SheetForms, EveryEntryOfTheViewMenuOpensAViewThatTakesNoKeys) {
    int opened = 0;
    for (const MenuEntry& entry : MenuTable()) {
        if (entry.Mode != "view" || entry.Item.empty() || !Enabled(entry.Name)) continue;
        Trigger(entry.Name);
        auto* window = Last();
        ASSERT_NE(window, nullptr) << entry.Name;
        EXPECT_TRUE(window->objectName().startsWith("frmView")) << entry.Name;
        for (int column = 0; column < window->Model().columnCount(); ++column)
            EXPECT_FALSE(window->Model().IsOpen(0, column)) << entry.Name;
        Activate(window);
        Type("5");
        EXPECT_EQ(window->Grid().Editor(), nullptr) << entry.Name;
        ++opened;
        window->close();
    }
    EXPECT_EQ(opened, 43);
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
}

TEST_F(SheetForms, TheSWorksheetsOpenFromTheirRuntimeList) {
    for (const char* mode : {"mnuEdit", "mnuView"})
        for (int index = 0; index < 6; ++index) {
            const std::string name = MemberName(std::string(mode) + "Sx", index);
            Trigger(name);
            ASSERT_NE(Last(), nullptr) << name;
            const QString caption = main->Menu(name)->text();
            EXPECT_TRUE(caption.endsWith("(" + Q(Last()->Form().Item) + ")")) << S(caption);
            EXPECT_EQ(S(Last()->windowTitle().mid(15)), Last()->Form().Item);
            Last()->close();
        }
}

TEST_F(SheetForms, AScheduleHasAColumnForEachCostCenterItHas) {
    auto* bp1 = Sheet("edit", "Bp1");
    EXPECT_EQ(S(bp1->objectName()), "frmEditBpx");
    EXPECT_EQ(S(bp1->windowTitle()), "Edit Worksheet Bp1");
    std::vector<std::string> fields;
    for (const FormColumn& column : bp1->Form().Columns)
        if (column.Field.starts_with("CC_")) {
            fields.push_back(column.Field);
            EXPECT_EQ(column.NumberFormat, "#,###,###,##0;(#,###,###,##0)");
        }
    std::vector<std::string> lines;
    Recordset rows = gDB.OpenRecordset(
        "SELECT LineNum FROM CostCenters WHERE LineNum < 7 AND LineNum <> 3 ORDER BY LineNum;",
        dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) lines.push_back("CC_" + NumberText(NumOr(rows[0]) * 100));
    EXPECT_EQ(fields, lines);
}

TEST_F(SheetForms, AUnitCostMultiplierIsShownWithItsSixDecimals) {
    // 3,845,117 of cost over 80,706 square feet.
    auto* c1 = Sheet("view", "C1p3");
    EXPECT_EQ(Shown(c1, 54, "CC_100"), "47.643509");
    EXPECT_EQ(Shown(c1, 53, "CC_100"), "3,845,117");
}

TEST_F(SheetForms, ANumberThatIsALittleTooWideIsSetNarrowerAndNotCut) {
    auto* a = Sheet("view", "A");
    const QModelIndex total = a->Model().index(a->Model().RowOf(Currency(100.0)), 0);
    const auto* const look = dynamic_cast<CellDelegate*>(a->Grid().itemDelegate());
    ASSERT_NE(look, nullptr);
    QStyleOptionViewItem option;
    option.initFrom(&a->Grid());
    option.font = a->Grid().font();
    const int plain = QFontMetrics(option.font).horizontalAdvance("100.00");
    const int margin =
        a->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &a->Grid()) + 1;
    const int room = plain * 4 / 5;
    option.fontMetrics = QFontMetrics(option.font);
    option.rect = QRect(0, 0, room + 2 * margin, 30);
    look->initStyleOption(&option, total);
    EXPECT_EQ(S(option.text), "100.00");
    EXPECT_LE(option.fontMetrics.horizontalAdvance(option.text), room);
    option.rect.setWidth(plain + 2 * margin);
    option.font = a->Grid().font();
    option.fontMetrics = QFontMetrics(option.font);
    look->initStyleOption(&option, total);
    EXPECT_EQ(option.font.stretch(), a->Grid().font().stretch()) << "where there is room it stays";
}

TEST_F(SheetForms, HeadingsAreFoldedToTheColumnAndFoldedAgainWhenItIsResized) {
    auto* a = Sheet("view", "A");
    const auto lines = [&] {
        return a->Model().headerData(2, Qt::Horizontal, Qt::DisplayRole).toString().count('\n');
    };
    const int height = a->Grid().horizontalHeader()->height();
    const auto wide = lines();
    a->Grid().setColumnWidth(2, 60);
    EXPECT_GT(lines(), wide);
    EXPECT_GT(a->Grid().horizontalHeader()->height(), height);
    a->Grid().setColumnWidth(2, 600);
    EXPECT_LE(lines(), 1);
}

TEST_F(SheetForms, TheColumnNumberStandsOnTheFirstLineOfAHeading) {
    auto* a = Sheet("view", "A");
    const int column = a->Form().ColumnOf("Col_3");
    EXPECT_TRUE(a->Model()
                    .headerData(column, Qt::Horizontal, Qt::DisplayRole)
                    .toString()
                    .startsWith("3\n"));
}

TEST_F(SheetForms, OnS1TheHeadingsFollowTheLine) {
    auto* s1 = Sheet("edit", "S1p1");
    At(s1, 1, "Col_1");
    EXPECT_EQ(S(s1->Model().TitleAt(s1->Grid().currentIndex().row(), 2)), "Street Address 1");
    At(s1, 5, "Col_1");
    EXPECT_EQ(S(s1->Model().headerData(2, Qt::Horizontal, Qt::DisplayRole).toString()).substr(0, 8),
              "1\nFirst ");
}

TEST_F(SheetForms, ANegativeAmountStandsInBracketsInEveryView) {
    gDB.Execute("UPDATE Bp1 SET CC_100 = -1234567 WHERE LineNum = 1;");
    auto* bp1 = Sheet("view", "Bp1");
    EXPECT_EQ(Shown(bp1, 1, "CC_100"), "(1,234,567)");
}

}  // namespace
}  // namespace zolmara::ui
