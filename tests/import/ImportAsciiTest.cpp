// The command, the dialog, the passes and the close-down.

#include <gtest/gtest.h>

#include <filesystem>

#include "core/Dialogs.h"
#include "core/Status.h"
#include "import/ImportTools.h"

namespace zolmara::test {
namespace {

const std::string kQuestion =
    "Before Importing - Make sure the columns are wide enough so that data values are separated by "
    "at least one blank space. Format the amount column as numeric, in whole dollars and without "
    "commas. If this is not done, a settlement difference can occur resulting in a CMS rejection. "
    "Continue?";
constexpr auto kSetting = "Zolmara 287-22/Startup/ASCIIFiles";

class CommandTest : public ImportTest {};

TEST_F(CommandTest, TheQuestionComesFirstAndItsDefaultIsNo) {
    const auto before = DumpCrf();
    mnuReportImportASCII();
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text, kQuestion);
    EXPECT_EQ(host.Boxes[0].Title, "Continue?");
    EXPECT_EQ(host.Boxes[0].Style, kYesNo | kDefaultButton2);
    EXPECT_EQ(host.Boxes[0].Answer, kNo);
    EXPECT_TRUE(host.Dialogs.empty());
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(CommandTest, WithTheDeveloperFlagTheImportStartsAtOnce) {
    gDebug = true;
    host.Menus.clear();
    mnuReportImportASCII();
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(host.Menus.count("mnuReportSubmit"), 0u);
    EXPECT_EQ(host.Dialogs.size(), 1u);
}

TEST_F(CommandTest, YesOpensTheDialogAndCancelEndsTheImport) {
    const auto before = DumpCrf();
    host.Answers = {kYes};
    mnuReportImportASCII();
    ASSERT_EQ(host.Dialogs.size(), 1u);
    const auto& dialog = host.Dialogs[0];
    EXPECT_FALSE(dialog.Save);
    EXPECT_EQ(dialog.Title, "Import ASCII file");
    EXPECT_EQ(dialog.DefaultExt, ".Txt");
    EXPECT_TRUE(dialog.Filter.starts_with("Cost Report Files (*.Txt)|*.Txt|")) << dialog.Filter;
    EXPECT_EQ(dialog.Flags, 4100);
    EXPECT_EQ(dialog.FileName, host.Folder + "/*.Txt");
    EXPECT_EQ(DumpCrf(), before);
    EXPECT_FALSE(gDB.HasTable("ImportASCII"));
    EXPECT_EQ(host.Settings.count(kSetting), 0u);
}

TEST_F(CommandTest, TheDialogBeginsInTheRememberedFolder) {
    host.Settings[kSetting] = "/data/files/";
    ImportASCII();
    host.Settings[kSetting] = "C:\\files\\";
    ImportASCII();
    EXPECT_EQ(host.Dialogs.at(0).FileName, "/data/files/*.Txt");
    EXPECT_EQ(host.Dialogs.at(1).FileName, "C:\\files/*.Txt");
}

TEST_F(CommandTest, TheChosenFilesFolderIsRememberedAndTheFileImported) {
    host.Files = {Write("A\t5\t1\t7\n")};
    ImportASCII();
    EXPECT_EQ(host.Settings[kSetting], folder.Path().string());
    EXPECT_EQ(NumOr(Cell("A", 5, "Col_1")), 7);
}

TEST_F(CommandTest, TheMainWindowIsBlockedWhileTheImportRuns) {
    const auto path = Write("A\t5\t1\t7\nX\t1\t1\ta\n");
    bool blocked = true;
    std::string log;
    host.OnDoEvents = [&] {
        blocked = blocked && !host.MainEnabled && host.PointerNow == Pointer::Hourglass;
        log = gLogType;
    };
    ImportAsciiFile(path);
    EXPECT_TRUE(blocked);
    EXPECT_EQ(log, "I");
    EXPECT_EQ(gLogType, "");
    EXPECT_TRUE(host.MainEnabled);
    EXPECT_EQ(host.CalcMsg, "");
    EXPECT_NE(host.IndexOf("ShowCalcMsg: " + path + " Import ASCII: "), -1);
    EXPECT_NE(host.IndexOf("ShowCalcMsg:  Import ASCII: Loading Table A"), -1);
    EXPECT_EQ(host.Progress, 1);
}

TEST_F(CommandTest, AtTheEndTheFormsAreRefreshedAndTheMessagesShown) {
    Import({"A|5|1|7"});
    ASSERT_GE(host.Events.size(), 2u);
    EXPECT_EQ(host.Events.back(), "ShowErrors: Import Messages");
    EXPECT_EQ(host.Events[host.Events.size() - 2], "RefreshOpenForms");
    EXPECT_LT(host.IndexOf("HideCalcMsg"), static_cast<int>(host.Events.size()) - 2);
}

TEST_F(CommandTest, StagingThatCannotBeMadeEndsTheImportWithABox) {
    // An index holds the name that the table would need.
    gDB.Execute("CREATE INDEX ImportASCII ON ES (LineNum);");
    EXPECT_FALSE(ImportBytes("A\t5\t1\t7\n"));
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text, "Unable to build import table.");
    EXPECT_EQ(host.Boxes[0].Title, "Error Creating Table ImportASCII");
    EXPECT_EQ(host.Boxes[0].Style, kCritical);
}

TEST_F(CommandTest, AReadOnlyFileIsRefusedByName) {
    const auto path = Write("A\t5\t1\t7\n");
    gDB.Close();
    std::filesystem::permissions(gCRFPath, std::filesystem::perms::owner_read);
    gDB = DBEngine::OpenDatabase(gCRFPath);
    ASSERT_TRUE(gDB.IsReadOnly());
    EXPECT_THROW(ImportAsciiFile(path), StoreError);
    EXPECT_EQ(gLogType, "");
    EXPECT_TRUE(host.MainEnabled);
}

TEST_F(CommandTest, TheStagingTableHasItsFields) {
    Import({});
    const auto& table = gDB.Table("ImportASCII");
    ASSERT_EQ(table.Fields.size(), 4u);
    EXPECT_EQ(table.Fields[0].Name, "WorkSheet");
    EXPECT_EQ(table.Fields[0].Size, 20);
    EXPECT_EQ(table.Fields[1].Type, FieldType::dbDouble);
    EXPECT_EQ(table.Fields[2].Type, FieldType::dbDouble);
    EXPECT_EQ(table.Fields[3].Size, 255);
    EXPECT_TRUE(table.Indexes.empty());
}

TEST_F(CommandTest, AnUnknownWorksheetIsToldOnceInUpperCase) {
    Import({"Cp1|1|1|5", "cp1|2|1|5", "Nonsense|1|1|5"});
    EXPECT_EQ(Messages(),
              (std::vector<Message>{
                  {"Load", "Table CP1 is not currently supported for ASCII import"},
                  {"Load", "Table NONSENSE is not currently supported for ASCII import"}}));
    EXPECT_TRUE(ImportErrorFlag);
}

TEST_F(CommandTest, AnUnknownWorksheetThatBeginsWithSIsPassedOver) {
    EXPECT_TRUE(Import({"Sp1|1|1|5", "salaries|2|1|5", "sp1|1|1|6", "A|5|1|7"}));
    EXPECT_EQ(Messages(),
              (std::vector<Message>{{"", std::string(kClosing)},
                                    {"F.Y.I.",
                                     "3 lines of the file were passed over: worksheet SALARIES "
                                     "(1), worksheet SP1 (2)."}}));
    EXPECT_FALSE(ImportErrorFlag);
}

TEST_F(CommandTest, ALoadThatIsCalledOffStillCountsWhatWasPassedOver) {
    EXPECT_FALSE(Import({"#VALUE!", "Bp1|5|2|1.5"}));
    ASSERT_EQ(Messages().size(), 2u);
    EXPECT_EQ(Messages()[1].Level, "F.Y.I.");
    EXPECT_EQ(Messages()[1].Text, "1 line of the file was passed over: \"#VALUE!\" (1).");
}

TEST_F(CommandTest, ALowerCaseNameReachesItsLoader) {
    EXPECT_TRUE(Import({"a6|1|2|b"}));
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_2")), "B");
}

TEST_F(CommandTest, StructureComesBeforeTheRowsThatReferToIt) {
    EXPECT_TRUE(Import({"B1p1|12.01|9.01|55", "Bp1|12.01|1|66", "S2p1|12.01|1|Clinic",
                        "CostCenter|9.01|0|Night Staff"}));
    EXPECT_TRUE(IsClean());
    EXPECT_EQ(NumOr(Cell("B1p1", 12.01, "CC_901")), 55);
    EXPECT_EQ(NumOr(Cell("Bp1", 12.01, "CC_100")), 66);
}

TEST_F(CommandTest, AnImportIsOneBatch) {
    Import({});
    const auto commits = gDB.CommitCount();
    Import({"A|5|1|7", "CostCenter|9.01|0|Night Staff", "S2p1|1|1|Clinic"});
    EXPECT_EQ(gDB.CommitCount(), commits + 1);
}

TEST_F(CommandTest, FormsOfA6AreDrawnAgain) {
    host.OpenForms = {"frmEditA6"};
    Import({"A6|1|2|B"});
    EXPECT_NE(host.IndexOf("SetGrd: frmEditA6"), -1);
    EXPECT_EQ(host.IndexOf("SetGrd: frmViewA6"), -1);
}

TEST_F(CommandTest, NoBoxComesUpWhileLoading) {
    gDB.AppendField("Cp2", {.Name = "CC"});
    Import({"CostCenter|2.01|0|More"});
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(NumOr(gDB.Scalar("Select Count(*) From Log Where LogType='I' And Severity='ERROR';")),
              1);
    EXPECT_EQ(
        Messages(),
        std::vector<Message>{Refused(
            "CostCenter", "CostCenter was unable to create cost center : ", "2.01, 0, \"More\"")});
}

}  // namespace
}  // namespace zolmara::test
