// frmCRFEditInfo: the change of the home office's identity.

#include <filesystem>

#include "core/Dialogs.h"
#include "forms/EditInfo.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

using test::Cell;

class EditInfo : public test::TestCrf {
protected:
    IdentityField Refused() {
        host.Forget();
        const IdentityResult result = SaveIdentity(fields);
        EXPECT_EQ(result.End, IdentitySave::Refused);
        EXPECT_EQ(gProviderName, "Sample Home Office");
        EXPECT_EQ(Text(Cell("S1p1", 2, "Col_1")), "Sample Home Office");
        return result.Wrong;
    }
    std::string LastBox() const {
        return host.Boxes.empty() ? "" : host.Boxes.back().Title + "|" + host.Boxes.back().Text;
    }
    static Variant Master(const char* field) {
        return gDB.Scalar(std::string("SELECT ") + field + " FROM Master;");
    }

    IdentityFields fields = {"14-9012", "1/1/2023", "12/31/2023", "Other Office"};
};

TEST_F(EditInfo, OpensWithThePresentValues) {
    const IdentityFields present = PresentIdentity();
    EXPECT_EQ(present.ProviderNum, "12-3456");
    EXPECT_EQ(present.FYStart, "10/1/2022");
    EXPECT_EQ(present.FYEnd, "9/30/2023");
    EXPECT_EQ(present.FacilityName, "Sample Home Office");
}

TEST_F(EditInfo, ASaveGoesToTheSessionToMasterAndToLine2) {
    gDB.Execute("Update Master Set ESFirstName='A', ESLastName='B', ESTitle='C', ESDate=?;",
                {DateTime(2024, 1, 1)});
    host.OpenForms = {"frmEditS1p1", "frmViewS1p1"};
    EXPECT_EQ(SaveIdentity(fields).End, IdentitySave::Saved);
    EXPECT_EQ(gProviderName, "Other Office");
    EXPECT_EQ(gProviderNumber, "14-9012");
    EXPECT_EQ(Text(gFYStart), "1/1/2023");
    EXPECT_EQ(gFormNum, "287");
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_1")), "Other Office");
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_2")), "14-9012");
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_4")), "01/01/2023");
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_5")), "12/31/2023");
    EXPECT_EQ(Text(Master("ProviderName")), "Other Office");
    EXPECT_EQ(Text(Master("FYEnd")), "12/31/2023");
    EXPECT_EQ(Master("BuildDate").AsDate(), host.Clock);
    EXPECT_GE(host.IndexOf("SetGrd: frmEditS1p1"), 0);
    EXPECT_GE(host.IndexOf("SetGrd: frmViewS1p1"), 0);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
}

TEST_F(EditInfo, AfterASaveTheSignatureFieldsAreNull) {
    gDB.Execute("Update Master Set ESFirstName='A', ESLastName='B', ESTitle='C', ESDate=?;",
                {DateTime(2024, 1, 1)});
    SaveIdentity(fields);
    for (const char* field : {"ESFirstName", "ESLastName", "ESTitle", "ESDate"})
        EXPECT_TRUE(Master(field).IsNull()) << field;
}

TEST_F(EditInfo, TheNumberHasSixCharactersAndIsShownWithItsDash) {
    fields.ProviderNum = "149012";
    EXPECT_EQ(CheckIdentity(fields), IdentityField::None);
    EXPECT_EQ(fields.ProviderNum, "14-9012");
    for (const char* number : {"14901", "14-90123", "14 012", ""}) {
        fields.ProviderNum = number;
        EXPECT_EQ(Refused(), IdentityField::ProviderNum) << number;
        EXPECT_EQ(host.Boxes.back().Text,
                  "You have entered an invalid Provider Number!\rProvider number must be 6 numeric "
                  "digits.");
    }
}

TEST_F(EditInfo, DatesThatAreNone) {
    fields.FYStart = "13/1/2023";
    EXPECT_EQ(Refused(), IdentityField::FYStart);
    EXPECT_EQ(LastBox(),
              "Error: Invalid Fiscal Year Start Date|Fiscal Year Start date is not a valid date.  "
              "Please (re-)enter one.");
    fields.FYStart = "1/1/2023";
    fields.FYEnd = "2/30/2023";
    EXPECT_EQ(Refused(), IdentityField::FYEnd);
    EXPECT_EQ(LastBox(),
              "Error: Invalid Fiscal Year End Date|Fiscal Year End date is not a valid date.  "
              "Please (re-)enter one.");
}

TEST_F(EditInfo, AnEmptyEndIsAYearFromTheStart) {
    fields.FYEnd = "";
    EXPECT_EQ(CheckIdentity(fields), IdentityField::None);
    EXPECT_EQ(fields.FYEnd, "12/31/2023");
}

TEST_F(EditInfo, TheStartIsNotBeforeTheFormAndNotFarInTheFuture) {
    fields.FYStart = "9/30/2022";
    fields.FYEnd = "9/29/2023";
    EXPECT_EQ(Refused(), IdentityField::FYStart);
    EXPECT_EQ(LastBox(), "Entry Error|The start date must be on or after 10/1/22.");
    // The clock of the tests stands on 2/1/2024.
    fields.FYStart = "3/1/2026";
    fields.FYEnd = "2/28/2027";
    EXPECT_EQ(Refused(), IdentityField::FYStart);
    EXPECT_EQ(LastBox(), "Entry Error|Invalid Start Date, please correct");
    EXPECT_EQ(host.Boxes.back().Style, kExclamation);
}

TEST_F(EditInfo, ASpanOf28DaysPassesAnd27And458DoNot) {
    fields.FYEnd = "1/29/2023";
    EXPECT_EQ(CheckIdentity(fields), IdentityField::None);
    fields.FYEnd = "1/28/2023";
    EXPECT_EQ(Refused(), IdentityField::FYEnd);
    EXPECT_EQ(LastBox(),
              "Error: Invalid Dates|Invalid sequence of dates -- The fiscal year end date must be "
              "at least 28 days after, and less than 458 days after,  the fiscal year beginning "
              "date..");
    // 365 days to 1/1/2024, 91 to 4/1.
    fields.FYEnd = "4/3/2024";
    EXPECT_EQ(CheckIdentity(fields), IdentityField::FYEnd);
    fields.FYEnd = "4/2/2024";
    host.Answers = {kYes};
    EXPECT_EQ(CheckIdentity(fields), IdentityField::None);
    fields.FYEnd = "1/1/2023";
    EXPECT_EQ(Refused(), IdentityField::FYStart);
    EXPECT_EQ(LastBox(),
              "Error: Invalid Dates|Invalid sequence of dates -- FY End preceeds FY Start.");
}

TEST_F(EditInfo, AYearOfMoreThan365DaysIsAskedAbout) {
    fields.FYEnd = "1/1/2024";
    EXPECT_EQ(CheckIdentity(fields), IdentityField::None) << "365 days";
    EXPECT_TRUE(host.Boxes.empty());
    fields.FYEnd = "1/2/2024";
    host.Answers = {kNo};
    EXPECT_EQ(CheckIdentity(fields), IdentityField::FYStart);
    EXPECT_EQ(host.Boxes.back().Title, "Warning: Dates Span More Than One Fiscal Year");
}

TEST_F(EditInfo, TheNameIsNotBlankAndMayHaveQuotes) {
    fields.FacilityName = " ";
    EXPECT_EQ(Refused(), IdentityField::FacilityName);
    EXPECT_EQ(LastBox(),
              "Error: Invalid Facility Name|Facility Name must be at least 1 characters.  Please "
              "(re-)enter.");
    fields.FacilityName = std::string(37, 'x');
    EXPECT_EQ(Refused(), IdentityField::FacilityName);
    fields.FacilityName = "The \"Best\" Office";
    EXPECT_EQ(SaveIdentity(fields).End, IdentitySave::Saved);
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_1")), "The \"Best\" Office");
}

TEST_F(EditInfo, FieldsAreCheckedAsTheyAreLeft) {
    fields.ProviderNum = "1";
    EXPECT_FALSE(CheckIdentityOnExit(fields, IdentityField::ProviderNum));
    EXPECT_EQ(host.Boxes.back().Text,
              "You have entered an invalid Provider Number!\rProvider number must be 6 digits.");
    fields.FYStart = "x";
    EXPECT_FALSE(CheckIdentityOnExit(fields, IdentityField::FYStart));
    EXPECT_EQ(host.Boxes.back().Text, "Fiscal Year Start date is not a valid date.");
    fields.FYEnd = "x";
    EXPECT_FALSE(CheckIdentityOnExit(fields, IdentityField::FYEnd));
    EXPECT_EQ(host.Boxes.back().Text, "Fiscal Year End date is not a valid date.");
    fields.FYStart = "1/1/23";
    fields.FYEnd = "";
    EXPECT_TRUE(CheckIdentityOnExit(fields, IdentityField::FYStart));
    EXPECT_EQ(fields.FYStart, "1/1/2023");
    EXPECT_EQ(fields.FYEnd, "12/31/2023");
}

TEST_F(EditInfo, SaveAsWritesIntoTheCopyAndGoesOnWithIt) {
    gDB.Execute("INSERT INTO S1p1 (LineNum,Col_1,Col_2,Col_3) VALUES (3.1,'a','b','c');");
    const std::string old = gCRFPath;
    const std::string copy = folder.File("Copy.CRF");
    host.Files = {copy};
    EXPECT_EQ(SaveIdentityAs(fields).End, IdentitySave::Saved);
    EXPECT_EQ(host.Dialogs.back().Title, "Save Cost Report File As ...");
    EXPECT_EQ(gCRFPath, copy);
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_1")), "Other Office");
    EXPECT_TRUE(Cell("S1p1", 3.1, "Col_1").IsNull());
    EXPECT_TRUE(Cell("S1p1", 3.1, "Col_2").IsNull());
    EXPECT_EQ(Text(Cell("S1p1", 3.1, "Col_3")), "c");
    EXPECT_TRUE(host.Caption.ends_with(" -- Copy.CRF")) << host.Caption;
    EXPECT_TRUE(OpenCrf(old));
    EXPECT_EQ(gProviderName, "Sample Home Office");
}

TEST_F(EditInfo, SaveAsOntoTheOpenFileIsRefusedBeforeAnythingIsClosed) {
    host.Files = {gCRFPath};
    EXPECT_EQ(SaveIdentityAs(fields).End, IdentitySave::Cancelled);
    EXPECT_EQ(LastBox(),
              "Selection Error|The file selected is the same one that is currently open, SaveAs "
              "aborted.");
    std::filesystem::create_symlink(gCRFPath, folder.File("Link.CRF"));
    host.Files = {folder.File("Link.CRF")};
    EXPECT_EQ(SaveIdentityAs(fields).End, IdentitySave::Cancelled);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_1")), "Sample Home Office");
}

TEST_F(EditInfo, SaveAsCancelledChangesNothing) {
    EXPECT_EQ(SaveIdentityAs(fields).End, IdentitySave::Cancelled);
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(gProviderName, "Sample Home Office");
}

}  // namespace
}  // namespace zolmara
