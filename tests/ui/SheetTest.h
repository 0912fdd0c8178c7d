#pragma once

// Worksheet windows, driven as a person drives them: by keys and clicks that go through the
// window system.

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <string>

#include "UiTest.h"
#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {

class SheetTest : public UiTest {
protected:
    /// A worksheet's window, opened as every part of the program opens it.
    frmWorksheet* Sheet(const std::string& mode, const std::string& item) {
        OpenWorksheet(mode, item);
        auto* const window = dynamic_cast<frmWorksheet*>(FindOpenForm(mode, item));
        if (!window) ADD_FAILURE() << "no window to " << mode << " " << item;
        if (window) Activate(window);
        return window;
    }
    static void Activate(QWidget* window) {
        ASSERT_NE(window, nullptr);
        window->activateWindow();
        // A dialog may be called active while the keys still go to the window behind it.
        EXPECT_TRUE(WaitFor([&] {
            return window->windowHandle() && QApplication::focusWindow() == window->windowHandle();
        })) << S(window->objectName());
    }
    /// Waits until a worksheet's window has opened, and turns to it.
    static frmWorksheet* Opened(const std::string& mode, const std::string& item) {
        EXPECT_TRUE(WaitFor([&] { return FindOpenForm(mode, item) != nullptr; })) << item;
        auto* const window = dynamic_cast<frmWorksheet*>(FindOpenForm(mode, item));
        if (window) Activate(window);
        return window;
    }
    /// From now on a box is a window of its own, as the user has it, so that the worksheet is not
    /// the active one meanwhile. It is answered with Return as soon as it has the keys.
    void AnswerRealBoxes() {
        TheDesktop().MsgBox = [this](const std::string& text, int style, const std::string& title) {
            Boxes.push_back({text, style, title, kOk});
            QTimer answer;
            answer.callOnTimeout([&] {
                QWidget* const box = QApplication::activeModalWidget();
                if (!box || !box->isActiveWindow()) return;
                answer.stop();
                QTest::keyClick(box, Qt::Key_Return);
            });
            answer.start(1);
            return RealDesktop().MsgBox(text, style, title);
        };
    }
    /// Makes a cell current.
    static void At(frmWorksheet* window, double line, const std::string& field) {
        window->GoToLine(Currency(line), field);
        const QModelIndex current = window->Grid().currentIndex();
        ASSERT_TRUE(current.isValid());
        ASSERT_EQ(window->Model().Line(current.row()), Currency(line));
        ASSERT_EQ(window->Model().Column(current.column()).Field, field);
    }
    /// Where keys go; a popup that has just closed leaves it empty for a moment.
    static QWindow* Focused() {
        if (!QApplication::focusWindow() && !WorksheetWindows().empty())
            Activate(WorksheetWindows().back());
        return QApplication::focusWindow();
    }
    static void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(Focused(), static_cast<Qt::Key>(key), modifiers);
    }
    static void Type(const std::string& text) {
        for (const char c : text) QTest::keyClick(Focused(), c);
    }
    /// Types into a cell and leaves it by Enter.
    static void Enter(frmWorksheet* window, double line, const std::string& field,
                      const std::string& text) {
        At(window, line, field);
        Type(text);
        Press(Qt::Key_Return);
    }
    static std::string Current(const frmWorksheet* window) {
        const QModelIndex at = const_cast<frmWorksheet*>(window)->Grid().currentIndex();
        if (!at.isValid()) return "";
        return NumberText(window->Model().Line(at.row())) + " " +
               window->Model().Column(at.column()).Field;
    }
    static std::string Shown(frmWorksheet* window, double line, const std::string& field) {
        return S(window->Model().Shown(window->Model().RowOf(Currency(line)),
                                       window->Form().ColumnOf(field)));
    }
    static std::string Stored(const std::string& item, double line, const std::string& field,
                              const std::string& key = "LineNum") {
        return Text(gDB.Scalar("SELECT " + field + " FROM " + item + " WHERE " + key + " = ?;",
                               {Currency(line)}));
    }
    static std::string Status(frmWorksheet* window) {
        const auto* const due = window->findChild<QTimer*>("tmrStatus");
        EXPECT_TRUE(WaitFor([&] { return !due->isActive(); }));
        return S(window->findChild<QLabel*>("lblStatus")->text());
    }
    static QPushButton* Button(frmWorksheet* window, const std::string& name) {
        auto* const button = window->findChild<QPushButton*>(Q(name));
        if (!button) ADD_FAILURE() << "no " << name;
        return button;
    }
    static QString Tooltip(frmWorksheet* window, const std::string& name) {
        return Button(window, name)->toolTip();
    }
};

}  // namespace zolmara::ui
