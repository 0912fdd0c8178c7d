// The menus of the main window: how they are made, and what is on in which state.

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/MainCommands.h"
#include "ui/main/MenuTable.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/main/frmMain.h"

namespace zolmara::ui {

// --- Making --------------------------------------------------------------------------------

void frmMain::MakeMenus() {
    menuBar()->setObjectName("MenuBar");
    for (const MenuEntry& entry : MenuTable()) MakeMenu(entry);
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
        MakeCommand(entry, parent);
    }
}

void frmMain::MakeCommand(const MenuEntry& entry, QMenu* parent) {
    auto* const action = new QAction(Q(entry.Caption), this);
    action->setObjectName(Q(entry.Name));
    if (!entry.Shortcut.empty()) action->setShortcut(QKeySequence(Q(entry.Shortcut)));
    parent->addAction(action);
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

void frmMain::EnableMenu(const std::string& name, bool enabled) {
    if (QAction* const action = Menu(name)) action->setEnabled(enabled);
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

void frmMain::ReadWorksheetMenus() {
    EnableMenu("mnuEditOpenS", false);
    EnableMenu("mnuViewOpenS", false);
    int count = 0;
    Recordset rows = gDB.OpenRecordset(
        "SELECT Item, ItemName FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY ItemName;",
        dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string item = StrOr(rows["Item"]);
        if (!item.starts_with('S')) continue;
        EnableMenu("mnuEditOpenS", true);
        EnableMenu("mnuViewOpenS", true);
        const std::string caption = StrOr(rows["ItemName"]) + " (" + item + ")";
        FillSheetArray("mnuEditSx", count, caption);
        FillSheetArray("mnuViewSx", count, caption);
        ++count;
    }
    TrimSheetArray("mnuEditSx", count);
    TrimSheetArray("mnuViewSx", count);
}

// --- States --------------------------------------------------------------------------------

/// False where a helper window stands open, which ends the matter.
bool frmMain::MenusOfOpenForms() {
    EnableMenu("mnuEditOpen", true);
    EnableMenu("mnuViewOpen", true);
    const auto bar = [this] {
        EnableMenu("mnuEditOpen", false);
        EnableMenu("mnuViewOpen", false);
    };
    const std::vector<QWidget*> open = OpenForms();
    for (auto form = open.rbegin(); form != open.rend(); ++form) {
        const QString name = (*form)->objectName().toUpper();
        const QString kind = name.left(7);
        if (kind == "FRMVIEW") {
            EnableMenu("mnuViewCloseAll", true);
        } else if (kind == "FRMEDIT") {
            if (!gDebug && (name == "FRMEDITCCS" || name == "FRMEDITS1P1")) bar();
            EnableMenu("mnuEditClose", true);
        } else if (kind != "FRMMAIN" && kind != "FRMSPLA") {
            bar();
            EnableMenu("mnuReportOpen", false);
            return false;
        }
    }
    return true;
}

void frmMain::RefreshMenus() {
    const bool submit = Menu("mnuReportSubmit")->isEnabled();
    for (const auto& [name, action] : menus_) action->setEnabled(true);
    EnableMenu("mnuReportSubmit", submit);
    Menu("mnuReportEditCheck")->setVisible(gDebug);
    for (const std::string_view name : kOffAtRest) EnableMenu(std::string(name), false);
    if (!CrfIsOpen() || !MenusOfOpenForms()) return;
    try {
        ReadWorksheetMenus();
    } catch (const StoreError&) {
        // A CRF without its registry can still be closed.
    }
    for (const std::string_view name : kOnWithCrf) EnableMenu(std::string(name), true);
    EnableMenu("mnuReportImportCRF", false);
    if (gDebug) EnableMenu("mnuReportSubmit", true);
}

}  // namespace zolmara::ui
