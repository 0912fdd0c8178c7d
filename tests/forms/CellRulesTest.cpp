#include "forms/CellAddress.h"
#include "forms/CellRules.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

using test::Box;
using test::Cell;

class CellRules : public test::TestCrf {
protected:
    CellEntry Entry(std::string_view item, double line, std::string_view field,
                    const Variant& value) {
        CellEntry entry;
        entry.Item = item;
        entry.Line = Currency(line);
        entry.Field = field;
        entry.Value = value;
        return entry;
    }
    /// Enters a value; true when it was stored.
    bool Enter(std::string_view item, double line, std::string_view field, const Variant& value) {
        CellEntry entry = Entry(item, line, field, value);
        return EnterCell(entry);
    }
    /// An entry that must be refused with this text and title, the cell staying as it was.
    void ExpectRefused(std::string_view item, double line, std::string_view field,
                       const Variant& value, const std::string& text, const std::string& title) {
        const Variant former = Cell(item, line, field);
        host.Boxes.clear();
        EXPECT_FALSE(Enter(item, line, field, value)) << item << " " << line << " " << field;
        ASSERT_EQ(host.Boxes.size(), 1U) << text;
        EXPECT_EQ(host.Boxes[0].Text, text);
        EXPECT_EQ(host.Boxes[0].Title, title);
        EXPECT_EQ(host.Boxes[0].Style, 16);
        EXPECT_TRUE(Cell(item, line, field) == former);
    }
    void ExpectStored(std::string_view item, double line, std::string_view field,
                      const Variant& value, const Variant& stored) {
        host.Boxes.clear();
        EXPECT_TRUE(Enter(item, line, field, value)) << item << " " << line << " " << field;
        EXPECT_TRUE(host.Boxes.empty()) << item << " " << line << " " << field;
        EXPECT_EQ(Text(Cell(item, line, field)), Text(stored));
        EXPECT_EQ(Cell(item, line, field).IsNull(), stored.IsNull());
    }
    void ExpectLocked(std::string_view item, double line, std::string_view field) {
        EXPECT_FALSE(IsCellOpen(item, Currency(line), field))
            << item << " " << line << " " << field;
        ExpectRefused(item, line, field, "1", std::string(kLockedCellText), "Entry Error");
    }
};

std::string InvalidData(const std::string& value, const std::string& rest) {
    return "You're attempting to enter invalid data ['" + value + "'].  " + rest;
}

const std::string kOnlyNumeric =
    "The cell you're attempting to input or modify only accepts numeric data.  Your entry or "
    "modification is being discarded.";

// --- Numbers

TEST_F(CellRules, AnAmountIsStoredAsANumber) {
    ExpectStored("A", 8, "Col_1", "1,250", 1250);
    EXPECT_TRUE(Cell("A", 8, "Col_1").IsNumber());
}

TEST_F(CellRules, ABlankAmountIsZero) { ExpectStored("A", 8, "Col_1", "  ", 0); }

TEST_F(CellRules, ATieIsRoundedAwayFromZeroWithAWarning) {
    for (const auto& [keyed, stored] : {std::pair{"12.5", "13"}, std::pair{"-12.5", "-13"},
                                        std::pair{"12.4999995", "13"}, std::pair{"12.4", "12"}}) {
        host.Boxes.clear();
        EXPECT_TRUE(Enter("A", 8, "Col_1", keyed));
        ASSERT_EQ(host.Boxes.size(), 1U);
        EXPECT_EQ(host.Boxes[0].Text,
                  InvalidData(keyed,
                              "The cell you're attempting to input or modify only accepts 0 "
                              "digits to the right of the decimal point.  Your entry or "
                              "modification is being rounded."));
        EXPECT_EQ(host.Boxes[0].Title, "Entry Warning");
        EXPECT_EQ(host.Boxes[0].Style, 64);
        EXPECT_EQ(Text(Cell("A", 8, "Col_1")), stored);
    }
}

TEST_F(CellRules, TextInAnAmountIsRefusedAndTheOldValueStays) {
    Enter("A", 8, "Col_1", 7);
    ExpectRefused("A", 8, "Col_1", "abc", InvalidData("abc", kOnlyNumeric), "Entry Error");
}

// --- Locks

TEST_F(CellRules, TotalsAndSubtotalsAreLocked) {
    for (const int line : {3, 7, 28, 99, 100}) ExpectLocked("A", line, "Col_1");
    ExpectLocked("A6", 100, "Col_5");
    ExpectLocked("A7p1", 7, "Col_1");
    ExpectLocked("A7p1", 9, "Col_1");
    ExpectLocked("A7p2", 3, "Col_1");
    ExpectLocked("A8", 12, "Col_3");
    ExpectLocked("A8", 12, "Col_5");
    ExpectLocked("A8", 100, "Col_3");
    ExpectLocked("A81p1", 100, "Col_5");
    for (const int line : {2, 3, 15, 22}) ExpectLocked("G1", line, "Col_2");
    ExpectLocked("Bp3", 52, "CC_100");
    ExpectLocked("C1p3", 54, "CC_100");
    ExpectLocked("D1p1", 51, "CC_800");
}

TEST_F(CellRules, ComputedColumnsAndNamesAreLocked) {
    ExpectLocked("A", 8, "CCName");
    for (int column = 2; column <= 8; ++column)
        EXPECT_FALSE(IsCellOpen("A", Currency(8.0), "Col_" + std::to_string(column)));
    ExpectLocked("A7p1", 1, "Col_4");
    ExpectLocked("A7p1", 1, "Col_6");
    ExpectLocked("A7p1", 1, "Description");
    ExpectLocked("A7p2", 1, "Col_15");
    ExpectLocked("A8", 1, "Col_4");
    ExpectLocked("G", 1, "Description");
    ExpectLocked("G1", 9, "Col_1");
    ExpectLocked("CostCenters", 1, "LineNum");
}

TEST_F(CellRules, TheCostToBeAllocatedIsKeyedOnPart3) {
    ExpectStored("C1p3", 53, "CC_100", "22900", 22900);
    ExpectStored("D1p3", 53, "CC_2800", "-55000", -55000);
}

TEST_F(CellRules, SchedulesWithoutAnEditorHaveNoOpenCell) {
    for (const char* item : {"Cp1", "Dp2", "E", "Fp1", "F1p2", "F2p3", "Master", "Log"})
        EXPECT_FALSE(HasEditor(item)) << item;
    for (const char* item :
         {"A", "Bp1", "B1p2", "C1p3", "D1p1", "E1p2", "G", "S2p3", "Sp1", "ES", "CostCenters"})
        EXPECT_TRUE(HasEditor(item)) << item;
}

TEST_F(CellRules, AComputedLineOfTheBalanceSheetSaysSo) {
    for (const int line : {10, 26, 31, 32, 40, 45, 46, 48})
        ExpectRefused("G", line, "Col_1", "5",
                      "The cell you are attempting to input or modify is computed.", "Entry Error");
}

TEST_F(CellRules, ADeductionOfTheBalanceSheetLosesItsSign) {
    for (const int line : {6, 13, 15, 17, 19, 21, 23})
        ExpectStored("G", line, "Col_1", "-250", 250);
    ExpectStored("G", 5, "Col_1", "-250", -250);
}

// ---

class A6Rules : public CellRules {
protected:
    A6Rules() {
        AddLine("A6", Currency(1.0));
        Enter("A6", 1, "Col_1", "First");
        host.Forget();
    }
};

TEST_F(A6Rules, ACodeIsOneLetterInUpperCase) {
    ExpectStored("A6", 1, "Col_2", "c", "C");
    for (const char* code : {"1", "AB", "", "["})
        ExpectRefused("A6", 1, "Col_2", code,
                      "A valid CODE [any letter from 'A' through 'Z'] must be entered.",
                      "Error: Invalid CODE Entry");
}

TEST_F(A6Rules, LinesMustBeCostCentersAndBringTheirNames) {
    ExpectStored("A6", 1, "Col_4", "9", 9);
    EXPECT_EQ(Text(Cell("A6", 1, "Col_3")), "Salaries and Wages of Others");
    ExpectStored("A6", 1, "Col_7", "10", 10);
    EXPECT_EQ(Text(Cell("A6", 1, "Col_6")), "Payroll Taxes");
    for (const char* line : {"3", "7", "28", "99", "100", "55", "9.01", "nine"}) {
        ExpectRefused("A6", 1, "Col_4", line, "The UpLineNum is not a valid cost center number",
                      "Error: Invalid 'UpLineNum' Entry");
        ExpectRefused("A6", 1, "Col_7", line, "The DnLineNum is not a valid cost center number",
                      "Error: Invalid 'UpLineNum' Entry");
    }
}

TEST_F(A6Rules, ALineThatIsEmptiedTakesNameAndAmountWithIt) {
    Enter("A6", 1, "Col_4", 9);
    Enter("A6", 1, "Col_5", 100);
    ExpectStored("A6", 1, "Col_4", "", nullptr);
    EXPECT_TRUE(Cell("A6", 1, "Col_3").IsNull());
    EXPECT_TRUE(Cell("A6", 1, "Col_5").IsNull());
}

TEST_F(A6Rules, AmountsPassTheNumericCheckFirst) {
    Enter("A6", 1, "Col_4", 9);
    ExpectStored("A6", 1, "Col_5", "1000", 1000);
    ExpectRefused("A6", 1, "Col_5", "abc", InvalidData("abc", kOnlyNumeric), "Entry Error");
}

TEST_F(A6Rules, NamesAreNotKeyed) {
    ExpectLocked("A6", 1, "Col_3");
    ExpectLocked("A6", 1, "Col_6");
}

TEST_F(A6Rules, TheExplanationIsNeededOnTheFirstLineOfACodeOnly) {
    const std::string text =
        "The EXPLANATION may not be left blank for the first reclassification in a given code.";
    Enter("A6", 1, "Col_2", "A");
    AddLine("A6", Currency(2.0));
    ExpectRefused("A6", 2, "Col_4", "9", text, "Error: Blank EXPLANATION Item");
    ExpectStored("A6", 2, "Col_2", "A", "A");
    ExpectStored("A6", 2, "Col_4", "9", 9);
    ExpectRefused("A6", 2, "Col_2", "B", text, "Error: Blank EXPLANATION Item");
    ExpectRefused("A6", 1, "Col_1", "", text, "Error: Blank EXPLANATION Item");
}

// --- A-8 and A-8-1

TEST_F(CellRules, A8ChecksItsColumnsWithItsWords) {
    ExpectStored("A8", 2, "Col_1", std::string(36, 'x'), std::string(36, 'x'));
    ExpectRefused("A8", 2, "Col_1", std::string(37, 'x'),
                  "The Description may only contain up to 36 characters.  Select OK to continue.",
                  "Error: Invalid Length Entry");
    ExpectStored("A8", 2, "Col_2", " b ", "B");
    ExpectRefused("A8", 2, "Col_2", "C", "Basis entries may only be the letters 'A' or 'B'.",
                  "Error: Invalid Basis Entry");
    ExpectStored("A8", 2, "Col_3", "-500", -500);
    ExpectRefused("A8", 2, "Col_3", "much",
                  "Amount entries must be numeric.  Select OK to continue.",
                  "Error: Invalid Non-numeric 'UpSalary' Entry");
    ExpectStored("A8", 2, "Col_5", "28", 28);
    EXPECT_EQ(Text(Cell("A8", 2, "Col_4")), "Interest Income");
    for (const char* line : {"0", "3", "4", "6", "7", "99", "100", "55", "x"})
        ExpectRefused("A8", 2, "Col_5", line,
                      std::string(line) + " is not a valid cost center number",
                      "Error: Invalid Negative 'UpLineNum' Entry");
    ExpectStored("A8", 2, "Col_5", "", nullptr);
    EXPECT_TRUE(IsBlankValue(Cell("A8", 2, "Col_4")));
}

TEST_F(CellRules, A81p1TakesACostCenterByItsLine) {
    AddLine("A81p1", Currency(1.0));
    ExpectStored("A81p1", 1, "Col_1", "15", 15);
    EXPECT_EQ(Text(Cell("A81p1", 1, "Col_2")), "Auditing and Accounting Fees");
    ExpectRefused("A81p1", 1, "Col_1", "55",
                  "No cost center found for (55).  Select OK to continue.", "Error: Invalid Entry");
    ExpectRefused("A81p1", 1, "Col_1", "", "No cost center found for ().  Select OK to continue.",
                  "Error: Invalid Entry");
    ExpectLocked("A81p1", 1, "Col_2");
    ExpectLocked("A81p1", 1, "Col_7");
    ExpectStored("A81p1", 1, "Col_4", "1.01", 1.01);
    host.Boxes.clear();
    EXPECT_TRUE(Enter("A81p1", 1, "Col_4", "1.005"));
    EXPECT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(Text(Cell("A81p1", 1, "Col_4")), "1.01");
}

TEST_F(CellRules, A81p2OpensTheInterrelationshipUnderSymbolG) {
    AddLine("A81p2", Currency(1.0));
    ExpectRefused("A81p2", 1, "Col_3", "Ann",
                  "Valid Symbol entries are 'A' through 'G' only.  Select OK to continue.",
                  "Error: Invalid Symbol Entry");
    ExpectRefused("A81p2", 1, "Col_1", "H",
                  "Valid Symbol entries are 'A' through 'G' only.  Select OK to continue.",
                  "Error: Invalid Symbol Entry");
    ExpectStored("A81p2", 1, "Col_1", "g", "G");
    ExpectStored("A81p2", 1, "Col_2", "Non-Financial", "Non-Financial");
    ExpectRefused("A81p2", 1, "Col_2", "other",
                  "If the Symbol in column 1 is 'G', the Interrelationship must be either "
                  "'Financial' or 'Non-Financial.'",
                  "Invalid Entry");
    ExpectStored("A81p2", 1, "Col_1", "C", "C");
    EXPECT_TRUE(Cell("A81p2", 1, "Col_2").IsNull());
    ExpectLocked("A81p2", 1, "Col_2");
}

TEST_F(CellRules, A81p2PercentagesAreNotNegative) {
    AddLine("A81p2", Currency(1.0));
    Enter("A81p2", 1, "Col_1", "A");
    ExpectStored("A81p2", 1, "Col_4", "12.25", 12.25);
    ExpectRefused("A81p2", 1, "Col_6", "-1",
                  "Valid Percentage entries may not be negative numbers.  Select OK to continue.",
                  "Error: Invalid Negative 'Percentage_1' Entry");
}

TEST_F(CellRules, A81p2ChecksTheWholeRowAtEveryEntry) {
    AddLine("A81p2", Currency(1.0));
    Enter("A81p2", 1, "Col_1", "A");
    test::SetCell("A81p2", 1, "Col_6", -3);
    ExpectRefused("A81p2", 1, "Col_3", "Ann",
                  "Valid Percentage_2 entries may not be negative numbers.  Select OK to continue.",
                  "Error: Invalid Negative 'Percentage_2' Entry");
}

// --- G-1

TEST_F(CellRules, G1OpensDescriptionsFromLine10On) {
    const auto line = cmdAdd("G1", Currency(9.0));
    ASSERT_EQ(line, Currency(10.0));
    ExpectStored("G1", 10, "Col_1", "Gain on sale", "Gain on sale");
    ExpectStored("G1", 10, "Col_2", "500", 500);
    ExpectStored("G1", 1, "Col_2", "1000", 1000);
}

}  // namespace
}  // namespace zolmara
