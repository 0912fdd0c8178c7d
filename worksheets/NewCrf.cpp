#include "worksheets/NewCrf.h"

#include <fmt/format.h>

#include <array>
#include <optional>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/WholeCrf.h"
#include "store/files/FileGuard.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/FurnishedCrf.h"
#include "worksheets/IdentityChecks.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

void Refuse(std::string_view text, std::string_view title) {
    TheDialogs().MsgBox(std::string(text), kCritical, std::string(title));
}

bool CheckProvider(NewCrfFields& fields) {
    return CheckProviderNumOnExit(fields.ProviderNum) && CheckProviderNumber(fields.ProviderNum);
}

bool CheckSpan(std::int64_t days) {
    std::string_view fault;
    if (days <= 0) {
        fault = "FY End preceeds FY Start.";
    } else if (days >= 458) {
        fault = "Fiscal Period must be less than 458 days.";
    } else if (days < 30) {
        fault = "Fiscal Period must be at least 30 days.";
    }
    if (fault.empty()) return days <= 365 || ConfirmLongYear();
    RefuseDates(fault);
    return false;
}

NewCrfField CheckDates(NewCrfFields& fields) {
    const std::optional<DateTime> start = TakeFiscalDate(fields.FYStart, "Start");
    if (!start) return NewCrfField::FYStart;
    FillEndDate(*start, fields.FYEnd);
    const std::optional<DateTime> end = TakeFiscalDate(fields.FYEnd, "End");
    if (!end) return NewCrfField::FYEnd;
    if (!CheckSpan(DaysBetween(*start, *end))) return NewCrfField::FYStart;
    if (*start >= DateTime(2022, 10, 1)) return NewCrfField::None;
    Refuse(
        "Cost reports starting before 10/01/2022 require Zolmara 287-05. Contact Velquist, Inc. at "
        "(555) 010-0142 for assistance.",
        "Error: Use 287 for earlier Cost Reports");
    return NewCrfField::FYStart;
}

bool CheckName(const std::string& name) {
    if (name.find('"') == std::string::npos || Trim(name).empty()) return CheckNameLength(name);
    Refuse("The Facility Name cannot contain double quote characters", kNameTitle);
    return false;
}

}  // namespace

bool CheckProviderNumOnExit(const std::string& number) {
    if (HasProviderSigns(number)) return true;
    RefuseProvider("Provider number must be 6 digits and non-alpha numeric!");
    return false;
}

NewCrfField CheckNewCrfFields(NewCrfFields& fields) {
    if (!CheckProvider(fields)) return NewCrfField::ProviderNum;
    const NewCrfField date = CheckDates(fields);
    if (date != NewCrfField::None) return date;
    return CheckName(fields.FacilityName) ? NewCrfField::None : NewCrfField::FacilityName;
}

// --- The file ------------------------------------------------------------------------------

namespace {

/// The worksheets in the order of their making: A takes its rows from CostCenters, and the
/// schedules take their columns from CostCenters and their rows from S-2.
constexpr std::array<std::string_view, 46> kMakingOrder{
    "A",   "S1p1", "S1p2", "S2p1", "S2p2", "S2p3", "A6",   "A7p1", "A7p2", "A8",   "A81p1", "A81p2",
    "Bp1", "Bp2",  "Bp3",  "B1p1", "B1p2", "B1p3", "Cp1",  "Cp2",  "Cp3",  "C1p1", "C1p2",  "C1p3",
    "Dp1", "Dp2",  "Dp3",  "D1p1", "D1p2", "D1p3", "E",    "E1p1", "E1p2", "E1p3", "Fp1",   "Fp2",
    "Fp3", "F1p1", "F1p2", "F1p3", "F2p1", "F2p2", "F2p3", "G",    "G1",   "Sp1"};

/// The main window's caption until the next open; its version ends in the revision twice.
std::string NewCaption() {
    const std::string revision = gVersion.substr(gVersion.rfind('.') + 1);
    return fmt::format("{} Zolmara 287 (version {}.{}) -- {}", gTitlePrefix, gVersion, revision,
                       gCRFTitle);
}

Variant DateOrNull(const std::string& field) {
    const std::optional<DateTime> date = ParseDate(field);
    return date ? Variant(*date) : Variant();
}

void TakeIdentity(const NewCrfFields& fields) {
    gFormNum = LeftText(fields.FormNum, 3);
    gFYStart = DateOrNull(fields.FYStart);
    gFYEnd = DateOrNull(fields.FYEnd);
    gProviderNumber = fields.ProviderNum;
    gProviderName = fields.FacilityName;
}

/// Where a CRF is while it is made: aside, so that one of the same name stays until the new one
/// is whole.
struct Making {
    bool Stood = false;  ///< whether there was a file of that name
    std::optional<ScratchFolder> Folder;
    std::string File;
};

bool CreateFile(Making& making) {
    gDB.Close();
    TheStatus().DoEvents();
    try {
        NeedReplaceable(gCRFPath);
        making.Stood = FileExists(gCRFPath);
        making.Folder.emplace(BehindLinks(gCRFPath));
        making.File = making.Folder->File("new.CRF");
        gDB = DBEngine::CreateDatabase(making.File, ";LANGID=0x0409;CP=1252;COUNTRY=0");
        return true;
    } catch (const StoreError& error) {
        Refuse(PlainWords(error), "System Error");
        return false;
    }
}

void MakeTables(const NewCrfFields& fields, const std::function<void()>& furnish) {
    Build_Worksheets();
    TheStatus().DoEvents();
    Build_Log();
    TheStatus().DoEvents();
    gLogType = "I";
    ClearLog("");
    TheStatus().DoEvents();
    TakeIdentity(fields);
    Build_Master();
    Build_HeaderLines();
    Build_CC();
    Build_ES();
    for (const std::string_view item : kMakingOrder) BuildWorksheet(item);
    if (furnish) furnish();
}

/// A part of a CRF is worth nothing; it goes with its folder.
void AbandonFile() {
    gLogType.clear();
    DropCrf();
    ShowNoCrf();
}

/// The user knows the file by its own name.
[[noreturn]] void RaiseByName(const StoreError& error, const Making& making) {
    throw StoreError(error.kind(), Replace(error.what(), making.File, gCRFPath));
}

void MakeCrf(const Making& making, const NewCrfFields& fields,
             const std::function<void()>& furnish) {
    try {
        RunUnnamedAct([&] { MakeTables(fields, furnish); });
        gDB.Close();
        PutCrf(making.File, gCRFPath, making.Stood);
    } catch (const StoreError& error) {
        RaiseByName(error, making);
    }
    gDB = DBEngine::OpenDatabase(gCRFPath);
    RebuildComponentFlags();
}

void ShowNewCrf() {
    TheWindows().EnableMenu("mnuReportSubmit", false);
    TheWindows().ShowCrf(gCRFPath);
    TheWindows().StartHelpText();
    TheStatus().SetPointer(Pointer::Normal);
}

}  // namespace

bool CreateCrf(const std::string& path, const NewCrfFields& fields) {
    return CreateFurnishedCrf(path, fields, {});
}

bool CreateFurnishedCrf(const std::string& path, const NewCrfFields& fields,
                        const std::function<void()>& furnish) {
    DropCrf();
    SetCrfPath(path);
    TheStatus().SetPointer(Pointer::Hourglass);
    TheStatus().DoEvents();
    TheWindows().SetCaption(NewCaption());
    Making making;
    bool created = false;
    try {
        created = CreateFile(making);
        if (created) MakeCrf(making, fields, furnish);
    } catch (...) {
        AbandonFile();
        throw;
    }
    if (!created) {
        AbandonFile();
        return false;
    }
    RememberFolder("CRFLoc", gCRFDir);
    gLogType.clear();
    ShowNewCrf();
    return true;
}

std::optional<std::string> ChooseNewCrf() {
    FileDialog dialog = CrfDialog();
    dialog.Save = true;
    dialog.Title = "Name New Cost Report File (CRF)";
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    dialog.Flags = 2050;
    const std::optional<std::string> chosen = TheDialogs().ChooseFile(dialog);
    return chosen && !chosen->empty() ? chosen : std::nullopt;
}

bool New_CRF(const NewCrfFields& fields) {
    const auto chosen = ChooseNewCrf();
    return chosen && CreateCrf(*chosen, fields);
}

}  // namespace zolmara
