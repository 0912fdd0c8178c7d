#include "store/session/RepairCrf.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/Repair.h"
#include "store/base/OneBit.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kForm = "287";
const DateTime kFirstDay(2022, 10, 1);

CrfMaker& Maker() {
    static CrfMaker maker;
    return maker;
}

/// The file that is being repaired stands in gDB for as long as its tables are worked on.
class InPlaceOfTheCrf {
public:
    explicit InPlaceOfTheCrf(const std::string& path)
        : former_(std::exchange(gDB, DBEngine::OpenDatabase(path))) {}
    ~InPlaceOfTheCrf() {
        gDB.Close();
        gDB = std::move(former_);
    }
    InPlaceOfTheCrf(const InPlaceOfTheCrf&) = delete;
    InPlaceOfTheCrf& operator=(const InPlaceOfTheCrf&) = delete;

private:
    Database former_;
};

// --- Identity

struct IdentityField {
    std::string_view Name;
    Variant CrfIdentity::*Value;
};
constexpr IdentityField kIdentity[] = {{"FormNum", &CrfIdentity::FormNum},
                                       {"ProviderNumber", &CrfIdentity::ProviderNumber},
                                       {"ProviderName", &CrfIdentity::ProviderName},
                                       {"FYStart", &CrfIdentity::FYStart},
                                       {"FYEnd", &CrfIdentity::FYEnd}};

CrfIdentity Elsewhere() {
    CrfIdentity identity =
        Maker().IdentityOnWorksheets ? Maker().IdentityOnWorksheets() : CrfIdentity{};
    identity.FormNum = std::string(kForm);
    return identity;
}

/// The form's number and the first day decide whether the file opens at all.
bool KeepsTheFileShut(const IdentityField& field, const Variant& value, const Variant& other) {
    if (field.Name == "FormNum") return DiffersByOneBit(Text(value), std::string(kForm));
    if (field.Name != "FYStart") return false;
    const auto day = DateOf(value);
    const auto repeated = DateOf(other);
    return day && repeated && *day < kFirstDay && *repeated >= kFirstDay &&
           DiffersByOneBit(StoreDateText(*day), StoreDateText(*repeated));
}

bool IsLost(const IdentityField& field, const Variant& value, const Variant& other) {
    if (value.IsNull()) return !StrOr(other).empty();
    return KeepsTheFileShut(field, value, other);
}

/// The fields of Master that are lost; all of them without a row.
std::vector<std::string> LostIdentity(const CrfIdentity& other) {
    std::vector<std::string> lost;
    const Recordset master = gDB.OpenRecordset("Master", dbOpenTable);
    for (const auto& field : kIdentity)
        if (IsLost(field, master.Empty() ? Variant() : master[field.Name], other.*field.Value))
            lost.emplace_back(field.Name);
    return lost;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string joined;
    for (const auto& name : names) joined += (joined.empty() ? "" : ", ") + name;
    return joined;
}

/// Gives the sentence that tells it; empty when nothing was lost.
std::string MendIdentity() {
    const CrfIdentity other = Elsewhere();
    const auto lost = LostIdentity(other);
    if (lost.empty()) return "";
    Recordset master = gDB.OpenRecordset("Master", dbOpenTable);
    if (master.Empty()) {
        master.AddNew();
        master.Set("BuildDate", Now());
    } else {
        master.Edit();
    }
    for (const auto& field : kIdentity)
        if (std::find(lost.begin(), lost.end(), field.Name) != lost.end())
            master.Set(field.Name, other.*field.Value);
    master.Update();
    return fmt::format("Table Master: {} could not be read and {} taken from worksheet S-1.",
                       Joined(lost), lost.size() == 1 ? "was" : "were");
}

// --- What the repair asks

std::string Inspect(const std::string& path) {
    const InPlaceOfTheCrf file(path);
    if (!gDB.HasTable("Master")) return "it has no table Master";
    const auto lost = LostIdentity(Elsewhere());
    return lost.empty() ? "" : "its identity is damaged";
}

std::vector<std::string> MakeMissing(const std::string& path) {
    const InPlaceOfTheCrf file(path);
    std::vector<std::string> made;
    RunUnnamedAct([&] { made = Maker().MakeMissingTables(); });
    return made;
}

std::vector<std::string> Complete(const std::string& path, const std::vector<std::string>& made) {
    const InPlaceOfTheCrf file(path);
    std::vector<std::string> sentences;
    RunUnnamedAct([&] {
        if (auto sentence = MendIdentity(); !sentence.empty()) sentences.push_back(sentence);
        Maker().CompleteTables(made);
    });
    for (const auto& table : made)
        sentences.push_back(fmt::format("Table {}: its definition was lost and made anew.", table));
    return sentences;
}

RepairHelp Help() {
    if (!Maker().MakeMissingTables) return {};
    return {Inspect, MakeMissing, Complete};
}

bool WantsRepair(const std::string& path) {
    return TheDialogs().MsgBox(
               fmt::format(
                   "{} is damaged and cannot be opened.\rDo you want it to be repaired?  If "
                   "anything of it is lost, the damaged file is kept beside it.",
                   path),
               kYesNo + kQuestion, "Damaged CRF") == kYes;
}

bool IsDamage(StoreError::Kind kind) {
    return kind == StoreError::Kind::Damaged || kind == StoreError::Kind::NotADatabase;
}

}  // namespace

void SetCrfMaker(CrfMaker maker) { Maker() = std::move(maker); }

CrfRepair RepairCrf(const std::string& path) {
    FileRepair repair = RepairFile(path, Help());
    CrfRepair result{repair.WasDamaged, std::move(repair.Losses), std::move(repair.KeptAs)};
    if (!result.KeptAs.empty())
        result.Report.push_back("The damaged file is kept as " + result.KeptAs + ".");
    return result;
}

std::string RepairText(const std::string& path, const CrfRepair& repair) {
    std::string text = path + " was damaged and has been repaired.  These parts of it were lost:";
    for (const auto& sentence : repair.Report) text += "\r" + sentence;
    return text;
}

void ShowRepairReport(const std::string& path, const CrfRepair& repair) {
    if (!repair.Report.empty())
        TheDialogs().MsgBox(RepairText(path, repair), kExclamation, "Repair Report");
}

bool IsOfADamagedCrf(const StoreError& error, const std::string& path) {
    return IsDamage(error.kind()) && CanBeRepaired(path);
}

bool OpenOrRepairCrf(const std::string& path) {
    try {
        return OpenCrf(path);
    } catch (const StoreError& error) {
        if (!IsOfADamagedCrf(error, path)) throw;
    }
    if (!WantsRepair(path)) return false;
    ShowRepairReport(path, RepairCrf(path));
    return OpenCrf(path);
}

}  // namespace zolmara
