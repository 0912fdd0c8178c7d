// A comparison as a workbook.

#include <gtest/gtest.h>

#include <cerrno>

#include "spreadsheet/BookEvaluator.h"
#include "spreadsheet/ComparisonSheet.h"
#include "store/Dao.h"
#include "store/FilledCrf.h"
#include "store/files/FileDoor.h"
#include "store/harness/Faults.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr const char* kSheet = "Comparison";

class ComparisonSheet : public SessionTest {
protected:
    ComparisonSheet() { gCRFPath = "/offices/Here.CRF"; }
    ~ComparisonSheet() override { gCRFPath.clear(); }

    static std::vector<CellDifference> Differences() {
        return {{"A", Currency(12.01), "Col_1", "=HYPERLINK(\"x\")", 1234567.5, 1000000.0, 234567.5,
                 23.45675},
                {"S1p2", Currency(2), "Col_2", "+name", Variant("@Ann"), Variant("-1"), Variant(),
                 Variant()}};
    }
    std::string Path() const { return folder.File("Compare.xlsx"); }
};

TEST_F(ComparisonSheet, HeadingsStayInSightAndTheFilesAreTold) {
    SaveComparison(Differences(), "/offices/There.CRF", Path());
    const Book book(Path());
    const auto& cells = book.Cells(kSheet);
    EXPECT_EQ(cells.at({1, 1}).Cached.Text, "/offices/Here.CRF");
    EXPECT_EQ(cells.at({2, 1}).Cached.Text, "/offices/There.CRF");
    const std::vector<std::string> heads = {"Worksheet", "Line",  "Column",     "Name",
                                            "Here",      "There", "Difference", "Per Cent"};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(cells.at({4, i}).Cached.Text, heads[static_cast<std::size_t>(i)]);
    const std::string xml = book.Xml(kSheet);
    EXPECT_NE(xml.find("ySplit=\"4\""), std::string::npos);
    EXPECT_NE(xml.find("state=\"frozen\""), std::string::npos);
}

TEST_F(ComparisonSheet, AmountsAreNumbersAndTextsStayTexts) {
    SaveComparison(Differences(), "/offices/There.CRF", Path());
    const Book book(Path());
    const auto& cells = book.Cells(kSheet);
    EXPECT_EQ(cells.at({5, 1}).Cached.Number, 12.01);
    EXPECT_EQ(cells.at({5, 4}).Cached.Kind, BookKind::Number);
    EXPECT_EQ(cells.at({5, 4}).Cached.Number, 1234567.5);
    EXPECT_EQ(cells.at({5, 5}).Cached.Number, 1000000);
    EXPECT_EQ(cells.at({5, 6}).Cached.Number, 234567.5);
    EXPECT_EQ(cells.at({5, 7}).Cached.Number, 23.45675);
    const std::map<BookAddress, std::string> texts = {
        {{5, 3}, "=HYPERLINK(\"x\")"}, {{6, 3}, "+name"}, {{6, 4}, "@Ann"}, {{6, 5}, "-1"}};
    for (const auto& [address, text] : texts) {
        EXPECT_EQ(cells.at(address).Formula, "");
        EXPECT_EQ(cells.at(address).Cached.Kind, BookKind::Text);
        EXPECT_EQ(cells.at(address).Cached.Text, text);
    }
    EXPECT_FALSE(cells.contains({6, 6})) << "no difference of texts";
}

TEST_F(ComparisonSheet, InCsvTextsThatBeginLikeAFormulaAreMarkedAndAmountsAreNot) {
    std::vector<CellDifference> differences = Differences();
    differences[0].Difference = -5.0;
    SaveComparison(differences, "/offices/There.CRF", folder.File("Compare.csv"));
    EXPECT_EQ(BytesOf(folder.File("Compare.csv")),
              "item,line,column,name,here,there,difference,percent\n"
              "A,12.01,Col_1,\"'=HYPERLINK(\"\"x\"\")\",1234567.5,1000000,-5,23.45675\n"
              "S1p2,2,Col_2,'+name,'@Ann,'-1,,\n");
}

TEST_F(ComparisonSheet, WithoutDifferencesTheHeadingsStandAlone) {
    SaveComparison({}, "/offices/There.CRF", Path());
    const Book book(Path());
    EXPECT_TRUE(book.Cells(kSheet).contains({4, 7}));
    EXPECT_FALSE(book.Cells(kSheet).contains({5, 0}));
}

TEST_F(ComparisonSheet, AnotherNameIsRefusedAndNothingWritten) {
    EXPECT_THROW(SaveComparison({}, "x", folder.File("Compare.txt")), StoreError);
    EXPECT_FALSE(std::filesystem::exists(folder.File("Compare.txt")));
}

TEST_F(ComparisonSheet, AFullDiskLeavesWhatStoodThere) {
    SaveComparison({}, "x", Path());
    const std::string before = BytesOf(Path());
    const ReplaceAsTold told(true, "");
    FaultsArm(folder.Path().c_str(), 1, ENOSPC, "");
    EXPECT_THROW(SaveComparison(Differences(), "x", Path()), StoreError);
    FaultsDisarm();
    EXPECT_EQ(BytesOf(Path()), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

}  // namespace
}  // namespace zolmara::test
