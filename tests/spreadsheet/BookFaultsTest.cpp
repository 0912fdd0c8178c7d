// Writing a workbook or keyed cells when the disk is full, when the program dies, and over files
// that somebody needs: the former file stands or the new one, and nothing beside it.

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "spreadsheet/BookEvaluator.h"
#include "spreadsheet/CellsTemplate.h"
#include "spreadsheet/Export.h"
#include "spreadsheet/WriteCells.h"
#include "store/FilledCrf.h"
#include "store/files/FileDoor.h"
#include "store/harness/FaultTries.h"
#include "store/session/Backups.h"
#include "support/PlainUser.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFormer = "somebody's";

/// A few worksheets: the roads of the file are the same as for all.
void ExportSome(const std::string& path) { ExportWorkbook(path, {.Items = {"A8", "A6"}}); }
void ExportAll(const std::string& path) { ExportWorkbook(path); }

struct Writer {
    const char* Name;
    void (*Write)(const std::string& path);
};
constexpr Writer kWriters[] = {{"out.xlsx", ExportSome},
                               {"cells.xlsx", [](const std::string& path) { WriteCells(path); }},
                               {"cells.csv", [](const std::string& path) { WriteCells(path); }},
                               {"cells.txt", [](const std::string& path) { WriteCells(path); }},
                               {"fill.xlsx", WriteCellsTemplate}};

class BookFaults : public FaultTries {
protected:
    BookFaults() { mostBetween_ = 2; }

    static void Make(const std::string& path, std::string_view content = kFormer) {
        std::ofstream(path, std::ios::binary) << content;
    }
    /// A workbook that opens, or text to its last line.
    static bool IsWhole(const std::string& path) {
        if (fs::path(path).extension() != ".xlsx") return BytesOf(path).ends_with('\n');
        return BytesOf(path).starts_with("PK") && !Book(path).Sheets().empty();
    }
    void ExpectFormerOrWhole(const std::string& name) {
        EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", name}));
        const std::string bytes = BytesOf(In(name));
        EXPECT_TRUE(bytes == kFormer || IsWhole(In(name))) << bytes.size() << " bytes";
    }
    /// The refusal of each writer; each with the consent of the person.
    std::string Refusal(const Writer& writer, const std::string& path) const {
        const ReplaceAsTold told(true, "");
        try {
            writer.Write(path);
            return "";
        } catch (const StoreError& error) {
            return error.what();
        }
    }
    void OpenOne() {
        StartAnew();
        OpenCrf(In("One.CRF"));
    }
};

TEST_F(BookFaults, OfEveryCallLeaveTheFormerFileOrTheNewOne) {
    for (const Writer& writer : {kWriters[0], kWriters[3]}) {
        SCOPED_TRACE(writer.Name);
        Try(
            [&] {
                Make(In(writer.Name));
                Open(In("One.CRF"));
            },
            [&] {
                const ReplaceAsTold told(true, "");
                writer.Write(In(writer.Name));
            },
            [&] { ExpectFormerOrWhole(writer.Name); });
    }
}

TEST_F(BookFaults, AFullDiskIsToldAndTheFormerFileStays) {
    OpenOne();
    for (const Writer& writer : kWriters) {
        SCOPED_TRACE(writer.Name);
        const std::string path = In(writer.Name);
        writer.Write(path);
        const auto whole = fs::file_size(path);
        // No room at all, for a part, for all but the end. The time of its making is in a workbook,
        // so that two differ by some bytes.
        for (const auto limit : {std::uintmax_t{0}, whole / 3, whole * 2 / 3, whole - 100}) {
            SCOPED_TRACE(limit);
            fs::remove(path);
            Make(path);
            const auto end = RunInChild(
                [&] {
                    signal(SIGXFSZ, SIG_IGN);
                    const rlimit sizes{limit, limit};
                    setrlimit(RLIMIT_FSIZE, &sizes);
                },
                [&] {
                    const ReplaceAsTold told(true, "");
                    writer.Write(path);
                });
            EXPECT_EQ(end.Status, 3) << end.Message;
            EXPECT_NE(end.Message.find(path), std::string::npos) << end.Message;
            EXPECT_TRUE(BytesOf(path) == kFormer) << "the former file is gone";
            EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", writer.Name}));
        }
        fs::remove(path);
    }
}

/// The workbook itself is small; what the rows need while they wait for it is not.
TEST_F(BookFaults, AFullDiskForTheRowsIsToldWhereverTheyAreCutOff) {
    OpenOne();
    RunBatch(gDB, [] {
        for (int i = 1; i <= 300; ++i)
            gDB.Execute("INSERT INTO A6 (LineNum,Col_1) VALUES (?,'The same again');",
                        {Currency(20) + Currency::FromUnits(100 * i)});
    });
    const std::string path = In("out.xlsx");
    ExportSome(path);
    const auto largest = static_cast<std::uintmax_t>(Book(path).Xml("A6").size());
    ASSERT_GT(largest, fs::file_size(path));
    for (const auto lacking : {std::uintmax_t{1}, std::uintmax_t{100}, largest / 3}) {
        SCOPED_TRACE(lacking);
        fs::remove(path);
        const auto end = RunInChild(
            [&] {
                signal(SIGXFSZ, SIG_IGN);
                const rlimit sizes{largest - lacking, largest - lacking};
                setrlimit(RLIMIT_FSIZE, &sizes);
            },
            [&] { ExportSome(path); });
        EXPECT_EQ(end.Status, 3) << end.Message;
        EXPECT_EQ(Names(), std::set<std::string>{"One.CRF"});
    }
}

class Deadly : public ScriptedHost {
public:
    void ShowProgress(double part) override {
        if (part > 0.5) raise(SIGKILL);
    }
};

TEST_F(BookFaults, DeathInTheMiddleOfTheSheetsLeavesTheFormerFile) {
    OpenOne();
    Make(In("out.xlsx"));
    const auto end = RunInChild([] {},
                                [&] {
                                    Deadly deadly;
                                    const ReplaceAsTold told(true, "");
                                    ExportAll(In("out.xlsx"));
                                });
    EXPECT_TRUE(end.Killed);
    EXPECT_EQ(BytesOf(In("out.xlsx")), kFormer);
    EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", "out.xlsx"}));
}

// --- Files that somebody needs ---------------------------------------------------------------

TEST_F(BookFaults, TheOpenFileIsNeverReplacedUnderNoName) {
    OpenOne();
    fs::create_symlink(In("One.CRF"), In("link.xlsx"));
    fs::create_hard_link(In("One.CRF"), In("twin.xlsx"));
    for (const Writer& writer : kWriters)
        for (const char* name : {"link.xlsx", "twin.xlsx"})
            EXPECT_NE(Refusal(writer, In(name)).find("the open Cost Report File"),
                      std::string::npos)
                << writer.Name << name;
    EXPECT_NE(Refusal(kWriters[3], In("One.CRF")).find("the open Cost Report File"),
              std::string::npos);
    EXPECT_NE(Refusal(kWriters[3], In("One.CRF-journal")).find("a part of the open"),
              std::string::npos);
    EXPECT_EQ(Text(gDB.Scalar("SELECT ProviderNumber FROM Master;")), "12-3456");
}

TEST_F(BookFaults, ABackupIsNeverReplaced) {
    setenv("XDG_DATA_HOME", folder.File("data").c_str(), 1);
    OpenOne();
    const auto backup = MakeBackup(In("One.CRF"));
    ASSERT_TRUE(backup);
    const std::string bytes = BytesOf(backup->Path);
    fs::create_symlink(backup->Path, In("link.xlsx"));
    EXPECT_NE(Refusal(kWriters[3], backup->Path).find("a Cost Report File"), std::string::npos);
    for (const Writer& writer : kWriters)
        EXPECT_NE(Refusal(writer, In("link.xlsx")).find("a Cost Report File"), std::string::npos)
            << writer.Name;
    EXPECT_EQ(BytesOf(backup->Path), bytes);
}

TEST_F(BookFaults, TheSourceOfAnImportIsNeverReplaced) {
    OpenOne();
    fs::copy_file(In("One.CRF"), In("Source.CRF"));
    gImportDB = DBEngine::OpenDatabase(In("Source.CRF"));
    const std::string bytes = BytesOf(In("Source.CRF"));
    fs::create_symlink(In("Source.CRF"), In("link.xlsx"));
    for (const Writer& writer : kWriters) EXPECT_NE(Refusal(writer, In("link.xlsx")), "");
    EXPECT_NE(Refusal(kWriters[3], In("Source.CRF")), "");
    gImportDB.Close();
    EXPECT_EQ(BytesOf(In("Source.CRF")), bytes);
}

TEST_F(BookFaults, APipeAFolderAndAMissingFolderAreRefused) {
    OpenOne();
    ASSERT_EQ(mkfifo(In("pipe.xlsx").c_str(), 0600), 0);
    fs::create_directory(In("folder.xlsx"));
    for (const Writer& writer : kWriters) {
        EXPECT_NE(Refusal(writer, In("pipe.xlsx")).find("is no file"), std::string::npos)
            << writer.Name;
        EXPECT_NE(Refusal(writer, In("folder.xlsx")), "") << writer.Name;
        EXPECT_NE(Refusal(writer, In("nowhere/out.xlsx")), "") << writer.Name;
    }
    EXPECT_EQ(Names(), (std::set<std::string>{"One.CRF", "pipe.xlsx", "folder.xlsx"}));
}

TEST_F(BookFaults, ALinkStaysAndTheFileBehindItIsReplaced) {
    OpenOne();
    for (const Writer& writer : kWriters) {
        const std::string link = In(std::string("link-") + writer.Name);
        Make(In(writer.Name));
        fs::create_symlink(In(writer.Name), link);
        EXPECT_EQ(Refusal(writer, link), "");
        EXPECT_TRUE(fs::is_symlink(link)) << writer.Name;
        EXPECT_TRUE(IsWhole(In(writer.Name))) << writer.Name;
    }
}

TEST_F(BookFaults, AReadOnlyFileAndAReadOnlyFolderAreRefused) {
    OpenOne();
    fs::create_directory(In("shut"));
    for (const Writer& writer : kWriters) {
        Make(In(writer.Name));
        fs::permissions(In(writer.Name), fs::perms::owner_read);
        EXPECT_NE(Refusal(writer, In(writer.Name)).find("the file is read-only"),
                  std::string::npos);
        EXPECT_EQ(BytesOf(In(writer.Name)), kFormer);
    }
    fs::permissions(In("shut"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_TRUE(AsAPlainUser(folder.Path(), [&] {
        for (const Writer& writer : kWriters)
            EXPECT_NE(Refusal(writer, In("shut/") + writer.Name), "") << writer.Name;
    }));
    EXPECT_TRUE(fs::is_empty(In("shut")));
}

}  // namespace
}  // namespace zolmara::test
