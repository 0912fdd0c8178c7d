#include "ui/main/Buttons.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>

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

}  // namespace zolmara::ui
