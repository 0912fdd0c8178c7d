#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "ecr/Fingerprint.h"
#include "support/Paths.h"

namespace zolmara::ui {
namespace {

class SmallWindows : public UiTest {
protected:
    SmallWindows() { Start(); }
    QTableWidget* Lines() const {
        return Control<QTableWidget>("frmHeaderLines", "grdHeaderLines");
    }
};

TEST_F(SmallWindows, AboutTellsTheVersionTheFormAndTheSeal) {
    Trigger("mnuHelpAbout");
    EXPECT_EQ(Form("frmHelpAbout")->windowTitle(), "About Zolmara 287-22");
    EXPECT_EQ(S(Control<QLabel>("frmHelpAbout", "lblVersion")->text()), "Version " + gVersion);
    EXPECT_EQ(Control<QLabel>("frmHelpAbout", "lblForm")->text(), "CMS Form 287-22");
    EXPECT_EQ(S(Control<QLabel>("frmHelpAbout", "lblSeal")->text()), SealNotice());
    Click("frmHelpAbout", "cmdHelpAboutOK");
    EXPECT_EQ(FindForm("frmHelpAbout"), nullptr);
}

TEST_F(SmallWindows, TheInstructionsAreOpenedByTheDesktop) {
    Trigger("mnuHelpContents");
    EXPECT_EQ(Documents, std::vector<std::string>{folder.File("R3P248i.pdf")});
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(SmallWindows, HeaderLinesAreKept) {
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesHeader");
    EXPECT_EQ(Form("frmHeaderLines")->windowTitle(), "Header Lines");
    ASSERT_EQ(Lines()->rowCount(), 3);
    EXPECT_EQ(Lines()->horizontalHeaderItem(0)->text(), "Line #");
    EXPECT_FALSE(Lines()->item(0, 0)->flags() & Qt::ItemIsEditable);
    Lines()->item(1, 1)->setText("Draft of \"March\"");
    Click("frmHeaderLines", "cmdUpdate");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, "Header Lines have been updated.");
    EXPECT_EQ(Boxes[0].Title, "Header Lines Updated");
    EXPECT_EQ(gDB.Scalar("SELECT LineText FROM HeaderLines WHERE LineNum = 2;"),
              Variant("Draft of \"March\""));
    EXPECT_EQ(gDB.Scalar("SELECT LineText FROM HeaderLines WHERE LineNum = 1;"), Variant());
}

TEST_F(SmallWindows, ChangedHeaderLinesAreNotLostWithoutAQuestion) {
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesHeader");
    Lines()->item(0, 1)->setText("never mind");
    Click("frmHeaderLines", "cmdCancel");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Style, kYesNo + kQuestion + kDefaultButton2);
    ASSERT_NE(FindForm("frmHeaderLines"), nullptr);
    // Nor by a new CRF, nor by the end of the program.
    Trigger("mnuReportNew");
    EXPECT_EQ(Boxes.size(), 2U);
    EXPECT_EQ(FindForm("frmCreateNewCRF"), nullptr);
    main->close();
    EXPECT_EQ(Boxes.size(), 3U);
    EXPECT_EQ(Ended, 0);
    Click("frmHeaderLines", "cmdUpdate");
    Click("frmHeaderLines", "cmdCancel");
    EXPECT_EQ(Boxes.size(), 4U);
    EXPECT_EQ(FindForm("frmHeaderLines"), nullptr);
}

TEST_F(SmallWindows, ANewCrfTakesTheHelperWindowsOfTheOldOneAway) {
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesHeader");
    Trigger("mnuReportNew");
    EXPECT_EQ(FindForm("frmHeaderLines"), nullptr);
    EXPECT_NE(FindForm("frmCreateNewCRF"), nullptr);
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(SmallWindows, CancelKeepsTheHeaderLinesAsTheyWere) {
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesHeader");
    Lines()->item(0, 1)->setText("never mind");
    Answers = {kYes};
    Click("frmHeaderLines", "cmdCancel");
    EXPECT_EQ(FindForm("frmHeaderLines"), nullptr);
    EXPECT_EQ(gDB.Scalar("SELECT LineText FROM HeaderLines WHERE LineNum = 1;"), Variant());
}

TEST_F(SmallWindows, AnOldFileGetsItsHeaderLines) {
    Open(MakeCrf("One.CRF"));
    gDB.DeleteTable("HeaderLines");
    Trigger("mnuReportUtilitiesHeader");
    EXPECT_TRUE(gDB.HasTable("HeaderLines"));
    EXPECT_EQ(Lines()->rowCount(), 3);
}

// --- Import --------------------------------------------------------------------------------

TEST_F(SmallWindows, ImportAsksFirstAndNoIsItsDefault) {
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportSubmit", true);
    Trigger("mnuReportImportASCII");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Continue?");
    EXPECT_EQ(Boxes[0].Style, kYesNo + kDefaultButton2);
    EXPECT_EQ(Dialogs.size(), 1U);
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
}

TEST_F(SmallWindows, ImportShowsItsMessages) {
    Open(MakeCrf("One.CRF"));
    Answers = {kYes};
    Files.emplace_back(std::string(test::kSamples) + "/northfield.txt");
    Trigger("mnuReportImportASCII");
    EXPECT_EQ(Dialogs.back().Title, "Import ASCII file");
    EXPECT_EQ(Form("frmViewError")->windowTitle(), "Import Messages");
    EXPECT_EQ(Done(), "Imported northfield.txt");
    EXPECT_EQ(Control<QTableWidget>("frmViewError", "grd")->rowCount(), 1);
    EXPECT_FALSE(Control<QPushButton>("frmViewError", "cmdBuildECR")->isEnabled());
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_FALSE(main->InLongStep());
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
}

TEST_F(SmallWindows, TheDeveloperImportsWithoutTheQuestion) {
    main.reset();
    StartDebug();
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportImportASCII");
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(Dialogs.back().Title, "Import ASCII file");
}

TEST_F(SmallWindows, AnImportFileThatIsNotThereIsReported) {
    Open(MakeCrf("One.CRF"));
    Answers = {kYes, kOk};
    Files.emplace_back(folder.File("nothing.txt"));
    Trigger("mnuReportImportASCII");
    ASSERT_EQ(Boxes.size(), 2U);
    EXPECT_EQ(Boxes[1].Style, kCritical);
    EXPECT_EQ(Done(), "");
    EXPECT_TRUE(CrfIsOpen());
}

}  // namespace
}  // namespace zolmara::ui
