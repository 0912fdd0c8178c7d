#include <cstdlib>

#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

class CalcCommand : public CliTest {
protected:
    double Amount(const std::string& crf, const std::string& item, const std::string& line,
                  const std::string& column) {
        return std::strtod(Do({"get", crf, item, line, column}).c_str(), nullptr);
    }
};

// The figures of the sample were added up by hand, ahead of the program.
TEST_F(CalcCommand, TheSampleClosesOnItsFigures) {
    const std::string crf = SampleCrf();
    const double total[] = {130744288, 0,       130744288, -2991421,
                            127752867, 6820558, 78518216,  42414093};
    for (int column = 1; column <= 8; ++column)
        EXPECT_EQ(Amount(crf, "A", "100", std::to_string(column)), total[column - 1]) << column;
    EXPECT_EQ(Amount(crf, "Bp3", "52", "Col_7"), 2852201);
    EXPECT_EQ(Amount(crf, "B1p3", "52", "Col_99"), 3968357);
    EXPECT_EQ(Amount(crf, "G", "32", "1"), 291885642);
    EXPECT_EQ(Amount(crf, "G", "48", "1"), 291885642);
    EXPECT_EQ(Amount(crf, "G1", "22", "2"), 4223595);
    const double allotted = Amount(crf, "Fp3", "52", "4") + Amount(crf, "F1p3", "52", "9") +
                            Amount(crf, "F2p3", "52", "4");
    EXPECT_EQ(allotted, 127752867);
}

TEST_F(CalcCommand, ASecondRunChangesNothing) {
    const std::string crf = SampleCrf();
    const std::string first = Do({"show", crf, "E1p1"});
    Do({"--quiet", "calc", crf});
    EXPECT_EQ(Do({"show", crf, "E1p1"}), first);
}

TEST_F(CalcCommand, TheSamplePassesAllEditChecks) {
    const CliResult result = Run({"--quiet", "check", SampleCrf()});
    EXPECT_EQ(result.Status, 0) << result.Out;
    EXPECT_EQ(result.Out, "No errors found\n");
}

// Worksheet A is calculated twice in a run: for A-7 Part II, and at its own level.
TEST_F(CalcCommand, AnEntryWithoutItsCostCenterIsTold) {
    const std::string crf = NewCrf();
    Do({"cc", "add", crf, "28", "Marketing", "--whole"});
    Do({"set", crf, "A8", "1", "2", "A"});
    Do({"set", crf, "A8", "1", "3", "-500"});
    Do({"set", crf, "A8", "1", "5", "29"});
    Do({"cc", "delete", crf, "29"});
    const CliResult result = Run({"--quiet", "calc", crf});
    EXPECT_EQ(result.Status, 2);
    const std::string line =
        "Warning\tNo A record found matching the A8 record for Cost Center 29 does not exist.\n";
    EXPECT_EQ(result.Err, line + line);
    EXPECT_EQ(Amount(crf, "A8", "100", "3"), -500);
    EXPECT_EQ(Amount(crf, "A", "100", "4"), 0);
}

TEST_F(CalcCommand, WithoutMessagesJsonIsAnEmptyArray) {
    EXPECT_EQ(Do({"--quiet", "calc", NewCrf(), "--format", "json"}), "[]\n");
}

}  // namespace

}  // namespace zolmara::test
