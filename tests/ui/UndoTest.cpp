// Undo and redo at the keyboard, backups and comparison in their windows.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QTableView>
#include <filesystem>
#include <fstream>

#include "SheetTest.h"
#include "store/session/Acts.h"
#include "store/session/Backups.h"

namespace zolmara::ui {
namespace {

namespace fs = std::filesystem;

class UndoWindows : public SheetTest {
protected:
    UndoWindows() { Start(); }
    QAction* Entry(const char* name) const {
        auto* const action = main->findChild<QAction*>(name);
        if (!action) ADD_FAILURE() << name;
        return action;
    }
    std::string Caption(const char* name) const { return S(Entry(name)->text()); }
    /// A window of "Tools", which is not in the list of forms.
    static QWidget* Window(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name && window->isVisible()) return window;
        ADD_FAILURE() << name << " is not open";
        return nullptr;
    }
    template <class T>
    static T* In(const char* window, const char* name) {
        QWidget* const found = Window(window);
        T* const control = found ? found->findChild<T*>(name) : nullptr;
        if (!control) ADD_FAILURE() << window << " has no " << name;
        return control;
    }
    static void Push(const char* window, const char* button) {
        if (auto* const control = In<QPushButton>(window, button)) control->click();
    }
    static std::string At(const char* window, int row, int column) {
        const auto* const grid = In<QTableView>(window, "grd");
        return S(grid->model()->index(row, column).data().toString());
    }
    static int RowsOf(const char* window) {
        return In<QTableView>(window, "grd")->model()->rowCount();
    }
    using SheetTest::At;
    /// Opens a statement and compares it with its copy of before one cell was changed.
    void CompareOneChange() {
        const std::string other = MakeSample("Other.CRF");
        const std::string path = folder.File("One.CRF");
        fs::copy_file(other, path);
        Open(path);
        gDB.Execute("UPDATE A SET Col_1=1234567 WHERE LineNum=8;");
        Files.emplace_back(other);
        Entry("tlsCompare")->trigger();
    }
};

TEST_F(UndoWindows, CtrlZTakesTheLastActBackAndCtrlYDoesItAgain) {
    Open(MakeCrf("One.CRF"));
    EXPECT_FALSE(Entry("tlsUndo")->isEnabled());
    EXPECT_EQ(Caption("tlsUndo"), "&Undo");
    frmWorksheet* const sheet = Sheet("edit", "A");
    Enter(sheet, 8, "Col_1", "100");
    Enter(sheet, 8, "Col_1", "200");
    ASSERT_TRUE(sheet->CommitGrid());
    EXPECT_EQ(Caption("tlsUndo"), "&Undo Enter line 8 of A");
    ASSERT_TRUE(Entry("tlsUndo")->isEnabled());
    const std::size_t steps = TheActs().Depth();
    ASSERT_GE(steps, 1u);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(TheActs().Depth(), steps - 1);
    EXPECT_NE(Stored("A", 8, "Col_1"), "200");
    EXPECT_EQ(Shown(sheet, 8, "Col_1").find("200"), std::string::npos) << "the window follows";
    EXPECT_EQ(Caption("tlsRedo"), "&Redo Enter line 8 of A");
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Stored("A", 8, "Col_1"), "200");
    EXPECT_EQ(Shown(sheet, 8, "Col_1"), "200");
}

TEST_F(UndoWindows, CtrlZInTheMainWindowTakesTheLastActBackThoughTheFilterHasTheKeys) {
    Open(MakeCrf("One.CRF"));
    frmWorksheet* const sheet = Sheet("edit", "A");
    Enter(sheet, 8, "Col_1", "100");
    ASSERT_TRUE(sheet->close());
    Activate(main.get());
    auto* const filter = main->findChild<QLineEdit*>("txtFilter");
    for (const char* text : {"", "A-6"}) {
        filter->setFocus();
        Type(text);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_NE(Stored("A", 8, "Col_1"), "100") << text;
        Press(Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(Stored("A", 8, "Col_1"), "100") << text;
        EXPECT_EQ(filter->text(), text);
    }
}

TEST_F(UndoWindows, CtrlZInAnOpenCellIsTheCells) {
    Open(MakeCrf("One.CRF"));
    frmWorksheet* const sheet = Sheet("edit", "A");
    Enter(sheet, 8, "Col_1", "100");
    ASSERT_TRUE(sheet->CommitGrid());
    const std::size_t steps = TheActs().Depth();
    At(sheet, 9, "Col_1");
    Type("77");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(TheActs().Depth(), steps);
    EXPECT_EQ(Stored("A", 8, "Col_1"), "100");
    Press(Qt::Key_Escape);
}

TEST_F(UndoWindows, AnUndoShutsTheWayToTheSubmission) {
    Open(MakeSample("One.CRF"));
    frmWorksheet* const sheet = Sheet("edit", "A");
    Enter(sheet, 8, "Col_1", "100");
    ASSERT_TRUE(sheet->CommitGrid());
    main->EnableMenu("mnuReportSubmit", true);
    ASSERT_TRUE(Enabled("mnuReportSubmit"));
    Entry("tlsUndo")->trigger();
    EXPECT_FALSE(Enabled("mnuReportSubmit"));
    EXPECT_EQ(Done(), "Undone: Enter line 8 of A");
    Entry("tlsRedo")->trigger();
    EXPECT_EQ(Done(), "Done again: Enter line 8 of A");
}

TEST_F(UndoWindows, SaveAsEmptiesTheListAndTheMenuTellsWhy) {
    Open(MakeCrf("One.CRF"));
    RunAct("Something", [] { gDB.Execute("UPDATE A SET Col_1=5 WHERE LineNum=8;"); });
    EXPECT_EQ(Caption("tlsUndo"), "&Undo Something");
    Boxes.clear();
    Files.emplace_back(folder.File("Two.CRF"));
    Trigger("mnuReportSaveAs");
    EXPECT_FALSE(Entry("tlsUndo")->isEnabled());
    EXPECT_EQ(Caption("tlsUndo"), "&Undo (the file was saved under another name)");
    QTRY_COMPARE(Boxes.size(), std::size_t{1});
    EXPECT_EQ(Boxes[0].Text,
              "What was done until now cannot be undone any more: the file was saved under another "
              "name.");
    EXPECT_EQ(Boxes[0].Title, "Undo");
}

// --- Backups -------------------------------------------------------------------------------

TEST_F(UndoWindows, BackupsAreListedViewedAndRestored) {
    const std::string path = MakeSample("One.CRF");
    Open(path);
    ASSERT_EQ(BackupsOf(path).size(), 1u) << "the opening made one";
    const std::string first = Stored("A", 8, "Col_1");
    gDB.Execute("UPDATE A SET Col_1=77 WHERE LineNum=8;");
    Entry("tlsBackups")->trigger();
    ASSERT_EQ(RowsOf("frmBackups"), 1);
    EXPECT_EQ(At("frmBackups", 0, 0), "1");
    QTRY_COMPARE(QString::fromStdString(At("frmBackups", 0, 4)), QString("1"));
    Push("frmBackups", "cmdView");
    In<QComboBox>("frmBackupView", "cboTable")->setCurrentText("A");
    bool seen = false;
    for (int row = 0; row < RowsOf("frmBackupView"); ++row)
        seen = seen || (At("frmBackupView", row, 0) == "8" &&
                        Replace(At("frmBackupView", row, 2), ",", "") == first);
    EXPECT_TRUE(seen) << first;
    Push("frmBackupView", "cmdClose");
    Answers = {kYes};
    Boxes.clear();
    Push("frmBackups", "cmdRestore");
    EXPECT_EQ(Boxes.size(), 1u) << "the question alone";
    EXPECT_EQ(Done(), "One.CRF has been restored.");
    EXPECT_EQ(S(In<QLabel>("frmBackups", "lblBackupDone")->text()), Done());
    EXPECT_EQ(Stored("A", 8, "Col_1"), first);
    EXPECT_EQ(RowsOf("frmBackups"), 2) << "what stood there became a backup";
    Push("frmBackups", "cmdClose");
}

TEST_F(UndoWindows, ARestoreThatIsDeclinedChangesNothing) {
    Open(MakeSample("One.CRF"));
    gDB.Execute("UPDATE A SET Col_1=77 WHERE LineNum=8;");
    Entry("tlsBackups")->trigger();
    Answers = {kNo};
    Push("frmBackups", "cmdRestore");
    EXPECT_EQ(Stored("A", 8, "Col_1"), "77");
    Boxes.clear();
    Push("frmBackups", "cmdMake");
    EXPECT_EQ(RowsOf("frmBackups"), 2);
    EXPECT_EQ(Done(), "One.CRF has been backed up.");
    Push("frmBackups", "cmdMake");
    EXPECT_EQ(RowsOf("frmBackups"), 2);
    EXPECT_EQ(Done(), "The newest backup holds what the file holds now.");
    EXPECT_TRUE(Boxes.empty());
    Push("frmBackups", "cmdClose");
}

// --- Comparison ----------------------------------------------------------------------------

TEST_F(UndoWindows, TheComparisonTellsPrintsAndSavesWhatDiffers) {
    CompareOneChange();
    ASSERT_EQ(RowsOf("frmCompare"), 1);
    EXPECT_EQ(At("frmCompare", 0, 0), "A");
    EXPECT_EQ(At("frmCompare", 0, 2), "Col_1");
    EXPECT_EQ(At("frmCompare", 0, 4), "1,234,567");
    EXPECT_EQ(S(In<QLabel>("frmCompare", "lblCount")->text()), "1 cell differs.");
    const std::string csv = folder.File("out.csv");
    Files.emplace_back(csv);
    Push("frmCompare", "cmdSave");
    std::ifstream file(csv);
    std::string head;
    std::string row;
    std::getline(file, head);
    std::getline(file, row);
    EXPECT_EQ(Done(), "Saved the comparison as out.csv");
    EXPECT_EQ(head, "item,line,column,name,here,there,difference,percent");
    EXPECT_TRUE(row.starts_with("A,8,Col_1,")) << row;
    EXPECT_EQ(Dialogs.back().FileName, folder.File("Compare.xlsx"));
    Files.emplace_back(folder.File("out.xlsx"));
    Push("frmCompare", "cmdSave");
    std::ifstream book(folder.File("out.xlsx"), std::ios::binary);
    std::string mark(2, ' ');
    book.read(mark.data(), 2);
    EXPECT_EQ(mark, "PK") << "a workbook";
    Push("frmCompare", "cmdPrint");
    ASSERT_TRUE(fs::exists(folder.File("Compare.prt")));
    In<QLineEdit>("frmCompare", "txtOver")->setText("99999999");
    Push("frmCompare", "cmdCompare");
    EXPECT_EQ(RowsOf("frmCompare"), 0);
    EXPECT_EQ(S(In<QLabel>("frmCompare", "lblCount")->text()), "No differences.");
    Push("frmCompare", "cmdClose");
}

TEST_F(UndoWindows, TheComparisonKeepsToTheGatesOfTheMenusAndClosesWithItsFile) {
    CompareOneChange();
    auto* const grid = In<QTableView>("frmCompare", "grd");
    Sheet("edit", "CCs");
    Boxes.clear();
    emit grid->activated(grid->model()->index(0, 0));
    EXPECT_EQ(FindOpenForm("view", "A"), nullptr);
    ASSERT_EQ(Boxes.size(), 1u);
    EXPECT_TRUE(Boxes[0].Text.starts_with("Worksheet A cannot be opened to view now."))
        << Boxes[0].Text;
    UnloadForm(FindForm("frmEditCCs"));
    emit grid->activated(grid->model()->index(0, 0));
    auto* const view = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "A"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Current(view), "8 Col_1");
    Answers = {kOk};
    Trigger("mnuReportClose");
    ASSERT_FALSE(CrfIsOpen());
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->objectName() == "frmCompare" && window->isVisible());
}

TEST_F(UndoWindows, AFileThatIsNoCrfIsToldAndNoWindowOpens) {
    Open(MakeCrf("One.CRF"));
    std::ofstream(folder.File("x.CRF")) << "x";
    Boxes.clear();
    Files.emplace_back(folder.File("x.CRF"));
    Entry("tlsCompare")->trigger();
    ASSERT_EQ(Boxes.size(), 1u);
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->objectName() == "frmCompare" && window->isVisible());
}

}  // namespace
}  // namespace zolmara::ui
