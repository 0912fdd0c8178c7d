#include <cerrno>
#include <filesystem>

#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

namespace fs = std::filesystem;

class IdentityCommand : public CliTest {
protected:
    IdentityCommand() {
        Do({"new", crf, "--number", "12-3456", "--start", "10/1/2022", "--end", "9/30/2023",
            "--name", "Home Office"});
    }
    std::string crf = File("Own.CRF");
};

TEST_F(IdentityCommand, ShowsWhoseStatementItIs) {
    const std::string shown = Do({"identity", crf});
    for (const char* part : {"12-3456", "10/1/2022", "9/30/2023", "Home Office"})
        EXPECT_NE(shown.find(part), std::string::npos) << shown;
}

TEST_F(IdentityCommand, ChangesWhatIsGivenAndKeepsTheRest) {
    EXPECT_EQ(Run({"identity", crf, "--name", "Other Office", "--number", "149012"}).Status, 0);
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Other Office\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_2"}), "14-9012\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_4"}), "10/01/2022\n");
}

TEST_F(IdentityCommand, ARefusalLeavesTheFile) {
    const CliResult result = Run({"identity", crf, "--start", "9/30/2022", "--name", "X"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "Warning\tThe start date must be on or after 10/1/22.\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Home Office\n");
}

TEST_F(IdentityCommand, AnEmptyEndIsAYearFromTheStart) {
    EXPECT_EQ(Run({"identity", crf, "--start", "1/1/2023", "--end", ""}).Status, 0);
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_5"}), "12/31/2023\n");
}

TEST_F(IdentityCommand, SaveAsLeavesTheFileAndChangesTheCopy) {
    const std::string copy = File("Copy.CRF");
    EXPECT_EQ(Run({"identity", crf, "--name", "Other", "--save-as", copy}).Status, 0);
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Home Office\n");
    EXPECT_EQ(Do({"get", copy, "S1p1", "2", "Col_1"}), "Other\n");
}

TEST_F(IdentityCommand, SaveAsOntoItselfOrAnotherFileIsRefused) {
    const CliResult own = Run({"identity", crf, "--name", "Other", "--save-as", crf});
    EXPECT_EQ(own.Status, 2);
    EXPECT_EQ(own.Err,
              "ERROR\tThe file selected is the same one that is currently open, SaveAs aborted.\n");
    Do({"new", File("There.CRF"), "--number", "12-3456", "--start", "10/1/2022", "--name",
        "There"});
    EXPECT_NE(Run({"identity", crf, "--name", "Other", "--save-as", File("There.CRF")}).Status, 0);
    EXPECT_EQ(Do({"get", File("There.CRF"), "S1p1", "2", "Col_1"}), "There\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Home Office\n");
}

// The statement that a copy would be made of must not be taken for the place of the copy.
TEST_F(IdentityCommand, SaveAsOntoItselfByAnotherRoadIsRefused) {
    fs::create_directory(File("sub"));
    fs::create_symlink("Own.CRF", File("Link.CRF"));
    fs::create_symlink("Link.CRF", File("LinkToLink.CRF"));
    fs::create_directory_symlink(".", File("here"));
    fs::create_hard_link(crf, File("Hard.CRF"));
    const std::string before = ContentOf(crf);
    for (const char* road : {"Link.CRF", "LinkToLink.CRF", "here/Own.CRF", "Hard.CRF", "./Own.CRF",
                             ".//Own.CRF", "sub/../Own.CRF", "here/sub/../Link.CRF"}) {
        const CliResult result = Run({"identity", crf, "--name", "Other", "--save-as", File(road)});
        EXPECT_EQ(result.Status, 2) << road;
        EXPECT_EQ(result.Err,
                  "ERROR\tThe file selected is the same one that is currently open, SaveAs "
                  "aborted.\n")
            << road;
        EXPECT_EQ(ContentOf(crf), before) << road;
    }
    EXPECT_TRUE(fs::is_symlink(File("Link.CRF")));
    // And the other way round.
    EXPECT_EQ(Run({"identity", File("Link.CRF"), "--name", "O", "--save-as", crf}).Status, 2);
    EXPECT_EQ(ContentOf(crf), before);
}

// The folder may be shared with machines to which these are one name.
TEST_F(IdentityCommand, SaveAsOntoItsOwnNameInAnotherCaseIsRefused) {
    const std::string before = ContentOf(crf);
    for (const char* name : {"OWN.CRF", "own.crf", "Own.crf"}) {
        const CliResult result = Run({"identity", crf, "--name", "Other", "--save-as", File(name)});
        EXPECT_EQ(result.Status, 2) << name;
        EXPECT_EQ(result.Err, "ERROR\t" + File(name) + ": This is the open Cost Report File\n");
        EXPECT_FALSE(fs::exists(File(name))) << name;
        EXPECT_EQ(ContentOf(crf), before) << name;
    }
}

// What SQLite keeps beside a statement is a part of it.
TEST_F(IdentityCommand, SaveAsOntoItsJournalIsRefused) {
    const std::string before = ContentOf(crf);
    for (const char* name : {"Own.CRF-journal", "Own.CRF-wal", "own.crf-SHM"}) {
        const CliResult result = Run({"identity", crf, "--name", "Other", "--save-as", File(name)});
        EXPECT_EQ(result.Status, 2) << name;
        EXPECT_EQ(result.Err,
                  "ERROR\t" + File(name) + ": This is a part of the open Cost Report File\n");
        EXPECT_FALSE(fs::exists(File(name))) << name;
        EXPECT_EQ(ContentOf(crf), before) << name;
    }
}

TEST_F(IdentityCommand, SaveAsThroughALinkToNowhereMakesTheFileThere) {
    fs::create_symlink("Copy.CRF", File("ToCopy.CRF"));
    Do({"identity", crf, "--name", "Other", "--save-as", File("ToCopy.CRF")});
    EXPECT_TRUE(fs::is_symlink(File("ToCopy.CRF")));
    EXPECT_EQ(Do({"get", File("Copy.CRF"), "S1p1", "2", "Col_1"}), "Other\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Home Office\n");
}

TEST_F(IdentityCommand, SaveAsIntoAFolderThatIsNotThereIsAFileThatCannotBeWritten) {
    const CliResult result =
        Run({"identity", crf, "--name", "Other", "--save-as", File("no/X.CRF")});
    EXPECT_EQ(result.Status, 4);
    EXPECT_EQ(result.Err, "ERROR\t" + File("no/X.CRF") + ": there is no such folder\n");
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Home Office\n");
}

TEST_F(IdentityCommand, ACopyThatCannotBeChangedIsNotLeft) {
    const std::string copy = File("out/Copy.CRF");
    const auto saveAs = [&](int at) {
        fs::remove_all(File("out"));
        fs::create_directory(File("out"));
        CliSetting setting;
        setting.Faults = FaultPlan{File("out"), at, ENOSPC, "", File("report")};
        const int status = Run({"identity", crf, "--name", "O", "--save-as", copy}, setting).Status;
        return std::pair(status, ReadFaultReport(*setting.Faults).Calls);
    };
    const auto [done, calls] = saveAs(0);
    ASSERT_EQ(done, 0);
    // The last calls are those of the commit of the change.
    for (const int at : {calls - 2, calls - 1, calls}) {
        EXPECT_EQ(saveAs(at).first, 4) << at;
        EXPECT_TRUE(fs::is_empty(File("out"))) << at;
    }
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_1"}), "Home Office\n");
}

TEST_F(IdentityCommand, ALongYearIsAskedAbout) {
    EXPECT_EQ(Run({"identity", crf, "--end", "11/1/2023", "--no"}).Status, 2);
    EXPECT_EQ(Run({"identity", crf, "--end", "11/1/2023", "--yes"}).Status, 0);
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "Col_5"}), "11/01/2023\n");
}

}  // namespace

}  // namespace zolmara::test
