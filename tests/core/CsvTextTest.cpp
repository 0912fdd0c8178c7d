#include <gtest/gtest.h>

#include "core/CsvText.h"

namespace zolmara {
namespace {

TEST(CsvText, MarksWhatASpreadsheetWouldTakeForAFormula) {
    EXPECT_EQ(CsvMarked("=1+1"), "'=1+1");
    EXPECT_EQ(CsvMarked("+Plus"), "'+Plus");
    EXPECT_EQ(CsvMarked("-5"), "'-5");
    EXPECT_EQ(CsvMarked("@cmd"), "'@cmd");
    EXPECT_EQ(CsvMarked("\t=1"), "'\t=1");
    EXPECT_EQ(CsvMarked("A=1"), "A=1");
    EXPECT_EQ(CsvMarked("O'Hara"), "O'Hara");
    EXPECT_EQ(CsvMarked("'tis"), "'tis");
    EXPECT_EQ(CsvMarked(""), "");
}

TEST(CsvText, GivesEveryTextBackFromBehindItsMark) {
    for (const char* text : {"=1", "'=1", "''=1", "'", "''", "'tis", "-", "", "@a", "plain", "'-"})
        EXPECT_EQ(WithoutCsvMark(CsvMarked(text)), text);
    EXPECT_EQ(WithoutCsvMark("'tis"), "'tis") << "keyed so by somebody";
}

TEST(CsvText, QuotesSeparatorsQuotesBlanksAndLineEnds) {
    EXPECT_EQ(CsvQuoted("plain"), "plain");
    EXPECT_EQ(CsvQuoted("a,b"), "\"a,b\"");
    EXPECT_EQ(CsvQuoted("a;b"), "\"a;b\"");
    EXPECT_EQ(CsvQuoted("say \"ah\""), "\"say \"\"ah\"\"\"");
    EXPECT_EQ(CsvQuoted("two\r\nlines"), "\"two\r\nlines\"");
    EXPECT_EQ(CsvQuoted(""), "");
}

}  // namespace
}  // namespace zolmara
