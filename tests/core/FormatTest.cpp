#include <gtest/gtest.h>

#include "core/Globals.h"

namespace zolmara {
namespace {

TEST(FormatNumber, ShowsAmounts) {
    EXPECT_EQ(FormatNumber(1234567, "#,##0"), "1,234,567");
    EXPECT_EQ(FormatNumber(-1234.5, "#,##0;(#,##0)"), "(1,235)");
    EXPECT_EQ(FormatNumber(1234.5, "#,##0;(#,##0)"), "1,235");
    EXPECT_EQ(FormatNumber(-5, "#,##0"), "-5");
    EXPECT_EQ(FormatNumber(999, "###,###,##0;(###,###,##0)"), "999");
    EXPECT_EQ(FormatNumber(-1000, "#,###,###,##0;(#,###,###,##0)"), "(1,000)");
}

TEST(FormatNumber, ShowsLines) {
    EXPECT_EQ(FormatNumber(Currency(4.01), "##0.00"), "4.01");
    EXPECT_EQ(FormatNumber(12, "0.00"), "12.00");
    EXPECT_EQ(FormatNumber(0.5, "###.00"), ".50");
    EXPECT_EQ(FormatNumber(4, "0.00 "), "4.00 ");
    EXPECT_EQ(FormatNumber(4, "0    "), "4    ");
    EXPECT_EQ(FormatNumber(7, "000"), "007");
}

TEST(FormatNumber, ShowsRatios) {
    EXPECT_EQ(FormatNumber(1.0 / 3, "0.000000"), "0.333333");
    EXPECT_EQ(FormatNumber(12.5, "0.####"), "12.5");
    EXPECT_EQ(FormatNumber(0.256, "0.0%"), "25.6%");
}

TEST(FormatNumber, TakesAHalfAwayFromZeroInTheTextForm) {
    EXPECT_EQ(FormatNumber(0.5, "0"), "1");
    EXPECT_EQ(FormatNumber(2.5, "0"), "3");
    EXPECT_EQ(FormatNumber(-2.5, "0"), "-3");
    EXPECT_EQ(FormatNumber(1.005, "0.00"), "1.01");
    EXPECT_EQ(FormatNumber(9.995, "0.00"), "10.00");
    EXPECT_EQ(FormatNumber(999.5, "#,##0"), "1,000");
    EXPECT_EQ(FormatNumber(0.4999, "0"), "0");
}

TEST(FormatNumber, HasNoSignOnZero) {
    EXPECT_EQ(FormatNumber(0, "#,##0;(#,##0)"), "0");
    EXPECT_EQ(FormatNumber(-0.4, "#,##0;(#,##0)"), "0");
    EXPECT_EQ(FormatNumber(-0.4, "0"), "0");
    EXPECT_EQ(FormatNumber(0, "#"), "");
    EXPECT_EQ(FormatNumber(0, "0;(0);none"), "none");
}

TEST(FormatNumber, PassesNullAndText) {
    EXPECT_EQ(FormatNumber({}, "#,##0"), "");
    EXPECT_EQ(FormatNumber("n/a", "#,##0"), "n/a");
    EXPECT_EQ(FormatNumber("1234", "#,##0"), "1,234");
}

TEST(FormatNumber, ShowsLargeAmountsInFull) {
    EXPECT_EQ(FormatNumber(1e15, "#,##0"), "1,000,000,000,000,000");
    EXPECT_EQ(FormatNumber(1e-9, "0.00"), "0.00");
}

TEST(FormatDate, ShowsTheParts) {
    const DateTime at(2023, 9, 3, 13, 5, 9);
    EXPECT_EQ(FormatDate(at, "m/d/yyyy"), "9/3/2023");
    EXPECT_EQ(FormatDate(at, "mm/dd/yyyy"), "09/03/2023");
    EXPECT_EQ(FormatDate(DateTime(123, 9, 3), "mm/dd/yyyy"), "09/03/0123");
    EXPECT_EQ(FormatDate(at, "mm/dd/yy"), "09/03/23");
    EXPECT_EQ(FormatDate(at, "mmmm d, yyyy"), "September 3, 2023");
    EXPECT_EQ(FormatDate(at, "dddd, mmmm d, yyyy"), "Sunday, September 3, 2023");
    EXPECT_EQ(FormatDate(at, "mmm ddd"), "Sep Sun");
    EXPECT_EQ(FormatDate(at, "hh:nn:ss"), "13:05:09");
    EXPECT_EQ(FormatDate(at, "h:n:s AM/PM"), "1:5:9 PM");
    EXPECT_EQ(FormatDate(at, "hh:mm"), "13:05");
    EXPECT_EQ(FormatDate(at, "yyyymmdd"), "20230903");
}

TEST(FormatDate, KnowsNames) {
    const DateTime at(2023, 9, 3, 0, 5, 9);
    EXPECT_EQ(FormatDate(at, "Short Date"), "9/3/2023");
    EXPECT_EQ(FormatDate(at, "Long Date"), "Sunday, September 3, 2023");
    EXPECT_EQ(FormatDate(at, "medium time"), "12:05 AM");
    EXPECT_EQ(FormatDate(DateTime(2023, 9, 3, 12, 0, 0), "Medium Time"), "12:00 PM");
    EXPECT_EQ(FormatDate(DateTime(2023, 9, 3, 17, 30, 0), "Medium Time"), "05:30 PM");
}

TEST(Format, GoesByTheValue) {
    EXPECT_EQ(Format(Currency(4.01), "0.00"), "4.01");
    EXPECT_EQ(Format(DateTime(2023, 9, 3), "mm/dd/yyyy"), "09/03/2023");
    EXPECT_EQ(Format("9/3/2023", "mm/dd/yyyy"), "09/03/2023");
    EXPECT_EQ(Format("soon", "mm/dd/yyyy"), "soon");
    EXPECT_EQ(Format({}, "0.00"), "");
    EXPECT_EQ(Format(12.5, ""), "12.5");
}

}  // namespace
}  // namespace zolmara
