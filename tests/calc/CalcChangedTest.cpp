#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "calc/Calc_All.h"
#include "worksheets/ExplainedStatements.h"
#include "worksheets/Sheets.h"

namespace zolmara {
namespace {

using namespace test;

class CalcChanged : public SheetTest {
protected:
    /// The worksheets that a run calculates, by the status line.
    std::vector<std::string> Calculated() {
        host.Forget();
        Calc_Changed();
        std::vector<std::string> shown;
        for (const std::string& text : host.Events) {
            const std::size_t level = text.find(": ", text.find("level "));
            if (text.starts_with("ShowCalcMsg:  Calculating"))
                shown.push_back(text.substr(level + 2));
        }
        return shown;
    }

    /// Until nothing is left to calculate: what has changed in one run may come out otherwise in
    /// the next one.
    void Settle() {
        for (int run = 0; run < 5 && !Calculated().empty(); ++run) {
        }
        ASSERT_EQ(Calculated(), std::vector<std::string>{});
    }

    using Tables = std::map<std::string, std::vector<std::string>>;

    /// What Calc_All makes of a copy of the file as it is now.
    Tables AfterAll() {
        const std::string copy = folder.File("copy.CRF");
        std::filesystem::copy_file(gCRFPath, copy,
                                   std::filesystem::copy_options::overwrite_existing);
        Database other = DBEngine::OpenDatabase(copy);
        std::swap(gDB, other);
        Calc_All();
        Tables tables = Dump();
        std::swap(gDB, other);
        return tables;
    }

    void ExpectSameAsAll(const std::string& after) {
        const Tables all = AfterAll();
        Calc_Changed();
        const Tables changed = Dump();
        ASSERT_EQ(changed.size(), all.size()) << after;
        for (const auto& [table, rows] : all)
            ASSERT_EQ(changed.at(table), rows) << table << " " << after;
    }
};

using Names = std::vector<std::string>;

TEST_F(CalcChanged, TheFirstRunOfAFileCalculatesEverything) { EXPECT_EQ(Calculated().size(), 46U); }

TEST_F(CalcChanged, WhereNothingChangedNothingIsCalculatedOrWritten) {
    MakeNorthfield(folder);
    Settle();
    const std::int64_t commits = gDB.CommitCount();
    const auto time = std::filesystem::last_write_time(gCRFPath);
    EXPECT_EQ(Calculated(), Names{});
    EXPECT_EQ(gDB.CommitCount(), commits);
    EXPECT_EQ(std::filesystem::last_write_time(gCRFPath), time);
}

TEST_F(CalcChanged, AnAmountThatNothingElseTakesIsCalculatedAlone) {
    MakeNorthfield(folder);
    Settle();
    SetCell("G", 1, "Col_1", 1234567);
    EXPECT_EQ(Calculated(), Names{"G"});
}

TEST_F(CalcChanged, AnAmountOfAGoesOnToWhatRestsOnItAndToNothingElse) {
    MakeNorthfield(folder);
    Settle();
    SetCell("A", 8, "Col_1", NumOr(Cell("A", 8, "Col_1")) + 1000);
    const Names shown = Calculated();
    const auto has = [&](std::string_view name) {
        return std::ranges::find(shown, name) != shown.end();
    };
    EXPECT_TRUE(has("A"));
    EXPECT_TRUE(has("E  Part-1") || has("E"));
    EXPECT_TRUE(has("G-1"));
    for (const std::string& name : shown) {
        for (const char* other : {"B", "B-1", "C", "C-1", "D", "D-1", "A-6", "A-8", "S-1", "S-2"})
            EXPECT_FALSE(name == other || name.starts_with(std::string(other) + "  Part")) << name;
    }
}

TEST_F(CalcChanged, AFigureKeyedOverAResultIsPutRight) {
    MakeNorthfield(folder);
    Settle();
    const double before = Num("Cp1", 51, "Col_3");
    SetCell("Cp1", 51, "Col_3", before + 7);
    Calc_Changed();
    EXPECT_EQ(Num("Cp1", 51, "Col_3"), before);
}

TEST_F(CalcChanged, ALineBreakInATextGoes) {
    MakeNorthfield(folder);
    Settle();
    SetCell("A6", 1, "Col_1", "two\r\nlines");
    Calc_Changed();
    EXPECT_EQ(TextCell("A6", 1, "Col_1"), "twolines");
}

TEST_F(CalcChanged, WhatACalculationSaysItSaysAgain) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_1,Col_2,Col_4,Col_5) VALUES (1,'Rent','A',98,500);");
    Calc_Changed();
    for (int run = 0; run < 3; ++run) {
        host.Boxes.clear();
        Calc_Changed();
        // A-7 Part II calculates A, too.
        ASSERT_EQ(host.Boxes.size(), 2U);
        EXPECT_EQ(host.Boxes[0].Text,
                  "No A record found matching the A6 record for Cost Center 98 does not exist.");
    }
}

TEST_F(CalcChanged, AnotherProgramsChangeIsSeen) {
    MakeNorthfield(folder);
    Settle();
    {
        Database other = DBEngine::OpenDatabase(gCRFPath);
        other.Execute("UPDATE G SET Col_1=4711 WHERE LineNum=1;");
    }
    Calc_Changed();
    EXPECT_EQ(Num("G", 10, "Col_1"), Column("SELECT Sum(Col_1) FROM G WHERE LineNum<10 And "
                                            "LineNum<>6;")[0] -
                                         Num("G", 6, "Col_1"));
    EXPECT_EQ(Num("G", 1, "Col_1"), 4711);
}

TEST_F(CalcChanged, AfterARunThatFailedEverythingIsCalculated) {
    MakeNorthfield(folder);
    Settle();
    gDB.Execute("DELETE * FROM Fp2 WHERE LineNum=51;");
    SetCell("A", 8, "Col_1", 1);
    EXPECT_THROW(Calc_Changed(), StoreError);
    gDB.Execute("INSERT INTO Fp2 (LineNum,Description) VALUES (51,'Total');");
    EXPECT_EQ(Calculated().size(), 46U);
}

TEST_F(CalcChanged, AWorksheetMadeAnewIsCalculated) {
    MakeNorthfield(folder);
    Settle();
    BuildWorksheet("Fp1");
    ExpectSameAsAll("Fp1 made anew");
}

TEST_F(CalcChanged, WithinALargerActTheResultIsTheSame) {
    MakeNorthfield(folder);
    Settle();
    const double before = Num("A", 8, "Col_2");
    RunBatch(gDB, [&] {
        SetCell("A", 8, "Col_2", before + 5);
        Calc_Changed();
    });
    EXPECT_EQ(Num("A", 8, "Col_2"), before);
}

}  // namespace
}  // namespace zolmara
