// A small statement from New to the submission files, with the keyboard alone.

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <filesystem>

#include "SheetTest.h"
#include "ui/dialogs/frmViewError.h"

namespace zolmara::ui {
namespace {

class KeyboardRoad : public SheetTest {
protected:
    KeyboardRoad() { Start(); }

    /// Goes down an open menu to an entry and enters it.
    static void Pick(QMenu* menu, const QString& caption) {
        for (int i = 0; i < 40; ++i) {
            const QAction* at = menu->activeAction();
            if (at && QString(at->text()).remove('&') == caption) break;
            QTest::keyClick(menu, Qt::Key_Down);
        }
        ASSERT_NE(menu->activeAction(), nullptr) << S(caption);
        ASSERT_EQ(QString(menu->activeAction()->text()).remove('&'), caption);
        QTest::keyClick(menu, Qt::Key_Return);
    }
    /// A command by the keys of the menu bar: the letter of its menu, then the captions.
    void ByMenu(Qt::Key letter, std::initializer_list<const char*> captions) {
        Activate(main.get());
        QTest::keyClick(main.get(), letter, Qt::AltModifier);
        for (const char* caption : captions) {
            QMenu* menu = nullptr;
            WaitFor([&] {
                menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                return menu != nullptr;
            });
            ASSERT_NE(menu, nullptr) << caption;
            Pick(menu, caption);
        }
        EXPECT_TRUE(WaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
    }
    static void Field(const char* text) {
        QTest::keyClick(Focused(), Qt::Key_A, Qt::ControlModifier);
        Type(text);
        Press(Qt::Key_Tab);
    }
    /// From the first cell that can be keyed, a text or nothing for each; Tab goes on.
    static void Cells(std::initializer_list<const char*> texts) {
        for (const char* text : texts) {
            Type(text);
            Press(Qt::Key_Tab);
        }
    }
    int SubmissionFiles() const {
        int files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            const std::string name = entry.path().filename().string();
            files += name.starts_with("HO149012.23A") || name.starts_with("PI149012.23A") ? 1 : 0;
        }
        return files;
    }
    static void CloseSheet() {
        const QPointer<QWidget> window = QApplication::activeWindow();
        ASSERT_TRUE(window);
        const std::string caption = S(window->windowTitle());
        Press(Qt::Key_W, Qt::ControlModifier);
        EXPECT_TRUE(WaitFor([&] { return !window || !window->isVisible(); })) << caption;
    }
};

TEST_F(KeyboardRoad, FromNewToTheSubmissionFiles) {
    Files.emplace_back(folder.File("Small.CRF"));
    Activate(main.get());
    QTest::keyClick(main.get(), Qt::Key_N, Qt::ControlModifier);
    Activate(Form("frmCreateNewCRF"));
    for (const char* text : {"149012", "1/1/2023", "12/31/2023", "Small Home Office"}) Field(text);
    Press(Qt::Key_Return);
    ASSERT_TRUE(WaitFor([] { return CrfIsOpen() && !FindForm("frmCreateNewCRF"); }));
    EXPECT_EQ(gProviderName, "Small Home Office");

    ByMenu(Qt::Key_E, {"Open ...", "A ...", "A"});
    auto* a = Opened("edit", "A");
    ASSERT_NE(a, nullptr);
    for (int i = 0; i < 20 && Current(a) != "8 Col_1"; ++i) Press(Qt::Key_Down);
    Cells({"1000"});
    CloseSheet();
    EXPECT_EQ(Stored("A", 8, "Col_1"), "1000");

    ByMenu(Qt::Key_E, {"Open ...", "A ...", "A-7 ....", "A-7 Part I"});
    ASSERT_NE(Opened("edit", "A7p1"), nullptr);
    Cells({"5000"});
    CloseSheet();
    EXPECT_EQ(Stored("A7p1", 1, "Col_1"), "5000");

    ByMenu(Qt::Key_E, {"Open ...", "S ...", "S-1  Part-1 (S1p1)"});
    auto* s1 = Opened("edit", "S1p1");
    ASSERT_NE(s1, nullptr);
    Cells({"1 Main Street", "", "", "Evanston", "IL", "60201"});
    // Line 2 is the identity; its date of operations can be keyed.
    for (const auto& [cell, text] : {std::pair{"2 Col_3", "7/1/1987"},
                                     {"3 Col_1", "1"},
                                     {"4 Col_1", "n"},
                                     {"4 Col_3", "y"},
                                     {"4 Col_5", "y"}}) {
        for (int i = 0; i < 60 && Current(s1) != cell; ++i)
            Press(Current(s1).substr(0, 1) < std::string(cell).substr(0, 1) ? Qt::Key_Down
                  : Current(s1) < std::string(cell)                         ? Qt::Key_Right
                                                                            : Qt::Key_Left);
        ASSERT_EQ(Current(s1), cell);
        Type(text);
        Press(Qt::Key_Return);
    }
    CloseSheet();
    EXPECT_EQ(Stored("S1p1", 4, "Col_5"), "Yes");
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());

    Activate(main.get());
    QTest::keyClick(main.get(), Qt::Key_F9);
    ASSERT_TRUE(WaitFor([this] { return FindForm("frmViewError") && !main->InLongStep(); }));
    std::string findings;
    Recordset rows = gDB.OpenRecordset("SELECT * FROM Error;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        if (Text(rows["Level"]) == "Non-Fatal Error") findings += Text(rows["Message"]) + "\n";
    EXPECT_EQ(findings, "");
    ASSERT_TRUE(Enabled("mnuReportSubmit"));
    Activate(Form("frmViewError"));
    Press(Qt::Key_Escape);
    ASSERT_TRUE(WaitFor([] { return !FindForm("frmViewError"); }));
    Files.emplace_back(folder.File("HO149012.23A1"));
    ByMenu(Qt::Key_R, {"Build an ECR file ...", "Sign Manually"});
    EXPECT_TRUE(WaitFor([this] { return SubmissionFiles() == 2; }));
}

}  // namespace
}  // namespace zolmara::ui
