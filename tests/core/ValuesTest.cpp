#include <gtest/gtest.h>

#include <set>

#include "core/Globals.h"
#include "support/ScriptedHost.h"

namespace zolmara {
namespace {

TEST(Variant, TellsNullFromZeroAndEmpty) {
    EXPECT_NE(Variant(), Variant(0));
    EXPECT_NE(Variant(), Variant(""));
    EXPECT_EQ(Variant(), Variant(nullptr));
}

TEST(Variant, ComparesNumbersByValue) {
    EXPECT_EQ(Variant(1), Variant(1.0));
    EXPECT_EQ(Variant(Currency(4.01)), Variant(4.01));
    EXPECT_NE(Variant(1), Variant("1"));
    EXPECT_NE(Variant(Currency(4.01)), Variant(Currency(4.02)));
}

TEST(NumOr, TakesTheFallbackForWhatIsNotNumeric) {
    EXPECT_EQ(NumOr(12.5), 12.5);
    EXPECT_EQ(NumOr(Currency(4.01)), 4.01);
    EXPECT_EQ(NumOr("(1,234)"), -1234);
    EXPECT_EQ(NumOr({}), 0);
    EXPECT_EQ(NumOr({}, 7), 7);
    EXPECT_EQ(NumOr("abc", 7), 7);
    EXPECT_EQ(NumOr("", 7), 7);
    EXPECT_EQ(NumOr(0, 7), 0);
    EXPECT_EQ(NumOr(DateTime(2023, 1, 1), 7), 7);
}

TEST(CurOr, IsExact) {
    EXPECT_EQ(CurOr("4.01").Units(), 40100);
    EXPECT_EQ(CurOr(4.02 + .01).Units(), 40300);
    EXPECT_EQ(CurOr(12), Currency::FromWhole(12));
    EXPECT_EQ(CurOr({}, Currency::FromWhole(1)), Currency::FromWhole(1));
    EXPECT_EQ(CurOr(1e30, Currency::FromWhole(1)), Currency::FromWhole(1));
}

TEST(StrOr, TakesTheFallbackForNullAlone) {
    EXPECT_EQ(StrOr({}, "none"), "none");
    EXPECT_EQ(StrOr("", "none"), "");
    EXPECT_EQ(StrOr(12.50), "12.5");
    EXPECT_EQ(StrOr({}), "");
}

TEST(NullOr, KeepsWhatIsNotNull) {
    EXPECT_EQ(NullOr(0, 5), Variant(0));
    EXPECT_EQ(NullOr({}, 5), Variant(5));
}

TEST(MaxOf, LetsANullLose) {
    EXPECT_EQ(MaxOf({}, -5), Variant(-5));
    EXPECT_EQ(MaxOf(-5, {}), Variant(-5));
    EXPECT_EQ(MinOf({}, 5), Variant(5));
    EXPECT_TRUE(MaxOf({}, {}).IsNull());
    EXPECT_TRUE(MinOf({}, {}).IsNull());
}

TEST(MaxOf, ComparesByType) {
    EXPECT_EQ(MaxOf(9, "10"), Variant("10"));
    EXPECT_EQ(MinOf(9, "10"), Variant(9));
    EXPECT_EQ(MaxOf(DateTime(2023, 1, 1), DateTime(2022, 1, 1)), Variant(DateTime(2023, 1, 1)));
    EXPECT_EQ(MaxOf("apple", "Banana"), Variant("Banana"));
    EXPECT_EQ(MinOf(Currency(4.01), 4), Variant(4));
}

TEST(Between, IncludesBothBounds) {
    EXPECT_TRUE(Between(1.0, 1.0, 2.99));
    EXPECT_TRUE(Between(2.99, 1.0, 2.99));
    EXPECT_FALSE(Between(3.0, 1.0, 2.99));
    EXPECT_FALSE(Between(0.99, 1.0, 2.99));
}

TEST(Text, IsTheOneTextForm) {
    EXPECT_EQ(Text({}), "");
    EXPECT_EQ(Text(-12), "-12");
    EXPECT_EQ(Text(0.1 + 0.2), "0.3");
    EXPECT_EQ(Text(Currency(4.10)), "4.1");
    EXPECT_EQ(Text(DateTime(2022, 10, 1)), "10/1/2022");
    EXPECT_EQ(Text("x"), "x");
}

TEST(IsBlankValue, IsTrueForBlanksAlone) {
    EXPECT_TRUE(IsBlankValue({}));
    EXPECT_TRUE(IsBlankValue(""));
    EXPECT_TRUE(IsBlankValue("   "));
    EXPECT_FALSE(IsBlankValue(" x "));
    EXPECT_FALSE(IsBlankValue(0));
}

TEST(FirstLetter, IsUpperCase) {
    EXPECT_EQ(FirstLetter("yes"), "Y");
    EXPECT_EQ(FirstLetter("école"), "É");
    EXPECT_EQ(FirstLetter({}), "");
    EXPECT_EQ(FirstLetter(""), "");
}

class ValidDate : public ::testing::Test {
protected:
    ValidDate() { host.Clock = DateTime(2024, 2, 29, 15, 0, 0); }
    test::ScriptedHost host;
};

TEST_F(ValidDate, BeginsIn1966) {
    EXPECT_TRUE(IsValidDate("1/1/1966"));
    EXPECT_FALSE(IsValidDate("12/31/1965"));
}

TEST_F(ValidDate, EndsTwoYearsFromToday) {
    EXPECT_TRUE(IsValidDate("2/28/2026"));
    EXPECT_TRUE(IsValidDate(DateTime(2026, 2, 28, 23, 0, 0)));
    EXPECT_FALSE(IsValidDate("3/1/2026"));
}

TEST_F(ValidDate, IsNoOtherValue) {
    EXPECT_FALSE(IsValidDate({}));
    EXPECT_FALSE(IsValidDate("soon"));
    EXPECT_FALSE(IsValidDate(45000));
}

TEST(StateCodes, AreThoseOfTheForm) {
    EXPECT_EQ(gStateCodes.front().State, "AL");
    EXPECT_EQ(gStateCodes.back().State, "WY");
    std::set<std::string_view> states;
    std::set<std::string_view> prefixes;
    for (const StateCode& code : gStateCodes) {
        states.insert(code.State);
        for (std::size_t at = 0; at < code.Prefixes.size(); at += 3)
            prefixes.insert(code.Prefixes.substr(at, 2));
    }
    EXPECT_EQ(states.size(), 53u);
    EXPECT_EQ(prefixes.size(), 70u);  // 53, and 17 second ones; none stands for two states
    const auto california = std::find_if(gStateCodes.begin(), gStateCodes.end(),
                                         [](const StateCode& c) { return c.State == "CA"; });
    EXPECT_EQ(california->Prefixes, "05 55 75 92");
}

TEST(Version, IsMajorMinorRevision) {
    EXPECT_EQ(std::count(gVersion.begin(), gVersion.end(), '.'), 2);
}

}  // namespace
}  // namespace zolmara
