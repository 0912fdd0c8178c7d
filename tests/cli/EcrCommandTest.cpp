#include <filesystem>

#include "cli/CliRunner.h"
#include "ecr/EcrSupport.h"
#include "support/Paths.h"

namespace zolmara::test {

namespace {

namespace fs = std::filesystem;

class EcrCommand : public CliTest {
protected:
    std::vector<std::string> Signed(const std::string& crf) {
        return {"--quiet",       "ecr",     crf,
                "--first",       "Ingrid",  "--last",
                "Vasquez-Moore", "--title", "Chief Financial Officer"};
    }
    std::string SignatureOf(const std::string& crf) {
        const auto master = Run({"show", crf, "Master", "--format", "json"}).Json();
        return master.at(0).at("ESLastName").is_null()
                   ? std::string("none")
                   : master.at(0).at("ESLastName").get<std::string>();
    }
};

TEST_F(EcrCommand, TheSampleEndsInItsTwoFiles) {
    const std::string crf = SampleCrf();
    EXPECT_EQ(Do(Signed(crf)),
              "ECR:            " + File("HO149012.23A1") + "\nPI:             " +
                  File("PI149012.23A1") + "\nCertification:  " + File("Spx.prt") +
                  "\nSeal:           Sealed by the local seal, since the government's fingerprint "
                  "library is not in the program's folder. Files with the local seal cannot be "
                  "submitted.\n");
    const Lines records = LinesOf(File("HO149012.23A1"));
    EXPECT_EQ(records.at(0).substr(0, 36), "1           1   14901220230012023365");
    EXPECT_EQ(StartingWith(records, "3A000000  100    1"),
              Lines{"3A000000  100    1  " + test::Amount("130744288")});
    EXPECT_EQ(StartingWith(records, "3S000002    1    1"),
              Lines{"3S000002    1    1  " + InField("Ingrid Vasquez-Moore", 36)});
    EXPECT_TRUE(records.back().starts_with("4LOCALSEAL-1:"));
    EXPECT_TRUE(LinesOf(File("PI149012.23A1")).back().starts_with("***FINGERPRINT LOCALSEAL-1:"));
    EXPECT_EQ(SignatureOf(crf), "Vasquez-Moore");
}

TEST_F(EcrCommand, FilesOfOthersAreReplacedWithForceOnlyAndNothingIsSignedBefore) {
    const std::string crf = SampleCrf();
    for (const char* name : {"HO149012.23A1", "PI149012.23A1", "Spx.prt"}) {
        TextFile(name, "my notes");
        const CliResult result = Run(Signed(crf));
        EXPECT_EQ(result.Status, 2) << name;
        EXPECT_EQ(result.Err, "ERROR\t" + File(name) + " is there already; --force replaces it\n");
        EXPECT_EQ(ContentOf(File(name)), "my notes");
        EXPECT_EQ(SignatureOf(crf), "none");
        fs::remove(File(name));
        EXPECT_FALSE(fs::exists(File("HO149012.23A1")));
    }
    TextFile("HO149012.23A1", "my notes");
    auto words = Signed(crf);
    words.emplace_back("--force");
    Do(words);
    Do(Signed(crf));
}

TEST_F(EcrCommand, ACrfOfTheCertificationPagesNameIsNotReplaced) {
    const std::string crf = File("Spx.prt");
    fs::rename(SampleCrf(), crf);
    const std::string figures = Do({"show", crf, "A"});
    auto words = Signed(crf);
    words.emplace_back("--force");
    const CliResult result = Run(words);
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\t" + crf + ": This is the open Cost Report File\n");
    EXPECT_EQ(Do({"show", crf, "A"}), figures);
    EXPECT_FALSE(fs::exists(File("HO149012.23A1")));
}

TEST_F(EcrCommand, ByHandThereIsNoSignature) {
    const std::string crf = SampleCrf();
    Do(Signed(crf));
    Do({"--quiet", "ecr", crf, "--manual"});
    EXPECT_EQ(StartingWith(LinesOf(File("HO149012.23A1")), "3S000002"), Lines{});
    EXPECT_EQ(SignatureOf(crf), "none");
}

TEST_F(EcrCommand, AnotherFolderTakesTheFiles) {
    const std::string crf = SampleCrf();
    fs::create_directory(File("out"));
    const CliResult result =
        Run({"--quiet", "ecr", crf, "--manual", "--out", File("out"), "--format", "json"});
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Json().at("ECR"), File("out/HO149012.23A1"));
    EXPECT_EQ(result.Json().at("PI"), File("out/PI149012.23A1"));
    EXPECT_TRUE(fs::exists(File("out/HO149012.23A1")));
    EXPECT_TRUE(fs::exists(File("out/PI149012.23A1")));
    EXPECT_FALSE(fs::exists(File("HO149012.23A1")));
}

TEST_F(EcrCommand, ANonFatalErrorBlocksItBeforeAnythingIsSigned) {
    const std::string crf = NewCrf();
    const CliResult result = Run(Signed(crf));
    EXPECT_EQ(result.Status, 3);
    EXPECT_NE(result.Out.find("Non-Fatal Error\t"), std::string::npos) << result.Out;
    EXPECT_FALSE(fs::exists(File("HO123456.23A1")));
    EXPECT_EQ(SignatureOf(crf), "none");
}

TEST_F(EcrCommand, TheSignerIsWholeOrItIsByHand) {
    const std::string crf = NewCrf();
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"ecr", crf},
             {"ecr", crf, "--first", "A", "--last", "B"},
             {"ecr", crf, "--first", "A", "--last", "  ", "--title", "C"},
             {"ecr", crf, "--manual", "--title", "C"},
             {"ecr", crf, "--manual", "--out", ""}}) {
        EXPECT_EQ(Run(words).Status, 1);
    }
}

TEST_F(EcrCommand, AFolderThatIsNotThereIsFileTrouble) {
    const std::string crf = SampleCrf();
    const CliResult result = Run({"--quiet", "ecr", crf, "--manual", "--out", File("none")});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find(File("none/HO149012.23A1")), std::string::npos) << result.Err;
}

TEST_F(EcrCommand, AFullDiskLeavesNoHalfFile) {
    const std::string crf = SampleCrf();
    Do(Signed(crf));
    const std::string before = BytesOf(File("HO149012.23A1"));
    CliSetting setting;
    setting.FileLimit = 50000;
    EXPECT_EQ(Run({"--quiet", "ecr", crf, "--manual"}, setting).Status, 4);
    EXPECT_EQ(BytesOf(File("HO149012.23A1")), before);
    EXPECT_FALSE(HasScratchFiles(folder));
}

TEST_F(EcrCommand, TheLibraryBesideTheProgramSeals) {
    const std::string crf = SampleCrf();
    CliSetting setting;
    setting.Program = File("zolmara-cli");
    fs::copy_file(kCli, setting.Program);
    fs::copy_file(kHcfafp, File("libhcfafp.so"));
    const CliResult result = Run({"--quiet", "ecr", crf, "--manual", "--format", "json"}, setting);
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_EQ(result.Json().at("Seal"),
              "Sealed by the government's fingerprint library " + File("libhcfafp.so") + ".");
    EXPECT_EQ(LinesOf(File("HO149012.23A1")).back(), "4 of the test");
    EXPECT_EQ(LinesOf(File("PI149012.23A1")).back(), "***FINGERPRINT of the test");
}

TEST_F(EcrCommand, ALibraryThatIsNoneStopsIt) {
    const std::string crf = SampleCrf();
    CliSetting setting;
    setting.Program = File("zolmara-cli");
    fs::copy_file(kCli, setting.Program);
    TextFile("libhcfafp.so", "no library");
    const CliResult result = Run({"--quiet", "ecr", crf, "--manual"}, setting);
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Err.find("cannot be used"), std::string::npos) << result.Err;
    EXPECT_FALSE(fs::exists(File("HO149012.23A1")));
}

TEST_F(EcrCommand, HelpTellsOfTheLocalSeal) {
    const std::string help = Do({"ecr", "--help"});
    EXPECT_NE(help.find("LOCALSEAL-1:"), std::string::npos);
    EXPECT_NE(help.find("cannot be submitted"), std::string::npos);
}

}  // namespace

}  // namespace zolmara::test
