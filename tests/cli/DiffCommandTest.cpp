#include "cli/CliRunner.h"
#include "spreadsheet/BookEvaluator.h"

namespace zolmara::test {
namespace {

class DiffCommand : public CliTest {};

TEST_F(DiffCommand, SameIsZeroAndDifferentIsTwo) {
    const std::string here = NewCrf("Here.CRF");
    const std::string there = NewCrf("There.CRF");
    EXPECT_EQ(Do({"diff", here, there}), "No differences.\n");
    EXPECT_EQ(Do({"diff", here, here, "--format", "json"}), "[]\n");
    Do({"set", here, "A", "8", "1", "150"});
    Do({"set", there, "A", "8", "1", "100"});
    const std::string bytes = ContentOf(there);
    const CliResult result = Run({"diff", here, there, "--format", "json"});
    EXPECT_EQ(result.Status, 2);
    ASSERT_EQ(result.Json().size(), 1u);
    const auto cell = result.Json()[0];
    EXPECT_EQ(cell["item"], "A");
    EXPECT_EQ(cell["line"], 8);
    EXPECT_EQ(cell["column"], "Col_1");
    EXPECT_EQ(cell["name"], "Salaries of Officers");
    EXPECT_EQ(cell["here"], 150);
    EXPECT_EQ(cell["there"], 100);
    EXPECT_EQ(cell["difference"], 50);
    EXPECT_EQ(cell["percent"], 50);
    EXPECT_EQ(Run({"diff", here, there, "--format", "csv"}).Out,
              "item,line,column,name,here,there,difference,percent\n"
              "A,8,Col_1,Salaries of Officers,150,100,50,50\n");
    EXPECT_EQ(Run({"diff", here, there, "G", "A8"}).Status, 0);
    EXPECT_EQ(Run({"diff", here, there, "--over", "50"}).Status, 0);
    EXPECT_EQ(Run({"diff", here, there, "--over", "49", "--over-percent", "49"}).Status, 2);
    EXPECT_EQ(ContentOf(there), bytes);
}

TEST_F(DiffCommand, WrongArgumentsAndFilesAreTold) {
    const std::string here = NewCrf("Here.CRF");
    EXPECT_EQ(Run({"diff", here}).Status, 1);
    EXPECT_EQ(Run({"diff", here, here, "--over", "much"}).Status, 1);
    EXPECT_EQ(Run({"diff", here, File("none.CRF")}).Status, 4);
    EXPECT_EQ(Run({"diff", here, TextFile("x.txt", "x")}).Status, 4);
    EXPECT_EQ(Run({"diff", here, here, "Z9"}).Status, 2);
}

TEST_F(DiffCommand, OutWritesTheSameToAFileByItsEnding) {
    const std::string here = NewCrf("Here.CRF");
    const std::string there = NewCrf("There.CRF");
    Do({"set", here, "A", "8", "1", "150"});
    Do({"set", there, "A", "8", "1", "100"});
    const std::string csv = File("Out.csv");
    const CliResult result = Run({"diff", here, there, "--out", csv});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out, csv + "\n");
    EXPECT_EQ(ContentOf(csv),
              "item,line,column,name,here,there,difference,percent\n"
              "A,8,Col_1,\"Salaries of Officers\",150,100,50,50\n");
    EXPECT_EQ(Run({"diff", here, here, "--out", csv}).Status, 0) << "an earlier one is replaced";
    EXPECT_EQ(ContentOf(csv), "item,line,column,name,here,there,difference,percent\n");
    const std::string xlsx = File("Out.XLSX");
    EXPECT_EQ(Run({"diff", here, there, "--out", xlsx}).Status, 2);
    const Book book(xlsx);
    EXPECT_EQ(book.Sheets(), std::vector<std::string>{"Comparison"});
    EXPECT_EQ(book.Cells("Comparison").at({5, 6}).Cached.Number, 50);
}

TEST_F(DiffCommand, OutKeepsWhatSomebodyNeeds) {
    const std::string here = NewCrf("Here.CRF");
    const std::string there = NewCrf("There.csv");
    const std::string letter = TextFile("Letter.xlsx", "Dear Madam,\n");
    const std::string before = ContentOf(there);
    EXPECT_NE(Run({"diff", here, there, "--out", letter}).Status, 0);
    EXPECT_EQ(ContentOf(letter), "Dear Madam,\n");
    EXPECT_NE(Run({"diff", here, there, "--out", there}).Status, 0);
    EXPECT_NE(Run({"diff", here, there, "--out", there, "--force"}).Status, 0);
    EXPECT_EQ(ContentOf(there), before) << "the file it is compared with";
    const CliResult named = Run({"diff", here, there, "--out", File("Out.txt")});
    EXPECT_EQ(named.Status, 2);
    EXPECT_NE(named.Err.find("a comparison is written to .xlsx or .csv"), std::string::npos);
    EXPECT_EQ(Run({"diff", here, there, "--out", letter, "--force"}).Status, 0);
    EXPECT_EQ(Book(letter).Sheets().size(), 1u);
}

}  // namespace
}  // namespace zolmara::test
