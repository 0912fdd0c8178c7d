#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

using ImportCommand = CliTest;

TEST_F(ImportCommand, ACleanFileGivesTheClosingMessageAlone) {
    const std::string crf = NewCrf();
    const CliResult result =
        Run({"--quiet", "import", crf, TextFile("a.txt", "A\t8\t1\t100\nA\t8\t1\t50\n")});
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out,
              "\t\tImport complete, no errors found.  Please verify the imported data for "
              "accuracy.\n");
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "150\n");
}

TEST_F(ImportCommand, PrintsOneLineAMessageWithBreaksAsBlanks) {
    const std::string crf = NewCrf();
    const CliResult result =
        Run({"--quiet", "import", crf, TextFile("a.txt", "nonsense\nA\t100\t1\t5\nA\t9\t1\t7\n")});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out,
              "Read\t\tThe Row specification is missing from ASCII Import line:  nonsense\n"
              "A\t\tThe cell you are attempting to input or modify does not accept changes:  "
              "A, 100, 1, \"5\"\n");
    EXPECT_EQ(Do({"get", crf, "A", "9", "1"}), "7\n");
}

TEST_F(ImportCommand, MessagesAreObjectsInJson) {
    const auto json =
        Run({"--quiet", "import", NewCrf(), TextFile("a.txt", "X9\t1\t1\t1\n"), "--format", "json"})
            .Json();
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0]["Level"], "Load");
    EXPECT_EQ(json[0]["Message"], "Table X9 is not currently supported for ASCII import");
}

TEST_F(ImportCommand, ATextFileThatIsNotThereLeavesTheCrfAsItWas) {
    const std::string crf = NewCrf();
    const std::string former = ContentOf(crf);
    const CliResult result = Run({"import", crf, File("missing.txt")});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find("missing.txt"), std::string::npos) << result.Err;
    EXPECT_EQ(Run({"import", crf, folder.Path().string()}).Status, 4);
    EXPECT_EQ(ContentOf(crf), former);
}

TEST_F(ImportCommand, ContentsOf300CharactersGiveAMessage) {
    const std::string crf = NewCrf();
    const CliResult result =
        Run({"--quiet", "import", crf,
             TextFile("a.txt", "S1p1\t1\t1\t" + std::string(300, 'x') + "\nS1p1\t1\t4\tGary\n")});
    EXPECT_EQ(result.Status, 2);
    EXPECT_TRUE(result.Out.starts_with("Read\t\t")) << result.Out;
    EXPECT_EQ(Do({"get", crf, "S1p1", "1", "4"}), "Gary\n");
}

TEST_F(ImportCommand, LinesThatArePassedOverAreCountedAndTheStatusStays) {
    const CliResult result =
        Run({"--quiet", "import", NewCrf(), TextFile("a.txt", "Sp1\t1\t1\tY\nA\t8\t1\t100\n")});
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out,
              "\t\tImport complete, no errors found.  Please verify the imported data for "
              "accuracy.\n"
              "F.Y.I.\t\t1 line of the file was passed over: worksheet SP1 (1).\n");
}

TEST_F(ImportCommand, AControlCharacterOfTheFileDoesNotReachTheTerminal) {
    const std::string crf = NewCrf();
    const CliResult result =
        Run({"import", crf,
             TextFile("a.txt", "\x1b[2Jnonsense\nS1p2\t1\t2\tAnn\x1b]0;x\x07\xC2\x9B\n")});
    EXPECT_EQ(result.Out,
              "Read\t\tThe Row specification is missing from ASCII Import line:  "
              "?[2Jnonsense\n");
    EXPECT_EQ(Do({"get", crf, "S1p2", "1", "2"}), "Ann?]0;x??\n");
    for (const char* format : {"text", "json"})
        EXPECT_EQ(Do({"show", crf, "S1p2", "--format", format}).find('\x1b'), std::string::npos);
}

TEST_F(ImportCommand, TheSampleImportsWithoutAMessage) {
    const std::string crf = SampleCrf();
    EXPECT_EQ(Do({"get", crf, "S2p2", "2", "1"}), "Northfield Properties, LLC\n");
    EXPECT_EQ(Do({"get", crf, "A6", "4", "3"}), "CRC-B&F\n");
}

}  // namespace

}  // namespace zolmara::test
