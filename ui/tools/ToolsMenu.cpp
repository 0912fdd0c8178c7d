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
    QAction* const action = menu.addAction(Q(tool.Caption));
    action->setObjectName(Q(tool.Name));
    action->setCheckable(static_cast<bool>(tool.IsChecked));
    if (!tool.Shortcut.empty()) {
        action->setShortcut(QKeySequence(Q(tool.Shortcut)));
        action->setShortcutContext(Qt::ApplicationShortcut);
    }
    QObject::connect(action, &QAction::triggered, &menu, [this, command = tool] {
        // What the rule looked at may have changed since the menu was set.
        if (command.IsOn()) run_(command.Run);
    });
    entries_.push_back({tool, action});
}

void ToolsMenu::Refresh(bool takesCommands) {
    for (const Entry& entry : entries_) {
        entry.Action->setEnabled(takesCommands && entry.Command.IsOn());
        if (entry.Command.CaptionNow) entry.Action->setText(Q(entry.Command.CaptionNow()));
        if (entry.Command.IsChecked) entry.Action->setChecked(entry.Command.IsChecked());
    }
}

}  // namespace zolmara::ui
