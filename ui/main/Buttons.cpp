#include "ui/main/Buttons.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QShortcut>
#include <QToolButton>

#include "ui/main/Guard.h"
#include "ui/main/QtHost.h"

namespace zolmara::ui {

QPushButton* MakeButton(const char* name, const QString& caption, std::function<void()> action) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove('&'));
    TakesReturn(button);
    QObject::connect(button, &QPushButton::clicked, button, [action = std::move(action)] {
        if (TheQtHost().InLongStep() || CommandAtWork()) return;
        // The window may be gone, and the button with it, before the end.
        const std::function<void()> run = action;
        Guarded(run);
    });
    return button;
}

QWidget* MakeButtonStrip(std::initializer_list<QPushButton*> buttons) {
    auto* strip = new QWidget;
    strip->setObjectName("picButtons");
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch(1);
    for (QPushButton* button : buttons) row->addWidget(button);
    return strip;
}

void PressOnEscape(QWidget* form, QPushButton* button) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::Key_Escape), form);
    QObject::connect(shortcut, &QShortcut::activated, button, [button] { button->click(); });
}

namespace {

/// Return on a button means that button, whatever the window's own one is.
void PressFocused(QWidget* form, QPushButton* button) {
    auto* const focused = qobject_cast<QPushButton*>(form->focusWidget());
    (focused && focused->hasFocus() ? focused : button)->click();
}

class ReturnFilter : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
        static_cast<QPushButton*>(watched)->click();
        return true;
    }
};

}  // namespace

void TakesReturn(QPushButton* button) {
    static ReturnFilter filter;
    button->installEventFilter(&filter);
}

void PressOnReturn(QWidget* form, QPushButton* button) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(key), form);
        QObject::connect(shortcut, &QShortcut::activated, button,
                         [form, button] { PressFocused(form, button); });
    }
    button->setDefault(true);
}

// --- Letters -------------------------------------------------------------------------------

namespace {

bool PressByShortcut(QObject* watched, const QShortcutEvent& shortcut) {
    auto* const button = qobject_cast<QAbstractButton*>(watched);
    // A letter of two buttons goes from one to the other, and a tool button may have a menu.
    if (!button || shortcut.isAmbiguous() || qobject_cast<QToolButton*>(watched)) return false;
    // A key that is held down adds one line, and not as many as it repeats.
    button->setShortcutAutoRepeat(shortcut.shortcutId(), false);
    if (button->isCheckable() && (button->focusPolicy() & Qt::ClickFocus)) button->setFocus();
    button->click();
    return true;
}

/// In a box the letter alone is enough.
bool PressInBox(QObject* watched, const QKeyEvent& key) {
    auto* const box = qobject_cast<QMessageBox*>(watched);
    if (!box || (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)))
        return false;
    for (QAbstractButton* button : box->buttons()) {
        const QKeySequence letter = button->shortcut();
        if (letter.isEmpty() || letter[0].key() != key.key()) continue;
        button->click();
        return true;
    }
    return false;
}

class LetterFilter : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Shortcut)
            return PressByShortcut(watched, *static_cast<QShortcutEvent*>(event));
        if (event->type() == QEvent::KeyPress)
            return PressInBox(watched, *static_cast<QKeyEvent*>(event));
        return false;
    }
};

}  // namespace

void PressAtOnce() {
    static LetterFilter filter;
    qApp->installEventFilter(&filter);
}

}  // namespace zolmara::ui
