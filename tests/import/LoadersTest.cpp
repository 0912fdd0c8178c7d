// The loaders of the worksheets that hold amounts.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "import/ImportTools.h"

namespace zolmara::test {
namespace {

class LoadersTest : public ImportTest {};

// --- A -------------------------------------------------------------------------------------

TEST_F(LoadersTest, AmountsOfAAreRoundedToWholeDollars) {
    EXPECT_TRUE(Import({"A|8|1|2.5", "A|9|1|-2.5", "A|10|1|2.49", "A|11|1|(5)"}));
    EXPECT_EQ(NumOr(Cell("A", 8, "Col_1")), 3);
    EXPECT_EQ(NumOr(Cell("A", 9, "Col_1")), -3);
    EXPECT_EQ(NumOr(Cell("A", 10, "Col_1")), 2);
    EXPECT_EQ(NumOr(Cell("A", 11, "Col_1")), -5);
}

TEST_F(LoadersTest, AReplacesWhatTheCellHeld) {
    SetCell("A", 8, "Col_1", 1000);
    Import({"A|8|1|5"});
    EXPECT_EQ(NumOr(Cell("A", 8, "Col_1")), 5);
}

TEST_F(LoadersTest, RulesOfA) {
    const std::string closed =
        "The cell you are attempting to input or modify does not accept changes: ";
    EXPECT_EQ(RuleOf("A|8|2|5"), "Table A only allows column 1: ");
    EXPECT_EQ(RuleOf("A|8|0|5"), "Table A only allows column 1: ");
    EXPECT_EQ(RuleOf("A|8|1.5|5"), "Table A only allows column 1: ");
    EXPECT_EQ(RuleOf("A|8|1|abc"), "Table A only allows numeric input: ");
    EXPECT_EQ(RuleOf("A|8|1|"), "Table A only allows numeric input: ");
    EXPECT_EQ(RuleOf("A|8|1|1e999"), "Table A only allows numeric input: ");
    EXPECT_EQ(RuleOf("A|8|1|NaN"), "Table A only allows numeric input: ");
    for (auto row : {"3", "7", "28", "28.01", "99", "100"})
        EXPECT_EQ(RuleOf(fmt::format("A|{}|1|5", row)), closed) << row;
    EXPECT_EQ(RuleOf("A|55|1|5"), "Table A does not have row 55: ");
    EXPECT_EQ(RuleOf("A|8.01|1|5"), "Table A does not have row 8.01: ");
    EXPECT_EQ(Messages(), std::vector<Message>{
                              Refused("A", "Table A does not have row 8.01: ", "8.01, 1, \"5\"")});
}

TEST_F(LoadersTest, ABadRowCostsOnlyItself) {
    Import({"A|8|1|5", "A|8|2|6", "A|9|1|7", "A|55|1|5", "A|10|1|8"});
    EXPECT_EQ(Messages().size(), 2u);
    EXPECT_EQ(NumOr(Cell("A", 8, "Col_1")), 5);
    EXPECT_EQ(NumOr(Cell("A", 9, "Col_1")), 7);
    EXPECT_EQ(NumOr(Cell("A", 10, "Col_1")), 8);
}

// --- A-7 -----------------------------------------------------------------------------------

TEST_F(LoadersTest, OnA7TheLaterColumnsOfALineAddToWhatTheyHold) {
    SetCell("A7p1", 1, "Col_1", 100);
    SetCell("A7p1", 1, "Col_2", 200);
    Import({"A7p1|1|1|1", "A7p1|1|2|2.5", "A7p1|2|2|4"});
    EXPECT_EQ(NumOr(Cell("A7p1", 1, "Col_1")), 1);
    EXPECT_EQ(NumOr(Cell("A7p1", 1, "Col_2")), 203);
    EXPECT_EQ(NumOr(Cell("A7p1", 2, "Col_2")), 4);
}

TEST_F(LoadersTest, AmountsOfA7ThatWereAddedToAreTold) {
    SetCell("A7p1", 1, "Col_1", 100);
    SetCell("A7p1", 1, "Col_2", 200);
    SetCell("A7p1", 1, "Col_3", 300);
    SetCell("A7p2", 2, "Col_9", 40);
    const bool clean = Import(
        {"A7p1|1|1|1", "A7p1|1|2|2", "A7p1|1|3|3", "A7p1|1|5|4", "A7p2|2|1|5", "A7p2|2|9|6"});
    EXPECT_TRUE(clean);
    EXPECT_EQ(NumOr(Cell("A7p1", 1, "Col_2")), 202);
    EXPECT_EQ(Messages(),
              (std::vector<Message>{{"F.Y.I.",
                                     "Table A7p1: amounts of the file were added to what stood in "
                                     "line 1 column 2, line 1 column 3."},
                                    {"F.Y.I.",
                                     "Table A7p2: amounts of the file were added to what stood in "
                                     "line 2 column 9."},
                                    {"", std::string(kClosing)}}));
}

TEST_F(LoadersTest, AmountsOfOneFileThatAddUpAreNoNews) {
    Import({"A7p1|1|1|1", "A7p1|1|2|2", "A7p1|1|2|3", "A|8|1|4", "A|8|1|5"});
    EXPECT_EQ(NumOr(Cell("A7p1", 1, "Col_2")), 5);
    EXPECT_TRUE(IsClean());
}

TEST_F(LoadersTest, OnA7NullCountsAs0) {
    Import({"A7p2|1|1|10", "A7p2|1|2|4"});
    EXPECT_EQ(NumOr(Cell("A7p2", 1, "Col_1")), 10);
    EXPECT_EQ(NumOr(Cell("A7p2", 1, "Col_2")), 4);
}

TEST_F(LoadersTest, RulesOfA7) {
    const std::string columns1 = "Table A7p1 only allows column 1, 2, 3, 5 or 7: ";
    const std::string columns2 = "Table A7p2 only allows column 1, 2, 9-14: ";
    for (auto col : {"0", "4", "6", "8"})
        EXPECT_EQ(RuleOf(fmt::format("A7p1|1|{}|5", col)), columns1) << col;
    for (auto col : {"0", "3", "8", "15"})
        EXPECT_EQ(RuleOf(fmt::format("A7p2|1|{}|5", col)), columns2) << col;
    EXPECT_EQ(RuleOf("A7p1|1|1|x"), "Table A7p1 only allows numeric input: ");
    EXPECT_EQ(RuleOf("A7p2|1|9|x"), "Table A7p2 only allows numeric input: ");
    for (auto row : {"7", "9", "1.5", "10"})
        EXPECT_EQ(RuleOf(fmt::format("A7p1|{}|1|5", row)),
                  fmt::format("Table A7p1 does not allow row {}: ", row));
    EXPECT_EQ(RuleOf("A7p2|3|1|5"), "Table A7p2 does not allow row 3: ");
    EXPECT_EQ(RuleOf("A7p1|8|7|5"), "");
    EXPECT_EQ(NumOr(Cell("A7p1", 8, "Col_7")), 5);
    EXPECT_EQ(RuleOf("A7p2|2|14|6"), "");
    EXPECT_EQ(NumOr(Cell("A7p2", 2, "Col_14")), 6);
    EXPECT_EQ(RuleOf("A7p2|2|9.5|6"), "Conversion error: ");
}

// --- A-6 -----------------------------------------------------------------------------------

TEST_F(LoadersTest, A6CreatesItsEntriesAndNamesTheCostCenters) {
    EXPECT_TRUE(Import({"A6|1|1|\"To reclassify \"\"x\"", "A6|1|2|a", "A6|1|4|8", "A6|1|5|100.5",
                        "A6|1|7|9", "A6|1|8|100.5", "A6|2.5|2|b"}));
    EXPECT_EQ(Lines("A6"), "1 2.5 100");
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_1")), "To reclassify ");
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_2")), "A");
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_3")), "Salaries of Officers");
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_4")), 8);
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_5")), 100.5);
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_6")), "Salaries and Wages of Others");
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_7")), 9);
}

TEST_F(LoadersTest, RulesOfA6) {
    const std::string columns = "Table A6 only allows imports of columns 1-2, 4-5, and 7-8";
    for (auto row : {"0", "0.99", "100", "101"})
        EXPECT_EQ(RuleOf(fmt::format("A6|{}|1|x", row)),
                  fmt::format("Table A6 row {} is not allowed.", row));
    for (auto col : {"0", "3", "6", "9", "1.5"})
        EXPECT_EQ(RuleOf(fmt::format("A6|1|{}|x", col)), columns) << col;
    EXPECT_EQ(Lines("A6"), "100");
    const std::string code = "The CODE field can only contain a letter from 'A' through 'Z': ";
    EXPECT_EQ(RuleOf("A6|1|2|AB"), code);
    EXPECT_EQ(RuleOf("A6|1|2|1"), code);
    EXPECT_EQ(RuleOf("A6|1|4|55"), "The UpLineNum is not a valid cost center number: ");
    EXPECT_EQ(RuleOf("A6|1|4|28"), "The UpLineNum is not a valid cost center number: ");
    EXPECT_EQ(RuleOf("A6|1|4|abc"), "The UpLineNum is not a valid cost center number: ");
    EXPECT_EQ(RuleOf("A6|1|5|abc"), "The UpAmount value must be numeric: ");
    EXPECT_EQ(RuleOf("A6|1|7|100"), "The DnLineNum is not a valid cost center number: ");
    EXPECT_EQ(RuleOf("A6|1|8|abc"), "The DnAmount value must be numeric: ");
    EXPECT_EQ(RuleOf("A6|1|1|" + std::string(41, 'x')), "Conversion error: ");
}

TEST_F(LoadersTest, A6TakesTheSubscriptsOfItsLastLine) {
    EXPECT_TRUE(Import({"A6|99|1|x", "A6|99.01|1|y", "A6|99.99|1|z"}));
    EXPECT_EQ(Lines("A6"), "99 99.01 99.99 100");
}

TEST_F(LoadersTest, A6BlankOrZeroLinesClearTheName) {
    Import({"A6|1|4|8", "A6|1|7|9"});
    Import({"A6|1|4|", "A6|1|7|0", "A6|1|1|  ", "A6|1|2|C"});
    EXPECT_TRUE(Cell("A6", 1, "Col_4").IsNull());
    EXPECT_TRUE(Cell("A6", 1, "Col_3").IsNull());
    EXPECT_EQ(Cell("A6", 1, "Col_7"), Variant(0.0));
    EXPECT_TRUE(Cell("A6", 1, "Col_6").IsNull());
    EXPECT_TRUE(Cell("A6", 1, "Col_1").IsNull());
}

TEST_F(LoadersTest, A6KeepsItsLineReferencesAtFourDecimals) {
    Import({"CostCenter|4.03|0|x"});
    Import({"A6|1|4|4.03000001"});
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_4")), 4.03);
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_3")), "x");
}

// --- A-8 -----------------------------------------------------------------------------------

TEST_F(LoadersTest, A8StoresBasisAmountAndCostCenter) {
    EXPECT_TRUE(Import({"A8|4|2| b ", "A8|4|3|-10.5", "A8|4|5|8"}));
    EXPECT_EQ(StrOr(Cell("A8", 4, "Col_2")), "B");
    EXPECT_EQ(NumOr(Cell("A8", 4, "Col_3")), -11);
    EXPECT_EQ(NumOr(Cell("A8", 4, "Col_5")), 8);
    EXPECT_EQ(StrOr(Cell("A8", 4, "Col_4")), "Salaries of Officers");
}

TEST_F(LoadersTest, A8RowsFrom18AreCreated) {
    EXPECT_TRUE(Import({"A8|18|1|Own adjustment", "A8|99|3|5"}));
    EXPECT_EQ(Lines("A8", 17, 100), "17 18 99 100");
    EXPECT_EQ(StrOr(Cell("A8", 18, "Col_1")), "Own adjustment");
}

TEST_F(LoadersTest, RulesOfA8) {
    for (auto row : {"0.99", "12", "12.5", "99.01", "100"})
        EXPECT_EQ(RuleOf(fmt::format("A8|{}|3|5", row)),
                  fmt::format("Row {} of table A8 cannot be imported: ", row));
    for (auto col : {"0", "4", "6"})
        EXPECT_EQ(RuleOf(fmt::format("A8|4|{}|5", col)),
                  "Table A8 only allows imports of columns 1, 2, 3 and 5: ");
    EXPECT_EQ(RuleOf("A8|17.5|1|x"), "Table A8 does not allow imports of column 1 on rows 1-17: ");
    EXPECT_EQ(RuleOf("A8|11.99|3|5"), "Row does not exist: ");
    EXPECT_EQ(RuleOf("A8|4|2|C"), "The Basis field can only contain the letters 'A' and 'B': ");
    EXPECT_EQ(RuleOf("A8|4|3|abc"), "The Amount value must be numeric: ");
    EXPECT_EQ(RuleOf("A8|4|3|"), "The Amount value must be numeric: ");
    EXPECT_EQ(RuleOf("A8|4|5|55"), "The LineNum is not a valid cost center number: ");
    EXPECT_EQ(RuleOf("A8|4|5|4"), "The LineNum is not a valid cost center number: ");
    EXPECT_EQ(RuleOf("A8|18|1|" + std::string(37, 'x')), "This field cannot be imported: ");
}

TEST_F(LoadersTest, ABlankCostCenterOfA8IsDroppedWithoutAWord) {
    Import({"A8|4|5|8"});
    EXPECT_EQ(RuleOf("A8|4|5|"), "");
    EXPECT_EQ(NumOr(Cell("A8", 4, "Col_5")), 8);
}

// --- A-8-1 ---------------------------------------------------------------------------------

TEST_F(LoadersTest, A81p1AddsItsLinesAndLooksUpTheName) {
    EXPECT_TRUE(Import({"A81p1|2|1|8", "A81p1|2|3|Rent", "A81p1|2|4|1", "A81p1|2|5|100.25",
                        "A81p1|2|6|50", "A81p1|3.5|1|55"}));
    EXPECT_EQ(Lines("A81p1"), "2 3.5 100");
    EXPECT_EQ(StrOr(Cell("A81p1", 2, "Col_2")), "Salaries of Officers");
    EXPECT_EQ(StrOr(Cell("A81p1", 2, "Col_3")), "Rent");
    EXPECT_EQ(NumOr(Cell("A81p1", 2, "Col_5")), 100.25);
    EXPECT_EQ(StrOr(Cell("A81p1", 3.5, "Col_2"), "Null"), "");
}

TEST_F(LoadersTest, RulesOfA81p1) {
    const std::string rule =
        "Table A81p1 only allows changes to rows 1-99 and columns 1, 3, 4, 5 and 6: ";
    for (auto cell : {"0|1", "100|1", "1|0", "1|2", "1|7", "100|2"})
        EXPECT_EQ(RuleOf(fmt::format("A81p1|{}|5", cell)), rule) << cell;
    EXPECT_EQ(RuleOf("A81p1|1|1|abc"), "Conversion error: ");
    EXPECT_EQ(RuleOf("A81p1|1|5|abc"), "Conversion error: ");
    EXPECT_EQ(RuleOf("A81p1|1|1|1e300"), "Conversion error: ");
    EXPECT_EQ(Lines("A81p1"), "1 100");
}

TEST_F(LoadersTest, A81p2TakesColumn2OnlyWithTheSymbolG) {
    const std::string rule = "Table A81p2 only allows changes to column 2 when column 1 is 'G': ";
    EXPECT_TRUE(Import({"A81p2|1|2|FINANCIAL", "A81p2|1|1|G", "A81p2|1|7|Bank"}));
    EXPECT_EQ(StrOr(Cell("A81p2", 1, "Col_2")), "FINANCIAL");
    EXPECT_EQ(StrOr(Cell("A81p2", 1, "Col_7")), "Bank");
    EXPECT_EQ(RuleOf("A81p2|2|2|FINANCIAL"), rule);
    Import({"A81p2|3|1|A", "A81p2|3|2|x"});
    EXPECT_EQ(Messages().at(0), Refused("A81p2", rule, "3, 2, \"x\""));
}

TEST_F(LoadersTest, RulesOfA81p2) {
    const std::string rule = "Table A81p2 only allows changes to rows 1-50 and columns 1-7: ";
    for (auto cell : {"0|1", "50.01|1", "51|1", "1|0", "1|8"})
        EXPECT_EQ(RuleOf(fmt::format("A81p2|{}|5", cell)), rule) << cell;
    EXPECT_EQ(RuleOf("A81p2|1|4|abc"), "Conversion error: ");
    EXPECT_EQ(RuleOf("A81p2|50|4|33.3"), "");
    EXPECT_EQ(NumOr(Cell("A81p2", 50, "Col_4")), 33.3);
}

// --- G -------------------------------------------------------------------------------------

TEST_F(LoadersTest, RulesOfG) {
    EXPECT_EQ(RuleOf("G|1|2|5"), "Table G only allows column 1: ");
    const std::string rows =
        "Table G only allows rows 1 To 9, 11 To 25, 27 To 30, 33 To 39, 41 To 44, and 47: ";
    for (auto row : {"0", "10", "26", "31", "32", "40", "45", "46", "48", "9.5"})
        EXPECT_EQ(RuleOf(fmt::format("G|{}|1|5", row)), rows) << row;
    EXPECT_EQ(RuleOf("G|1.5|1|5"), "Table G line 1.5 doesn't exist: ");
    EXPECT_EQ(RuleOf("G|47|1|abc"), "Conversion error: ");
    EXPECT_EQ(RuleOf("G|47|1|5.5"), "");
    EXPECT_EQ(NumOr(Cell("G", 47, "Col_1")), 5.5);
    EXPECT_EQ(RuleOf("G|6|1|-5"), "");
    EXPECT_EQ(NumOr(Cell("G", 6, "Col_1")), -5);
}

TEST_F(LoadersTest, RulesOfG1) {
    const std::string rows = "Table G1 only allows rows 1, 4 To 9, 10 To 14.99, 16 To 20.99: ";
    const std::string descriptions =
        "Table G1 only allows column 1 for rows 10 To 14.99, and 16 To 20.99: ";
    EXPECT_EQ(RuleOf("G1|7|1|Refunds"), "");
    EXPECT_EQ(StrOr(Cell("G1", 7, "Col_1")), "Refunds");
    EXPECT_EQ(RuleOf("G1|1|1|x"), descriptions);
    EXPECT_EQ(RuleOf("G1|1|2|1000"), "");
    EXPECT_EQ(NumOr(Cell("G1", 1, "Col_2")), 1000);
    for (auto row : {"9.01", "2", "3", "15", "15.5", "21", "22", "0"})
        EXPECT_EQ(RuleOf(fmt::format("G1|{}|2|5", row)), rows) << row;
    for (auto col : {"0", "3", "1.5"})
        EXPECT_EQ(RuleOf(fmt::format("G1|1|{}|5", col)), "Table G1 only allows columns 1 and 2: ");
    EXPECT_EQ(RuleOf("G1|10|2|abc"), "Conversion error: ");
}

TEST_F(LoadersTest, G1AddsItsFreeLines) {
    EXPECT_TRUE(Import({"G1|10|1|Other income", "G1|10|2|5", "G1|14.99|2|6", "G1|16|1|Fines",
                        "G1|20.99|2|7", "G1|4.5|2|1"}));
    EXPECT_EQ(Lines("G1", 4, 22), "4 4.5 5 6 7 8 9 10 14.99 15 16 20.99 21 22");
    EXPECT_EQ(StrOr(Cell("G1", 10, "Col_1")), "Other income");
    EXPECT_EQ(NumOr(Cell("G1", 10, "Col_2")), 5);
}

}  // namespace
}  // namespace zolmara::test
