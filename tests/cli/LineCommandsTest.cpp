#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

class LineCommands : public CliTest {
protected:
    LineCommands() : crf(NewCrf()) {}

    /// The line numbers of a table, as text.
    std::vector<std::string> LinesOf(const std::string& item) {
        std::vector<std::string> lines;
        for (const auto& row : Run({"show", crf, item, "--format", "json"}).Json())
            lines.push_back(row.begin().value().dump());
        return lines;
    }
    bool HasColumn(const std::string& item, const std::string& field) {
        return Do({"show", crf, item, "--format", "csv"}).find("," + field + ",") !=
               std::string::npos;
    }

    std::string crf;
};

using Lines = std::vector<std::string>;

TEST_F(LineCommands, CcListShowsTheStructureTable) {
    const auto rows = Run({"cc", "list", crf, "--format", "json"}).Json();
    ASSERT_EQ(rows.size(), 26U);
    EXPECT_EQ(rows[5]["CCName"], "Salaries of Officers");
}

TEST_F(LineCommands, CcAddMakesRowNameAndColumns) {
    EXPECT_EQ(Do({"cc", "add", crf, "4", "Umbrella Insurance", "--sub"}), "4.01\n");
    EXPECT_EQ(Do({"get", crf, "A", "4.01", "CCName"}), "Umbrella Insurance\n");
    EXPECT_TRUE(HasColumn("Bp1", "CC_401"));
    EXPECT_FALSE(HasColumn("Cp1", "CC_401"));
}

TEST_F(LineCommands, CcAddBehindTheLastLineAsksWhichAndYesIsWhole) {
    const CliResult result = Run({"cc", "add", crf, "28", "Marketing"});
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out, "29\n");
    EXPECT_EQ(result.Err, "F.Y.I.\tAdd Cost Center 29? No will add Cost Center 28.01.\tYes\n");
    EXPECT_EQ(Do({"cc", "add", crf, "29", "Marketing West", "--no"}), "29.01\n");
}

TEST_F(LineCommands, CcAddOfAWholeLineInTheMiddleIsRefused) {
    const CliResult result = Run({"cc", "add", crf, "12", "Other", "--whole"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tNo whole line of CostCenters can be added behind 12\n");
    EXPECT_EQ(LinesOf("CostCenters").size(), 26U);
}

TEST_F(LineCommands, CcAddRefusesANameInUseBeforeAnythingChanges) {
    const CliResult result = Run({"cc", "add", crf, "4", " travel and entertainment", "--sub"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err,
              "ERROR\tThis cost center name has already been used, please enter a unique cost "
              "center title.\n");
    EXPECT_EQ(LinesOf("CostCenters").size(), 26U);
}

TEST_F(LineCommands, CcAddWithoutANameIsRefusedAndTheNextAddIsFree) {
    const std::string former = ContentOf(crf);
    const CliResult result = Run({"cc", "add", crf, "4", "--sub"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out, "");
    EXPECT_EQ(result.Err,
              "ERROR\tA cost center may not be blank, please enter a cost center title.\n");
    EXPECT_EQ(ContentOf(crf), former);
    EXPECT_EQ(Do({"cc", "add", crf, "5", "Permits", "--sub"}), "5.01\n");
}

// The new line takes the number of the line that bears the name, which would move up.
TEST_F(LineCommands, CcAddRefusesTheNameOfTheVeryLineThatMovesUp) {
    Do({"cc", "add", crf, "4", "Umbrella Insurance", "--sub"});
    const std::string former = ContentOf(crf);
    const CliResult result = Run({"cc", "add", crf, "4", "umbrella insurance", "--sub"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out, "");
    EXPECT_EQ(ContentOf(crf), former);
    EXPECT_EQ(Do({"cc", "add", crf, "4", "Other Insurance", "--sub"}), "4.01\n");
    EXPECT_EQ(Do({"get", crf, "CostCenters", "4.02", "CCName"}), "Umbrella Insurance\n");
}

TEST_F(LineCommands, CcAddOfATooLongNameLeavesNothing) {
    const std::string former = ContentOf(crf);
    EXPECT_EQ(Run({"cc", "add", crf, "4", std::string(41, 'x'), "--sub"}).Status, 2);
    EXPECT_EQ(ContentOf(crf), former);
}

/// The number of times that the file has been committed to.
std::uint32_t CommitsOf(const std::string& crf) {
    constexpr std::size_t kChangeCounter = 24;
    const std::string content = ContentOf(crf);
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < 4; ++i)
        count = count << 8 | static_cast<unsigned char>(content[kChangeCounter + i]);
    return count;
}

// What a kill in the middle would leave half done is one commit.
TEST_F(LineCommands, EveryActIsOneCommit) {
    for (const auto& words : std::vector<std::vector<std::string>>{
             {"cc", "add", crf, "28", "Marketing", "--whole"},
             {"cc", "rename", crf, "29", "Press"},
             {"cc", "delete", crf, "29"},
             {"component", "add", crf, "1", "1", "Alpha Hospital", "14-0234"},
             {"component", "rename", crf, "1", "1", "Beta Hospital", "14-0235"},
             {"component", "delete", crf, "1", "1"},
             {"line", "add", crf, "A6", "1"},
             {"line", "add", crf, "A8", "17", "--whole"},
             {"set", crf, "A6", "1", "1", "Rent"},
             {"set", crf, "A6", "1", "2", "b"},
             {"set", crf, "A8", "18", "1", "Rent"},
             {"header", crf, "1", "Draft"}}) {
        const auto before = CommitsOf(crf);
        Do(words);
        EXPECT_EQ(CommitsOf(crf), before + 1) << words[0] << " " << words[1];
    }
}

TEST_F(LineCommands, TheHeaderOfAFileWithoutItsTableIsMadeAndSetInOneCommit) {
    DBEngine::OpenDatabase(crf).DeleteTable("HeaderLines");
    const auto before = CommitsOf(crf);
    EXPECT_EQ(Run({"header", crf, "--format", "json"}).Json().size(), 3U);
    EXPECT_EQ(CommitsOf(crf), before);
    Do({"header", crf, "2", "Draft"});
    EXPECT_EQ(CommitsOf(crf), before + 1);
}

TEST_F(LineCommands, SigningAndBuildingIsOneCommit) {
    const std::string sample = SampleCrf();
    Do({"set", sample, "A", "8", "1", "7777777"});
    const auto before = CommitsOf(sample);
    Run({"--quiet", "ecr", sample, "--first", "Ann", "--last", "Lee", "--title", "CFO"});
    EXPECT_EQ(CommitsOf(sample), before + 1);
}

TEST_F(LineCommands, CcRenameFollowsTheRulesOfTheEditor) {
    Do({"cc", "add", crf, "28", "Marketing", "--whole"});
    Do({"cc", "rename", crf, "29", "Marketing & \"Press\""});
    EXPECT_EQ(Do({"get", crf, "A", "29", "CCName"}), "Marketing & \"Press\"\n");
    EXPECT_EQ(Run({"cc", "rename", crf, "28", "Income"}).Status, 2);
    EXPECT_EQ(Run({"cc", "rename", crf, "29", " "}).Err,
              "ERROR\tA cost center may not be blank, please enter a cost center title.\n");
    EXPECT_EQ(Run({"cc", "rename", crf, "30", "X"}).Err, "ERROR\tCostCenters has no line 30\n");
}

TEST_F(LineCommands, CcDeleteTakesSubscriptsAndAddedLinesOnly) {
    Do({"cc", "add", crf, "28", "Marketing", "--whole"});
    Do({"cc", "delete", crf, "29"});
    EXPECT_EQ(LinesOf("CostCenters").back(), "28");
    EXPECT_EQ(Run({"cc", "delete", crf, "28"}).Err,
              "ERROR\tLine 28 of CostCenters belongs to the form and stays\n");
    EXPECT_EQ(Run({"cc", "delete", crf, "77"}).Status, 2);
}

TEST_F(LineCommands, ComponentsAreAddedRenamedAndDeletedInAllSchedules) {
    EXPECT_EQ(Do({"component", "add", crf, "1", "1", "Alpha Hospital", "14-0234"}), "1\n");
    EXPECT_EQ(Do({"component", "add", crf, "1", "1", "Beta Clinic", "--whole"}), "2\n");
    EXPECT_EQ(Do({"component", "add", crf, "1", "1", "Alpha Annex", "--sub"}), "1.01\n");
    EXPECT_EQ(LinesOf("Dp1"), (Lines{"1", "1.01", "2", "51"}));
    Do({"component", "rename", crf, "1", "1.01", "Alpha East", "AB1234"});
    EXPECT_EQ(Do({"get", crf, "F2p1", "1.01", "Col_0"}), "AB-1234\n");
    Do({"component", "delete", crf, "1", "1"});
    EXPECT_EQ(LinesOf("E1p1"), (Lines{"1", "2", "51"}));
    EXPECT_EQ(Do({"get", crf, "S2p1", "1", "1"}), "Alpha East\n");
}

TEST_F(LineCommands, ComponentWithABadNumberIsNotAdded) {
    const CliResult result = Run({"component", "add", crf, "1", "1", "Alpha", "14-023"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tColumn 2 must be 5 characters long, 6 with hypen.\n");
    EXPECT_TRUE(LinesOf("S2p1").empty());
}

TEST_F(LineCommands, PartsAreOneToThree) {
    EXPECT_EQ(Run({"component", "list", crf, "4"}).Status, 1);
    EXPECT_EQ(Run({"component", "list", crf, "S2p1"}).Status, 1);
}

TEST_F(LineCommands, LinesOfA6StartAt1AndKeepTheirGaps) {
    EXPECT_EQ(Do({"line", "add", crf, "A6", "1"}), "1\n");
    EXPECT_EQ(Do({"line", "add", crf, "A6", "1"}), "2\n");
    EXPECT_EQ(Do({"line", "add", crf, "A6", "3"}), "3\n");
    Do({"line", "delete", crf, "A6", "2"});
    EXPECT_EQ(LinesOf("A6"), (Lines{"1", "3", "100"}));
    EXPECT_EQ(Run({"line", "add", crf, "A6", "9"}).Err, "ERROR\tA6 has no line 9\n");
    EXPECT_EQ(Run({"line", "delete", crf, "A6", "100"}).Status, 2);
}

TEST_F(LineCommands, LinesOfA8NeedTheirDescriptions) {
    EXPECT_EQ(Do({"line", "add", crf, "A8", "17", "--whole"}), "18\n");
    const CliResult refused = Run({"line", "add", crf, "A8", "17", "--sub"});
    EXPECT_EQ(refused.Status, 2);
    EXPECT_EQ(refused.Err, "ERROR\tAll descriptions must be completed.\n");
}

TEST_F(LineCommands, MailLinesAndOfficers) {
    EXPECT_EQ(Do({"line", "add", crf, "S1p1", "5"}), "5.01\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "5.01", "Description"}), "more email address\n");
    EXPECT_EQ(Do({"line", "add", crf, "S1p2", "3"}), "6\n");
    EXPECT_EQ(Run({"line", "delete", crf, "S1p2", "5"}).Status, 2);
}

TEST_F(LineCommands, OtherTablesHaveNoFreeLines) {
    for (const char* item : {"A", "Cp1", "G", "CostCenters", "S2p1"}) {
        const CliResult result = Run({"line", "add", crf, item, "1"});
        EXPECT_EQ(result.Status, 2) << item;
        EXPECT_NE(result.Err.find(item), std::string::npos) << result.Err;
    }
}

TEST_F(LineCommands, LinesOfAScheduleAreAddedAsComponents) {
    const CliResult result = Run({"line", "add", crf, "C1p2", "1"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "F.Y.I.\tAdding/Deleting lines is done from S2p2\n");
    EXPECT_EQ(Run({"line", "delete", crf, "E1p3", "51"}).Err,
              "F.Y.I.\tAdding/Deleting lines is done from S2p3\n");
}

TEST_F(LineCommands, AnEmptyWorksheetHasNoSubscriptToOffer) {
    EXPECT_EQ(Run({"line", "add", crf, "A6", "1", "--sub"}).Status, 2);
    EXPECT_EQ(Run({"component", "add", crf, "1", "1", "Alpha", "--sub"}).Status, 2);
    EXPECT_EQ(LinesOf("A6"), Lines{"100"});
    EXPECT_TRUE(LinesOf("S2p1").empty());
    EXPECT_EQ(Do({"line", "add", crf, "A6", "1", "--whole"}), "1\n");
}

// The first line of other expenses is a whole line; it is not asked for.
TEST_F(LineCommands, ASubscriptOfG1IsAddedWithoutTheQuestionForLine16) {
    EXPECT_EQ(Do({"line", "add", crf, "G1", "9", "--whole", "--no"}), "10\n");
    Do({"set", crf, "G1", "10", "1", "Royalties"});
    EXPECT_EQ(Do({"line", "add", crf, "G1", "10", "--sub", "--yes"}), "10.01\n");
}

TEST_F(LineCommands, WholeAndSubExcludeEachOther) {
    EXPECT_EQ(Run({"line", "add", crf, "A8", "17", "--whole", "--sub"}).Status, 1);
}

}  // namespace

}  // namespace zolmara::test
