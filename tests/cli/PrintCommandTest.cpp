#include <filesystem>

#include "cli/CliRunner.h"
#include "print/PrintSupport.h"
#include "store/Files.h"

namespace zolmara::test {

namespace {

class PrintCommand : public CliTest {};

TEST_F(PrintCommand, TheWholeFormIsOneFileInTheFolderOfTheCrf) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Do({"--quiet", "print", crf}), File("12-3456.PRT") + "\n");
    EXPECT_EQ(PrintedLines(File("12-3456.PRT")).at(0), "==== page, portrait");
}

TEST_F(PrintCommand, AsPdfToo) {
    const std::string crf = SampleCrf();
    const std::string pdf = File("form.pdf");
    const CliResult result = Run({"--quiet", "print", crf, "--pdf", pdf});
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Err, "");
    EXPECT_TRUE(result.Out.ends_with(pdf + "\n")) << result.Out;
    EXPECT_TRUE(ContentOf(pdf).starts_with("%PDF-"));
}

TEST_F(PrintCommand, NamedWorksheetsHaveFilesOfTheirOwnInTheOrderOfTheForm) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Do({"--quiet", "print", crf, "g1", "A7p2", "A7p1", "S1p2"}),
              File("S1.prt") + "\n" + File("A7.prt") + "\n" + File("G1.prt") + "\n");
    EXPECT_FALSE(FileExists(File("12-3456.PRT")));
}

TEST_F(PrintCommand, ManyWorksheetsMakeOnePdf) {
    const std::string crf = NewCrf();
    Do({"--quiet", "print", crf, "A", "G", "--pdf", File("two.pdf")});
    const std::string bytes = ContentOf(File("two.pdf"));
    EXPECT_NE(bytes.find("[ 0 0 612 792 ]"), std::string::npos);
    EXPECT_NE(bytes.find("[ 0 0 792 612 ]"), std::string::npos);
}

TEST_F(PrintCommand, NothingIsPrintedOverACrf) {
    const std::string crf = NewCrf("n.CRF");
    const std::string statement = ContentOf(crf);
    const auto refused = [&](const std::vector<std::string>& words, const std::string& file) {
        const CliResult result = Run(words);
        EXPECT_EQ(result.Status, 2) << words.back();
        EXPECT_EQ(result.Err, "ERROR\t" + file + ": This is the open Cost Report File\n");
        EXPECT_EQ(ContentOf(crf), statement) << words.back();
    };
    std::filesystem::create_symlink("n.CRF", File("link.pdf"));
    std::filesystem::create_hard_link(crf, File("hard.pdf"));
    for (const char* name : {"n.CRF", "N.crf", "link.pdf", "hard.pdf"})
        refused({"--quiet", "print", crf, "A", "--pdf", File(name), "--force"}, File(name));
    EXPECT_FALSE(FileExists(File("A.prt")));
    for (const auto& [name, item] : {std::pair{"A.prt", "A"}, {"12-3456.PRT", ""}}) {
        const std::string path = File(name);
        std::filesystem::copy_file(crf, path);
        std::vector<std::string> words{"--quiet", "--yes", "print", path, "--force"};
        if (*item) words.emplace_back(item);
        refused(words, path);
        EXPECT_EQ(ContentOf(path), statement);
    }
}

TEST_F(PrintCommand, AnothersFileIsReplacedWithForceOnly) {
    const std::string crf = NewCrf();
    TextFile("A.prt", "my notes");
    CliResult result = Run({"--quiet", "print", crf, "G", "A"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\t" + File("A.prt") + " is there already; --force replaces it\n");
    EXPECT_EQ(ContentOf(File("A.prt")), "my notes");
    EXPECT_FALSE(FileExists(File("G.prt"))) << "half of what was asked";
    Do({"--quiet", "print", crf, "G", "A", "--force"});
    EXPECT_NE(ContentOf(File("A.prt")), "my notes");
    Do({"--quiet", "print", crf, "G", "A"});
}

TEST_F(PrintCommand, APdfOfItsOwnIsReplacedAndAnothersIsNot) {
    const std::string crf = NewCrf();
    const std::string pdf = File("form.pdf");
    Do({"--quiet", "print", crf, "A", "--pdf", pdf});
    Do({"--quiet", "print", crf, "A", "--pdf", pdf});
    TextFile("form.pdf", "%PDF-1.4 (Another program)");
    EXPECT_EQ(Run({"--quiet", "print", crf, "A", "--pdf", pdf}).Status, 2);
    EXPECT_EQ(ContentOf(pdf), "%PDF-1.4 (Another program)");
    Do({"--quiet", "print", crf, "A", "--pdf", pdf, "--force"});
}

TEST_F(PrintCommand, APdfDoesNotTakeThePlaceOfAPrintFileOfTheSameRun) {
    const std::string crf = NewCrf();
    Do({"--quiet", "print", crf, "A"});
    const std::string printed = ContentOf(File("A.prt"));
    EXPECT_EQ(Run({"--quiet", "print", crf, "A", "--pdf", File("A.prt"), "--force"}).Status, 2);
    EXPECT_EQ(ContentOf(File("A.prt")), printed);
}

TEST_F(PrintCommand, ANameWithoutAReportIsToldAndNothingIsPrinted) {
    const std::string crf = NewCrf();
    const CliResult result = Run({"--quiet", "print", crf, "A", "A82"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tA82 is no worksheet with a report\n");
    EXPECT_FALSE(FileExists(File("A.prt")));
}

TEST_F(PrintCommand, TheFilesAsJson) {
    const std::string crf = NewCrf();
    const CliResult result = Run({"--quiet", "--format", "json", "print", crf, "A6"});
    EXPECT_EQ(result.Json()[0]["File"], File("A6.prt"));
}

TEST_F(PrintCommand, NothingToPrintMakesNoPdf) {
    const std::string crf = NewCrf();
    const CliResult result = Run({"--quiet", "print", crf, "S2p1", "--pdf", File("none.pdf")});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tThere are no pages for a PDF file.\n");
    EXPECT_FALSE(FileExists(File("none.pdf")));
}

TEST_F(PrintCommand, APdfThatCannotBeWrittenIsStatus4) {
    const std::string crf = NewCrf();
    const std::string missing = File("none") + "/form.pdf";
    const CliResult result = Run({"--quiet", "print", crf, "A", "--pdf", missing});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find(missing), std::string::npos) << result.Err;
}

TEST_F(PrintCommand, AReadOnlyCrfIsPrinted) {
    const std::string crf = NewCrf();
    std::filesystem::permissions(crf, std::filesystem::perms::owner_read);
    const CliResult result = Run({"--quiet", "print", crf, "A"});
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_TRUE(FileExists(File("A.prt")));
}

TEST_F(PrintCommand, AnEmptyPdfNameIsAWrongCommandLine) {
    EXPECT_EQ(Run({"print", NewCrf(), "--pdf", ""}).Status, 1);
}

}  // namespace

}  // namespace zolmara::test
