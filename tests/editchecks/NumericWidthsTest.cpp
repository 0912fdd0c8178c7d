#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class NumericWidths : public CheckedCrf {
protected:
    static Findings With(std::string_view item, double line, std::string_view field,
                         const Variant& value) {
        SetCell(item, line, field, value);
        const Findings found = Found(CheckNumericWidths);
        SetCell(item, line, field, Variant());
        return found;
    }
    static Findings TooWide(const std::string& where, const std::string& shown) {
        return {"NF | 1090 | Worksheet " + where + " Numeric fields cannot exceed 11 positions (" +
                shown + ")."};
    }
    static Findings MultiplierTooWide(const std::string& where, const std::string& shown) {
        return {"NF | 1090 | Worksheet " + where +
                " Unit cost multiplier fields may not exceed 13 positions (" + shown + ")."};
    }
};

TEST_F(NumericWidths, ANewFileHasNoNumberTooWide) {
    EXPECT_EQ(Found(CheckNumericWidths), Findings{});
}

TEST_F(NumericWidths, AnAmountHasElevenPositions) {
    EXPECT_EQ(With("A", 8, "Col_1", 99999999999.0), Findings{});
    EXPECT_EQ(With("A", 8, "Col_1", 123456789012.0),
              TooWide("A, Line 8, Column Col_1", "123456789012"));
    EXPECT_EQ(With("A", 8, "Col_1", -9999999999.0), Findings{});
    EXPECT_EQ(With("A", 8, "Col_1", -99999999999.0),
              TooWide("A, Line 8, Column Col_1", "-99999999999"));
}

TEST_F(NumericWidths, TheDecimalsOfAnAmountTakeNoPositions) {
    EXPECT_EQ(With("A", 8, "Col_1", 99999999999.99), Findings{});
    EXPECT_EQ(With("A", 8, "Col_1", -9999999999.99), Findings{});
}

TEST_F(NumericWidths, ANumberWiderThanItsFieldIsToldAsItWouldBeWritten) {
    EXPECT_EQ(With("A", 8, "Col_1", 12345678901234567e3),
              TooWide("A, Line 8, Column Col_1", "5678901234600000"));
}

TEST_F(NumericWidths, SignPointAndCentsOfACurrencyCount) {
    AddRow("S2p3", 1);
    EXPECT_EQ(With("S2p3", 1, "Col_6", Currency(-1234567890.12)),
              TooWide("S-2  Part-3, Line 1, Column Col_6", "-1234567890.12"));
    EXPECT_EQ(With("S2p3", 1, "Col_6", Currency(99999999.99)), Findings{});
    EXPECT_EQ(With("S2p3", 1, "Col_6", Currency(100000000)),
              TooWide("S-2  Part-3, Line 1, Column Col_6", "100000000.00"));
    EXPECT_EQ(With("S2p3", 1, "Col_6", Currency(-9999999.99)), Findings{});
    EXPECT_EQ(With("S2p3", 1, "Col_6", Currency(-10000000)),
              TooWide("S-2  Part-3, Line 1, Column Col_6", "-10000000.00"));
}

TEST_F(NumericWidths, RatiosOfThePoolsHaveThirteenPositions) {
    EXPECT_EQ(With("E", 1, "Col_2", 999999.999999), Findings{});
    EXPECT_EQ(With("E", 1, "Col_2", 1000000.5),
              MultiplierTooWide("E, Line 1, Column Col_2", "1000000.500000"));
    EXPECT_EQ(With("E1p1", 51, "Col_2", -100000.25),
              MultiplierTooWide("E-1  Part-1, Line 51, Column Col_2", "-100000.250000"));
    EXPECT_EQ(With("E", 1, "Col_1", 1000000.5), Findings{});  // a statistic, not a ratio
}

TEST_F(NumericWidths, ARowIsOfMultipliersByItsDescription) {
    AddRow("D1p1", 1, {{"Description", "Unit Cost Multiplier"}});
    AddRow("D1p1", 2, {{"Description", "An RCC row"}});
    AddRow("D1p1", 3, {{"Description", "An rcc row"}});
    EXPECT_EQ(With("D1p1", 1, "CC_800", 1000000.5),
              MultiplierTooWide("D-1  Part-1, Line 1, Column CC_800", "1000000.500000"));
    EXPECT_EQ(With("D1p1", 2, "CC_800", 1000000.5).size(), 1u);
    EXPECT_EQ(With("D1p1", 3, "CC_800", 1000000.5), Findings{});
}

TEST_F(NumericWidths, MultipliersOfD1PartIIIHaveFourteenPositions) {
    AddRow("D1p3", 1, {{"Description", "An RCC row"}});
    EXPECT_EQ(With("D1p3", 1, "CC_800", 1000000.5), Findings{});
    EXPECT_EQ(With("D1p3", 1, "CC_800", 10000000.5),
              MultiplierTooWide("D-1  Part-3, Line 1, Column CC_800", "10000000.500000"));
    EXPECT_EQ(With("D1p3", 54, "CC_800", 10000000.5), Findings{});  // "UCM" is no such description
}

TEST_F(NumericWidths, TextsAreNotMeasured) {
    EXPECT_EQ(With("S1p1", 1, "Col_1", "123456789012345"), Findings{});
}

TEST_F(NumericWidths, FindingsGoByItemThenLineThenField) {
    SetRow("A", 8, {{"Col_1", 1e12}, {"Col_3", 1e12}});
    SetRow("A", 2, {{"Col_1", 1e12}});
    SetRow("A7p1", 1, {{"Col_1", 1e12}});
    SetRow("B1p1", 51, {{"CC_800", 1e12}});
    const std::string shown = "1000000000000";
    Findings expected;
    for (const char* where :
         {"A, Line 2, Column Col_1", "A, Line 8, Column Col_1", "A, Line 8, Column Col_3",
          "A-7  Part-1, Line 1, Column Col_1", "B-1  Part-1, Line 51, Column CC_800"})
        expected.push_back(TooWide(where, shown)[0]);
    EXPECT_EQ(Found(CheckNumericWidths), expected);
}

TEST_F(NumericWidths, AWorksheetWithoutAnIndexOnItsKeyGetsOneForGood) {
    const TableDef former = gDB.Table("G1");
    gDB.DeleteTable("G1");
    gDB.AppendTable({"G1", former.Fields, {}});
    ASSERT_TRUE(gDB.Table("G1").Indexes.empty());
    EXPECT_EQ(Found(CheckNumericWidths), Findings{});
    ASSERT_EQ(gDB.Table("G1").Indexes.size(), 1u);
    EXPECT_EQ(gDB.Table("G1").Indexes[0].Name, "ndxG1");
    EXPECT_EQ(gDB.Table("G1").Indexes[0].Fields, std::vector<std::string>{"LineNum"});
    EXPECT_EQ(Found(CheckNumericWidths), Findings{});
}

}  // namespace
}  // namespace zolmara
