#pragma once

// The session: at most one Cost Report File is open, in gDB, with its identity in the globals.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

struct FileDialog;

extern Database gDB;        ///< the open CRF
extern Database gImportDB;  ///< the source while a CRF to CRF import runs

/// The text that stands for the program in captions and messages.
inline constexpr std::string_view kProductName = "Zolmara 287-22";

/// What a close names the CRF while it is being compacted, in gCRFDir.
inline constexpr std::string_view kCompactionFile = "VLQTemp.CRF";

/// Reads the settings and loose files that hold for a run: gDebug, gTitlePrefix, ReleaseDates.
void StartUp();

/// The dates of the files r??????.txt in the program's folder, newest first. Nothing reads them.
const std::vector<DateTime>& ReleaseDates();

/// The main window's caption, without and with a CRF.
std::string MainCaption();

/// True while a CRF is open.
bool CrfIsOpen();

/// Opens a CRF that the user has chosen: identity, checks of form number and dates, component
/// flags. False when the file was refused; the reason has been shown and no CRF is open.
/// StoreError when it is no database, no Cost Report File, or cannot be read: then no CRF is
/// open either, and the session is as without one.
bool OpenCrf(const std::string& path);

/// mnuReportOpen, with its dialog.
void mnuReportOpen();
/// mnuReportClose: drops temporary tables, repairs, compacts, resets.
void mnuReportClose();
/// mnuReportSaveAs, with its dialog.
void mnuReportSaveAs();
/// Copies the open CRF to another path and goes on with the copy; gCRFDir keeps the old folder.
/// False when the copy could not be made: the reason has been shown and the old one is open.
/// StoreError for a copy onto itself; the CRF is open as before.
bool SaveCrfAs(const std::string& path);
/// Drops the handle and the session values without touching the file: what Exit does.
void DropCrf();

/// The main window as it stands when no CRF is open.
void ShowNoCrf();

/// Brings an older CRF up to the present schema; this version of the form has no steps.
void UpgradeCRF();

/// 0 nothing stood in the way and all are closed, 1 the user cancelled, 2 some form failed.
int CloseAllForms(bool keepCostCenterForms);

/// True when the table is there. With `dropIfNotRegistered`, a table that the registry does not
/// know is deleted, and the answer is False.
bool TableExists(std::string_view name, bool dropIfNotRegistered);

/// Reports from a procedure that may run in a batch: a box, or a row of table Log while gLogType
/// is set. Gives the box's answer, or 0.
/// In the log, a style that is left out is a message without a severity.
int MsgOrLog(const std::string& message, std::optional<int> style = std::nullopt,
             const std::string& title = "");
/// Begins a batch's log: its rows of the last run go. An empty type leaves gLogType as it is.
void ClearLog(std::string_view logType);

/// The component flags of lines 4 to 12.99, from S1p1. No other step reads them.
void RebuildComponentFlags();
void ClearComponentFlags();
/// The flags of one line: two bits each for columns 4, 5 and 6, from the lowest; 0 none, 1 to 3
/// the place of the cell's first letter in "NOP".
std::uint8_t ComponentFlags(Currency line);

/// Takes gCRFTitle, gCRFPath and gCRFDir from a path.
void SetCrfPath(const std::string& path);
/// The folder of a path: what stands ahead of the last separator, "." without one.
std::string FolderOf(const std::string& path);
/// Saves a folder under a key of "Startup", unless it lies on drive A or B.
void RememberFolder(const std::string& key, const std::string& folder);
/// A file dialog that starts with the CRFs of the folder remembered under "CRFLoc".
FileDialog CrfDialog();

}  // namespace zolmara
