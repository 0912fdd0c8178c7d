#include "ui/tools/ToolsMenu.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "ui/main/QtText.h"

namespace zolmara::ui {

ToolsMenu::ToolsMenu(QMenuBar& bar, QAction* ahead, Runner run) : run_(std::move(run)) {
    auto* const menu = new QMenu("&Tools", &bar);
    menu->setObjectName("tlsTools");
    menu->menuAction()->setObjectName("tlsTools");
    bar.insertMenu(ahead, menu);
    for (const Tool& tool : Tools()) Add(*menu, tool);
    menu->menuAction()->setVisible(!entries_.empty());
}

void ToolsMenu::Add(QMenu& menu, const Tool& tool) {
    if (tool.LineAhead) menu.addSeparator();
    QAction* const action = tool.Choices ? AddList(menu, tool) : menu.addAction(Q(tool.Caption));
    action->setObjectName(Q(tool.Name));
    action->setCheckable(static_cast<bool>(tool.IsChecked));
    if (!tool.Shortcut.empty()) {
        action->setShortcut(QKeySequence(Q(tool.Shortcut)));
        action->setShortcutContext(tool.MainOnly ? Qt::WindowShortcut : Qt::ApplicationShortcut);
    }
    QObject::connect(action, &QAction::triggered, &menu, [this, command = tool] {
        // What the rule looked at may have changed since the menu was set.
        if (command.Run && command.IsOn()) run_(command.Run);
    });
    entries_.push_back({tool, action});
}

/// What stands in the list is asked for when it opens.
QAction* ToolsMenu::AddList(QMenu& menu, const Tool& tool) {
    QMenu* const list = menu.addMenu(Q(tool.Caption));
    QObject::connect(list, &QMenu::aboutToShow, list, [this, list, choices = tool.Choices] {
        list->clear();
        for (const ToolChoice& choice : choices()) {
            QAction* const entry = list->addAction(Q(choice.Caption).replace("&", "&&"));
            QObject::connect(entry, &QAction::triggered, list,
                             [this, run = choice.Run] { run_(run); });
        }
    });
    return list->menuAction();
}

void ToolsMenu::Refresh(bool takesCommands) {
    for (const Entry& entry : entries_) {
        entry.Action->setEnabled(takesCommands && entry.Command.IsOn());
        if (entry.Command.CaptionNow) entry.Action->setText(Q(entry.Command.CaptionNow()));
        if (entry.Command.IsChecked) entry.Action->setChecked(entry.Command.IsChecked());
    }
}

}  // namespace zolmara::ui
