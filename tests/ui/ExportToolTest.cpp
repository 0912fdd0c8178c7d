// What the menu Tools writes as spreadsheets: the statement, the keyed cells, a template to fill.

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <filesystem>
#include <fstream>

#include "SheetTest.h"
#include "ui/dialogs/FileDialogs.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {
namespace {

constexpr const char* kCommands[] = {"tlsExport", "tlsCells", "tlsTemplate"};

class ExportTool : public SheetTest {
protected:
    QAction* Command(const char* name = "tlsExport") const {
        return main->findChild<QAction*>(name);
    }
    static std::string Content(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    static QWidget* Window(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name && window->isVisible()) return window;
        return nullptr;
    }
    bool IsWorkbook(const std::string& path) const {
        std::ifstream in(path, std::ios::binary);
        std::string head(2, '\0');
        in.read(head.data(), 2);
        return head == "PK";
    }
};

TEST_F(ExportTool, WritesTheOpenStatementToTheChosenFile) {
    Start();
    EXPECT_FALSE(Command()->isEnabled());
    const std::string crf = MakeCrf("Mine.CRF");
    Open(crf);
    ASSERT_TRUE(Command()->isEnabled());
    const std::string out = folder.File("mine.xlsx");
    Files = {out};
    Command()->trigger();
    EXPECT_TRUE(IsWorkbook(out));
    EXPECT_EQ(Dialogs.back().Title, "Export To Spreadsheet");
    EXPECT_TRUE(Dialogs.back().FileName.ends_with("Mine.xlsx")) << Dialogs.back().FileName;
    EXPECT_TRUE(Boxes.empty()) << "no box to click away";
    EXPECT_EQ(Done(), "Exported to mine.xlsx");
}

TEST_F(ExportTool, KeepsAFileThatIsNotToBeReplaced) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    const std::string out = folder.File("mine.xlsx");
    std::ofstream(out) << "somebody's";
    Files = {out};
    Answers = {kNo};
    Command()->trigger();
    EXPECT_FALSE(IsWorkbook(out));
    Files = {out};
    Answers = {kYes};
    Command()->trigger();
    EXPECT_TRUE(IsWorkbook(out));
}

TEST_F(ExportTool, DoesNothingWhereNoFileIsChosen) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    const std::size_t boxes = Boxes.size();
    Command()->trigger();
    EXPECT_EQ(Boxes.size(), boxes);
}

TEST_F(ExportTool, IsOnWithAnOpenFileAndOffInALongStep) {
    Start();
    for (const char* name : kCommands) EXPECT_FALSE(Command(name)->isEnabled()) << name;
    Open(MakeCrf("Mine.CRF"));
    for (const char* name : kCommands) EXPECT_TRUE(Command(name)->isEnabled()) << name;
    host->ShowCalcMsg(" Calculating");
    for (const char* name : kCommands) EXPECT_FALSE(Command(name)->isEnabled()) << name;
    host->HideCalcMsg();
    for (const char* name : kCommands) EXPECT_TRUE(Command(name)->isEnabled()) << name;
    Trigger("mnuHelpAbout");
    for (const char* name : kCommands) EXPECT_TRUE(Command(name)->isEnabled()) << name;
    Click("frmHelpAbout", "cmdHelpAboutOK");
    Answers = {kYes};
    Trigger("mnuReportClose");
    ASSERT_FALSE(CrfIsOpen());
    for (const char* name : kCommands) EXPECT_FALSE(Command(name)->isEnabled()) << name;
}

TEST_F(ExportTool, ProposesNamesBesideTheFile) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    const char* const names[] = {"Mine.xlsx", "Mine Cells.xlsx", "Mine Template.xlsx"};
    for (int i = 0; i < 3; ++i) {
        Command(kCommands[i])->trigger();
        EXPECT_EQ(Dialogs.back().FileName, folder.File(names[i]));
        EXPECT_TRUE(Dialogs.back().Save);
    }
    EXPECT_EQ(Dialogs[2].Title, "Save Keyed Cells As");
    EXPECT_EQ(Dialogs[3].Title, "Save A Template To Fill");
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(ExportTool, SavesTheKeyedCellsInEachForm) {
    Start();
    Open(MakeSample("Mine.CRF"));
    const std::string text = folder.File("mine.txt");
    const std::string csv = folder.File("mine.csv");
    const std::string book = folder.File("mine cells.xlsx");
    Files = {text, csv, book};
    for (int i = 0; i < 3; ++i) Command("tlsCells")->trigger();
    EXPECT_NE(Content(text).find("S1p1\t1\t2\tSuite 410\n"), std::string::npos);
    EXPECT_NE(Content(csv).find("S1p1,1,2,\"Suite 410\"\r\n"), std::string::npos);
    EXPECT_TRUE(IsWorkbook(book));
    EXPECT_TRUE(Boxes.empty()) << ::testing::PrintToString(BoxTexts());
    EXPECT_EQ(Done(), "Saved the keyed cells as mine cells.xlsx");
    EXPECT_EQ(Window("frmCellsLeft"), nullptr) << "nothing was left out";
}

TEST_F(ExportTool, ListsKeyedCellsThatHaveNoPlaceAndGoesToThem) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    gDB.Execute("UPDATE Sp1 SET Col_1='3' WHERE LineNum=2;");
    gDB.Execute("UPDATE A SET Col_1=10.5 WHERE LineNum=8;");
    Files = {folder.File("mine.txt")};
    Command("tlsCells")->trigger();
    QWidget* const window = Window("frmCellsLeft");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->findChild<QLabel*>("lblCount")->text(), "2 keyed cells are not in the file:");
    auto* const grid = window->findChild<QTableView*>("grd");
    const auto row = [&](int number) {
        std::string texts;
        for (int i = 0; i < 5; ++i)
            texts += S(grid->model()->index(number, i).data().toString()) + "|";
        return texts;
    };
    EXPECT_EQ(row(0), "A|8|Col_1|10.5|the import takes whole numbers alone here|");
    EXPECT_EQ(row(1), "Sp1|2|Col_1|3|the import has no place for it|");
    emit grid->activated(grid->model()->index(0, 0));
    EXPECT_NE(FindOpenForm("edit", "A"), nullptr);
    window->findChild<QPushButton*>("cmdClose")->click();
    EXPECT_EQ(Window("frmCellsLeft"), nullptr);
}

TEST_F(ExportTool, SavesATemplateThatTakesNoOtherName) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    const std::string out = folder.File("fill.xlsx");
    Files = {out, folder.File("fill.csv")};
    Command("tlsTemplate")->trigger();
    EXPECT_TRUE(IsWorkbook(out));
    EXPECT_EQ(Done(), "Saved the template as fill.xlsx");
    Command("tlsTemplate")->trigger();
    EXPECT_FALSE(std::filesystem::exists(folder.File("fill.csv")));
    EXPECT_NE(BoxTexts().back().find("a workbook is written to .xlsx"), std::string::npos)
        << BoxTexts().back();
}

TEST_F(ExportTool, AsksBeforeItReplacesAnyFileAndNeverTheOpenOne) {
    Start();
    const std::string crf = MakeCrf("Mine.CRF");
    Open(crf);
    const std::string out = folder.File("out.xlsx");
    for (const char* name : kCommands) {
        std::ofstream(out) << "somebody's";
        Files = {out};
        Answers = {kNo};
        Command(name)->trigger();
        EXPECT_EQ(Content(out), "somebody's") << name;
        Files = {out, out};
        Answers = {kYes, kOk, kNo};
        Command(name)->trigger();
        EXPECT_TRUE(IsWorkbook(out)) << name;
        const std::string written = Content(out);
        Command(name)->trigger();
        EXPECT_EQ(Content(out), written) << name << " asks for its own output, too";
    }
    const std::string link = folder.File("link.xlsx");
    std::filesystem::create_symlink(crf, link);
    for (const char* name : kCommands) {
        Files = {link};
        Answers = {kYes};
        Command(name)->trigger();
        EXPECT_EQ(Text(gDB.Scalar("SELECT ProviderNumber FROM Master;")), "12-3456") << name;
        EXPECT_TRUE(std::filesystem::is_symlink(link)) << name;
    }
    EXPECT_TRUE(Content(crf).starts_with("SQLite format 3"));
}

TEST_F(ExportTool, StoresTheRowThatIsBeingKeyedFirst) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    frmWorksheet* const sheet = Sheet("edit", "A");
    At(sheet, 8, "Col_1");
    Type("4711");
    const std::string out = folder.File("mine.txt");
    Files = {out};
    Command("tlsCells")->trigger();
    EXPECT_NE(Content(out).find("A\t8\t1\t4711\n"), std::string::npos) << Content(out);
}

/// The dialog of the platform, as it stands on the screen.
TEST_F(ExportTool, AnotherKindOfFileChangesTheEndingOfTheName) {
    Start();
    QString name;
    QTimer::singleShot(0, [&] {
        auto* const box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        box->selectNameFilter(box->nameFilters().at(1));
        emit box->filterSelected(box->nameFilters().at(1));
        name = box->selectedFiles().value(0);
        box->reject();
    });
    ChooseFileFor({.Save = true,
                   .Title = "Save",
                   .FileName = folder.File("Compare.xlsx"),
                   .DefaultExt = ".xlsx",
                   .Filter = "Spreadsheets (*.xlsx)|*.xlsx|Separated Values (*.csv)|*.csv"});
    EXPECT_EQ(S(name), folder.File("Compare.csv"));
}

}  // namespace
}  // namespace zolmara::ui
