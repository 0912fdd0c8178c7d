#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <filesystem>
#include <fstream>

#include "UiTest.h"
#include "core/Globals.h"
#include "ui/dialogs/frmCopy2Floppy.h"

namespace zolmara::ui {
namespace {

namespace fs = std::filesystem;

class Submit : public UiTest {
protected:
    Submit() {
        Start();
        Open(MakeCrf("One.CRF"));
        host->EnableMenu("mnuReportSubmit", true);
    }
    Variant Master(const std::string& field) {
        return gDB.Scalar("SELECT " + field + " FROM Master;");
    }
    void Sign(const std::string& first, const std::string& last, const std::string& title) {
        Key("frmESCert", "txtESFirst", first);
        Key("frmESCert", "txtESLast", last);
        Key("frmESCert", "txtESTitle", title);
    }
    bool CanAccept() const { return Control<QPushButton>("frmESCert", "cmdAccept")->isEnabled(); }
};

TEST_F(Submit, TheStatementNamesTheHomeOfficeAndItsPeriod) {
    Trigger("mnuReportElectronically");
    EXPECT_EQ(Form("frmESCert")->windowTitle(), "Certification and Electronic Signature");
    const std::string text = S(Control<QLabel>("frmESCert", "lblCert")->text());
    EXPECT_TRUE(text.starts_with(
        "CERTIFICATION BY CHIEF FINANCIAL OFFICER OR ADMINISTRATOR OF PROVIDER(S)\n\n"
        "MISREPRESENTATION OR FALSIFICATION"));
    EXPECT_NE(text.find("Sample Home Office (12-3456)"), std::string::npos);
    EXPECT_NE(text.find("beginning 10/1/2022 and ending 9/30/2023"), std::string::npos);
    EXPECT_EQ(Control<QLabel>("frmESCert", "lblAccept")->text(),
              "Click Accept to electronically sign report and build ECR files.");
}

TEST_F(Submit, AcceptTakesThreeTextsThatSaySomething) {
    Trigger("mnuReportElectronically");
    EXPECT_FALSE(CanAccept());
    Sign("Ingrid", "   ", "CFO");
    EXPECT_FALSE(CanAccept());
    Sign("Ingrid", "Vasquez", "CFO");
    EXPECT_TRUE(CanAccept());
    Sign("", "Vasquez", "CFO");
    EXPECT_FALSE(CanAccept());
}

TEST_F(Submit, AnEarlierSignatureIsOfferedAgain) {
    gDB.Execute(
        "UPDATE Master SET ESFirstName = 'Ingrid', ESLastName = 'Vasquez', "
        "ESTitle = 'CFO';");
    Trigger("mnuReportElectronically");
    EXPECT_EQ(TextOf("frmESCert", "txtESLast"), "Vasquez");
    EXPECT_TRUE(CanAccept());
}

TEST_F(Submit, CancelWipesAnEarlierSignature) {
    gDB.Execute("UPDATE Master SET ESFirstName = 'Ingrid', ESLastName = 'Vasquez';");
    Trigger("mnuReportElectronically");
    Click("frmESCert", "cmdCancel");
    EXPECT_EQ(FindForm("frmESCert"), nullptr);
    EXPECT_EQ(Master("ESLastName"), Variant());
    EXPECT_TRUE(Dialogs.size() == 1);
    EXPECT_EQ(Done(), "Not signed: the earlier signature was taken back");
}

TEST_F(Submit, CancelWithoutASignatureHasNothingToSay) {
    Trigger("mnuReportElectronically");
    Click("frmESCert", "cmdCancel");
    EXPECT_EQ(Done(), "");
}

TEST_F(Submit, AcceptBuildsTheFilesAndOffersToCopyThem) {
    fs::create_directory(folder.Path() / "stick");
    Drives = {{"STICK", folder.File("stick")}};
    Trigger("mnuReportElectronically");
    Sign("Ingrid", "Vasquez", "CFO");
    const std::string ecr = folder.File("HO123456.23A1");
    Files.emplace_back(ecr);
    Click("frmESCert", "cmdAccept");
    EXPECT_TRUE(BoxTexts().empty());
    EXPECT_EQ(FindForm("frmESCert"), nullptr);
    EXPECT_EQ(Master("ESLastName"), Variant("Vasquez"));
    EXPECT_TRUE(fs::exists(ecr));
    EXPECT_TRUE(fs::exists(folder.File("PI123456.23A1")));
    EXPECT_EQ(Jobs.size(), 1U);  // the certification page
    EXPECT_NE(FindForm("frmCopy2Floppy"), nullptr);
    EXPECT_FALSE(main->InLongStep());
    EXPECT_TRUE(Enabled("mnuReport"));
    EXPECT_EQ(Done(), "Built HO123456.23A1");
}

TEST_F(Submit, ACancelledNameLeavesTheSignatureStored) {
    Trigger("mnuReportElectronically");
    Sign("Ingrid", "Vasquez", "CFO");
    Click("frmESCert", "cmdAccept");
    EXPECT_EQ(Master("ESLastName"), Variant("Vasquez"));
    EXPECT_EQ(FindForm("frmCopy2Floppy"), nullptr);
}

TEST_F(Submit, SignedByHandTheSignatureIsCleared) {
    gDB.Execute("UPDATE Master SET ESLastName = 'Vasquez';");
    Files.emplace_back(folder.File("HO123456.23A1"));
    Trigger("mnuReportManually");
    EXPECT_EQ(Master("ESLastName"), Variant());
    EXPECT_TRUE(fs::exists(folder.File("HO123456.23A1")));
    EXPECT_NE(FindForm("frmCopy2Floppy"), nullptr);
}

TEST_F(Submit, AfterABuildBothFilesAndTheirSealAreNamed) {
    const std::string ecr = folder.File("HO123456.23A1");
    Files.emplace_back(ecr);
    Trigger("mnuReportManually");
    EXPECT_EQ(S(Control<QLabel>("frmCopy2Floppy", "lblBuilt")->text()),
              "Electronic cost report: " + ecr + "\nPrint image: " + folder.File("PI123456.23A1") +
                  "\nSealed by the local seal, since the government's fingerprint library is not "
                  "in the program's folder. Files with the local seal cannot be submitted.");
}

TEST_F(Submit, TheWindowSignsByHandToo) {
    Trigger("mnuReportElectronically");
    Files.emplace_back(folder.File("HO123456.23A1"));
    Click("frmESCert", "cmdManually");
    EXPECT_EQ(FindForm("frmESCert"), nullptr);
    EXPECT_TRUE(fs::exists(folder.File("HO123456.23A1")));
}

// --- frmCopy2Floppy ------------------------------------------------------------------------

class CopyWindow : public UiTest {
protected:
    CopyWindow() {
        Start();
        fs::create_directory(folder.Path() / "stick");
        std::ofstream(folder.File("HO123456.23A1")) << "ecr";
        std::ofstream(folder.File("PI123456.23A1")) << "pi";
    }
    void Show() { ShowCopyWindow(folder.File("HO123456.23A1")); }
};

TEST_F(CopyWindow, EachDriveHasAButtonAndTheFirstIsChosen) {
    Drives = {{"STICK", folder.File("stick")}, {"CARD", "/media/card"}};
    Show();
    EXPECT_EQ(Form("frmCopy2Floppy")->windowTitle(), "Copy ECR and PI to removable drive");
    EXPECT_EQ(Control<QRadioButton>("frmCopy2Floppy", "OptDrive(0)")->text(),
              "Copy To The &STICK Drive");
    EXPECT_TRUE(Control<QRadioButton>("frmCopy2Floppy", "OptDrive(0)")->isChecked());
    EXPECT_EQ(Control<QRadioButton>("frmCopy2Floppy", "OptDrive(1)")->text(),
              "Copy To The &CARD Drive");
    EXPECT_TRUE(Control<QLabel>("frmCopy2Floppy", "tbLocation")
                    ->text()
                    .contains(Q(folder.Path().string())));
}

TEST_F(CopyWindow, WithoutADriveItSaysHowTheFilesAreDelivered) {
    Show();
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "CMS Delivery Problem");
    EXPECT_FALSE(Control<QPushButton>("frmCopy2Floppy", "cmdProcess")->isEnabled());
    EXPECT_TRUE(Control<QLabel>("frmCopy2Floppy", "tbCopy")->isHidden());
    Click("frmCopy2Floppy", "cmdCancel");
    EXPECT_EQ(FindForm("frmCopy2Floppy"), nullptr);
}

TEST_F(CopyWindow, AFileThatIsNotThereIsToldAndTheWindowStays) {
    Drives = {{"STICK", folder.File("stick")}};
    Show();
    Click("frmCopy2Floppy", "cmdProcess");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Copy Error");
    EXPECT_TRUE(Boxes[0].Text.starts_with("The following error occurred while coping " +
                                          folder.File("SN123456.23A1") + " to "));
    EXPECT_NE(FindForm("frmCopy2Floppy"), nullptr);
}

TEST_F(CopyWindow, BothFilesAreCopiedAndTheWindowGoes) {
    Drives = {{"STICK", folder.File("stick")}};
    std::ofstream(folder.File("SN123456.23A1")) << "sn";
    Show();
    Click("frmCopy2Floppy", "cmdProcess");
    EXPECT_TRUE(Boxes.empty());
    EXPECT_TRUE(fs::exists(folder.File("stick/SN123456.23A1")));
    EXPECT_TRUE(fs::exists(folder.File("stick/PI123456.23A1")));
    EXPECT_EQ(FindForm("frmCopy2Floppy"), nullptr);
    EXPECT_EQ(Done(), "Copied to STICK");
}

}  // namespace
}  // namespace zolmara::ui
