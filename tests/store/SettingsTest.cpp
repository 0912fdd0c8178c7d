#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "store/Files.h"
#include "store/session/Settings.h"
#include "support/EnvironmentValue.h"
#include "support/PlainUser.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

class SettingsFile : public ::testing::Test {
protected:
    test::TempFolder folder;
    Settings settings{folder.File("deep/in/settings.ini")};
};

TEST_F(SettingsFile, GivesTheFallbackWithoutAFile) {
    EXPECT_EQ(settings.Get("Zolmara 287-22", "Startup", "CRFLoc", "None"), "None");
    EXPECT_FALSE(FileExists(settings.Path()));
}

TEST_F(SettingsFile, KeepsWhatIsSaved) {
    EXPECT_TRUE(settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/reports/Été"));
    EXPECT_TRUE(settings.Save("Zolmara-10", "Printing", "PrintQuality", "False"));
    EXPECT_TRUE(settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/reports/Hiver"));
    const Settings again(settings.Path());
    EXPECT_EQ(again.Get("Zolmara 287-22", "Startup", "CRFLoc", "None"), "/reports/Hiver");
    EXPECT_EQ(again.Get("Zolmara-10", "Printing", "PrintQuality", "True"), "False");
    EXPECT_EQ(again.Get("Zolmara", "Printing", "PrintQuality", "True"), "True");
}

TEST_F(SettingsFile, HasASectionForEachApplicationAndSection) {
    settings.Save("Zolmara 287-22", "Startup", "Debug", "True");
    EXPECT_NE(ReadWholeFile(settings.Path())->find("[Zolmara 287-22/Startup]"), std::string::npos);
}

TEST_F(SettingsFile, KeepsWhatOthersWrote) {
    settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/reports");
    std::ofstream(settings.Path(), std::ios::app) << "[Other/Part]\nKey = 1\n";
    settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/elsewhere");
    EXPECT_EQ(settings.Get("Other", "Part", "Key", ""), "1");
}

TEST_F(SettingsFile, AFileThatStandsIsReadOnce) {
    settings.Save("A", "B", "C", "D");
    const Settings trusting(settings.Path(), std::chrono::seconds(0));
    for (int times = 0; times < 3; ++times) EXPECT_EQ(trusting.Get("A", "B", "C", ""), "D");
    EXPECT_EQ(trusting.ReadCount(), 1);
}

TEST_F(SettingsFile, WhatAnotherProgramSavesIsSeenAtOnce) {
    settings.Save("A", "B", "C", "D");
    const Settings trusting(settings.Path(), std::chrono::seconds(0));
    EXPECT_EQ(trusting.Get("A", "B", "C", ""), "D");
    settings.Save("A", "B", "C", "E");
    EXPECT_EQ(trusting.Get("A", "B", "C", ""), "E");
    std::filesystem::remove(settings.Path());
    EXPECT_EQ(trusting.Get("A", "B", "C", "none"), "none");
    std::filesystem::create_directory(settings.Path());
    EXPECT_EQ(trusting.Get("A", "B", "C", "none"), "none");
    std::filesystem::remove(settings.Path());
    EXPECT_TRUE(trusting.Save("A", "B", "C", "F"));
    EXPECT_EQ(settings.Get("A", "B", "C", ""), "F");
}

TEST_F(SettingsFile, AFileThatHasJustChangedIsReadAgain) {
    // A second change within one tick of the file system's clock looks like the first.
    settings.Save("A", "B", "C", "D");
    for (int times = 0; times < 3; ++times) EXPECT_EQ(settings.Get("A", "B", "C", ""), "D");
    EXPECT_EQ(settings.ReadCount(), 3);
}

TEST_F(SettingsFile, SaysWhenItCannotBeWritten) {
    WriteWholeFile(folder.File("file"), "no folder");
    const Settings blocked(folder.File("file/settings.ini"));
    EXPECT_FALSE(blocked.Save("A", "B", "C", "D"));
    EXPECT_EQ(blocked.Get("A", "B", "C", "none"), "none");
}

TEST_F(SettingsFile, AFolderUnderItsNameHasNoSettings) {
    std::filesystem::create_directories(settings.Path());
    EXPECT_EQ(settings.Get("A", "B", "C", "none"), "none");
    EXPECT_FALSE(settings.Save("A", "B", "C", "D"));
    EXPECT_TRUE(std::filesystem::is_directory(settings.Path()));
}

TEST_F(SettingsFile, APipeUnderItsNameIsNotWaitedFor) {
    std::filesystem::create_directories(folder.File("deep/in"));
    ASSERT_EQ(mkfifo(settings.Path().c_str(), 0600), 0);
    EXPECT_EQ(settings.Get("A", "B", "C", "none"), "none");
    EXPECT_FALSE(settings.Save("A", "B", "C", "D"));
    EXPECT_TRUE(std::filesystem::is_fifo(settings.Path()));
}

TEST_F(SettingsFile, AFileThatMayNotBeReadIsNotOverwritten) {
    settings.Save("A", "B", "C", "D");
    const auto before = ReadWholeFile(settings.Path());
    chmod(settings.Path().c_str(), 0);
    EXPECT_TRUE(test::AsAPlainUser(folder.Path(), [&] {
        EXPECT_EQ(settings.Get("A", "B", "C", "none"), "none");
        EXPECT_FALSE(settings.Save("A", "B", "C", "E"));
    }));
    chmod(settings.Path().c_str(), 0600);
    EXPECT_EQ(ReadWholeFile(settings.Path()), before);
}

TEST_F(SettingsFile, ATextThatIsNoSettingsIsNotOverwritten) {
    std::filesystem::create_directories(folder.File("deep/in"));
    using namespace std::string_literals;
    for (const auto& text :
         {"\xFF\xFE[\0A\0]\0"s, "[A/B]\nC = D\xE9\n"s, "Dear Sir,\n"s, "[A/B]\nC = D\0\n"s}) {
        WriteWholeFile(settings.Path(), text);
        EXPECT_FALSE(settings.Save("A", "B", "C", "E"));
        EXPECT_EQ(ReadWholeFile(settings.Path()), text);
    }
}

TEST_F(SettingsFile, ALineBreakInAValueIsNoSettingOfItsOwn) {
    const std::string folderName = "/reports\nDebug = True\n[Other/Part]\nKey = 1";
    EXPECT_FALSE(settings.Save("Zolmara 287-22", "Startup", "CRFLoc", folderName));
    EXPECT_FALSE(settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/reports\rDebug = True"));
    EXPECT_EQ(settings.Get("Zolmara 287-22", "Startup", "Debug", "False"), "False");
    EXPECT_EQ(settings.Get("Other", "Part", "Key", ""), "");
    EXPECT_EQ(settings.Get("Zolmara 287-22", "Startup", "CRFLoc", "None"), "None");
}

/// Saves ten settings of its own, in a program of its own.
pid_t StartSaving(const std::string& path, const std::string& who) {
    const pid_t child = fork();
    if (child != 0) return child;
    bool saved = true;
    for (int key = 0; key < 10; ++key)
        saved = Settings(path).Save("A", who, std::to_string(key), "saved") && saved;
    _exit(saved ? 0 : 1);
}

void ExpectAllSaved(const std::string& path, const std::vector<std::string>& roads) {
    std::vector<pid_t> programs;
    for (std::size_t i = 0; i < roads.size(); ++i)
        programs.push_back(StartSaving(roads[i], std::to_string(i)));
    for (const pid_t program : programs) {
        int status = -1;
        waitpid(program, &status, 0);
        EXPECT_EQ(status, 0);
    }
    for (std::size_t i = 0; i < roads.size(); ++i)
        for (int key = 0; key < 10; ++key)
            EXPECT_EQ(Settings(path).Get("A", std::to_string(i), std::to_string(key), "lost"),
                      "saved")
                << i << " " << key;
}

TEST_F(SettingsFile, ProgramsThatSaveAtTheSameMomentLoseNothing) {
    ExpectAllSaved(settings.Path(), {3, settings.Path()});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.File("deep/in")), {}), 1)
        << "something is left beside it";
}

TEST_F(SettingsFile, ProgramsThatSaveByDifferentRoadsLoseNothing) {
    std::filesystem::create_directory(folder.File("other"));
    std::filesystem::create_symlink("../deep/in/settings.ini", folder.File("other/link.ini"));
    std::filesystem::create_directory_symlink("deep/in", folder.File("there"));
    ExpectAllSaved(settings.Path(), {settings.Path(), folder.File("other/link.ini"),
                                     folder.File("there/settings.ini")});
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("other/link.ini")));
}

// What is left of a lock goes with its program.
TEST_F(SettingsFile, AProgramThatDiesWhileItSavesHoldsNobodyUp) {
    settings.Save("A", "B", "C", "D");
    const pid_t child = fork();
    if (child == 0) {
        const int held = ::open(folder.File("deep/in").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        kill(getpid(), ::flock(held, LOCK_EX) == 0 ? SIGKILL : SIGTERM);
    }
    int status = -1;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_TRUE(settings.Save("A", "B", "C", "E"));
    EXPECT_EQ(settings.Get("A", "B", "C", ""), "E");
}

TEST_F(SettingsFile, AFolderThatTakesNoFilesIsNoPlaceForSettings) {
    settings.Save("A", "B", "C", "D");
    chmod(folder.File("deep/in").c_str(), 0500);
    EXPECT_TRUE(test::AsAPlainUser(folder.Path(), [&] {
        EXPECT_FALSE(settings.Save("A", "B", "C", "E"));
        EXPECT_EQ(settings.Get("A", "B", "C", "none"), "D");
    }));
    chmod(folder.File("deep/in").c_str(), 0700);
}

TEST(SettingsPath, LiesInTheConfigurationFolder) {
    const test::EnvironmentValue folder("XDG_CONFIG_HOME", "/config");
    EXPECT_EQ(Settings::UserFile(), "/config/zolmara/settings.ini");
    folder.Set("");
    EXPECT_TRUE(Settings::UserFile().ends_with("/.config/zolmara/settings.ini"));
}

// --- Whole files ---------------------------------------------------------------------------

TEST(WholeFiles, AreCopiedOverWhatIsThere) {
    const test::TempFolder folder;
    WriteWholeFile(folder.File("a"), "new");
    WriteWholeFile(folder.File("b"), "old and longer");
    CopyWholeFile(folder.File("a"), folder.File("b"));
    EXPECT_EQ(ReadWholeFile(folder.File("b")), "new");
    EXPECT_EQ(ReadWholeFile(folder.File("a")), "new");
}

TEST(WholeFiles, StayWhenACopyFails) {
    const test::TempFolder folder;
    WriteWholeFile(folder.File("b"), "old");
    EXPECT_THROW(CopyWholeFile(folder.File("none"), folder.File("b")), StoreError);
    EXPECT_THROW(CopyWholeFile(folder.File("b"), folder.File("b")), StoreError);
    EXPECT_EQ(ReadWholeFile(folder.File("b")), "old");
    EXPECT_FALSE(ReadWholeFile(folder.File("none")));
}

}  // namespace
}  // namespace zolmara
