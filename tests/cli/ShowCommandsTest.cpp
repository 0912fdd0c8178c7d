#include <filesystem>

#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

using ShowCommands = CliTest;
using Json = nlohmann::ordered_json;

TEST_F(ShowCommands, InfoTellsWhoseFileItIs) {
    const std::string crf = NewCrf();
    const Json info = Run({"info", crf, "--format", "json"}).Json();
    EXPECT_EQ(info["File"], crf);
    EXPECT_EQ(info["Form"], "287");
    EXPECT_EQ(info["Number"], "12-3456");
    EXPECT_EQ(info["Name"], "Sample Home Office");
    EXPECT_EQ(info["FYStart"], "2022-10-01 00:00:00");
    EXPECT_EQ(info["FYEnd"], "2023-09-30 00:00:00");
    EXPECT_EQ(info["CostCenters"], 26);
    EXPECT_EQ(info["Components"], 0);
    EXPECT_TRUE(info["Signature"].is_null());
    EXPECT_EQ(info["Size"], std::filesystem::file_size(crf));
}

TEST_F(ShowCommands, InfoForPeopleHasOneLineAValue) {
    const std::string info = Do({"info", NewCrf()});
    EXPECT_NE(info.find("\nFYStart:       10/1/2022\n"), std::string::npos) << info;
    EXPECT_NE(info.find("\nSignature:\n"), std::string::npos) << info;
}

TEST_F(ShowCommands, InfoTellsTheSigner) {
    const std::string crf = NewCrf();
    {
        Database file = DBEngine::OpenDatabase(crf);
        file.Execute("Update Master Set ESFirstName=?, ESLastName=?, ESTitle=?, ESDate=?;",
                     {"Ann", "O'Hara", "CFO", DateTime(2023, 12, 1)});
    }
    EXPECT_EQ(Run({"info", crf, "--format", "json"}).Json()["Signature"],
              "Ann O'Hara, CFO, 12/1/2023");
}

TEST_F(ShowCommands, JsonKeepsFieldOrderNumbersAndNull) {
    const Json rows = Run({"show", NewCrf(), "CostCenters", "--format", "json"}).Json();
    ASSERT_EQ(rows.size(), 26U);
    std::vector<std::string> fields;
    for (const auto& [name, value] : rows[0].items()) fields.push_back(name);
    EXPECT_EQ(fields,
              (std::vector<std::string>{"LineNum", "CCName", "ColLabel1", "ColLabel2", "ColLabel3",
                                        "StatLabel1", "StatLabel2", "StatCode"}));
    EXPECT_EQ(rows[0]["LineNum"], 1);
    EXPECT_TRUE(rows[0]["ColLabel1"].is_null());
    EXPECT_EQ(rows[0]["StatCode"], 1);
    EXPECT_EQ(rows[25]["LineNum"], 28);
}

TEST_F(ShowCommands, SubscriptsAreDecimalNumbersInJson) {
    const std::string crf = NewCrf();
    Do({"cc", "add", crf, "4", "Umbrella", "--sub"});
    const Json rows = Run({"show", crf, "CostCenters", "--format", "json"}).Json();
    EXPECT_EQ(rows[3]["LineNum"].dump(), "4.01");
}

TEST_F(ShowCommands, CsvQuotesWhatNeedsIt) {
    const std::string crf = NewCrf();
    Do({"set", crf, "S1p2", "1", "2", "Ames, \"Bo\""});
    const std::string csv = Do({"show", crf, "S1p2", "--format", "csv"});
    EXPECT_EQ(csv.substr(0, csv.find("2,Vice")),
              "LineNum,Col_1,Col_2\n1,President,\"Ames, \"\"Bo\"\"\"\n");
}

TEST_F(ShowCommands, TextAlignsNumbersRightAndLeavesNullEmpty) {
    const std::string text = Do({"show", NewCrf(), "E"});
    EXPECT_TRUE(text.starts_with("LineNum  Description"));
    EXPECT_NE(text.find("\n      4  Total\n"), std::string::npos) << text;
}

TEST_F(ShowCommands, ANameInAnyCaseIsFound) {
    EXPECT_NE(Do({"show", NewCrf(), "costcenters"}).find("CRC-B&F"), std::string::npos);
}

TEST_F(ShowCommands, ATableThatIsNotThereIsNamedWithItsFile) {
    const std::string crf = NewCrf();
    const CliResult result = Run({"show", crf, "Nope"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tThere is no table Nope in " + crf + "\n");
    EXPECT_EQ(Run({"show", crf, "A; DROP TABLE A"}).Status, 2);
}

TEST_F(ShowCommands, GetKnowsFieldsAndColumnNumbersOfTheForm) {
    const std::string crf = SampleCrf();
    EXPECT_EQ(Do({"get", crf, "A", "8", "Col_1"}), "7845112\n");
    EXPECT_EQ(Do({"get", crf, "a", "8.00", "1"}), "7845112\n");
    EXPECT_EQ(Do({"get", crf, "Bp1", "2", "4.01"}), "198886\n");
    EXPECT_EQ(Do({"get", crf, "Bp1", "2", "CC_401"}), "198886\n");
    EXPECT_EQ(Do({"get", crf, "CostCenters", "2.01", "0"}), "CRC-ME Information Systems\n");
    EXPECT_EQ(Do({"get", crf, "A81p1", "1", "3"}), "Rent of headquarters building\n");
}

TEST_F(ShowCommands, GetGivesAnEmptyLineForNullAndNullInJson) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "\n");
    EXPECT_EQ(Do({"get", crf, "A", "8", "1", "--format", "json"}), "null\n");
}

TEST_F(ShowCommands, GetNamesTheLineOrColumnThatIsNotThere) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Run({"get", crf, "A", "55", "1"}).Err, "ERROR\tA has no line 55\n");
    EXPECT_EQ(Run({"get", crf, "A", "8", "9"}).Err, "ERROR\tA has no column 9\n");
    EXPECT_EQ(Run({"get", crf, "A", "8", "Col_9"}).Status, 2);
    EXPECT_EQ(Run({"get", crf, "Master", "1", "FormNum"}).Status, 2);
}

TEST_F(ShowCommands, ALineThatIsNoNumberIsAWrongCommandLine) {
    const CliResult result = Run({"get", NewCrf(), "A", "eight", "1"});
    EXPECT_EQ(result.Status, 1);
    EXPECT_NE(result.Err.find("eight"), std::string::npos);
}

}  // namespace

}  // namespace zolmara::test
