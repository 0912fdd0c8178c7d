#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <vector>

#include "store/PlainWords.h"
#include "store/RunStopped.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

using Kind = StoreError::Kind;

class PlainWordsTest : public TestCrf {
protected:
    /// What a person is told of the error that a step of the store ends in.
    static std::string Words(const std::function<void()>& step) {
        try {
            step();
        } catch (const std::exception& error) {
            return PlainWords(error);
        }
        return "no error";
    }
    static std::string WordsOf(const std::string& sql) {
        return Words([&] { gDB.Execute(sql); });
    }
};

TEST_F(PlainWordsTest, ALineThatIsThereTwice) {
    EXPECT_EQ(WordsOf("INSERT INTO A8 (LineNum) VALUES (5);"), "A8 has that line already");
    EXPECT_EQ(WordsOf("INSERT INTO Worksheets (Item) VALUES ('A8');"),
              "Worksheets has an entry of that name already");
}

TEST_F(PlainWordsTest, AValueThatAFieldDoesNotHold) {
    EXPECT_EQ(WordsOf("UPDATE A8 SET Col_3='much' WHERE LineNum=5;"),
              "A8 Col_3 cannot hold a value");
    EXPECT_EQ(WordsOf("INSERT INTO Worksheets (ItemName) VALUES ('none');"),
              "Worksheets Item cannot be empty");
}

TEST_F(PlainWordsTest, AValueThatARowDoesNotHoldIsNamedByItsLine) {
    auto rows = gDB.OpenRecordset("SELECT * FROM A8 WHERE LineNum=5");
    rows.Edit();
    EXPECT_EQ(Words([&] { rows.Set("Col_3", "much"); }),
              "A8 line 5 Col_3 takes numbers only, not \"much\"");
}

TEST_F(PlainWordsTest, ATableOrColumnThatIsNotThere) {
    EXPECT_EQ(WordsOf("DELETE FROM A99;"), "the table A99 is missing");
    EXPECT_EQ(WordsOf("UPDATE A8 SET Col_99=1;"), "the column Col_99 is missing");
    const auto rows = gDB.OpenRecordset("SELECT * FROM A8 WHERE LineNum=5");
    EXPECT_EQ(Words([&] { rows["Col_99"]; }), "the column Col_99 is missing in A8");
}

TEST_F(PlainWordsTest, ARowThatIsNotThere) {
    const auto rows = gDB.OpenRecordset("SELECT * FROM A8 WHERE LineNum=55");
    EXPECT_EQ(Words([&] { rows["Col_1"]; }), "a line of A8 is missing");
}

TEST_F(PlainWordsTest, AStatementOfThousandsOfCharactersIsNotShown) {
    std::string sql = "SELECT 1";
    for (int i = 0; i < 3000; ++i) sql += "+(1";
    const auto words = Words(
        [&] { static_cast<void>(gDB.OpenRecordset(sql + std::string(3000, ')') + " FROM A8")); });
    EXPECT_LT(words.size(), 100u) << words;
    EXPECT_NE(words, "no error");
}

TEST(PlainWords, TheDatabasesOwnWords) {
    EXPECT_EQ(PlainWords(StoreError(Kind::Other, "A8: parser stack overflow")),
              "A8: there are more lines or columns than one step can take");
    EXPECT_EQ(PlainWords(StoreError(Kind::Damaged, "x.CRF: database disk image is malformed")),
              "x.CRF: the file is damaged");
    EXPECT_EQ(
        PlainWords(StoreError(
            Kind::DiskFull, "x.CRF: database or disk is full; nothing of this operation was kept")),
        "x.CRF: there is no room on the disk; nothing of this operation was kept");
}

TEST(PlainWords, WhatOtherLibrariesSay) {
    const std::vector<int> none;
    try {
        static_cast<void>(none.at(3));
    } catch (const std::exception& error) {
        EXPECT_EQ(PlainWords(error), "the lines or columns are not those of the form");
    }
    EXPECT_EQ(PlainWords(std::bad_alloc()), "there is not enough memory");
    try {
        static_cast<void>(std::filesystem::file_size("/nowhere/x.CRF"));
    } catch (const std::exception& error) {
        EXPECT_EQ(PlainWords(error), "/nowhere/x.CRF: No such file or directory");
    }
}

TEST(PlainWords, ThisProgramsOwnTextIsKept) {
    EXPECT_EQ(PlainWords(std::runtime_error("A has no line 55")), "A has no line 55");
    EXPECT_EQ(PlainWords(StoreError(Kind::Other, "Worksheet A has no line 55.")),
              "Worksheet A has no line 55.");
}

TEST(PlainWords, AStepOfARunTellsThemWithItsName) {
    const std::vector<int> none;
    try {
        RunStep("C-1  Part-2", [&] { static_cast<void>(none.at(3)); });
        FAIL();
    } catch (const RunStopped& error) {
        EXPECT_STREQ(error.what(),
                     "C-1  Part-2: the lines or columns are not those of the form. The run has "
                     "stopped; what was finished stands.");
    }
}

}  // namespace
}  // namespace zolmara::test
