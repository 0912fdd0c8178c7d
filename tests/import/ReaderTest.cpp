// What the reader makes of a file: the lines, their fields, the staged rows and the messages.

#include <gtest/gtest.h>

#include "import/ImportTools.h"

namespace zolmara::test {
namespace {

using StagedRows = std::vector<std::string>;

class ReaderTest : public ImportTest {
protected:
    /// The only message, a "Read" message, without its level.
    std::string OnlyMessage() {
        const auto messages = Messages();
        EXPECT_EQ(messages.size(), 1u);
        if (messages.empty()) return {};
        EXPECT_EQ(messages[0].Level, "Read");
        return messages[0].Text;
    }
};

TEST_F(ReaderTest, AnEmptyFileGivesTheClosingMessageAlone) {
    EXPECT_TRUE(ImportBytes(""));
    EXPECT_TRUE(IsClean());
    EXPECT_EQ(Staged(), StagedRows{});
}

TEST_F(ReaderTest, TwoNumbersForACellAddUp) {
    Import({"A|5|1|100", "A|5|1|50"});
    EXPECT_EQ(Staged(), StagedRows{"A|5|1|150"});
    EXPECT_EQ(NumOr(Cell("A", 5, "Col_1")), 150);
}

TEST_F(ReaderTest, NamesThatDifferInCaseAreOneCell) {
    Import({"a|5|1|100", "A|5.00|1|0.5"});
    EXPECT_EQ(Staged(), StagedRows{"a|5|1|100.5"});
}

TEST_F(ReaderTest, InColumn4OfA8TheFirstNumberStandsAndATextReplacesIt) {
    Import({"A8|5|4|1", "A8|5|4|2"});
    EXPECT_EQ(Staged(), StagedRows{"A8|5|4|1"});
    Import({"A8|5|4|1", "A8|5|4|2", "A8|5|4|X"});
    EXPECT_EQ(Staged(), StagedRows{"A8|5|4|X"});
}

TEST_F(ReaderTest, TheRuleOfColumn4HoldsForTheExactNameAlone) {
    Import({"a8|5|4|1", "a8|5|4|2", "A8|5|5|1", "A8|5|5|2"});
    EXPECT_EQ(Staged(), (StagedRows{"a8|5|4|3", "A8|5|5|3"}));
}

TEST_F(ReaderTest, ATextReplacesANumberAndANumberAText) {
    Import({"S1p2|1|2|5", "S1p2|1|2|Smith", "S1p2|2|2|Smith", "S1p2|2|2|5"});
    EXPECT_EQ(Staged(), (StagedRows{"S1p2|1|2|Smith", "S1p2|2|2|5"}));
}

TEST_F(ReaderTest, AFractionOnAScheduleCallsOffTheWholeLoad) {
    EXPECT_FALSE(Import({"A|5|1|100", "Bp1|5|2|1.5"}));
    EXPECT_EQ(OnlyMessage(), "The following line must be a whole number: \n\rBp1, 5, 2");
    EXPECT_FALSE(ImportErrorFlag);
    EXPECT_EQ(Staged(), (StagedRows{"A|5|1|100", "Bp1|5|2|1.5"}));
    EXPECT_TRUE(Cell("A", 5, "Col_1").IsNull());
}

TEST_F(ReaderTest, TheRuleOfWholeNumbersGoesByTheNameAsItIsWritten) {
    for (auto sheet : {"Bp2", "B1p1", "C1p3", "D1p2", "E1p1", "BpXt", "Bpt"}) {
        Import({std::string(sheet) + "|5|2|-0.25"});
        EXPECT_EQ(Messages().at(0).Text.find("The following line must be"), 0u) << sheet;
    }
    for (auto sheet : {"bp1", "BP1", "A", "Cp1", "Btp1"}) {
        Import({std::string(sheet) + "|5|2|1.5"});
        for (const auto& message : Messages())
            EXPECT_EQ(message.Text.find("The following"), std::string::npos) << sheet;
    }
}

TEST_F(ReaderTest, ATextOnAScheduleIsStagedAndReachesTheLoader) {
    Import({"Bp1|5|2|abc"});
    EXPECT_EQ(Messages(), std::vector<Message>{
                              Refused("Bp1", "Table Bp1 line 5 doesn't exist: ", "5, 2, \"abc\"")});
}

TEST_F(ReaderTest, QuotedContentsMayHoldCommasAndDollars) {
    EXPECT_TRUE(Import({"A|5|1|\"1,000\"", "A|8|1|\"$5\"|behind"}));
    EXPECT_EQ(Staged(), (StagedRows{"A|5|1|1,000", "A|8|1|$5"}));
    EXPECT_EQ(NumOr(Cell("A", 5, "Col_1")), 1000);
}

TEST_F(ReaderTest, QuotedContentsEndAtTheNextQuoteOrTheEndOfTheLine) {
    Import({"S1p2|1|2|\"a|b\"c", "S1p2|2|2|\"open $ ,", "S1p2|3|2|\"\""});
    EXPECT_EQ(Staged(), (StagedRows{"S1p2|1|2|a\tb", "S1p2|2|2|open $ ,", "S1p2|3|2|"}));
}

TEST_F(ReaderTest, UnquotedContentsWithACommaOrDollarAreRefused) {
    EXPECT_FALSE(Import({"A|5|1|1,000"}));
    EXPECT_EQ(OnlyMessage(),
              "The Contents value has invalid characters, no commas or '$' from ASCII Import line: "
              "\n\rA, 5, 1");
    Import({"A|5|1|$5"});
    EXPECT_EQ(Staged(), StagedRows{});
    EXPECT_TRUE(ImportErrorFlag);
}

TEST_F(ReaderTest, ATrailingTabStagesEmptyContents) {
    Import({"S1p2|1|2|"});
    EXPECT_EQ(Staged(), StagedRows{"S1p2|1|2|"});
    EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_2"), "Null"), "");
}

TEST_F(ReaderTest, BlankLinesAndALoneValueErrorAreSkippedInSilence) {
    EXPECT_TRUE(Import({"   ", ""}));
    EXPECT_TRUE(IsClean());
    EXPECT_TRUE(Import({"   ", "", "#VALUE!", "  #VALUE!  "}));
    EXPECT_EQ(Messages(),
              (std::vector<Message>{
                  {"", std::string(kClosing)},
                  {"F.Y.I.", "2 lines of the file were passed over: \"#VALUE!\" (2)."}}));
}

TEST_F(ReaderTest, AValueErrorBehindTheTabsIsContents) {
    Import({"S1p2|1|2|#VALUE!"});
    EXPECT_EQ(Staged(), StagedRows{"S1p2|1|2|#VALUE!"});
}

TEST_F(ReaderTest, ALineOfOnlyTabsGetsTheColumnMessage) {
    ImportBytes("\t\t\t\t\n");
    EXPECT_EQ(OnlyMessage(),
              "The Column specification is missing from ASCII Import line: \n\r\t\t\t\t");
}

TEST_F(ReaderTest, ALineWithoutTabsLacksTheRow) {
    ImportBytes("  A 5 1 100\n");
    EXPECT_EQ(OnlyMessage(),
              "The Row specification is missing from ASCII Import line: \n\r  A 5 1 100");
}

TEST_F(ReaderTest, ALineWithOneTabLacksTheColumn) {
    Import({"A|5"});
    EXPECT_EQ(OnlyMessage(),
              "The Column specification is missing from ASCII Import line: \n\rA\t5");
}

TEST_F(ReaderTest, ALineWithTwoTabsLacksTheContents) {
    Import({"A|5|1"});
    EXPECT_EQ(OnlyMessage(), "The Contents value is missing from ASCII Import line: \n\rA\t5\t1");
}

TEST_F(ReaderTest, ColumnsGoFrom0To110) {
    Import({"X|1|110|a"});
    EXPECT_EQ(Staged(), StagedRows{"X|1|110|a"});
    Import({"X|1|0|a"});
    EXPECT_EQ(Staged(), StagedRows{"X|1|0|a"});
    Import({"X|1|110.01|a"});
    EXPECT_EQ(OnlyMessage(), "The column number is illegal for: \n\rX, 1, 110.01");
    Import({"X|1|-1|a"});
    EXPECT_EQ(OnlyMessage(), "The column number is illegal for: \n\rX, 1, -1");
}

TEST_F(ReaderTest, RowsAndColumnsAreTheNumbersAtTheStartOfTheirText) {
    Import({"X|abc|def|a", "X| 4 . 0 1 x9|2b|b", "X|-3|1|c", "X|1.00004|1|d"});
    EXPECT_EQ(Staged(), (StagedRows{"X|0|0|a", "X|4|2|b", "X|-3|1|c", "X|1|1|d"}));
}

TEST_F(ReaderTest, NumbersThatNoLineCanHaveAreRefused) {
    Import({"X|1e300|1|a"});
    EXPECT_EQ(OnlyMessage().find("The row number is illegal for: "), 0u);
    Import({"X|1e400|1|a"});
    EXPECT_EQ(OnlyMessage().find("The row number is illegal for: "), 0u);
    Import({"X|1|1e400|a"});
    EXPECT_EQ(OnlyMessage().find("The column number is illegal for: "), 0u);
    Import({"X|1|1e300|a"});
    EXPECT_EQ(OnlyMessage().find("The column number is illegal for: "), 0u);
}

TEST_F(ReaderTest, TheLastNumberThatALineCanHaveStandsAndTheNextIsRefused) {
    Import({"X|919999999999999|1|a"});
    EXPECT_EQ(Staged(), StagedRows{"X|919999999999999|1|a"});
    Import({"X|920000000000000|1|a"});
    EXPECT_EQ(OnlyMessage().find("The row number is illegal for: "), 0u);
}

TEST_F(ReaderTest, FieldsAreTrimmedAndWhatIsBehindTheContentsIsIgnored) {
    Import({"  S1p2 |  1| 2 |   Ann Smith |more|$,"});
    EXPECT_EQ(Staged(), StagedRows{"S1p2|1|2|Ann Smith "});
}

TEST_F(ReaderTest, ASecondCleanImportAfterABadOneShowsNoClosingMessage) {
    EXPECT_FALSE(Import({"A"}));
    EXPECT_FALSE(Import({"A|5|1|1"}));
    EXPECT_TRUE(Messages().empty());
    EXPECT_EQ(NumOr(Cell("A", 5, "Col_1")), 1);
}

TEST_F(ReaderTest, AnImportStartsWithAnEmptyStagingTable) {
    Import({"X|1|1|a"});
    Import({"Y|1|1|b"});
    EXPECT_EQ(Staged(), StagedRows{"Y|1|1|b"});
}

// --- Limits of the fields ------------------------------------------------------------------

TEST_F(ReaderTest, ContentsOf255CharactersPassAndLongerOnesAreRefused) {
    const std::string longest(255, 'x');
    Import({"X|1|1|" + longest});
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|" + longest});
    Import({"X|1|1|" + longest + "y"});
    EXPECT_EQ(OnlyMessage(), "The Contents value is longer than 255 characters for: \n\rX, 1, 1");
    EXPECT_EQ(Staged(), StagedRows{});
}

TEST_F(ReaderTest, CharactersAreCountedNotBytes) {
    std::string text;
    for (int i = 0; i < 255; ++i) text += "é";
    Import({"X|1|1|" + text});
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|" + text});
}

TEST_F(ReaderTest, AWorksheetNameOfOver20CharactersIsRefused) {
    const std::string name(20, 'X');
    Import({name + "|1|1|a"});
    EXPECT_EQ(Staged().size(), 1u);
    Import({name + "Y|1|1|a"});
    EXPECT_EQ(OnlyMessage(),
              "The WorkSheet name is longer than 20 characters in ASCII Import line: \n\r" + name +
                  "Y\t1\t1\ta");
}

TEST_F(ReaderTest, ASumThatIsLongerThanACellIsRefused) {
    EXPECT_FALSE(Import({"X|1|1|1e300", "X|1|1|1e300"}));
    EXPECT_EQ(Messages().at(0).Text,
              "The Contents value is longer than 255 characters for: \n\rX, 1, 1");
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|1e300"});
}

TEST_F(ReaderTest, ASumOf255DigitsPasses) {
    // 8 and 254 zeros.
    Import({"X|1|1|4e254", "X|1|1|4e254"});
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|8" + std::string(254, '0')});
    // 1 and 255 zeros.
    Import({"X|1|1|5e254", "X|1|1|5e254"});
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|5e254"});
}

TEST_F(ReaderTest, WhatIsNoNumberIsNotAddedUp) {
    Import({"X|1|1|1e999", "X|1|1|NaN", "X|2|1|NaN", "X|2|1|1"});
    EXPECT_EQ(Staged(), (StagedRows{"X|1|1|NaN", "X|2|1|1"}));
}

// --- Files ---------------------------------------------------------------------------------

TEST_F(ReaderTest, EveryLineEndCounts) {
    for (auto end : {"\n", "\r", "\r\n"}) {
        ImportBytes(std::string("X\t1\t1\ta") + end + "X\t1\t2\tb" + end + end + "X\t1\t3\tc");
        EXPECT_EQ(Staged(), (StagedRows{"X|1|1|a", "X|1|2|b", "X|1|3|c"}));
    }
    EXPECT_TRUE(Messages().size() == 1 && Messages()[0].Level == "Load");
}

TEST_F(ReaderTest, AByteOrderMarkIsDropped) {
    EXPECT_TRUE(
        ImportBytes("\xEF\xBB\xBF"
                    "A\t5\t1\t7\n"));
    EXPECT_EQ(Staged(), StagedRows{"A|5|1|7"});
    EXPECT_TRUE(ImportBytes("\xEF\xBB\xBF"));
}

TEST_F(ReaderTest, ValidUtf8IsReadAsThat) {
    ImportBytes("S1p2\t1\t2\tJosé 日本\n");
    EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_2")), "José 日本");
}

TEST_F(ReaderTest, OtherTextIsCodePage1252) {
    ImportBytes("S1p2\t1\t2\tJos\xE9 \x80\nS1p2\t2\t2\tJosé\n");
    EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_2")), "José €");
    EXPECT_EQ(StrOr(Cell("S1p2", 2, "Col_2")), "JosÃ©");
}

TEST_F(ReaderTest, ACharacterAcrossTheReadersPiecesStaysWhole) {
    for (std::size_t pad = 262140; pad <= 262145; ++pad) {
        std::string text(pad - 12, ' ');
        text += "\nS1p2\t1\t2\t日本語\n";
        ImportBytes(text);
        EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_2")), "日本語") << pad;
        SetCell("S1p2", 1, "Col_2", "x");
    }
}

TEST_F(ReaderTest, ACharacterOfFourBytesAtTheEndOfAPieceStaysWhole) {
    // The piece ends behind the first, second, third and last byte of the character.
    for (std::size_t pad = 262140; pad <= 262145; ++pad) {
        std::string text(pad - 10, ' ');
        text += "\nS1p2\t1\t2\t𐍈b\n";
        ImportBytes(text);
        EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_2")), "𐍈b") << pad;
        SetCell("S1p2", 1, "Col_2", "x");
    }
}

TEST_F(ReaderTest, ALineEndAcrossTheReadersPiecesIsOne) {
    std::string text(262143, ' ');
    text += "\r\nX\t1\t1\ta\r\n";
    ImportBytes(text);
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|a"});
}

constexpr std::string_view kTooLong = "The line is longer than 65536 bytes in ASCII Import line: ";

TEST_F(ReaderTest, AnEndlessLineIsDroppedAndTold) {
    EXPECT_FALSE(ImportBytes(std::string(20'000'000, 'z')));
    const std::string message = OnlyMessage();
    EXPECT_TRUE(message.starts_with(std::string(kTooLong) + "\n\rzzzz"));
    EXPECT_GT(message.size(), 65000u);
}

TEST_F(ReaderTest, ALineWhoseFieldsComeTooLateIsToldAndTheOthersAreRead) {
    const std::string blanks(70000, ' ');
    EXPECT_FALSE(ImportBytes(blanks + "A\t5\t1\t7\nA\t6\t1\t8\n"));
    EXPECT_EQ(OnlyMessage().find(kTooLong), 0u);
    EXPECT_EQ(Staged(), StagedRows{"A|6|1|8"});
    EXPECT_FALSE(ImportBytes("A\t5\t1\t" + blanks + "7\n"));
    EXPECT_EQ(OnlyMessage().find(kTooLong), 0u);
    EXPECT_FALSE(ImportBytes("A\t5\t1\t7" + blanks + "8\n"));
    EXPECT_EQ(OnlyMessage().find(kTooLong), 0u);
}

TEST_F(ReaderTest, ALongLineWhoseContentsEndInTimeIsRead) {
    const std::string rest(70000, 'x');
    EXPECT_TRUE(ImportBytes("A\t5\t1\t7\t" + rest + "\nS1p2\t1\t2\t\"Ann\"" + rest + "\n"));
    EXPECT_TRUE(IsClean());
    EXPECT_EQ(Staged(), (StagedRows{"A|5|1|7", "S1p2|1|2|Ann"}));
}

TEST_F(ReaderTest, AnEndlessLineOfBlanksIsSkippedInSilence) {
    const std::string blanks(70000, ' ');
    EXPECT_TRUE(ImportBytes(blanks + "\nA\t5\t1\t7" + blanks + "\n"));
    EXPECT_TRUE(IsClean());
    EXPECT_EQ(Staged(), StagedRows{"A|5|1|7"});
}

TEST_F(ReaderTest, TheEchoOfALongLineIsWhole) {
    const std::string line = "A\t5" + std::string(1000, ' ') + "end";
    ImportBytes(line);
    EXPECT_EQ(OnlyMessage(),
              "The Column specification is missing from ASCII Import line: \n\r" + line);
}

TEST_F(ReaderTest, AnEndlessLineOfNonAsciiTextIsCutBetweenCharacters) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += "日";
    ImportBytes("x" + text + "\nX\t1\t1\ta\n");
    EXPECT_TRUE(IsValidUtf8(Messages().at(0).Text));
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|a"});
}

TEST_F(ReaderTest, BinaryDataGivesMessagesAndNothingElse) {
    std::string bytes;
    for (int i = 0; i < 200000; ++i) bytes += static_cast<char>((i * 7919 + i / 251) & 255);
    EXPECT_FALSE(ImportBytes(bytes));
    for (const auto& message : Messages()) {
        EXPECT_TRUE(IsValidUtf8(message.Text));
        EXPECT_EQ(message.Text.find('\0'), std::string::npos);
    }
}

TEST_F(ReaderTest, ALineWithANulIsRefused) {
    ImportBytes(std::string("A\t5\t1\t1") + '\0' + "0\nA\t6\t1\t2\n");
    EXPECT_EQ(OnlyMessage(),
              "There are characters that are no text in ASCII Import line: \n\rA\t5\t1\t1 0");
    EXPECT_EQ(Staged(), StagedRows{"A|6|1|2"});
}

TEST_F(ReaderTest, AFileThatCannotBeReadIsNamedAndNothingChanges) {
    Import({"X|1|1|a"});
    const auto before = DumpCrf();
    for (const auto& path : {folder.File("nothing.txt"), folder.Path().string(),
                             std::string("/dev/null"), std::string()}) {
        try {
            ImportAsciiFile(path);
            ADD_FAILURE() << path;
        } catch (const StoreError& error) {
            EXPECT_EQ(error.kind(), StoreError::Kind::CannotOpen);
            EXPECT_NE(std::string(error.what()).find(path), std::string::npos);
        }
    }
    EXPECT_EQ(DumpCrf(), before);
    EXPECT_EQ(gLogType, "");
}

TEST_F(ReaderTest, ManyLinesOfOneCellAreLinear) {
    std::string text;
    for (int i = 0; i < 50000; ++i) text += "X\t1\t1\t1\n";
    ImportBytes(text);
    EXPECT_EQ(Staged(), StagedRows{"X|1|1|50000"});
}

}  // namespace
}  // namespace zolmara::test
