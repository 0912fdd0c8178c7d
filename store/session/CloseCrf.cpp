// Closing a Cost Report File: temporary tables go, the file is repaired and compacted.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/WholeCrf.h"
#include "store/files/FileGuard.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

/// Work tables that are no part of a CRF's content, beside those that begin with "tbl".
constexpr std::array<std::string_view, 4> kTemporaryTables{"CalcAllErrLog", "NewCRFErrLog",
                                                           "NewMSAErrLog", "ImportASCII"};

bool IsTemporary(std::string_view table) {
    const auto named = [&](std::string_view name) { return SameText(name, table); };
    return table.starts_with("tbl") ||
           std::any_of(kTemporaryTables.begin(), kTemporaryTables.end(), named);
}

/// From the last table to the first, so that what is deleted moves no table still to be seen.
void DropTemporaryTables() {
    if (!CrfIsOpen() || gDB.IsReadOnly()) return;
    gDB.RefreshTableDefs();
    const std::vector<std::string> tables = gDB.TableNames();
    const bool any = std::any_of(tables.begin(), tables.end(), IsTemporary);
    if (!any) return;
    RunBatch(gDB, [&] {
        for (auto table = tables.rbegin(); table != tables.rend(); ++table) {
            if (IsTemporary(*table)) gDB.DeleteTable(*table);
        }
    });
}

/// Each step of a close is tried, and the next one follows whatever came of it.
void Try(const std::function<void()>& step) {
    try {
        step();
    } catch (const std::exception&) {
    }
}

void ShowRepair(const std::string& text) {
    TheDialogs().MsgBox(text, kExclamation, "Repair Report");
}

/// What a repair could not save is told: the user must know which cells to key again.
void RepairCrf() {
    try {
        const RepairReport report = DBEngine::RepairDatabase(gCRFPath);
        if (report.Losses.empty()) return;
        std::string text =
            gCRFPath + " was damaged and has been repaired.  These parts of it were lost:";
        for (const std::string& loss : report.Losses) text += "\r" + loss;
        ShowRepair(text);
    } catch (const StoreError& error) {
        const bool damaged = error.kind() == StoreError::Kind::Damaged ||
                             error.kind() == StoreError::Kind::NotADatabase;
        if (damaged)
            ShowRepair(fmt::format("{} could not be repaired.\r{}", gCRFPath, error.what()));
    }
}

/// The compact copy stands under the temporary name, and its pages go back from there into the
/// CRF, which keeps its name all through: see store/WholeCrf.cpp. Whoever finds another close at
/// work in the folder, or another program in the CRF, leaves the CRF as it is.
void CompactCrf(const std::string& temporary) {
    if (!FileExists(gCRFPath)) return;
    Try([&] { CompactCrfThrough(gCRFPath, temporary); });
    if (FileExists(gCRFPath)) return;
    TheDialogs().MsgBox(
        fmt::format("PLEASE CALL VLQ NOW, UNABLE TO COMPACT CRF AND UNABLE TO RENAME VLQTemp BACK "
                    "TO {}.",
                    gCRFPath),
        kCritical, "CRITICAL ERROR");
    TheMachine().EndProgram();
}

void RepairAndCompact() {
    const std::string temporary = (std::filesystem::path(gCRFDir) / kCompactionFile).string();
    Try([] { gDB.Close(); });
    // A CRF that itself has the temporary name is no leftover.
    const bool ownName = IsSameFile(gCRFPath, temporary) && gCRFTitle == kCompactionFile;
    if (!ownName) ClearCompaction(temporary);
    RepairCrf();
    TheStatus().DoEvents();
    TheStatus().ShowCalcMsg(" Compacting " + gCRFPath);
    if (!ownName) CompactCrf(temporary);
    for (const std::string& folder : {gCRFDir, FolderPathOf(BehindLinks(gCRFPath))})
        ClearScratch(folder);
}

void ResetSession() {
    TheStatus().DoEvents();
    DropCrf();
    TheStatus().HideCalcMsg();
    TheWindows().SetCaption(MainCaption());
    TheWindows().ShowWelcome();
    TheWindows().RefreshMenus();
}

/// The main window is blocked as long as a close runs, and comes back whatever ends it.
class BlockedMain {
public:
    BlockedMain() {
        TheStatus().SetPointer(Pointer::Hourglass);
        TheWindows().EnableMain(false);
        TheStatus().DoEvents();
    }
    ~BlockedMain() {
        TheStatus().SetPointer(Pointer::Normal);
        TheWindows().EnableMain(true);
    }
    BlockedMain(const BlockedMain&) = delete;
    BlockedMain& operator=(const BlockedMain&) = delete;
};

}  // namespace

void mnuReportClose() {
    const BlockedMain blocked;
    if (CloseAllForms(false) != 0) return;
    TheStatus().ShowCalcMsg(" Repairing " + gCRFPath);
    // A damaged file may refuse it, and the repair is what that file needs.
    Try(DropTemporaryTables);
    if (!gCRFPath.empty()) RepairAndCompact();
    ResetSession();
}

}  // namespace zolmara
