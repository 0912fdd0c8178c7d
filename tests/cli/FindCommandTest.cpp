#include "cli/CliRunner.h"

namespace zolmara::test {
namespace {

using FindCommand = CliTest;
using Json = nlohmann::ordered_json;

TEST_F(FindCommand, FindsTextsAndAmounts) {
    const std::string crf = NewCrf();
    Do({"component", "add", crf, "1", "1", "Lakeside Clinic", "14-0177"});
    Do({"set", crf, "G", "3", "1", "4711"});
    const Json component = Run({"find", crf, "lakeside", "--format", "json"}).Json();
    EXPECT_EQ(
        component,
        (Json::array(
            {{{"item", "S2p1"}, {"line", 1}, {"column", "Col_1"}, {"value", "Lakeside Clinic"}}})));
    EXPECT_EQ(Do({"find", crf, "4,711", "--format", "csv"}),
              "item,line,column,value\nG,3,Col_1,4711\n");
}

TEST_F(FindCommand, NothingFoundIsAnEmptyList) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Run({"find", crf, "no such words", "--format", "json"}).Json(), Json::array());
}

TEST_F(FindCommand, ABlankTextIsAWrongCommandLine) {
    const CliResult result = Run({"find", NewCrf(), "  "});
    EXPECT_EQ(result.Status, 1);
    EXPECT_NE(result.Err.find("TEXT must not be empty"), std::string::npos) << result.Err;
}

}  // namespace
}  // namespace zolmara::test
