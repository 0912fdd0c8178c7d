// Each row of a filled statement is taken away in turn: a run that needs it stops and names it, one
// that does not gives what it gave.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "calc/Calc_All.h"
#include "print/PrintDriver.h"
#include "store/FilledCrf.h"
#include "store/RunStopped.h"
#include "support/TestCrf.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

struct Row {
    std::string Table;
    std::string Key;
    Currency Line;
};

/// Entries of the user: the lines between the form's.
bool IsEntry(const Row& row) {
    const auto between = [&](int from, int below) {
        return Currency::FromWhole(from) <= row.Line && row.Line < Currency::FromWhole(below);
    };
    if (row.Table == "A6" || row.Table == "A81p1") return between(1, 100);
    if (row.Table == "A81p2") return true;
    if (row.Table == "A8") return between(18, 100) || !row.Line.IsWhole();
    if (row.Table == "G1") return between(10, 15) || between(16, 21);
    if (row.Table == "S1p2") return row.Line > Currency::FromWhole(5);
    return row.Table == "S1p1" && !row.Line.IsWhole();
}

class WholeForm : public SessionTest {
protected:
    WholeForm() { OpenFilledCopy(folder.File("WholeForm.CRF")); }

    static std::vector<Row> RowsOf(const std::string& table, const std::string& key) {
        std::vector<Row> rows;
        auto lines = gDB.OpenRecordset(fmt::format("SELECT {0} FROM {1} ORDER BY {0}", key, table),
                                       dbOpenSnapshot);
        for (; !lines.Eof(); lines.MoveNext()) rows.push_back({table, key, CurOr(lines[0])});
        return rows;
    }

    static std::vector<Row> AllRows() {
        std::vector<Row> rows = RowsOf("CostCenters", "LineNum");
        for (const Worksheet& sheet : AllWorksheets()) {
            const auto some = RowsOf(std::string(sheet.Item), std::string(sheet.Key));
            rows.insert(rows.end(), some.begin(), some.end());
        }
        return rows;
    }

    /// Runs without the row, which goes to a line that no worksheet looks at and comes back.
    static std::string Without(const Row& row, const std::function<void()>& run) {
        Move(row, row.Line, row.Line + kAway);
        std::string stopped;
        try {
            run();
        } catch (const RunStopped& error) {
            stopped = error.what();
        }
        Move(row, row.Line + kAway, row.Line);
        return stopped;
    }

    static std::string Told(const Row& row) {
        return fmt::format("Worksheet {} has no line {}. The run has stopped", row.Table,
                           NumberText(row.Line));
    }

private:
    static constexpr Currency kAway = Currency::FromWhole(20000);

    static void Move(const Row& row, Currency from, Currency to) {
        ASSERT_EQ(gDB.Execute(fmt::format("UPDATE {0} SET {1}=? WHERE {1}=?", row.Table, row.Key),
                              {to, from}),
                  1);
    }
};

TEST_F(WholeForm, ACalculationWithoutARowOfTheFormStopsAndNamesIt) {
    const auto rows = AllRows();
    ASSERT_GT(rows.size(), 250u);
    for (const Row& row : rows) {
        if (IsEntry(row)) continue;
        const auto stopped = Without(row, Calc_All);
        EXPECT_NE(stopped.find(Told(row)), std::string::npos)
            << row.Table << " " << NumberText(row.Line) << ": " << stopped;
    }
}

TEST_F(WholeForm, ACalculationWithoutAnEntryGoesOn) {
    for (const Row& row : AllRows()) {
        if (!IsEntry(row)) continue;
        EXPECT_EQ(Without(row, Calc_All), "") << row.Table << " " << NumberText(row.Line);
    }
}

TEST_F(WholeForm, APrintedWorksheetWithoutARowOfTheFormStopsAndNamesIt) {
    for (const Row& row : AllRows()) {
        if (IsEntry(row) || row.Table == "CostCenters" || row.Table.starts_with("S2p")) continue;
        const std::vector<std::string> entry = {fmt::format("X ({})", row.Table)};
        const auto stopped = Without(row, [&] { PrintSelected(entry); });
        EXPECT_NE(stopped.find(Told(row)), std::string::npos)
            << row.Table << " " << NumberText(row.Line) << ": " << stopped;
    }
}

TEST_F(WholeForm, AReportOfSeveralWorksheetsNeedsTheRowsOfAll) {
    const std::vector<std::string> entries = {"A-7 (A7p1)"};
    const Row total{"A7p2", "LineNum", Currency::FromWhole(3)};
    EXPECT_NE(Without(total, [&] { PrintSelected(entries); }).find(Told(total)), std::string::npos);
}

std::string StoppedBy(const std::function<void()>& run) {
    try {
        run();
    } catch (const RunStopped& error) {
        return error.what();
    }
    return {};
}

TEST_F(WholeForm, AColumnThatIsMissingStopsTheRunByName) {
    gDB.DeleteField("B1p2", "CC_800");
    EXPECT_EQ(StoppedBy(Calc_All),
              "B-1  Part-2: Worksheet B1p2 has no column CC_800. The run has stopped; what was "
              "finished stands.");
}

TEST_F(WholeForm, AColumnOfNoCostCenterStopsTheRunByName) {
    gDB.AppendField("B1p1", {.Name = "CC_7777", .Type = FieldType::dbDouble});
    EXPECT_EQ(StoppedBy(Calc_All),
              "B-1  Part-1: Worksheet CostCenters has no line 77.77. The run has stopped; what was "
              "finished stands.");
    gDB.DeleteField("B1p1", "CC_7777");
    gDB.AppendField("B1p1", {.Name = "Col_x", .Type = FieldType::dbDouble});
    EXPECT_EQ(StoppedBy(Calc_All),
              "B-1  Part-1: Worksheet B1p1 has a column that is not the form's: Col_x. The run has "
              "stopped; what was finished stands.");
}

TEST_F(WholeForm, ALineOfACostCenterThatIsGoneStopsTheRunByName) {
    gDB.Execute("INSERT INTO A (LineNum,Col_1) VALUES (55,1000);");
    EXPECT_NE(StoppedBy(Calc_All).find("Worksheet CostCenters has no line 55."), std::string::npos);
}

}  // namespace
}  // namespace zolmara::test
