#include "ecr/EcrSupport.h"

namespace zolmara::test {
namespace {

/// Rows of A-6 as they are keyed; the total line of a new statement is kept.
class EmitA6 : public EcrCrf {
protected:
    void Row(double line, const Variant& text, const Variant& code, double up, double down) {
        AddRow("A6", line,
               {{"Col_1", text},
                {"Col_2", code},
                {"Col_5", up == 0 ? Variant() : Variant(up)},
                {"Col_8", down == 0 ? Variant() : Variant(down)}});
    }
    static std::string Text(std::string_view line, std::string_view text) {
        return "3A600000  " + InField(line, -3) + "    1  " + InField(text, 36);
    }
    static std::string Code(std::string_view line, std::string_view code) {
        return "3A600000  " + InField(line, -3) + "    2  " + std::string(code);
    }
    static std::string Number(std::string_view line, int column, std::string_view digits) {
        return "3A600000  " + InField(line, -3) + "    " + std::to_string(column) + "  " +
               Amount(digits);
    }
    static std::string Total(std::string_view code, int column, std::string_view digits) {
        return "3A6000" + std::string(code) + "  100    " + std::to_string(column) + "  " +
               Amount(digits);
    }
};

TEST_F(EmitA6, AnEmptyWorksheetGivesNothing) { EXPECT_EQ(RecordsOf("A6"), Lines{}); }

TEST_F(EmitA6, AllColumnsOfARow) {
    AddRow("A6", 1,
           {{"Col_1", "Move\r\nfees"},
            {"Col_2", "A"},
            {"Col_3", "Legal Fees"},
            {"Col_4", 14},
            {"Col_5", 1234.9},
            {"Col_6", "Utilities"},
            {"Col_7", 16.01},
            {"Col_8", 1234.9}});
    SetCell("A6", 100, "Col_5", 1234.9);
    SetCell("A6", 100, "Col_8", 1234.9);
    EXPECT_EQ(RecordsOf("A6"),
              (Lines{Text("1", "MOVE FEES"), "3A600000    1    2  A ",
                     "3A600000    1    3  " + InField("LEGAL FEES", 36), Number("1", 4, "14.00"),
                     Number("1", 5, "1234"), "3A600000    1    6  " + InField("UTILITIES", 36),
                     Number("1", 7, "16.01"), Number("1", 8, "1234"), Total("A0", 5, "1234"),
                     Total("A0", 8, "1234"), Number("100", 5, "1234"), Number("100", 8, "1234")}));
}

TEST_F(EmitA6, TheWorkedExampleOfALineReference) {
    AddRow("A6", 1, {{"Col_1", "x"}, {"Col_2", "B"}, {"Col_4", 1234.5}});
    EXPECT_EQ(RecordsOf("A6").at(2), "3A600000    1    4           1234.50");
}

TEST_F(EmitA6, TotalsFollowTheRowsOfEachAdjustment) {
    Row(1, "One", "A", 100, 0);
    Row(2, "Two", "A", 0, 60);
    Row(3, "Three", "A", 0, 40);
    Row(4, "Four", "B", 7, 7);
    SetCell("A6", 100, "Col_5", 107);
    SetCell("A6", 100, "Col_8", 107);
    EXPECT_EQ(RecordsOf("A6"),
              (Lines{Text("1", "ONE"), Code("1", "A "), Number("1", 5, "100"), Text("2", "TWO"),
                     Code("2", "A "), Number("2", 8, "60"), Text("3", "THREE"), Code("3", "A "),
                     Number("3", 8, "40"), Total("A0", 5, "100"), Total("A0", 8, "100"),
                     Text("4", "FOUR"), Code("4", "B "), Number("4", 5, "7"), Number("4", 8, "7"),
                     Total("B0", 5, "7"), Total("B0", 8, "7"), Number("100", 5, "107"),
                     Number("100", 8, "107")}));
}

TEST_F(EmitA6, ASingleAdjustmentHasItsTotalsAtLine100) {
    Row(1, "One", "A", 5, 5);
    EXPECT_EQ(RecordsOf("A6"),
              (Lines{Text("1", "ONE"), Code("1", "A "), Number("1", 5, "5"), Number("1", 8, "5"),
                     Total("A0", 5, "5"), Total("A0", 8, "5")}));
}

TEST_F(EmitA6, WithoutLine100TheLastTotalsAreNeverWritten) {
    gDB.Execute("DELETE * FROM A6 WHERE LineNum=100;");
    Row(1, "One", "A", 5, 5);
    Row(2, "Two", "B", 6, 6);
    EXPECT_EQ(StartingWith(RecordsOf("A6"), "3A6000A0").size(), 2u);
    EXPECT_EQ(StartingWith(RecordsOf("A6"), "3A6000B0"), Lines{});
}

TEST_F(EmitA6, ATotalOfZeroIsNotWritten) {
    Row(1, "One", "A", 5, 8);
    Row(2, "Two", "A", -5, 0);
    EXPECT_EQ(StartingWith(RecordsOf("A6"), "3A6000A0"), Lines{Total("A0", 8, "8")});
}

TEST_F(EmitA6, ATotalIsCutTowardZeroOnlyOnce) {
    Row(1, "One", "A", 1.6, 0);
    Row(2, "Two", "A", 1.6, 0);
    const Lines lines = RecordsOf("A6");
    EXPECT_EQ(StartingWith(lines, "3A6000A0"), Lines{Total("A0", 5, "3")});
    EXPECT_EQ(lines.at(2), Number("1", 5, "1"));
}

TEST_F(EmitA6, NegativeAmountsKeepTheirSign) {
    Row(1, "One", "A", -12.99, 0);
    EXPECT_EQ(RecordsOf("A6").at(2), Number("1", 5, "-12"));
    EXPECT_EQ(StartingWith(RecordsOf("A6"), "3A6000A0"), Lines{Total("A0", 5, "-12")});
}

TEST_F(EmitA6, ACodeOfOneSmallLetterGetsAZeroBehindIt) {
    Row(1, "One", "a", 5, 0);
    Row(2, "Two", "A", 5, 0);
    const Lines lines = RecordsOf("A6");
    EXPECT_EQ(lines.at(1), Code("1", "A "));
    EXPECT_EQ(StartingWith(lines, "3A6000A"), Lines{Total("A0", 5, "10")});
}

// The worksheet holds one letter; a table of another making may hold more.
TEST_F(EmitA6, ACodeOfTwoLettersStays) {
    gDB.Execute("DROP TABLE A6;");
    TableDef table;
    table.Name = "A6";
    table.Fields = {{"LineNum", FieldType::dbCurrency}, {"Col_1", FieldType::dbText, 40},
                    {"Col_2", FieldType::dbText, 4},    {"Col_3", FieldType::dbText, 40},
                    {"Col_4", FieldType::dbDouble},     {"Col_5", FieldType::dbDouble},
                    {"Col_6", FieldType::dbText, 40},   {"Col_7", FieldType::dbDouble},
                    {"Col_8", FieldType::dbDouble}};
    gDB.AppendTable(table);
    AddRow("A6", 100, {});
    Row(1, "One", " ab", 5, 0);
    EXPECT_EQ(StartingWith(RecordsOf("A6"), "3A6000AB"), Lines{Total("AB", 5, "5")});
}

TEST_F(EmitA6, ARowWithoutCodeIsPassedOver) {
    Row(1, "One", "A", 5, 0);
    Row(2, "Lost", Variant(), 50, 0);
    Row(3, "Blank", " ", 50, 0);
    Row(4, "Two", "A", 6, 0);
    const Lines lines = RecordsOf("A6");
    EXPECT_EQ(lines.size(), 7u);
    EXPECT_EQ(StartingWith(lines, "3A6000A0"), Lines{Total("A0", 5, "11")});
}

TEST_F(EmitA6, AnExplanationServesTheRowsBehindItAndIsNotStored) {
    Row(1, "First", "A", 5, 0);
    Row(2, Variant(), "A", 0, 5);
    Row(3, "  ", "A", 1, 0);
    Row(4, "Other", "B", 0, 1);
    Row(5, "", "B", 1, 0);
    const Lines lines = RecordsOf("A6");
    EXPECT_EQ(StartingWith(lines, "3A600000    2    1"), Lines{Text("2", "FIRST")});
    EXPECT_EQ(StartingWith(lines, "3A600000    3    1"), Lines{Text("3", "FIRST")});
    EXPECT_EQ(StartingWith(lines, "3A600000    5    1"), Lines{Text("5", "OTHER")});
    EXPECT_TRUE(Cell("A6", 2, "Col_1").IsNull());
    EXPECT_EQ(Cell("A6", 3, "Col_1"), Variant("  "));
    EXPECT_EQ(Cell("A6", 5, "Col_1"), Variant(""));
}

TEST_F(EmitA6, AnExplanationIsAlwaysWrittenEvenWhereThereIsNone) {
    Row(1, Variant(), "A", 5, 0);
    EXPECT_EQ(RecordsOf("A6").at(0), Text("1", ""));
}

TEST_F(EmitA6, AnExplanationOfZeroIsWritten) {
    Row(1, "0", "A", 5, 0);
    EXPECT_EQ(RecordsOf("A6").at(0), Text("1", "0"));
}

TEST_F(EmitA6, LinesHaveNoSubscripts) {
    Row(1.5, "One", "A", 5, 0);
    EXPECT_EQ(RecordsOf("A6").at(0).substr(0, 20), "3A600000    1    1  ");
}

TEST_F(EmitA6, TheTotalLineShowsItsAmountsAlone) {
    SetCell("A6", 100, "Col_2", "Z");
    SetCell("A6", 100, "Col_4", 4);
    SetCell("A6", 100, "Col_5", 9);
    SetCell("A6", 100, "Col_6", "x");
    SetCell("A6", 100, "Col_8", 8);
    EXPECT_EQ(RecordsOf("A6"), (Lines{Number("100", 5, "9"), Number("100", 8, "8")}));
}

}  // namespace
}  // namespace zolmara::test
