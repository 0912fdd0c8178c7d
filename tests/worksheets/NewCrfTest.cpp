#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/Dialogs.h"
#include "core/Status.h"
#include "store/Files.h"
#include "support/TestCrf.h"
#include "worksheets/NewCrf.h"

namespace zolmara {
namespace {

using test::Box;
using test::Cell;
using test::Rows;
using test::SampleFields;
using test::SessionTest;
using test::TestCrf;

// --- The fields ----------------------------------------------------------------------------

class NewCrfChecks : public SessionTest {
protected:
    NewCrfField Check() { return CheckNewCrfFields(fields); }
    /// Checks a period and gives the texts shown.
    std::vector<std::string> Period(const std::string& start, const std::string& end) {
        host.Forget();
        fields.FYStart = start;
        fields.FYEnd = end;
        fault = Check();
        return host.Texts();
    }
    void ExpectBox(const std::string& text, const std::string& title) {
        ASSERT_EQ(host.Boxes.size(), 1u);
        EXPECT_EQ(host.Boxes[0].Text, text);
        EXPECT_EQ(host.Boxes[0].Title, title);
    }
    NewCrfFields fields = SampleFields();
    NewCrfField fault = NewCrfField::None;
};

constexpr const char* kDates = "Error: Invalid Dates";

TEST_F(NewCrfChecks, PassASample) {
    EXPECT_EQ(Check(), NewCrfField::None);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(NewCrfChecks, ShowTheNumberWithItsDash) {
    for (const char* number : {"123456", "12-3456", "1-2-3456"}) {
        fields.ProviderNum = number;
        EXPECT_EQ(Check(), NewCrfField::None);
        EXPECT_EQ(fields.ProviderNum, "12-3456");
    }
}

TEST_F(NewCrfChecks, RefuseANumberOfAnotherLength) {
    for (const char* number : {"", "12345", "1234567", "-"}) {
        host.Forget();
        fields.ProviderNum = number;
        EXPECT_EQ(Check(), NewCrfField::ProviderNum);
        EXPECT_EQ(host.Texts(), (std::vector<std::string>{
                                    "You have entered an invalid Provider Number!\rProvider "
                                    "number must be 6 numeric digits."}));
        EXPECT_EQ(host.Beeps, 1);
    }
}

TEST_F(NewCrfChecks, RefuseSignsInTheNumber) {
    for (const char* number : {"12.456", "12 456", "12\"456", "12é45"}) {
        host.Forget();
        EXPECT_FALSE(CheckProviderNumOnExit(number));
        EXPECT_EQ(host.Texts(), (std::vector<std::string>{
                                    "You have entered an invalid Provider Number!\rProvider "
                                    "number must be 6 digits and non-alpha numeric!"}));
    }
    EXPECT_TRUE(CheckProviderNumOnExit("12-3456"));
    EXPECT_TRUE(CheckProviderNumOnExit("12H456"));
    EXPECT_TRUE(CheckProviderNumOnExit(""));
}

TEST_F(NewCrfChecks, RefuseAStartThatIsNoDate) {
    Period("soon", "9/30/2023");
    EXPECT_EQ(fault, NewCrfField::FYStart);
    ExpectBox("Fiscal Year Start date is not a valid date.  Please (re-)enter one.",
              "Error: Invalid Fiscal Year Start Date");
}

TEST_F(NewCrfChecks, RefuseAnEndThatIsNoDate) {
    Period("10/1/2022", "2/29/2023");
    EXPECT_EQ(fault, NewCrfField::FYEnd);
    ExpectBox("Fiscal Year End date is not a valid date.  Please (re-)enter one.",
              "Error: Invalid Fiscal Year End Date");
}

TEST_F(NewCrfChecks, PutDatesIntoTheShortForm) {
    Period("2022-10-01", "Sep 30, 2023");
    EXPECT_EQ(fields.FYStart, "10/1/2022");
    EXPECT_EQ(fields.FYEnd, "9/30/2023");
}

TEST_F(NewCrfChecks, FillAnEmptyEnd) {
    EXPECT_TRUE(Period("10/1/2022", "").empty());
    EXPECT_EQ(fields.FYEnd, "9/30/2023");
    EXPECT_EQ(fault, NewCrfField::None);
    Period("2/29/2024", "");
    EXPECT_EQ(fields.FYEnd, "2/27/2025");
}

TEST_F(NewCrfChecks, RefuseAnEndNotBehindTheStart) {
    for (const char* end : {"10/1/2022", "9/30/2022"}) {
        Period("10/1/2022", end);
        ExpectBox("Invalid sequence of dates -- FY End preceeds FY Start.", kDates);
        EXPECT_NE(fault, NewCrfField::None);
    }
}

TEST_F(NewCrfChecks, RefuseUnderThirtyDays) {
    Period("1/1/2023", "1/30/2023");  // 29 days
    ExpectBox("Invalid sequence of dates -- Fiscal Period must be at least 30 days.", kDates);
    EXPECT_TRUE(Period("1/1/2023", "1/31/2023").empty());
    EXPECT_EQ(fault, NewCrfField::None);
}

TEST_F(NewCrfChecks, Refuse458Days) {
    Period("1/1/2023", "4/3/2024");  // 365 + 31 + 29 + 31 + 2
    ExpectBox("Invalid sequence of dates -- Fiscal Period must be less than 458 days.", kDates);
    EXPECT_EQ(Period("1/1/2023", "4/2/2024").size(), 1u);
    EXPECT_EQ(fault, NewCrfField::None);
}

TEST_F(NewCrfChecks, WarnFrom366Days) {
    EXPECT_TRUE(Period("1/1/2023", "1/1/2024").empty());  // 365 days
    host.Answers = {kYes};
    Period("1/1/2023", "1/2/2024");
    ExpectBox(
        "The F/Y Start and F/Y End dates entered span more than one fiscal year.  Click on the "
        "'Yes' button to verify that this is what you intended.  Or, click on the 'No' button to "
        "return to the form to alter one or both of the dates.",
        "Warning: Dates Span More Than One Fiscal Year");
    EXPECT_EQ(host.Boxes[0].Style, kYesNo + kExclamation);
    EXPECT_EQ(fault, NewCrfField::None);
    host.Answers = {kNo};
    Period("1/1/2023", "1/2/2024");
    EXPECT_EQ(fault, NewCrfField::FYStart);
}

TEST_F(NewCrfChecks, RefuseAPeriodBeforeTheForm) {
    Period("9/30/2022", "");
    EXPECT_EQ(fault, NewCrfField::FYStart);
    ExpectBox(
        "Cost reports starting before 10/01/2022 require Zolmara 287-05. Contact Velquist, Inc. "
        "at (555) 010-0142 for assistance.",
        "Error: Use 287 for earlier Cost Reports");
}

TEST_F(NewCrfChecks, RefuseAnEmptyName) {
    for (const char* name : {"", " ", "   "}) {
        host.Forget();
        fields.FacilityName = name;
        EXPECT_EQ(Check(), NewCrfField::FacilityName);
        ExpectBox("Facility Name must be at least 1 characters.  Please (re-)enter.",
                  "Error: Invalid Facility Name");
    }
    fields.FacilityName = "X";
    EXPECT_EQ(Check(), NewCrfField::None);
}

TEST_F(NewCrfChecks, RefuseADoubleQuoteInTheName) {
    fields.FacilityName = "The \"Home\"";
    EXPECT_EQ(Check(), NewCrfField::FacilityName);
    ExpectBox("The Facility Name cannot contain double quote characters",
              "Error: Invalid Facility Name");
}

TEST_F(NewCrfChecks, RefuseANameThatItsFieldCannotHold) {
    fields.FacilityName = std::string(36, 'x');
    EXPECT_EQ(Check(), NewCrfField::None);
    fields.FacilityName += "x";
    EXPECT_EQ(Check(), NewCrfField::FacilityName);
    ExpectBox("Facility Name cannot have more than 36 characters.  Please (re-)enter.",
              "Error: Invalid Facility Name");
}

TEST_F(NewCrfChecks, ShowTheFirstFaultAlone) {
    fields = {"287", "1", "x", "y", ""};
    EXPECT_EQ(Check(), NewCrfField::ProviderNum);
    EXPECT_EQ(host.Boxes.size(), 1u);
}

// --- The file ------------------------------------------------------------------------------

class NewCrfFile : public SessionTest {
protected:
    std::string path = folder.File("New.CRF");
};

TEST_F(NewCrfFile, CancellingMakesNothing) {
    EXPECT_FALSE(New_CRF(SampleFields()));
    ASSERT_EQ(host.Dialogs.size(), 1u);
    EXPECT_TRUE(host.Dialogs[0].Save);
    EXPECT_EQ(host.Dialogs[0].Title, "Name New Cost Report File (CRF)");
    EXPECT_EQ(host.Dialogs[0].DefaultExt, ".CRF");
    EXPECT_EQ(host.Dialogs[0].Filter, "Cost Report Files (*.CRF)|*.CRF");
    EXPECT_EQ(host.Dialogs[0].FileName, (folder.Path() / "*.CRF").string());
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(NewCrfFile, IsOpenWithItsIdentity) {
    host.Files = {path};
    EXPECT_TRUE(New_CRF(SampleFields()));
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(gCRFDir, folder.Path().string());
    EXPECT_EQ(gFormNum, "287");
    EXPECT_EQ(gFYStart, Variant(DateTime(2022, 10, 1)));
    EXPECT_EQ(gFYEnd, Variant(DateTime(2023, 9, 30)));
    EXPECT_EQ(gProviderNumber, "12-3456");
    EXPECT_EQ(gProviderName, "Sample Home Office");
    EXPECT_EQ(gDB.Scalar("SELECT ProviderName FROM Master"), Variant("Sample Home Office"));
    EXPECT_EQ(gLogType, "");
    EXPECT_EQ(host.GetSetting("Zolmara 287-22", "Startup", "CRFLoc", ""), folder.Path().string());
}

TEST_F(NewCrfFile, ShowsItsVersionWithTheRevisionTwice) {
    CreateCrf(path, SampleFields());
    const std::string revision = gVersion.substr(gVersion.rfind('.') + 1);
    EXPECT_EQ(host.Caption,
              gTitlePrefix + " Zolmara 287 (version " + gVersion + "." + revision + ") -- New.CRF");
    EXPECT_EQ(host.CrfName, path);
    EXPECT_TRUE(host.CrfShown);
    EXPECT_FALSE(host.Menus["mnuReportSubmit"]);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(NewCrfFile, KeepsTheFirstThreeLettersOfTheForm) {
    NewCrfFields fields = SampleFields();
    fields.FormNum = "287-22";
    CreateCrf(path, fields);
    EXPECT_EQ(gDB.Scalar("SELECT FormNum FROM Master"), Variant("287"));
}

TEST_F(NewCrfFile, HasNullDatesWhereTheFieldsHoldNone) {
    NewCrfFields fields = SampleFields();
    fields.FYStart = "";
    fields.FYEnd = "";
    CreateCrf(path, fields);
    EXPECT_TRUE(gFYStart.IsNull());
    EXPECT_TRUE(gDB.Scalar("SELECT FYEnd FROM Master").IsNull());
}

TEST_F(NewCrfFile, ReplacesOneThatIsThere) {
    std::ofstream(path) << "no database";
    EXPECT_TRUE(CreateCrf(path, SampleFields()));
    EXPECT_EQ(Rows("CostCenters"), 26);
}

TEST_F(NewCrfFile, SaysWhenItCannotBeCreated) {
    EXPECT_FALSE(CreateCrf(folder.File("NoSuchFolder/New.CRF"), SampleFields()));
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "System Error");
    EXPECT_FALSE(host.Boxes[0].Text.empty());
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, "");
    EXPECT_TRUE(host.Welcome);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
}

TEST_F(NewCrfFile, IsTakenBackWhenItsMakingFails) {
    NewCrfFields fields = SampleFields();
    fields.ProviderNum = "123456789";  // more than Master holds
    EXPECT_THROW(CreateCrf(path, fields), StoreError);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(gLogType, "");
    EXPECT_EQ(gCRFPath, "");
}

TEST_F(NewCrfFile, OpensAgain) {
    CreateCrf(path, SampleFields());
    mnuReportClose();
    EXPECT_TRUE(OpenCrf(path));
    EXPECT_TRUE(host.Boxes.empty());
}

// --- What a new CRF holds ------------------------------------------------------------------

class NewCrfContent : public TestCrf {};

TEST_F(NewCrfContent, HasEveryRowOfTheRegistryButError) {
    EXPECT_EQ(Rows("Worksheets"), 51);
    EXPECT_FALSE(gDB.HasTable("Error"));
    EXPECT_FALSE(gDB.HasTable("ImportASCII"));
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) FROM Worksheets WHERE Calc_Lvl < 900")), 46);
}

TEST_F(NewCrfContent, RegistersEveryWorksheetWithItsLevelAndName) {
    struct Row {
        const char* Item;
        int Level;
        const char* Name;
    };
    const Row rows[] = {{"Sp1", 0, "S  Part-1"},
                        {"S2p3", 0, "S-2  Part-3"},
                        {"A81p1", 0, "A-81  Part-1"},
                        {"A8", 5, "A-8"},
                        {"B1p1", 7, "B-1  Part-1"},
                        {"Bp3", 8, "B  Part-3"},
                        {"A7p2", 9, "A-7  Part-2"},
                        {"C1p2", 9, "C-1  Part-2"},
                        {"Cp1", 10, "C  Part-1"},
                        {"D1p3", 11, "D-1  Part-3"},
                        {"Dp2", 12, "D  Part-2"},
                        {"A", 13, "A"},
                        {"E", 14, "E"},
                        {"E1p3", 15, "E-1  Part-3"},
                        {"Fp1", 19, "F  Part-1"},
                        {"F1p2", 20, "F-1  Part-2"},
                        {"F2p3", 21, "F-2  Part-3"},
                        {"G", 22, "G"},
                        {"G1", 23, "G-1"}};
    for (const Row& row : rows) {
        const Recordset found =
            gDB.OpenRecordset("SELECT * FROM Worksheets WHERE Item = ?", {row.Item});
        ASSERT_EQ(found.RecordCount(), 1u) << row.Item;
        EXPECT_EQ(found["Calc_Lvl"], Variant(row.Level)) << row.Item;
        EXPECT_EQ(found["ItemName"], Variant(row.Name)) << row.Item;
        EXPECT_TRUE(gDB.HasTable(row.Item)) << row.Item;
    }
}

TEST_F(NewCrfContent, HoldsNothingInItsLogButTheFirstRow) {
    EXPECT_EQ(Rows("Log"), 1);
    EXPECT_EQ(gDB.Scalar("SELECT LogType FROM Log"), Variant("*"));
}

TEST_F(NewCrfContent, IsOneFileAtRest) {
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        ++files;
    EXPECT_EQ(files, 1);
}

}  // namespace
}  // namespace zolmara
