#include "ui/main/WorksheetRoads.h"

#include <fmt/format.h>

#include <QWidget>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "forms/WorksheetForm.h"
#include "store/session/Session.h"
#include "ui/main/MainCommands.h"
#include "ui/main/MenuTable.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/frmMain.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "worksheets/Explain.h"

namespace zolmara::ui {
namespace {

/// The entry of the menus that opens a worksheet; the S worksheets share one rule.
std::string EntryOf(const std::string& mode, const std::string& item) {
    for (const MenuEntry& entry : MenuTable()) {
        if (entry.Mode != mode || entry.Item.empty()) continue;
        if (entry.Item == item || (entry.Item == "S" && item.starts_with('S'))) return entry.Name;
    }
    return {};
}

/// The window that stands in the way: one that bars all others, or a helper.
QWidget* BarringForm() {
    for (QWidget* const form : OpenForms()) {
        const std::string name = S(form->objectName());
        const bool sheet = IsWorksheetForm(form) && name != "frmEditCCs" && name != "frmEditS1p1";
        if (!sheet && name != "frmMain") return form;
    }
    return nullptr;
}

void TellBarred(const std::string& mode, const std::string& item) {
    const QWidget* const form = BarringForm();
    const std::string first =
        form ? fmt::format("\"{}\" must be closed first.", S(form->windowTitle()))
             : std::string("Another step is at work.");
    TheDialogs().MsgBox(
        fmt::format("Worksheet {} cannot be opened to {} now.  {}", item, mode, first),
        kExclamation, std::string(kProductName));
}

std::string ItemOfTable(const std::string& table) { return table == "CostCenters" ? "CCs" : table; }

std::string ModeFor(const CellRef& cell, const std::string& item) {
    if (StateOf(cell) == CellState::Keyed || FindOpenForm("edit", item)) return "edit";
    return "view";
}

}  // namespace

bool GoToWorksheet(const std::string& asked, const std::string& item, std::optional<Currency> line,
                   const std::string& column) {
    const frmMain* const main = TheQtHost().Main();
    const std::string mode =
        asked == "edit" && !HasForm(FormMode::Edit, item) ? std::string("view") : asked;
    if (FindOpenForm(mode, item)) {
        OpenWorksheet(mode, item, line, column);
        return true;
    }
    if (main && !main->MenuOn(EntryOf(mode, item))) {
        TellBarred(mode, item);
        return false;
    }
    RunWorksheetEntry(mode, item, line, column);
    return true;
}

bool GoToCell(const CellRef& cell) {
    const std::string item = ItemOfTable(cell.Item);
    return GoToWorksheet(ModeFor(cell, item), item, cell.Line, cell.Field);
}

}  // namespace zolmara::ui
