#include "cli/CliRunner.h"

namespace zolmara::test {

namespace {

class SetCommand : public CliTest {
protected:
    SetCommand() : crf(NewCrf()) {}

    CliResult Set(const std::string& item, const std::string& line, const std::string& column,
                  const std::string& value) {
        return Run({"set", crf, item, line, column, value});
    }
    std::string Get(const std::string& item, const std::string& line, const std::string& column) {
        const std::string text = Do({"get", crf, item, line, column});
        return text.substr(0, text.size() - 1);
    }

    std::string crf;
};

constexpr std::string_view kLocked =
    "ERROR\tThe cell you are attempting to input or modify does not accept changes.  Select OK to "
    "continue.\n";

TEST_F(SetCommand, StoresAnAmount) {
    const CliResult result = Set("A", "8", "1", "1234567");
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Out + result.Err, "");
    EXPECT_EQ(Get("A", "8", "1"), "1234567");
}

TEST_F(SetCommand, TakesNegativeAmountsAndThousandsCommas) {
    EXPECT_EQ(Set("A", "8", "1", "-1,234").Status, 0);
    EXPECT_EQ(Get("A", "8", "1"), "-1234");
    EXPECT_EQ(Set("A", "8", "1", "(55)").Status, 0);
    EXPECT_EQ(Get("A", "8", "1"), "-55");
}

TEST_F(SetCommand, AnAmountThatBeginsLikeAnOptionIsAnAmount) {
    for (const auto& [value, stored] : std::vector<std::pair<std::string, std::string>>{
             {"-7", "-7"}, {"-$1,250", "-1250"}, {"- 9", "-9"}, {"-1e3", "-1000"}}) {
        EXPECT_EQ(Set("A", "8", "1", value).Status, 0) << value;
        EXPECT_EQ(Get("A", "8", "1"), stored) << value;
    }
    EXPECT_EQ(Set("A", "8", "1", "-.75").Status, 2);  // rounded
    EXPECT_EQ(Get("A", "8", "1"), "-1");
}

TEST_F(SetCommand, AValueThatLooksLikeAnOptionIsRefusedAsAValue) {
    for (const std::string value : {"-inf", "-x", "-", "-nan", "-q"}) {
        const CliResult result = Set("A", "8", "1", value);
        EXPECT_EQ(result.Status, 2) << value;
        EXPECT_EQ(result.Err,
                  "ERROR\tYou're attempting to enter invalid data ['" + value +
                      "'].  The cell you're attempting to input or modify only accepts "
                      "numeric data.  Your entry or modification is being discarded.\n");
    }
    EXPECT_EQ(Run({"set", crf, "S1p1", "1", "1", "-Mary-", "--quiet"}).Status, 0);
    EXPECT_EQ(Get("S1p1", "1", "1"), "-Mary-");
}

TEST_F(SetCommand, RoundsWithItsWarning) {
    const CliResult result = Set("A", "8", "1", "12.5");
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err,
              "F.Y.I.\tYou're attempting to enter invalid data ['12.5'].  The cell you're "
              "attempting to input or modify only accepts 0 digits to the right of the decimal "
              "point.  Your entry or modification is being rounded.\n");
    EXPECT_EQ(Get("A", "8", "1"), "13");
}

TEST_F(SetCommand, RefusesTextAndKeepsTheOldAmount) {
    Set("A", "8", "1", "7");
    const CliResult result = Set("A", "8", "1", "abc");
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err,
              "ERROR\tYou're attempting to enter invalid data ['abc'].  The cell you're attempting "
              "to input or modify only accepts numeric data.  Your entry or modification is being "
              "discarded.\n");
    EXPECT_EQ(Get("A", "8", "1"), "7");
}

TEST_F(SetCommand, RefusesTotalsAndComputedColumns) {
    EXPECT_EQ(Set("A", "100", "1", "5").Err, kLocked);
    EXPECT_EQ(Set("A", "8", "3", "5").Err, kLocked);
    EXPECT_EQ(Set("A", "28", "1", "5").Err, kLocked);
    EXPECT_EQ(Set("A", "8", "LineNum", "5").Err, kLocked);
    EXPECT_EQ(Set("G", "10", "1", "5").Err,
              "ERROR\tThe cell you are attempting to input or modify is computed.\n");
    EXPECT_EQ(Get("A", "100", "1"), "");
}

TEST_F(SetCommand, RefusesWorksheetsWithoutAnEditor) {
    for (const char* item : {"Cp1", "Dp3", "E", "Fp1", "Master", "Log", "Worksheets"}) {
        const CliResult result = Set(item, "51", "2", "5");
        EXPECT_EQ(result.Status, 2) << item;
        EXPECT_NE(result.Err.find("ERROR\t"), std::string::npos) << item;
    }
}

TEST_F(SetCommand, AnEntryOfA6BringsTheNameOfItsCostCenter) {
    Do({"line", "add", crf, "A6", "1"});
    EXPECT_EQ(Set("A6", "1", "1", "Move salaries").Status, 0);
    EXPECT_EQ(Set("A6", "1", "2", "b").Status, 0);
    EXPECT_EQ(Set("A6", "1", "4", "9").Status, 0);
    EXPECT_EQ(Set("A6", "1", "5", "100").Status, 0);
    EXPECT_EQ(Get("A6", "1", "2"), "B");
    EXPECT_EQ(Get("A6", "1", "3"), "Salaries and Wages of Others");
    EXPECT_EQ(Set("A6", "1", "4", "100").Err,
              "ERROR\tThe UpLineNum is not a valid cost center number\n");
    EXPECT_EQ(Get("A6", "1", "4"), "9");
}

// Stored, it would be taken out again with the name of no cost center.
TEST_F(SetCommand, AnAmountOfA6WithoutItsLineIsRefused) {
    Do({"line", "add", crf, "A6", "1"});
    Do({"set", crf, "A6", "1", "1", "Move salaries"});
    const CliResult up = Set("A6", "1", "5", "1000");
    EXPECT_EQ(up.Status, 2);
    EXPECT_EQ(up.Err, "ERROR\tThe UpLineNum is not a valid cost center number\n");
    EXPECT_EQ(Set("A6", "1", "8", "1000").Err,
              "ERROR\tThe DnLineNum is not a valid cost center number\n");
    EXPECT_EQ(Set("A6", "1", "5", "0").Status, 0);
    EXPECT_EQ(Set("A6", "1", "4", "9").Status, 0);
    EXPECT_EQ(Set("A6", "1", "5", "1000").Status, 0);
    EXPECT_EQ(Get("A6", "1", "5"), "1000");
}

TEST_F(SetCommand, TheLabelOfATotalIsLocked) {
    EXPECT_EQ(Set("G1", "15", "1", "foo").Err, kLocked);
    EXPECT_EQ(Get("G1", "15", "1"), "Total other income");
}

TEST_F(SetCommand, TextThatIsNoUtf8IsAWrongCommandLine) {
    const CliResult result = Set("S1p1", "1", "1", "Caf\xE9");
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Err, "ERROR\tVALUE must be text in UTF-8\n");
    EXPECT_EQ(Run({"header", crf, "1", "\xFF"}).Status, 1);
    EXPECT_EQ(Run({"cc", "add", crf, "4", "\xFF", "--sub"}).Status, 1);
    EXPECT_EQ(Run({"component", "add", crf, "1", "1", "\xFF"}).Status, 1);
    EXPECT_EQ(Set("S1p1", "1", "1", "Café").Status, 0);
}

TEST_F(SetCommand, ANameWithQuotesIsCarriedToAllSchedules) {
    Do({"component", "add", crf, "1", "1"});
    const std::string name = "St. \"Mary's\" O'Neil; -- Home";
    EXPECT_EQ(Set("S2p1", "1", "1", name).Status, 0);
    EXPECT_EQ(Set("S2p1", "1", "2", "140234").Status, 0);
    for (const char* schedule :
         {"Bp1", "B1p1", "Cp1", "C1p1", "Dp1", "D1p1", "E1p1", "Fp1", "F1p1", "F2p1"}) {
        EXPECT_EQ(Get(schedule, "1", "Description"), name) << schedule;
        EXPECT_EQ(Get(schedule, "1", "Col_0"), "14-0234") << schedule;
    }
}

TEST_F(SetCommand, ATextOf300CharactersIsRefusedWithItsCell) {
    const CliResult result = Set("S1p1", "1", "1", std::string(300, 'x'));
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Err, "ERROR\tS1p1 line 1 Col_1 takes at most 40 characters, not 300.\n");
    EXPECT_EQ(Get("S1p1", "1", "1"), "");
}

TEST_F(SetCommand, CharactersAreCountedNotBytes) {
    std::string name;
    for (int i = 0; i < 36; ++i) name += "é";
    EXPECT_EQ(Set("S1p2", "1", "2", name).Status, 0);
    EXPECT_EQ(Get("S1p2", "1", "2"), name);
}

TEST_F(SetCommand, AnEmptyEntryEmptiesTheCell) {
    Set("S1p2", "1", "2", "Ann");
    EXPECT_EQ(Set("S1p2", "1", "2", "").Status, 0);
    EXPECT_EQ(Do({"get", crf, "S1p2", "1", "2", "--format", "json"}), "null\n");
}

TEST_F(SetCommand, AnAmountTooLargeForItsFieldIsRefused) {
    Do({"component", "add", crf, "3", "1"});
    const CliResult result = Set("S2p3", "1", "6", "1e20");
    EXPECT_EQ(result.Status, 2) << result.Err;
    EXPECT_EQ(Get("S2p3", "1", "6"), "");
}

TEST_F(SetCommand, AReadOnlyFileTakesNoEntry) {
    std::filesystem::permissions(crf, std::filesystem::perms::owner_read);
    const std::string former = ContentOf(crf);
    const CliResult result = Set("A", "8", "1", "5");
    EXPECT_EQ(result.Status, 4) << result.Err;
    EXPECT_NE(result.Err.find(crf), std::string::npos) << result.Err;
    EXPECT_EQ(ContentOf(crf), former);
    EXPECT_EQ(Get("A", "8", "1"), "");
}

}  // namespace

}  // namespace zolmara::test
