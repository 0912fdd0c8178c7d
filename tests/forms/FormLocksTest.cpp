// Which cells can be keyed: the window and the command `set` agree cell by cell, and both agree
// with the form.

#include <algorithm>
#include <set>

#include "core/Dialogs.h"
#include "forms/CellAddress.h"
#include "forms/CellRules.h"
#include "forms/FormSupport.h"
#include "structure/AddDeleteCC.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using test::Cell;

/// A CRF with lines of every kind.
class FormLocks : public test::FormTest {
protected:
    FormLocks() {
        for (const double line : {4.01, 28.01, 29.0}) AddLine("CostCenters", Currency(line));
        for (int part = 1; part <= 3; ++part)
            for (const double line : {1.0, 1.01, 2.0}) AddS2Line(Currency(line), part);
        for (const char* item : {"A6", "A81p1", "A81p2"})
            for (const double line : {1.0, 2.0}) AddLine(item, Currency(line));
        for (const double line : {10.0, 16.0, 16.01}) AddLine("G1", Currency(line));
        for (const double line : {18.0, 14.01}) AddLine("A8", Currency(line));
        for (const double line : {2.01, 5.01}) AddLine("S1p1", Currency(line));
        AddLine("S1p2", Currency(6.0));
        gDB.Execute("INSERT INTO S1p2 (LineNum) VALUES (120);");
        gDB.Execute("INSERT INTO G (LineNum,Col_1) VALUES (49,0);");
        host.Forget();
    }

    static std::vector<Currency> Lines(const std::string& table) {
        std::vector<Currency> lines;
        auto rows = gDB.OpenRecordset("SELECT * FROM [" + table + "];");
        for (; !rows.Eof(); rows.MoveNext()) lines.push_back(CurOr(rows[0]));
        return lines;
    }

    /// Whether `set` takes entries into the cell: nothing but a lock refuses the entry of a list.
    static bool SetTakes(const std::string& table, Currency line, const std::string& field) {
        CellEntry entry;
        entry.Item = table;
        entry.Line = line;
        entry.Field = field;
        const EntryList list = ListOf(table, line, field);
        entry.Value = list.Entries.empty() ? Variant("1") : Variant(list.Entries.front());
        CheckCell(entry);
        return entry.Text != kLockedCellText &&
               entry.Text != "The cell you are attempting to input or modify is computed.";
    }

    /// The cells of the editor that can be keyed, as "line field".
    static std::set<std::string> OpenCells(const WorksheetForm& form) {
        std::set<std::string> cells;
        const FormRows rows(form);
        for (int row = 0; row < rows.Count(); ++row)
            for (int column = 0; column < static_cast<int>(form.Columns.size()); ++column)
                if (IsCellOpen(form, BeginRow(form, rows.Line(row)), column))
                    cells.insert(NumberText(rows.Line(row)) + " " +
                                 form.Columns[static_cast<std::size_t>(column)].Field);
        return cells;
    }
    static bool Has(const std::set<std::string>& cells, const char* cell) {
        return cells.contains(cell);
    }
};

/// Further lines at the edges of what a worksheet takes.
class FormEdges : public FormLocks {
protected:
    FormEdges() {
        RunBatch(gDB, [] {
            for (const double line : {1.01, 8.01}) AddCostCenter(Currency(line));
            for (int part : {1, 2, 3})
                for (const double line : {50.0, 50.01}) AddS2Line(Currency(line), part);
            Insert("A6", "LineNum", {99.0, 99.01});
            Insert("A8", "LineNum", {12.01, 17.01, 99.0, 99.99});
            Insert("A81p1", "SeqNum", {99.0, 99.5});
            Insert("A81p2", "SeqNum", {50.0, 50.01});
            Insert("G1", "LineNum", {14.01, 20.99});
            Insert("S1p1", "LineNum", {1.01});
            Insert("S1p2", "LineNum", {99.0, 998.0});
            test::SetCell("A81p2", 1, "Col_1", "G");
            test::SetCell("S1p1", 3, "Col_1", "5");
            test::SetCell("S1p1", 4, "Col_3", "No");
        });
    }
    static void Insert(const std::string& table, const std::string& key,
                       std::initializer_list<double> lines) {
        for (const double line : lines)
            gDB.Execute("INSERT INTO " + table + " (" + key + ") VALUES (?);", {Currency(line)});
    }
};

TEST_F(FormEdges, TheEditorAndTheCommandAgreeOnEveryCellOfEveryWorksheet) {
    int open = 0;
    int editors = 0;
    for (const FormEntry& entry : AllForms()) {
        if (entry.Mode == FormMode::View) continue;
        const WorksheetForm form = Edit(entry.Item);
        const std::set<std::string> cells = OpenCells(form);
        EXPECT_FALSE(cells.empty()) << entry.Item;
        ++editors;
        open += static_cast<int>(cells.size());
        for (const Currency line : Lines(form.Table))
            for (const FieldDef& field : gDB.Table(form.Table).Fields) {
                const std::string cell = NumberText(line) + " " + field.Name;
                EXPECT_EQ(cells.contains(cell), SetTakes(form.Table, line, field.Name))
                    << form.Table << " " << cell;
            }
    }
    EXPECT_EQ(editors, 32);
    EXPECT_GT(open, 500);
}

TEST_F(FormEdges, TheLabelOfATotalStays) {
    for (const int line : {15, 21, 22})
        EXPECT_FALSE(IsCellOpen("G1", Currency(line), "Col_1")) << line;
    EXPECT_TRUE(IsCellOpen("G1", Currency(14), "Col_1"));
}

TEST_F(FormEdges, AMailLineTakesItsAddressAlone) {
    for (const char* field : {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5"})
        EXPECT_FALSE(IsCellOpen("S1p1", Currency(5.01), field)) << field;
    EXPECT_TRUE(IsCellOpen("S1p1", Currency(5.01), "Col_6"));
}

TEST_F(FormEdges, EveryOfficerThatCanBeAddedCanBeKeyed) {
    for (const int line : {6, 99, 998})
        EXPECT_TRUE(IsCellOpen("S1p2", Currency(line), "Col_2")) << line;
}

TEST_F(FormLocks, WhatHasNoEditorTakesNothing) {
    for (const FormEntry& entry : AllForms()) {
        if (HasForm(FormMode::Edit, entry.Item)) continue;
        EXPECT_FALSE(HasEditor(entry.Item)) << entry.Item;
        for (const Currency line : Lines(entry.Item))
            for (const FieldDef& field : gDB.Table(entry.Item).Fields)
                EXPECT_FALSE(SetTakes(entry.Item, line, field.Name)) << entry.Item;
    }
    for (const char* table : {"Master", "Worksheets", "Log"}) EXPECT_FALSE(HasEditor(table));
}

TEST_F(FormLocks, LinesOfAThatAreSummedOrProtectedCannotBeReached) {
    const auto cells = OpenCells(Edit("A"));
    for (const char* cell : {"1 Col_1", "4.01 Col_1", "29 Col_1"}) EXPECT_TRUE(Has(cells, cell));
    for (const char* cell : {"3 Col_1", "7 Col_1", "28 Col_1", "99 Col_1", "100 Col_1"})
        EXPECT_FALSE(Has(cells, cell)) << cell;
    EXPECT_FALSE(Has(cells, "1 CCName"));
}

TEST_F(FormLocks, LineNumberAndDescriptionOfAreLockedOnTheAssets) {
    const auto cells = OpenCells(Edit("A7p1"));
    EXPECT_TRUE(Has(cells, "8 Col_7"));
    for (const char* cell : {"1 LineNum", "1 Description", "1 Col_4", "1 Col_6", "7 Col_1"})
        EXPECT_FALSE(Has(cells, cell)) << cell;
}

TEST_F(FormLocks, Line12OfA8IsNotShown) {
    const auto cells = OpenCells(Edit("A8"));
    EXPECT_TRUE(Has(cells, "11 Col_3"));
    EXPECT_TRUE(Has(cells, "14.01 Col_1"));
    EXPECT_FALSE(Has(cells, "12 Col_5"));
    EXPECT_FALSE(Has(cells, "11 Col_4"));
}

TEST_F(FormLocks, DescriptionsOfTheBalanceSheetAreOpenOnLine49Alone) {
    const auto cells = OpenCells(Edit("G"));
    EXPECT_TRUE(Has(cells, "49 Description"));
    EXPECT_TRUE(Has(cells, "49 Col_1"));
    EXPECT_TRUE(Has(cells, "1 Col_1"));
    EXPECT_FALSE(Has(cells, "1 Description"));
    EXPECT_FALSE(Has(cells, "10 Col_1"));
}

TEST_F(FormLocks, DescriptionsOfIncomeAreOpenFromLine10) {
    const auto cells = OpenCells(Edit("G1"));
    for (const char* cell : {"10 Col_1", "16 Col_1", "16.01 Col_1", "9 Col_2", "1 Col_2"})
        EXPECT_TRUE(Has(cells, cell)) << cell;
    for (const char* cell : {"1 Col_1", "9 Col_1", "15 Col_1", "15 Col_2", "2 Col_2", "22 Col_2"})
        EXPECT_FALSE(Has(cells, cell)) << cell;
}

TEST_F(FormLocks, CostCentersKeepTheFormsNamesAndTheirStatisticsBySection) {
    const auto cells = OpenCells(Edit("CCs"));
    for (const char* cell : {"4.01 CCName", "29 CCName", "28.01 CCName", "1 StatCode",
                             "2 StatLabel1", "8 StatLabel2", "28 ColLabel1"})
        EXPECT_TRUE(Has(cells, cell)) << cell;
    for (const char* cell : {"1 CCName", "28 CCName", "4 StatLabel1", "4 StatCode", "8 StatCode"})
        EXPECT_FALSE(Has(cells, cell)) << cell;
}

TEST_F(FormLocks, TheParticularsAreOpenWhereTheyHaveAMeaning) {
    test::SetCell("S1p1", 3, "Col_1", "5");
    test::SetCell("S1p1", 4, "Col_3", "No");
    auto cells = OpenCells(Edit("S1p1"));
    for (const char* cell :
         {"1 Col_6", "2 Col_3", "3 Col_1", "3 Col_2", "4 Col_4", "5 Col_6", "5.01 Col_6"})
        EXPECT_TRUE(Has(cells, cell)) << cell;
    for (const char* cell :
         {"2 Col_1", "2 Col_6", "3 Col_3", "4 Col_6", "5.01 Col_1", "1 Description"})
        EXPECT_FALSE(Has(cells, cell)) << cell;
    test::SetCell("S1p1", 3, "Col_1", "2");
    test::SetCell("S1p1", 4, "Col_3", "Yes");
    cells = OpenCells(Edit("S1p1"));
    EXPECT_FALSE(Has(cells, "3 Col_2"));
    EXPECT_FALSE(Has(cells, "4 Col_4"));
}

TEST_F(FormLocks, ACellThatARowOpensCanBeKeyedInTheSameRow) {
    const WorksheetForm form = Edit("S1p1");
    RowEntry row = BeginRow(form, Currency(3.0));
    const int description = form.ColumnOf("Col_2");
    EXPECT_FALSE(IsCellOpen(form, row, description));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_1"), "14"));
    EXPECT_TRUE(IsCellOpen(form, row, description));
    EXPECT_TRUE(KeyCell(form, row, description, "District"));
    EXPECT_TRUE(CommitRow(form, row));
    EXPECT_EQ(Text(Cell("S1p1", 3, "Col_2")), "District");
}

TEST_F(FormLocks, OfficersBehindTheFormsFiveCanBeKeyedToTheLast) {
    const auto cells = OpenCells(Edit("S1p2"));
    for (const char* cell : {"1 Col_1", "6 Col_2", "120 Col_1"}) EXPECT_TRUE(Has(cells, cell));
}

TEST_F(FormLocks, SchedulesTakeStatisticsAndTheCostToBeAllocated) {
    const auto cells = OpenCells(Edit("C1p3"));
    EXPECT_TRUE(Has(cells, "1.01 CC_100"));
    EXPECT_TRUE(Has(cells, "53 CC_100"));
    EXPECT_FALSE(Has(cells, "1 Description"));
    EXPECT_TRUE(Has(OpenCells(Edit("Bp2")), "1 CC_401"));
    const auto pooled = OpenCells(Edit("E1p1"));
    EXPECT_TRUE(Has(pooled, "1 Col_1"));
    EXPECT_FALSE(Has(pooled, "1 Col_2"));
    EXPECT_FALSE(Has(pooled, "1 CC_100"));
}

TEST_F(FormLocks, AViewTakesNothing) {
    const WorksheetForm form = View("A");
    RowEntry row = BeginRow(form, Currency(8.0));
    EXPECT_FALSE(KeyCell(form, row, form.ColumnOf("Col_1"), 5));
    EXPECT_EQ(host.Boxes.back().Text, kLockedCellText);
    EXPECT_TRUE(PasteBlock(form, FormRows(form), 0, 2, {{"5"}}).Findings.empty());
    EXPECT_TRUE(Cell("A", 1, "Col_1").IsNull());
}

TEST_F(FormLocks, TheIdentityOpensItsDialog) {
    const WorksheetForm form = Edit("S1p1");
    for (const char* field : {"Col_1", "Col_2", "Col_4", "Col_5"})
        EXPECT_TRUE(OpensIdentity(form, Currency(2.0), form.ColumnOf(field))) << field;
    for (const char* field : {"Col_3", "Col_6", "LineNum", "Description"})
        EXPECT_FALSE(OpensIdentity(form, Currency(2.0), form.ColumnOf(field))) << field;
    EXPECT_FALSE(OpensIdentity(form, Currency(1.0), form.ColumnOf("Col_1")));
    EXPECT_FALSE(OpensIdentity(View("S1p1"), Currency(2.0), form.ColumnOf("Col_1")));
}

// --- Lists

TEST_F(FormLocks, ListsOfFixedAnswers) {
    struct Expected {
        const char* Item;
        double Line;
        const char* Field;
        const char* Menu;
        std::vector<std::string> Entries;
    };
    const Expected lists[] = {
        {"Sp1", 1, "Col_1", "ButtonListYN", {"Y - Yes", "N - No"}},
        {"S1p1", 4, "Col_1", "ButtonListYN", {"Y - Yes", "N - No"}},
        {"S1p1", 4, "Col_2", "ButtonListBases", {"Audited", "Compiled", "Reviewed"}},
        {"S2p1", 1, "Col_3", "ButtonListOM", {"Owned", "Managed"}},
        {"S2p1", 1, "Col_8", "ButtonListYN", {"Y - Yes", "N - No"}},
        {"S2p1", 1, "Col_9", "ButtonListPTO", {"Prospective", "TEFRA", "Other"}},
        {"S2p3", 1, "Col_7", "ButtonListYN", {"Y - Yes", "N - No"}},
        {"CCs",
         1,
         "StatCode",
         "ButtonListCodes",
         {"1 - Square Feet", "2 - Dollar Value", "3 - Other"}},
        {"ES",
         2,
         "StatLabel1",
         "ButtonListCodes",
         {"1 - Total Costs", "2 - Inpatient Days", "3 - Outpatient Visits", "4 - Other"}},
        {"ES", 3, "StatLabel1", "ButtonListCodes", {"1 - Total Costs", "4 - Other"}},
        {"CCs", 8, "StatLabel1", "", {}},
        {"A8", 1, "Col_2", "", {}},
    };
    for (const Expected& expected : lists) {
        const WorksheetForm form = Edit(expected.Item);
        const int column = form.ColumnOf(expected.Field);
        const RowEntry row = BeginRow(form, Currency(expected.Line));
        EXPECT_EQ(ChoiceMenuOf(form, row, column), expected.Menu) << expected.Item;
        std::vector<std::string> entries;
        for (const FormChoice& choice : ChoicesOf(form, row, column))
            entries.push_back(choice.Text);
        EXPECT_EQ(entries, expected.Entries) << expected.Item << " " << expected.Field;
    }
}

TEST_F(FormLocks, EveryEntryOfEveryListIsTaken) {
    for (const FormEntry& entry : AllForms()) {
        if (entry.Mode == FormMode::View) continue;
        const WorksheetForm form = Edit(entry.Item);
        const FormRows rows(form);
        for (int row = 0; row < rows.Count(); ++row)
            for (int column = 0; column < static_cast<int>(form.Columns.size()); ++column) {
                RowEntry keyed = BeginRow(form, rows.Line(row));
                for (const FormChoice& choice : ChoicesOf(form, keyed, column))
                    EXPECT_TRUE(KeyCell(form, keyed, column, choice.Keyed))
                        << form.Item << " " << choice.Text;
            }
    }
}

TEST_F(FormLocks, AListEntryFillsWhatItStandsFor) {
    const WorksheetForm form = Edit("S1p1");
    const int column = form.ColumnOf("Col_1");
    const auto types = ChoicesOf(form, BeginRow(form, Currency(3.0)), column);
    ASSERT_EQ(types.size(), 14U);
    EXPECT_EQ(ChoiceMenuOf(form, BeginRow(form, Currency(3.0)), column), "mnuType");
    EXPECT_EQ(types[4].Text, "5 - Voluntary Nonprofit, Other (specify)");
    EXPECT_TRUE(Key(form, 3, "Col_1", types[13].Keyed));
    EXPECT_EQ(Text(Cell("S1p1", 3, "Col_1")), "14");
    EXPECT_TRUE(Key(Edit("CCs"), 2, "StatLabel1", "3 - Other"));
    EXPECT_EQ(Text(Cell("CostCenters", 2, "StatLabel1")), "Other");
    EXPECT_EQ(Text(Cell("CostCenters", 2, "StatLabel2")), "");
    EXPECT_EQ(NumOr(Cell("CostCenters", 2, "StatCode")), 3);
}

// --- The states of cmdAdd and cmdDelete

TEST_F(FormLocks, LinesOfTheFormAreNotDeleted) {
    const auto can = [&](const char* item, double line) {
        return LineButtonsOn(Edit(item), Currency(line)).Delete;
    };
    EXPECT_FALSE(can("CCs", 28));
    EXPECT_TRUE(can("CCs", 29));
    EXPECT_TRUE(can("CCs", 4.01));
    EXPECT_FALSE(can("A8", 17));
    EXPECT_TRUE(can("A8", 18));
    EXPECT_FALSE(can("S1p2", 5));
    EXPECT_TRUE(can("S1p2", 6));
    EXPECT_FALSE(can("S1p1", 5));
    EXPECT_TRUE(can("S1p1", 5.01));
    EXPECT_FALSE(can("G1", 9));
    EXPECT_TRUE(can("G1", 10));
    EXPECT_TRUE(can("S2p1", 2));
    EXPECT_FALSE(LineButtonsOn(Edit("S2p1"), std::nullopt).Delete) << "no row";
    EXPECT_FALSE(can("A", 29)) << "no lines of its own";
}

TEST_F(FormLocks, AFullGroupTurnsAddOff) {
    const WorksheetForm form = Edit("CCs");
    EXPECT_TRUE(LineButtonsOn(form, Currency(9.0)).Add);
    gDB.Execute("UPDATE CostCenters SET CCName='x' WHERE CCName Is Null;");
    for (int i = 1; i <= 99; ++i)
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (?,?);",
                    {Currency(9.0) + Currency::FromUnits(100 * i), "c" + std::to_string(i)});
    EXPECT_FALSE(LineButtonsOn(form, Currency(9.0)).Add);
    EXPECT_FALSE(LineButtonsOn(form, Currency(9.5)).Add);
    EXPECT_TRUE(LineButtonsOn(form, Currency(10.0)).Add);
}

TEST_F(FormLocks, OfTheBalanceSheetLine49AloneHasTheButtons) {
    const WorksheetForm form = Edit("G");
    EXPECT_FALSE(LineButtonsOn(form, Currency(1.0)).Add);
    EXPECT_TRUE(LineButtonsOn(form, Currency(49.0)).Add);
    EXPECT_FALSE(LineButtonsOn(form, Currency(49.0)).Delete) << "the last of its lines";
    gDB.Execute("INSERT INTO G (LineNum,Col_1) VALUES (49.01,0);");
    EXPECT_TRUE(LineButtonsOn(form, Currency(49.01)).Delete);
    EXPECT_FALSE(AddFormLine(form, Currency(49.0)).Changed) << "no action stands behind the button";
}

}  // namespace
}  // namespace zolmara
