// What each window shows: rows, headings, what can be keyed, formats.

#include <map>

#include "core/Dialogs.h"
#include "forms/FormSupport.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"

namespace zolmara {
namespace {

using Words = std::vector<std::string>;

struct ExpectedForm {
    const char* Item;
    const char* Name;
    const char* Rows;
    Words Titles;
    Words Keyed;
};

const std::vector<ExpectedForm>& EditForms() {
    static const std::vector<ExpectedForm> forms = {
        {"A",
         "frmEditA",
         "Select * From A Where LineNum Not In(3,7,28,99,100) Order by LineNum;",
         {"CC #", "Description", "Expenses per Home Office Books"},
         {"Col_1"}},
        {"A6",
         "frmEditA6",
         "SELECT * FROM A6 WHERE LineNum < 100 ORDER BY LineNum;",
         {"Line #", "Explanation", "Code", "Up Cost Center", "Up CC Line #", "Up Amount",
          "Dn Cost Center", "Dn CC Line #", "Dn Amount"},
         {"Col_1", "Col_2", "Col_4", "Col_5", "Col_7", "Col_8"}},
        {"A7p1",
         "frmEditA7p1",
         "SELECT * FROM A7p1 WHERE LineNum < 7 Or LineNum = 8 ORDER BY LineNum;",
         {"Line #", "Description", "Beginning Balance", "Acquisitions - Purchases",
          "Acquisitions - Donation", "Ending Balance", "Retirements and Disposals", "Total",
          "Fully Depreciated Assets"},
         {"Col_1", "Col_2", "Col_3", "Col_5", "Col_7"}},
        {"A7p2",
         "frmEditA7p2",
         "SELECT * FROM A7p2 WHERE LineNum<3 ORDER BY LineNum;",
         {"CC #", "Description", "Gross Assets", "Capitalized Leases", "Depreciation", "Lease",
          "Interest", "Insurance Premiums Other CRC", "Taxes & Licenses Other CRC",
          "All Other Cap Rel Costs"},
         {"Col_1", "Col_2", "Col_9", "Col_10", "Col_11", "Col_12", "Col_13", "Col_14"}},
        {"A8",
         "frmEditA8",
         "SELECT * From A8 WHERE LineNum Not In (12,100) ORDER BY LineNum;",
         {"Line #", "Description of Adjustment", "Basis", "Amount", "Description", "CC #"},
         {"Col_1", "Col_2", "Col_3", "Col_5"}},
        {"A81p1",
         "frmEditA81p1",
         "SELECT * FROM A81p1 WHERE SeqNum < 100 ORDER BY SeqNum;",
         {"Seq #", "CC #", "Cost Center Name", "Expense Item Description", "Sch A81 Part II Line #",
          "Amount Allowable In Cost", "Amount Included In A Col.3", "Net Adjustment"},
         {"Col_1", "Col_3", "Col_4", "Col_5", "Col_6"}},
        {"A81p2",
         "frmEditA81p2",
         "SELECT * FROM A81p2 ORDER BY SeqNum;",
         {"Seq #", "Symbol", "Interrelationship", "Name", "% of Ownership", "Related Org. Name",
          "Related Org. % of Ownership", "Related Org. Type of Business"},
         {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5", "Col_6", "Col_7"}},
        {"CCs",
         "frmEditCCs",
         "SELECT * FROM CostCenters Where LineNum Not In(3,7,99) ORDER BY LineNum",
         {"CC #", "Cost Center Name", "Column Label", "Column Label", "Column Label", "Stat Label",
          "Stat Label", "Stat Code"},
         {"CCName", "ColLabel1", "ColLabel2", "ColLabel3", "StatLabel1", "StatLabel2", "StatCode"}},
        {"ES",
         "frmEditES",
         "SELECT * FROM ES Where LineNum ORDER BY LineNum",
         {"Work Sheet", "Stat Label", "Stat Label", "Stat Code"},
         {"StatLabel1", "StatLabel2", "StatCode"}},
        {"G",
         "frmEditG",
         "SELECT * FROM G WHERE LineNum NOT IN (10,26,31,32,40,45,46,48) ORDER BY LineNum;",
         {"Line #", "Description", "General Fund"},
         {"Description", "Col_1"}},
        {"G1",
         "frmEditG1",
         "SELECT * FROM G1 WHERE LineNum Not In(2,3,15,21,22) Order by LineNum;",
         {"Line #", "Description", "Amount"},
         {"Col_1", "Col_2"}},
        {"Sp1",
         "frmEditSp1",
         "SELECT * FROM Sp1 WHERE LineNum<3 ORDER BY LineNum;",
         {"Line #", "Description", "Answer"},
         {"Col_1"}},
        {"S1p1",
         "frmEditS1p1",
         "SELECT * FROM S1p1 ORDER BY LineNum;",
         {"Line #", "Description", "", "", "", "", "", ""},
         {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5", "Col_6"}},
        {"S1p2",
         "frmEditS1p2",
         "SELECT * FROM S1p2 ORDER BY LineNum;",
         {"Line #", "Position / Job Title", "Key Officer Name"},
         {"Col_1", "Col_2"}},
        {"S2p1",
         "frmEditS2p1",
         "SELECT * FROM S2p1 ORDER BY LineNum;",
         {"Line #", "Component Name", "CCN", "Owned or Managed", "Report Beginning",
          "Report Ending", "Date Acquired", "Date Sold / Closed / Ceased", "Medicaid Participation",
          "Medicare Reimbursement Type", "Medicare Contractor Number", "Medicaid Contractor Name"},
         {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5", "Col_6", "Col_7", "Col_8", "Col_9", "Col_10",
          "Col_11"}},
        {"S2p2",
         "frmEditS2p2",
         "SELECT * FROM S2p2 ORDER BY LineNum;",
         {"Line #", "Component Name", "Report Beginning", "Report Ending", "Date Acquired",
          "Date Sold / Closed / Ceased"},
         {"Col_1", "Col_4", "Col_5", "Col_6", "Col_7"}},
        {"S2p3",
         "frmEditS2p3",
         "SELECT * FROM S2p3 ORDER BY LineNum;",
         {"Line #", "Component Name", "Regional HO Number", "City", "State",
          "Costs Included in this Statement", "Separate Statement Submitted",
          "Region / Division Contractor"},
         {"Col_1", "Col_2", "Col_4", "Col_5", "Col_6", "Col_7", "Col_8"}},
        {"Bp1",
         "frmEditBpx",
         "SELECT * FROM Bp1 WHERE LineNum<51 or LineNum=53 ORDER BY LineNum;",
         {"Line #", "Component Name", "CCN", "CRC-B&F", "CRC-ME", "Insurance Premiums-Other CRC",
          "Taxes & Licenses-Other CRC", "All Other Capital Related Costs"},
         {"CC_100", "CC_200", "CC_400", "CC_500", "CC_600"}},
        {"C1p3",
         "frmEditBpx",
         "SELECT * FROM C1p3 WHERE LineNum<51 or LineNum=53 ORDER BY LineNum;",
         {"Line #", "Component Name", "Region- al HO #", "(Square Feet) CRC-B&F",
          "(Dollar Value) CRC-ME"},
         {"CC_100", "CC_200"}},
        {"E1p2",
         "frmEditEpx",
         "SELECT * FROM E1p2 WHERE LineNum<51 ORDER BY LineNum;",
         {"Line #", "Component Name", "Allocation Statistics", "Allocation Ratio", "CRC-B&F",
          "CRC-ME", "Salaries of Officers", "Salaries and Wages of Others", "All Other Non-CRC",
          "Interest Income"},
         {"Col_1"}},
    };
    return forms;
}

class FormTitles : public test::FormTest {};

TEST_F(FormTitles, EditFormsShowTheirRowsHeadingsAndKeyedColumns) {
    for (const ExpectedForm& expected : EditForms()) {
        const WorksheetForm form = Edit(expected.Item);
        EXPECT_EQ(form.Name, expected.Name);
        EXPECT_EQ(form.RowSource, expected.Rows);
        EXPECT_EQ(Titles(form), expected.Titles) << expected.Item;
        EXPECT_EQ(KeyedFields(form), expected.Keyed) << expected.Item;
    }
}

TEST_F(FormTitles, ViewsShowAllLinesAndNothingCanBeKeyed) {
    const std::map<std::string, std::string> rows = {
        {"A", "SELECT * From A ORDER BY LineNum;"},
        {"A8", "SELECT * FROM A8 ORDER BY LineNum;"},
        {"A81p2", "SELECT * FROM A81p2 Order By SeqNum;"},
        {"CCs", "Select * from CostCenters order by LineNum"},
        {"ES", "Select * from ES order by LineNum"},
        {"Cp2", "SELECT * FROM Cp2 ORDER BY LineNum;"},
    };
    for (const auto& [item, sql] : rows) EXPECT_EQ(View(item).RowSource, sql);
    for (const FormEntry& entry : AllForms()) {
        if (entry.Mode == FormMode::Edit) continue;
        EXPECT_TRUE(KeyedFields(View(entry.Item)).empty()) << entry.Item;
    }
}

TEST_F(FormTitles, ViewsHaveTheirOwnHeadings) {
    EXPECT_EQ(Titles(View("A7p1")),
              (Words{"Line #", "Description", "Beginning Balance", "Acquisitions - Purchases",
                     "Acquisitions - Donation", "Total", "Retirements and Disposals",
                     "Ending Balance", "Fully Depreciated Assets"}));
    EXPECT_EQ(Titles(View("A7p2")).size(), 17U);
    EXPECT_EQ(Titles(View("Cp1")),
              (Words{"Line #", "Component Name", "CCN", "CRC-B&F", "CRC-ME", "Total"}));
    EXPECT_EQ(Titles(View("E")),
              (Words{"Line #", "Component Name", "Allocation Statistics", "Allocation Ratio",
                     "CRC-B&F", "CRC-ME", "Salaries of Officers", "Salaries and Wages of Others",
                     "All Other Non-CRC", "Interest Income"}));
    EXPECT_EQ(Titles(View("Fp2")), (Words{"Line #", "Component Name", "Direct", "Functional",
                                          "Pooled", "Total Capital Cost"}));
    EXPECT_EQ(Titles(View("F2p1")), (Words{"Line #", "Component Name", "CCN", "Direct",
                                           "Functional", "Pooled", "Total Interest Income"}));
}

TEST_F(FormTitles, AScheduleIsHeadedByTheLabelsOfItsCostCenters) {
    gDB.Execute("UPDATE CostCenters SET ColLabel1='Home', ColLabel3='Rent' WHERE LineNum=1;");
    const WorksheetForm b = Edit("Bp1");
    EXPECT_EQ(Column(b, "CC_100").Title, "Home|Rent");
    EXPECT_EQ(Column(b, "CC_100").Number, "1");
    EXPECT_EQ(Column(b, "CC_200").Title, "CRC-ME");
    EXPECT_EQ(Column(Edit("C1p1"), "CC_100").Title, "(Square Feet) Home|Rent");
    AddLine("CostCenters", Currency(4.01));
    EXPECT_EQ(Column(Edit("Bp1"), "CC_401").Title, "Not Named");
    EXPECT_EQ(Column(Edit("Bp1"), "CC_401").Number, "4.01");
}

TEST_F(FormTitles, NumberFormatsOfLinesMoneyRatiosAndPercentages) {
    const auto format = [](const WorksheetForm& form, const char* field) {
        return Column(form, field).NumberFormat;
    };
    EXPECT_EQ(format(Edit("A"), "LineNum"), "##0.00");
    EXPECT_EQ(format(Edit("A7p1"), "Col_1"), "###,###,##0;(###,###,##0)");
    EXPECT_EQ(format(View("A7p2"), "Col_4"), "0.000000;(0.000000)");
    EXPECT_EQ(format(Edit("A81p1"), "SeqNum"), "##0.00;(###,##0.00)");
    EXPECT_EQ(format(Edit("A81p1"), "Col_1"), "##0.00;(###,##0.00)");
    EXPECT_EQ(format(Edit("A81p2"), "Col_4"), "###,###,##0.00;(###,###,##0.00)");
    EXPECT_EQ(format(Edit("G"), "Col_1"), "###,###,##0;(###,###,##0)");
    EXPECT_EQ(format(Edit("Bp1"), "CC_100"), "#,###,###,##0;(#,###,###,##0)");
    EXPECT_EQ(format(Edit("S2p3"), "Col_6"), "#,##0;(#,##0)");
    EXPECT_EQ(format(Edit("S2p1"), "Col_1"), "");
}

TEST_F(FormTitles, CellsShowNegativesInBracketsAndUnitCostsWithSixDecimals) {
    test::SetCell("A", 8, "Col_1", -1234567.0);
    const WorksheetForm a = Edit("A");
    const FormRows rows(a);
    const int row = rows.RowOf(Currency(8.0));
    EXPECT_EQ(rows.CellText(row, a.ColumnOf("Col_1")), "(1,234,567)");
    EXPECT_EQ(rows.CellText(row, 0), "8.00");
    EXPECT_EQ(rows.CellText(0, a.ColumnOf("Col_1")), "") << "Null shows nothing";
    test::SetCell("C1p3", 54, "CC_100", 1.218085);
    test::SetCell("C1p3", 53, "CC_100", 22900.0);
    const WorksheetForm c = View("C1p3");
    const FormRows costs(c);
    EXPECT_EQ(costs.CellText(costs.RowOf(Currency(54.0)), c.ColumnOf("CC_100")), "1.218085");
    EXPECT_EQ(costs.CellText(costs.RowOf(Currency(53.0)), c.ColumnOf("CC_100")), "22,900");
}

TEST_F(FormTitles, EachLineOfTheParticularsGivesItsOwnHeadings) {
    AddLine("S1p1", Currency(5.01));
    const WorksheetForm form = Edit("S1p1");
    const auto titles = [&](double line) {
        Words words;
        const RowEntry row = BeginRow(form, Currency(line));
        for (int i = form.ColumnOf("Col_1"); i <= form.ColumnOf("Col_6"); ++i)
            words.push_back(TitleOnRow(form, row, i));
        return words;
    };
    EXPECT_EQ(titles(1),
              (Words{"Street Address 1", "Street Address 2", "P.O. Box", "City", "State", "Zip"}));
    EXPECT_EQ(titles(2), (Words{"Home Office Name", "Home Office Number", "Date Operations Began",
                                "Report Begin", "Report End", "N/A"}));
    EXPECT_EQ(titles(3), (Words{"Type of Control", "Description", "N/A", "N/A", "N/A", "N/A"}));
    EXPECT_EQ(titles(4), (Words{"Prepared by CPA", "A / C / R", "Submitted", "Date Available",
                                "Reconsile to Cost Statement", "N/A"}));
    EXPECT_EQ(titles(5), (Words{"First Name", "Last Name", "Title", "Telephone Number",
                                "Email Address", "Employer"}));
    EXPECT_EQ(titles(5.01), (Words{"N/A", "N/A", "N/A", "N/A", "N/A", "Email Address"}));
    EXPECT_EQ(TitleOnRow(Edit("A"), BeginRow(Edit("A"), Currency(1.0)), 2),
              "Expenses per Home Office Books");
}

TEST_F(FormTitles, RowsAreReadAsTheyStandAndFollowAfterARequery) {
    const WorksheetForm form = Edit("A");
    FormRows rows(form);
    EXPECT_EQ(rows.Count(), 25) << "26 cost centers less line 28";
    const int amount = form.ColumnOf("Col_1");
    EXPECT_TRUE(rows.Cell(0, amount).IsNull());
    test::SetCell("A", 1, "Col_1", 5.0);
    rows.Requery();
    EXPECT_EQ(NumOr(rows.Cell(0, amount)), 5);
    EXPECT_EQ(rows.Line(3), Currency(5.0));
    EXPECT_EQ(rows.RowOf(Currency(28.0)), -1);
    EXPECT_TRUE(rows.Cell(99, amount).IsNull());
    EXPECT_EQ(rows.CellText(0, 99), "");
}

TEST_F(FormTitles, ARowThatHasGoneSinceReadsAsNothing) {
    AddLine("A6", Currency(1.0));
    const WorksheetForm form = Edit("A6");
    const FormRows rows(form);
    gDB.Execute("DELETE * FROM A6 WHERE LineNum=1;");
    EXPECT_TRUE(rows.Cell(0, 0).IsNull());
    EXPECT_EQ(rows.CellText(0, 1), "");
}

// --- Order and buttons

TEST_F(FormTitles, TheWalkFollowsTheDisplayNames) {
    EXPECT_EQ(NextWorksheet("View Worksheet A", true), "A6");
    EXPECT_EQ(NextWorksheet("View Worksheet A6", true), "A7p1");
    EXPECT_EQ(NextWorksheet("View Worksheet A6", false), "A");
    EXPECT_EQ(NextWorksheet("View Worksheet A", false), "");
    EXPECT_EQ(NextWorksheet("View Worksheet S2p3", true), "");
    EXPECT_EQ(NextWorksheet("View Worksheet B1p3", true), "Cp1");
}

TEST_F(FormTitles, AnEditFormJumpsOverWhatHasNoEditor) {
    EXPECT_EQ(NextWorksheet("Edit Worksheet Bp3", true), "B1p1");
    EXPECT_EQ(NextWorksheet("Edit Worksheet B1p3", true), "C1p1");
    EXPECT_EQ(NextWorksheet("Edit Worksheet C1p3", true), "D1p1");
    EXPECT_EQ(NextWorksheet("Edit Worksheet D1p3", true), "E1p1");
    EXPECT_EQ(NextWorksheet("Edit Worksheet E1p3", true), "G");
    EXPECT_EQ(NextWorksheet("Edit Worksheet G", false), "E1p3");
    EXPECT_EQ(NextWorksheet("Edit Worksheet S2p3", true), "");
    EXPECT_EQ(NextWorksheet("EDIT: Cost Centers Structure Table", true), "");
}

TEST_F(FormTitles, NeighboursAreNamedInToolTipsAndOffAtTheEnds) {
    const WorksheetForm a = Edit("A");
    EXPECT_EQ(a.Button("cmdNext")->ToolTip, "Open A-6 For Edit");
    EXPECT_FALSE(a.Button("cmdPrevious")->Enabled);
    EXPECT_EQ(View("A6").Button("cmdPrevious")->ToolTip, "Open A For View");
    EXPECT_FALSE(Edit("S2p3").Button("cmdNext")->Enabled);
    EXPECT_FALSE(View("S2p3").Button("cmdNext")->Enabled);
}

TEST_F(FormTitles, EditAndViewHaveTheirButtons) {
    const auto names = [](const WorksheetForm& form) {
        Words words;
        for (const FormButton& button : form.Buttons) words.push_back(button.Name);
        return words;
    };
    EXPECT_EQ(names(Edit("A")), (Words{"cmdRecalculate", "cmdOpenView", "cmdPrevious", "cmdNext",
                                       "cmdAdd", "cmdDelete", "cmdClose"}));
    EXPECT_EQ(names(View("A")), (Words{"cmdRecalculate", "cmdOpenEdit", "cmdPrevious", "cmdNext",
                                       "cmdPrint", "cmdClose"}));
    EXPECT_FALSE(Edit("A").Button("cmdAdd")->Enabled);
    EXPECT_FALSE(Edit("A").Button("cmdDelete")->Enabled);
    EXPECT_TRUE(Edit("A6").Button("cmdAdd")->Enabled);
    EXPECT_TRUE(View("A").Button("cmdOpenEdit")->Enabled);
    EXPECT_FALSE(View("Cp1").Button("cmdOpenEdit")->Enabled);
    EXPECT_EQ(View("A").Button("cmdOpenEdit")->Caption, "&Open Edit");
    EXPECT_EQ(View("A").Button("cmdClose")->Caption, "&Close");
    EXPECT_EQ(Edit("A").Button("cmdDelete")->Caption, "&Delete");
    EXPECT_EQ(Edit("A").Button("cmdRecalculate")->Caption, "&Recalculate");
}

}  // namespace
}  // namespace zolmara
