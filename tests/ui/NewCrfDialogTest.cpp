#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <filesystem>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"

namespace zolmara::ui {
namespace {

constexpr const char* kForm = "frmCreateNewCRF";

class NewCrf : public UiTest {
protected:
    void Begin() {
        Start();
        Trigger("mnuReportNew");
    }
    void Fill(const std::string& number, const std::string& start, const std::string& end,
              const std::string& name) {
        Key(kForm, "txtProviderNum", number);
        Key(kForm, "txtFYStart", start);
        Key(kForm, "txtFYEnd", end);
        Key(kForm, "txtFacilityName", name);
    }
    /// Create with these dates; the title of the box that it ends in, empty when the file dialog
    /// came.
    std::string TitleFor(const std::string& start, const std::string& end) {
        Boxes.clear();
        Dialogs.clear();
        Fill("123456", start, end, "Sample Home Office");
        Click(kForm, "cmdCreate");
        if (!Boxes.empty()) return Boxes.back().Title;
        EXPECT_EQ(Dialogs.size(), 1U);
        return "";
    }
    std::string Refusal() {
        Boxes.clear();
        Click(kForm, "cmdCreate");
        return Boxes.empty() ? "" : Boxes.back().Text;
    }
    QString Focused() const {
        QWidget* const focus = Form(kForm)->focusWidget();
        return focus ? focus->objectName() : QString();
    }
};

TEST_F(NewCrf, TheDialogBeginsWithTheFormAndHidesTheWelcomeFrame) {
    Begin();
    EXPECT_EQ(TextOf(kForm, "txtFormNum"), "287");
    EXPECT_EQ(TextOf(kForm, "txtProviderNum"), "");
    EXPECT_FALSE(Visible("fraWelcome"));
    EXPECT_TRUE(Form(kForm)->isModal());
    EXPECT_FALSE(Enabled("mnuReportClose"));
}

TEST_F(NewCrf, CancelBringsTheWelcomeFrameBack) {
    Begin();
    Click(kForm, "cmdCancel");
    EXPECT_EQ(FindForm(kForm), nullptr);
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(NewCrf, EachFieldHasALabelAndAName) {
    Begin();
    for (const QLineEdit* field : Form(kForm)->findChildren<QLineEdit*>())
        EXPECT_FALSE(field->accessibleName().isEmpty()) << S(field->objectName());
}

TEST_F(NewCrf, TheProviderNumberTakesSixCharactersWithOrWithoutADash) {
    Begin();
    Fill("12345", "10/1/2022", "9/30/2023", "Sample");
    EXPECT_EQ(Refusal(),
              "You have entered an invalid Provider Number!\rProvider number must be 6 numeric "
              "digits.");
    EXPECT_EQ(Focused(), "txtProviderNum");
    EXPECT_TRUE(Control<QAbstractButton>(kForm, "cmdCreate")->isEnabled());
    EXPECT_TRUE(Control<QAbstractButton>(kForm, "cmdCancel")->isEnabled());
    Key(kForm, "txtProviderNum", "1234567");
    EXPECT_NE(Refusal(), "");
    Key(kForm, "txtProviderNum", "12 456");
    EXPECT_EQ(Refusal(),
              "You have entered an invalid Provider Number!\rProvider number must be 6 digits and "
              "non-alpha numeric!");
    for (const char* number : {"123456", "12-3456"}) {
        Key(kForm, "txtProviderNum", number);
        EXPECT_EQ(Refusal(), "");
        EXPECT_EQ(TextOf(kForm, "txtProviderNum"), "12-3456");
    }
}

TEST_F(NewCrf, DatesThatAreNoneAreRefused) {
    Begin();
    EXPECT_EQ(TitleFor("13/1/2022", ""), "Error: Invalid Fiscal Year Start Date");
    EXPECT_EQ(Focused(), "txtFYStart");
    EXPECT_EQ(TitleFor("", ""), "Error: Invalid Fiscal Year Start Date");
    EXPECT_EQ(TitleFor("10/1/2022", "soon"), "Error: Invalid Fiscal Year End Date");
    EXPECT_EQ(Focused(), "txtFYEnd");
}

TEST_F(NewCrf, AnEmptyEndIsAYearFromTheStart) {
    Begin();
    EXPECT_EQ(TitleFor("10/1/2022", ""), "");
    EXPECT_EQ(TextOf(kForm, "txtFYEnd"), "9/30/2023");
}

TEST_F(NewCrf, TheSpanIsRefusedAtItsBounds) {
    Begin();
    const std::string refused = "Error: Invalid Dates";
    const std::string warning = "Warning: Dates Span More Than One Fiscal Year";
    EXPECT_EQ(TitleFor("10/1/2022", "10/1/2022"), refused);   // 0 days
    EXPECT_EQ(TitleFor("10/1/2022", "9/30/2022"), refused);   // -1
    EXPECT_EQ(TitleFor("10/1/2022", "10/30/2022"), refused);  // 29
    EXPECT_EQ(TitleFor("10/1/2022", "10/31/2022"), "");       // 30
    EXPECT_EQ(TitleFor("10/1/2022", "10/1/2023"), "");        // 365
    EXPECT_EQ(TitleFor("10/1/2022", "10/2/2023"), warning);   // 366
    EXPECT_EQ(TitleFor("10/1/2022", "1/1/2024"), warning);    // 457
    EXPECT_EQ(TitleFor("10/1/2022", "1/2/2024"), refused);    // 458
}

TEST_F(NewCrf, NoToTheLongYearGoesBackAndYesGoesOn) {
    Begin();
    Answers = {kNo};
    EXPECT_EQ(TitleFor("10/1/2022", "10/2/2023"), "Warning: Dates Span More Than One Fiscal Year");
    EXPECT_EQ(Boxes[0].Style, kYesNo + kExclamation);
    EXPECT_TRUE(Dialogs.empty());
    EXPECT_EQ(Focused(), "txtFYStart");
    Answers = {kYes};
    TitleFor("10/1/2022", "10/2/2023");
    EXPECT_EQ(Dialogs.size(), 1U);
}

TEST_F(NewCrf, AStartBeforeTheFormIsRefused) {
    Begin();
    EXPECT_EQ(TitleFor("9/30/2022", "9/29/2023"), "Error: Use 287 for earlier Cost Reports");
    EXPECT_EQ(TitleFor("10/1/2022", "9/30/2023"), "");
}

TEST_F(NewCrf, TheNameMustSaySomethingAndHaveNoDoubleQuote) {
    Begin();
    Fill("123456", "10/1/2022", "9/30/2023", " ");
    EXPECT_EQ(Refusal(), "Facility Name must be at least 1 characters.  Please (re-)enter.");
    EXPECT_EQ(Focused(), "txtFacilityName");
    Key(kForm, "txtFacilityName", "The \"Home\" Office");
    EXPECT_EQ(Refusal(), "The Facility Name cannot contain double quote characters");
    Key(kForm, "txtFacilityName", "O'Neill");
    EXPECT_EQ(Refusal(), "");
}

TEST_F(NewCrf, TheNumberIsCheckedWhenItIsLeft) {
    Begin();
    Key(kForm, "txtProviderNum", "12*456");
    QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(Control<QLineEdit>(kForm, "txtProviderNum"), &left);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text,
              "You have entered an invalid Provider Number!\rProvider number must be 6 digits and "
              "non-alpha numeric!");
}

TEST_F(NewCrf, CancelOfTheFileDialogLeavesTheDialogOpen) {
    Begin();
    EXPECT_EQ(TitleFor("10/1/2022", "9/30/2023"), "");
    EXPECT_NE(FindForm(kForm), nullptr);
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(Dialogs[0].Title, "Name New Cost Report File (CRF)");
    EXPECT_EQ(Dialogs[0].DefaultExt, ".CRF");
}

TEST_F(NewCrf, CreateLeavesTheFileOpen) {
    Begin();
    const std::string path = folder.File("New.CRF");
    Files.emplace_back(path);
    TitleFor("10/1/2022", "9/30/2023");
    EXPECT_EQ(FindForm(kForm), nullptr);
    ASSERT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(test::Rows("Worksheets"), 51);
    EXPECT_EQ(S(main->windowTitle()), "Velquist -  Zolmara 287 (version " + gVersion +
                                          gVersion.substr(gVersion.rfind('.')) + ") -- New.CRF");
    EXPECT_TRUE(Visible("lblCRFName"));
    EXPECT_FALSE(Visible("fraWelcome"));
    EXPECT_TRUE(Enabled("mnuReportClose"));
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_TRUE(Enabled("mnuEditOpenS"));
}

TEST_F(NewCrf, AFileThatCannotBeMadeIsReportedAndTheDialogStays) {
    Begin();
    Files.emplace_back(folder.File("nowhere/New.CRF"));
    EXPECT_EQ(TitleFor("10/1/2022", "9/30/2023"), "System Error");
    EXPECT_NE(FindForm(kForm), nullptr);
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_TRUE(Control<QAbstractButton>(kForm, "cmdCreate")->isEnabled());
}

TEST_F(NewCrf, TheCrfThatIsOpenIsClosedFirst) {
    Start();
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportNew");
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_NE(FindForm(kForm), nullptr);
}

TEST_F(NewCrf, AWorksheetWindowThatStaysKeepsTheDialogAway) {
    Start();
    Open(MakeCrf("One.CRF"));
    AddWindow("frmEditA", "Edit Worksheet A");
    Trigger("mnuReportNew");
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(FindForm(kForm), nullptr);
}

TEST_F(NewCrf, TheDeveloperBeginsWithASample) {
    StartDebug();
    Trigger("mnuReportNew");
    EXPECT_EQ(TextOf(kForm, "txtProviderNum"), "12-3456");
    EXPECT_NE(TextOf(kForm, "txtFacilityName"), "");
}

}  // namespace
}  // namespace zolmara::ui
