#include "forms/EditInfo.h"

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Windows.h"
#include "store/Files.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/IdentityChecks.h"

namespace zolmara {

namespace {

// The limits of a fiscal year here; a new CRF has its own.
constexpr std::int64_t kFewestDays = 28;
constexpr std::int64_t kTooManyDays = 458;

const DateTime& FirstDay() {
    static const DateTime day(2022, 10, 1);
    return day;
}

void Refuse(const std::string& text, int style, const std::string& title) {
    TheDialogs().MsgBox(text, style, title);
}

std::string ShortDate(const Variant& value) {
    const auto date = DateOf(value);
    return date ? FormatDate(*date, "Short Date") : "";
}

IdentityField CheckStart(const Variant& start) {
    if (!IsValidDate(start)) {
        Refuse("Invalid Start Date, please correct", kExclamation, "Entry Error");
        return IdentityField::FYStart;
    }
    if (*DateOf(start) >= FirstDay()) return IdentityField::None;
    Refuse("The start date must be on or after 10/1/22.", kExclamation, "Entry Error");
    return IdentityField::FYStart;
}

/// What the limits of a fiscal year say to dates that are right in themselves.
IdentityField CheckLimits(const IdentityFields& fields) {
    const IdentityField wrong = CheckStart(ParseDate(fields.FYStart).value());
    if (wrong != IdentityField::None) return wrong;
    const std::int64_t days =
        DaysBetween(*ParseDate(fields.FYStart), ParseDate(fields.FYEnd).value());
    if (days >= kFewestDays && days < kTooManyDays) return IdentityField::None;
    RefuseDates(
        "The fiscal year end date must be at least 28 days after, and less than 458 days after,  "
        "the fiscal year beginning date..");
    return IdentityField::FYEnd;
}

IdentityField CheckDates(IdentityFields& fields) {
    const auto start = TakeFiscalDate(fields.FYStart, "Start");
    if (!start) return IdentityField::FYStart;
    FillEndDate(*start, fields.FYEnd);
    const auto end = TakeFiscalDate(fields.FYEnd, "End");
    if (!end) return IdentityField::FYEnd;
    const std::int64_t days = DaysBetween(*start, *end);
    if (days > 0)
        return days <= 365 || ConfirmLongYear() ? IdentityField::None : IdentityField::FYStart;
    RefuseDates("FY End preceeds FY Start.");
    return IdentityField::FYStart;
}

/// A changed identity voids the signature that was given for the former one.
void WriteTables(const IdentityFields& fields, const DateTime& start, const DateTime& end) {
    gDB.Execute("UPDATE S1p1 SET Col_1 = ?, Col_2 = ?, Col_4 = ?, Col_5 = ? WHERE LineNum=2;",
                {fields.FacilityName, fields.ProviderNum, FormatDate(start, "mm/dd/yyyy"),
                 FormatDate(end, "mm/dd/yyyy")});
    gDB.Execute(
        "UPDATE Master SET BuildDate = ?, ProviderNumber = ?, FYStart = ?, FYEnd = ?, "
        "ProviderName = ?;",
        {Now(), fields.ProviderNum, start, end, fields.FacilityName});
    gDB.Execute("Update Master Set ESFirstName=Null, ESLastName=Null, ESTitle=Null, ESDate=Null;");
}

void TakeIntoSession(const IdentityFields& fields, const DateTime& start, const DateTime& end) {
    gFormNum = "287";
    gFYStart = start;
    gFYEnd = end;
    gProviderNumber = fields.ProviderNum;
    gProviderName = fields.FacilityName;
}

/// The session follows the file, never the other way.
void WriteIdentity(const IdentityFields& fields, bool ofCopy) {
    const DateTime start = *ParseDate(fields.FYStart);
    const DateTime end = *ParseDate(fields.FYEnd);
    RunAct("Change the identity", [&] {
        WriteTables(fields, start, end);
        if (ofCopy)
            gDB.Execute("UPDATE S1p1 SET Col_1 = Null, Col_2 = Null WHERE LineNum In (3.1, 3.2);");
    });
    TakeIntoSession(fields, start, end);
    TheWindows().EnableMenu("mnuReportSubmit", false);
    for (const char* form : {"frmEditS1p1", "frmViewS1p1"})
        if (TheWindows().FormIsOpen(form)) TheWindows().SetGrd(form);
}

IdentityResult SaveCopy(const IdentityFields& fields, const std::string& path) {
    if (path == gCRFPath || IsSameFile(path, gCRFPath)) {
        Refuse("The file selected is the same one that is currently open, SaveAs aborted.",
               kCritical, "Selection Error");
        return {IdentitySave::Cancelled, IdentityField::None};
    }
    if (!SaveCrfAs(path)) return {IdentitySave::Cancelled, IdentityField::None};
    WriteIdentity(fields, true);
    RememberFolder("CRFLoc", FolderOf(path));
    return {IdentitySave::Saved, IdentityField::None};
}

}  // namespace

IdentityFields PresentIdentity() {
    return {gProviderNumber, ShortDate(gFYStart), ShortDate(gFYEnd), gProviderName};
}

bool CheckIdentityOnExit(IdentityFields& fields, IdentityField left) {
    if (left == IdentityField::ProviderNum) {
        if (Replace(fields.ProviderNum, "-", "").size() == 6 &&
            HasProviderSigns(fields.ProviderNum))
            return true;
        RefuseProvider("Provider number must be 6 digits.");
        return false;
    }
    const bool start = left == IdentityField::FYStart;
    if (!start && left != IdentityField::FYEnd) return true;
    std::string& field = start ? fields.FYStart : fields.FYEnd;
    if (Trim(field).empty()) return true;
    const auto date = ParseDate(field);
    if (!date) {
        Refuse(start ? "Fiscal Year Start date is not a valid date."
                     : "Fiscal Year End date is not a valid date.",
               kCritical, std::string(kProductName));
        return false;
    }
    field = FormatDate(*date, "Short Date");
    if (start) FillEndDate(*date, fields.FYEnd);
    return true;
}

IdentityField CheckIdentity(IdentityFields& fields) {
    if (!CheckProviderNumber(fields.ProviderNum)) return IdentityField::ProviderNum;
    const IdentityField date = CheckDates(fields);
    if (date != IdentityField::None) return date;
    if (!CheckNameLength(fields.FacilityName)) return IdentityField::FacilityName;
    return CheckLimits(fields);
}

IdentityResult SaveIdentity(IdentityFields& fields) {
    const IdentityField wrong = CheckIdentity(fields);
    if (wrong != IdentityField::None) return {IdentitySave::Refused, wrong};
    WriteIdentity(fields, false);
    return {IdentitySave::Saved, IdentityField::None};
}

IdentityResult SaveIdentityAs(IdentityFields& fields) {
    const IdentityField wrong = CheckIdentity(fields);
    if (wrong != IdentityField::None) return {IdentitySave::Refused, wrong};
    FileDialog dialog = CrfDialog();
    dialog.Save = true;
    dialog.Title = "Save Cost Report File As ...";
    dialog.DefaultExt = ".CRF";
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    const auto chosen = TheDialogs().ChooseFile(dialog);
    if (!chosen || chosen->empty()) return {IdentitySave::Cancelled, IdentityField::None};
    return SaveCopy(fields, *chosen);
}

IdentityResult SaveIdentityAs(IdentityFields& fields, const std::string& path) {
    const IdentityField wrong = CheckIdentity(fields);
    if (wrong != IdentityField::None) return {IdentitySave::Refused, wrong};
    return SaveCopy(fields, path);
}

}  // namespace zolmara
