#include "import/Rebuild.h"

#include <fmt/format.h>

#include <array>

#include "core/BusyPointer.h"
#include "core/Dialogs.h"
#include "core/Windows.h"
#include "store/PlainWords.h"
#include "store/WholeStep.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/SheetNames.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr std::array<std::string_view, 42> kOffered = {
    "A",    "A6",   "A7p1", "A7p2", "A8",   "A81p1", "A81p2", "Bp1",  "Bp2", "Bp3", "B1p1",
    "B1p2", "B1p3", "Cp1",  "Cp2",  "Cp3",  "C1p1",  "C1p2",  "C1p3", "Dp1", "Dp2", "Dp3",
    "D1p1", "D1p2", "D1p3", "E",    "E1p1", "E1p2",  "E1p3",  "Fp1",  "Fp2", "Fp3", "F1p1",
    "F1p2", "F1p3", "G",    "G1",   "S1p1", "S1p2",  "S2p1",  "S2p2", "S2p3"};

/// A window holds recordsets on the table that goes.
void UnloadWindows(std::string_view item) {
    for (const std::string_view mode : {"frmEdit", "frmView"}) {
        const std::string form = fmt::format("{}{}", mode, item);
        if (TheWindows().FormIsOpen(form)) TheWindows().UnloadForm(form);
    }
}

/// The table stands as it was when the making fails: of two states of a worksheet the old one
/// is worth more than the beginning of a new one.
bool Make(std::string_view item) {
    try {
        bool made = false;
        RunAct("Rebuild " + PrintedName(item),
               [&] { RunWholeStep(gDB, [&] { made = BuildWorksheet(item); }); });
        return made;
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        MsgOrLog(PlainWords(error), kCritical, fmt::format("Worksheet {} Error", item));
        return false;
    }
}

}  // namespace

std::span<const std::string_view> RebuildableWorksheets() { return kOffered; }

bool RebuildWorksheet(std::string_view item) {
    const BusyPointer busy;
    const Worksheet* const sheet = FindWorksheet(item);
    const std::string name(sheet ? sheet->Item : item);
    UnloadWindows(name);
    TheWindows().EnableMenu("mnuReportSubmit", false);
    if (Make(name)) {
        TheWindows().RefreshOpenForms("");
        return true;
    }
    MsgOrLog(fmt::format("ERROR, worksheet '{}' has NOT been successfully rebuilt.", name),
             kCritical, "Worksheet Not Built\"");
    return false;
}

}  // namespace zolmara
