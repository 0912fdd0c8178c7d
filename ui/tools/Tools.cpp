#include "ui/tools/Tools.h"

#include "store/session/Session.h"
#include "ui/dialogs/frmImportMDI.h"
#include "ui/dialogs/frmNewFromLastYear.h"
#include "ui/main/Done.h"
#include "ui/main/FileRoads.h"
#include "ui/main/QtHost.h"
#include "ui/main/frmMain.h"
#include "ui/tools/EntryCalculation.h"
#include "ui/tools/ExplainWindow.h"
#include "ui/tools/ExportTool.h"
#include "ui/tools/SearchWindow.h"
#include "ui/tools/SettingsWindow.h"
#include "ui/tools/UndoRedo.h"
#include "ui/tools/frmBackups.h"
#include "ui/tools/frmCompare.h"
#include "ui/worksheets/NextFinding.h"

namespace zolmara::ui {
namespace {

std::vector<ToolChoice> RecentChoices() {
    std::vector<ToolChoice> choices;
    for (const std::string& file : RecentFiles())
        choices.push_back({file, [file] { OpenFile(file); }});
    return choices;
}

void ToggleEntryCalculation() {
    EntryCalculation::Toggle();
    TellDone(EntryCalculation::IsOn() ? "Each entry is calculated" : "Entries are not calculated");
}

}  // namespace

// NOLINTNEXTLINE(readability-function-size): a table.
std::vector<Tool>& Tools() {
    static std::vector<Tool> tools = {
        {.Name = "tlsEntryCalculation",
         .Caption = "&Calculate after each entry",
         .Run = ToggleEntryCalculation,
         .IsChecked = EntryCalculation::IsOn},
        {.Name = "tlsUndo",
         .Caption = "&Undo",
         .Shortcut = "Ctrl+Z",
         .LineAhead = true,
         .IsOn = CanUndo,
         .Run = Undo,
         .CaptionNow = UndoCaption},
        {.Name = "tlsRedo",
         .Caption = "&Redo",
         .Shortcut = "Ctrl+Y",
         .IsOn = CanRedo,
         .Run = Redo,
         .CaptionNow = RedoCaption},
        {.Name = "tlsBackups", .Caption = "&Backups ...", .IsOn = CrfIsOpen, .Run = ShowBackups},
        {.Name = "tlsCompare",
         .Caption = "Compare &With ...",
         .IsOn = CrfIsOpen,
         .Run = ShowComparison},
        {.Name = "tlsFind",
         .Caption = "&Search ...",
         .Shortcut = "Ctrl+F",
         .LineAhead = true,
         .IsOn = CrfIsOpen,
         .Run = ShowSearch,
         .MainOnly = true},
        {.Name = "tlsExplain",
         .Caption = "E&xplain This Number",
         .Shortcut = "F3",
         .IsOn = HasCellToExplain,
         .Run = [] { ExplainCurrentCell(Direction::From); }},
        {.Name = "tlsUses",
         .Caption = "What &Depends On This",
         .Shortcut = "Shift+F3",
         .IsOn = HasCellToExplain,
         .Run = [] { ExplainCurrentCell(Direction::Uses); }},
        {.Name = "tlsNextFinding",
         .Caption = "&Next Finding",
         .Shortcut = "F8",
         .IsOn = CrfIsOpen,
         .Run = OpenNextFinding},
        {.Name = "tlsRecent",
         .Caption = "Recent &Files",
         .LineAhead = true,
         .IsOn = [] { return !RecentFiles().empty(); },
         .Choices = RecentChoices},
        {.Name = "tlsImportCRF",
         .Caption = "&Take Over From Another CRF ...",
         .IsOn = CrfIsOpen,
         .Run = ShowImportCRF},
        {.Name = "tlsExport",
         .Caption = "&Export To Spreadsheet ...",
         .IsOn = CrfIsOpen,
         .Run = [] { ExportToSpreadsheet(); }},
        {.Name = "tlsCells",
         .Caption = "Save &Keyed Cells As ...",
         .IsOn = CrfIsOpen,
         .Run = SaveKeyedCells},
        {.Name = "tlsTemplate",
         .Caption = "Save A Te&mplate To Fill ...",
         .IsOn = CrfIsOpen,
         .Run = SaveTemplate},
        {.Name = "tlsNewFromLastYear",
         .Caption = "New From &Last Year ...",
         .Run = ShowNewFromLastYear},
        {.Name = "tlsSettings", .Caption = "Settin&gs ...", .LineAhead = true, .Run = ShowSettings},
    };
    return tools;
}

void RefreshTools() {
    if (frmMain* const main = TheQtHost().Main()) main->RefreshTools();
}

}  // namespace zolmara::ui
