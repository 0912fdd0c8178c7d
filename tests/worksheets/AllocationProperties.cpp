// What holds for every allocation, whatever was keyed: columns close on the dollar, ratios on 1,
// and a second calculation changes nothing.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

#include "calc/Calc_All.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/Residual.h"
#include "worksheets/Sheets.h"
#include "worksheets/W_Bpx.h"
#include "worksheets/W_Ex.h"

namespace zolmara {
namespace {

using namespace test;

constexpr std::array<const char*, 3> kParts = {"1", "2", "3"};

Variant MaybeNull(int value) { return value < 0 ? Variant() : Variant(value); }

/// A statistic: often none or 0, often equal to others.
Variant Statistic() {
    return MaybeNull(*rc::gen::oneOf(rc::gen::inRange(-1, 4), rc::gen::inRange(0, 20000)));
}

/// An amount of either sign, sometimes with cents.
double Amount() {
    const int dollars = *rc::gen::inRange(-1000000, 1000000);
    const int cents = *rc::gen::element(0, 0, 25, 50);
    return dollars + cents / 100.0;
}

double SumOfParts(std::string_view family, std::string_view field) {
    double sum = 0;
    for (const char* part : kParts) {
        sum += NumOr(gDB.Scalar(
            fmt::format("SELECT Sum({}) FROM {}{} WHERE LineNum<51;", field, family, part)));
    }
    return sum;
}

bool Near(double a, double b) { return std::abs(a - b) < 1e-6; }

class AllocationProperties : public SheetTest {
protected:
    AllocationProperties() {
        RunBatch(gDB, [] {
            SetComponents(1, {1, 2, 2.01});
            SetComponents(2, {1, 7});
            SetComponents(3, {4});
        });
    }

    static void KeyStatistics(std::string_view family, std::string_view field) {
        for (const char* part : kParts) {
            Recordset rows = gDB.OpenRecordset(
                fmt::format("SELECT * FROM {}{} WHERE LineNum<51;", family, part));
            for (; !rows.Eof(); rows.MoveNext()) {
                rows.Edit();
                rows.Set(field, Statistic());
                rows.Update();
            }
        }
    }
    static void CalcFamily(std::string_view family, void (*calc)(std::string_view)) {
        for (const char* part : kParts) calc(fmt::format("{}{}", family, part));
    }
};

TEST_F(AllocationProperties, EveryColumnOfCAndDClosesOnItsCost) {
    for (const auto& [letter, field, total] :
         {std::array{"C", "CC_200", "Col_3"}, std::array{"D", "CC_2800", "Col_99"}}) {
        const std::string amounts = fmt::format("{}p", letter);
        const std::string statistics = fmt::format("{}1p", letter);
        EXPECT_TRUE(rc::check([&] {
            const double cost = Amount();
            RunBatch(gDB, [&] {
                KeyStatistics(statistics, field);
                SetCell(statistics + "3", 53, field, cost);
                CalcFamily(statistics, Calc_Bpx);
                CalcFamily(amounts, Calc_Bpx);
            });
            RC_ASSERT(Near(SumOfParts(amounts, field), cost));
            RC_ASSERT(Near(Num(amounts + "3", 52, field), cost));
            RC_ASSERT(Near(Num(amounts + "3", 52, total), cost));
            double totals = 0;
            for (const char* part : kParts) totals += Num(amounts + part, 51, field);
            RC_ASSERT(Near(totals, cost));
            RC_ASSERT(Near(SumOfParts(amounts, total), cost));
        }));
    }
}

TEST_F(AllocationProperties, EveryPoolOfEAndE1Closes) {
    EXPECT_TRUE(rc::check([&] {
        const double capital = Amount();
        const double others = Amount();
        RunBatch(gDB, [&] {
            KeyStatistics("E1p", "Col_1");
            SetCell("A", 1, "Col_8", capital);
            SetCell("A", 20, "Col_8", others);
            Calc_E();
            CalcFamily("E1p", Calc_E1px);
        });
        for (const auto& [field, amount] :
             {std::pair{"CC_100", capital}, std::pair{"Col_7", others}}) {
            RC_ASSERT(Near(Num("E", 4, field), amount));
            RC_ASSERT(Near(Num("E", 1, field) + Num("E", 2, field) + Num("E", 3, field), amount));
            double grandTotal = 0;
            for (const char* part : kParts) {
                const std::string item = fmt::format("E1p{}", part);
                const double share = Num(item, 51, field);
                RC_ASSERT(share == std::floor(share));
                RC_ASSERT(NumOr(gDB.Scalar(fmt::format("SELECT Sum({}) FROM {} WHERE LineNum<51;",
                                                       field, item))) == share);
                grandTotal += share;
            }
            RC_ASSERT(Num("E1p3", 52, field) == grandTotal);
        }
        for (const char* part : kParts) {
            const std::string item = fmt::format("E1p{}", part);
            const double ratios =
                NumOr(gDB.Scalar(fmt::format("SELECT Sum(Col_2) FROM {} WHERE LineNum<51;", item)));
            RC_ASSERT(std::abs(ratios - (Num(item, 51, "Col_1") == 0 ? 0 : 1)) < 1e-12);
        }
    }));
}

TEST_F(AllocationProperties, TheSplitBetweenThePartsHasRatiosThatSumTo1) {
    EXPECT_TRUE(rc::check([&] {
        RunBatch(gDB, [&] {
            KeyStatistics("E1p", "Col_1");
            Calc_E();
        });
        RC_PRE(SumOfParts("E1p", "Col_1") != 0);
        RC_ASSERT(Near(Num("E", 4, "Col_1"), SumOfParts("E1p", "Col_1")));
        const double ratios = Num("E", 1, "Col_2") + Num("E", 2, "Col_2") + Num("E", 3, "Col_2");
        RC_ASSERT(std::abs(ratios - 1) < 1e-12);
    }));
}

// --- The residual of C and D, told column by column ----------------------------------------

/// The cell of a column that takes the residual, found by one statement for each part.
struct Largest {
    int Part = 0;
    Variant Line;
    double Value = 0;
};

Largest FindLargest(std::string_view field) {
    Largest largest;
    for (int part = 1; part <= 3; ++part) {
        const Recordset row = gDB.OpenRecordset(fmt::format(
            "Select Top 1 * From Dp{} Where LineNum<51 Order By abs({}) Desc;", part, field));
        if (row.Empty()) continue;
        const double value = NumOr(row[field]);
        if (largest.Part == 0 || std::abs(value) > std::abs(largest.Value)) {
            largest = {part, row["LineNum"], value};
        }
    }
    return largest;
}

void MoveCell(int part, const Variant& line, const std::string& field, const Gap& gap) {
    const Recordset row =
        gDB.OpenRecordset(fmt::format("Select * From Dp{} Where LineNum=?;", part), {line});
    gDB.Execute(
        fmt::format("Update Dp{} Set {}=?,Col_99=? Where LineNum=?;", part, field),
        {NumOr(row[field]) - gap.Got + gap.Want, NumOr(row["Col_99"]) - gap.Got + gap.Want, line});
}

void CloseColumnByColumn(const std::vector<Gap>& gaps) {
    for (const Gap& gap : gaps) {
        const std::string field = FieldNames("Dp1")[static_cast<std::size_t>(gap.Position)];
        const Largest largest = FindLargest(field);
        if (largest.Part == 0) continue;
        MoveCell(largest.Part, largest.Line, field, gap);
        MoveCell(largest.Part, 51, field, gap);
        MoveCell(3, 52, field, gap);
    }
}

using Contents = std::map<std::string, std::vector<std::string>>;
using Grid = std::vector<std::vector<Variant>>;

/// Small amounts, often equal in size, and Nulls.
Grid DrawGrid(std::size_t rows, std::size_t columns) {
    Grid grid(rows, std::vector<Variant>(columns));
    for (std::vector<Variant>& row : grid) {
        for (Variant& cell : row) {
            const int value = *rc::gen::inRange(-4, 4);
            if (value != -4) cell = value * 10;
        }
    }
    return grid;
}

/// Puts the amounts into the rows of the three parts of D, from the first cost center on.
void Fill(const Grid& grid) {
    auto row = grid.begin();
    for (const char* part : kParts) {
        Recordset rows =
            gDB.OpenRecordset(fmt::format("SELECT * FROM Dp{} ORDER BY LineNum;", part));
        for (; !rows.Eof(); rows.MoveNext(), ++row) {
            rows.Edit();
            int position = 3;
            for (const Variant& cell : *row) rows.Set(position++, cell);
            rows.Update();
        }
    }
}

TEST_F(AllocationProperties, OneWalkClosesAsASearchForEachColumnDoes) {
    const int fields = static_cast<int>(FieldNames("Dp1").size());
    const auto rows = static_cast<std::size_t>(Rows("Dp1") + Rows("Dp2") + Rows("Dp3"));
    EXPECT_TRUE(rc::check([&] {
        const Grid grid = DrawGrid(rows, static_cast<std::size_t>(fields - 3));
        std::vector<Gap> gaps;
        for (int i = 3; i < fields - 1; ++i) {
            if (*rc::gen::arbitrary<bool>()) gaps.push_back({i, Amount(), Amount()});
        }
        Contents told;
        RunBatch(gDB, [&] {
            Fill(grid);
            CloseColumnByColumn(gaps);
            told = Dump();
            Fill(grid);
            KeptColumns none;
            CloseGaps("Dp", gaps, fields - 1, none);
        });
        RC_ASSERT(Dump() == told);
    }));
}

// --- The whole run -------------------------------------------------------------------------

TEST_F(AllocationProperties, ASecondRunChangesNothing) {
    EXPECT_TRUE(rc::check([&] {
        RunBatch(gDB, [&] {
            for (const double line : {1.0, 2.0, 4.0, 8.0, 9.0, 20.0, 28.0}) {
                SetCell("A", line, "Col_1", Amount());
            }
            SetCell("A7p2", 1, "Col_1", Statistic());
            SetCell("A7p2", 2, "Col_1", Statistic());
            SetCell("A8", 3, "Col_3", Amount());
            SetCell("A8", 3, "Col_5", 20);
            KeyStatistics("Bp", "CC_100");
            KeyStatistics("B1p", "CC_900");
            KeyStatistics("C1p", "CC_100");
            KeyStatistics("D1p", "CC_2000");
            KeyStatistics("E1p", "Col_1");
            SetCell("C1p3", 53, "CC_100", Amount());
            SetCell("D1p3", 53, "CC_2000", Amount());
            SetCell("G", 1, "Col_1", Amount());
        });
        Calc_All();
        const Contents first = Dump();
        const std::int64_t commits = gDB.CommitCount();
        Calc_All();
        RC_ASSERT(Dump() == first);
        RC_ASSERT(gDB.CommitCount() == commits);
    }));
}

}  // namespace
}  // namespace zolmara
