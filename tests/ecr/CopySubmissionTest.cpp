#include <filesystem>
#include <fstream>

#include "ecr/CopySubmission.h"
#include "ecr/EcrSupport.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class CopySubmissionTest : public SessionTest {
protected:
    void Make(std::string_view name, std::string_view content) const {
        std::ofstream(folder.File(name), std::ios::binary) << content;
    }

    TempFolder drive;
    std::string path = folder.File("HO123456.23A1");
};

TEST_F(CopySubmissionTest, TheLocationNamesTheFolder) {
    EXPECT_EQ(CopyLocation("/reports/HO123456.23A1"),
              "Or if you do not have a removable drive, click cancel.  The SN and PI files must be "
              "burned to a CD or copied to a flash drive.  The files are located at/reports/");
    EXPECT_TRUE(CopyLocation("HO123456.23A1").ends_with("located at"));
}

// The build writes no file that begins with "SN".
TEST_F(CopySubmissionTest, AfterAGoodBuildTheFirstFileIsNotThere) {
    Make("HO123456.23A1", "e");
    Make("PI123456.23A1", "p");
    EXPECT_FALSE(CopySubmission(path, drive.Path()));
    const std::string source = folder.File("SN123456.23A1");
    EXPECT_EQ(path, source);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Copy Error");
    EXPECT_TRUE(host.Boxes[0].Text.starts_with("The following error occurred while coping " +
                                               source + " to " + drive.File("SN123456.23A1") +
                                               ".\r\n\r\n   "))
        << host.Boxes[0].Text;
    EXPECT_TRUE(fs::is_empty(drive.Path()));
}

TEST_F(CopySubmissionTest, BothFilesAreCopiedOverOlderOnes) {
    Make("SN123456.23A1", "s");
    Make("PI123456.23A1", "p");
    std::ofstream(drive.File("SN123456.23A1")) << "older and longer";
    EXPECT_TRUE(CopySubmission(path, drive.Path()));
    EXPECT_EQ(BytesOf(drive.File("SN123456.23A1")), "s");
    EXPECT_EQ(BytesOf(drive.File("PI123456.23A1")), "p");
    EXPECT_EQ(host.Boxes.size(), 0u);
    EXPECT_EQ(path, folder.File("PI123456.23A1"));
}

TEST_F(CopySubmissionTest, ADriveThatIsNotThereIsTold) {
    Make("SN123456.23A1", "s");
    EXPECT_FALSE(CopySubmission(path, drive.File("none")));
    EXPECT_EQ(host.Boxes.size(), 1u);
}

TEST_F(CopySubmissionTest, WithoutAPathNothingIsDone) {
    std::string none;
    EXPECT_TRUE(CopySubmission(none, drive.Path()));
    EXPECT_EQ(none, "");
    EXPECT_EQ(host.Boxes.size(), 0u);
}

TEST_F(CopySubmissionTest, APathWithoutFolderIsReplacedFromItsStart) {
    std::string name = "zz-no-such-file";
    EXPECT_FALSE(CopySubmission(name, drive.Path()));
    EXPECT_EQ(name, "SN-no-such-file");
}

}  // namespace
}  // namespace zolmara::test
