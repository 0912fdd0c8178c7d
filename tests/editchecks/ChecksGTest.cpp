#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class ChecksG : public CheckedCrf {};

TEST_F(ChecksG, AnAmountOfG1HasADescription) {
    AddRow("G1", 10, {{"Col_2", 5}});
    AddRow("G1", 10.01, {{"Col_2", -5}, {"Col_1", ""}});
    AddRow("G1", 11, {{"Col_2", 0}});
    AddRow("G1", 12, {{"Col_2", 5}, {"Col_1", " "}});  // a blank is a description here
    AddRow("G1", 13);
    EXPECT_EQ(
        Found(CheckG1Descriptions),
        (Findings{
            "NF | VLQ | G-1 line 10 has an amount, therefore it must also have a description.",
            "NF | VLQ | G-1 line 10.01 has an amount, therefore it must also have a "
            "description."}));
}

TEST_F(ChecksG, TheBalanceSheetBalances) {
    SetCell("G", 32, "Col_1", 500);
    SetCell("G", 48, "Col_1", 500);
    EXPECT_EQ(Found(CheckBalanceSheet), Findings{});
    SetCell("G", 32, "Col_1", 501);
    EXPECT_EQ(Found(CheckBalanceSheet),
              Findings{"PE | 2000G | Worksheet G: lines 32 and line 48 should be equal."});
}

TEST_F(ChecksG, TotalLiabilitiesAreAboveZero) {
    EXPECT_EQ(Found(CheckBalanceSheet),
              Findings{"PE | 2010G | Worksheet G: line 48 should be greater than zero."});
    SetCell("G", 48, "Col_1", -1);
    EXPECT_EQ(Found(CheckBalanceSheet),
              (Findings{"PE | 2000G | Worksheet G: lines 32 and line 48 should be equal.",
                        "PE | 2010G | Worksheet G: line 48 should be greater than zero."}));
}

TEST_F(ChecksG, TotalsThatAreMissingArePassedOver) {
    SetCell("G", 48, "Col_1", -5);
    EXPECT_EQ(Found(CheckBalanceSheet).size(), 2u);
    gDB.Execute("DELETE * FROM G WHERE LineNum=32;");
    EXPECT_EQ(Found(CheckBalanceSheet),
              Findings{"PE | 2010G | Worksheet G: line 48 should be greater than zero."});
    gDB.Execute("DELETE * FROM G WHERE LineNum=48;");
    EXPECT_EQ(Found(CheckBalanceSheet), Findings{});
    EXPECT_EQ(Found(CheckNetIncome).size(), 1u);
    gDB.Execute("DELETE * FROM G1 WHERE LineNum=22;");
    EXPECT_EQ(Found(CheckNetIncome), Findings{});
}

TEST_F(ChecksG, NetIncomeIsNotZero) {
    const Findings zero{"PE | 2020G | Worksheet G-1: line 22 should not equal zero."};
    EXPECT_EQ(Found(CheckNetIncome), zero);  // Null in a new file
    SetCell("G1", 22, "Col_2", 0.00001);
    EXPECT_EQ(Found(CheckNetIncome), zero);
    SetCell("G1", 22, "Col_2", -10);
    EXPECT_EQ(Found(CheckNetIncome), Findings{});
}

}  // namespace
}  // namespace zolmara
