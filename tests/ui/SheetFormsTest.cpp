// Every worksheet's window, opened through the menus, against what the form's instructions ask of
// it: name, caption, headings, locks, number formats and buttons.

#include <QAction>
#include <QHeaderView>
#include <map>

#include "SheetTest.h"
#include "ui/main/MenuTable.h"

namespace zolmara::ui {
namespace {

/// The shown columns of an editor: titles apart by "|", and for each K keyed or L locked.
struct EditorLook {
    const char* Item;
    const char* Name;
    const char* Caption;
    const char* Titles;
    const char* Locks;
};

constexpr EditorLook kEditors[] = {
    {"A", "frmEditA", "Edit Worksheet A", "CC #|Description|Expenses per Home Office Books", "LLK"},
    {"A6", "frmEditA6", "Edit Worksheet A6",
     "Line #|Explanation|Code|Up Cost Center|Up CC Line #|Up Amount|Dn Cost Center|"
     "Dn CC Line #|Dn Amount",
     "LKK?KK?KK"},
    {"A8", "frmEditA8", "Edit Worksheet A8",
     "Line #|Description of Adjustment|Basis|Amount|Description|CC #", "LKKK?K"},
    {"A81p1", "frmEditA81p1", "Edit Worksheet A81p1",
     "Seq #|CC #|Cost Center Name|Expense Item Description|Sch A81 Part II Line #|"
     "Amount Allowable In Cost|Amount Included In A Col.3|Net Adjustment",
     "LKLKKKKL"},
    {"A81p2", "frmEditA81p2", "Edit Worksheet A81p2",
     "Seq #|Symbol|Interrelationship|Name|% of Ownership|Related Org. Name|"
     "Related Org. % of Ownership|Related Org. Type of Business",
     "LKKKKKKK"},
    {"G", "frmEditG", "Edit Worksheet G", "Line #|Description|General Fund", "L?K"},
    {"G1", "frmEditG1", "Edit Worksheet G1", "Line #|Description|Amount", "L?K"},
    {"CCs", "frmEditCCs", "EDIT: Cost Centers Structure Table",
     "CC #|Cost Center Name|Column Label|Column Label|Column Label|Stat Label|"
     "Stat Label|Stat Code",
     "LKKKKKKK"},
    {"Sp1", "frmEditSp1", "Edit Worksheet Sp1", "Line #|Description|Answer", "LLK"},
    {"S1p2", "frmEditS1p2", "Edit Worksheet S1p2", "Line #|Position / Job Title|Key Officer Name",
     "LKK"},
    {"S2p1", "frmEditS2p1", "Edit Worksheet S2p1",
     "Line #|Component Name|CCN|Owned or Managed|Report Beginning|Report Ending|Date Acquired|"
     "Date Sold / Closed / Ceased|Medicaid Participation|Medicare Reimbursement Type|"
     "Medicare Contractor Number|Medicaid Contractor Name",
     "LKKKKKKKKKKK"},
    {"S2p2", "frmEditS2p2", "Edit Worksheet S2p2",
     "Line #|Component Name|Report Beginning|Report Ending|Date Acquired|"
     "Date Sold / Closed / Ceased",
     "LKKKKK"},
    {"S2p3", "frmEditS2p3", "Edit Worksheet S2p3",
     "Line #|Component Name|Regional HO Number|City|State|Costs Included in this Statement|"
     "Separate Statement Submitted|Region / Division Contractor",
     "LKKKKKKK"},
};

class SheetForms : public SheetTest {
protected:
    SheetForms() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Trigger("mnuReportCalculate");
        Trigger("mnuViewCloseAll");
        Boxes.clear();
    }

    static std::string Titles(const frmWorksheet* window) {
        std::string titles;
        for (const FormColumn& column : window->Form().Columns)
            if (!column.Hidden)
                titles +=
                    (titles.empty() ? "" : "|") + S(Q(column.Title).replace('|', ' ').simplified());
        return titles;
    }
    static bool LocksAre(const frmWorksheet* window, const std::string& expected) {
        std::size_t at = 0;
        for (const FormColumn& column : window->Form().Columns) {
            if (column.Hidden) continue;
            const char lock = column.Locked ? 'L' : 'K';
            if (at >= expected.size() || (expected[at] != '?' && expected[at] != lock))
                return false;
            ++at;
        }
        return at == expected.size();
    }
    static std::vector<std::string> Buttons(frmWorksheet* window) {
        std::vector<std::string> names;
        for (const auto* button : window->findChild<QWidget*>("picButtons")
                                      ->findChildren<QPushButton*>(Qt::FindDirectChildrenOnly))
            names.push_back(S(button->objectName()));
        return names;
    }
    frmWorksheet* Last() const {
        return WorksheetWindows().empty() ? nullptr : WorksheetWindows().back();
    }
};

TEST_F(SheetForms, EveryEditorHasTheToldColumnsAndLocks) {
    for (const EditorLook& look : kEditors) {
        auto* window = Sheet("edit", look.Item);
        ASSERT_NE(window, nullptr) << look.Item;
        EXPECT_EQ(S(window->objectName()), look.Name);
        EXPECT_EQ(S(window->windowTitle()), look.Caption);
        EXPECT_EQ(Titles(window), look.Titles) << look.Item;
        EXPECT_TRUE(LocksAre(window, look.Locks)) << look.Item;
        window->close();
    }
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
}

TEST_F(SheetForms, EveryEntryOfTheEditMenuOpensItsEditor) {
    int opened = 0;
    for (const MenuEntry& entry : MenuTable()) {
        if (entry.Mode != "edit" || entry.Item.empty() || !Enabled(entry.Name)) continue;
        Trigger(entry.Name);
        auto* window = Last();
        ASSERT_NE(window, nullptr) << entry.Name;
        EXPECT_EQ(S(window->windowTitle().left(5)).substr(0, 4).size(), 4U);
        EXPECT_TRUE(window->objectName().startsWith("frmEdit")) << entry.Name;
        EXPECT_EQ(Buttons(window),
                  (std::vector<std::string>{"cmdRecalculate", "cmdOpenView", "cmdPrevious",
                                            "cmdNext", "cmdAdd", "cmdDelete", "cmdClose"}))
            << entry.Name;
        EXPECT_GT(window->Model().rowCount(), 0) << entry.Name;
        ++opened;
        window->close();
        ASSERT_EQ(WorksheetWindows().size(), 0U) << entry.Name;
    }
    EXPECT_EQ(opened, 27);
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
}

TEST_F(SheetForms, EveryEntryOfTheViewMenuOpensAViewThatTakesNoKeys) {
    int opened = 0;
    for (const MenuEntry& entry : MenuTable()) {
        if (entry.Mode != "view" || entry.Item.empty() || !Enabled(entry.Name)) continue;
        Trigger(entry.Name);
        auto* window = Last();
        ASSERT_NE(window, nullptr) << entry.Name;
        EXPECT_TRUE(window->objectName().startsWith("frmView")) << entry.Name;
        EXPECT_EQ(Buttons(window),
                  (std::vector<std::string>{"cmdRecalculate", "cmdOpenEdit", "cmdPrevious",
                                            "cmdNext", "cmdPrint", "cmdClose"}))
            << entry.Name;
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
