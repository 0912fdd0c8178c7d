// The door for files: what may be replaced, by whom, and what stands under a name at any moment.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "store/Files.h"
#include "store/WholeCrf.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

bool BeginsWithMine(std::string_view head) { return head.starts_with("mine"); }

mode_t ModeOf(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

class FileDoor : public SessionTest {
protected:
    static void Make(const std::string& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }
    static void Put(const std::string& path, const std::string& content) {
        OutFile file(path, BeginsWithMine);
        file.Write(content);
        file.Put();
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
    }
    /// The words of the error that an attempt to write to the path ends with.
    static std::string Refusal(const std::string& path) {
        try {
            Put(path, "mine too");
            return "";
        } catch (const StoreError& error) {
            return error.what();
        }
    }

    std::string path = folder.File("out.txt");
};

// --- What may be replaced ------------------------------------------------------------------

TEST_F(FileDoor, ANewFileIsWrittenWithoutAQuestion) {
    Put(path, "mine");
    EXPECT_EQ(ReadWholeFile(path), "mine");
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileDoor, AnEarlierOutputAndAnEmptyFileAreReplacedWithoutAQuestion) {
    for (const char* former : {"mine of yesterday", ""}) {
        Make(path, former);
        Put(path, "mine");
        EXPECT_EQ(ReadWholeFile(path), "mine");
    }
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(FileDoor, AnothersFileIsReplacedOnlyAfterYes) {
    Make(path, "yours");
    EXPECT_EQ(Refusal(path), path + " was kept; nothing was written");
    EXPECT_EQ(ReadWholeFile(path), "yours");
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Text,
              path + " is there already, and somebody may need it.  Replace it?");
    EXPECT_EQ(host.Boxes[0].Style, kYesNo + kExclamation + kDefaultButton2);
    EXPECT_EQ(host.Boxes[0].Title, "Replace File");
    host.Answers = {kYes};
    Put(path, "mine");
    EXPECT_EQ(ReadWholeFile(path), "mine");
}

TEST_F(FileDoor, ACommandLineSaysItAheadAndIsNotAsked) {
    Make(path, "yours");
    {
        const ReplaceAsTold told(false, "--force replaces it");
        EXPECT_EQ(Refusal(path), path + " is there already; --force replaces it");
    }
    const ReplaceAsTold told(true, "");
    Put(path, "mine");
    EXPECT_EQ(ReadWholeFile(path), "mine");
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(FileDoor, AFileThatComesMeanwhileIsNotReplaced) {
    OutFile file(path, BeginsWithMine);
    file.Write("mine");
    Make(path, "yours");
    EXPECT_THROW(file.Put(), FileKept);
    EXPECT_EQ(ReadWholeFile(path), "yours");
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(FileDoor, AProtectedFileIsRefusedByWhateverPathLinkOrCase) {
    Make(folder.File("n.CRF"), "statement");
    const ProtectedFile guard(folder.File("n.CRF"), "the open Cost Report File");
    fs::create_directory(folder.File("sub"));
    fs::create_symlink("n.CRF", folder.File("link.txt"));
    fs::create_symlink("link.txt", folder.File("link of link.txt"));
    fs::create_hard_link(folder.File("n.CRF"), folder.File("hard.txt"));
    const ReplaceAsTold force(true, "");
    for (const char* name :
         {"n.CRF", "sub/../n.CRF", "link.txt", "link of link.txt", "hard.txt", "N.crf"}) {
        const std::string other = folder.File(name);
        EXPECT_EQ(Refusal(other), other + ": This is the open Cost Report File");
    }
    const std::string journal = folder.File("n.CRF-journal");
    EXPECT_EQ(Refusal(journal), journal + ": This is a part of the open Cost Report File");
    EXPECT_EQ(ReadWholeFile(folder.File("n.CRF")), "statement");
    EXPECT_FALSE(FileExists(journal));
}

TEST_F(FileDoor, AProtectedFileIsFreeWhenItsProtectionEnds) {
    { const ProtectedFile guard(path, "the source"); }
    Put(path, "mine");
    EXPECT_EQ(ReadWholeFile(path), "mine");
}

TEST_F(FileDoor, AnOpenCrfProtectsItself) {
    CreateCrf(folder.File("One.CRF"), SampleFields());
    const ReplaceAsTold force(true, "");
    EXPECT_EQ(Refusal(gCRFPath), gCRFPath + ": This is the open Cost Report File");
    EXPECT_THROW(CopyWholeFile(folder.File("One.CRF"), gCRFPath + "-journal"), StoreError);
    EXPECT_EQ(test::Rows("CostCenters"), 26);
}

TEST_F(FileDoor, FoldersDevicesAndReadOnlyFilesAreLeftAlone) {
    const ReplaceAsTold force(true, "");
    fs::create_directory(path);
    EXPECT_NE(Refusal(path), "");
    EXPECT_TRUE(fs::is_directory(path));
    const std::string pipe = folder.File("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Refusal(pipe), pipe + ": is no file");
    EXPECT_TRUE(fs::is_fifo(pipe));
    const std::string marked = folder.File("marked");
    Make(marked, "mine");
    ::chmod(marked.c_str(), 0444);
    EXPECT_EQ(Refusal(marked), marked + ": the file is read-only");
    EXPECT_EQ(ReadWholeFile(marked), "mine");
}

// --- How a file comes ----------------------------------------------------------------------

TEST_F(FileDoor, ALinkIsFollowed) {
    fs::create_directory(folder.File("real"));
    const std::string real = folder.File("real/file.txt");
    Make(real, "mine of yesterday");
    fs::create_symlink("real/file.txt", path);
    Put(path, "mine");
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_EQ(ReadWholeFile(real), "mine");
    fs::remove(real);
    Put(path, "mine again");
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_EQ(ReadWholeFile(real), "mine again");
}

TEST_F(FileDoor, LinksThatLeadInACircleStayAndAreTold) {
    fs::create_symlink("two", folder.File("one"));
    fs::create_symlink("one", folder.File("two"));
    const ReplaceAsTold force(true, "");
    for (const auto& act :
         std::vector<std::function<void()>>{[&] { Put(folder.File("one"), "mine"); },
                                            [&] { NeedReplaceable(folder.File("one")); }}) {
        try {
            act();
            ADD_FAILURE() << "nothing was refused";
        } catch (const StoreError& error) {
            EXPECT_NE(std::string(error.what()).find("Too many levels of symbolic links"),
                      std::string::npos)
                << error.what();
        }
        EXPECT_TRUE(fs::is_symlink(folder.File("one")));
        EXPECT_EQ(FilesInFolder(), 2U);
    }
}

TEST_F(FileDoor, ModeOwnerAndGroupStay) {
    Make(path, "mine of yesterday");
    ::chmod(path.c_str(), 0640);
    const bool root = ::geteuid() == 0;
    if (root) {
        ASSERT_EQ(::chown(path.c_str(), 1234, 2345), 0);
    }
    Put(path, "mine");
    EXPECT_EQ(ModeOf(path), 0640U);
    struct stat info {};
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_uid, root ? 1234U : ::geteuid());
    EXPECT_EQ(info.st_gid, root ? 2345U : ::getegid());
}

TEST_F(FileDoor, ANewFileHasTheModeThatTheUserWants) {
    const mode_t former = ::umask(027);
    Put(path, "mine");
    ::umask(former);
    EXPECT_EQ(ModeOf(path), 0640U);
}

TEST_F(FileDoor, WhatIsStillAsideIsReadableByNobodyElse) {
    Make(path, "mine of yesterday");
    ::chmod(path.c_str(), 0600);
    OutFile file(path, BeginsWithMine);
    file.Write("mine");
    file.Complete();
    EXPECT_EQ(ModeOf(file.AsidePath()), 0600U);
    file.Put();
    EXPECT_EQ(ModeOf(path), 0600U);
}

TEST_F(FileDoor, AFileThatIsGivenUpLeavesNothing) {
    Make(path, "mine of yesterday");
    {
        OutFile file(path, BeginsWithMine);
        file.Write(std::string(1 << 20, 'x'));
    }
    EXPECT_EQ(ReadWholeFile(path), "mine of yesterday");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileDoor, ANameOf255BytesHasRoom) {
    const std::string longest = folder.File(std::string(251, 'n') + ".txt");
    Put(longest, "mine");
    EXPECT_EQ(ReadWholeFile(longest), "mine");
    Put(longest, "mine again");
    EXPECT_EQ(ReadWholeFile(longest), "mine again");
    EXPECT_NE(Refusal(folder.File(std::string(256, 'n'))), "");
}

TEST_F(FileDoor, TwoFilesComeTogetherOrNotAtAll) {
    const std::string other = folder.File("other.txt");
    Make(path, "mine of yesterday");
    OutFile first(path, BeginsWithMine);
    OutFile second(other, BeginsWithMine);
    first.Write("mine 1");
    second.Write("mine 2");
    PutTogether(first, second);
    EXPECT_EQ(ReadWholeFile(path), "mine 1");
    EXPECT_EQ(ReadWholeFile(other), "mine 2");
    EXPECT_EQ(FilesInFolder(), 2U);
}

TEST_F(FileDoor, TheFirstOfTwoFilesComesBackWhenTheSecondCannotBePut) {
    const std::string other = folder.File("sub/other.txt");
    fs::create_directory(folder.File("sub"));
    for (const bool stood : {true, false}) {
        fs::remove(path);
        if (stood) Make(path, "mine of yesterday");
        OutFile first(path, BeginsWithMine);
        OutFile second(other, BeginsWithMine);
        first.Write("mine 1");
        second.Write("mine 2");
        // What is aside is gone: the second cannot take its name.
        fs::remove(second.AsidePath());
        EXPECT_THROW(PutTogether(first, second), StoreError);
        EXPECT_EQ(FileExists(path), stood);
        if (stood) {
            EXPECT_EQ(ReadWholeFile(path), "mine of yesterday");
        }
        EXPECT_FALSE(FileExists(other));
    }
}

// --- What a program that died leaves -------------------------------------------------------

/// A scratch file whose owner has died.
std::string OrphanIn(const TempFolder& folder) {
    const pid_t child = ::fork();
    if (child == 0) {
        const Scratch scratch(folder.File("x"));
        std::ofstream(scratch.Path() + "-journal") << "journal";
        ::_exit(0);  // without its destructors, as a kill would
    }
    ::waitpid(child, nullptr, 0);
    for (const auto& entry : fs::directory_iterator(folder.Path()))
        if (IsScratchName(entry.path().filename().string())) return entry.path().string();
    return "";
}

TEST_F(FileDoor, ADeadProgramsScratchFilesAreClearedAndALivingOnesStay) {
    const std::string orphan = OrphanIn(folder);
    ASSERT_TRUE(FileExists(orphan));
    const Scratch alive(folder.File("x"));
    Make(folder.File(".zolmara-abcdef.tmp-journal"), "of a scratch file that is gone");
    for (const char* user : {"~compact", ".zolmara-notes.tmp", ".zolmara-abc_ef.tmp", "a~repair"})
        Make(folder.File(user), "a user's");
    ClearScratch(folder.Path().string());
    EXPECT_FALSE(FileExists(orphan));
    EXPECT_FALSE(FileExists(orphan + "-journal"));
    EXPECT_FALSE(FileExists(folder.File(".zolmara-abcdef.tmp-journal")));
    EXPECT_TRUE(FileExists(alive.Path()));
    EXPECT_EQ(FilesInFolder(), 5U);
}

}  // namespace
}  // namespace zolmara::test
