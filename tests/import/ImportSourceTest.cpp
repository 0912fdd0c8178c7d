// The choice of the file that worksheets are taken over from, and the lists of cost centers.

#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "import/CompareCostCenters.h"
#include "import/ImportCrfTools.h"
#include "structure/AddDeleteCC.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class ImportSourceTest : public ImportCrfTest {
protected:
    void ExpectRefused(const std::string& path, SourceResult why, const std::string& text) {
        host.Forget();
        EXPECT_EQ(OpenImportSource(path), why);
        ASSERT_EQ(host.Boxes.size(), 1u);
        EXPECT_EQ(host.Boxes[0].Text, text);
        EXPECT_EQ(host.Boxes[0].Title, "Invalid CRF");
        EXPECT_EQ(host.Boxes[0].Style, kCritical);
        EXPECT_FALSE(gImportDB.IsOpen());
        EXPECT_EQ(ImportTitle(), "");
    }
    std::string NotValid(const std::string& name) {
        return "The CRF file that was selected (\"" + name + "\") is not a valid CRF file.";
    }
};

TEST_F(ImportSourceTest, TheDialogStartsInTheFolderOfTheLastSource) {
    host.Settings["Zolmara 287-22/Startup/CRFLoc"] = "/data/crfs";
    EXPECT_EQ(ImportCRF(), 0);
    ASSERT_EQ(host.Dialogs.size(), 1u);
    EXPECT_EQ(host.Dialogs[0].Title, "Import From An Existing CRF");
    EXPECT_EQ(host.Dialogs[0].FileName, "/data/crfs/*.CRF");
    EXPECT_EQ(host.Dialogs[0].DefaultExt, ".CRF");
    EXPECT_EQ(host.Dialogs[0].Filter, "Cost Report Files (*.CRF)|*.CRF");
    EXPECT_FALSE(host.Dialogs[0].Save);
    host.Settings["Zolmara 287-22/Startup/ImportCRFLoc"] = "/data/last";
    EXPECT_EQ(ImportCRF(), 0);
    EXPECT_EQ(host.Dialogs[1].FileName, "/data/last/*.CRF");
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(ImportSourceTest, WorksheetWindowsAreClosedFirstAndOneThatStaysEndsIt) {
    host.CloseResults = {1};
    EXPECT_EQ(ImportCRF(), 0);
    EXPECT_TRUE(host.Dialogs.empty());
    EXPECT_EQ(host.Events, std::vector<std::string>{"CloseAllForms: False"});
}

TEST_F(ImportSourceTest, AChosenFileIsOpenAndItsFolderRemembered) {
    host.Files = {source_};
    EXPECT_EQ(ImportCRF(), 1);
    EXPECT_TRUE(gImportDB.IsOpen());
    EXPECT_TRUE(gImportDB.IsReadOnly());
    EXPECT_EQ(ImportTitle(), "LastYear.CRF");
    EXPECT_EQ(host.Settings["Zolmara 287-22/Startup/ImportCRFLoc"], folderOfSource_);
    EXPECT_EQ(gCRFPath, target_);
    CloseImportSource();
    EXPECT_FALSE(gImportDB.IsOpen());
}

TEST_F(ImportSourceTest, TheOpenCrfIsRefused) {
    ExpectRefused(target_, SourceResult::SameFile,
                  "The import file (\"ThisYear.CRF\") is the same file that is currently being "
                  "used.  Please select another CRF file.");
}

TEST_F(ImportSourceTest, TheOpenCrfIsRefusedByAnotherPathToo) {
    const std::string link = folder.File("Link.CRF");
    fs::create_symlink(target_, link);
    const std::string text =
        "The import file (\"Link.CRF\") is the same file that is currently being used.  Please "
        "select another CRF file.";
    ExpectRefused(link, SourceResult::SameFile, text);
    fs::remove(link);
    fs::create_hard_link(target_, link);
    ExpectRefused(link, SourceResult::SameFile, text);
    ExpectRefused(folderOfSource_ + "/../ThisYear.CRF", SourceResult::SameFile,
                  "The import file (\"ThisYear.CRF\") is the same file that is currently being "
                  "used.  Please select another CRF file.");
}

TEST_F(ImportSourceTest, AFileThatIsNoCrfIsRefused) {
    const std::string text = folder.File("notes.txt");
    std::ofstream(text) << "no database";
    ExpectRefused(text, SourceResult::Unreadable, NotValid("notes.txt"));
    const std::string foreign = folder.File("Foreign.CRF");
    RunRawSql(foreign, "CREATE TABLE A(b);");
    ExpectRefused(foreign, SourceResult::Unreadable, NotValid("Foreign.CRF"));
}

TEST_F(ImportSourceTest, AFileWithoutMasterOrFormNumberIsRefused) {
    InSource([] { gDB.Execute("UPDATE Master SET FormNum=Null;"); });
    ExpectRefused(source_, SourceResult::Unreadable, NotValid("LastYear.CRF"));
    InSource([] { gDB.DeleteField("Master", "FormNum"); });
    ExpectRefused(source_, SourceResult::Unreadable, NotValid("LastYear.CRF"));
    InSource([] { gDB.DeleteTable("Master"); });
    ExpectRefused(source_, SourceResult::Unreadable, NotValid("LastYear.CRF"));
}

TEST_F(ImportSourceTest, WhatStandsInTheWayOfReadingIsTold) {
    host.Forget();
    EXPECT_EQ(OpenImportSource(folder.File("none.CRF")), SourceResult::Unreadable);
    EXPECT_EQ(host.Texts()[0], NotValid("none.CRF") + "\r\n" + folder.File("none.CRF") +
                                   ": No such file or directory");
    host.Forget();
    EXPECT_EQ(OpenImportSource(folderOfSource_), SourceResult::Unreadable);
    EXPECT_EQ(host.Texts()[0], NotValid("last") + "\r\n" + folderOfSource_ + ": is a folder");
}

TEST_F(ImportSourceTest, ASourceOfForm2552IsRefusedByItsNumber) {
    InSource([] { gDB.Execute("UPDATE Master SET FormNum='2552';"); });
    ExpectRefused(source_, SourceResult::OtherForm,
                  "This program is for use only in producing CMS 287 Cost Reports.  You have just "
                  "attempted to open a CRF file (LastYear.CRF) containing data for a CMS 2552 Cost "
                  "Report.  Your request is being aborted.  Please select a valid CRF.");
    // A number that only begins with the form's is one of its versions.
    InSource([] { gDB.Execute("UPDATE Master SET FormNum='287-22';"); });
    EXPECT_EQ(OpenImportSource(source_), SourceResult::Open);
}

TEST_F(ImportSourceTest, ADamagedFileIsRefusedAheadOfAnyCopying) {
    std::fstream file(source_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096 * 20);
    file << std::string(4096, '\x7f');
    file.close();
    host.Forget();
    EXPECT_EQ(OpenImportSource(source_), SourceResult::Unreadable);
    EXPECT_NE(host.Texts()[0].find("the file is damaged"), std::string::npos) << host.Texts()[0];
}

TEST_F(ImportSourceTest, AFileThatAnotherProgramHoldsIsToldAsHeld) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(source_.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    host.Forget();
    EXPECT_EQ(OpenImportSource(source_), SourceResult::Unreadable);
    EXPECT_EQ(host.Texts()[0], NotValid("LastYear.CRF") + "\r\n" + source_ +
                                   ": another program is using the file; nothing was written");
    sqlite3_close(other);
    EXPECT_EQ(OpenImportSource(source_), SourceResult::Open);
}

// Reading it would make two files beside it and leave them there.
TEST_F(ImportSourceTest, ASourceThatAnotherProgramKeepsInPartsIsRefusedAndLeftAlone) {
    RunRawSql(source_, "PRAGMA journal_mode=WAL; UPDATE G SET Col_1=1 WHERE LineNum=1;");
    const std::string bytes = BytesOf(source_);
    host.Forget();
    EXPECT_EQ(OpenImportSource(source_), SourceResult::Unreadable);
    EXPECT_EQ(host.Texts()[0], NotValid("LastYear.CRF") + "\r\n" + source_ +
                                   ": another program keeps a part of it in a second file; open it "
                                   "once as a Cost Report File and close it");
    EXPECT_EQ(BytesOf(source_), bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(folderOfSource_), fs::directory_iterator()), 1);
    // An opening that may write makes it one file.
    InSource([] { EXPECT_EQ(NumOr(Cell("G", 1, "Col_1")), 1); });
    EXPECT_EQ(OpenImportSource(source_), SourceResult::Open);
}

// --- Cost centers ------------------------------------------------------------------------------

TEST_F(ImportSourceTest, TheSameCostCentersStandSideBySide) {
    OpenSource();
    const auto pairs = CompareCostCenters();
    ASSERT_EQ(pairs.size(), 27u);
    EXPECT_EQ(pairs[0].Current, " 1    CRC-B&F");
    EXPECT_EQ(pairs[2].Current, " 4    Insurance Premiums-Other CRC");
    EXPECT_EQ(pairs[3].Current, " 4.01 Split Insurance");
    EXPECT_EQ(pairs[26].Import, "28    Interest Income");
    for (const auto& pair : pairs) EXPECT_EQ(pair.Current, pair.Import);
    EXPECT_TRUE(CostCentersMatch(pairs));
    EXPECT_EQ(CostCenterWarning(true), "Check all Cost Centers to insure that they are the same.");
}

TEST_F(ImportSourceTest, OneMoreSubscriptedCostCenterIsAMismatch) {
    InSource([] {
        AddCostCenter(Currency(9.01));
        gDB.Execute("UPDATE CostCenters SET CCName='Night Shift' WHERE LineNum=9.01;");
    });
    OpenSource();
    const auto pairs = CompareCostCenters();
    ASSERT_EQ(pairs.size(), 28u);
    EXPECT_EQ(pairs[8].Current, "");
    EXPECT_NE(pairs[8].Import.find("9.01 Night Shift"), std::string::npos) << pairs[8].Import;
    EXPECT_TRUE(pairs[8].Mismatch());
    EXPECT_FALSE(pairs[9].Mismatch());
    EXPECT_FALSE(CostCentersMatch(pairs));
    EXPECT_EQ(CostCenterWarning(false), "Cost Centers must match exactly to allow CRF importing.");
}

TEST_F(ImportSourceTest, ALastLineOfTheOpenCrfAloneIsAMismatch) {
    AddCostCenter(Currency(29.0));
    OpenSource();
    const auto pairs = CompareCostCenters();
    EXPECT_EQ(pairs.back().Current, "29    ");
    EXPECT_EQ(pairs.back().Import, "");
    EXPECT_FALSE(CostCentersMatch(pairs));
}

TEST_F(ImportSourceTest, AnotherNameOnTheSameLineIsAMismatch) {
    InSource([] { gDB.Execute("UPDATE CostCenters SET CCName='Other' WHERE LineNum=4.01;"); });
    OpenSource();
    const auto pairs = CompareCostCenters();
    EXPECT_EQ(pairs.size(), 27u);
    EXPECT_FALSE(CostCentersMatch(pairs));
}

}  // namespace
}  // namespace zolmara::test
