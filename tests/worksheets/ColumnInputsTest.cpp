#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "worksheets/ColumnInputs.h"
#include "worksheets/Sheets.h"
#include "worksheets/W_Bpx.h"

namespace zolmara {
namespace {

using namespace test;
using Positions = std::vector<int>;

/// The statistics of D, with three components in the first part.
class ColumnInputs : public SheetTest {
protected:
    ColumnInputs() {
        SetComponents(1, {1, 2, 3});
        first_ = Cells().Position("CC_800");
        Look();
    }

    static TableCells& Cells() { return CellsOf(gDB, "D1p1"); }
    /// A calculation looks at the table, and the next begins.
    void Look() {
        kept_.ChangesOf(Cells());
        kept_.Begin();
    }
    Positions Changed() {
        const TableCells& cells = Cells();
        return ColumnsToCalculate(first_, cells.FieldCount(), {kept_.ChangesOf(cells)});
    }
    Positions All() {
        Positions all;
        for (int i = first_; i < Cells().FieldCount(); ++i) all.push_back(i);
        return all;
    }
    bool HasChanged(double line) {
        const TableCells& cells = Cells();
        return kept_.ChangesOf(cells).Row(cells.RowOn(Currency(line)).value());
    }
    static int At(std::string_view field) { return Cells().Position(field); }
    static void Put(double line, std::string_view field, double amount) {
        RowEdit row(Cells(), Cells().RowOn(Currency(line)).value());
        row.Set(At(field), amount);
        row.Update();
    }

    int first_ = 0;
    KeptColumns kept_;
};

TEST_F(ColumnInputs, WhatWasNeverLookedAtHasChanged) {
    KeptColumns none;
    EXPECT_TRUE(none.ChangesOf(Cells()).Any());
    EXPECT_TRUE(none.ChangesOf(Cells()).Shape());
    EXPECT_EQ(ColumnsToCalculate(first_, Cells().FieldCount(), {none.ChangesOf(Cells())}), All());
}

TEST_F(ColumnInputs, WhatIsAsItWasHasNotChanged) {
    EXPECT_EQ(Changed(), Positions{});
    EXPECT_FALSE(kept_.ChangesOf(Cells()).Any());
    SetCell("D1p1", 2, "Description", "Another name");
    EXPECT_EQ(Changed(), Positions{}) << "a text is no input of an amount";
    EXPECT_FALSE(HasChanged(2));
}

TEST_F(ColumnInputs, AKeyedCellChangesItsColumnAndItsRow) {
    SetCell("D1p1", 2, "CC_900", 5);
    EXPECT_EQ(Changed(), Positions{At("CC_900")});
    EXPECT_TRUE(HasChanged(2));
    EXPECT_FALSE(HasChanged(1));
    EXPECT_FALSE(kept_.ChangesOf(Cells()).Shape());
}

TEST_F(ColumnInputs, NullAndZeroAreNotTheSame) {
    SetCell("D1p1", 2, "CC_900", 0);
    EXPECT_EQ(Changed(), Positions{At("CC_900")});
    Look();
    SetCell("D1p1", 2, "CC_900", {});
    EXPECT_EQ(Changed(), Positions{At("CC_900")});
}

TEST_F(ColumnInputs, AColumnOfAnotherTableChangesTheOneInItsPlace) {
    kept_.ChangesOf(CellsOf(gDB, "D1p3"));
    Look();
    SetCell("D1p3", 53, "CC_1000", 100);
    const TableCells& cost = CellsOf(gDB, "D1p3");
    EXPECT_EQ(ColumnsToCalculate(first_, Cells().FieldCount(),
                                 {kept_.ChangesOf(Cells()), kept_.ChangesOf(cost)}),
              Positions{At("CC_1000")});
}

TEST_F(ColumnInputs, WhatWorkPutsBackHasNotChanged) {
    ChangeCells(gDB, [] {
        Put(1, "CC_900", 7);
        Put(2, "CC_900", 8);
        Put(2, "CC_1000", 9);
        RowEdit row(Cells(), Cells().RowOn(Currency(1)).value());
        row.SetNull(At("CC_900"));
        row.Update();
    });
    EXPECT_FALSE(HasChanged(1));
    EXPECT_TRUE(HasChanged(2));
    Look();
    ChangeCells(gDB, [] {
        Put(2, "CC_900", 1);
        Put(2, "CC_900", 8);
    });
    EXPECT_EQ(Changed(), Positions{});
}

TEST_F(ColumnInputs, ARowThatIsGivenUpIsAsItWas) {
    ChangeCells(gDB, [] {
        RowEdit row(Cells(), Cells().RowOn(Currency(1)).value());
        row.Set(At("CC_900"), 7);
        row.Set(At("CC_900"), 8);
        EXPECT_THROW(row.Set(At("CC_1000"), INFINITY), StoreError);
    });
    EXPECT_EQ(Changed(), Positions{});
    EXPECT_TRUE(IsNullCell("D1p1", 1, "CC_900"));
    EXPECT_TRUE(Cells().IsNull(Cells().RowOn(Currency(1)).value(), At("CC_900")));
}

TEST_F(ColumnInputs, AfterWhatTheFileRefusesEverythingHasChanged) {
    EXPECT_THROW(ChangeCells(gDB, [] { Put(1, "CC_900", 1.5e308); }), StoreError);
    EXPECT_EQ(Changed(), All());
}

TEST_F(ColumnInputs, RowsThatComeAndGoChangeEverything) {
    gDB.Execute("DELETE * FROM D1p1 WHERE LineNum=2;");
    EXPECT_EQ(Changed(), All());
    EXPECT_TRUE(kept_.ChangesOf(Cells()).Shape());
    Look();
    gDB.Execute("UPDATE D1p1 SET LineNum=2 WHERE LineNum=1;");
    EXPECT_EQ(Changed(), All()) << "the order of the rows";
}

TEST_F(ColumnInputs, AnotherProgramsChangeIsSeen) {
    {
        Database other = DBEngine::OpenDatabase(gCRFPath);
        other.Execute("UPDATE D1p1 SET CC_900=5 WHERE LineNum=2;");
    }
    const Positions changed = Changed();
    EXPECT_NE(std::ranges::find(changed, At("CC_900")), changed.end());
}

TEST_F(ColumnInputs, WhatACalculationDidNotLookAtHasChangedForTheNext) {
    kept_.Begin();
    EXPECT_EQ(Changed(), All());
}

TEST_F(ColumnInputs, AChangeBehindTheFirstLookCountsForTheNextCalculation) {
    kept_.ChangesOf(Cells());
    SetCell("D1p1", 2, "CC_900", 5);
    kept_.ChangesOf(Cells());
    kept_.Begin();
    EXPECT_EQ(Changed(), Positions{At("CC_900")});
}

TEST_F(ColumnInputs, AColumnThatTheTableLacksHasChanged) {
    EXPECT_TRUE(kept_.ChangesOf(Cells()).Column(Cells().FieldCount()));
}

TEST_F(ColumnInputs, TheLargestOfAColumnIsTheFirstOfSeveral) {
    ColumnFinding column;
    column.Add(Currency(1), 0, true);
    EXPECT_EQ(column.Line, Currency(1)) << "a Null, where there is nothing else";
    column.Add(Currency(2), 0, false);
    EXPECT_EQ(column.Line, Currency(2)) << "a zero is more than a Null";
    column.Add(Currency(3), -7, false);
    column.Add(Currency(4), 7, false);
    EXPECT_EQ(column.Line, Currency(3));
    EXPECT_EQ(column.Sum, 0);
}

// A figure of a column that stands is not looked at: that it is wrong is seen by none but a full
// calculation.
TEST_F(ColumnInputs, AColumnThatStandsIsNotWorkedOutAgain) {
    SetCell("D1p1", 1, "CC_900", 1);
    SetCell("D1p1", 1, "CC_1000", 1);
    for (int run = 0; run < 3; ++run) {
        Calc_Bpx("D1p1", kept_);
        kept_.Begin();
    }
    kept_.FindingsOf(Cells()).Columns.at(static_cast<std::size_t>(At("CC_900"))).Sum = 4711;
    SetCell("D1p1", 2, "CC_1000", 2);
    Calc_Bpx("D1p1", kept_);
    EXPECT_EQ(Num("D1p1", 51, "CC_1000"), 3);
    EXPECT_EQ(Num("D1p1", 51, "CC_900"), 4711);
    Calc_Bpx("D1p1");
    EXPECT_EQ(Num("D1p1", 51, "CC_900"), 1);
}

}  // namespace
}  // namespace zolmara
