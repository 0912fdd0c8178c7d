#pragma once

// The repair of a damaged Cost Report File as the close does it, for whoever wants it by itself:
// the command line's compact, and an open that meets a damaged file.

#include <functional>
#include <string>
#include <vector>

#include "core/Variant.h"
#include "store/base/StoreError.h"

namespace zolmara {

/// Whose statement a CRF is.
struct CrfIdentity {
    Variant FormNum;
    Variant ProviderNumber;
    Variant ProviderName;
    Variant FYStart;
    Variant FYEnd;
};

/// What the repair must know of the tables of a CRF. All of it works on the CRF that is open in
/// gDB, which during a repair is not the session's own.
struct CrfMaker {
    /// Makes every table that a CRF has and this one lacks, and gives their names. Tables that
    /// others take their fields from come first, alone.
    std::function<std::vector<std::string>()> MakeMissingTables;
    /// Gives a table that was made anew and has no row the rows that the form has, and puts every
    /// table into the registry that is not there.
    std::function<void(const std::vector<std::string>& made)> CompleteTables;
    /// The identity as the worksheets repeat it; Null for what cannot be read.
    std::function<CrfIdentity()> IdentityOnWorksheets;
};

/// Hands the repair its maker, once at the program's start. Without one a lost table stays lost.
void SetCrfMaker(CrfMaker maker);

/// What a repair found and did.
struct CrfRepair {
    bool WasDamaged = false;
    /// One sentence for each thing that was lost or taken from elsewhere; the last one names the
    /// file that is kept. Empty when everything was brought back.
    std::vector<std::string> Report;
    std::string KeptAs;  ///< the damaged file, kept beside; empty when nothing was lost
};

/// Checks the closed file and repairs it when it is damaged: every row that can be read is kept, a
/// cell that cannot becomes Null, a table whose definition is lost is made as its worksheet is
/// built, identity that is lost is taken from S-1 line 2. When anything was lost the damaged file
/// stays beside it. StoreError when the file cannot be read or written, when it is no CRF, or when
/// there was nothing to be brought back; it is then as it was. Shows nothing.
CrfRepair RepairCrf(const std::string& path);

/// The text of the box "Repair Report" about a repair with a report.
std::string RepairText(const std::string& path, const CrfRepair& repair);
/// Shows that box, when there is anything to tell.
void ShowRepairReport(const std::string& path, const CrfRepair& repair);

/// True for the error of an open that failed because the file is a damaged CRF, of which a repair
/// would bring something back.
bool IsOfADamagedCrf(const StoreError& error, const std::string& path);

/// Opens a CRF as OpenCrf does. When it cannot be opened because it is damaged, asks whether to
/// repair it (Yes and No, question icon, title "Damaged CRF"); after a Yes repairs it, shows the
/// report and opens it. False when OpenCrf refused it, or when the answer was No; then no CRF is
/// open. StoreError as OpenCrf and RepairCrf.
bool OpenOrRepairCrf(const std::string& path);

}  // namespace zolmara
