// Closing a Cost Report File: temporary tables go, the file is repaired and compacted.

#include "store/session/CloseCrf.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <optional>

#include "core/BusyMain.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/WholeCrf.h"
#include "store/files/FileGuard.h"
#include "store/session/Acts.h"
#include "store/session/RepairCrf.h"
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
    RunUnnamedAct([&] {
        for (auto table = tables.rbegin(); table != tables.rend(); ++table) {
            if (IsTemporary(*table)) gDB.DeleteTable(*table);
        }
    });
}

/// Each step of a close is tried, and the next one follows whatever came of it.
class Steps {
public:
    void Try(const std::function<void()>& step) {
        try {
            step();
        } catch (const std::exception& error) {
            Note(PlainWords(error));
        }
    }
    void Note(const std::string& trouble) {
        if (!trouble_) trouble_ = trouble;
    }
    const std::optional<std::string>& Trouble() const { return trouble_; }

private:
    std::optional<std::string> trouble_;
};

/// What a repair could not save is told: the user must know which cells to key again.
void RepairAndTell(Steps& steps) {
    try {
        ShowRepairReport(gCRFPath, RepairCrf(gCRFPath));
    } catch (const StoreError& error) {
        steps.Note(PlainWords(error));
        const bool damaged = error.kind() == StoreError::Kind::Damaged ||
                             error.kind() == StoreError::Kind::NotADatabase;
        if (damaged)
            TheDialogs().MsgBox(
                fmt::format("{} could not be repaired.\r{}", gCRFPath, PlainWords(error)),
                kExclamation, "Repair Report");
    }
}

/// The compact copy stands under the temporary name, and its pages go back from there into the
/// CRF, which keeps its name all through: see store/WholeCrf.cpp. Whoever finds another close at
/// work in the folder, or another program in the CRF, leaves the CRF as it is.
void CompactCrf(const std::string& temporary, Steps& steps) {
    if (!FileExists(gCRFPath)) return;
    steps.Try([&] { CompactCrfThrough(gCRFPath, temporary); });
    if (FileExists(gCRFPath)) return;
    TheDialogs().MsgBox(
        fmt::format("PLEASE CALL VLQ NOW, UNABLE TO COMPACT CRF AND UNABLE TO RENAME VLQTemp BACK "
                    "TO {}.",
                    gCRFPath),
        kCritical, "CRITICAL ERROR");
    TheMachine().EndProgram();
}

void RepairAndCompact(Steps& steps) {
    const std::string temporary = (std::filesystem::path(gCRFDir) / kCompactionFile).string();
    steps.Try([] { gDB.Close(); });
    // A CRF that itself has the temporary name is no leftover.
    const bool ownName = IsSameFile(gCRFPath, temporary) && gCRFTitle == kCompactionFile;
    if (!ownName) ClearCompaction(temporary);
    RepairAndTell(steps);
    TheStatus().DoEvents();
    TheStatus().ShowCalcMsg(" Compacting " + gCRFPath);
    if (!ownName) CompactCrf(temporary, steps);
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

}  // namespace

std::optional<std::string> CloseCrf() {
    const BusyMain busy;
    TheStatus().DoEvents();
    if (CloseAllForms(false) != 0) return std::nullopt;
    Steps steps;
    TheStatus().ShowCalcMsg(" Repairing " + gCRFPath);
    // A damaged file may refuse it, and the repair is what that file needs.
    Steps().Try(DropTemporaryTables);
    if (!gCRFPath.empty()) RepairAndCompact(steps);
    ResetSession();
    return steps.Trouble();
}

void mnuReportClose() { CloseCrf(); }

}  // namespace zolmara
