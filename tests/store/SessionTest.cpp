#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/Dialogs.h"
#include "core/Status.h"
#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/harness/Faults.h"
#include "store/session/Session.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

namespace fs = std::filesystem;
using test::Box;
using test::CoreCrf;
using test::MakeCoreCrf;
using test::SessionTest;

constexpr const char* kForeignTitle = "Error: Attempting to Open Invalid CRF file";

void WriteFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

/// A closed CRF whose Master has the given value in one field.
std::string ClosedCrf(const std::string& path, const std::string& field, const Variant& value) {
    MakeCoreCrf(path);
    gDB.Execute("UPDATE Master SET " + field + " = ?;", {value});
    DropCrf();
    return path;
}

std::string ClosedCrf(const std::string& path) {
    return ClosedCrf(path, "ProviderName", "Sample Home Office");
}

void AddTable(const std::string& name) {
    gDB.AppendTable({name, {{"LineNum", FieldType::dbCurrency}}, {}});
}

class Session : public SessionTest {
protected:
    std::string Setting(const std::string& key) {
        return host.GetSetting("Zolmara 287-22", "Startup", key, "None");
    }
    std::vector<std::string> FilesOf() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

// --- Opening -------------------------------------------------------------------------------

TEST_F(Session, OpeningReadsTheIdentity) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    EXPECT_TRUE(OpenCrf(path));
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(gCRFDir, folder.Path().string());
    EXPECT_EQ(gCRFTitle, "One.CRF");
    EXPECT_EQ(gFormNum, "287");
    EXPECT_EQ(gFYStart, Variant(DateTime(2022, 10, 1)));
    EXPECT_EQ(gFYEnd, Variant(DateTime(2023, 9, 30)));
    EXPECT_EQ(gProviderName, "Sample Home Office");
    EXPECT_EQ(gProviderNumber, "12-3456");
}

TEST_F(Session, OpeningShowsTheCrfAndTurnsSubmitOff) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    EXPECT_EQ(host.Caption, gTitlePrefix + " Zolmara 287-22 (version " + gVersion + ") -- One.CRF");
    EXPECT_EQ(host.CrfName, path);
    EXPECT_TRUE(host.CrfShown);
    EXPECT_FALSE(host.Menus["mnuReportSubmit"]);
    EXPECT_GE(host.IndexOf("StartHelpText"), 0);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    const std::vector<std::string> last(host.Events.end() - 2, host.Events.end());
    EXPECT_EQ(last, (std::vector<std::string>{"RefreshMenus", "SetPointer: Normal"}));
    EXPECT_EQ(Setting("CRFLoc"), folder.Path().string());
}

TEST_F(Session, OpeningWritesNothingToTheFile) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    const auto before = ReadWholeFile(path);
    OpenCrf(path);
    DropCrf();
    EXPECT_EQ(ReadWholeFile(path), before);
}

TEST_F(Session, OpeningAnotherFormIsRefusedAndTheFileCompacted) {
    const std::string path = ClosedCrf(folder.File("Other.CRF"), "FormNum", "339");
    EXPECT_FALSE(OpenCrf(path));
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text,
              "You are presently running Zolmara 287-22.  This program is for use only in "
              "producing CMS 287 Cost Reports.  You have just attempted to open a CRF file "
              "(Other.CRF) containing data for a CMS 339 Cost Report.  Your request is being "
              "aborted.  Select OK to proceed.");
    EXPECT_EQ(host.Boxes[0].Style, 16);
    EXPECT_EQ(host.Boxes[0].Title, kForeignTitle);
    EXPECT_EQ(host.Beeps, 1);
    EXPECT_GE(host.IndexOf("ShowCalcMsg:  Repairing " + path), 0);
    EXPECT_GE(host.IndexOf("ShowCalcMsg:  Compacting " + path), 0);
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, "");
    EXPECT_TRUE(host.Welcome);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_EQ(FilesOf(), (std::vector<std::string>{"Other.CRF"}));
}

TEST_F(Session, ARefusedFileKeepsItsContent) {
    const std::string path = ClosedCrf(folder.File("Other.CRF"), "FormNum", "339");
    OpenCrf(path);
    gDB = DBEngine::OpenDatabase(path);
    EXPECT_EQ(gDB.Scalar("SELECT FormNum FROM Master"), Variant("339"));
    EXPECT_EQ(test::Rows("CostCenters"), 26);
}

TEST_F(Session, APeriodBeforeTheFormIsRefused) {
    const std::string path = ClosedCrf(folder.File("Old.CRF"), "FYStart", DateTime(2022, 9, 30));
    EXPECT_FALSE(OpenCrf(path));
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0],
              (Box{"287-22 does not support CRFs before 10/1/2022, run 287-05 or call Velquist at "
                   "555-010-0143 for assistance.",
                   16, "Old CRF", kOk}));
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(host.Beeps, 0);
}

TEST_F(Session, AnOldPeriodPassesForTheDeveloper) {
    gDebug = true;
    EXPECT_TRUE(OpenCrf(ClosedCrf(folder.File("Old.CRF"), "FYStart", DateTime(2022, 9, 30))));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(Session, AFileWithoutAFirstDayPasses) {
    EXPECT_TRUE(OpenCrf(ClosedCrf(folder.File("Null.CRF"), "FYStart", Variant())));
    EXPECT_TRUE(gFYStart.IsNull());
    EXPECT_TRUE(host.Boxes.empty());
}

void ExpectNothingOpen(test::ScriptedHost& host) {
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, "");
    EXPECT_EQ(gProviderName, "");
    EXPECT_TRUE(gFYStart.IsNull());
    EXPECT_TRUE(host.Welcome);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_EQ(host.Caption, MainCaption());
}

TEST_F(Session, AFileThatIsNoDatabaseLeavesNoCrfOpen) {
    WriteFile(folder.File("Letter.CRF"), "Dear Sir or Madam, this is no database at all.");
    OpenCrf(ClosedCrf(folder.File("One.CRF")));
    EXPECT_THROW(OpenCrf(folder.File("Letter.CRF")), StoreError);
    ExpectNothingOpen(host);
    EXPECT_EQ(ReadWholeFile(folder.File("Letter.CRF")),
              "Dear Sir or Madam, this is no database at all.");
}

TEST_F(Session, AFileThatIsNotThereLeavesNoCrfOpen) {
    EXPECT_THROW(OpenCrf(folder.File("None.CRF")), StoreError);
    ExpectNothingOpen(host);
    EXPECT_TRUE(FilesOf().empty());
}

TEST_F(Session, AFileWithoutMasterIsNamed) {
    const std::string path = ClosedCrf(folder.File("Bare.CRF"));
    gDB = DBEngine::OpenDatabase(path);
    gDB.DeleteTable("Master");
    DropCrf();
    try {
        OpenCrf(path);
        FAIL() << "opened";
    } catch (const StoreError& error) {
        EXPECT_EQ(std::string(error.what()), path + ": is not a Cost Report File");
    }
    ExpectNothingOpen(host);
}

TEST_F(Session, AFileWithAnEmptyMasterIsNoCrf) {
    const std::string path = ClosedCrf(folder.File("Bare.CRF"));
    gDB = DBEngine::OpenDatabase(path);
    gDB.Execute("DELETE * FROM Master;");
    DropCrf();
    EXPECT_THROW(OpenCrf(path), StoreError);
    ExpectNothingOpen(host);
}

TEST_F(Session, TheOpenDialogStartsWhereTheLastCrfWas) {
    mnuReportOpen();
    ASSERT_EQ(host.Dialogs.size(), 1u);
    EXPECT_EQ(host.Dialogs[0].Title, "Open An Existing CRF");
    EXPECT_EQ(host.Dialogs[0].FileName, (folder.Path() / "*.CRF").string());
    EXPECT_EQ(host.Dialogs[0].DefaultExt, ".CRF");
    EXPECT_EQ(host.Dialogs[0].Filter,
              "All Files (*.*)|*.*|Text Files (*.txt)|*.txt|EQ Logs (eq*.txt)|eq*.bat");
    EXPECT_EQ(host.Dialogs[0].FilterIndex, 2);
    EXPECT_EQ(host.Dialogs[0].Flags, 4100);
    EXPECT_FALSE(host.Dialogs[0].Save);
    host.SaveSetting("Zolmara 287-22", "Startup", "CRFLoc", "/reports");
    mnuReportOpen();
    EXPECT_EQ(host.Dialogs[1].FileName, "/reports/*.CRF");
}

TEST_F(Session, CancellingTheOpenDialogWithoutACrfShowsTheWelcome) {
    mnuReportOpen();
    EXPECT_TRUE(host.Welcome);
    EXPECT_FALSE(host.CrfShown);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(Session, CancellingTheOpenDialogLeavesTheOpenCrfWithItsName) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    mnuReportOpen();
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(host.CrfName, path);
    EXPECT_TRUE(host.CrfShown);
    EXPECT_FALSE(host.Welcome);
}

TEST_F(Session, AnEmptyNameInTheOpenDialogDoesNothing) {
    host.Files = {""};
    mnuReportOpen();
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_GE(host.IndexOf("RefreshMenus"), 0);
}

TEST_F(Session, OpeningStopsWhenTheFormsDoNotClose) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.CloseResults = {1};
    mnuReportOpen();
    EXPECT_TRUE(host.Dialogs.empty());
    EXPECT_EQ(gCRFPath, path);
}

TEST_F(Session, ASecondCrfReplacesTheFirstWithoutClosingIt) {
    const std::string first = ClosedCrf(folder.File("One.CRF"));
    const std::string second = ClosedCrf(folder.File("Two.CRF"));
    OpenCrf(first);
    AddTable("tblWork");
    host.Forget();
    host.Files = {second};
    mnuReportOpen();
    EXPECT_EQ(gCRFPath, second);
    EXPECT_EQ(gDB.Path(), second);
    EXPECT_LT(host.IndexOf("ShowCalcMsg:  Repairing " + first), 0);
    OpenCrf(first);
    EXPECT_TRUE(gDB.HasTable("tblWork"));
}

// --- Folders -------------------------------------------------------------------------------

TEST_F(Session, AFloppyIsNotRemembered) {
    RememberFolder("CRFLoc", "/reports");
    RememberFolder("CRFLoc", "A:\\REPORTS");
    RememberFolder("CRFLoc", "b:\\");
    EXPECT_EQ(Setting("CRFLoc"), "/reports");
    RememberFolder("CRFLoc", "C:\\REPORTS");
    EXPECT_EQ(Setting("CRFLoc"), "C:\\REPORTS");
}

TEST_F(Session, AFolderIsRememberedInFull) {
    RememberFolder("CRFLoc", ".");
    EXPECT_EQ(Setting("CRFLoc"), fs::current_path().string());
    RememberFolder("CRFLoc", "Archive");
    EXPECT_EQ(Setting("CRFLoc"), (fs::current_path() / "Archive").string());
}

TEST_F(Session, AFolderIsWhatStandsAheadOfTheLastSeparator) {
    EXPECT_EQ(FolderOf("/reports/2023/One.CRF"), "/reports/2023");
    EXPECT_EQ(FolderOf("One.CRF"), ".");
    EXPECT_EQ(FolderOf("/One.CRF"), "/");
}

// --- Closing -------------------------------------------------------------------------------

TEST_F(Session, ClosingGoesInOrder) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.Forget();
    mnuReportClose();
    const std::vector<std::string> expected{"SetPointer: Hourglass",
                                            "EnableMain: False",
                                            "CloseAllForms: False",
                                            "ShowCalcMsg:  Repairing " + path,
                                            "ShowCalcMsg:  Compacting " + path,
                                            "HideCalcMsg",
                                            "SetCaption: " + MainCaption(),
                                            "ShowWelcome",
                                            "RefreshMenus",
                                            "SetPointer: Normal",
                                            "EnableMain: True"};
    EXPECT_EQ(host.Events, expected);
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(gCRFPath, "");
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_EQ(FilesOf(), (std::vector<std::string>{"One.CRF"}));
}

TEST_F(Session, AClosedCrfOpensAgainWithAllItHeld) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    gDB.Execute("UPDATE CostCenters SET ColLabel1 = ? WHERE LineNum = 28;", {"Interest"});
    mnuReportClose();
    ASSERT_TRUE(OpenCrf(path));
    EXPECT_EQ(test::Cell("CostCenters", 28, "ColLabel1"), Variant("Interest"));
    EXPECT_EQ(test::Rows("Worksheets"), 5);  // Worksheets, Log, HeaderLines, CostCenters, ES
}

TEST_F(Session, ClosingStopsWhenTheFormsDoNotClose) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.Forget();
    host.CloseResults = {2};
    mnuReportClose();
    EXPECT_EQ(gCRFPath, path);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_LT(host.IndexOf("ShowCalcMsg:  Repairing " + path), 0);
    EXPECT_TRUE(host.MainEnabled);
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
}

TEST_F(Session, ClosingDropsTemporaryTables) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    const std::vector<std::string> temporary{"tblAnything",  "tbl",          "CalcAllErrLog",
                                             "NewCRFErrLog", "NewMSAErrLog", "ImportASCII"};
    const std::vector<std::string> kept{"TBLX", "tb_Work", "Xtbl", "ImportASCII2"};
    for (const std::string& name : temporary) AddTable(name);
    for (const std::string& name : kept) AddTable(name);
    mnuReportClose();
    OpenCrf(path);
    for (const std::string& name : temporary) EXPECT_FALSE(gDB.HasTable(name)) << name;
    for (const std::string& name : kept) EXPECT_TRUE(gDB.HasTable(name)) << name;
}

TEST_F(Session, DroppingTheCrfKeepsTemporaryTables) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    AddTable("tblAnything");
    DropCrf();
    OpenCrf(path);
    EXPECT_TRUE(gDB.HasTable("tblAnything"));
}

TEST_F(Session, ClosingDeletesALeftoverOfAnEarlierClose) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    WriteFile(folder.File("VLQTemp.CRF"), "left over");
    OpenCrf(path);
    mnuReportClose();
    EXPECT_EQ(FilesOf(), (std::vector<std::string>{"One.CRF"}));
    EXPECT_TRUE(OpenCrf(path));
}

TEST_F(Session, ACrfOfTheTemporaryNameIsNotDeletedByItsClose) {
    const std::string path = ClosedCrf(folder.File("VLQTemp.CRF"));
    OpenCrf(path);
    mnuReportClose();
    ASSERT_TRUE(fs::exists(path));
    EXPECT_TRUE(OpenCrf(path));
}

TEST_F(Session, ClosingMakesTheFileSmaller) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    RunBatch(gDB, [] {
        AddTable("Padding");
        for (int line = 0; line < 5000; ++line)
            gDB.Execute("INSERT INTO Padding (LineNum) VALUES (?);", {line});
        gDB.DeleteTable("Padding");
    });
    gDB.Close();
    const auto before = fs::file_size(path);
    gDB = DBEngine::OpenDatabase(path);
    mnuReportClose();
    EXPECT_LE(fs::file_size(path), before);
}

TEST_F(Session, ACrfThatVanishedWhileOpenEndsTheClose) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.OnDoEvents = [&] {
        if (host.CalcMsg == " Repairing " + path) fs::remove(path);
    };
    // The name is gone before it can be given to the compaction, so that nothing is compacted.
    EXPECT_NO_THROW(mnuReportClose());
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Session, ClosingWithoutACrfResetsTheWindow) {
    mnuReportClose();
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_TRUE(host.Welcome);
    EXPECT_TRUE(host.MainEnabled);
    EXPECT_EQ(host.CalcMsg, "");
}

TEST_F(Session, ClosingADamagedCrfTellsWhatWasLost) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    RunBatch(gDB, [] {
        AddTable("Big");
        for (int line = 0; line < 20000; ++line)
            gDB.Execute("INSERT INTO Big (LineNum) VALUES (?);", {line});
    });
    gDB.Close();
    {
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(fs::file_size(path) / 2));
        file << std::string(8192, '\xFF');
    }
    gDB = DBEngine::OpenDatabase(path);
    host.Forget();
    mnuReportClose();
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Style, 48);
    EXPECT_EQ(host.Boxes[0].Title, "Repair Report");
    EXPECT_EQ(host.Boxes[0].Text.rfind(path, 0), 0u);
    EXPECT_NE(host.Boxes[0].Text.find('\r'), std::string::npos);
    EXPECT_TRUE(OpenCrf(path));
    EXPECT_EQ(test::Rows("CostCenters"), 26);
}

TEST_F(Session, ACloseThatIsKilledLeavesTheCrf) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    const std::string below = folder.Path().string();
    int killed = 0;
    for (int call = 1;; call += 7) {
        const auto end = test::RunInChild(
            [&] {
                OpenCrf(path);
                FaultsArm(below.c_str(), call, -1, "");
            },
            mnuReportClose);
        ASSERT_TRUE(fs::exists(path)) << "killed at " << call;
        ASSERT_TRUE(OpenCrf(path)) << "killed at " << call;
        ASSERT_EQ(test::Rows("CostCenters"), 26);
        DropCrf();
        if (!end.Killed) break;
        ++killed;
    }
    EXPECT_GT(killed, 2);
    OpenCrf(path);
    mnuReportClose();
    EXPECT_FALSE(fs::exists(folder.File("VLQTemp.CRF")));
}

// --- Save As -------------------------------------------------------------------------------

TEST_F(Session, SaveAsGoesOnWithTheCopy) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    fs::create_directory(folder.Path() / "Archive");
    const std::string copy = folder.File("Archive/Two.CRF");
    OpenCrf(path);
    gDB.Execute("UPDATE Master SET ESTitle = ?;", {"CFO"});
    host.Forget();
    host.Files = {copy};
    mnuReportSaveAs();
    ASSERT_EQ(host.Dialogs.size(), 1u);
    EXPECT_TRUE(host.Dialogs[0].Save);
    EXPECT_EQ(host.Dialogs[0].Title, "Save Cost Report File As ...");
    EXPECT_EQ(host.Dialogs[0].DefaultExt, ".CRF");
    EXPECT_EQ(host.Dialogs[0].Filter, "Cost Report Files (*.CRF)|*.CRF");
    EXPECT_EQ(host.Dialogs[0].FilterIndex, 1);
    EXPECT_EQ(host.Dialogs[0].Flags, 2050);
    EXPECT_EQ(gCRFPath, copy);
    EXPECT_EQ(gDB.Path(), copy);
    EXPECT_EQ(gCRFTitle, "Two.CRF");
    EXPECT_EQ(gCRFDir, folder.Path().string());
    EXPECT_EQ(host.CrfName, copy);
    EXPECT_EQ(host.Caption, MainCaption());
    EXPECT_FALSE(host.Menus["mnuReportSubmit"]);
    EXPECT_EQ(gDB.Scalar("SELECT ESTitle FROM Master"), Variant("CFO"));
    EXPECT_FALSE(host.Welcome);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(Session, ACloseAfterSaveAsToAnotherFolderWorksInTheOldOne) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    fs::create_directory(folder.Path() / "Archive");
    const std::string copy = folder.File("Archive/Two.CRF");
    OpenCrf(path);
    SaveCrfAs(copy);
    WriteFile(folder.File("VLQTemp.CRF"), "left over");
    mnuReportClose();
    EXPECT_EQ(FilesOf(), (std::vector<std::string>{"Archive", "One.CRF"}));
    EXPECT_TRUE(OpenCrf(copy));
    EXPECT_TRUE(OpenCrf(path));
}

TEST_F(Session, SaveAsOverAnotherFileReplacesIt) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    WriteFile(folder.File("Two.CRF"), "old content");
    OpenCrf(path);
    EXPECT_TRUE(SaveCrfAs(folder.File("Two.CRF")));
    EXPECT_EQ(test::Rows("CostCenters"), 26);
    EXPECT_EQ(FilesOf(), (std::vector<std::string>{"One.CRF", "Two.CRF"}));
}

TEST_F(Session, CancellingSaveAsChangesNothing) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.Welcome = false;
    mnuReportSaveAs();
    EXPECT_EQ(gCRFPath, path);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_FALSE(host.Welcome);
    EXPECT_EQ(host.Events.back(), "RefreshMenus");
}

TEST_F(Session, AFailedSaveAsIsShownAndTheOldCrfStays) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.Forget();
    host.Files = {folder.File("NoSuchFolder/Two.CRF")};
    mnuReportSaveAs();
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text,
              "PROBLEM Encountered: Your Save As request failed and was not able to be "
              "accomplished.  Your original CRF file has not been altered.  Hit OK to continue "
              "running Zolmara.");
    EXPECT_EQ(host.Boxes[0].Style, 16);
    EXPECT_EQ(host.Boxes[0].Title, "Error: Save As Request Failed");
    EXPECT_EQ(host.Beeps, 1);
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(gDB.Path(), path);
    EXPECT_EQ(test::Rows("CostCenters"), 26);
}

TEST_F(Session, SaveAsToTheSameNameFailsAndTheCrfStaysOpen) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    OpenCrf(path);
    host.Files = {path};
    EXPECT_THROW(mnuReportSaveAs(), StoreError);
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(test::Rows("CostCenters"), 26);
    EXPECT_FALSE(host.Welcome);
}

TEST_F(Session, SaveAsToALinkOfTheSameFileFails) {
    const std::string path = ClosedCrf(folder.File("One.CRF"));
    fs::create_hard_link(path, folder.File("Link.CRF"));
    OpenCrf(path);
    EXPECT_THROW(SaveCrfAs(folder.File("Link.CRF")), StoreError);
    EXPECT_EQ(gDB.Path(), path);
}

// --- Start ---------------------------------------------------------------------------------

TEST_F(Session, TheCaptionHasTheVersion) {
    StartUp();
    EXPECT_EQ(MainCaption(), "Velquist -  Zolmara 287-22 (version " + gVersion + ")");
    gCRFPath = "/reports/One.CRF";
    gCRFTitle = "One.CRF";
    EXPECT_EQ(MainCaption(), "Velquist -  Zolmara 287-22 (version " + gVersion + ") -- One.CRF");
}

TEST_F(Session, TheDebugFlagComesFromTheSettings) {
    StartUp();
    EXPECT_FALSE(gDebug);
    host.SaveSetting("Zolmara 287-22", "Startup", "Debug", "True");
    StartUp();
    EXPECT_TRUE(gDebug);
    host.SaveSetting("Zolmara 287-22", "Startup", "Debug", "1");
    StartUp();
    EXPECT_FALSE(gDebug);
}

class TitlePrefix : public Session {
protected:
    ~TitlePrefix() override {
        fs::remove(folder.File("PrtTitle.txt"));
        StartUp();
    }
    std::string With(const std::string& content) {
        WriteFile(folder.File("PrtTitle.txt"), content);
        StartUp();
        return gTitlePrefix;
    }
};

TEST_F(TitlePrefix, IsTheFirstLineOfItsFile) {
    EXPECT_EQ(With("Smith & Co. -\r\nsecond line\r\n"), "Smith & Co. -");
    EXPECT_EQ(With("One"), "One");
    EXPECT_EQ(With("Caf\xE9 -\n"), "Café -");
}

TEST_F(TitlePrefix, StaysWithAnEmptyFile) { EXPECT_EQ(With(""), "Velquist - "); }

TEST_F(TitlePrefix, IsEmptyWithAnEmptyFirstLine) {
    EXPECT_EQ(With("\r\nsecond"), "");
    EXPECT_EQ(MainCaption(), " Zolmara 287-22 (version " + gVersion + ")");
}

TEST_F(Session, ReleaseDatesAreSortedNewestFirst) {
    for (const char* name :
         {"r100122.txt", "R093023.TXT", "r022924.txt", "r133022.txt", "r022923.txt", "r10012.txt",
          "x100122.txt", "r10012a.txt", "r100122.doc"})
        WriteFile(folder.File(name), "");
    StartUp();
    EXPECT_EQ(ReleaseDates(), (std::vector<DateTime>{DateTime(2024, 2, 29), DateTime(2023, 9, 30),
                                                     DateTime(2022, 10, 1)}));
}

// --- Log and tables ------------------------------------------------------------------------

class SessionTables : public CoreCrf {};

TEST_F(SessionTables, AMessageIsABoxOutsideABatch) {
    host.Answers = {kNo};
    EXPECT_EQ(MsgOrLog("Go on?", kYesNo, "Title"), kNo);
    EXPECT_EQ(host.Boxes[0], (Box{"Go on?", kYesNo, "Title", kNo}));
    EXPECT_EQ(MsgOrLog("Done"), kOk);
    EXPECT_EQ(host.Boxes[1].Style, 0);
    EXPECT_EQ(test::Rows("Log"), 1);
}

TEST_F(SessionTables, AMessageIsARowWithinABatch) {
    ClearLog("calculation");
    EXPECT_EQ(gLogType, "C");
    EXPECT_EQ(MsgOrLog("say \"now\"", kCritical, "Title"), 0);
    MsgOrLog("second", kExclamation);
    MsgOrLog("third", kInformation);
    MsgOrLog("fourth", kYesNo + kCritical);
    MsgOrLog("fifth");
    EXPECT_TRUE(host.Boxes.empty());
    Recordset log = gDB.OpenRecordset("SELECT * FROM Log WHERE LogType = 'C'");
    const std::vector<std::pair<std::string, std::string>> expected{{"ERROR", "say \"now\""},
                                                                    {"Warning", "second"},
                                                                    {"F.Y.I.", "third"},
                                                                    {"F.Y.I.", "fourth"},
                                                                    {"", "fifth"}};
    ASSERT_EQ(log.RecordCount(), expected.size());
    for (const auto& [severity, message] : expected) {
        EXPECT_EQ(StrOr(log["Severity"]), severity);
        EXPECT_EQ(log["Message"], Variant(message));
        EXPECT_EQ(log["DateTime"], Variant(host.Clock));
        EXPECT_TRUE(log["Module"].IsNull());
        log.MoveNext();
    }
}

TEST_F(SessionTables, ABatchClearsItsOwnRowsAlone) {
    ClearLog("I");
    MsgOrLog("imported");
    ClearLog("C");
    MsgOrLog("calculated");
    ClearLog("C");
    EXPECT_EQ(test::Rows("Log"), 2);  // the table's own, and the import's
    EXPECT_EQ(gDB.Scalar("SELECT Message FROM Log WHERE LogType = 'I'"), Variant("imported"));
}

TEST_F(SessionTables, ClearingWithoutATypeKeepsTheType) {
    gLogType = "P";
    MsgOrLog("printed");
    ClearLog("");
    EXPECT_EQ(gLogType, "P");
    EXPECT_EQ(test::Rows("Log"), 1);
}

TEST_F(SessionTables, ClearingOutsideABatchRemovesNothing) {
    ClearLog("");
    EXPECT_EQ(gLogType, "");
    EXPECT_EQ(test::Rows("Log"), 1);
}

TEST_F(SessionTables, ATableIsFoundInAnyCase) {
    EXPECT_TRUE(TableExists("MASTER", false));
    EXPECT_TRUE(TableExists("costcenters", true));
    EXPECT_FALSE(TableExists("A82", false));
    EXPECT_FALSE(TableExists("A82", true));
}

TEST_F(SessionTables, AnOrphanVanishesWhenItIsTested) {
    AddTable("A82");
    EXPECT_TRUE(TableExists("A82", false));
    EXPECT_FALSE(TableExists("a82", true));
    EXPECT_FALSE(gDB.HasTable("A82"));
}

TEST_F(SessionTables, ComponentFlagsAreThePlacesInNop) {
    gDB.AppendTable({"S1p1",
                     {{"LineNum", FieldType::dbCurrency},
                      {"Col_4", FieldType::dbText, 10},
                      {"Col_5", FieldType::dbText, 10},
                      {"Col_6", FieldType::dbText, 10}},
                     {}});
    const auto add = [](double line, const Variant& a, const Variant& b, const Variant& c) {
        gDB.Execute("INSERT INTO S1p1 (LineNum,Col_4,Col_5,Col_6) VALUES (?,?,?,?);",
                    {Variant(Currency(line)), a, b, c});
    };
    add(3.99, "N", "N", "N");
    add(4, "N", "O", "P");
    add(4.01, {}, "Px", "");
    add(10.99, "P", "X", {});
    add(11, "N", "N", "N");
    RebuildComponentFlags();
    EXPECT_EQ(ComponentFlags(Currency(4)), 1 + (2 << 2) + (3 << 4));
    EXPECT_EQ(ComponentFlags(Currency(4.01)), 3 << 2);
    EXPECT_EQ(ComponentFlags(Currency(10.99)), 3);
    EXPECT_EQ(ComponentFlags(Currency(11)), 0);
    EXPECT_EQ(ComponentFlags(Currency(3.99)), 0);
    EXPECT_EQ(ComponentFlags(Currency(13)), 0);
    gDB.DeleteTable("S1p1");
    RebuildComponentFlags();
    EXPECT_EQ(ComponentFlags(Currency(4)), 0);
}

}  // namespace
}  // namespace zolmara
