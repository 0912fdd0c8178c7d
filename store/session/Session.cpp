#include "store/session/Session.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/session/CoreTables.h"

namespace fs = std::filesystem;

namespace zolmara {

Database gDB;
Database gImportDB;

bool CrfIsOpen() { return gDB.IsOpen(); }

void DropCrf() {
    gDB.Close();
    gCRFPath.clear();
    gCRFDir.clear();
    gCRFTitle.clear();
    gFormNum.clear();
    gFYStart = {};
    gFYEnd = {};
    gProviderName.clear();
    gProviderNumber.clear();
    ClearComponentFlags();
}

void ShowNoCrf() {
    TheWindows().SetCaption(MainCaption());
    TheWindows().ShowWelcome();
    TheWindows().RefreshMenus();
    TheStatus().SetPointer(Pointer::Normal);
}

void UpgradeCRF() {}

int CloseAllForms(bool keepCostCenterForms) {
    return TheWindows().CloseAllForms(keepCostCenterForms);
}

// --- Paths and dialogs ---------------------------------------------------------------------

std::string FolderOf(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

void SetCrfPath(const std::string& path) {
    gCRFPath = path;
    gCRFTitle = fs::path(path).filename().string();
    gCRFDir = FolderOf(path);
}

void RememberFolder(const std::string& key, const std::string& folder) {
    const bool onDrive = folder.size() > 1 && folder[1] == ':';
    if (onDrive && UCase(folder.substr(0, 1)) <= "B") return;
    // What is remembered must hold in whatever folder the next run starts.
    const std::string full = folder == "." ? fs::current_path().string()
                             : onDrive     ? folder
                                           : fs::absolute(folder).string();
    TheMachine().SaveSetting(std::string(kProductName), "Startup", key, full);
}

FileDialog CrfDialog() {
    std::string folder =
        TheMachine().GetSetting(std::string(kProductName), "Startup", "CRFLoc", "None");
    if (folder == "None") folder = TheMachine().ProgramFolder();
    FileDialog dialog;
    dialog.FileName = (fs::path(folder) / "*.CRF").string();
    dialog.DefaultExt = ".CRF";
    return dialog;
}

// --- Messages ------------------------------------------------------------------------------

namespace {

std::string SeverityOf(std::optional<int> style) {
    if (!style) return "";
    if (*style == kCritical) return "ERROR";
    return *style == kExclamation ? "Warning" : "F.Y.I.";
}

}  // namespace

int MsgOrLog(const std::string& message, std::optional<int> style, const std::string& title) {
    if (gLogType.empty()) return TheDialogs().MsgBox(message, style.value_or(kOkOnly), title);
    gDB.Execute("INSERT INTO Log (LogType, [DateTime], Severity, Message) VALUES (?, ?, ?, ?);",
                {gLogType, Now(), SeverityOf(style), message});
    return 0;
}

void ClearLog(std::string_view logType) {
    // A CRF of an earlier program may lack the table.
    if (!gDB.HasTable("Log")) Build_Log();
    if (!logType.empty()) gLogType = UCase(LeftText(logType, 1));
    gDB.Execute("DELETE * FROM Log WHERE LogType = ?;", {gLogType});
}

bool TableExists(std::string_view name, bool dropIfNotRegistered) {
    gDB.RefreshTableDefs();
    if (!gDB.HasTable(name)) return false;
    if (!dropIfNotRegistered) return true;
    const Variant count = gDB.Scalar(
        "Select Count(*) As Cnt From Worksheets Where UCase([Item]) = ?;", {UCase(name)});
    if (NumOr(count) > 0) return true;
    gDB.DeleteTable(name);
    return false;
}

}  // namespace zolmara
