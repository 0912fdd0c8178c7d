#include "ecr/EcrSupport.h"
#include "ecr/Record.h"

namespace zolmara::test {
namespace {

TEST(Record, ALineWithoutSubscriptHasTwoBlanksBehindIt) {
    EXPECT_EQ(LineField(Currency(4)), "  4  ");
    EXPECT_EQ(LineField(Currency(100)), "100  ");
}

TEST(Record, ASubscriptStandsBehindItsLine) {
    EXPECT_EQ(LineField(Currency(4.01)), "  4 1");
    EXPECT_EQ(LineField(Currency(99.99)), " 9999");
}

// In doubles most subscripts fall short of a whole number of hundredths.
TEST(Record, EverySubscriptOfALineIsFound) {
    for (const int line : {1, 2, 4, 9, 28, 50, 99, 100}) {
        for (int subscript = 1; subscript <= 99; ++subscript) {
            const Currency key = Currency::FromUnits(line * 10000 + subscript * 100);
            EXPECT_EQ(LineField(key),
                      InField(std::to_string(line), -3) + InField(std::to_string(subscript), -2));
        }
    }
}

TEST(Record, LineZeroIsBlankOnlyWhereItIsWanted) {
    EXPECT_EQ(LineField(Currency(0)), "  0  ");
    EXPECT_EQ(LineField(Currency(0), true), "     ");
    EXPECT_EQ(LineField(Currency(0.01), true), "    1");
}

TEST(Record, ALineOverThreeDigitsKeepsItsLastThree) {
    EXPECT_EQ(LineField(Currency(12345.01)), "345 1");
}

TEST(Record, ColumnsHaveTheirSubscriptsToo) {
    EXPECT_EQ(ColumnField(Currency(4.01)), "  4 1");
    EXPECT_EQ(ColumnField(Currency(28)), " 28  ");
    EXPECT_EQ(ColumnField(Currency(0)), "  0  ");
    EXPECT_EQ(ColumnField(8), "  8  ");
}

TEST(Record, EverySubscriptOfAColumnIsFound) {
    for (int subscript = 1; subscript <= 99; ++subscript)
        EXPECT_EQ(ColumnField(Currency::FromUnits(9 * 10000 + subscript * 100)),
                  "  9" + InField(std::to_string(subscript), -2));
}

TEST(Record, PaddingCountsCharacters) {
    EXPECT_EQ(PadText("Zoë", 5), "Zoë  ");
    EXPECT_EQ(PadText("Zoë", 2), "Zo");
    EXPECT_EQ(PadText("", 3), "   ");
}

class RecordFile : public EcrCrf {};

TEST_F(RecordFile, IsInCodePage1252) {
    const Lines lines = Records([](EcrRun& run) {
        run.ECRLine = "Zoë – 日";
        run.WriteRecord();
    });
    EXPECT_EQ(lines, Lines{"Zo\xEB \x96 ?"});
}

TEST_F(RecordFile, ABreakInATextDoesNotBreakTheRecord) {
    const Lines lines = Records([](EcrRun& run) {
        run.ECRLine = "a\r\nb\fc";
        run.WriteRecord();
    });
    EXPECT_EQ(lines, Lines{"a  b c"});
}

}  // namespace
}  // namespace zolmara::test
