#include <sys/stat.h>
#include <unistd.h>

#include <QAction>
#include <QLabel>
#include <QTimer>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "support/EnvironmentValue.h"

namespace zolmara::ui {
namespace {

class OpenClose : public UiTest {
protected:
    OpenClose() { Start(); }
    std::string Caption() const { return S(main->windowTitle()); }
    std::string Path() const { return S(Control<QLabel>("frmMain", "lblCRFName")->text()); }
    std::string NoCrfCaption() const {
        return "Velquist -  Zolmara 287-22 (version " + gVersion + ")";
    }
};

TEST_F(OpenClose, OpenShowsTheCrf) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(Caption(), "Velquist -  Zolmara 287-22 (version " + gVersion + ") -- One.CRF");
    EXPECT_EQ(Path(), path);
    EXPECT_TRUE(Visible("lblCRFName"));
    EXPECT_TRUE(Visible("imgVelquist"));
    EXPECT_FALSE(Visible("fraWelcome"));
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_TRUE(main->findChild<QTimer*>("tmrMain")->isActive());
}

TEST_F(OpenClose, TheOpenDialogIsTheTold) {
    Trigger("mnuReportOpen");
    ASSERT_EQ(Dialogs.size(), 1U);
    EXPECT_EQ(Dialogs[0].Title, "Open An Existing CRF");
    EXPECT_EQ(Dialogs[0].FilterIndex, 2);
    EXPECT_EQ(Dialogs[0].Flags, 4100);
    EXPECT_EQ(Dialogs[0].FileName, folder.File("*.CRF"));
}

TEST_F(OpenClose, CancelOfOpenBringsTheWelcomeFrameBack) {
    Trigger("mnuReportOpen");
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(OpenClose, CancelOfOpenLeavesTheCrfThatIsOpen) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    Trigger("mnuReportOpen");
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(Path(), path);
    EXPECT_TRUE(Visible("lblCRFName"));
    EXPECT_FALSE(Visible("fraWelcome"));
}

TEST_F(OpenClose, AWindowThatStaysKeepsTheDialogAway) {
    Open(MakeCrf("One.CRF"));
    AddWindow("frmViewA", "View Worksheet A");
    Trigger("mnuReportOpen");
    EXPECT_EQ(Dialogs.size(), 1U);
    EXPECT_NE(FindForm("frmViewA"), nullptr);
}

TEST_F(OpenClose, AFileOfAnotherFormIsRefusedByItsNumber) {
    Open(MakeCrf("Other.CRF", "FormNum", "339"));
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Error: Attempting to Open Invalid CRF file");
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_NE(Boxes[0].Text.find("(Other.CRF) containing data for a CMS 339 Cost Report."),
              std::string::npos);
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(Caption(), NoCrfCaption());
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_TRUE(Enabled("mnuReportOpen"));
}

TEST_F(OpenClose, AFileThatIsNoDatabaseIsReported) {
    std::ofstream(folder.File("Letter.CRF")) << "Dear Madam,\n";
    Open(folder.File("Letter.CRF"));
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_NE(Boxes[0].Text.find("Letter.CRF"), std::string::npos);
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_TRUE(Enabled("mnuReportOpen"));
    EXPECT_FALSE(Enabled("mnuReportClose"));
}

TEST_F(OpenClose, CloseGoesBackToTheWelcomeFrame) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    gDB.AppendTable({"tblWork", {{"LineNum", FieldType::dbCurrency}}, {}});
    Trigger("mnuReportClose");
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(Caption(), NoCrfCaption());
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_FALSE(Visible("lblCRFName"));
    EXPECT_EQ(Path(), "");
    EXPECT_FALSE(Visible("txtCalcMsg"));
    EXPECT_FALSE(main->InLongStep());
    EXPECT_TRUE(Enabled("mnuReportNew"));
    Open(path);
    EXPECT_FALSE(gDB.HasTable("tblWork"));
}

TEST_F(OpenClose, CloseIsCalledOffByAWindowThatStays) {
    Open(MakeCrf("One.CRF"));
    AddWindow("frmEditA", "Edit Worksheet A");
    Trigger("mnuReportClose");
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_FALSE(main->InLongStep());
}

TEST_F(OpenClose, SaveAsIntoAnotherFolderGoesOnWithTheCopy) {
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportSubmit", true);
    std::filesystem::create_directory(folder.Path() / "archive");
    const std::string copy = folder.File("archive/Two.CRF");
    Files.emplace_back(copy);
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(Dialogs.back().Title, "Save Cost Report File As ...");
    EXPECT_EQ(Dialogs.back().Filter, "Cost Report Files (*.CRF)|*.CRF");
    EXPECT_EQ(Dialogs.back().Flags, 2050);
    EXPECT_EQ(gCRFPath, copy);
    EXPECT_EQ(gCRFDir, folder.Path().string());
    EXPECT_EQ(Path(), copy);
    EXPECT_TRUE(Caption().ends_with(" -- Two.CRF"));
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_TRUE(std::filesystem::exists(copy));
}

TEST_F(OpenClose, SaveAsOntoItselfIsReportedAndTheCrfStaysOpen) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    Files.emplace_back(path);
    Trigger("mnuReportSaveAs");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_NE(Boxes[0].Text.find("cannot be copied onto itself"), std::string::npos);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, path);
    EXPECT_TRUE(Enabled("mnuReportClose"));
}

TEST_F(OpenClose, SaveAsIntoAFolderThatIsNotThereLeavesTheOriginal) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    Files.emplace_back(folder.File("nowhere/Two.CRF"));
    Trigger("mnuReportSaveAs");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Error: Save As Request Failed");
    EXPECT_EQ(gCRFPath, path);
    EXPECT_TRUE(CrfIsOpen());
}

TEST_F(OpenClose, CancelOfSaveAsChangesNothing) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    host->EnableMenu("mnuReportSubmit", true);
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(gCRFPath, path);
    EXPECT_TRUE(Enabled("mnuReportSubmit"));
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(OpenClose, ExitEndsAtOnceAndLeavesTheFileAsItIs) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    gDB.AppendTable({"tblWork", {{"LineNum", FieldType::dbCurrency}}, {}});
    Trigger("mnuReportExit");
    EXPECT_EQ(Ended, 1);
    EXPECT_TRUE(Boxes.empty());
    EXPECT_FALSE(CrfIsOpen());
    gDB = DBEngine::OpenDatabase(path);
    EXPECT_TRUE(gDB.HasTable("tblWork"));
}

TEST_F(OpenClose, AStepThatIsWritingIsNotTornDown) {
    Open(MakeCrf("One.CRF"));
    host->ShowCalcMsg(" Repairing");
    main->close();
    EXPECT_EQ(Ended, 0);
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(Dialogs.size(), 1U);
    host->HideCalcMsg();
    main->close();
    EXPECT_EQ(Ended, 1);
}

/// Works as a user who is not above permissions.
class AsOrdinaryUser {
public:
    AsOrdinaryUser() : root_(geteuid() == 0) {
        if (root_) done_ = seteuid(65534) == 0;
    }
    ~AsOrdinaryUser() {
        if (root_ && done_ && seteuid(0) != 0) std::abort();
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

private:
    bool root_;
    bool done_ = false;
};

TEST_F(OpenClose, ACrfOnAReadOnlyDiskOpensAndRefusesChanges) {
    const std::string path = MakeCrf("One.CRF");
    // The user's own folder takes the backup.
    const test::TempFolder data;
    ASSERT_EQ(chmod(data.Path().c_str(), 0777), 0);
    const test::EnvironmentValue place("XDG_DATA_HOME", data.Path());
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
    {
        const AsOrdinaryUser user;
        Open(path);
        EXPECT_TRUE(CrfIsOpen());
        EXPECT_TRUE(gDB.IsReadOnly());
        EXPECT_EQ(BoxTexts(), std::vector<std::string>{});
        Trigger("mnuReportCalculate");
        ASSERT_EQ(Boxes.size(), 1U);
        EXPECT_EQ(Boxes[0].Style, kCritical);
        EXPECT_FALSE(Enabled("mnuReportSubmit"));
        EXPECT_TRUE(Enabled("mnuReportCalculate"));
        EXPECT_TRUE(Enabled("mnuReport"));
        EXPECT_FALSE(main->InLongStep());
        Trigger("mnuReportClose");
        EXPECT_FALSE(CrfIsOpen());
    }
    EXPECT_TRUE(std::filesystem::exists(path));
    chmod(folder.Path().c_str(), 0755);
}

}  // namespace
}  // namespace zolmara::ui
