#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/DateTime.h"

namespace zolmara {
namespace {

TEST(DateTime, KnowsTheParts) {
    const DateTime at(2023, 9, 30, 13, 5, 9);
    EXPECT_EQ(at.Year(), 2023);
    EXPECT_EQ(at.Month(), 9u);
    EXPECT_EQ(at.Day(), 30u);
    EXPECT_EQ(at.Hour(), 13);
    EXPECT_EQ(at.Minute(), 5);
    EXPECT_EQ(at.Second(), 9);
    EXPECT_EQ(at.WeekDay(), 6u);  // a Saturday
    EXPECT_EQ(at.AtMidnight(), DateTime(2023, 9, 30));
}

TEST(DateTime, CountsDaysBeforeItsEpoch) {
    const DateTime at(1966, 1, 1, 23, 59, 59);
    EXPECT_EQ(at.Day(), 1u);
    EXPECT_EQ(at.Hour(), 23);
    EXPECT_EQ(at.DayNumber(), -1461);
}

TEST(DateTime, AddsYears) {
    EXPECT_EQ(DateTime(2022, 10, 1).AddYears(1), DateTime(2023, 10, 1));
    EXPECT_EQ(DateTime(2024, 2, 29).AddYears(1), DateTime(2025, 2, 28));
    EXPECT_EQ(DateTime(2024, 2, 29).AddYears(4), DateTime(2028, 2, 29));
    EXPECT_EQ(DateTime(2024, 2, 29, 8, 1, 2).AddYears(-1), DateTime(2023, 2, 28, 8, 1, 2));
}

TEST(DateTime, AddsDaysOverTheYear) {
    EXPECT_EQ(DateTime(2023, 12, 31).AddDays(1), DateTime(2024, 1, 1));
    EXPECT_EQ(DateTime(2024, 3, 1).AddDays(-1), DateTime(2024, 2, 29));
}

TEST(DateTime, CountsCalendarDaysBetween) {
    EXPECT_EQ(DaysBetween(DateTime(2022, 10, 1), DateTime(2023, 9, 30)), 364);
    EXPECT_EQ(DaysBetween(DateTime(2023, 1, 1, 23), DateTime(2023, 1, 2, 1)), 1);
    EXPECT_EQ(DaysBetween(DateTime(2023, 1, 2), DateTime(2023, 1, 1)), -1);
}

TEST(StoreDateText, IsTheFormOfTheFile) {
    EXPECT_EQ(StoreDateText(DateTime(2023, 9, 3, 4, 5, 6)), "2023-09-03 04:05:06");
    EXPECT_EQ(ParseStoreDate("2023-09-03 04:05:06"), DateTime(2023, 9, 3, 4, 5, 6));
}

TEST(ParseStoreDate, ReadsNothingElse) {
    for (const char* text : {"", "2023-09-03", "9/3/2023", "2023-13-01 00:00:00",
                             "2023-02-29 00:00:00", "2023-01-01 24:00:00", "2023-01-01T00:00:00",
                             "2023-01-01 00:60:00", "2023-01-01 00:00:00 "}) {
        EXPECT_FALSE(ParseStoreDate(text)) << text;
    }
}

TEST(ParseDate, ReadsMonthDayYear) {
    EXPECT_EQ(ParseDate("10/1/2022"), DateTime(2022, 10, 1));
    EXPECT_EQ(ParseDate(" 09/30/2023 "), DateTime(2023, 9, 30));
    EXPECT_EQ(ParseDate("2023-09-30"), DateTime(2023, 9, 30));
}

TEST(ParseDate, TakesTwoDigitsFrom1930To2029) {
    EXPECT_EQ(ParseDate("1/1/00"), DateTime(2000, 1, 1));
    EXPECT_EQ(ParseDate("1/1/29"), DateTime(2029, 1, 1));
    EXPECT_EQ(ParseDate("1/1/30"), DateTime(1930, 1, 1));
    EXPECT_EQ(ParseDate("1/1/99"), DateTime(1999, 1, 1));
}

TEST(ParseDate, ReadsAMonthByItsName) {
    for (const char* text : {"Oct 1, 2022", "October 1, 2022", "1 October 2022", "oct 1 2022",
                             "1-Oct-2022", "Oct. 1, 22", "OCTOBER 1,2022"}) {
        EXPECT_EQ(ParseDate(text), DateTime(2022, 10, 1)) << text;
    }
    EXPECT_EQ(ParseDate("May 5, 2023"), DateTime(2023, 5, 5));
}

TEST(ParseDate, ReadsATimeOfDayBehindIt) {
    EXPECT_EQ(ParseDate("10/1/2022 13:05"), DateTime(2022, 10, 1, 13, 5));
    EXPECT_EQ(ParseDate("10/1/2022 1:05:09 PM"), DateTime(2022, 10, 1, 13, 5, 9));
    EXPECT_EQ(ParseDate("2022-10-01 12:00 am"), DateTime(2022, 10, 1));
    EXPECT_EQ(ParseDate("2022-10-01 12:00PM"), DateTime(2022, 10, 1, 12));
    EXPECT_EQ(ParseDate("Oct 1, 2022 23:59:59"), DateTime(2022, 10, 1, 23, 59, 59));
}

TEST(ParseDate, RefusesEveryOtherText) {
    for (const char* text : {"",
                             " ",
                             "abc",
                             "44835",
                             "10",
                             "10/1",
                             "10/2022",
                             "13/1/2022",
                             "2/29/2023",
                             "0/1/2022",
                             "1/0/2022",
                             "1/32/2022",
                             "4/31/2023",
                             "1/1/20222",
                             "1/1/022",
                             "1//2022",
                             "1/1/2022x",
                             "1/1/2022/",
                             "2023-9",
                             "2023-02-30",
                             "Foo 1, 2022",
                             "Oc 1, 2022",
                             "Oct 32, 2022",
                             "1/1/2022 25:00",
                             "1/1/2022 13:00 PM",
                             "1/1/2022 0:30 AM",
                             "1/1/2022 1",
                             "1/1/2022 1:",
                             "1/1/2022 1:5:",
                             "1/1/2022 1:60",
                             "1/1/2022 1:00:60",
                             "1/1/2022 1:00 XM",
                             "1.5",
                             "99999999999999999999/1/2022",
                             "-1/1/2022"}) {
        EXPECT_FALSE(ParseDate(text)) << text;
    }
}

TEST(ShortDateText, HasTheTimeWhereItIsNotMidnight) {
    EXPECT_EQ(ShortDateText(DateTime(2022, 10, 1)), "10/1/2022");
    EXPECT_EQ(ShortDateText(DateTime(2023, 9, 3, 13, 5, 9)), "9/3/2023 1:05:09 PM");
    EXPECT_EQ(ShortDateText(DateTime(2023, 9, 3, 0, 5, 9)), "9/3/2023 12:05:09 AM");
    EXPECT_EQ(ShortDateText(DateTime(2023, 9, 3, 12, 0, 0)), "9/3/2023 12:00:00 PM");
}

RC_GTEST_PROP(ParseDate, TakesNoTextForADayThatIsNone, ()) {
    const auto text = *rc::gen::container<std::string>(
        rc::gen::elementOf(std::string("0123456789019912/ //--:, Ocay.MP")));
    const std::optional<DateTime> date = ParseDate(text);
    if (date && date->Year() >= 1000) RC_ASSERT(ParseDate(ShortDateText(*date)) == date);
}

RC_GTEST_PROP(DateTime, ComesBackFromItsTexts, ()) {
    // 1900 to 2100.
    const auto seconds = *rc::gen::inRange<std::int64_t>(-2208988800, 4102444800);
    const DateTime at = DateTime::FromSeconds(seconds);
    RC_ASSERT(ParseStoreDate(StoreDateText(at)) == at);
    RC_ASSERT(ParseDate(ShortDateText(at)) == at);
    RC_ASSERT(DateTime(at.Year(), at.Month(), at.Day(), at.Hour(), at.Minute(), at.Second()) == at);
}

}  // namespace
}  // namespace zolmara
