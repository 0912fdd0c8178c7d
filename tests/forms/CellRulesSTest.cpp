#include <tuple>
#include <vector>

#include "forms/CellAddress.h"
#include "forms/CellChecks.h"
#include "forms/CellRuleTable.h"
#include "forms/CellRules.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

using test::Cell;

class CellRulesS : public test::TestCrf {
protected:
    bool Enter(std::string_view item, double line, std::string_view field, const Variant& value) {
        CellEntry entry;
        entry.Item = item;
        entry.Line = Currency(line);
        entry.Field = field;
        entry.Value = value;
        host.Boxes.clear();
        return EnterCell(entry);
    }
    std::string Stored(std::string_view item, double line, std::string_view field,
                       const Variant& value) {
        EXPECT_TRUE(Enter(item, line, field, value)) << item << " " << Text(value);
        return Text(Cell(item, line, field));
    }
    std::string Refusal(std::string_view item, double line, std::string_view field,
                        const Variant& value) {
        const std::string former = Text(Cell(item, line, field));
        EXPECT_FALSE(Enter(item, line, field, value)) << item << " " << Text(value);
        EXPECT_EQ(Text(Cell(item, line, field)), former);
        return host.Boxes.empty() ? "" : host.Boxes[0].Title + "|" + host.Boxes[0].Text;
    }
};

const std::string kLocked = "Entry Error|" + std::string(kLockedCellText);

TEST_F(CellRulesS, AnswersAreReadByFirstAndLastLetter) {
    EXPECT_EQ(Stored("Sp1", 1, "Col_1", "y"), "Yes");
    EXPECT_EQ(Stored("Sp1", 1, "Col_1", "no"), "No");
    EXPECT_EQ(Stored("Sp1", 1, "Col_1", "yN"), "Yes");
    EXPECT_EQ(Stored("Sp1", 1, "Col_1", "AY"), "Yes");
    EXPECT_EQ(Refusal("Sp1", 1, "Col_1", "maybe"), "Entry Error|Please enter Y or N.");
    EXPECT_EQ(Stored("Sp1", 1, "Col_1", " "), "");
}

TEST_F(CellRulesS, TheAmendmentNumberIsOneDigit) {
    EXPECT_EQ(Stored("Sp1", 2, "Col_1", "9"), "9");
    for (const char* keyed : {"10", "x", "-1", "1.5", ""})
        EXPECT_EQ(Refusal("Sp1", 2, "Col_1", keyed), "Entry Error|Please enter a number 0-9.");
    EXPECT_EQ(Refusal("Sp1", 3, "Col_1", "1/1/2024"), kLocked);
}

TEST_F(CellRulesS, StateAndZipOfTheHomeOffice) {
    EXPECT_EQ(Stored("S1p1", 1, "Col_5", "IL"), "IL");
    EXPECT_EQ(Stored("S1p1", 1, "Col_5", " NY "), "NY");
    EXPECT_EQ(Refusal("S1p1", 1, "Col_5", "N "),
              "Entry Error|Please only use the two character state code.");
    EXPECT_EQ(Refusal("S1p1", 1, "Col_5", "ILL"),
              "Entry Error|Please only use the two character state code.");
    EXPECT_EQ(Stored("S1p1", 1, "Col_6", "60201"), "60201");
    EXPECT_EQ(Stored("S1p1", 1, "Col_6", "60201-4410"), "60201-4410");
    for (const char* zip : {"6020", "602014410", "6020A", "60201-441", "60201-44100"})
        EXPECT_EQ(Refusal("S1p1", 1, "Col_6", zip),
                  "Entry Error|Zip code must be formated XXXXX or XXXXX-XXXXX");
}

TEST_F(CellRulesS, ABlankEmptiesStateZipDateTypeAndAnswer) {
    const std::vector<std::tuple<std::string, double, std::string, std::string>> cells = {
        {"S1p1", 1, "Col_5", "IL"}, {"S1p1", 1, "Col_6", "60201"}, {"S1p1", 2, "Col_3", "1/1/2000"},
        {"S1p1", 3, "Col_1", "2"},  {"S1p1", 4, "Col_1", "Y"},     {"S2p3", 1, "Col_5", "IL"}};
    AddS2Line(Currency::FromWhole(1), 3);
    for (const auto& [item, line, field, value] : cells) {
        EXPECT_NE(Stored(item, line, field, value), "") << item << " " << field;
        EXPECT_EQ(Stored(item, line, field, " "), "") << item << " " << field;
    }
}

TEST_F(CellRulesS, IdentityIsNotKeyedOnLine2) {
    for (const char* field : {"Col_1", "Col_2", "Col_4", "Col_5", "Col_6"})
        EXPECT_EQ(Refusal("S1p1", 2, field, "x"), kLocked) << field;
}

TEST_F(CellRulesS, DatesAreStoredInOneForm) {
    EXPECT_EQ(Stored("S1p1", 2, "Col_3", "7/1/87"), "07/01/1987");
    EXPECT_EQ(Stored("S1p1", 2, "Col_3", "Oct 1, 2022"), "10/01/2022");
    EXPECT_EQ(Stored("S1p1", 2, "Col_3", ""), "");
    EXPECT_EQ(Refusal("S1p1", 2, "Col_3", "2/30/2023"),
              "Error: Invalid Non-Date Entry|You're attempting to enter invalid data "
              "['2/30/2023'].  The cell you're attempting to input or modify only accepts date "
              "data.  Your entry or modification is being discarded.  Select OK to continue.");
}

TEST_F(CellRulesS, OperationsThatBeganBehindThePeriodAreTold) {
    EXPECT_EQ(Stored("S1p1", 2, "Col_3", "9/30/2023"), "09/30/2023");
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(Stored("S1p1", 2, "Col_3", "10/1/2023"), "10/01/2023");
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Text,
              "This date should be on or before the reporting period ending date.");
}

TEST_F(CellRulesS, TheTypeOfControlOpensItsDescription) {
    for (const char* type : {"1", "14"}) EXPECT_EQ(Stored("S1p1", 3, "Col_1", type), type);
    for (const char* type : {"0", "15", "2.5", "church", "5.00000000001", "1e400"})
        EXPECT_EQ(Refusal("S1p1", 3, "Col_1", type),
                  "Input Error|The Type of Control must be 1 - 14.");
    EXPECT_EQ(Stored("S1p1", 3, "Col_2", "Hospital district"), "Hospital district");
    Enter("S1p1", 3, "Col_1", "2");
    EXPECT_EQ(Refusal("S1p1", 3, "Col_2", "x"), kLocked);
    for (const char* field : {"Col_3", "Col_4", "Col_5", "Col_6"})
        EXPECT_EQ(Refusal("S1p1", 3, field, "x"), kLocked) << field;
}

TEST_F(CellRulesS, FinancialStatements) {
    EXPECT_EQ(Stored("S1p1", 4, "Col_1", "Y"), "Yes");
    EXPECT_EQ(Stored("S1p1", 4, "Col_2", "r"), "Reviewed");
    EXPECT_EQ(Stored("S1p1", 4, "Col_2", ""), "");
    EXPECT_EQ(Refusal("S1p1", 4, "Col_2", "x"), "Entry Error|Please enter A, C or R.");
    EXPECT_EQ(Refusal("S1p1", 4, "Col_4", "3/1/2024"), kLocked);
    Enter("S1p1", 4, "Col_3", "N");
    // The clock of the tests stands on 2/1/2024.
    EXPECT_EQ(Stored("S1p1", 4, "Col_4", "3/1/2024"), "03/01/2024");
    EXPECT_EQ(Refusal("S1p1", 4, "Col_4", "2/1/2024"),
              "Entry Error|Line 4, Column 4 must be a future date.");
    EXPECT_EQ(Refusal("S1p1", 4, "Col_6", "x"), kLocked);
}

TEST_F(CellRulesS, ContactsTakeTextAndMailLinesToo) {
    EXPECT_EQ(Stored("S1p1", 5, "Col_6", "Employer"), "Employer");
    AddLine("S1p1", Currency(5.01));
    EXPECT_EQ(Stored("S1p1", 5.01, "Col_6", "a@b.example"), "a@b.example");
}

class ComponentRules : public CellRulesS {
protected:
    ComponentRules() {
        for (int part = 1; part <= 3; ++part) AddS2Line(Currency(1.0), part);
    }
};

TEST_F(ComponentRules, ACcnIsKeptWithItsDashAndCarried) {
    EXPECT_EQ(Stored("S2p1", 1, "Col_2", "140234"), "14-0234");
    EXPECT_EQ(Stored("S2p1", 1, "Col_2", "14-0234"), "14-0234");
    EXPECT_EQ(Stored("S2p1", 1, "Col_2", "ab1234"), "AB-1234");
    EXPECT_EQ(Text(Cell("E1p1", 1, "Col_0")), "AB-1234");
    EXPECT_EQ(Refusal("S2p1", 1, "Col_2", "14023"),
              "Entry Error|Column 2 must be 5 characters long, 6 with hypen.");
    EXPECT_EQ(Refusal("S2p1", 1, "Col_2", "14-S234"),
              "Entry Error|The last four characters must be numeric.");
}

TEST_F(ComponentRules, ANameIsCarriedAndTheNumberStays) {
    Enter("S2p1", 1, "Col_2", "140234");
    EXPECT_EQ(Stored("S2p1", 1, "Col_1", "Alpha \"One\""), "Alpha \"One\"");
    EXPECT_EQ(Text(Cell("Fp1", 1, "Description")), "Alpha \"One\"");
    EXPECT_EQ(Text(Cell("Fp1", 1, "Col_0")), "14-0234");
    EXPECT_EQ(Stored("S2p2", 1, "Col_1", "Gift Shop"), "Gift Shop");
    EXPECT_EQ(Text(Cell("Bp2", 1, "Description")), "Gift Shop");
}

TEST_F(ComponentRules, CodesOfAProvider) {
    EXPECT_EQ(Stored("S2p1", 1, "Col_3", "m"), "Managed");
    EXPECT_EQ(Refusal("S2p1", 1, "Col_3", "x"), "Entry Error|Please enter O or M.");
    EXPECT_EQ(Stored("S2p1", 1, "Col_8", "Yes"), "Yes");
    EXPECT_EQ(Stored("S2p1", 1, "Col_9", "t"), "TEFRA");
    EXPECT_EQ(Refusal("S2p1", 1, "Col_9", "x"), "Entry Error|Please enter P, T, or O.");
    EXPECT_EQ(Stored("S2p1", 1, "Col_9", ""), "");
}

TEST_F(ComponentRules, AContractorNumberHasFiveDigitsAndIsNotZero) {
    EXPECT_EQ(Stored("S2p1", 1, "Col_10", "06101"), "06101");
    for (const std::string keyed : {"00000", "6101", "061011", "0610A", "-6101", "6101.0"})
        EXPECT_EQ(Refusal("S2p1", 1, "Col_10", keyed),
                  "Error: Invalid Entry|You're attempting to enter invalid data ['" + keyed +
                      "'].  The cell you're attempting to input or modify only accepts five digit "
                      "numeric data greater than zero.");
}

TEST_F(ComponentRules, PartIIHasNoNumberAndNoOwner) {
    EXPECT_EQ(Refusal("S2p2", 1, "Col_2", "140234"), kLocked);
    EXPECT_EQ(Refusal("S2p2", 1, "Col_3", "O"), kLocked);
    EXPECT_EQ(Stored("S2p2", 1, "Col_7", "12/31/2022"), "12/31/2022");
}

TEST_F(ComponentRules, RegionsHaveNumberStateAndAmount) {
    EXPECT_EQ(Stored("S2p3", 1, "Col_2", "14h101"), "14-h101");
    EXPECT_EQ(Refusal("S2p3", 1, "Col_2", "14-91011"),
              "Error: Invalid Entry|You're attempting to enter invalid data ['14-91011'].  The "
              "cell you're attempting to input or modify only accepts seven characters.");
    EXPECT_EQ(Refusal("S2p3", 1, "Col_5", "Ohio"),
              "Error: Invalid Entry|You're attempting to enter invalid data ['Ohio'].  Enter the "
              "two character state code.");
    EXPECT_EQ(Stored("S2p3", 1, "Col_5", " OH"), "OH");
    EXPECT_EQ(Stored("S2p3", 1, "Col_6", "125000"), "125000");
    EXPECT_EQ(Stored("S2p3", 1, "Col_7", "n"), "No");
    EXPECT_EQ(Refusal("S2p3", 1, "Col_3", "x"), kLocked);
}

TEST_F(ComponentRules, StatisticsTakeWholeNumbers) {
    EXPECT_EQ(Stored("D1p1", 1, "CC_800", "8240"), "8240");
    EXPECT_EQ(Stored("E1p2", 1, "Col_1", "10560"), "10560");
    EXPECT_EQ(Refusal("E1p2", 1, "Col_2", "1"), kLocked);
    EXPECT_EQ(Refusal("Bp1", 1, "Col_7", "1"), kLocked);
    EXPECT_EQ(Refusal("Bp1", 1, "Description", "x"), kLocked);
}

// --- Cost centers and bases

TEST_F(CellRulesS, NamesOfTheFormsLinesAreProtectedAndSubscriptsAreNot) {
    AddLine("CostCenters", Currency(4.01));
    AddLine("CostCenters", Currency(29.0));
    for (const int line : {1, 4, 28})
        EXPECT_EQ(Refusal("CostCenters", line, "CCName", "X"), kLocked);
    EXPECT_EQ(Stored("CostCenters", 4.01, "CCName", "Umbrella"), "Umbrella");
    EXPECT_EQ(Stored("CostCenters", 29, "CCName", "Marketing"), "Marketing");
    EXPECT_EQ(Text(Cell("A", 29, "CCName")), "Marketing");
}

TEST_F(CellRulesS, ANameIsUniqueWhateverItsCaseAndBlanks) {
    AddLine("CostCenters", Currency(29.0));
    EXPECT_EQ(Refusal("CostCenters", 29, "CCName", "  UTILITIES "),
              "Table CostCenters entry error|This cost center name has already been used, please "
              "enter a unique cost center title.");
    EXPECT_EQ(Refusal("CostCenters", 29, "CCName", "  "),
              "Table CostCenters entry error|A cost center may not be blank, please enter a cost "
              "center title.");
    EXPECT_EQ(Stored("CostCenters", 29, "CCName", "Marketing"), "Marketing");
    EXPECT_EQ(Stored("CostCenters", 29, "CCName", "MARKETING"), "MARKETING");
}

TEST_F(CellRulesS, LabelsTakeTenCharacters) {
    EXPECT_EQ(Stored("CostCenters", 9, "StatLabel1", "Equivalent"), "Equivalent");
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(Stored("CostCenters", 9, "ColLabel2", "Equivalents"), "Equivalent");
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Text, "This field may not exceed 10 characters.");
    EXPECT_EQ(host.Boxes[0].Title, "Entry Error");
    EXPECT_EQ(Stored("CostCenters", 9, "ColLabel2", " "), "");
    EXPECT_TRUE(Cell("CostCenters", 9, "ColLabel2").IsNull());
}

TEST_F(CellRulesS, WhichStatisticalFieldsALineTakes) {
    EXPECT_EQ(Refusal("CostCenters", 1, "StatLabel1", "Acres"), kLocked);
    for (const char* field : {"StatLabel1", "StatLabel2", "StatCode"})
        EXPECT_EQ(Refusal("CostCenters", 4, field, "1"), kLocked) << field;
    EXPECT_EQ(Refusal("CostCenters", 8, "StatCode", "1"), kLocked);
}

TEST_F(CellRulesS, ABasisFillsCodeAndBothLabels) {
    EXPECT_EQ(Stored("CostCenters", 2, "StatCode", "1"), "1");
    EXPECT_EQ(Text(Cell("CostCenters", 2, "StatLabel1")), "Square");
    EXPECT_EQ(Text(Cell("CostCenters", 2, "StatLabel2")), "Feet");
    EXPECT_EQ(Stored("CostCenters", 2, "StatLabel1", "3 - other"), "Other");
    EXPECT_EQ(Text(Cell("CostCenters", 2, "StatLabel2")), "");
    EXPECT_EQ(Text(Cell("CostCenters", 2, "StatCode")), "3");
    EXPECT_EQ(Refusal("CostCenters", 2, "StatCode", "4"), kLocked);
    EXPECT_EQ(Stored("ES", 1, "StatCode", "2"), "2");
    EXPECT_EQ(Text(Cell("ES", 1, "StatLabel1")), "Inpatient");
    EXPECT_EQ(Text(Cell("ES", 1, "StatLabel2")), "Days");
    EXPECT_EQ(Refusal("ES", 1, "CCName", "E"), kLocked);
}

// --- What goes for all

TEST_F(CellRulesS, AStoredCellTurnsTheSubmissionOff) {
    Enter("A", 8, "Col_1", 5);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
}

TEST_F(CellRulesS, ATextLongerThanItsFieldNamesTheCell) {
    EXPECT_EQ(Refusal("S1p2", 2, "Col_2", std::string(37, 'x')),
              "Entry Error|S1p2 line 2 Col_2 takes at most 36 characters, not 37.");
}

TEST_F(CellRulesS, EveryRuleNamesWorksheetsAndFieldsThatAreThere) {
    for (const CellRule& rule : AllCellRules()) {
        std::string item(rule.Items);
        for (char& c : item)
            if (c == '?') c = '1';
        ASSERT_TRUE(gDB.HasTable(item)) << item;
        const std::string words(rule.Fields);
        for (std::size_t at = 0; at < words.size();) {
            const auto end = std::min(words.find(' ', at), words.size());
            const std::string field = words.substr(at, end - at);
            if (!field.ends_with("*")) {
                EXPECT_GE(gDB.Table(item).FieldIndex(field), 0) << item << " " << field;
            }
            at = end + 1;
        }
    }
}

TEST_F(CellRulesS, ColumnsAreFoundByFieldAndByNumber) {
    EXPECT_EQ(FieldOfColumn("A", "col_1"), "Col_1");
    EXPECT_EQ(FieldOfColumn("A", "1"), "Col_1");
    EXPECT_EQ(FieldOfColumn("A", "9"), std::nullopt);
    EXPECT_EQ(FieldOfColumn("A", "1.5"), std::nullopt);
    EXPECT_EQ(FieldOfColumn("Bp1", "1"), "CC_100");
    EXPECT_EQ(FieldOfColumn("Bp1", "7"), "Col_7");
    EXPECT_EQ(FieldOfColumn("D1p1", "28"), "CC_2800");
    EXPECT_EQ(FieldOfColumn("E1p1", "1"), "Col_1");
    EXPECT_EQ(FieldOfColumn("E1p1", "CC_100"), "CC_100");
    EXPECT_EQ(FieldOfColumn("CostCenters", "0"), "CCName");
    EXPECT_EQ(FieldOfColumn("CostCenters", "6"), "StatCode");
    EXPECT_EQ(FieldOfColumn("CostCenters", "7"), std::nullopt);
    EXPECT_EQ(FieldOfColumn("ES", "1"), "StatLabel1");
    EXPECT_EQ(FieldOfColumn("A", ""), std::nullopt);
    EXPECT_EQ(FieldOfColumn("A", "-1"), std::nullopt);
}

}  // namespace
}  // namespace zolmara
