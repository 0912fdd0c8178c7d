#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "core/Globals.h"
#include "print/TextFields.h"

namespace zolmara::test {
namespace {

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

TEST(FormatLineNum, WholeAndSubscriptedLinesAlignOnTheUnits) {
    EXPECT_EQ(FormatLineNum(Currency(4), 6), "  4   ");
    EXPECT_EQ(FormatLineNum(Currency(4.01), 6), "  4.01");
    EXPECT_EQ(FormatLineNum(Currency(100), 6), "100   ");
    EXPECT_EQ(FormatLineNum(28.0, 6), " 28   ");
}

TEST(FormatLineNum, NullAndEmptyGiveBlanks) {
    EXPECT_EQ(FormatLineNum(Variant(), 6), "      ");
    EXPECT_EQ(FormatLineNum("", 6), "      ");
    EXPECT_EQ(FormatLineNum(Variant(), 0), "");
}

TEST(FormatLineNum, ALineLooksTheSameAsANumberAndAsAKey) {
    for (const double line : {0.0, 0.01, 0.99, 1.1, 9.05, 96.99, 999.0, 12345.67, 999999.99,
                              1000000.5, 1.0001, 1.005, -1.01, 1e11})
        EXPECT_EQ(FormatLineNum(Currency(line), 6), FormatLineNum(line, 6)) << line;
    EXPECT_EQ(FormatLineNum(Currency(7.1), 6), "  7.10");
}

TEST(FormatLineNum, ZeroIsALineNumberAndNullIsNot) { EXPECT_EQ(FormatLineNum(0, 6), "  0   "); }

TEST(CenterIn, PutsHalfOfTheFreePlacesRoundedDownInFront) {
    EXPECT_EQ(CenterIn("ab", 6), "  ab");
    EXPECT_EQ(CenterIn(" abc ", 6), " abc");
    EXPECT_EQ(CenterIn("abcdefgh", 6), "abcdef");
    EXPECT_EQ(CenterIn("", 6), "   ");
}

TEST(PadRight, FillsAndCuts) {
    EXPECT_EQ(PadRight("ab", 4), "ab  ");
    EXPECT_EQ(PadRight("abcdef", 4), "abcd");
    EXPECT_EQ(PadRight(Variant(), 4), "    ");
    EXPECT_EQ(PadRight("Gr\u00fcnau", 4), "Gr\u00fcn");
}

TEST(PadLeft, FillsAndCutsAtTheRightEnd) {
    EXPECT_EQ(PadLeft("ab", 4), "  ab");
    EXPECT_EQ(PadLeft("abcdef", 4), "cdef");
    EXPECT_EQ(PadLeft(Variant(), 4), "    ");
    EXPECT_EQ(PadLeft(12, 4), "  12");
}

TEST(FormatAmount, NullIsEmptyAndZeroIsZero) {
    EXPECT_EQ(FormatAmount(Variant(), 12), "");
    EXPECT_EQ(FormatAmount(0, 12), "           0");
}

TEST(FormatAmount, NegativeAmountsHaveTheirSign) {
    EXPECT_EQ(FormatAmount(-1234567, 12), "  -1,234,567");
}

TEST(FormatAmount, CommasPartWholeNumbersByThrees) {
    EXPECT_EQ(FormatAmount(7.0, 1), "7");
    EXPECT_EQ(FormatAmount(-100.0, 6), "  -100");
    EXPECT_EQ(FormatAmount(1000.0, 6), " 1,000");
    EXPECT_EQ(FormatAmount(-999999.0, 9), " -999,999");
    EXPECT_EQ(FormatAmount(123456789012345.0, 30), "           123,456,789,012,345");
    EXPECT_EQ(FormatAmount(-0.0, 3), "  0");
}

TEST(FormatAmount, AWholeNumberInADoubleIsThatNumber) {
    for (const int number : {0, 1, -1, 12, -123, 1234, -99999, 1000000, -2147483647})
        EXPECT_EQ(FormatAmount(static_cast<double>(number), 12), FormatAmount(number, 12))
            << number;
}

TEST(FormatAmount, RoundsToWholeDollars) { EXPECT_EQ(FormatAmount(1234.5, 12), "       1,235"); }

TEST(FormatAmount, ABillionTakesTheBlankAheadOfTheFieldAndKeepsItsCommas) {
    EXPECT_EQ(FormatAmount(999999999.0, 12), " 999,999,999");
    EXPECT_EQ(FormatAmount(1000000000.0, 12), "1,000,000,000");
    EXPECT_EQ(FormatAmount(9999999999.0, 12), "9,999,999,999");
    EXPECT_EQ(FormatAmount(-999999999.0, 12), "-999,999,999");
    EXPECT_EQ(FormatAmount(-1000000000.0, 12), " -1000000000");
}

TEST(FormatAmount, TooWideForItsCommasGoesWithoutThem) {
    EXPECT_EQ(FormatAmount(10000000000.0, 12), " 10000000000");
    EXPECT_EQ(FormatAmount(123456789012.0, 12), "123456789012");
}

TEST(FormatAmount, TwelveDigitsWithASignTakeTheBlankAheadOfTheField) {
    EXPECT_EQ(FormatAmount(-123456789012.0, 12), "-123456789012");
}

TEST(FormatAmount, WhatDoesNotFitIsNeverShortened) {
    EXPECT_EQ(FormatAmount(12345678901234.0, 12), "************");
    EXPECT_EQ(FormatAmount(1e300, 12), "************");
}

TEST(FormatDecimals, RatiosHaveSixDecimals) {
    EXPECT_EQ(FormatDecimals(0.5, 12, "0.000000"), "    0.500000");
    EXPECT_EQ(FormatDecimals(Variant(), 12, "0.000000"), "");
}

TEST(FormatDecimals, ANumberThatIsTooWideIsRoundedToTheDecimalsThatFit) {
    EXPECT_EQ(FormatDecimals(1234567.123456, 12, "0.000000"), "1234567.1235");
    EXPECT_EQ(FormatDecimals(123456789012.4, 12, "0.000000"), "123456789012");
    EXPECT_EQ(FormatDecimals(100, 10, "#,##0.00"), "    100.00");
}

TEST(CutAtWords, LooksForABlankUpToThePositionBehindTheWidth) {
    EXPECT_EQ(CutAtWords("abcd efgh", 4), (std::vector<std::string>{"abcd", "efgh"}));
    EXPECT_EQ(CutAtWords("abc defgh", 5), (std::vector<std::string>{"abc", "defgh"}));
    EXPECT_EQ(CutAtWords("abc def gh", 8), (std::vector<std::string>{"abc def", "gh"}));
}

TEST(CutAtWords, WithoutABlankItCutsHard) {
    EXPECT_EQ(CutAtWords("abcdefgh", 3), (std::vector<std::string>{"abc", "def", "gh"}));
}

TEST(CutAtWords, CountsCharactersAndNotBytes) {
    EXPECT_EQ(CutAtWords("\u00e4\u00f6\u00fc\u00df", 2),
              (std::vector<std::string>{"\u00e4\u00f6", "\u00fc\u00df"}));
}

TEST(CutAtWords, AnEmptyTextHasNoLine) { EXPECT_TRUE(CutAtWords("", 10).empty()); }

RC_GTEST_PROP(CutAtWords, KeepsEveryLetterAndNoLineIsTooLong, ()) {
    const auto text = *rc::gen::container<std::string>(rc::gen::element('a', 'b', ' '));
    const auto width = *rc::gen::inRange(1, 12);
    std::string letters;
    for (const std::string& line : CutAtWords(text, width)) {
        RC_ASSERT(line.size() <= static_cast<std::size_t>(width));
        letters += Replace(line, " ", "");
    }
    RC_ASSERT(letters == Replace(text, " ", ""));
}

TEST(TextLine, PutsTextsAtTheirColumns) {
    EXPECT_EQ(TextLine().At(1, "ab").At(5, "cd").Text(), "ab  cd");
    EXPECT_EQ(TextLine().At(0, "ab").Text(), "ab");
    EXPECT_EQ(TextLine().At(-3, "ab").Text(), "ab");
}

TEST(TextLine, ATextInTheWayOfBlanksTakesTheirPlace) {
    EXPECT_EQ(TextLine().At(1, "abcd").At(3, "   12").Text(), "abcd 12");
}

TEST(TextLine, ATextInTheWayOfLettersMovesThem) {
    EXPECT_EQ(TextLine().At(1, "abcd").At(3, "ef").Text(), "abcdef");
}

TEST(TextLine, BlanksAreNotWritten) { EXPECT_EQ(TextLine().At(1, "ab").At(9, "   ").Text(), "ab"); }

TEST(TextLine, ColumnsAreCountedInCharacters) {
    EXPECT_EQ(TextLine().At(1, "\u00fc").At(3, "x").Text(), "\u00fc x");
}

TEST(TextLine, AnAmountThatTookItsBlankLeavesOneBehindTheAmountBeforeIt) {
    // "5" stands in column 21 and moves to 20: together they would read 51,234,567,890.
    const auto line =
        TextLine().At(1, "Rent").AmountAt(10, Blanks(11) + "5").AmountAt(22, "1,234,567,890");
    EXPECT_EQ(line.Text(), "Rent" + Blanks(15) + "5 1,234,567,890");
}

TEST(TextLine, ARowOfAmountsThatAllTookTheirBlankIsStillReadable) {
    TextLine line;
    line.At(1, "Salaries");
    std::string amounts;
    for (int k = 0; k < 8; ++k) {
        line.AmountAt(63 + 13 * k, "1,234,567,890");
        amounts += " 1,234,567,890";
    }
    EXPECT_EQ(line.Text(), "Salaries" + Blanks(62 + 8 * 13 - 8 - amounts.size()) + amounts);
}

TEST(TextLine, AnAmountThatFitsMovesNothing) {
    EXPECT_EQ(TextLine().At(1, "Rent").AmountAt(6, "     5").AmountAt(13, "     7").Text(),
              "Rent" + Blanks(6) + "5" + Blanks(6) + "7");
}

TEST(TextLine, WithoutRoomAnAmountStandsWhereItDoes) {
    EXPECT_EQ(TextLine().At(1, "abc").AmountAt(4, "1,234").Text(), "abc1,234");
}

RC_GTEST_PROP(TextLine, AnAmountInAFieldStandsAsItsTextDoes, ()) {
    TextLine one;
    TextLine other;
    one.At(1, "Rent");
    other.At(1, "Rent");
    for (int k = 0, tab = *rc::gen::inRange(1, 9); k < 9; ++k, tab += 13) {
        const int digits = *rc::gen::inRange(0, 18);
        double amount = *rc::gen::inRange(-9999, 9999) * std::pow(10.0, digits - 4);
        if (*rc::gen::inRange(0, 3) > 0) amount = std::trunc(amount);
        const std::string text = FormatAmount(amount, 12);
        one.AmountAt(tab + 12 - static_cast<int>(text.size()), text);
        other.AmountIn(tab, 12, amount);
        RC_ASSERT(other.Text() == one.Text());
    }
}

TEST(TextLine, AnAmountInAFieldStandsAtItsRightEnd) {
    EXPECT_EQ(TextLine().At(1, "Rent").AmountIn(6, 12, -1234567).AmountIn(19, 12, 0).Text(),
              "Rent" + Blanks(3) + "-1,234,567" + Blanks(12) + "0");
    EXPECT_EQ(TextLine().At(1, "abcdef").AmountIn(4, 5, 12345).Text(), "abcdef12,345");
}

}  // namespace
}  // namespace zolmara::test
