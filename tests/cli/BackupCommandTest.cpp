#include <filesystem>

#include "cli/CliRunner.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class BackupCommand : public CliTest {
protected:
    std::string Amount(const std::string& crf) { return Do({"get", crf, "A", "8", "1"}); }
};

TEST_F(BackupCommand, MakesListsAndRestores) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Do({"backup", "list", crf}), "No backups.\n");
    EXPECT_EQ(Do({"backup", "list", crf, "--format", "json"}), "[]\n");
    Do({"set", crf, "A", "8", "1", "100"});
    EXPECT_EQ(Do({"backup", "make", crf}), "1\n");
    EXPECT_EQ(Do({"backup", "make", crf}), "The newest backup holds the same.\n");
    Do({"set", crf, "A", "8", "1", "200"});
    Do({"backup", "restore", crf});
    EXPECT_EQ(Amount(crf), "100\n");
    const auto list = Run({"backup", "list", crf, "--format", "json"}).Json();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0]["which"], 2);
    EXPECT_EQ(list[1]["which"], 1);
    EXPECT_EQ(list[1]["size"], fs::file_size(crf));
    EXPECT_EQ(list[1]["time"].get<std::string>().size(), std::string("2026-01-31 23:59:59").size());
    EXPECT_EQ(list[1].size(), 3u);
    Do({"backup", "restore", crf, "2"});
    EXPECT_EQ(Amount(crf), "200\n");
}

TEST_F(BackupCommand, ComparesEachWithTheFileNow) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "100"});
    Do({"--quiet", "calc", crf});
    Do({"backup", "make", crf});
    Do({"set", crf, "A", "8", "1", "150"});
    const auto list = Run({"backup", "list", crf, "--compare", "--format", "json"}).Json();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0]["expenses"], 100);
    EXPECT_EQ(list[0]["differences"], 1);
}

TEST_F(BackupCommand, AFileThatIsGoneComesBack) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "100"});
    Do({"backup", "make", crf});
    fs::remove(crf);
    EXPECT_EQ(
        Run({"backup", "list", crf, "--compare", "--format", "json"}).Json()[0]["differences"],
        nullptr);
    Do({"backup", "restore", crf});
    EXPECT_EQ(Amount(crf), "100\n");
}

TEST_F(BackupCommand, WhatIsMissingIsTold) {
    const std::string crf = NewCrf();
    const CliResult none = Run({"backup", "restore", crf});
    EXPECT_EQ(none.Status, 4);
    EXPECT_EQ(none.Err, "ERROR\t" + crf + ": there is no backup of this file\n");
    EXPECT_EQ(Run({"backup", "make", File("none.CRF")}).Status, 4);
    EXPECT_EQ(Run({"backup"}).Status, 1);
    EXPECT_EQ(Run({"backup", "list", ""}).Status, 1);
}

TEST_F(BackupCommand, RebuildAndImportMakeOneFirst) {
    const std::string crf = NewCrf();
    const std::string source = NewCrf("Source.CRF");
    Do({"set", crf, "A", "8", "1", "100"});
    Do({"rebuild", crf, "A"});
    EXPECT_EQ(Amount(crf), "\n");
    Do({"backup", "restore", crf});
    EXPECT_EQ(Amount(crf), "100\n");
    Run({"import-crf", crf, source, "A"});
    EXPECT_EQ(Amount(crf), "\n");
    Do({"backup", "restore", crf, "1"});
    EXPECT_EQ(Amount(crf), "100\n");
}

TEST_F(BackupCommand, WithoutRoomForABackupNothingIsRebuilt) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "100"});
    TextFile("settings.ini", "[Zolmara 287-22/Backups]\nFolder=" + crf + "/no\n");
    const std::vector<std::string> rebuild{"--settings", File("settings.ini"), "rebuild", crf, "A"};
    EXPECT_EQ(Run(rebuild).Status, 4);
    EXPECT_EQ(Amount(crf), "100\n");
    auto without = rebuild;
    without.push_back("--no-backup");
    Do(without);
    EXPECT_EQ(Amount(crf), "\n");
}

}  // namespace
}  // namespace zolmara::test
