#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "cli/CliRunner.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

using Compact = CliTest;

/// The file that a repair kept beside another.
std::string KeptBeside(const std::string& path) {
    for (const auto& entry : fs::directory_iterator(fs::path(path).parent_path()))
        if (entry.path().string().find(".damaged-") != std::string::npos)
            return entry.path().string();
    return "";
}

TEST_F(Compact, OfAReadOnlyFileEndsWith4AndWords) {
    const auto crf = NewCrf();
    const auto before = ContentOf(crf);
    chmod(crf.c_str(), 0444);
    const auto result = Run({"compact", crf});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find(crf + ": the file is read-only"), std::string::npos) << result.Err;
    EXPECT_EQ(ContentOf(crf), before);
}

TEST_F(Compact, WithoutRoomEndsWith4AndWords) {
    const auto crf = NewCrf();
    const auto before = ContentOf(crf);
    CliSetting full;
    full.FileLimit = 8192;
    const auto result = Run({"compact", crf}, full);
    EXPECT_EQ(result.Status, 4) << result.Err;
    EXPECT_FALSE(result.Err.empty());
    EXPECT_EQ(ContentOf(crf), before);
}

TEST_F(Compact, OfWhatCannotBeRepairedEndsWith4AndWords) {
    const auto crf = TextFile("Letter.CRF", "Dear Sir,\n");
    const auto result = Run({"compact", crf});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find(crf), std::string::npos) << result.Err;
    EXPECT_EQ(ContentOf(crf), "Dear Sir,\n");
}

TEST_F(Compact, RepairsAFileWhoseFirstBytesAreGone) {
    const auto crf = NewCrf();
    std::fstream(crf, std::ios::in | std::ios::out | std::ios::binary) << std::string(16, '\0');
    const auto refused = Run({"info", crf});
    EXPECT_EQ(refused.Status, 4);
    EXPECT_NE(refused.Err.find(crf + ": the file is damaged and cannot be opened; the command "
                                     "compact repairs it"),
              std::string::npos)
        << refused.Err;
    EXPECT_EQ(Run({"compact", crf}).Status, 0);
    EXPECT_EQ(Run({"info", crf}).Status, 0);
}

TEST_F(Compact, TellsWhatWasLostAndWhereTheDamagedFileIs) {
    const auto crf = NewCrf();
    auto bytes = ContentOf(crf);
    // The page with the cost centers' names is overwritten.
    const auto name = bytes.find("Legal Fees");
    ASSERT_NE(name, std::string::npos);
    bytes.replace(name / 4096 * 4096, 4096, std::string(4096, '\xA5'));
    std::ofstream(crf, std::ios::binary | std::ios::trunc) << bytes;
    const auto result = Run({"compact", crf});
    // There is something to read.
    EXPECT_EQ(result.Status, 2) << result.Err;
    const auto kept = KeptBeside(crf);
    ASSERT_FALSE(kept.empty()) << result.Err;
    EXPECT_EQ(ContentOf(kept), bytes);
    EXPECT_NE(result.Err.find("The damaged file is kept as " + kept + "."), std::string::npos)
        << result.Err;
}

}  // namespace
}  // namespace zolmara::test
