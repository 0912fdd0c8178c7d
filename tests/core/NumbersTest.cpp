#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "core/Globals.h"
#include "core/LeadingNumber.h"

namespace zolmara {
namespace {

TEST(ParseNumber, ReadsPlainNumbers) {
    EXPECT_EQ(ParseNumber("0"), 0);
    EXPECT_EQ(ParseNumber("1234.5"), 1234.5);
    EXPECT_EQ(ParseNumber(".5"), 0.5);
    EXPECT_EQ(ParseNumber("5."), 5);
    EXPECT_EQ(ParseNumber("007"), 7);
}

TEST(ParseNumber, ReadsWhatIsWrittenAroundANumber) {
    EXPECT_EQ(ParseNumber("  12  "), 12);
    EXPECT_EQ(ParseNumber("-12"), -12);
    EXPECT_EQ(ParseNumber("+12"), 12);
    EXPECT_EQ(ParseNumber("(1,234.50)"), -1234.5);
    EXPECT_EQ(ParseNumber("( 12 )"), -12);
    EXPECT_EQ(ParseNumber("$1,234,567"), 1234567);
    EXPECT_EQ(ParseNumber("-$12"), -12);
    EXPECT_EQ(ParseNumber("($12)"), -12);
    EXPECT_EQ(ParseNumber("$(12)"), -12);
    EXPECT_EQ(ParseNumber("$-12.5"), -12.5);
}

TEST(ParseNumber, ReadsAnExponent) {
    EXPECT_EQ(ParseNumber("1e3"), 1000);
    EXPECT_EQ(ParseNumber("-1.5E+3"), -1500);
    EXPECT_EQ(ParseNumber("25e-1"), 2.5);
    EXPECT_EQ(ParseNumber("1,000e3"), 1000000);
}

TEST(ParseNumber, RefusesEveryOtherText) {
    for (const char* text :
         {"",     " ",         "abc",   "12a",    "1 2",      "1.2.3",     "--1",
          "-",    "+",         ".",     "$",      "()",       "(",         "(5",
          "5)",   "(-5)",      "-(5)",  "e5",     "1e",       "1e+",       "1e1.5",
          "0x10", "&H10",      "NaN",   "nan",    "inf",      "-inf",      "Infinity",
          "1,2",  "12,34",     ",123",  "1,,234", "1234,567", "1,234.5,6", "1.234,5",
          "5%",   "10/1/2022", "1e999", "-1e999", "$$5",      "\t5"}) {
        EXPECT_FALSE(ParseNumber(text)) << text;
    }
}

TEST(Val, ReadsTheNumberAtTheStart) {
    EXPECT_EQ(Val("4.01"), 4.01);
    EXPECT_EQ(Val("12 Main Street"), 12);
    EXPECT_EQ(Val("1 2 3"), 1);
    EXPECT_EQ(Val("  12"), 12);
    EXPECT_EQ(Val("- 5"), 0);
    EXPECT_EQ(Val("\t5"), 0);
    EXPECT_EQ(Val("-7x"), -7);
    EXPECT_EQ(Val("+7"), 7);
    EXPECT_EQ(Val(".5."), 0.5);
    EXPECT_EQ(Val("1e2"), 100);
}

TEST(LeadingNumber, IsNothingForANumberThatIsTooLarge) {
    EXPECT_FALSE(LeadingNumber("1e400"));
    EXPECT_FALSE(LeadingNumber(" " + std::string(400, '9') + " lines"));
    EXPECT_EQ(LeadingNumber("x"), 0);
    EXPECT_EQ(LeadingNumber(" 4.01 x"), 4.01);
    EXPECT_EQ(Val("1e400"), 0);
}

TEST(Val, IsZeroWithoutANumber) {
    for (const char* text : {"", "  ", "abc", "-", ".", "+-5", "-inf", "nan", "$5", "(5)", "1e999"})
        EXPECT_EQ(Val(text), 0) << text;
}

TEST(NumberText, IsPlainDecimal) {
    EXPECT_EQ(NumberText(0.0), "0");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(1234567.0), "1234567");
    EXPECT_EQ(NumberText(-12.5), "-12.5");
    EXPECT_EQ(NumberText(0.05), "0.05");
    EXPECT_EQ(NumberText(-0.333333), "-0.333333");
    EXPECT_EQ(NumberText(100.10), "100.1");
}

TEST(NumberText, HasFifteenDigitsAtMost) {
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(NumberText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(NumberText(2.0 / 3), "0.666666666666667");
    EXPECT_EQ(NumberText(123456789012345.6), "123456789012346");
    EXPECT_EQ(NumberText(1234567890123456.0), "1234567890123460");
    EXPECT_EQ(NumberText(999999999999999.0), "999999999999999");
    EXPECT_EQ(NumberText(9999999999999999.0), "10000000000000000");
}

TEST(NumberText, NeverHasAnExponent) {
    EXPECT_EQ(NumberText(1e20), "100000000000000000000");
    EXPECT_EQ(NumberText(-1.5e16), "-15000000000000000");
    EXPECT_EQ(NumberText(1e-10), "0.0000000001");
    EXPECT_EQ(NumberText(-1.25e-7), "-0.000000125");
    EXPECT_EQ(NumberText(1e300).size(), 301u);
}

TEST(NumberText, ShowsALineWithoutTrailingZeros) {
    EXPECT_EQ(NumberText(Currency(4.01)), "4.01");
    EXPECT_EQ(NumberText(Currency(4.1)), "4.1");
    EXPECT_EQ(NumberText(Currency::FromWhole(100)), "100");
    EXPECT_EQ(NumberText(Currency(-0.5)), "-0.5");
    EXPECT_EQ(NumberText(Currency()), "0");
    EXPECT_EQ(NumberText(Currency::FromUnits(1)), "0.0001");
}

TEST(ThroughText, DropsWhatTheTextDoesNotShow) {
    EXPECT_EQ(ThroughText(0.1 + 0.2), 0.3);
    EXPECT_EQ(ThroughText(1.0 / 3), 0.333333333333333);
    EXPECT_EQ(ThroughText(1e20), 1e20);
    EXPECT_FALSE(std::signbit(ThroughText(-0.0)));
    EXPECT_TRUE(std::isinf(ThroughText(std::numeric_limits<double>::infinity())));
}

RC_GTEST_PROP(NumberText, ReadsBackAsThroughText, (double value)) {
    RC_PRE(std::isfinite(value));
    RC_ASSERT(ParseNumber(NumberText(value)) == ThroughText(value));
}

RC_GTEST_PROP(NumberText, OfCentsAndMillionthsReadsBackExactly, ()) {
    const auto parts = *rc::gen::inRange<std::int64_t>(-999999999999, 999999999999);
    const double scale = *rc::gen::element(1.0, 100.0, 1e6, 1e9);
    const double value = static_cast<double>(parts) / scale;
    RC_ASSERT(ThroughText(value) == value);
    RC_ASSERT(ParseNumber(NumberText(value)) == value);
}

RC_GTEST_PROP(ParseNumber, GivesOnlyWhatADoubleHolds, ()) {
    const auto text = *rc::gen::container<std::string>(
        rc::gen::elementOf(std::string("0123456789.,.+-eE$() nainf")));
    const std::optional<double> value = ParseNumber(text);
    if (value) RC_ASSERT(std::isfinite(*value));
    RC_ASSERT(std::isfinite(Val(text)));
}

RC_GTEST_PROP(ParseNumber, ReadsWhatFormatWrites, ()) {
    const auto cents = *rc::gen::inRange<std::int64_t>(-99999999999, 99999999999);
    const double value = static_cast<double>(cents) / 100;
    RC_ASSERT(ParseNumber(FormatNumber(value, "$#,##0.00;($#,##0.00)")) == value);
}

}  // namespace
}  // namespace zolmara
