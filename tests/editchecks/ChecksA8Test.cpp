#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksA8 : public CheckedCrf {};

// --- A-8 -----------------------------------------------------------------------------------

TEST_F(ChecksA8, AnAdjustmentHasADescriptionABasisAndALine) {
    const Findings bad{
        "NF | 1080A | Worksheet A-8: line 2 when column 3 is entered, column 1 must have an entry, "
        "column 2 must be either \"A\" or \"B\", and column 5 must have an entry."};
    EXPECT_EQ(Found(CheckA8), Findings{});
    SetRow("A8", 2, {{"Col_2", "a"}, {"Col_3", -50}, {"Col_5", 8}});
    EXPECT_EQ(Found(CheckA8), Findings{});
    SetCell("A8", 2, "Col_2", "C");
    EXPECT_EQ(Found(CheckA8), bad);
    SetRow("A8", 2, {{"Col_2", "B"}, {"Col_5", Variant()}});
    EXPECT_EQ(Found(CheckA8), bad);
    SetRow("A8", 2, {{"Col_5", 8}, {"Col_1", "  "}});
    EXPECT_EQ(Found(CheckA8), bad);
    SetRow("A8", 2, {{"Col_2", Variant()}, {"Col_3", 0}, {"Col_5", Variant()}});
    EXPECT_EQ(Found(CheckA8), Findings{});
}

TEST_F(ChecksA8, RelatedOrganizationsAndTheTotalAreNotAdjustmentsOfTheirOwn) {
    SetCell("A8", 12, "Col_3", 50);
    SetCell("A8", 100, "Col_3", 50);
    EXPECT_EQ(Found(CheckA8), Findings{});
}

// --- Links of A-8-1 ------------------------------------------------------------------------

class ChecksA81 : public ChecksA8 {
protected:
    /// A line of Part I that refers to line 1 of Part II.
    static void AddCost(double line, Fields fields = {}) {
        AddRow("A81p1", line,
               {{"Col_1", 8}, {"Col_3", "Management fee"}, {"Col_4", 1}, {"Col_5", 100}});
        SetRow("A81p1", line, fields);
    }
    /// A line of Part II with every column filled.
    static void AddRelation(double line, const char* symbol, Fields fields = {}) {
        AddRow("A81p2", line,
               {{"Col_1", symbol},
                {"Col_2", "Owner"},
                {"Col_3", "Lee"},
                {"Col_4", 50},
                {"Col_5", "Lee Inc"},
                {"Col_6", 50},
                {"Col_7", "Services"}});
        SetRow("A81p2", line, fields);
    }
    static Findings WithRelation(const char* symbol, Fields fields) {
        gDB.Execute("DELETE * FROM A81p1 WHERE SeqNum<100;");
        gDB.Execute("DELETE * FROM A81p2;");
        AddCost(2, {{"Col_4", 1.01}});
        AddRelation(1.01, symbol, fields);
        return Found(CheckA81p1);
    }
};

TEST_F(ChecksA81, AnAllowableAmountHasItsRelationship) {
    const std::string bad =
        "NF | 1091A | Schedule A-8-1, Part I, line 2.01, column 4 must have a corresponding line "
        "number in Schedule A-8-1, Part II.";
    AddCost(2.01, {{"Col_4", 1.01}});
    EXPECT_EQ(Found(CheckA81p1Links), Findings{bad});
    AddRelation(1.01, "A");
    EXPECT_EQ(Found(CheckA81p1Links), Findings{});
    SetCell("A81p1", 2.01, "Col_4", Variant());
    EXPECT_EQ(Found(CheckA81p1Links), Findings{bad});
    SetCell("A81p1", 2.01, "Col_5", 0);
    EXPECT_EQ(Found(CheckA81p1Links), Findings{});
    SetCell("A81p1", 100, "Col_5", 100);
    EXPECT_EQ(Found(CheckA81p1Links), Findings{});
}

TEST_F(ChecksA81, LinksAreCheckedInYearsThatEndOnOrAfter12312023) {
    gFYEnd = DateTime(2023, 12, 30);
    EXPECT_FALSE(LinksAreChecked());
    gFYEnd = DateTime(2023, 12, 31);
    EXPECT_TRUE(LinksAreChecked());
    gFYEnd = Variant();
    EXPECT_FALSE(LinksAreChecked());
}

// --- A-8-1 Part I --------------------------------------------------------------------------

TEST_F(ChecksA81, AnAmountHasALineAnExpenseAndARelationship) {
    const std::string bad =
        "NF | 1090A | Worksheet A-8-1 Part I: line 2 when column 5 or 6 has an entry, column 1, 3, "
        "and 4 must have entries.";
    AddRelation(1, "A");
    AddCost(2);
    EXPECT_EQ(Found(CheckA81p1), Findings{});
    SetCell("A81p1", 2, "Col_1", Variant());
    EXPECT_EQ(Found(CheckA81p1), Findings{bad});
    SetRow("A81p1", 2, {{"Col_1", 8}, {"Col_3", " "}});
    EXPECT_EQ(Found(CheckA81p1), Findings{bad});
    SetRow("A81p1", 2, {{"Col_5", 0}, {"Col_6", 1}});
    EXPECT_EQ(Found(CheckA81p1), Findings{bad});
    SetRow("A81p1", 2, {{"Col_6", -1}});  // no amount above zero
    EXPECT_EQ(Found(CheckA81p1), Findings{});
}

TEST_F(ChecksA81, ALineWithoutARelationshipIsToldOfIt) {
    AddCost(2, {{"Col_4", 0}});
    EXPECT_EQ(
        Found(CheckA81p1),
        (Findings{"NF | 1090A | Worksheet A-8-1 Part I: line 2 when column 5 or 6 has an entry, "
                  "column 1, 3, and 4 must have entries.",
                  "NF | 1105A | Worksheet A-8-1 Part I: line 2 column 4 must have a corresponding "
                  "record in A81p2."}));
}

TEST_F(ChecksA81, TheTotalOfPartIIsNoLine) {
    SetRow("A81p1", 100, {{"Col_5", 100}, {"Col_6", 100}});
    EXPECT_EQ(Found(CheckA81p1), Findings{});
}

TEST_F(ChecksA81, ARelationshipHasASymbol) {
    EXPECT_EQ(
        WithRelation("", {}),
        Findings{"NF | 1105A | Worksheet A-8-1 Part I: A-8-1 Part II, line 1.01 column 1 must "
                 "be completed."});
}

TEST_F(ChecksA81, SymbolsADAndFNeedNameBusinessAndOwnership) {
    const Findings bad{
        "NF | 1105A | Worksheet A-8-1 Part I: A-8-1 Part II, line 1.01 columns 3, 7, and either 4 "
        "or 6 must be completed."};
    for (const char* symbol : {"A", "D", "F", "a"}) {
        EXPECT_EQ(WithRelation(symbol, {{"Col_5", ""}}), Findings{}) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_4", 0}}), Findings{}) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_6", Variant()}}), Findings{}) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_4", 0}, {"Col_6", Variant()}}), bad) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_4", -1}, {"Col_6", -1}}), bad) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_3", ""}}), bad) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_7", " "}}), bad) << symbol;
    }
}

TEST_F(ChecksA81, SymbolENeedsNameAndBusiness) {
    const Findings bad{
        "NF | 1105A | Worksheet A-8-1 Part I: A-8-1 Part II, line 1.01 columns 3, and 7 must be "
        "completed."};
    EXPECT_EQ(WithRelation("E", {{"Col_4", 0}, {"Col_6", 0}}), Findings{});
    EXPECT_EQ(WithRelation("E", {{"Col_3", ""}}), bad);
    EXPECT_EQ(WithRelation("E", {{"Col_7", ""}}), bad);
}

TEST_F(ChecksA81, SymbolsBAndCNeedOrganizationBusinessAndOwnership) {
    const Findings bad{
        "NF | 1105A | Worksheet A-8-1 Part I: A-8-1 Part II, line 1.01 columns 5, 7, and either 4 "
        "or 6 must be completed."};
    for (const char* symbol : {"B", "C"}) {
        EXPECT_EQ(WithRelation(symbol, {{"Col_3", ""}}), Findings{}) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_5", ""}}), bad) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_7", ""}}), bad) << symbol;
        EXPECT_EQ(WithRelation(symbol, {{"Col_4", 0}, {"Col_6", 0}}), bad) << symbol;
    }
}

TEST_F(ChecksA81, TwoLinesThatReferToABadRelationshipGiveTwoFindings) {
    WithRelation("", {});
    AddCost(3, {{"Col_4", 1.01}});
    EXPECT_EQ(Found(CheckA81p1).size(), 2u);
}

// --- A-8-1 Part II -------------------------------------------------------------------------

TEST_F(ChecksA81, SymbolGNeedsItsKindNameAndBusiness) {
    const Findings bad{
        "NF | 1100A | Worksheet A-8-1 Part II: line 1 where column 1 is 'G', columns 2, 3, and 7 "
        "must be completed."};
    AddRelation(1, "G");
    EXPECT_EQ(Found(CheckA81p2), Findings{});
    for (const char* column : {"Col_2", "Col_3", "Col_7"}) {
        const Variant former = test::Cell("A81p2", 1, column);
        SetCell("A81p2", 1, column, " ");
        EXPECT_EQ(Found(CheckA81p2), bad) << column;
        SetCell("A81p2", 1, column, former);
    }
    SetRow("A81p2", 1, {{"Col_1", "A"}, {"Col_2", ""}});
    EXPECT_EQ(Found(CheckA81p2), Findings{});
}

TEST_F(ChecksA81, AFinancialInterestHasAShareAboveZero) {
    const Findings bad{
        "NF | 1100A | Worksheet A-8-1 Part II: line 1 If column 2 is 'Financial', column 4 must be "
        "completed and greater than zero."};
    AddRelation(1, "G", {{"Col_2", "Financial"}});
    EXPECT_EQ(Found(CheckA81p2), Findings{});
    SetCell("A81p2", 1, "Col_4", Variant());
    EXPECT_EQ(Found(CheckA81p2), bad);
    SetCell("A81p2", 1, "Col_4", 0);
    EXPECT_EQ(Found(CheckA81p2), bad);
    SetCell("A81p2", 1, "Col_1", "A");
    EXPECT_EQ(Found(CheckA81p2), Findings{});
}

TEST_F(ChecksA81, ANonFinancialInterestHasNoShares) {
    const Findings bad{
        "NF | VLQ | Worksheet A-8-1 Part II: line 1 If column 1 is 'G' and column 2 is "
        "'Non-Financial', then both columns 4 and 6 must be zero."};
    AddRelation(1, "g", {{"Col_2", "non-financial"}, {"Col_6", 0}});
    EXPECT_EQ(Found(CheckA81p2), bad);
    SetRow("A81p2", 1, {{"Col_4", 0}, {"Col_6", -1}});
    EXPECT_EQ(Found(CheckA81p2), bad);
    SetRow("A81p2", 1, {{"Col_4", 0}, {"Col_6", Variant()}});
    EXPECT_EQ(Found(CheckA81p2), Findings{});
}

}  // namespace
}  // namespace zolmara
