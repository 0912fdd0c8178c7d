#include "cli/CliRunner.h"
#include "core/Dialogs.h"

namespace zolmara::test {

namespace {

class CheckCommand : public CliTest {
protected:
    /// The sample without the treasurer's name.
    std::string QuestionedCrf() {
        const std::string crf = SampleCrf();
        Do({"--quiet", "import", crf, TextFile("Treasurer.txt", "S1p2\t4\t2\t\" \"\n")});
        return crf;
    }
};

const std::string kQuestion =
    "Potential Error\t2030S\tWorksheet S-1 Part II: lines 1 through 5 column 2 should be "
    "completed.\n";

TEST_F(CheckCommand, ACleanStatementIsStatusZero) {
    const CliResult result = Run({"--quiet", "check", SampleCrf()});
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out, "No errors found\n");
    EXPECT_EQ(result.Err, "");
}

TEST_F(CheckCommand, WithoutFindingsJsonIsAnEmptyArray) {
    EXPECT_EQ(Do({"--quiet", "check", SampleCrf(), "--format", "json"}), "[]\n");
}

TEST_F(CheckCommand, PotentialErrorsAloneAreStatusTwo) {
    const CliResult result = Run({"--quiet", "check", QuestionedCrf()});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out, kQuestion);
}

TEST_F(CheckCommand, ANonFatalErrorIsStatusThree) {
    const std::string crf = QuestionedCrf();
    Do({"set", crf, "S1p1", "4", "5", "No"});
    Do({"--quiet", "import", crf, TextFile("Answer.txt", "S1p1\t4\t5\tMaybe\n")});
    const CliResult result = Run({"--quiet", "check", crf});
    EXPECT_EQ(result.Status, 3);
    EXPECT_EQ(
        result.Out,
        "Non-Fatal Error\t1060S\tWorksheet S-1 Part I: Line 4, column 5. must be either \"Y\" "
        "or \"N\".\n" +
            kQuestion);
}

TEST_F(CheckCommand, FindingsAsJsonHaveTheNamesOfTheirFields) {
    const CliResult result = Run({"--quiet", "check", QuestionedCrf(), "--format", "json"});
    EXPECT_EQ(result.Status, 2);
    const auto findings = result.Json();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0]["Level"], "Potential Error");
    EXPECT_EQ(findings[0]["Code"], "2030S");
    EXPECT_EQ(findings[0]["Message"],
              "Worksheet S-1 Part II: lines 1 through 5 column 2 should be completed.");
}

TEST_F(CheckCommand, TheStoredValuesAreCheckedAndNothingIsCalculated) {
    const std::string crf = SampleCrf();
    const std::string before = Do({"get", crf, "C1p3", "54", "CC_100"});
    Do({"set", crf, "C1p3", "53", "CC_100", "1"});
    const CliResult result = Run({"--quiet", "check", crf});
    EXPECT_EQ(result.Status, 3);
    const std::string stale =
        "Non-Fatal Error\t1020C\tC-1 Part III, line 52, column 1 must equal A, line 1, column "
        "7.\n";
    EXPECT_EQ(result.Out, stale + stale);
    EXPECT_EQ(Do({"get", crf, "C1p3", "54", "CC_100"}), before);
}

TEST_F(CheckCommand, AFileThatIsNotThereIsStatusFour) {
    const CliResult result = Run({"check", File("None.CRF")});
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find("None.CRF"), std::string::npos);
}

}  // namespace

}  // namespace zolmara::test
