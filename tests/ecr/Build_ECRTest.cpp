#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "core/Dialogs.h"
#include "core/Status.h"
#include "ecr/Build_ECR.h"
#include "ecr/EcrSupport.h"
#include "ecr/FileTime.h"
#include "ecr/Fingerprint.h"
#include "ecr/FingerprintLibrary.h"
#include "ecr/Record.h"
#include "store/files/Scratch.h"
#include "store/session/Acts.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

/// The last-write time of a file, by the local clock.
DateTime WrittenAt(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    std::tm local{};
    localtime_r(&status.st_mtime, &local);
    return DateTime(local.tm_year + 1900, static_cast<unsigned>(local.tm_mon + 1),
                    static_cast<unsigned>(local.tm_mday), local.tm_hour, local.tm_min,
                    local.tm_sec);
}

class EcrBuild : public EcrCrf {
protected:
    EcrBuild() {
        host.Folder = folder.Path();
        host.Clock = DateTime(2024, 3, 15, 14, 5, 42);
        host.Files = {ecr};
        SetCell("A", 8, "Col_1", 1000);
    }

    Lines Ecr() const { return LinesOf(ecr); }
    Lines Pi() const { return LinesOf(pi); }
    Lines CalcMessages() const {
        Lines shown;
        for (const std::string& event : host.Events)
            if (event.starts_with("ShowCalcMsg: ")) shown.push_back(event.substr(13));
        return shown;
    }
    bool MenusAre(bool enabled) const {
        return std::ranges::all_of(
            Lines{"mnuEdit", "mnuHelp", "mnuReport", "mnuView"}, [&](const std::string& menu) {
                return host.Menus.contains(menu) && host.Menus.at(menu) == enabled;
            });
    }
    void ExpectClosed() const {
        EXPECT_TRUE(MenusAre(true));
        EXPECT_EQ(host.CalcMsg, "");
        EXPECT_EQ(ECRStamp, "");
        EXPECT_EQ(host.PointerNow, Pointer::Normal);
    }

    const std::string ecr = folder.File("HO123456.23A1");
    const std::string pi = folder.File("PI123456.23A1");
};

/// The beginnings of files of an earlier build.
constexpr const char* kOlderEcr = "1           1   123456";
constexpr const char* kOlderPi =
    "\f\x01\r\n  Zolmara 287 System [Version: 3.0.0]\r\n  Provider CCN: 12-3456\r\n";

// --- A good run ----------------------------------------------------------------------------

TEST_F(EcrBuild, RecordsStandInTheirOrderAndTheSealIsLast) {
    Build_ECR();
    const Lines lines = Ecr();
    EXPECT_TRUE(std::ranges::is_sorted(lines, {}, [](const std::string& line) { return line[0]; }));
    EXPECT_EQ(lines.at(0), "1           1   12345620222742023273HB02P00320240752023365");
    EXPECT_EQ(lines.at(2), "1           4       14:05");
    EXPECT_EQ(StartingWith(lines, "3A000000    8    1"),
              Lines{"3A000000    8    1  " + Amount("1000")});
    EXPECT_EQ(StartingWith(lines, "4").size(), 1u);
    EXPECT_TRUE(lines.back().starts_with("4LOCALSEAL-1:"));
    EXPECT_EQ(lines.back().size(), 77u);
}

TEST_F(EcrBuild, ThePrintImageIsTheWholeFormAndASeal) {
    Build_ECR();
    const Lines lines = Pi();
    const auto holds = [&](std::string_view text) {
        return std::ranges::any_of(
            lines, [&](const std::string& line) { return line.find(text) != std::string::npos; });
    };
    for (const char* label : {"Worksheet S ", "Worksheet A ", "Worksheet G-1 "})
        EXPECT_TRUE(holds(label)) << label;
    EXPECT_TRUE(holds("Date and time of ECR file creation: 03/15/2024 14:05"));
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines.at(lines.size() - 2), "");
    EXPECT_TRUE(lines.back().starts_with("***FINGERPRINT LOCALSEAL-1:"));
}

TEST_F(EcrBuild, EveryPageCarriesTheMinuteOfTheReport) {
    Build_ECR();
    int heads = 0;
    for (const std::string& line : Pi()) {
        if (line.find("        Friday, March 15, 2024 at ") == std::string::npos) continue;
        ++heads;
        EXPECT_TRUE(line.ends_with(" at 2:05:00 PM")) << line;
    }
    EXPECT_GT(heads, 20);
}

TEST_F(EcrBuild, BothFilesHaveTheTimeOfTheStamp) {
    Build_ECR();
    EXPECT_EQ(WrittenAt(ecr), DateTime(2024, 3, 15, 14, 5, 0));
    EXPECT_EQ(WrittenAt(pi), DateTime(2024, 3, 15, 14, 5, 0));
    EXPECT_EQ(ECRDate, Variant(DateTime(2024, 3, 15, 14, 5, 0)));
}

TEST_F(EcrBuild, TheClockIsRightAgainAndTheMachinesWasNeverTouched) {
    Build_ECR();
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 5, 42));
    EXPECT_EQ(host.Clock, DateTime(2024, 3, 15, 14, 5, 42));
}

TEST_F(EcrBuild, TheClockIsSetBackWhileRecordsAndPagesAreWritten) {
    DateTime seen;
    host.OnDoEvents = [&] {
        if (host.CalcMsg.starts_with("Producing Type 3")) seen = Now();
    };
    Build_ECR();
    EXPECT_EQ(seen, DateTime(2024, 3, 15, 14, 5, 0));
}

TEST_F(EcrBuild, TimeThatPassesDuringTheBuildIsKept) {
    host.OnDoEvents = [&] {
        if (host.CalcMsg == "Process The PI File") host.Clock = DateTime(2024, 3, 15, 14, 6, 50);
    };
    Build_ECR();
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 6, 50));
    EXPECT_EQ(WrittenAt(pi), DateTime(2024, 3, 15, 14, 5, 0));
}

TEST_F(EcrBuild, MidnightDuringTheBuildCostsNoDay) {
    host.Clock = DateTime(2024, 3, 15, 23, 59, 50);
    host.OnDoEvents = [&] {
        if (host.CalcMsg == "Process The PI File") host.Clock = DateTime(2024, 3, 16, 0, 0, 20);
    };
    Build_ECR();
    EXPECT_EQ(Now(), DateTime(2024, 3, 16, 0, 0, 20));
    EXPECT_EQ(WrittenAt(ecr), DateTime(2024, 3, 15, 23, 59, 0));
}

TEST_F(EcrBuild, StepsAreShownInTheirOrder) {
    Build_ECR();
    Lines shown;
    for (const std::string& text : CalcMessages())
        if (!text.starts_with("Producing Type 3") && !text.starts_with(" Print"))
            shown.push_back(text);
    EXPECT_EQ(shown,
              (Lines{"Producing Type 2", "Producing Type 4 Record (Finger Print)",
                     "Process The PI File", "Print The Sp1 Worksheet", "Print The Sp2 Worksheet"}));
}

TEST_F(EcrBuild, TheMainWindowIsHeldAndGivenBack) {
    Build_ECR();
    EXPECT_LT(host.IndexOf("SetPointer: Hourglass"), host.IndexOf("EnableMenu: mnuEdit=False"));
    EXPECT_LT(host.IndexOf("EnableMenu: mnuView=False"),
              host.IndexOf("ShowCalcMsg: Producing Type 2"));
    EXPECT_LT(host.IndexOf("ShowCalcMsg: Print The Sp2 Worksheet"),
              host.IndexOf("EnableMenu: mnuEdit=True"));
    ExpectClosed();
}

TEST_F(EcrBuild, ThenTheCopyIsOffered) {
    Build_ECR();
    EXPECT_GT(host.IndexOf("ShowCopy2Floppy: " + ecr), host.IndexOf("EnableMenu: mnuView=True"));
    EXPECT_EQ(host.Events.back(), "SetPointer: Normal");
    EXPECT_EQ(host.Boxes.size(), 0u);
}

TEST_F(EcrBuild, TheCertificationPageShowsBothSealsAndTheStamp) {
    Build_ECR();
    const std::string page = BytesOf(folder.File("Spx.prt"));
    const std::string ecrSeal = Ecr().back().substr(1);
    const std::string piSeal = Pi().back().substr(15);
    ASSERT_EQ(ecrSeal.size(), 76u);
    ASSERT_EQ(piSeal.size(), 76u);
    for (const std::size_t start : {0, 30, 60}) {
        EXPECT_NE(page.find(ecrSeal.substr(start, 30)), std::string::npos) << start;
        EXPECT_NE(page.find(piSeal.substr(start, 30)), std::string::npos) << start;
    }
    EXPECT_NE(page.find("03/15/2024 14:05"), std::string::npos);
    EXPECT_NE(page.find(" at 2:05:00 PM"), std::string::npos);
}

TEST_F(EcrBuild, TheSealsAreNeverTakenForTheGovernments) {
    Build_ECR();
    const std::string page = BytesOf(folder.File("Spx.prt"));
    EXPECT_EQ(page.find("LOCALSEAL-1:"), page.find("LOCALSEAL"));
    EXPECT_NE(page.find("LOCALSEAL-1:"), std::string::npos);
}

TEST_F(EcrBuild, AnOlderFileIsReplacedWhole) {
    std::ofstream(ecr) << kOlderEcr << std::string(500000, 'x');
    std::ofstream(pi) << kOlderPi << std::string(900000, '*') << "***FINGERPRINT";
    Build_ECR();
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(BytesOf(ecr).find('x'), std::string::npos);
    EXPECT_EQ(BytesOf(pi).find("****"), std::string::npos);
}

TEST_F(EcrBuild, ASecondBuildInTheSameMinuteGivesTheSameFiles) {
    Build_ECR();
    const std::string first = BytesOf(ecr) + BytesOf(pi);
    host.Files = {ecr};
    host.Clock = DateTime(2024, 3, 15, 14, 5, 59);
    Build_ECR();
    EXPECT_EQ(BytesOf(ecr) + BytesOf(pi), first);
}

TEST_F(EcrBuild, TheStatementItselfStaysAsItIs) {
    SetCell("A6", 100, "Col_5", 12);
    const std::int64_t commits = gDB.CommitCount();
    Build_ECR();
    EXPECT_EQ(gDB.CommitCount(), commits);
}

TEST_F(EcrBuild, AnotherFolderTakesBothFiles) {
    TempFolder other;
    host.Files = {other.File("HO123456.23A1")};
    Build_ECR();
    EXPECT_TRUE(fs::exists(other.File("HO123456.23A1")));
    EXPECT_TRUE(fs::exists(other.File("PI123456.23A1")));
    EXPECT_FALSE(fs::exists(ecr));
    EXPECT_TRUE(fs::exists(folder.File("Spx.prt")));
}

TEST_F(EcrBuild, ANameThatTheUserKeepsIsBuilt) {
    host.Files = {folder.File("draft.txt")};
    host.Answers = {kNo};
    Build_ECR();
    EXPECT_TRUE(fs::exists(folder.File("draft.txt")));
    EXPECT_TRUE(fs::exists(folder.File("PIaft.txt")));
}

// --- Cancelled, refused, failed ------------------------------------------------------------

TEST_F(EcrBuild, ACancelledDialogLeavesEverything) {
    host.Files = {};
    Build_ECR();
    EXPECT_FALSE(fs::exists(ecr));
    EXPECT_EQ(host.Events, (Lines{"ChooseFile: Save ECR File As ...", "SetPointer: Normal"}));
    EXPECT_EQ(Now(), host.Clock);
}

TEST_F(EcrBuild, ARefusedNameLeavesEverything) {
    host.Files = {folder.File("draft.txt")};
    host.Answers = {kCancel};
    Build_ECR();
    EXPECT_FALSE(fs::exists(folder.File("draft.txt")));
    EXPECT_EQ(host.IndexOf("EnableMenu: mnuEdit=False"), -1);
}

TEST_F(EcrBuild, TheStatementIsNotOverwritten) {
    const std::string before = BytesOf(gCRFPath);
    host.Files = {gCRFPath};
    host.Answers = {kNo};
    EXPECT_THROW(Build_ECR(), std::runtime_error);
    EXPECT_EQ(BytesOf(gCRFPath), before);
    EXPECT_EQ(host.IndexOf("EnableMenu: mnuEdit=False"), -1);
}

TEST_F(EcrBuild, AReportThatWouldBeItsOwnPrintImageIsRefused) {
    host.Files = {pi};
    host.Answers = {kNo};
    EXPECT_THROW(Build_ECR(), std::runtime_error);
    EXPECT_FALSE(fs::exists(pi));
}

TEST_F(EcrBuild, AFolderThatIsNotThereIsToldByName) {
    const std::string path = folder.File("none/HO123456.23A1");
    host.Files = {path};
    try {
        Build_ECR();
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_TRUE(error.IsFileError());
        EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
    }
    ExpectClosed();
    EXPECT_EQ(Now(), host.Clock);
    EXPECT_EQ(host.IndexOf("ShowCopy2Floppy: " + path), -1);
}

TEST_F(EcrBuild, AFailureHalfWayLeavesNoHalfFileAndTheOldOne) {
    std::ofstream(ecr) << kOlderEcr;
    gDB.DeleteTable("G1");
    EXPECT_THROW(Build_ECR(), StoreError);
    EXPECT_EQ(BytesOf(ecr), kOlderEcr);
    EXPECT_FALSE(fs::exists(pi));
    EXPECT_FALSE(HasScratchFiles(folder));
    ExpectClosed();
    EXPECT_EQ(Now(), host.Clock);
}

/// The act around the build may fail behind it, as where the disk takes no more when it is saved.
TEST_F(EcrBuild, WhereTheActAroundItIsNotSavedNoFileComesAndAllIsPutRight) {
    EXPECT_THROW(RunAct("Sign and build",
                        [&] {
                            Build_ECR();
                            EXPECT_NE(Now(), host.Clock);
                            throw StoreError(StoreError::Kind::DiskFull, "no room");
                        }),
                 StoreError);
    EXPECT_FALSE(fs::exists(ecr));
    EXPECT_FALSE(fs::exists(pi));
    EXPECT_FALSE(HasScratchFiles(folder));
    ExpectClosed();
    EXPECT_EQ(Now(), host.Clock);
}

TEST_F(EcrBuild, AFailureInThePrintImageLeavesTheFormerFilesBoth) {
    Build_ECR();
    const std::string former = BytesOf(ecr) + BytesOf(pi);
    SetCell("A", 8, "Col_1", 2000);
    host.Files = {ecr};
    host.OnDoEvents = [&] {
        if (host.CalcMsg == "Process The PI File") gDB.DeleteTable("G1");
    };
    EXPECT_THROW(Build_ECR(), StoreError);
    EXPECT_EQ(BytesOf(ecr) + BytesOf(pi), former);
    EXPECT_FALSE(HasScratchFiles(folder));
    ExpectClosed();
}

TEST_F(EcrBuild, ItTellsBothFilesAndWhatTheSealIsWorth) {
    Build_ECR();
    EXPECT_EQ(LastBuild().Ecr, ecr);
    EXPECT_EQ(LastBuild().Pi, pi);
    EXPECT_EQ(LastBuild().Seal, SealNotice());
    EXPECT_TRUE(
        BuiltNotice().starts_with("Electronic cost report: " + ecr + "\rPrint image: " + pi));
}

TEST_F(EcrBuild, WhatAKilledBuildHasLeftGoesWithTheNext) {
    const pid_t child = fork();
    if (child == 0) {
        // A file of a program that dies with it.
        auto* const left = new Scratch(ecr);
        _exit(left->Path().empty() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    ASSERT_TRUE(HasScratchFiles(folder));
    Build_ECR();
    EXPECT_FALSE(HasScratchFiles(folder));
    EXPECT_TRUE(fs::exists(ecr));
}

TEST_F(EcrBuild, APrintImageThatCannotBeWrittenIsToldByName) {
    fs::create_directory(pi);
    try {
        Build_ECR();
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find(pi), std::string::npos) << error.what();
    }
    EXPECT_FALSE(HasScratchFiles(folder));
    EXPECT_FALSE(fs::exists(ecr));
    EXPECT_FALSE(MenusAre(false));
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
}

TEST_F(EcrBuild, FilesThatAreNoEarlierBuildOfThisOfficeAreKeptUnlessTheUserSaysYes) {
    const std::string page = folder.File("Spx.prt");
    const std::string otherOffice = "1           1   99999920222742023273HB02P001";
    for (const std::string& kept : {ecr, pi, page}) {
        std::ofstream(kept) << otherOffice;
        host.Forget();
        host.Files = {ecr};
        EXPECT_THROW(Build_ECR(), FileKept) << kept;
        ASSERT_EQ(host.Boxes.size(), 1U);
        EXPECT_EQ(host.Boxes[0].Text,
                  kept + " is there already, and somebody may need it.  Replace it?");
        EXPECT_EQ(BytesOf(kept), otherOffice);
        EXPECT_FALSE(fs::exists(kept == ecr ? pi : ecr)) << "half a build";
        fs::remove(kept);
    }
    std::ofstream(ecr) << otherOffice;
    host.Forget();
    host.Files = {ecr};
    host.Answers = {kYes};
    Build_ECR();
    EXPECT_EQ(host.Boxes.size(), 1U);
    EXPECT_TRUE(Ecr().at(0).starts_with(kOlderEcr));
}

TEST_F(EcrBuild, TheCrfIsNoNameForAnyOfTheFiles) {
    host.Files = {gCRFPath};
    host.Answers = {kNo, kYes, kYes};
    try {
        Build_ECR();
        FAIL() << "built over the CRF";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.what(), gCRFPath + ": This is the open Cost Report File");
    }
    EXPECT_EQ(test::Rows("CostCenters"), 26);
}

// --- The minute ----------------------------------------------------------------------------

class EcrWait : public EcrBuild {
protected:
    EcrWait() {
        host.ClockCanBeSet = false;
        host.OnDoEvents = [this] {
            if (host.CalcMsg.starts_with("Waiting"))
                host.Clock = DateTime::FromSeconds(host.Clock.Seconds() + 1);
        };
    }
    Lines Waits() const { return StartingWith(CalcMessages(), "Waiting"); }
};

TEST_F(EcrWait, WaitsForTheNextMinuteAndCountsDown) {
    host.Clock = DateTime(2024, 3, 15, 14, 5, 57);
    Build_ECR();
    EXPECT_EQ(Waits(), (Lines{"Waiting 3 seconds for CMS timing requirement",
                              "Waiting 2 seconds for CMS timing requirement",
                              "Waiting 1 seconds for CMS timing requirement"}));
    EXPECT_EQ(Ecr().at(2), "1           4       14:06");
    EXPECT_EQ(WrittenAt(ecr), DateTime(2024, 3, 15, 14, 6, 0));
    EXPECT_EQ(Now(), host.Clock);
    ExpectClosed();
}

TEST_F(EcrWait, EachSecondIsShownOnce) {
    int looks = 0;
    host.OnDoEvents = [&] {
        if (host.CalcMsg.starts_with("Waiting") && ++looks % 4 == 0)
            host.Clock = DateTime::FromSeconds(host.Clock.Seconds() + 1);
    };
    host.Clock = DateTime(2024, 3, 15, 14, 5, 58);
    Build_ECR();
    EXPECT_EQ(Waits().size(), 2u);
    EXPECT_EQ(looks, 8);
}

TEST_F(EcrWait, TheLongestWaitIs58Seconds) {
    host.Clock = DateTime(2024, 3, 15, 14, 5, 2);
    Build_ECR();
    EXPECT_EQ(Waits().size(), 58u);
    EXPECT_EQ(Waits().at(0), "Waiting 58 seconds for CMS timing requirement");
}

TEST_F(EcrWait, ASecondPastTheMinuteNeedsNoWait) {
    host.Clock = DateTime(2024, 3, 15, 14, 5, 1);
    Build_ECR();
    EXPECT_EQ(Waits(), Lines{});
    EXPECT_EQ(Ecr().at(2), "1           4       14:05");
}

TEST_F(EcrWait, TheDeveloperDoesNotWait) {
    gDebug = true;
    host.Clock = DateTime(2024, 3, 15, 14, 5, 30);
    host.Answers = std::deque<int>(4, kNo);
    Build_ECR();
    EXPECT_EQ(Waits(), Lines{});
    EXPECT_EQ(Ecr().at(2), "1           4       14:05");
}

TEST_F(EcrWait, TheMinuteOfMidnightIsOfTheNextDay) {
    host.Clock = DateTime(2023, 12, 31, 23, 59, 59);
    Build_ECR();
    EXPECT_EQ(Ecr().at(0).substr(44, 7), "2024001");
    EXPECT_EQ(Ecr().at(2), "1           4       00:00");
}

// --- The library ---------------------------------------------------------------------------

class EcrByLibrary : public EcrBuild {
protected:
    FingerprintLibraryHere library{folder};
};

TEST_F(EcrByLibrary, SealsTheReportAndThenThePrintImage) {
    Build_ECR();
    ASSERT_EQ(library.Calls().size(), 2u);
    EXPECT_TRUE(library.Calls()[0].ends_with("|empty|0|0|0"));
    EXPECT_TRUE(library.Calls()[1].ends_with("|empty|0|1|0"));
    EXPECT_EQ(BytesOf(ecr).find("***"), std::string::npos);
    EXPECT_EQ(Ecr().back(), "4 of the test");
    EXPECT_EQ(Pi().back(), "***FINGERPRINT of the test");
    EXPECT_EQ(BytesOf(ecr).find("LOCALSEAL"), std::string::npos);
    const std::string page = BytesOf(folder.File("Spx.prt"));
    EXPECT_NE(page.find("ECR:01234567890123456789012345"), std::string::npos);
    EXPECT_NE(page.find("PI:012345678901234567890123456"), std::string::npos);
    EXPECT_EQ(WrittenAt(ecr), DateTime(2024, 3, 15, 14, 5, 0));
}

TEST_F(EcrByLibrary, ALibraryThatComplainsIsToldAndTheBuildGoesOn) {
    library.SetMode("complain");
    Build_ECR();
    EXPECT_EQ(host.Texts(), (Lines{"Invalid file format, please call Velquist",
                                   "Invalid file format, please call Velquist"}));
    ExpectClosed();
    EXPECT_GE(host.IndexOf("ShowCopy2Floppy: " + ecr), 0);
}

TEST_F(EcrByLibrary, AFingerprintWithMuchBehindItIsFound) {
    library.SetMode("early");
    Build_ECR();
    EXPECT_EQ(library.Calls().size(), 2u);
    EXPECT_EQ(StartingWith(Pi(), "***FINGERPRINT of the test").size(), 1u);
}

TEST_F(EcrByLibrary, TheThirdTryMayStillSeal) {
    library.SetMode("third image");
    Build_ECR();
    EXPECT_EQ(library.Calls().size(), 4u);
    EXPECT_EQ(host.Boxes.size(), 0u);
    EXPECT_EQ(Pi().back(), "***FINGERPRINT of the test");
    ExpectClosed();
}

TEST_F(EcrByLibrary, ThreePrintImagesWithoutFingerprintEndTheBuildOnTheSpot) {
    library.SetMode("no image");
    Build_ECR();
    EXPECT_EQ(library.Calls().size(), 4u);
    EXPECT_EQ(host.Boxes, (std::vector<Box>{{"Government fingerprint program failed. Please call "
                                             "Velquist",
                                             kCritical, "Critical Error", kOk}}));
    EXPECT_TRUE(MenusAre(false));
    EXPECT_EQ(ECRStamp, "03/15/2024 14:05");
    EXPECT_EQ(Now(), DateTime(2024, 3, 15, 14, 5, 0));
    EXPECT_FALSE(fs::exists(folder.File("Spx.prt")));
    EXPECT_EQ(host.IndexOf("ShowCopy2Floppy: " + ecr), -1);
    EXPECT_EQ(host.IndexOf("ShowCalcMsg: Print The Sp1 Worksheet"), -1);
}

TEST_F(EcrByLibrary, ALibraryThatRefusesEverythingEndsTheSameWay) {
    library.SetMode("refuse");
    Build_ECR();
    EXPECT_EQ(host.Boxes.size(), 5u);
    EXPECT_EQ(host.Boxes.back().Title, "Critical Error");
    EXPECT_FALSE(fs::exists(ecr));
    EXPECT_FALSE(fs::exists(pi));
    EXPECT_FALSE(HasScratchFiles(folder));
}

TEST_F(EcrByLibrary, ABuildWithoutFingerprintLeavesTheFormerFilesBoth) {
    Build_ECR();
    const std::string former = BytesOf(ecr) + BytesOf(pi);
    library.SetMode("no image");
    SetCell("A", 8, "Col_1", 2000);
    host.Files = {ecr};
    Build_ECR();
    EXPECT_EQ(BytesOf(ecr) + BytesOf(pi), former);
    EXPECT_FALSE(HasScratchFiles(folder));
}

TEST_F(EcrByLibrary, ASealThatWasRefusedIsNotClaimed) {
    library.SetMode("complain");
    Build_ECR();
    EXPECT_EQ(LastBuild().Seal.find("Sealed by"), std::string::npos);
    EXPECT_NE(LastBuild().Seal.find("cannot be submitted"), std::string::npos);
}

TEST_F(EcrBuild, ALibraryThatCannotBeUsedStopsTheBuildBeforeAnythingIsWritten) {
    std::ofstream(folder.File("libhcfafp.so")) << "no library";
    EXPECT_THROW(Build_ECR(), std::runtime_error);
    EXPECT_FALSE(fs::exists(ecr));
    EXPECT_EQ(host.IndexOf("EnableMenu: mnuEdit=False"), -1);
}

// --- The file time -------------------------------------------------------------------------

TEST_F(EcrBuild, AFileTimeIsLocalInSummerToo) {
    std::ofstream(ecr) << "x";
    EXPECT_TRUE(SetFileTime(ecr, DateTime(2024, 7, 4, 1, 2, 0)));
    EXPECT_EQ(WrittenAt(ecr), DateTime(2024, 7, 4, 1, 2, 0));
    EXPECT_FALSE(SetFileTime(folder.File("none"), DateTime(2024, 7, 4)));
}

}  // namespace
}  // namespace zolmara::test
