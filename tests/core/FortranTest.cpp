#include <gtest/gtest.h>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "support/ScriptedHost.h"

namespace zolmara {
namespace {

std::string Field(const Variant& value, std::string_view format, std::string_view fill = " ",
                  bool blankZero = false) {
    return Fortran(value, format, fill, blankZero);
}

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

// --- Null and kinds ------------------------------------------------------------------------

TEST(Fortran, NullGivesTheWidthInFillCharactersUnderEveryKind) {
    for (const char* kind : {"I", "M", "F", "C", "D", "J", "Z", "X"}) {
        EXPECT_EQ(Field(Variant(), std::string(kind) + "7"), Blanks(7)) << kind;
        EXPECT_EQ(Field(Variant(), std::string(kind) + "7", "0"), "0000000") << kind;
    }
}

TEST(Fortran, NullUnderKindJIsBlankAndNotZeros) { EXPECT_EQ(Field(Variant(), "J7"), Blanks(7)); }

TEST(Fortran, WidthOfANullIsCutAtThePoint) { EXPECT_EQ(Field(Variant(), "F16.6"), Blanks(16)); }

TEST(Fortran, KindIsReadInEitherCase) {
    EXPECT_EQ(Field(5, "i3"), "  5");
    EXPECT_EQ(Field("ab", "c4"), "AB  ");
    EXPECT_EQ(Field(1.5, "f6.2"), "  1.50");
}

TEST(Fortran, UnknownKindGivesAnEmptyText) {
    EXPECT_EQ(Field(5, "X9"), "");
    EXPECT_EQ(Field(5, ""), "");
}

// --- I -------------------------------------------------------------------------------------

TEST(Fortran, WholeNumbersStandAtTheRight) {
    EXPECT_EQ(Field(5, "I3"), "  5");
    EXPECT_EQ(Field(0, "I3"), "  0");
    EXPECT_EQ(Field(1000, "I16"), Blanks(12) + "1000");
    EXPECT_EQ(Field(Currency(4.01), "I3"), "  4");
}

TEST(Fortran, WholeNumbersAreCutTowardZeroAndNotRounded) {
    EXPECT_EQ(Field(12.99, "I4"), "  12");
    EXPECT_EQ(Field(-12.99, "I4"), " -12");
}

TEST(Fortran, ANumberThatIsCutToZeroHasNoSign) { EXPECT_EQ(Field(-0.99, "I4"), "   0"); }

TEST(Fortran, ANumberIsCutByItsTextOfFifteenDigits) {
    EXPECT_EQ(Field(0.9999999999999999, "I3"), "  1");
    EXPECT_EQ(Field(0.99999999999999, "I3"), "  0");
    EXPECT_EQ(Field(-7.9999999999999996, "I3"), " -8");
    EXPECT_EQ(Field(999999999999999.0, "I16"), " 999999999999999");
    EXPECT_EQ(Field(1234567890123456.0, "I16"), "1234567890123460");
    EXPECT_EQ(Field(-0.0, "I3"), "  0");
}

TEST(Fortran, AWholeNumberTooWideLosesItsLeftSide) { EXPECT_EQ(Field(1234567, "I3"), "567"); }

TEST(Fortran, TextIsScannedForANumberFromTheLeft) {
    EXPECT_EQ(Field("abc", "I16"), Blanks(15) + "0");
    EXPECT_EQ(Field("  12abc", "I4"), "  12");
    EXPECT_EQ(Field("", "I2"), " 0");
    EXPECT_EQ(Field("1 2", "I4"), "   1");
    EXPECT_EQ(Field("123456", "I6", "0"), "123456");
}

TEST(Fortran, ZeroOfKindIIsFilledWhenZerosAreBlank) {
    EXPECT_EQ(Field(0, "I2", " ", true), "  ");
    EXPECT_EQ(Field(0, "I2", "0", true), "00");
    EXPECT_EQ(Field(0.4, "I2", " ", true), "  ");
    EXPECT_EQ(Field(1, "I2", " ", true), " 1");
}

TEST(Fortran, ANumberWhoseLastDigitsAreZeroCountsAsZeroInItsField) {
    EXPECT_EQ(Field(5000, "I3", " ", true), "   ");
}

TEST(Fortran, AMinusStandsDirectlyBeforeTheDigits) {
    EXPECT_EQ(Field(-5, "I4", "0"), "00-5");
    EXPECT_EQ(Field(-5, "I4"), "  -5");
}

TEST(Fortran, WideNumbersArePlain) {
    EXPECT_EQ(Field(123456789012.0, "I16"), "    123456789012");
    EXPECT_EQ(Field(1e15, "I16"), "1000000000000000");
}

// --- M -------------------------------------------------------------------------------------

TEST(Fortran, KindMHasAtLeastFourDigitsAndBlanksAhead) {
    EXPECT_EQ(Field(5, "M6"), "  0005");
    EXPECT_EQ(Field(12345.9, "M6", "0"), " 12345");
    EXPECT_EQ(Field(0, "M6", "0", true), "  0000");
    EXPECT_EQ(Field(-7, "M6"), " -0007");
    EXPECT_EQ(Field(1234567, "M6"), "234567");
}

// --- F -------------------------------------------------------------------------------------

TEST(Fortran, DecimalsAreRoundedHalfAwayFromZero) {
    EXPECT_EQ(Field(1234.5, "F16.2"), Blanks(9) + "1234.50");
    EXPECT_EQ(Field(1.005, "F6.2"), "  1.01");
    EXPECT_EQ(Field(-1.005, "F6.2"), " -1.01");
    EXPECT_EQ(Field(0.125, "F6.2"), "  0.13");
    EXPECT_EQ(Field(1.218085, "F16.6"), Blanks(8) + "1.218085");
    EXPECT_EQ(Field(0.0000005, "F16.6"), Blanks(8) + "0.000001");
}

TEST(Fortran, DecimalsHaveNoThousandsSeparators) {
    EXPECT_EQ(Field(1234567.8, "F16.2"), Blanks(6) + "1234567.80");
}

TEST(Fortran, ADecimalTooWideLosesItsLeftSide) { EXPECT_EQ(Field(12345.67, "F5.2"), "45.67"); }

TEST(Fortran, ZeroOfKindFStaysAsDigitsWithTheFillZero) {
    EXPECT_EQ(Field("0", "F16.2", "0", true), "0000000000000.00");
    EXPECT_EQ(Field("0", "F16.2", " ", true), Blanks(16));
    EXPECT_EQ(Field(0, "F16.2"), Blanks(12) + "0.00");
    EXPECT_EQ(Field(0.004, "F16.2", " ", true), Blanks(16));
}

TEST(Fortran, KindFWithoutAPointIsAWholeNumberInItsMask) {
    EXPECT_EQ(Field(12.5, "F6"), "    13");
    EXPECT_EQ(Field(12.4, "F6", "0"), "000012");
    EXPECT_EQ(Field(1234567, "F6", "0"), "234567");
    EXPECT_EQ(Field(0, "F6", " ", true), Blanks(6));
    EXPECT_EQ(Field(0, "F6", "0", true), "000000");
}

// --- C -------------------------------------------------------------------------------------

TEST(Fortran, TextIsInCapitalsAtTheLeft) {
    EXPECT_EQ(Field("crc-b&f", "C36"), "CRC-B&F" + Blanks(29));
    EXPECT_EQ(Field("ab", "C4", "0"), "AB00");
    EXPECT_EQ(Field("", "C3"), "   ");
}

TEST(Fortran, TextTooLongIsCutAtTheRight) { EXPECT_EQ(Field("abcdef", "C5"), "ABCDE"); }

TEST(Fortran, ALineBreakBecomesOneBlank) {
    EXPECT_EQ(Field("AB\r\nCD", "C6"), "AB CD ");
    EXPECT_EQ(Field("A\r\rB\nC", "C8"), "A  BC   ");
}

TEST(Fortran, TextIsMeasuredInCharacters) {
    EXPECT_EQ(Field("caf\xC3\xA9 au lait", "C5"), "CAF\xC3\x89 ");
    EXPECT_EQ(Field("5 \xC2\xB5g", "C5"), "5 \xC2\xB5G ");
}

TEST(Fortran, KindCRewritesTheCallersValueByItsText) {
    Variant number = 4.5;
    EXPECT_EQ(Fortran(number, "C6", " ", false), "4.5   ");
    EXPECT_EQ(number, Variant("4.5"));
    Variant null;
    EXPECT_EQ(Fortran(null, "C2", " ", false), "  ");
    EXPECT_TRUE(null.IsNull());
}

TEST(Fortran, OtherKindsLeaveTheCallersValue) {
    Variant number = 4.5;
    EXPECT_EQ(Fortran(number, "I3", " ", false), "  4");
    EXPECT_EQ(number, Variant(4.5));
}

// --- Dates ---------------------------------------------------------------------------------

class FortranDates : public ::testing::Test {
protected:
    test::ScriptedHost host;  // its clock stands at 2/1/2024
};

TEST_F(FortranDates, KindDHasTheLengthOfItsMask) {
    EXPECT_EQ(Field(DateTime(2023, 1, 5), "D10"), "01/05/2023");
    EXPECT_EQ(Field("2023-01-05", "D4"), "01/05/2023");
    EXPECT_EQ(Field(DateTime(1850, 12, 31), "D10"), "12/31/1850");
}

TEST_F(FortranDates, KindDOfANumberGoesBackToTheYear100) {
    EXPECT_EQ(Field(0, "D10"), "12/30/1899");
    EXPECT_EQ(Field(-1.25, "D10"), "12/29/1899");
    EXPECT_EQ(Field(-657434, "D10"), "01/01/0100");
    EXPECT_EQ(Field(-657435, "D10"), "-657435");
}

TEST_F(FortranDates, KindDShowsWhatIsNoDateAsTheMaskDoes) {
    EXPECT_EQ(Field("unknown", "D10"), "unknown");
    EXPECT_EQ(Field(45000, "D10"), "03/15/2023");
}

TEST_F(FortranDates, JulianDates) {
    EXPECT_EQ(Field(DateTime(2023, 12, 31), "J7"), "2023365");
    EXPECT_EQ(Field(DateTime(2024, 3, 15), "J7"), "2024075");
    EXPECT_EQ(Field(DateTime(2024, 2, 29), "J7"), "2024060");
    EXPECT_EQ(Field("1/1/2023", "J7"), "2023001");
    EXPECT_EQ(Field("1/1/2023", "J3"), "2023001");
}

TEST_F(FortranDates, ADateThatIsNoneIsZerosUnderKindJ) {
    EXPECT_EQ(Field("2/30/2023", "J7"), "0000000");
    EXPECT_EQ(Field("", "J7"), "0000000");
    EXPECT_EQ(Field("12/31/1965", "J7"), "0000000");
    EXPECT_EQ(Field("1/1/1966", "J7"), "1966001");
}

TEST_F(FortranDates, ADateMayLieTwoYearsAhead) {
    EXPECT_EQ(Field("2/1/2026", "J7"), "2026032");
    EXPECT_EQ(Field("2/2/2026", "J7"), "0000000");
}

// --- Z -------------------------------------------------------------------------------------

TEST(Fortran, ZipCodes) {
    EXPECT_EQ(Field("12345", "Z5"), "12345");
    EXPECT_EQ(Field("12345-6789", "Z5"), "12345");
    EXPECT_EQ(Field("12345-6789", "Z10"), "12345-6789");
    EXPECT_EQ(Field("123456", "Z10"), "12345-6000");
    EXPECT_EQ(Field("123", "Z10"), "00123");
}

TEST(Fortran, BadZipCodes) {
    EXPECT_EQ(Field("ABCDE", "Z5"), "00000");
    EXPECT_EQ(Field("ABCDE", "Z10"), "00000-0000");
    EXPECT_EQ(Field("", "Z10"), "00000-0000");
    EXPECT_EQ(Field("12345", "Z7"), "00000-0");
}

// --- Whole numbers added to a line ---------------------------------------------------------

TEST(AppendWhole, IsWhatTheFormatGivesWhateverTheNumber) {
    for (const double number : {0.0, -0.0, 7.0, -7.0, 12.9, -12.9, 2.9999999999999996, 999999999.0,
                                123456789012345.0, -123456789012345.0, 1e15, 1.5e18, -3e20}) {
        for (const std::size_t width : {1U, 3U, 16U, 20U}) {
            std::string line = "head";
            AppendWhole(line, number, width);
            EXPECT_EQ(line, "head" + Field(number, "I" + std::to_string(width)))
                << number << " " << width;
        }
    }
}

TEST(AppendWhole, StandsAtTheRightAndLosesItsLeftSide) {
    std::string line = "x";
    AppendWhole(line, -42, 6);
    AppendWhole(line, 12345, 3);
    EXPECT_EQ(line, "x   -42345");
}

}  // namespace
}  // namespace zolmara
