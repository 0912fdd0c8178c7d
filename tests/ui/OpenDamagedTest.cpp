// A damaged Cost Report File that is opened from the menu: the question, the repair, the file that
// is kept, and the file that stays as it is.

#include <filesystem>
#include <fstream>

#include "UiTest.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara::ui {
namespace {

namespace fs = std::filesystem;

class OpenDamaged : public UiTest {
protected:
    OpenDamaged() {
        Start();
        path_ = MakeSample("Damaged.CRF");
        fs::resize_file(path_, fs::file_size(path_) * 3 / 4);
        bytes_ = Bytes(path_);
    }
    static std::string Bytes(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// The files beside it whose names begin with its own.
    std::vector<std::string> Kept() const {
        std::vector<std::string> kept;
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            if (entry.path().string().find(".damaged-") != std::string::npos)
                kept.push_back(entry.path().string());
        return kept;
    }

    std::string path_;
    std::string bytes_;
};

TEST_F(OpenDamaged, IsRepairedAfterAQuestionAndTheDamagedFileIsKept) {
    Answers.push_back(kYes);
    Open(path_);
    ASSERT_EQ(Boxes.size(), 2U);
    EXPECT_EQ(Boxes[0].Title, "Damaged CRF");
    EXPECT_EQ(Boxes[0].Style, kYesNo | kQuestion);
    EXPECT_NE(Boxes[0].Text.find("Damaged.CRF"), std::string::npos) << Boxes[0].Text;
    EXPECT_EQ(Boxes[1].Title, "Repair Report");
    const auto kept = Kept();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(Bytes(kept[0]), bytes_);
    EXPECT_NE(Boxes[1].Text.find(kept[0]), std::string::npos) << Boxes[1].Text;
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gProviderName, "Northfield Health System");
    EXPECT_FALSE(Visible("fraWelcome"));
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
}

TEST_F(OpenDamaged, StaysAsItIsWhenTheRepairIsDeclined) {
    Answers.push_back(kNo);
    Open(path_);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Damaged CRF");
    EXPECT_EQ(Bytes(path_), bytes_);
    EXPECT_TRUE(Kept().empty());
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_TRUE(Enabled("mnuReportOpen"));
    EXPECT_FALSE(Enabled("mnuReportClose"));
}

TEST_F(OpenDamaged, WithADamagedHeadIsOfferedForRepairAndNothingIsLost) {
    // The first letter, the page size, the version for writers, the layout of tables, the encoding.
    for (const std::streamoff at : {0, 16, 18, 47, 59}) {
        SCOPED_TRACE(at);
        const auto path = MakeSample("Head" + std::to_string(at) + ".CRF");
        {
            std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
            file.seekp(at);
            file << '\x3f';
        }
        Boxes.clear();
        Answers = {kYes};
        Open(path);
        ASSERT_EQ(Boxes.size(), 1U);
        EXPECT_EQ(Boxes[0].Title, "Damaged CRF");
        EXPECT_TRUE(CrfIsOpen());
        EXPECT_EQ(gProviderName, "Northfield Health System");
        EXPECT_TRUE(Kept().empty());
        Trigger("mnuReportClose");
    }
}

TEST_F(OpenDamaged, AFileThatIsNoneIsRefusedAsThat) {
    std::ofstream(path_, std::ios::trunc) << "Dear Sir,\n";
    Open(path_);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_NE(Boxes[0].Text.find("is not a Cost Report File"), std::string::npos) << Boxes[0].Text;
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(OpenDamaged, IsAskedAboutAgainAtTheNextOpen) {
    Answers = {kNo, kYes};
    Open(path_);
    Open(path_);
    ASSERT_EQ(Boxes.size(), 3U);
    EXPECT_EQ(Boxes[1].Title, "Damaged CRF");
    EXPECT_TRUE(CrfIsOpen());
}

}  // namespace
}  // namespace zolmara::ui
