#include "ui/main/MenuState.h"

#include <algorithm>
#include <map>

#include "core/Globals.h"
#include "ui/main/MenuTable.h"

namespace zolmara::ui {
namespace {

bool Begins(std::string_view name, std::string_view start) {
    return SameText(name.substr(0, start.size()), start);
}

bool IsView(const std::string& form) { return Begins(form, "frmView"); }
bool IsEdit(const std::string& form) { return Begins(form, "frmEdit"); }
bool IsHelper(const std::string& form) {
    return !IsView(form) && !IsEdit(form) && !Begins(form, "frmMain") && !Begins(form, "frmSpla");
}

/// A helper that stands open hides the windows that were opened ahead of it.
bool SeesForm(const MenuInputs& inputs, bool (*fits)(const std::string&)) {
    for (auto form = inputs.Forms.rbegin(); form != inputs.Forms.rend(); ++form) {
        if (fits(*form)) return true;
        if (IsHelper(*form)) return false;
    }
    return false;
}

/// What these two show rests on the structure that they change.
bool BarsWorksheets(const std::string& form) {
    return SameText(form, "frmEditCCs") || SameText(form, "frmEditS1p1");
}

bool Never(const MenuInputs& /*inputs*/) { return false; }
bool NeedsCrf(const MenuInputs& inputs) { return inputs.CrfOpen && !HelperIsOpen(inputs); }
bool MayOpenCrf(const MenuInputs& inputs) { return !inputs.CrfOpen || !HelperIsOpen(inputs); }
bool MayOpenSheet(const MenuInputs& inputs) {
    return NeedsCrf(inputs) && (inputs.Debug || !std::ranges::any_of(inputs.Forms, BarsWorksheets));
}
bool MayOpenS(const MenuInputs& inputs) { return MayOpenSheet(inputs) && inputs.SWorksheets; }
bool MayCloseEdits(const MenuInputs& inputs) { return inputs.CrfOpen && SeesForm(inputs, IsEdit); }
bool MayCloseViews(const MenuInputs& inputs) { return inputs.CrfOpen && SeesForm(inputs, IsView); }
bool MayBuild(const MenuInputs& inputs) {
    return inputs.CrfOpen && (inputs.MaySubmit || inputs.Debug);
}

struct Rule {
    std::string_view Name;
    bool (*IsOn)(const MenuInputs&);
};

/// An entry without a rule is on.
constexpr Rule kRules[] = {
    // Calculated, not keyed.
    {"mnuEditOpenCp1", Never},
    {"mnuEditOpenCp2", Never},
    {"mnuEditOpenCp3", Never},
    {"mnuEditOpenDp1", Never},
    {"mnuEditOpenDp2", Never},
    {"mnuEditOpenDp3", Never},
    {"mnuEditOpenE", Never},
    {"mnuEditOpenFp1", Never},
    {"mnuEditOpenFp2", Never},
    {"mnuEditOpenFp3", Never},
    {"mnuEditOpenF1p1", Never},
    {"mnuEditOpenF1p2", Never},
    {"mnuEditOpenF1p3", Never},
    {"mnuEditOpenF2p1", Never},
    {"mnuEditOpenF2p2", Never},
    {"mnuEditOpenF2p3", Never},
    {"mnuReportImportCRF", Never},
    {"mnuReportOpen", MayOpenCrf},
    {"mnuReportClose", NeedsCrf},
    {"mnuReportSaveAs", NeedsCrf},
    {"mnuReportCalculate", NeedsCrf},
    {"mnuReportEditCheck", NeedsCrf},
    {"mnuReportPrintSelect", NeedsCrf},
    {"mnuReportPrint", NeedsCrf},
    {"mnuReportImport", NeedsCrf},
    {"mnuReportSubmit", MayBuild},
    {"mnuReportUtilities", NeedsCrf},
    {"mnuReportUtilitiesReBuild", NeedsCrf},
    {"mnuReportUtilitiesHQ", NeedsCrf},
    {"mnuReportUtilitiesHeader", NeedsCrf},
    {"mnuReportUtilitiesLog", NeedsCrf},
    {"mnuEditOpen", MayOpenSheet},
    {"mnuViewOpen", MayOpenSheet},
    {"mnuEditOpenS", MayOpenS},
    {"mnuViewOpenS", MayOpenS},
    {"mnuEditClose", MayCloseEdits},
    {"mnuViewCloseAll", MayCloseViews},
};

bool OwnRule(std::string_view name, const MenuInputs& inputs) {
    if (inputs.Held.contains(name)) return false;
    const auto* const rule = std::ranges::find(kRules, name, &Rule::Name);
    return rule == std::end(kRules) || rule->IsOn(inputs);
}

const std::string& ParentOf(std::string_view name) {
    static const auto parents = [] {
        std::map<std::string, std::string, std::less<>> map;
        for (const MenuEntry& entry : MenuTable()) map[entry.Name] = entry.Parent;
        return map;
    }();
    static const std::string none;
    auto found = parents.find(name);
    if (found == parents.end()) found = parents.find(MemberName(name.substr(0, name.find('(')), 0));
    return found == parents.end() ? none : found->second;
}

}  // namespace

bool HelperIsOpen(const MenuInputs& inputs) { return std::ranges::any_of(inputs.Forms, IsHelper); }

bool MenuIsOn(std::string_view name, const MenuInputs& inputs) {
    if (inputs.Barred) return false;
    for (; !name.empty(); name = ParentOf(name))
        if (!OwnRule(name, inputs)) return false;
    return true;
}

}  // namespace zolmara::ui
