#include <sys/resource.h>

#include <csignal>
#include <filesystem>

#include "print/PrintFile.h"
#include "print/PrintRun.h"
#include "print/PrintSupport.h"
#include "store/Files.h"

namespace zolmara::test {
namespace {

class PrintFileTest : public SessionTest {
protected:
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
    }
    std::string path = folder.File("a.prt");
};

/// A print file of an earlier run.
constexpr const char* kFormer = "\f\x01\r\n  Zolmara 287 System [Version: 3.0.0]\r\n";

TEST_F(PrintFileTest, LinesEndWithCarriageReturnAndLineFeed) {
    const FileNumber file = OpenPrintFile(path);
    PrintLine(file, "one");
    PrintLine(file);
    ClosePrintFile(file);
    EXPECT_EQ(FileBytes(path), "one\r\n\r\n");
}

TEST_F(PrintFileTest, TextIsInCodePage1252AndWhatItLacksIsAQuestionMark) {
    const FileNumber file = OpenPrintFile(path);
    PrintLine(file, "Gr\u00fcn \u20ac \u2014 \u4e2d\u6587");
    ClosePrintFile(file);
    EXPECT_EQ(FileBytes(path), "Gr\xfcn \x80 \x97 ??\r\n");
}

TEST_F(PrintFileTest, ControlCharactersOfATextBeginNoPageAndNoLine) {
    const FileNumber file = OpenPrintFile(path);
    PrintLine(file, "\f\x02One\r\nTwo\tThree\x7f");
    ClosePrintFile(file);
    EXPECT_EQ(FileBytes(path), "  One  Two Three \r\n");
}

TEST_F(PrintFileTest, AFileAppearsWhenItIsClosed) {
    const FileNumber file = OpenPrintFile(path);
    PrintLine(file, "one");
    EXPECT_FALSE(FileExists(path));
    ClosePrintFile(file);
    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(PrintFileTest, AFileThatIsGivenUpLeavesTheFormerOne) {
    WriteWholeFile(path, kFormer);
    const FileNumber file = OpenPrintFile(path);
    PrintLine(file, "half of the ne");
    DropPrintFile(file);
    EXPECT_EQ(FileBytes(path), kFormer);
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(PrintFileTest, NumbersAreTheLowestFreeOnes) {
    const FileNumber first = OpenPrintFile(path);
    const FileNumber second = OpenPrintFile(folder.File("b.prt"));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
    ClosePrintFile(first);
    EXPECT_EQ(OpenPrintFile(folder.File("c.prt")), 1);
    DropPrintFile(1);
    DropPrintFile(2);
}

TEST_F(PrintFileTest, ANewFileHasNoOrientationYet) {
    PrintRun run;
    run.SetPageLandscape();
    run.gPageOrientDone = kLandscape;
    EXPECT_EQ(run.For(1).gPageOrientDone, 0);
    EXPECT_EQ(run.For(1).gPageOrient, kLandscape);
}

TEST_F(PrintFileTest, AFolderThatIsNotThereIsAnErrorThatNamesTheFile) {
    const std::string missing = folder.File("none") + "/a.prt";
    try {
        OpenPrintFile(missing);
        FAIL() << "opened";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find(missing), std::string::npos) << error.what();
        EXPECT_TRUE(error.IsFileError());
    }
}

TEST_F(PrintFileTest, AFolderInTheFilesPlaceIsAnError) {
    std::filesystem::create_directory(path);
    EXPECT_THROW(OpenPrintFile(path), StoreError);
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_EQ(FilesInFolder(), 1U);
}

/// The files of this process end at a size, as on a disk that is full.
class FileLimit {
public:
    explicit FileLimit(rlim_t bytes) {
        former_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit small = {bytes, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileLimit() {
        setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, former_);
    }
    FileLimit(const FileLimit&) = delete;
    FileLimit& operator=(const FileLimit&) = delete;

private:
    rlimit limit_ = {};
    void (*former_)(int) = SIG_DFL;
};

TEST_F(PrintFileTest, AFullDiskLeavesTheFormerFileAndNothingHalfWritten) {
    WriteWholeFile(path, kFormer);
    {
        const FileLimit limit(20000);
        OwnPrintFile file(path);
        const auto writeAll = [&] {
            for (int i = 0; i < 1000; ++i) PrintLine(file.Number(), std::string(100, 'x'));
            file.Close();
        };
        EXPECT_THROW(writeAll(), StoreError);
    }
    EXPECT_EQ(FileBytes(path), kFormer);
    EXPECT_EQ(FilesInFolder(), 1U);
}

}  // namespace
}  // namespace zolmara::test
