// The menus of the main window: how they are made, and what is on in which state.

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/MainCommands.h"
#include "ui/main/MenuState.h"
#include "ui/main/MenuTable.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/frmMain.h"
#include "ui/tools/ToolsMenu.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {

// --- Making --------------------------------------------------------------------------------

void frmMain::MakeMenus() {
    menuBar()->setObjectName("MenuBar");
    for (const MenuEntry& entry : MenuTable()) MakeMenu(entry);
    tools_ = std::make_unique<ToolsMenu>(*menuBar(), Menu("mnuHelp"),
                                         [this](const auto& command) { Run(command); });
    auto* const openMenus = new QAction(this);
    openMenus->setObjectName("actMenuBar");
    openMenus->setShortcut(Qt::Key_F10);
    openMenus->setShortcutContext(Qt::ApplicationShortcut);
    connect(openMenus, &QAction::triggered, this, [this] { OpenMenuBar(); });
    addAction(openMenus);
}

/// The menus are in one window, and F10 leads to them from all. A row that is refused holds its
/// window the first time.
void frmMain::OpenMenuBar() {
    auto* const sheet = dynamic_cast<frmWorksheet*>(QApplication::activeWindow());
    if (InLongStep() || (sheet && !sheet->MayBeLeft())) return;
    ShowForm(this);
    menuBar()->setActiveAction(Menu("mnuReport"));
}

void frmMain::MakeMenu(const MenuEntry& entry) {
    QMenu* const parent = entry.Parent.empty() ? nullptr : parents_.at(entry.Parent);
    if (entry.Kind == MenuKind::Separator) {
        parent->addSeparator()->setObjectName(Q(entry.Name));
    } else if (entry.Kind == MenuKind::Parent) {
        QMenu* const menu =
            parent ? parent->addMenu(Q(entry.Caption)) : menuBar()->addMenu(Q(entry.Caption));
        menu->setObjectName(Q(entry.Name));
        menu->menuAction()->setObjectName(Q(entry.Name));
        parents_[entry.Name] = menu;
        menus_[entry.Name] = menu->menuAction();
    } else {
        MakeCommand(entry, *parents_.at(entry.Parent));
    }
}

void frmMain::MakeCommand(const MenuEntry& entry, QMenu& parent) {
    auto* const action = new QAction(Q(entry.Caption), this);
    action->setObjectName(Q(entry.Name));
    if (!entry.Shortcut.empty()) action->setShortcut(QKeySequence(Q(entry.Shortcut)));
    parent.addAction(action);
    menus_[entry.Name] = action;
    connect(action, &QAction::triggered, this,
            [this, action, mode = entry.Mode, item = entry.Item] {
                const std::string name = S(action->objectName());
                Run([&] {
                    if (mode.empty())
                        RunCommand(*this, name);
                    else
                        RunWorksheetEntry(mode, name.find("Sx(") != std::string::npos
                                                    ? ItemOfCaption(S(action->text()))
                                                    : item);
                });
            });
}

QAction* frmMain::Menu(const std::string& name) const {
    const auto found = menus_.find(name);
    return found == menus_.end() ? nullptr : found->second;
}

// --- The S worksheets ----------------------------------------------------------------------

void frmMain::FillSheetArray(const std::string& array, int index, const std::string& caption) {
    const std::string name = MemberName(array, index);
    if (!Menu(name)) {
        const bool view = array.starts_with("mnuView");
        MakeMenu({.Name = name,
                  .Parent = view ? "mnuViewOpenS" : "mnuEditOpenS",
                  .Caption = caption,
                  .Kind = MenuKind::Command,
                  .Shortcut = "",
                  .Mode = view ? "view" : "edit",
                  .Item = "S"});
    }
    Menu(name)->setText(Q(caption));
}

void frmMain::TrimSheetArray(const std::string& array, int keep) {
    for (int index = std::max(keep, 1);; ++index) {
        const auto found = menus_.find(MemberName(array, index));
        if (found == menus_.end()) return;
        found->second->deleteLater();
        parents_.at(array.starts_with("mnuView") ? "mnuViewOpenS" : "mnuEditOpenS")
            ->removeAction(found->second);
        menus_.erase(found);
    }
}

/// A CRF without its registry can still be closed.
void frmMain::ReadWorksheetMenus() {
    int count = 0;
    try {
        Recordset rows = gDB.OpenRecordset(
            "SELECT Item, ItemName FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY ItemName;",
            dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) {
            const std::string item = StrOr(rows["Item"]);
            if (!item.starts_with('S')) continue;
            const std::string caption = StrOr(rows["ItemName"]) + " (" + item + ")";
            FillSheetArray("mnuEditSx", count, caption);
            FillSheetArray("mnuViewSx", count, caption);
            ++count;
        }
    } catch (const StoreError&) {
        count = 0;
    }
    sWorksheets_ = count > 0;
    TrimSheetArray("mnuEditSx", count);
    TrimSheetArray("mnuViewSx", count);
}

// --- States --------------------------------------------------------------------------------

MenuInputs frmMain::Inputs() const {
    MenuInputs inputs{.CrfOpen = CrfIsOpen(),
                      .Debug = gDebug,
                      .MaySubmit = maySubmit_,
                      .Barred = blocked_,
                      .SWorksheets = sWorksheets_,
                      .Held = held_,
                      .Forms = {}};
    for (const QWidget* form : OpenForms()) inputs.Forms.push_back(S(form->objectName()));
    return inputs;
}

bool frmMain::MenuOn(const std::string& name) const { return MenuIsOn(name, Inputs()); }

void frmMain::SetMenus() {
    const MenuInputs inputs = Inputs();
    for (const auto& [name, action] : menus_) action->setEnabled(MenuIsOn(name, inputs));
    Menu("mnuReportEditCheck")->setVisible(gDebug);
    RefreshTools();
}

/// The gate of the submission is a part of the session's state. Any other entry is held by the
/// step that turns it off, and given back by the same one.
void frmMain::EnableMenu(const std::string& name, bool enabled) {
    if (name == "mnuReportSubmit") {
        maySubmit_ = enabled;
    } else if (enabled) {
        held_.erase(name);
    } else {
        held_.insert(name);
    }
    SetMenus();
}

void frmMain::RefreshMenus() {
    if (!CrfIsOpen()) {
        maySubmit_ = false;
    } else if (!HelperIsOpen(Inputs())) {
        ReadWorksheetMenus();
    }
    SetMenus();
}

// --- Tools ---------------------------------------------------------------------------------

void frmMain::RefreshTools() {
    if (tools_) tools_->Refresh(!InLongStep());
    LookAtStatement();
}

}  // namespace zolmara::ui
