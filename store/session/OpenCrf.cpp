// Opening a Cost Report File, and saving it under another name.

#include <fmt/format.h>

#include <functional>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/LostFile.h"
#include "store/ReadSnapshot.h"
#include "store/WholeCrf.h"
#include "store/files/NotConfirmed.h"
#include "store/files/PutJournal.h"
#include "store/session/Acts.h"
#include "store/session/Backups.h"
#include "store/session/ReadSession.h"
#include "store/session/RepairCrf.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

const DateTime& FirstDayOfForm() {
    static const DateTime day(2022, 10, 1);
    return day;
}

constexpr std::string_view kThisForm = "287";

/// What the table Master says of a file.
struct Identity {
    std::string FormNum;
    Variant FYStart;
    Variant FYEnd;
    std::string ProviderName;
    std::string ProviderNumber;
};

Identity ReadIdentity() {
    const auto foreign = [] {
        return StoreError(StoreError::Kind::NotADatabase,
                          fmt::format("{}: is not a Cost Report File", gCRFPath));
    };
    const ReadSnapshot snapshot(gDB);
    if (!gDB.HasTable("Master")) throw foreign();
    const Recordset master = gDB.OpenRecordset("Master", dbOpenTable);
    if (master.Empty()) throw foreign();
    return {StrOr(master["FormNum"]), master["FYStart"], master["FYEnd"],
            StrOr(master["ProviderName"]), StrOr(master["ProviderNumber"])};
}

void TakeIdentity(const Identity& identity) {
    gFYEnd = identity.FYEnd;
    gFYStart = identity.FYStart;
    gFormNum = identity.FormNum;
    gProviderName = identity.ProviderName;
    gProviderNumber = identity.ProviderNumber;
}

/// A refused file goes the way of every other one: it is repaired and compacted.
void CloseRefused() {
    mnuReportClose();
    DropCrf();
    TheStatus().SetPointer(Pointer::Normal);
}

bool RefuseForm(const std::string& formNum) {
    if (formNum == kThisForm) return false;
    TheDialogs().Beep();
    MsgOrLog(fmt::format("You are presently running {}.  This program is for use only in producing "
                         "CMS 287 Cost Reports.  You have just attempted to open a CRF file ({}) "
                         "containing data for a CMS {} Cost Report.  Your request is being "
                         "aborted.  Select OK to proceed.",
                         kProductName, gCRFTitle, formNum),
             kCritical, "Error: Attempting to Open Invalid CRF file");
    CloseRefused();
    return true;
}

/// A file without a first day passes.
bool RefusePeriod(const Variant& start) {
    const std::optional<DateTime> day = DateOf(start);
    if (gDebug || !day || *day >= FirstDayOfForm()) return false;
    MsgOrLog(
        "287-22 does not support CRFs before 10/1/2022, run 287-05 or call Velquist at "
        "555-010-0143 for assistance.",
        kCritical, "Old CRF");
    CloseRefused();
    return true;
}

bool OpenAndCheck() {
    // Submission files whose build died between their two names.
    FinishPuts(gCRFDir);
    gDB = DBEngine::OpenDatabase(gCRFPath);
    const Identity identity = ReadIdentity();
    if (RefuseForm(identity.FormNum) || RefusePeriod(identity.FYStart)) return false;
    TakeIdentity(identity);
    UpgradeCRF();
    TheWindows().ShowCrf(gCRFPath);
    TheWindows().StartHelpText();
    RebuildComponentFlags();
    return true;
}

void AfterCancelledOpen() {
    if (CrfIsOpen()) {
        TheWindows().ShowCrf(gCRFPath);
    } else {
        TheWindows().SetWelcomeVisible(true);
    }
    TheStatus().SetPointer(Pointer::Normal);
}

void TakeFile(const std::string& path) {
    SetCrfPath(path);
    RememberFolder("CRFLoc", gCRFDir);
    TheWindows().SetCaption(MainCaption());
    TheWindows().SetCrfName(gCRFPath);
    // The file must pass the edit checks of this session before it can be submitted.
    TheWindows().EnableMenu("mnuReportSubmit", false);
}

}  // namespace

void ReadSession() {
    TakeIdentity(ReadIdentity());
    RebuildComponentFlags();
}

bool OpenCrf(const std::string& path) {
    TheStatus().SetPointer(Pointer::Hourglass);
    TheStatus().DoEvents();
    try {
        TakeFile(path);
        if (!OpenAndCheck()) return false;
    } catch (...) {
        // The names are those of a file that did not open: nothing may go on under them.
        DropCrf();
        ShowNoCrf();
        throw;
    }
    BackUpOpenedCrf();
    TheWindows().RefreshMenus();
    TheStatus().SetPointer(Pointer::Normal);
    return true;
}

void mnuReportOpen() {
    if (CrfIsOpen() && CloseAllForms(false) != 0) return;
    TheWindows().SetWelcomeVisible(false);
    FileDialog dialog = CrfDialog();
    dialog.Title = "Open An Existing CRF";
    dialog.Filter = "All Files (*.*)|*.*|Text Files (*.txt)|*.txt|EQ Logs (eq*.txt)|eq*.bat";
    dialog.FilterIndex = 2;
    dialog.Flags = 4100;
    const std::optional<std::string> chosen = TheDialogs().ChooseFile(dialog);
    if (!chosen) {
        AfterCancelledOpen();
    } else if (chosen->empty()) {
        TheWindows().RefreshMenus();
        TheStatus().SetPointer(Pointer::Normal);
    } else {
        OpenOrRepairCrf(*chosen);
    }
}

// --- Save As -------------------------------------------------------------------------------

namespace {

void ReopenCrf() {
    try {
        gDB = DBEngine::OpenDatabase(gCRFPath);
    } catch (...) {
        DropCrf();
        ShowNoCrf();
        throw;
    }
}

void ReportFailedCopy() {
    TheDialogs().Beep();
    TheDialogs().MsgBox(
        "PROBLEM Encountered: Your Save As request failed and was not able to be accomplished.  "
        "Your original CRF file has not been altered.  Hit OK to continue running Zolmara.",
        kCritical, "Error: Save As Request Failed");
}

/// The folder stays the old one: the file's output goes on going there.
void TakeCopy(const std::string& path) {
    const std::string folder = gCRFDir;
    SetCrfPath(path);
    gCRFDir = folder;
    TheWindows().SetCaption(MainCaption());
    TheWindows().SetCrfName(gCRFPath);
    TheWindows().EnableMenu("mnuReportSubmit", false);
}

/// A copy that fails leaves what stood under the new name as it was, so that its being there
/// afterwards says nothing: the copy's own result does.
/// One that stands although the disk did not confirm it is a copy, and is told as what it is.
bool TryToCopy(const std::function<void()>& copy) {
    try {
        copy();
    } catch (const NotConfirmed& error) {
        TheDialogs().MsgBox(error.what(), kExclamation, std::string(kProductName));
    } catch (const StoreError&) {
        return false;
    }
    return true;
}

/// A file that is gone, or another one by now, lives in the open handle alone. It stays open where
/// the copy fails.
bool SaveLostCrfAs(const std::string& path) {
    if (!TryToCopy([&] { CopyLost(gDB, path); })) {
        ReportFailedCopy();
        return false;
    }
    const bool undoable = TheActs().CanUndo() || TheActs().CanRedo();
    gDB.Close();
    TakeCopy(path);
    ReopenCrf();
    TheActs().TellEmptied(undoable, "the file was saved under another name");
    return true;
}

}  // namespace

bool SaveCrfAs(const std::string& path) {
    if (IsSameFile(gCRFPath, path))
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("{}: The file cannot be copied onto itself.", path));
    if (IsLost(gDB)) return SaveLostCrfAs(path);
    const bool undoable = TheActs().CanUndo() || TheActs().CanRedo();
    gDB.Close();
    const bool copied = TryToCopy([&] { CopyCrf(gCRFPath, path); });
    if (copied) {
        TakeCopy(path);
    } else {
        ReportFailedCopy();
    }
    ReopenCrf();
    TheActs().TellEmptied(undoable, copied ? "the file was saved under another name"
                                           : "the file was closed to be saved under another name");
    TheStatus().DoEvents();
    return copied;
}

void mnuReportSaveAs() {
    const bool welcome = TheWindows().WelcomeVisible();
    TheWindows().SetWelcomeVisible(false);
    const auto finish = [welcome] {
        TheWindows().SetWelcomeVisible(welcome);
        TheWindows().RefreshMenus();
    };
    FileDialog dialog = CrfDialog();
    dialog.Save = true;
    dialog.Title = "Save Cost Report File As ...";
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    dialog.Flags = 2050;
    const std::optional<std::string> chosen = TheDialogs().ChooseFile(dialog);
    try {
        if (chosen && !chosen->empty()) SaveCrfAs(*chosen);
    } catch (...) {
        if (CrfIsOpen()) finish();
        throw;
    }
    finish();
}

}  // namespace zolmara
