#include <filesystem>

#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

class NewCommand : public CliTest {
protected:
    /// The words of a `new` command that would do, with an option changed.
    std::vector<std::string> Words(const std::string& option = "", const std::string& value = "") {
        std::vector<std::string> words{"new",     File("New.CRF"), "--number", "12-3456",
                                       "--start", "10/1/2022",     "--end",    "9/30/2023",
                                       "--name",  "Home Office"};
        for (std::size_t i = 2; i < words.size(); i += 2)
            if (words[i] == option) words[i + 1] = value;
        return words;
    }
    CliResult With(const std::string& option, const std::string& value) {
        return Run(Words(option, value));
    }
    void ExpectRefused(const CliResult& result, const std::string& line) {
        EXPECT_EQ(result.Status, 2);
        EXPECT_EQ(result.Err, line + "\n");
        EXPECT_FALSE(std::filesystem::exists(File("New.CRF")));
    }
};

TEST_F(NewCommand, MakesACrfWithItsIdentity) {
    EXPECT_EQ(Run(Words()).Status, 0);
    EXPECT_EQ(Do({"get", File("New.CRF"), "S1p1", "2", "Col_1"}), "Home Office\n");
    EXPECT_EQ(Do({"get", File("New.CRF"), "S1p1", "2", "Col_2"}), "12-3456\n");
}

TEST_F(NewCommand, LeavesNothingElseInTheFolder) {
    EXPECT_EQ(Run(Words()).Status, 0);
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(name == "New.CRF" || name == "config") << name;
    }
}

TEST_F(NewCommand, ANumberWithoutADashIsTheSameNumber) {
    EXPECT_EQ(With("--number", "123456").Status, 0);
    EXPECT_EQ(Do({"get", File("New.CRF"), "S1p1", "2", "Col_2"}), "12-3456\n");
}

TEST_F(NewCommand, ANumberOfFiveDigitsIsRefused) {
    ExpectRefused(With("--number", "12-345"),
                  "ERROR\tYou have entered an invalid Provider Number! Provider number must be 6 "
                  "numeric digits.");
}

TEST_F(NewCommand, AnEndLeftOutIsOneYearFromTheStart) {
    auto words = Words();
    words.erase(words.begin() + 6, words.begin() + 8);
    EXPECT_EQ(Run(words).Status, 0);
    EXPECT_EQ(Do({"get", File("New.CRF"), "S1p1", "2", "Col_5"}), "09/30/2023\n");
}

TEST_F(NewCommand, AStartThatIsNoDateIsRefused) {
    const CliResult result = With("--start", "soon");
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("Fiscal Year Start date is not a valid date.  Please (re-)enter "
                              "one."),
              std::string::npos);
}

TEST_F(NewCommand, AnEndAheadOfTheStartIsRefused) {
    const CliResult result = With("--end", "9/30/2022");
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("FY End preceeds FY Start."), std::string::npos);
}

TEST_F(NewCommand, AStartBeforeOctober2022IsRefused) {
    const CliResult result = With("--start", "9/30/2022");
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("Cost reports starting before 10/01/2022 require"),
              std::string::npos);
}

TEST_F(NewCommand, TheLongestPeriodHas457Days) {
    EXPECT_EQ(With("--end", "1/1/2024").Status, 0);
    std::filesystem::remove(File("New.CRF"));
    const CliResult result = With("--end", "1/2/2024");
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("Fiscal Period must be less than 458 days."), std::string::npos);
}

TEST_F(NewCommand, TheQuestionAboutALongYearIsAnsweredWithYesUnlessToldNo) {
    auto words = Words("--end", "10/2/2023");
    words.push_back("--no");
    const CliResult no = Run(words);
    EXPECT_EQ(no.Status, 2);
    EXPECT_FALSE(std::filesystem::exists(File("New.CRF")));
    EXPECT_TRUE(
        no.Err.starts_with("Warning\tThe F/Y Start and F/Y End dates entered span more "
                           "than one fiscal year."))
        << no.Err;
    EXPECT_TRUE(no.Err.ends_with("\tNo\n")) << no.Err;
    words.back() = "--yes";
    EXPECT_EQ(Run(words).Status, 0);
}

TEST_F(NewCommand, ADoubleQuoteInTheNameIsRefused) {
    const CliResult result = With("--name", "The \"Best\" Office");
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("The Facility Name cannot contain double quote characters"),
              std::string::npos);
}

TEST_F(NewCommand, ASingleQuoteAndAnAccentAreLettersOfTheName) {
    EXPECT_EQ(With("--name", "O'Brien & Söhne").Status, 0);
    EXPECT_EQ(Do({"get", File("New.CRF"), "S1p1", "2", "Col_1"}), "O'Brien & Söhne\n");
}

TEST_F(NewCommand, AFileThatIsThereStaysWithoutForce) {
    const std::string path = TextFile("New.CRF", "precious");
    const CliResult result = Run(Words());
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("--force"), std::string::npos);
    EXPECT_NE(result.Err.find(path), std::string::npos);
    EXPECT_EQ(ContentOf(path), "precious");
}

TEST_F(NewCommand, ForceReplacesTheFileAndItsStaleJournal) {
    TextFile("New.CRF", "old");
    TextFile("New.CRF-journal", "left behind by a crash");
    auto words = Words();
    words.push_back("--force");
    EXPECT_EQ(Run(words).Status, 0);
    EXPECT_FALSE(std::filesystem::exists(File("New.CRF-journal")));
    EXPECT_EQ(Do({"get", File("New.CRF"), "S1p1", "2", "Col_1"}), "Home Office\n");
}

TEST_F(NewCommand, AFailureWithForceKeepsTheFormerFile) {
    const std::string path = NewCrf("New.CRF");
    const std::string former = ContentOf(path);
    auto words = Words();
    words.push_back("--force");
    CliSetting full;
    full.FileLimit = 20000;
    const CliResult result = Run(words, full);
    EXPECT_EQ(result.Status, 4) << result.Err;
    EXPECT_EQ(ContentOf(path), former);
    EXPECT_FALSE(std::filesystem::exists(path + ".new"));
}

TEST_F(NewCommand, AFolderIsNotReplaced) {
    std::filesystem::create_directory(File("New.CRF"));
    auto words = Words();
    words.push_back("--force");
    EXPECT_EQ(Run(words).Status, 4);
    EXPECT_TRUE(std::filesystem::is_directory(File("New.CRF")));
}

TEST_F(NewCommand, AFolderThatIsNotThereTakesNoFile) {
    auto words = Words();
    words[1] = File("nowhere/New.CRF");
    const CliResult result = Run(words);
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find("nowhere/New.CRF"), std::string::npos) << result.Err;
}

}  // namespace

}  // namespace zolmara::test
