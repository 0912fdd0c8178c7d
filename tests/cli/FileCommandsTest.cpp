#include <csignal>
#include <filesystem>
#include <fstream>

#include "cli/CliRunner.h"
#include "support/Paths.h"

namespace zolmara::test {

namespace {

using FileCommands = CliTest;
namespace fs = std::filesystem;

/// Changes the file behind the program's back.
void Execute(const std::string& crf, const std::string& statement) {
    Database file = DBEngine::OpenDatabase(crf);
    file.Execute(statement);
}

TEST_F(FileCommands, HeaderSetsShowsAndClearsALine) {
    const std::string crf = NewCrf();
    Do({"header", crf, "2", "Draft for the \"board\""});
    const auto lines = Run({"header", crf, "--format", "json"}).Json();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1]["LineNum"], 2);
    EXPECT_EQ(lines[1]["LineText"], "Draft for the \"board\"");
    EXPECT_TRUE(lines[0]["LineText"].is_null());
    Do({"header", crf, "2", ""});
    EXPECT_EQ(Run({"header", crf, "--format", "json"}).Json()[1]["LineText"], "");
}

TEST_F(FileCommands, HeaderTakes140CharactersAndNotOneMore) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Run({"header", crf, "1", std::string(140, 'x')}).Status, 0);
    const CliResult result = Run({"header", crf, "1", std::string(141, 'y')});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tHeaderLines line 1 takes at most 140 characters, not 141\n");
    EXPECT_EQ(Do({"get", crf, "HeaderLines", "1", "LineText"}), std::string(140, 'x') + "\n");
}

TEST_F(FileCommands, HeaderHealsAFileWithoutTheTable) {
    const std::string crf = NewCrf();
    DBEngine::OpenDatabase(crf).DeleteTable("HeaderLines");
    Do({"header", crf, "3", "Third"});
    EXPECT_EQ(Run({"header", crf, "--format", "json"}).Json()[2]["LineText"], "Third");
}

TEST_F(FileCommands, HeaderKnowsThreeLines) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Run({"header", crf, "4", "x"}).Status, 1);
    EXPECT_EQ(Run({"header", crf, "1"}).Status, 1);
}

TEST_F(FileCommands, CompactDropsTemporaryTablesAndKeepsTheRest) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "4711"});
    Execute(crf, "SELECT * INTO tblAnything FROM A;");
    Do({"--quiet", "compact", crf});
    EXPECT_EQ(Run({"show", crf, "tblAnything"}).Status, 2);
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "4711\n");
    EXPECT_FALSE(fs::exists(File("VLQTemp.CRF")));
}

TEST_F(FileCommands, AFileThatIsNotThere) {
    const std::string path = File("missing.CRF");
    for (const char* command : {"info", "calc", "compact", "header"}) {
        const CliResult result = Run({command, path});
        EXPECT_EQ(result.Status, 4) << command;
        EXPECT_NE(result.Err.find(path), std::string::npos) << result.Err;
        EXPECT_FALSE(fs::exists(path));
    }
}

TEST_F(FileCommands, AFileThatIsNoDatabaseIsLeftAlone) {
    const std::string path = TextFile("letter.CRF", "Dear Sir or Madam,\n");
    for (const char* command : {"info", "calc", "compact", "header"}) {
        const CliResult result = Run({command, path});
        EXPECT_EQ(result.Status, 4) << command << result.Err;
        EXPECT_NE(result.Err.find(path), std::string::npos) << result.Err;
    }
    EXPECT_EQ(ContentOf(path), "Dear Sir or Madam,\n");
}

TEST_F(FileCommands, AnEmptyFileIsNoCrf) {
    const std::string path = TextFile("empty.CRF", "");
    EXPECT_EQ(Run({"info", path}).Status, 4);
    EXPECT_EQ(ContentOf(path), "");
}

TEST_F(FileCommands, APathThroughALinkLeadsWhereTheSystemSays) {
    fs::create_directories(File("far/away"));
    fs::create_directory_symlink(File("far/away"), File("link"));
    fs::rename(NewCrf(), File("far/there.CRF"));
    EXPECT_EQ(Run({"info", File("link/../there.CRF")}).Status, 0);
    EXPECT_EQ(Run({"info", File("far/../far/./there.CRF")}).Status, 0);
    EXPECT_EQ(Run({"info", File("link/../missing.CRF")}).Status, 4);
}

TEST_F(FileCommands, AFolderIsNoFile) {
    const CliResult result = Run({"info", folder.Path().string()});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find(folder.Path().string()), std::string::npos);
}

TEST_F(FileCommands, AReadOnlyFileIsReadAndNotWritten) {
    const std::string crf = NewCrf();
    fs::permissions(crf, fs::perms::owner_read | fs::perms::group_read);
    const std::string former = ContentOf(crf);
    EXPECT_EQ(Run({"info", crf}).Status, 0);
    EXPECT_EQ(Run({"show", crf, "A"}).Status, 0);
    for (const auto& words : {std::vector<std::string>{"calc", crf},
                              {"header", crf, "1", "x"},
                              {"cc", "add", crf, "4", "X", "--sub"},
                              {"component", "add", crf, "1", "1", "X"},
                              {"import", crf, TextFile("a.txt", "A\t8\t1\t1\n")}}) {
        const CliResult result = Run(words);
        EXPECT_EQ(result.Status, 4) << words[0] << result.Err;
        EXPECT_NE(result.Err.find("ERROR\t"), std::string::npos) << words[0];
    }
    EXPECT_EQ(ContentOf(crf), former);
}

TEST_F(FileCommands, AStatementOfAnotherFormIsRefusedByItsNumber) {
    const std::string crf = NewCrf();
    Execute(crf, "UPDATE Master SET FormNum='339';");
    const CliResult result = Run({"info", crf});
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("(Sample.CRF) containing data for a CMS 339 Cost Report."),
              std::string::npos)
        << result.Err;
    EXPECT_EQ(result.Out, "");
}

TEST_F(FileCommands, AStatementOfAnEarlierYearIsRefused) {
    const std::string crf = NewCrf();
    Execute(crf, "UPDATE Master SET FYStart='2022-09-30 00:00:00';");
    const CliResult result = Run({"calc", crf});
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("287-22 does not support CRFs before 10/1/2022, run 287-05 or call "
                              "Velquist at 555-010-0143 for assistance."),
              std::string::npos);
}

TEST_F(FileCommands, AMissingWorksheetIsNamed) {
    const std::string crf = NewCrf();
    DBEngine::OpenDatabase(crf).DeleteTable("Bp3");
    const CliResult result = Run({"--quiet", "calc", crf});
    EXPECT_EQ(result.Status, 5);
    EXPECT_NE(result.Err.find("Bp3"), std::string::npos) << result.Err;
    EXPECT_EQ(Run({"show", crf, "Bp3"}).Status, 2);
    EXPECT_EQ(Run({"info", crf}).Status, 0);
}

// A half-calculated statement is told from one that ended with warnings.
TEST_F(FileCommands, ARunThatStopsPartWayHasAStatusOfItsOwn) {
    const std::string crf = SampleCrf();
    const std::string before = Do({"get", crf, "A81p1", "1", "7"});
    Do({"set", crf, "A81p1", "1", "5", "777"});
    DBEngine::OpenDatabase(crf).DeleteTable("G");
    for (const auto& words : {std::vector<std::string>{"calc", crf},
                              {"check", crf},
                              {"print", crf},
                              {"print", crf, "G"},
                              {"ecr", crf, "--manual"}}) {
        std::vector<std::string> quiet{"--quiet"};
        quiet.insert(quiet.end(), words.begin(), words.end());
        const CliResult result = Run(quiet);
        EXPECT_EQ(result.Status, 5) << words[0] << result.Err;
        EXPECT_TRUE(result.Err.ends_with("The run has stopped; what was finished stands.\n"))
            << words[0] << result.Err;
    }
    EXPECT_NE(Do({"get", crf, "A81p1", "1", "7"}), before) << "the first level stands";
}

TEST_F(FileCommands, AFullDiskLeavesTheFileAsItWas) {
    const std::string crf = SampleCrf();
    Do({"set", crf, "A", "8", "1", "7777777"});
    const std::string former = Do({"show", crf, "E1p1"});
    CliSetting full;
    full.FileLimit = 8192;
    const CliResult result = Run({"--quiet", "calc", crf}, full);
    EXPECT_EQ(result.Status, 4) << result.Err;
    EXPECT_NE(result.Err.find(crf), std::string::npos) << result.Err;
    EXPECT_EQ(Do({"show", crf, "E1p1"}), former);
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "7777777\n");
    Do({"--quiet", "calc", crf});
    EXPECT_NE(Do({"show", crf, "E1p1"}), former);
}

TEST_F(FileCommands, AnImportOnAFullDiskLeavesTheFileAsItWas) {
    const std::string crf = NewCrf();
    CliSetting full;
    full.FileLimit = static_cast<long>(fs::file_size(crf));
    const CliResult result =
        Run({"--quiet", "import", crf, std::string(kSamples) + "/northfield.txt"}, full);
    EXPECT_EQ(result.Status, 4) << result.Err;
    EXPECT_EQ(Run({"cc", "list", crf, "--format", "json"}).Json().size(), 26U);
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "\n");
}

TEST_F(FileCommands, AKilledImportLeavesAllOrNothing) {
    const std::string crf = NewCrf();
    const std::string whole = ContentOf(crf);
    const std::vector<std::string> words{"--quiet", "import", crf,
                                         std::string(kSamples) + "/northfield.txt"};
    CliSetting faulty;
    faulty.Faults = FaultPlan{folder.Path().string(), 0, -1, "", File("calls")};
    EXPECT_EQ(Run(words, faulty).Status, 0);
    const int calls = ReadFaultReport(*faulty.Faults).Calls;
    ASSERT_GT(calls, 10);
    for (const int call : {1, 2, 3, calls / 2, calls - 5, calls - 3, calls - 2, calls - 1, calls}) {
        std::ofstream(crf, std::ios::binary) << whole;
        faulty.Faults->At = call;
        EXPECT_EQ(Run(words, faulty).Status, 1000 + SIGKILL) << call;
        const auto costCenters = Run({"cc", "list", crf, "--format", "json"}).Json().size();
        const std::string amount = Do({"get", crf, "A", "8", "1"});
        EXPECT_EQ(costCenters, amount == "\n" ? 26U : 34U) << call;
        EXPECT_EQ(Run({"--quiet", "calc", crf}).Status, 0) << call;
    }
}

}  // namespace

}  // namespace zolmara::test
