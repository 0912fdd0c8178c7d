#include "cli/CliRunner.h"

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

}  // namespace
}  // namespace zolmara::test
