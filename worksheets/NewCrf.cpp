#include "worksheets/NewCrf.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "core/Characters.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr std::size_t kProviderDigits = 6;
constexpr std::size_t kMaxNameLength = 36;
constexpr std::string_view kNameTitle = "Error: Invalid Facility Name";
constexpr std::string_view kDatesTitle = "Error: Invalid Dates";

void Refuse(std::string_view text, std::string_view title) {
    TheDialogs().MsgBox(std::string(text), kCritical, std::string(title));
}

void RefuseProvider(std::string_view rule) {
    Refuse(fmt::format("You have entered an invalid Provider Number!\r{}", rule), kProductName);
}

bool CheckProvider(NewCrfFields& fields) {
    if (!CheckProviderNumOnExit(fields.ProviderNum)) return false;
    const std::string digits = Replace(fields.ProviderNum, "-", "");
    if (digits.size() != kProviderDigits) {
        TheDialogs().Beep();
        RefuseProvider("Provider number must be 6 numeric digits.");
        return false;
    }
    fields.ProviderNum = digits.substr(0, 2) + "-" + digits.substr(2);
    return true;
}

/// Puts a field into the short form of its date; a box where it is none.
std::optional<DateTime> TakeDate(std::string& field, std::string_view which) {
    const std::optional<DateTime> date = ParseDate(field);
    if (date) {
        field = FormatDate(*date, "Short Date");
    } else {
        Refuse(
            fmt::format("Fiscal Year {} date is not a valid date.  Please (re-)enter one.", which),
            fmt::format("Error: Invalid Fiscal Year {} Date", which));
    }
    return date;
}

bool ConfirmLongYear() {
    return TheDialogs().MsgBox(
               "The F/Y Start and F/Y End dates entered span more than one fiscal year.  Click on "
               "the 'Yes' button to verify that this is what you intended.  Or, click on the 'No' "
               "button to return to the form to alter one or both of the dates.",
               kYesNo + kExclamation, "Warning: Dates Span More Than One Fiscal Year") == kYes;
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
    Refuse(fmt::format("Invalid sequence of dates -- {}", fault), kDatesTitle);
    return false;
}

NewCrfField CheckDates(NewCrfFields& fields) {
    const std::optional<DateTime> start = TakeDate(fields.FYStart, "Start");
    if (!start) return NewCrfField::FYStart;
    if (Trim(fields.FYEnd).empty())
        fields.FYEnd = FormatDate(start->AddYears(1).AddDays(-1), "Short Date");
    const std::optional<DateTime> end = TakeDate(fields.FYEnd, "End");
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
    if (Trim(name).empty()) {
        Refuse("Facility Name must be at least 1 characters.  Please (re-)enter.", kNameTitle);
        return false;
    }
    if (name.find('"') != std::string::npos) {
        Refuse("The Facility Name cannot contain double quote characters", kNameTitle);
        return false;
    }
    if (TextLength(name) > kMaxNameLength) {
        Refuse(fmt::format("Facility Name cannot have more than {} characters.  Please (re-)enter.",
                           kMaxNameLength),
               kNameTitle);
        return false;
    }
    return true;
}

}  // namespace

bool CheckProviderNumOnExit(const std::string& number) {
    const std::string bare = Replace(number, "-", "");
    if (std::all_of(bare.begin(), bare.end(), IsLetterOrDigit)) return true;
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

bool CreateFile() {
    gDB.Close();
    DeleteFile(gCRFPath);
    TheStatus().DoEvents();
    try {
        gDB = DBEngine::CreateDatabase(gCRFPath, ";LANGID=0x0409;CP=1252;COUNTRY=0");
        return true;
    } catch (const StoreError& error) {
        Refuse(error.what(), "System Error");
        return false;
    }
}

void MakeTables(const NewCrfFields& fields) {
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
}

/// Takes back a file whose making failed: a part of a CRF is worth nothing.
void AbandonFile(bool created) {
    const std::string path = gCRFPath;
    gLogType.clear();
    DropCrf();
    if (created) DeleteFile(path);
    ShowNoCrf();
}

void ShowNewCrf() {
    TheWindows().EnableMenu("mnuReportSubmit", false);
    TheWindows().ShowCrf(gCRFPath);
    TheWindows().StartHelpText();
    TheStatus().SetPointer(Pointer::Normal);
}

}  // namespace

bool CreateCrf(const std::string& path, const NewCrfFields& fields) {
    DropCrf();
    SetCrfPath(path);
    TheStatus().SetPointer(Pointer::Hourglass);
    TheStatus().DoEvents();
    TheWindows().SetCaption(NewCaption());
    bool created = false;
    try {
        created = CreateFile();
        if (created) {
            RunBatch(gDB, [&] { MakeTables(fields); });
            RebuildComponentFlags();
        }
    } catch (...) {
        AbandonFile(created);
        throw;
    }
    if (!created) {
        AbandonFile(created);
        return false;
    }
    RememberFolder("CRFLoc", gCRFDir);
    gLogType.clear();
    ShowNewCrf();
    return true;
}

bool New_CRF(const NewCrfFields& fields) {
    FileDialog dialog = CrfDialog();
    dialog.Save = true;
    dialog.Title = "Name New Cost Report File (CRF)";
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    dialog.Flags = 2050;
    const std::optional<std::string> chosen = TheDialogs().ChooseFile(dialog);
    if (!chosen || chosen->empty()) return false;
    return CreateCrf(*chosen, fields);
}

}  // namespace zolmara
