// Every act that writes or replaces a file, with each of its calls failing once and with the
// program dying at each of them. What stood there before is there, or what was to come, whole;
// nothing else stays beside it for longer than to the next close.

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <thread>

#include "cli/CliRunner.h"
#include "print/Reports.h"
#include "spreadsheet/CellsTemplate.h"
#include "spreadsheet/Export.h"
#include "spreadsheet/WriteCells.h"
#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/WholeCrf.h"
#include "store/files/FileDoor.h"
#include "store/harness/FaultTries.h"
#include "store/session/Settings.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class Faults : public FaultTries {};

TEST_F(Faults, ACloseLeavesTheCrfWhole) {
    StartAnew();
    const std::string before = ContentOfFile(In("One.CRF"));
    std::string after;
    Try([&] { Open(In("One.CRF")); }, mnuReportClose,
        [&] {
            const std::string now = ContentOfFile(In("One.CRF"));
            if (after.empty()) after = now;
            EXPECT_TRUE(now == before || now == after);
            Open(In("One.CRF"));
            mnuReportClose();
            EXPECT_EQ(Names(), std::set<std::string>{"One.CRF"});
        });
    EXPECT_NE(before, after);
}

TEST_F(Faults, SaveAsLeavesTheOldFileOrTheNewOne) {
    StartAnew();
    const std::string one = ContentOfFile(In("One.CRF"));
    Open(base_);
    const std::string other = folder.File("Other.CRF");
    SaveCrfAs(other);
    SetCell("A", 8, "Col_1", 1);
    DropCrf();
    const std::string two = ContentOfFile(other);
    ASSERT_NE(one, two);
    Try(
        [&] {
            fs::copy_file(other, In("Two.CRF"));
            Open(In("One.CRF"));
        },
        [&] { SaveCrfAs(In("Two.CRF")); },
        [&] {
            const std::string now = ContentOfFile(In("Two.CRF"));
            EXPECT_TRUE(now == one || now == two);
            EXPECT_EQ(ContentOfFile(In("One.CRF")), one);
            EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", "Two.CRF"}));
        });
}

TEST_F(Faults, SaveAsUnderANewNameMakesAWholeFileOrNone) {
    StartAnew();
    const std::string one = ContentOfFile(In("One.CRF"));
    Try([&] { Open(In("One.CRF")); }, [&] { SaveCrfAs(In("Two.CRF")); },
        [&] {
            EXPECT_EQ(ContentOfFile(In("One.CRF")), one);
            if (FileExists(In("Two.CRF"))) {
                EXPECT_EQ(ContentOfFile(In("Two.CRF")), one);
            }
            std::set<std::string> names = Names();
            names.erase("Two.CRF");
            EXPECT_EQ(names, std::set<std::string>{"One.CRF"});
        });
}

TEST_F(Faults, NewOverACrfLeavesTheOldOneOrTheNewOne) {
    StartAnew();
    const std::string before = ContentOfFile(In("One.CRF"));
    const auto amount = [&] {
        Open(In("One.CRF"));
        const Variant cell = Cell("A", 8, "Col_1");
        const int rows = test::Rows("CostCenters");
        DropCrf();
        return std::pair(cell.IsNull() ? 0.0 : NumOr(cell), rows);
    };
    Try([] {}, [&] { CreateCrf(In("One.CRF"), SampleFields()); },
        [&] {
            const auto now = amount();
            EXPECT_TRUE(now == std::pair(6001.0, 27) || now == std::pair(0.0, 26))
                << now.first << " " << now.second;
            EXPECT_FALSE(DBEngine::RepairDatabase(In("One.CRF")).WasDamaged);
            EXPECT_EQ(Names(), std::set<std::string>{"One.CRF"});
        });
}

TEST_F(Faults, APrintFileIsTheFormerOneOrTheNewOne) {
    const std::string former = "\f\x02\r\n Zolmara 287 System [Version: 1.0.0]\r\nformer\r\n";
    std::string fresh;
    Try(
        [&] {
            WriteWholeFile(In("A.prt"), former);
            Open(In("One.CRF"));
        },
        [] {
            PrintRun run;
            Print_A(run);
        },
        [&] {
            const std::string now = ReadWholeFile(In("A.prt")).value_or("");
            if (fresh.empty()) fresh = now;
            EXPECT_TRUE(now == former || now.size() == fresh.size());
            EXPECT_EQ(Names(), (std::set<std::string>{"A.prt", "One.CRF"}));
        });
    EXPECT_NE(fresh, former);
}

TEST_F(Faults, SettingsAreTheFormerOnesOrTheNewOnes) {
    const auto save = [&](const std::string& value) {
        return Settings(In("settings.ini")).Save("Zolmara 287-22", "Startup", "CRFLoc", value);
    };
    Try([&] { save("/former"); }, [&] { save("/new"); },
        [&] {
            const std::string now =
                Settings(In("settings.ini")).Get("Zolmara 287-22", "Startup", "CRFLoc", "lost");
            EXPECT_TRUE(now == "/former" || now == "/new") << now;
            EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", "settings.ini"}));
        });
}

// The last call brings to the disk that the journal is gone: without one the change stands.
TEST_F(Faults, AChangeThatStandsIsNotToldAsTakenBack) {
    StartAnew();
    const auto change = [] { RunBatch(gDB, [] { SetCell("A", 8, "Col_1", 4711); }); };
    Open(In("One.CRF"));
    FaultsArm(work_.c_str(), 0, EIO, "fsync");
    change();
    const int last = FaultsDisarm();
    DropCrf();
    StartAnew();
    Open(In("One.CRF"));
    FaultsArm(work_.c_str(), last, EIO, "fsync");
    try {
        change();
        ADD_FAILURE() << "what the disk did not confirm was told as saved";
    } catch (const StoreError& error) {
        EXPECT_TRUE(error.IsFileError());
        EXPECT_EQ(std::string(error.what()),
                  In("One.CRF") +
                      ": the disk failed behind the last step of saving: the change is "
                      "in the file, and may be lost again if the power fails now");
    }
    FaultsDisarm();
    EXPECT_EQ(NumOr(Cell("A", 8, "Col_1")), 4711);
    SetCell("A", 9, "Col_1", 12);
    DropCrf();
    Open(In("One.CRF"));
    EXPECT_EQ(NumOr(Cell("A", 8, "Col_1")), 4711);
    EXPECT_EQ(NumOr(Cell("A", 9, "Col_1")), 12);
    DropCrf();
}

// The folder is brought to the disk last.
class Unconfirmed : public Faults {
protected:
    /// What is told where the last of the act's calls fails. The act writes below work_.
    std::string ToldOf(const std::function<void()>& act) {
        FaultsArm(work_.c_str(), 0, EIO, "fsync");
        act();
        const int last = FaultsDisarm();
        std::string told = "nothing";
        FaultsArm(work_.c_str(), last, EIO, "fsync");
        try {
            act();
        } catch (const StoreError& error) {
            EXPECT_TRUE(error.IsFileError());
            told = error.what();
        }
        FaultsDisarm();
        return told;
    }
    static std::string Stands(const std::string& path) {
        return path +
               ": the disk failed behind the last step of saving: the file is in its place, and "
               "may be lost again if the power fails now";
    }
};

TEST_F(Unconfirmed, AFileThatStandsIsNotToldAsFailed) {
    StartAnew();
    int writes = 0;
    const std::string path = In("out.txt");
    EXPECT_EQ(ToldOf([&] { WriteWholeFile(path, std::to_string(++writes)); }), Stands(path));
    EXPECT_EQ(ReadWholeFile(path), "2");
}

TEST_F(Unconfirmed, APrintFileThatStandsIsNotToldAsFailed) {
    StartAnew();
    Open(In("One.CRF"));
    const auto print = [] {
        PrintRun run;
        Print_A(run);
    };
    EXPECT_EQ(ToldOf(print), Stands(In("A.prt")));
    EXPECT_TRUE(FileExists(In("A.prt")));
    DropCrf();
}

TEST_F(Unconfirmed, AnExportThatStandsIsNotToldAsFailed) {
    StartAnew();
    Open(In("One.CRF"));
    const ReplaceAsTold told(true, "");
    for (const auto& [name, act] : std::vector<std::pair<std::string, std::function<void()>>>{
             {"A.xlsx",
              [&] {
                  ExportWorkbook(In("A.xlsx"), {{"A"}, true});
              }},
             {"cells.csv", [&] { WriteCells(In("cells.csv")); }},
             {"cells.txt", [&] { WriteCells(In("cells.txt")); }},
             {"form.xlsx", [&] { WriteCellsTemplate(In("form.xlsx")); }}}) {
        EXPECT_EQ(ToldOf(act), Stands(In(name)));
        EXPECT_TRUE(FileExists(In(name))) << name;
    }
    DropCrf();
}

TEST_F(Unconfirmed, ABackupThatStandsIsNotToldAsFailed) {
    StartAnew();
    const std::string copy = In("Copy.CRF");
    const auto save = [&] {
        fs::remove(copy);
        CopyCrf(In("One.CRF"), copy);
    };
    EXPECT_EQ(ToldOf(save), Stands(copy));
    EXPECT_EQ(ContentOfFile(copy), ContentOfFile(In("One.CRF")));
}

// The work goes on in the copy, which is there, and the person knows of the disk.
TEST_F(Unconfirmed, ASaveAsThatStandsIsASaveAs) {
    StartAnew();
    const auto save = [&] {
        Open(In("One.CRF"));
        fs::remove(In("Two.CRF"));
        EXPECT_TRUE(SaveCrfAs(In("Two.CRF")));
        EXPECT_EQ(gCRFPath, In("Two.CRF"));
    };
    EXPECT_EQ(ToldOf(save), "nothing");
    EXPECT_EQ(host.Texts(), std::vector<std::string>{Stands(In("Two.CRF"))});
    DropCrf();
}

// --- Two files that belong together --------------------------------------------------------

TEST_F(Faults, TwoFilesTakeTheirNamesTogether) {
    const std::array<std::string, 2> names{In("One.txt"), In("sub/Two.txt")};
    const auto all = [](std::string_view /*head*/) { return true; };
    const auto put = [&] {
        OutFile one(names[0], all);
        OutFile two(names[1], all);
        one.Write("new");
        two.Write("new");
        PutTogether(one, two);
    };
    for (const bool stood : {true, false}) {
        const std::string former = stood ? "former" : "none";
        Try(
            [&] {
                fs::create_directory(In("sub"));
                if (!stood) return;
                for (const auto& name : names) WriteWholeFile(name, "former");
            },
            put,
            [&] {
                ClearScratch(In("sub"));
                EXPECT_EQ(fs::is_empty(In("sub")), !FileExists(names[1]));
                const std::string one = ReadWholeFile(names[0]).value_or("none");
                EXPECT_TRUE(one == "new" || one == former) << one;
                EXPECT_EQ(ReadWholeFile(names[1]).value_or("none"), one);
                std::set<std::string> left = Names();
                left.erase("One.txt");
                EXPECT_EQ(left, (std::set<std::string>{"One.CRF", "sub"}));
            });
    }
}

// --- Save As over what a killed program left -----------------------------------------------

TEST_F(Faults, AnOldJournalIsNotPlayedIntoTheCopy) {
    StartAnew();
    const std::string one = ContentOfFile(In("One.CRF"));
    fs::copy_file(base_, In("Two.CRF"));
    // The death at the last call leaves a journal that the next opening would play back.
    const auto change = [] { SetCell("A", 8, "Col_1", 4711); };
    const auto open = [&] {
        Open(In("Two.CRF"));
        FaultsArm(work_.c_str(), 1, kKill, "unlink");
    };
    EXPECT_TRUE(RunInChild(open, change).Killed);
    ASSERT_TRUE(FileExists(In("Two.CRF-journal")));
    fs::copy_file(In("Two.CRF-journal"), In("Three.CRF-journal"));
    Open(In("One.CRF"));
    EXPECT_TRUE(SaveCrfAs(In("Two.CRF")));
    EXPECT_TRUE(SaveCrfAs(In("Three.CRF")));
    DropCrf();
    EXPECT_EQ(ContentOfFile(In("Two.CRF")), one);
    EXPECT_EQ(ContentOfFile(In("Three.CRF")), one);
    EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", "Three.CRF", "Two.CRF"}));
}

// --- Several programs ----------------------------------------------------------------------

class Pairs : public CliTest {
protected:
    /// Runs commands at the same time and gives their results.
    std::vector<CliResult> Together(const std::vector<std::vector<std::string>>& commands) {
        std::vector<CliResult> results(commands.size());
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < commands.size(); ++i)
            threads.emplace_back([&, i] { results[i] = Run(commands[i]); });
        for (std::thread& thread : threads) thread.join();
        return results;
    }
    /// Gives a close something to do, where the closes before did not get in each other's way and
    /// leave it.
    static void Fatten(const std::string& crf) {
        Database file = DBEngine::OpenDatabase(crf);
        if (file.HasTable("tblWork")) return;
        file.Execute("SELECT * INTO tblWork FROM Bp1;");
    }
};

TEST_F(Pairs, WhatIsKeyedWhileAnotherProgramClosesStays) {
    const std::string crf = NewCrf();
    for (int round = 1; round <= 8; ++round) {
        Fatten(crf);
        const auto ends = Together({{"--quiet", "compact", crf},
                                    {"set", crf, "A", "8", "1", std::to_string(round)},
                                    {"set", crf, "A", "9", "1", std::to_string(round)}});
        for (std::size_t i : {1U, 2U}) {
            if (ends[i].Status != 0) continue;  // told that the file was busy
            EXPECT_EQ(Do({"get", crf, "A", i == 1 ? "8" : "9", "1"}), std::to_string(round) + "\n");
        }
        EXPECT_FALSE(DBEngine::RepairDatabase(crf).WasDamaged);
    }
}

TEST_F(Pairs, ThreeClosesAtOnceLoseNothing) {
    const std::string crf = SampleCrf();
    const std::string figures = Do({"show", crf, "A"});
    for (int round = 0; round < 4; ++round) {
        Fatten(crf);
        Together({3, {"--quiet", "compact", crf}});
        EXPECT_EQ(Do({"show", crf, "A"}), figures);
        EXPECT_FALSE(DBEngine::RepairDatabase(crf).WasDamaged);
    }
    EXPECT_FALSE(FileExists(File("VLQTemp.CRF")));
}

TEST_F(Pairs, TwoClosesInOneFolderKeepTheStatementsApart) {
    const std::string one = NewCrf("One.CRF");
    const std::string two = NewCrf("Two.CRF");
    Do({"set", one, "A", "8", "1", "1"});
    Do({"set", two, "A", "8", "1", "2"});
    for (int round = 0; round < 8; ++round) {
        Fatten(one);
        Fatten(two);
        Together({{"--quiet", "compact", one}, {"--quiet", "compact", two}});
        EXPECT_EQ(Do({"get", one, "A", "8", "1"}), "1\n");
        EXPECT_EQ(Do({"get", two, "A", "8", "1"}), "2\n");
    }
}

TEST_F(Pairs, ACrfThatAnotherProgramHasOpenIsNotReplaced) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "4711"});
    const Database open = DBEngine::OpenDatabase(crf);
    const CliResult result = Run({"new", crf, "--number", "12-3456", "--start", "10/1/2022",
                                  "--name", "Another", "--force"});
    EXPECT_EQ(result.Status, 4);
    EXPECT_EQ(result.Err, "ERROR\t" + crf + ": the file is open in another program\n");
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "4711\n");
}

// --- Names, links, rights ------------------------------------------------------------------

TEST_F(Pairs, ACloseThroughALinkKeepsLinkModeAndFile) {
    fs::create_directory(File("real"));
    const std::string real = NewCrf("real/One.CRF");
    fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    fs::create_symlink("real/One.CRF", File("link.CRF"));
    fs::create_hard_link(real, File("hard.CRF"));
    Fatten(real);
    Do({"--quiet", "compact", File("link.CRF")});
    EXPECT_TRUE(fs::is_symlink(File("link.CRF")));
    EXPECT_TRUE(fs::equivalent(real, File("hard.CRF")));
    EXPECT_EQ(fs::status(real).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(Run({"show", real, "tblWork"}).Status, 2);
}

TEST_F(Pairs, InfoLeavesAUsersFilesAlone) {
    const std::string crf = NewCrf();
    for (const char* suffix : {"~compact", "~repair"})
        TextFile("Sample.CRF" + std::string(suffix), "mine");
    Do({"info", crf});
    Do({"--quiet", "compact", crf});
    for (const char* suffix : {"~compact", "~repair"}) EXPECT_EQ(ContentOf(crf + suffix), "mine");
}

TEST_F(Pairs, ANameThatLeavesNoRoomForAJournalIsToldAsAFileMatter) {
    const std::string longest(243, 'n');
    NewCrf(longest + ".CRF");
    const std::string tooLong = File(std::string(251, 'n') + ".CRF");
    const std::vector<std::string> words{"new",     tooLong,     "--number", "12-3456",
                                         "--start", "10/1/2022", "--name",   "Home Office"};
    const CliResult result = Run(words);
    EXPECT_EQ(result.Status, 4);
    EXPECT_EQ(result.Err, "ERROR\t" + tooLong +
                              ": the name is too long; a Cost Report File's has "
                              "at most 247 bytes\n");
    fs::copy_file(File(longest + ".CRF"), tooLong);
    EXPECT_EQ(Run({"info", tooLong}).Status, 4);
}

TEST_F(Pairs, NoDescriptorIsClosedUnderTheLocksOfSqlite) {
    const std::string crf = SampleCrf();
    const std::string samples = TextFile("a.txt", "A\t8\t1\t77\n");
    CliSetting watched;
    watched.Faults = FaultPlan{folder.Path().string(), 0, -1, "", File("report")};
    const std::vector<std::vector<std::string>> commands{
        {"info", crf},
        {"--quiet", "calc", crf},
        {"--quiet", "import", crf, samples},
        {"--quiet", "import", crf, crf},
        {"--quiet", "print", crf, "A", "--pdf", File("a.pdf")},
        {"--quiet", "print", crf, "A", "--pdf", crf, "--force"},
        {"--quiet", "ecr", crf, "--manual"},
        {"cc", "add", crf, "28", "Marketing", "--whole"},
        {"identity", crf, "--name", "Other", "--save-as", File("Copy.CRF")},
        {"--quiet", "compact", crf},
        {"new", crf, "--number", "12-3456", "--start", "10/1/2022", "--name", "N", "--force"}};
    for (const auto& words : commands) {
        fs::remove(File("report"));
        Run(words, watched);
        EXPECT_EQ(ReadFaultReport(*watched.Faults).DroppedLocks, 0) << words[1] << " " << words[2];
    }
}

}  // namespace
}  // namespace zolmara::test
