// A small statement from New to the submission files, with the keyboard alone: through the menus,
// the boxes and the file dialogs as the user has them.

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <filesystem>

#include "SheetTest.h"
#include "ui/dialogs/frmViewError.h"

namespace zolmara::ui {
namespace {

/// Makes a call that shows a dialog, and keys into the dialog once it has the keys.
template <class Call>
auto Keying(const std::function<void()>& keys, const Call& call) {
    QTimer look;
    int left = 60'000;
    look.callOnTimeout([&] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (!dialog && --left > 0) return;
        const bool ready = dialog && dialog->windowHandle() &&
                           QApplication::focusWindow() == dialog->windowHandle();
        if (!ready && --left > 0) return;
        look.stop();
        EXPECT_TRUE(ready) << "no dialog took the keys";
        if (ready) return keys();
        if (dialog) dialog->close();
    });
    look.start(2);
    return call();
}

class KeyboardRoad : public SheetTest {
protected:
    KeyboardRoad() {
        Start();
        TheDesktop().MsgBox = [this](const std::string& text, int style, const std::string& title) {
            shown_.push_back(text);
            return Keying([] { Press(Qt::Key_Return); },
                          [&] { return RealDesktop().MsgBox(text, style, title); });
        };
        TheDesktop().ChooseFile = [this](const FileDialog& dialog) {
            return Keying(
                [this] {
                    Press(Qt::Key_A, Qt::ControlModifier);
                    Type(file_);
                    Press(Qt::Key_Return);
                },
                [&] { return RealDesktop().ChooseFile(dialog); });
        };
        TheDesktop().Print = [](const std::vector<PrintJob>& jobs, QPrinter& printer) {
            return Keying([] { Press(Qt::Key_Escape); },
                          [&] { return RealDesktop().Print(jobs, printer); });
        };
    }

    /// A window manager gives the keys to another window when the one that had them has gone.
    void AsAWindowManager() {
        if (!WaitFor([] { return QApplication::focusWindow() != nullptr; }, 500))
            Activate(WorksheetWindows().empty() ? main.get()
                                                : static_cast<QWidget*>(WorksheetWindows().back()));
    }
    static bool WaitFor(const std::function<bool()>& isSo, int milliseconds = 120'000) {
        return QTest::qWaitFor(isSo, milliseconds);
    }
    /// Waits until a window that the program has opened is the one that keys go to.
    static void HasTheKeys(QWidget* window) {
        ASSERT_NE(window, nullptr);
        // Without a display nobody gives the keys to the next window when a dialog has gone.
        if (QGuiApplication::platformName() == "offscreen") window->activateWindow();
        ASSERT_TRUE(WaitFor([&] {
            return window->windowHandle() && QApplication::focusWindow() == window->windowHandle();
        })) << S(window->objectName());
    }
    static QMenu* OpenMenu() {
        QPointer<QMenu> menu;
        EXPECT_TRUE(WaitFor([&] {
            menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu != nullptr;
        }));
        return menu;
    }
    static QString Caption(const QAction* action) {
        return action ? QString(action->text()).remove('&') : QString();
    }
    /// Goes down an open menu to an entry and enters it.
    static void Pick(QMenu* menu, const char* caption) {
        ASSERT_NE(menu, nullptr) << caption;
        for (int i = 0; i < 40 && Caption(menu->activeAction()) != caption; ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        ASSERT_EQ(Caption(menu->activeAction()), caption);
        QTest::keyClick(menu, Qt::Key_Return);
    }
    void Enter(std::initializer_list<const char*> captions) {
        for (const char* caption : captions) {
            Pick(OpenMenu(), caption);
            // A submenu takes a moment to come.
            WaitFor([&] {
                auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                return !menu || Caption(menu->menuAction()) == caption;
            });
        }
        EXPECT_TRUE(WaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
    }
    /// A command by F10, from whatever window has the keys: to the right to its menu, then down.
    void ByMenu(const char* title, std::initializer_list<const char*> captions) {
        AsAWindowManager();
        Press(Qt::Key_F10);
        for (int i = 0; i < 6 && Caption(OpenMenu()->menuAction()) != title; ++i)
            QTest::keyClick(OpenMenu(), Qt::Key_Right);
        ASSERT_EQ(Caption(OpenMenu()->menuAction()), title);
        Enter(captions);
    }
    /// The same by the letter of the menu, in the main window.
    void ByLetter(Qt::Key letter, std::initializer_list<const char*> captions) {
        AsAWindowManager();
        Press(letter, Qt::AltModifier);
        Enter(captions);
    }
    static void Field(const std::string& text) {
        Press(Qt::Key_A, Qt::ControlModifier);
        Type(text);
        Press(Qt::Key_Tab);
    }
    static frmWorksheet* NowOpen(const std::string& item) {
        EXPECT_TRUE(WaitFor([&] { return FindOpenForm("edit", item) != nullptr; })) << item;
        HasTheKeys(FindOpenForm("edit", item));
        return dynamic_cast<frmWorksheet*>(FindOpenForm("edit", item));
    }
    /// From the current cell on, a text or nothing for each cell that can be keyed.
    static void Cells(std::initializer_list<const char*> texts) {
        for (const char* text : texts) {
            Type(text);
            Press(Qt::Key_Tab);
        }
    }
    /// To a cell of a line, by Tab over the cells that can be keyed.
    static void TabTo(const frmWorksheet* window, const std::string& cell) {
        for (int i = 0; i < 60 && Current(window) != cell; ++i) Press(Qt::Key_Tab);
        ASSERT_EQ(Current(window), cell);
    }
    static void CloseSheet() {
        const QPointer<QWidget> window = QApplication::activeWindow();
        ASSERT_TRUE(window);
        const std::string caption = S(window->windowTitle());
        // The window may be gone before the keys are let go.
        QTest::keyPress(Focused(), Qt::Key_C, Qt::AltModifier);
        EXPECT_TRUE(WaitFor([&] { return !window || !window->isVisible(); })) << caption;
    }
    std::vector<std::string> ErrorsFound() const {
        std::vector<std::string> found;
        Recordset rows = gDB.OpenRecordset("SELECT * FROM Error;", dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext())
            if (Text(rows["Level"]) == "Non-Fatal Error") found.push_back(Text(rows["Message"]));
        return found;
    }
    bool Built(const char* name) const { return std::filesystem::exists(folder.Path() / name); }

    void MakeNew();
    void KeyExpenses();
    void KeyAReclassification();
    void KeyAssets();
    void KeyTheHomeOffice();
    void CalculateWithoutErrors();
    void PrepareIt();

    std::string file_;  ///< what is keyed into the next file dialog
    std::vector<std::string> shown_;
};

void KeyboardRoad::MakeNew() {
    file_ = folder.File("Small.CRF");
    AsAWindowManager();
    Press(Qt::Key_N, Qt::ControlModifier);
    HasTheKeys(Form("frmCreateNewCRF"));
    for (const char* text : {"149012", "1/1/2023", "12/31/2023", "Small Home Office"}) Field(text);
    Press(Qt::Key_Return);
    ASSERT_TRUE(WaitFor([] { return CrfIsOpen() && !FindForm("frmCreateNewCRF"); }))
        << ::testing::PrintToString(shown_);
    EXPECT_EQ(gProviderName, "Small Home Office");
}

void KeyboardRoad::KeyExpenses() {
    ByLetter(Qt::Key_E, {"Open ...", "A ...", "A"});
    frmWorksheet* const a = NowOpen("A");
    ASSERT_NE(a, nullptr);
    TabTo(a, "8 Col_1");
    Cells({"1000", "400"});
    CloseSheet();
    EXPECT_EQ(Stored("A", 8, "Col_1"), "1000");
    EXPECT_EQ(Stored("A", 9, "Col_1"), "400");
}

/// A line is added, and another one too many is deleted, by the letters of the buttons.
void KeyboardRoad::KeyAReclassification() {
    ByMenu("Edit", {"Open ...", "A ...", "A-6"});
    frmWorksheet* const a6 = NowOpen("A6");
    ASSERT_NE(a6, nullptr);
    const auto lines = [&](int count) {
        return WaitFor([&] { return a6->Model().rowCount() == count; });
    };
    Press(Qt::Key_A, Qt::AltModifier);
    ASSERT_TRUE(lines(1));
    Cells({"Supplies", "a", "8", "100", "9", "100"});
    EXPECT_EQ(Shown(a6, 1, "Col_3"), Stored("A", 8, "CCName"));
    Press(Qt::Key_A, Qt::AltModifier);
    ASSERT_TRUE(lines(2));
    Press(Qt::Key_Space, Qt::ShiftModifier);
    Press(Qt::Key_D, Qt::AltModifier);
    ASSERT_TRUE(lines(1));
    CloseSheet();
    EXPECT_EQ(Stored("A6", 1, "Col_2"), "A");
    EXPECT_EQ(Stored("A6", 1, "Col_8"), "100");
}

void KeyboardRoad::KeyAssets() {
    ByMenu("Edit", {"Open ...", "A ...", "A-7 ....", "A-7 Part I"});
    ASSERT_NE(NowOpen("A7p1"), nullptr);
    Cells({"5000"});
    CloseSheet();
    EXPECT_EQ(Stored("A7p1", 1, "Col_1"), "5000");
}

void KeyboardRoad::KeyTheHomeOffice() {
    ByMenu("Edit", {"Open ...", "S ...", "S-1  Part-1 (S1p1)"});
    frmWorksheet* const s1 = NowOpen("S1p1");
    ASSERT_NE(s1, nullptr);
    Cells({"1 Main Street", "", "", "Evanston", "IL", "60201"});
    // Of line 2 only the date of operations can be keyed; the rest is the identity.
    TabTo(s1, "2 Col_3");
    Cells({"7/1/1987"});
    TabTo(s1, "3 Col_1");
    Press(Qt::Key_F4);
    ASSERT_NE(OpenMenu(), nullptr);
    QTest::keyClick(OpenMenu(), Qt::Key_Return);
    TabTo(s1, "4 Col_1");
    Cells({"n"});
    TabTo(s1, "4 Col_3");
    Cells({"y"});
    TabTo(s1, "4 Col_5");
    Cells({"y"});
    CloseSheet();
    EXPECT_EQ(Stored("S1p1", 2, "Col_3"), "07/01/1987");
    EXPECT_EQ(Stored("S1p1", 3, "Col_1"), "1");
    EXPECT_EQ(Stored("S1p1", 4, "Col_5"), "Yes");
}

void KeyboardRoad::CalculateWithoutErrors() {
    AsAWindowManager();
    ShowForm(main.get());
    HasTheKeys(main.get());
    Press(Qt::Key_F9);
    ASSERT_TRUE(WaitFor([this] { return FindForm("frmViewError") && !main->InLongStep(); }));
    EXPECT_EQ(ErrorsFound(), std::vector<std::string>());
    ASSERT_TRUE(Enabled("mnuReportSubmit"));
    HasTheKeys(Form("frmViewError"));
    Press(Qt::Key_Escape);
    ASSERT_TRUE(WaitFor([] { return !FindForm("frmViewError"); }));
}

void KeyboardRoad::PrepareIt() {
    for (const auto step : {&KeyboardRoad::MakeNew, &KeyboardRoad::KeyExpenses,
                            &KeyboardRoad::KeyAReclassification, &KeyboardRoad::KeyAssets,
                            &KeyboardRoad::KeyTheHomeOffice, &KeyboardRoad::CalculateWithoutErrors})
        if (!HasFatalFailure()) (this->*step)();
}

TEST_F(KeyboardRoad, FromNewToTheSubmissionFiles) {
    PrepareIt();
    ASSERT_FALSE(HasFatalFailure());
    EXPECT_EQ(shown_, std::vector<std::string>());
    ByMenu("Report File", {"Build an ECR file ...", "Sign Electronically"});
    HasTheKeys(Form("frmESCert"));
    for (const char* text : {"Ingrid", "Vasquez", "CFO"}) Field(text);
    file_ = folder.File("HO149012.23A1");
    Press(Qt::Key_Space);
    ASSERT_TRUE(WaitFor([] { return FindForm("frmCopy2Floppy") != nullptr; }));
    EXPECT_TRUE(Built("HO149012.23A1"));
    EXPECT_TRUE(Built("PI149012.23A1"));
    HasTheKeys(Form("frmCopy2Floppy"));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(WaitFor([] { return FindForm("frmCopy2Floppy") == nullptr; }));
}

TEST_F(KeyboardRoad, F10LeavesARefusedRowWhereItIs) {
    DropCrf();
    file_ = MakeCrf("One.CRF");
    AsAWindowManager();
    Press(Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(WaitFor([] { return CrfIsOpen(); }));
    ByLetter(Qt::Key_E, {"Open ...", "A ...", "A"});
    frmWorksheet* const a = NowOpen("A");
    ASSERT_NE(a, nullptr);
    Type("abc");
    Press(Qt::Key_F10);
    EXPECT_EQ(shown_.size(), 1U);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Press(Qt::Key_Escape);
    Press(Qt::Key_F10);
    EXPECT_EQ(Caption(OpenMenu()->menuAction()), "Report File");
    QTest::keyClick(OpenMenu(), Qt::Key_Escape);
}

}  // namespace
}  // namespace zolmara::ui
