#pragma once

// The session: at most one Cost Report File is open, in gDB, with its identity in the globals.

#include <string>
#include <string_view>

#include "store/Dao.h"

namespace zolmara {

extern Database gDB;        ///< the open CRF
extern Database gImportDB;  ///< the source while a CRF to CRF import runs

/// The text that stands for the program in captions and messages.
inline constexpr std::string_view kProductName = "Zolmara 287-22";

/// Reads the settings and loose files that hold for a run: gDebug, gTitlePrefix.
void StartUp();

/// The main window's caption, without and with a CRF.
std::string MainCaption();

/// True while a CRF is open.
bool CrfIsOpen();

/// Opens a CRF that the user has chosen: identity, checks of form number and dates, component
/// flags. False when the file was refused; the reason has been shown and no CRF is open.
/// StoreError when it is no database, or cannot be read.
bool OpenCrf(const std::string& path);

/// mnuReportOpen, with its dialog.
void mnuReportOpen();
/// mnuReportClose: drops temporary tables, repairs, compacts, resets.
void mnuReportClose();
/// mnuReportSaveAs, with its dialog.
void mnuReportSaveAs();
/// Drops the handle and the session values without touching the file: what Exit does.
void DropCrf();

/// Brings an older CRF up to the present schema; this version of the form has no steps.
void UpgradeCRF();

/// 0 nothing stood in the way and all are closed, 1 the user cancelled, 2 some form failed.
int CloseAllForms(bool keepCostCenterForms);

/// True when the table is there. With `dropIfNotRegistered`, a table that the registry does not
/// know is deleted, and the answer is False.
bool TableExists(std::string_view name, bool dropIfNotRegistered);

/// Reports from a procedure that may run in a batch: a box, or a row of table Log while gLogType
/// is set. Gives the box's answer, or 0.
int MsgOrLog(const std::string& message, int style = 0, const std::string& title = "");
/// Begins a batch's log: its rows of the last run go. An empty type leaves gLogType as it is.
void ClearLog(std::string_view logType);

/// The component flags of lines 4 to 12.99, from S1p1. Nothing reads them yet.
void RebuildComponentFlags();

/// Takes gCRFTitle, gCRFPath and gCRFDir from a path.
void SetCrfPath(const std::string& path);
/// Saves a folder under a key of "Startup", unless it lies on drive A or B.
void RememberFolder(const std::string& key, const std::string& folder);

}  // namespace zolmara
