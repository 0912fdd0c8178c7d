#include <gtest/gtest.h>

#include "ui/worksheets/Headings.h"

namespace zolmara::ui {
namespace {

/// Each character is 10 wide, so that a word of n letters takes 10.5 n.
std::string Folded(const char* title, double width, const char* number = "") {
    return Heading(number, title, width,
                   [](const QString& text) { return 10.0 * static_cast<double>(text.size()); })
        .toStdString();
}

TEST(Headings, ALineBreaksWhereTheNextWordWouldPassTheWidth) {
    EXPECT_EQ(Folded("Net Allowable Expenses", 1000), "Net Allowable Expenses");
    EXPECT_EQ(Folded("Net Allowable Expenses", 137), "Net Allowable\nExpenses");
    EXPECT_EQ(Folded("Net Allowable Expenses", 136), "Net\nAllowable\nExpenses");
}

TEST(Headings, ADoubleBlankIsASingleOne) { EXPECT_EQ(Folded("A-7  Part", 1000), "A-7 Part"); }

TEST(Headings, TheNumberStandsOnItsOwnFirstLine) {
    EXPECT_EQ(Folded("Up Amount", 1000, "5"), "5\nUp Amount");
    EXPECT_EQ(Folded("", 1000, "5"), "5");
}

TEST(Headings, AWordWiderThanTheColumnGoesOnBehindItsHyphens) {
    EXPECT_EQ(Folded("Insurance Premiums-Other CRC", 100), "Insurance\nPremiums-\nOther CRC");
    EXPECT_EQ(Folded("Incomprehensibilities", 50), "Incomprehensibilities");
}

TEST(Headings, ABarBeginsANewLine) {
    EXPECT_EQ(Folded("Information|Systems Services", 1000), "Information\nSystems Services");
}

}  // namespace
}  // namespace zolmara::ui
