#include "cli/CliRunner.h"

namespace zolmara::test {
namespace {

using Json = nlohmann::ordered_json;

/// A statement with 1,000 of expenses on line 8, of which 150 are taken off.
class ExplainCommand : public CliTest {
protected:
    ExplainCommand() : crf(NewCrf()) {
        Do({"set", crf, "A", "8", "1", "1000"});
        Do({"set", crf, "A8", "1", "2", "A"});
        Do({"set", crf, "A8", "1", "5", "8"});
        Do({"set", crf, "A8", "1", "3", "--", "-150"});
        Do({"calc", crf});
    }
    std::string crf;
};

TEST_F(ExplainCommand, TellsTheRuleTheFiguresAndTheInputs) {
    EXPECT_EQ(Do({"explain", crf, "a", "8", "5"}),
              "A, line 8, column 5 (Net Allowable Expenses): 850\n"
              "  Column 3 plus column 4.\n"
              "  1,000 - 150 = 850\n"
              "    A, line 8, column 3 (Reclassified Trial Balance): 1,000\n"
              "      Column 1 plus column 2.\n"
              "      1,000\n"
              "    A, line 8, column 4 (Adjustments): -150\n"
              "      The adjustments of A-8 and of A-8-1 Part I that name this line.\n"
              "      -150\n");
}

TEST_F(ExplainCommand, DepthSaysHowFarTheTreeIsOpened) {
    const std::string cell = Do({"explain", crf, "A", "8", "5", "--depth", "0"});
    EXPECT_EQ(std::count(cell.begin(), cell.end(), '\n'), 3);
    const std::string deep = Do({"explain", crf, "A", "8", "5", "--depth", "2"});
    EXPECT_NE(deep.find("\n        A-8, line 1, column 3 (Amount): -150\n"
                        "          Keyed in the editor of worksheet A-8, or imported."),
              std::string::npos)
        << deep;
}

TEST_F(ExplainCommand, JsonIsATreeOfTheSameShape) {
    const Json told =
        Run({"explain", crf, "A", "8", "5", "--depth", "2", "--format", "json"}).Json();
    EXPECT_EQ(told["item"], "A");
    EXPECT_EQ(told["line"], 8);
    EXPECT_EQ(told["column"], "Col_5");
    EXPECT_EQ(told["title"], "Net Allowable Expenses");
    EXPECT_EQ(told["value"], 850);
    EXPECT_EQ(told["kind"], "computed");
    EXPECT_EQ(told["rule"], "Column 3 plus column 4.");
    EXPECT_EQ(told["formula"], "1,000 - 150 = 850");
    ASSERT_EQ(told["inputs"].size(), 2u);
    const Json& adjustments = told["inputs"][1];
    EXPECT_EQ(adjustments["column"], "Col_4");
    ASSERT_EQ(adjustments["inputs"].size(), 1u);
    const Json& keyed = adjustments["inputs"][0];
    EXPECT_EQ(keyed["item"], "A8");
    EXPECT_EQ(keyed["value"], -150);
    EXPECT_EQ(keyed["kind"], "keyed");
    EXPECT_FALSE(keyed.contains("inputs")) << "deeper than asked, and keyed";
}

TEST_F(ExplainCommand, WithoutADepthTheInputsAreTheLast) {
    const Json told = Run({"explain", crf, "A", "8", "5", "--format", "json"}).Json();
    ASSERT_EQ(told["inputs"].size(), 2u);
    EXPECT_FALSE(told["inputs"][0].contains("inputs"));
}

TEST_F(ExplainCommand, CsvHasALineForEachCellWithItsDepth) {
    const std::string csv = Do({"explain", crf, "A", "8", "5", "--format", "csv"});
    EXPECT_TRUE(
        csv.starts_with("depth,item,line,column,title,value,kind,rule,formula\n"
                        "0,A,8,Col_5,Net Allowable Expenses,850,computed,"))
        << csv;
    EXPECT_NE(csv.find("\n1,A,8,Col_3,"), std::string::npos) << csv;
}

TEST_F(ExplainCommand, UsesTellsWhatDependsOnACell) {
    const Json told = Run({"explain", crf, "A8", "1", "3", "--uses", "--format", "json"}).Json();
    EXPECT_FALSE(told.contains("inputs"));
    std::vector<std::string> users;
    for (const Json& user : told["uses"]) {
        users.push_back(user["item"].get<std::string>() + " " + user["line"].dump() + " " +
                        user["column"].get<std::string>());
    }
    EXPECT_EQ(users, (std::vector<std::string>{"A8 100 Col_3", "A 8 Col_4"}));
}

TEST_F(ExplainCommand, WhatIsNotThereIsRefused) {
    EXPECT_EQ(Run({"explain", crf, "Z9", "8", "5"}).Status, 2);
    const CliResult column = Run({"explain", crf, "A", "8", "12"});
    EXPECT_EQ(column.Status, 2);
    EXPECT_NE(column.Err.find("A has no column 12"), std::string::npos) << column.Err;
    const CliResult line = Run({"explain", crf, "A", "8.5", "5"});
    EXPECT_EQ(line.Status, 2);
    EXPECT_NE(line.Err.find("A has no line 8.5"), std::string::npos) << line.Err;
    EXPECT_EQ(Run({"trace", crf, "A", "8.5", "5"}).Status, 2);
}

TEST_F(ExplainCommand, ADepthThatIsNoneIsAWrongCommandLine) {
    for (const char* depth : {"-1", "1.5", "many", "1000"}) {
        const CliResult result =
            Run({"explain", crf, "A", "8", "5", std::string("--depth=") + depth});
        EXPECT_EQ(result.Status, 1) << depth;
        EXPECT_NE(result.Err.find("--depth must be a whole number"), std::string::npos)
            << result.Err;
    }
}

TEST_F(ExplainCommand, ATreeWithoutEndIsRefused) {
    const std::string sample = SampleCrf();
    const CliResult result = Run({"explain", sample, "A", "100", "8", "--depth", "20"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out, "");
    EXPECT_NE(result.Err.find("More than 10,000 cells would have to be told"), std::string::npos)
        << result.Err;
}

TEST_F(ExplainCommand, TraceListsTheKeyedCells) {
    const Json trace = Run({"trace", crf, "A", "100", "5", "--format", "json"}).Json();
    ASSERT_EQ(trace.size(), 2u) << trace.dump();
    EXPECT_EQ(trace[0], (Json{{"item", "A"}, {"line", 8}, {"column", "Col_1"}, {"value", 1000}}));
    EXPECT_EQ(trace[1], (Json{{"item", "A8"}, {"line", 1}, {"column", "Col_3"}, {"value", -150}}));
}

TEST_F(ExplainCommand, SummaryHasTheFiguresWithTheirCells) {
    const Json summary = Run({"summary", crf, "--format", "json"}).Json();
    EXPECT_EQ(summary["figures"][0], (Json{{"figure", "Expenses per books"},
                                           {"item", "A"},
                                           {"line", 100},
                                           {"column", "Col_1"},
                                           {"value", 1000}}));
    EXPECT_EQ(summary["figures"].size(), 11u);
    EXPECT_TRUE(summary["state"]["Non-fatal errors"].is_null()) << "not checked yet";
    EXPECT_TRUE(summary["state"]["Signature"].is_null());
    const int findings = Run({"check", crf}).Status;
    EXPECT_EQ(findings, 3);
    const Json checked = Run({"summary", crf, "--format", "json"}).Json();
    EXPECT_GT(checked["state"]["Non-fatal errors"], 0);
    const std::string text = Do({"summary", crf});
    EXPECT_NE(text.find("Adjustments                   A      100  Col_4   -150\n"),
              std::string::npos)
        << text;
}

TEST_F(ExplainCommand, SheetsListsEveryWorksheetWithItsState) {
    const Json sheets = Run({"sheets", crf, "--format", "json"}).Json();
    ASSERT_EQ(sheets.size(), 46u);
    EXPECT_EQ(sheets[6]["item"], "A");
    EXPECT_EQ(sheets[6]["state"], "calculated");
    EXPECT_EQ(sheets.back(), (Json{{"item", "G1"},
                                   {"name", "G-1"},
                                   {"title", "Statement of revenue and expenses"},
                                   {"state", "calculated"}}))
        << "line 2 comes from A";
}

TEST_F(ExplainCommand, FindingsShowTheFiguresThatAreHeldAgainstEachOther) {
    Do({"set", crf, "G", "1", "1", "500"});
    Do({"calc", crf});
    const CliResult check = Run({"check", crf, "--explain"});
    EXPECT_EQ(check.Status, 3);
    EXPECT_NE(check.Out.find("\t2000G\tWorksheet G: lines 32 and line 48 should be equal.\n"
                             "    G, line 32, column 1: 500; G, line 48, column 1: 0; difference "
                             "500\n"),
              std::string::npos)
        << check.Out;
    const Json findings = Run({"check", crf, "--explain", "--format", "json"}).Json();
    bool found = false;
    for (const Json& finding : findings) {
        if (finding["Code"] != "2000G") continue;
        found = true;
        EXPECT_EQ(finding["Left"], "G, line 32, column 1");
        EXPECT_EQ(finding["LeftValue"], 500);
        EXPECT_EQ(finding["RightValue"], 0);
        EXPECT_EQ(finding["Difference"], 500);
    }
    EXPECT_TRUE(found);
    EXPECT_EQ(Run({"check", crf}).Out.find("difference"), std::string::npos);
}

}  // namespace
}  // namespace zolmara::test
