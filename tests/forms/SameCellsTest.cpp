// What the command line can set and what a window lets a person key are the same cells.

#include <gtest/gtest.h>

#include "forms/CellRules.h"
#include "forms/WorksheetForm.h"
#include "structure/AddDeleteCC.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

using test::SetCell;

class SameCells : public test::TestCrf {
protected:
    /// A line of each kind on every worksheet.
    SameCells() {
        RunBatch(gDB, [] {
            for (const double line : {1.01, 4.01, 8.01, 28.01, 29.0}) AddCostCenter(Currency(line));
            for (int part : {1, 2, 3})
                for (const double line : {1.0, 1.01, 50.0, 50.01}) AddS2Line(Currency(line), part);
            for (const double line : {1.0, 99.0, 99.01}) Insert("A6", "LineNum", line);
            for (const double line : {12.01, 17.01, 18.0, 99.0, 99.99})
                Insert("A8", "LineNum", line);
            for (const double line : {1.0, 99.0, 99.5}) Insert("A81p1", "SeqNum", line);
            for (const double line : {1.0, 50.0, 50.01}) Insert("A81p2", "SeqNum", line);
            for (const double line : {10.0, 14.01, 16.0, 20.99}) Insert("G1", "LineNum", line);
            for (const double line : {1.01, 5.01}) Insert("S1p1", "LineNum", line);
            for (const double line : {6.0, 99.0, 998.0}) Insert("S1p2", "LineNum", line);
            SetCell("A81p2", 1, "Col_1", "G");
            SetCell("S1p1", 3, "Col_1", "5");
            SetCell("S1p1", 4, "Col_3", "No");
        });
    }

    static void Insert(const std::string& table, const std::string& key, double line) {
        gDB.Execute("INSERT INTO " + table + " (" + key + ") VALUES (?);", {Currency(line)});
    }
};

/// The cells of a table that can be set, as "G1 10 Col_1".
std::vector<std::string> CellsToSet(const std::string& table) {
    std::vector<std::string> cells;
    const auto fields = gDB.Table(table).Fields;
    const std::string key = fields.front().Name;
    auto rows = gDB.OpenRecordset("SELECT " + key + " FROM " + table + " ORDER BY " + key + ";");
    for (; !rows.Eof(); rows.MoveNext())
        for (const auto& field : fields)
            if (IsCellOpen(table, CurOr(rows[0]), field.Name))
                cells.push_back(table + " " + Text(rows[0]) + " " + field.Name);
    return cells;
}

/// The cells that the window lets a person key.
std::vector<std::string> CellsToKey(const WorksheetForm& form) {
    std::vector<std::string> cells;
    const FormRows rows(form);
    for (int row = 0; row < rows.Count(); ++row)
        for (int column = 0; column < static_cast<int>(form.Columns.size()); ++column) {
            const auto& field = form.Columns[static_cast<std::size_t>(column)];
            if (!IsCellOpen(form, BeginRow(form, rows.Line(row)), column)) continue;
            cells.push_back(form.Table + " " + NumberText(rows.Line(row)) + " " + field.Field);
        }
    return cells;
}

TEST_F(SameCells, OnEveryWorksheet) {
    std::size_t editors = 0;
    for (const FormEntry& entry : AllForms()) {
        if (entry.Mode != FormMode::Edit) continue;
        const auto form = DescribeForm(FormMode::Edit, entry.Item);
        ASSERT_TRUE(form) << entry.Item;
        const auto keyed = CellsToKey(*form);
        EXPECT_EQ(CellsToSet(form->Table), keyed) << entry.Item;
        EXPECT_FALSE(keyed.empty()) << entry.Item;
        ++editors;
    }
    EXPECT_EQ(editors, 32U);
}

TEST_F(SameCells, TheLabelOfATotalStays) {
    for (const int line : {15, 21, 22})
        EXPECT_FALSE(IsCellOpen("G1", Currency(line), "Col_1")) << line;
    EXPECT_TRUE(IsCellOpen("G1", Currency(14), "Col_1"));
}

TEST_F(SameCells, AMailLineTakesItsAddressAlone) {
    for (const char* field : {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5"})
        EXPECT_FALSE(IsCellOpen("S1p1", Currency(5.01), field)) << field;
    EXPECT_TRUE(IsCellOpen("S1p1", Currency(5.01), "Col_6"));
}

TEST_F(SameCells, EveryOfficerThatCanBeAddedCanBeKeyed) {
    for (const int line : {6, 99, 998})
        EXPECT_TRUE(IsCellOpen("S1p2", Currency(line), "Col_2")) << line;
}

TEST_F(SameCells, WhatHasNoEditorIsClosed) {
    for (const char* item : {"Cp1", "Dp2", "E", "Fp1", "F1p2", "F2p3", "Master", "Worksheets"})
        EXPECT_TRUE(CellsToSet(item).empty()) << item;
}

}  // namespace
}  // namespace zolmara
