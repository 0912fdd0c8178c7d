// import-crf and rebuild, end to end.

#include <filesystem>

#include "cli/CliRunner.h"

namespace zolmara::test {
namespace {

class ImportCrfCommand : public CliTest {};

TEST_F(ImportCrfCommand, AllOfTheSampleThenCalcGivesItsFigures) {
    const std::string source = SampleCrf();
    const std::string bytes = ContentOf(source);
    const std::string target = File("This.CRF");
    std::filesystem::copy_file(source, target);
    for (const char* item : {"A", "A6", "A8", "A7p1", "Bp1", "C1p1", "C1p3", "D1p1", "E1p1", "G"})
        Do({"rebuild", target, item});
    EXPECT_EQ(Do({"--quiet", "import-crf", target, source, "--all"}), "");
    EXPECT_EQ(ContentOf(source), bytes);
    Do({"--quiet", "calc", target});
    for (const char* item : {"A", "A7p2", "Bp3", "Cp1", "Dp3", "E", "E1p1", "F2p1", "G", "G1"})
        EXPECT_EQ(Do({"show", target, item}), Do({"show", source, item})) << item;
}

TEST_F(ImportCrfCommand, NamedWorksheetsComeOverInAnyCase) {
    const std::string source = NewCrf("Last.CRF");
    Do({"set", source, "A", "8", "1", "5000"});
    Do({"set", source, "G", "1", "1", "70"});
    const std::string target = NewCrf("This.CRF");
    Do({"--quiet", "import-crf", target, source, "g", "G"});
    EXPECT_EQ(Do({"get", target, "G", "1", "1"}), "70\n");
    EXPECT_EQ(Do({"get", target, "A", "8", "1"}), "\n");
}

TEST_F(ImportCrfCommand, ProgressGoesToStandardErrorUnlessQuiet) {
    const std::string source = NewCrf("Last.CRF");
    const std::string target = NewCrf("This.CRF");
    const CliResult loud = Run({"import-crf", target, source, "A"});
    EXPECT_EQ(loud.Status, 0);
    EXPECT_EQ(loud.Err, "Processing worksheet A (A)\n");
    EXPECT_EQ(Run({"--quiet", "import-crf", target, source, "A"}).Err, "");
}

TEST_F(ImportCrfCommand, OtherCostCentersAreListedAndNothingIsTaken) {
    const std::string source = NewCrf("Last.CRF");
    Do({"cc", "add", source, "4", "Branch"});
    const std::string target = NewCrf("This.CRF");
    const std::string bytes = ContentOf(target);
    const CliResult result = Run({"import-crf", target, source, "--all", "--format", "csv"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "Warning\tCost Centers must match exactly to allow CRF importing.\n");
    EXPECT_EQ(result.Out, "Current CRF,Import CRF\n, 4.01 Branch\n");
    EXPECT_EQ(ContentOf(target), bytes);
}

TEST_F(ImportCrfCommand, AComponentWithoutItsSchedulesIsAWarning) {
    const std::string source = NewCrf("Last.CRF");
    Do({"component", "add", source, "2", "1", "Parking"});
    const std::string target = NewCrf("This.CRF");
    const CliResult result = Run({"--quiet", "import-crf", target, source, "S2p2"});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out,
              "Warning\tLine 1 of S2p2, \"Parking\", is missing from Bp2, B1p2, Cp2, C1p2, Dp2, "
              "D1p2, E1p2, Fp2, F1p2, F2p2.\n");
}

TEST_F(ImportCrfCommand, TheSourceIsCheckedByStatus) {
    const std::string target = NewCrf("This.CRF");
    EXPECT_EQ(Run({"import-crf", target, target, "--all"}).Status, 2);
    EXPECT_EQ(Run({"import-crf", target, File("none.CRF"), "--all"}).Status, 4);
    EXPECT_EQ(Run({"import-crf", target, TextFile("x.txt", "x"), "--all"}).Status, 4);
}

TEST_F(ImportCrfCommand, WorksheetsOrAllMustBeGiven) {
    const std::string source = NewCrf("Last.CRF");
    const std::string target = NewCrf("This.CRF");
    EXPECT_EQ(Run({"import-crf", target, source}).Status, 1);
    EXPECT_EQ(Run({"import-crf", target, source, "--all", "A"}).Status, 1);
    const CliResult identity = Run({"import-crf", target, source, "A", "S1p1"});
    EXPECT_EQ(identity.Status, 2);
    EXPECT_NE(identity.Err.find("Worksheet S1p1 cannot be imported"), std::string::npos);
    EXPECT_EQ(Run({"import-crf", target, source, "CostCenters"}).Status, 2);
}

TEST_F(ImportCrfCommand, RebuildEmptiesAWorksheet) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "5000"});
    Do({"rebuild", crf, "a"});
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "\n");
    Do({"rebuild", crf, "F2p1"});
    const CliResult wrong = Run({"rebuild", crf, "A82"});
    EXPECT_EQ(wrong.Status, 2);
    EXPECT_EQ(wrong.Err, "ERROR\tERROR, worksheet 'A82' has NOT been successfully rebuilt.\n");
}

// --- new --from ----------------------------------------------------------------------------------

TEST_F(ImportCrfCommand, NewFromLastYearHasItsStructureAndTheNextPeriod) {
    const std::string last = SampleCrf();
    const std::string bytes = ContentOf(last);
    const std::string crf = File("Next.CRF");
    const CliResult result = Run({"--quiet", "new", crf, "--from", last, "--with", "A", "A6"});
    EXPECT_EQ(ContentOf(last), bytes);
    const auto info = Run({"info", crf, "--format", "json"}).Json();
    EXPECT_EQ(info["Number"], "14-9012");
    EXPECT_EQ(info["FYStart"], "2024-01-01 00:00:00");
    EXPECT_EQ(info["FYEnd"], "2024-12-31 00:00:00");
    EXPECT_EQ(info["CostCenters"], 34);
    EXPECT_EQ(info["Components"], 16);
    // The component that closed during the year is named.
    EXPECT_EQ(result.Status, 2);
    EXPECT_NE(result.Out.find("Report Ending"), std::string::npos) << result.Out;
    Do({"--quiet", "calc", crf});
    EXPECT_EQ(Do({"get", crf, "A", "100", "1"}), Do({"get", last, "A", "100", "1"}));
    EXPECT_NE(Run({"check", crf}).Status, 4);
}

TEST_F(ImportCrfCommand, NewFromLastYearTakesDatesAndRefusesWhatIsLastYears) {
    const std::string last = NewCrf("Last.CRF");
    const std::string crf = File("Next.CRF");
    Do({"--quiet", "new", crf, "--from", last, "--end", "12/31/2023"});
    EXPECT_EQ(Run({"info", crf, "--format", "json"}).Json()["FYEnd"], "2023-12-31 00:00:00");
    EXPECT_EQ(Run({"new", crf, "--from", last}).Status, 2);
    Do({"--quiet", "new", crf, "--from", last, "--force"});
    EXPECT_EQ(Run({"info", crf, "--format", "json"}).Json()["FYEnd"], "2024-09-30 00:00:00");
    const std::string bytes = ContentOf(last);
    EXPECT_EQ(Run({"new", last, "--from", last, "--force"}).Status, 2);
    EXPECT_EQ(ContentOf(last), bytes);
    EXPECT_EQ(Run({"new", File("x.CRF"), "--from", last, "--name", "Other"}).Status, 1);
    EXPECT_EQ(Run({"new", File("x.CRF"), "--from", last, "--with", "E"}).Status, 2);
    EXPECT_EQ(Run({"new", File("x.CRF"), "--from", File("none.CRF")}).Status, 4);
    EXPECT_FALSE(std::filesystem::exists(File("x.CRF")));
    EXPECT_EQ(Run({"new", File("x.CRF"), "--with", "A"}).Status, 1);
}

}  // namespace
}  // namespace zolmara::test
