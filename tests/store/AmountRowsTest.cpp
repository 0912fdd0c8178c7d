// Amounts that pass by: from the file, from where they were put aside, and from memory.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "core/Globals.h"
#include "store/AmountRows.h"
#include "store/DatabaseImpl.h"
#include "store/harness/Faults.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr std::array kWord = {2};

/// The folder of temporary files, as the environment tells it.
class TempFolderOf {
public:
    explicit TempFolderOf(const std::string& folder) {
        if (const char* const former = std::getenv("TMPDIR")) former_ = former;
        setenv("TMPDIR", folder.c_str(), 1);
    }
    ~TempFolderOf() { former_ ? setenv("TMPDIR", former_->c_str(), 1) : unsetenv("TMPDIR"); }
    TempFolderOf(const TempFolderOf&) = delete;
    TempFolderOf& operator=(const TempFolderOf&) = delete;

private:
    std::optional<std::string> former_;
};

class AmountRowsTest : public SessionTest {
protected:
    AmountRowsTest() {
        CreateCrf(crf, SampleFields());
        gDB.AppendTable({"T",
                         {{"LineNum", FieldType::dbCurrency},
                          {"Col_1", FieldType::dbDouble},
                          {"Word", FieldType::dbText, 20}},
                         {}});
    }
    static void Add(const Variant& line, const Variant& value, const Variant& word) {
        gDB.Execute("INSERT INTO T (LineNum,Col_1,Word) VALUES (?,?,?);", {line, value, word});
    }
    static std::string Shown(double number) { return std::isnan(number) ? "-" : Text(number); }

    /// "line word:" and the numbers of some fields, of each row.
    static Lines Walked(std::string_view table, std::span<const int> texts, std::size_t first,
                        std::size_t count) {
        Lines lines;
        AmountRows rows(gDB, table, texts, [&](const Variant& line, RowTexts words) {
            lines.push_back(Text(line) + " " + (words.empty() ? "" : std::string(words[0])) + ":");
        });
        EXPECT_EQ(rows.Size(), lines.size());
        std::size_t next = 0;
        rows.Walk(first, count, [&](std::span<const double> numbers) {
            EXPECT_EQ(numbers.size(), count);
            for (const double number : numbers) lines.at(next) += " " + Shown(number);
            ++next;
        });
        EXPECT_EQ(next, lines.size());
        return lines;
    }
    static Lines Walked() { return Walked("T", kWord, 0, 3); }

    /// A table of columns from 0 on, in each the row's number and its own: 3.007.
    static void MakeWide(int columns, int rows) {
        TableDef table{"Wide", {{"LineNum", FieldType::dbCurrency}}, {}};
        for (int i = 1; i < columns; ++i)
            table.Fields.push_back({fmt::format("C_{}", i), FieldType::dbDouble});
        gDB.AppendTable(table);
        std::string sql = "INSERT INTO Wide VALUES (?";
        for (int i = 1; i < columns; ++i) sql += fmt::format(",?+{}", i / 1000.0);
        RunBatch(gDB, [&] {
            for (int row = 1; row <= rows; ++row)
                gDB.Execute(sql + ");", std::vector<Variant>(static_cast<std::size_t>(columns),
                                                             Variant(double(row))));
        });
    }
    static std::string ChangedWords() {
        return "table T was changed while it was read; do it again";
    }

    const std::string crf = folder.File("T.CRF");
};

TEST_F(AmountRowsTest, RowsComeInTheOrderOfTheirLinesWithTheirOwnTexts) {
    Add(51.0, 1.0, "Total");
    Add(1.0, 2.0, "Clinic");
    Add(1.01, Variant(), Variant());
    EXPECT_EQ(Walked(), (Lines{"1 Clinic: 1 2 -", "1.01 : 1.01 - -", "51 Total: 51 1 -"}));
}

TEST_F(AmountRowsTest, RowsOnOneLineAndWithoutOneKeepWhatIsTheirs) {
    Add(2.0, 10.0, "b");
    Add(1.0, 20.0, "a");
    Add(2.0, 30.0, "c");
    Add(Variant(), 40.0, "none");
    EXPECT_EQ(Walked(), (Lines{" none: - 40 -", "1 a: 1 20 -", "2 b: 2 10 -", "2 c: 2 30 -"}));
}

TEST_F(AmountRowsTest, AreTheSameFromTheFileFromAsideAndFromMemory) {
    for (const double line : {7.0, 3.0, 9.0, 1.0, 3.0, 4.0}) Add(line, line * 10, Text(line));
    gDB.Execute("DELETE FROM T WHERE LineNum=9;");
    const Lines fromFile = Walked();
    EXPECT_EQ(fromFile.front(), "1 1: 1 10 -");
    EXPECT_EQ(fromFile.size(), 5U);
    {
        const AmountSpool spool(gDB);
        EXPECT_EQ(Walked(), fromFile);
        EXPECT_NE(gDB.impl().Spool, nullptr);
        EXPECT_EQ(Walked(), fromFile);
    }
    EXPECT_EQ(KeptCellsOf(gDB, "T"), nullptr);
    CellsOf(gDB, "T");
    EXPECT_NE(KeptCellsOf(gDB, "T"), nullptr);
    EXPECT_EQ(Walked(), fromFile);
}

TEST_F(AmountRowsTest, ATableWithoutRowsGivesNone) {
    EXPECT_EQ(Walked(), Lines{});
    const AmountSpool spool(gDB);
    EXPECT_EQ(Walked(), Lines{});
    EXPECT_EQ(Walked(), Lines{});
}

TEST_F(AmountRowsTest, ATableThatIsNotThereIsTold) {
    EXPECT_THROW(AmountRows(gDB, "Nothing", {}, [](const Variant&, RowTexts) {}), StoreError);
}

/// More columns than one call of SQLite's takes, and more rows than a band.
TEST_F(AmountRowsTest, SomeColumnsOfManyAreTheirsInEveryBand) {
    constexpr int kColumns = 210;
    constexpr int kRows = 330;
    MakeWide(kColumns, kRows);
    const AmountSpool spool(gDB);
    const auto expect = [&](std::size_t first, std::size_t count) {
        AmountRows rows(gDB, "Wide", {}, [](const Variant&, RowTexts) {});
        int row = 0;
        rows.Walk(first, count, [&](std::span<const double> numbers) {
            ++row;
            for (std::size_t i = 0; i < count; ++i)
                ASSERT_EQ(numbers[i], row + static_cast<double>(first + i) / 1000) << row;
        });
        EXPECT_EQ(row, kRows);
    };
    expect(1, 9);
    expect(95, 12);
    expect(201, 9);
    expect(209, 1);
    expect(50, 0);
}

TEST_F(AmountRowsTest, NoMoreThanABandIsInMemoryHoweverLongATableIs) {
    const auto file = std::make_shared<UnnamedFile>();
    for (const std::size_t width : {1U, 3U, 30U, 230U, 2000U, 40000U})
        for (const std::size_t rows : {0U, 1U, 17U, 1668U, 1000000U}) {
            const std::size_t row = width * sizeof(double);
            EXPECT_LE(SpooledTable(file, 0, rows, width).BytesOfBand(), std::max(kBandBytes, row));
            EXPECT_LE(SpooledTable(file, 0, rows, width).BytesOfBand(),
                      std::max<std::size_t>(rows, 1) * row);
        }
}

TEST_F(AmountRowsTest, ATableThatIsWrittenToMeanwhileStopsTheWalk) {
    for (const double line : {1.0, 2.0, 3.0}) Add(line, line, "x");
    for (const bool inMemory : {false, true}) {
        for (const std::string change :
             {"UPDATE T SET Col_1=Col_1+9 WHERE LineNum=3;", "INSERT INTO T (LineNum) VALUES (4);",
              "DELETE FROM T WHERE LineNum=4;"}) {
            if (inMemory) CellsOf(gDB, "T");
            AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
            int walked = 0;
            try {
                rows.Walk(0, 2, [&](std::span<const double>) {
                    if (++walked == 2) gDB.Execute(change);
                });
                ADD_FAILURE() << change;
            } catch (const StoreError& error) {
                EXPECT_EQ(error.what(), ChangedWords());
            }
            EXPECT_EQ(walked, 2) << change;
        }
    }
}

/// The cells in memory are right again by then, and are others.
TEST_F(AmountRowsTest, CellsThatWereReadAnewMeanwhileStopTheWalk) {
    for (const double line : {1.0, 2.0, 3.0}) Add(line, line, "x");
    CellsOf(gDB, "T");
    AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
    int walked = 0;
    try {
        rows.Walk(0, 2, [&](std::span<const double>) {
            ++walked;
            gDB.Execute("DELETE FROM T WHERE LineNum=1;");
            CellsOf(gDB, "T");
        });
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.what(), ChangedWords());
    }
    EXPECT_EQ(walked, 1);
}

TEST_F(AmountRowsTest, ACalculationMeanwhileStopsTheWalk) {
    for (const double line : {1.0, 2.0, 3.0}) Add(line, line, "x");
    TableCells& cells = CellsOf(gDB, "T");
    AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
    int walked = 0;
    try {
        rows.Walk(0, 2, [&](std::span<const double>) {
            ++walked;
            ChangeCells(gDB, [&] {
                RowEdit edit(cells, 2);
                edit.Set(1, 99);
                edit.Update();
            });
        });
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.what(), ChangedWords());
    }
    EXPECT_EQ(walked, 1);
}

TEST_F(AmountRowsTest, AFileThatIsClosedMeanwhileStopsTheWalk) {
    for (const bool inMemory : {false, true}) {
        if (!gDB.IsOpen()) gDB = DBEngine::OpenDatabase(crf);
        Add(1.0, 1.0, "x");
        Add(2.0, 2.0, "x");
        if (inMemory) CellsOf(gDB, "T");
        AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
        EXPECT_THROW(rows.Walk(0, 2, [](std::span<const double>) { gDB.Close(); }), StoreError);
        EXPECT_THROW(rows.Walk(0, 2, [](std::span<const double>) {}), StoreError);
    }
}

/// Two tables that are put aside at once, row by row in turn.
TEST_F(AmountRowsTest, AWalkWithinAWalkPutsItsAmountsElsewhere) {
    Add(1.0, 5.0, "x");
    MakeWide(4, 2);
    const AmountSpool spool(gDB);
    AmountRows outer(gDB, "Wide", {}, [](const Variant&, RowTexts) {});
    outer.Walk(0, 4, [](std::span<const double>) { EXPECT_EQ(Walked(), Lines{"1 x: 1 5 -"}); });
    EXPECT_EQ(Walked("Wide", {}, 0, 4),
              (Lines{"1 : 1 1.001 1.002 1.003", "2 : 2 2.001 2.002 2.003"}));
    EXPECT_EQ(Walked(), Lines{"1 x: 1 5 -"});
}

TEST_F(AmountRowsTest, WhatIsWrittenBehindTheLastRowIsNotTakenForWhatWasPutAside) {
    Add(1.0, 5.0, "x");
    const AmountSpool spool(gDB);
    AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
    rows.Walk(0, 3, [](std::span<const double>) { gDB.Execute("UPDATE T SET Col_1=9;"); });
    EXPECT_EQ(Walked(), Lines{"1 x: 1 9 -"});
}

TEST_F(AmountRowsTest, WhatAnotherProgramChangesBehindTheNamesStopsTheWalk) {
    for (const double line : {1.0, 2.0}) Add(line, line, "x");
    AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
    Database other = DBEngine::OpenDatabase(crf);
    other.Execute("UPDATE T SET Col_1=9 WHERE LineNum=2;");
    try {
        rows.Walk(0, 2, [](std::span<const double>) {});
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.what(), ChangedWords());
    }
}

TEST_F(AmountRowsTest, WhatWasPutAsideIsOneLookAtTheTable) {
    for (const double line : {1.0, 2.0}) Add(line, line, "x");
    const AmountSpool spool(gDB);
    AmountRows rows(gDB, "T", {}, [](const Variant&, RowTexts) {});
    rows.PutAside();
    gDB.Execute("UPDATE T SET Col_1=9;");
    double sum = 0;
    rows.Walk(1, 1, [&](std::span<const double> numbers) { sum += numbers[0]; });
    EXPECT_EQ(sum, 3);
    // Whoever comes anew sees what is there now.
    EXPECT_EQ(Walked(), (Lines{"1 x: 1 9 -", "2 x: 2 9 -"}));
}

TEST_F(AmountRowsTest, TheTemporaryFileHasNoNameAndOneSpoolServesTheOthersWithin) {
    const fs::path place = folder.Path() / "temporary";
    fs::create_directory(place);
    const TempFolderOf temporary(place);
    EXPECT_EQ(UnnamedFile().Folder(), place);
    Add(1.0, 5.0, "x");
    const AmountSpool outer(gDB);
    { const AmountSpool inner(gDB); }
    EXPECT_EQ(gDB.impl().Spool, &outer);
    EXPECT_EQ(Walked(), Lines{"1 x: 1 5 -"});
    EXPECT_TRUE(fs::is_empty(place));
}

TEST_F(AmountRowsTest, AFolderThatTakesNoFileIsPassedOver) {
    for (const std::string& wrong : {folder.File("missing"), crf}) {
        const TempFolderOf temporary(wrong);
        EXPECT_NE(UnnamedFile().Folder(), wrong);
        EXPECT_TRUE(UnnamedFile().Folder() == "/var/tmp" || UnnamedFile().Folder() == "/tmp");
    }
}

TEST_F(AmountRowsTest, WhereTheDiskIsFullTheFileIsReadAgain) {
    constexpr int kRows = 400;
    const TempFolderOf temporary(folder.Path());
    MakeWide(210, kRows);
    const Lines right = Walked("Wide", {}, 200, 9);
    for (const int call : {1, 2, 3}) {
        const AmountSpool spool(gDB);
        FaultsArm(folder.Path().c_str(), call, ENOSPC, "write");
        EXPECT_EQ(Walked("Wide", {}, 200, 9), right) << call;
        EXPECT_EQ(FaultsDisarm(), call);
        // No second try.
        FaultsArm(folder.Path().c_str(), 0, 0, "write");
        EXPECT_EQ(Walked("Wide", {}, 200, 9), right) << call;
        EXPECT_EQ(FaultsDisarm(), 0);
    }
}

TEST_F(AmountRowsTest, WhatTheDiskDoesNotGiveBackIsToldWithItsFolder) {
    const TempFolderOf temporary(folder.Path());
    UnnamedFile file;
    const std::array<double, 3> numbers = {1, 2, 3};
    EXPECT_FALSE(file.Write(80, std::as_bytes(std::span(numbers))));
    std::array<double, 3> back = {};
    file.Read(80, std::as_writable_bytes(std::span(back)));
    EXPECT_EQ(back, numbers);
    file.CutAt(88);
    try {
        file.Read(80, std::as_writable_bytes(std::span(back)));
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.what(),
                  folder.Path().string() + ": a temporary file cannot be read: it is too short");
    }
}

}  // namespace
}  // namespace zolmara::test
