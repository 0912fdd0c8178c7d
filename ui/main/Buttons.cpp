#include "ui/main/Buttons.h"

#include <QHBoxLayout>
#include <QShortcut>

#include "ui/main/Guard.h"
#include "ui/main/QtHost.h"

namespace zolmara::ui {

QPushButton* MakeButton(const char* name, const QString& caption, std::function<void()> action) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove('&'));
    QObject::connect(button, &QPushButton::clicked, button, [action = std::move(action)] {
        if (TheQtHost().InLongStep()) return;
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

void PressOnReturn(QWidget* form, QPushButton* button) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(key), form);
        QObject::connect(shortcut, &QShortcut::activated, button, [button] { button->click(); });
    }
    button->setDefault(true);
}

}  // namespace zolmara::ui
