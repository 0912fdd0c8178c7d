#include "ui/main/MenuTable.h"

#include <fmt/format.h>

#include <array>

#include "worksheets/SheetNames.h"

namespace zolmara::ui {
namespace {

struct Entry {
    std::string_view Name;
    std::string_view Parent;
    std::string_view Caption;
    MenuKind Kind = MenuKind::Command;
    std::string_view Shortcut = "";
};

constexpr MenuKind kParent = MenuKind::Parent;
constexpr MenuKind kLine = MenuKind::Separator;

// clang-format off
constexpr Entry kReport[] = {
    {"mnuReport", "", "&Report File", kParent},
    {"mnuReportNew", "mnuReport", "&New ...", MenuKind::Command, "Ctrl+N"},
    {"mnuReportOpen", "mnuReport", "&Open ...", MenuKind::Command, "Ctrl+O"},
    {"mnuReportClose", "mnuReport", "&Close", MenuKind::Command, "Ctrl+W"},
    {"mnuReportSaveAs", "mnuReport", "Save &As ...", MenuKind::Command, "Ctrl+Shift+S"},
    {"mnuReportLine1", "mnuReport", "", kLine},
    {"mnuReportEditCheck", "mnuReport", "Just run the edit checks"},
    {"mnuReportCalculate", "mnuReport", "Ca&lculate CRF", MenuKind::Command, "F9"},
    {"mnuReportLine2", "mnuReport", "", kLine},
    {"mnuReportPrinterSetup", "mnuReport", "Prin&ter Setup ..."},
    {"mnuReportPrintSelect", "mnuReport", "Print Select Worksheets"},
    {"mnuReportPrint", "mnuReport", "&Print Entire CRF", MenuKind::Command, "Ctrl+P"},
    {"mnuReportLine3", "mnuReport", "", kLine},
    {"mnuReportImport", "mnuReport", "&Import ....", kParent},
    {"mnuReportImportASCII", "mnuReportImport", "ASCII file"},
    {"mnuReportImportCRF", "mnuReportImport", "CRF file"},
    {"mnuReportSubmit", "mnuReport", "&Build an ECR file ...", kParent},
    {"mnuReportManually", "mnuReportSubmit", "Sign Manually"},
    {"mnuReportElectronically", "mnuReportSubmit", "Sign Electronically"},
    {"mnuReportUtilities", "mnuReport", "Zolmara &Utilities ...", kParent},
    {"mnuReportUtilitiesReBuild", "mnuReportUtilities", "&ReBuild A Worksheet"},
    {"mnuReportUtilitiesHQ", "mnuReportUtilities", "Turn High Quality Printing Off"},
    {"mnuReportUtilitiesHeader", "mnuReportUtilities", "Set/Change Custom &Header Lines"},
    {"mnuReportUtilitiesLog", "mnuReportUtilities", "View Last &Edit Check Entries"},
    {"mnuReportLine4", "mnuReport", "", kLine},
    {"mnuReportExit", "mnuReport", "E&xit", MenuKind::Command, "Ctrl+Q"},
};
constexpr Entry kHelp[] = {
    {"mnuHelp", "", "&Help", kParent},
    {"mnuHelpContents", "mnuHelp", "&CMS Instructions", MenuKind::Command, "F1"},
    {"mnuHelpLine1", "mnuHelp", "", kLine},
    {"mnuHelpAbout", "mnuHelp", "&About Zolmara 287-22"},
};

/// The worksheet lists of Edit and View. A name is taken behind "mnuEdit" or "mnuView"; one that
/// differs in View stands in a column of its own. An entry with an Item opens it.
struct SheetEntry {
    std::string_view Name;
    std::string_view Parent;
    std::string_view Caption;
    std::string_view Item = "";
    std::string_view ViewName = "";
    std::string_view ViewParent = "";
};

constexpr SheetEntry kSheets[] = {
    {"OpenA_", "Open", "A ..."},
    {"OpenA", "OpenA_", "A", "A"},
    {"OpenA6", "OpenA_", "A-6", "A6"},
    {"OpenA7", "OpenA_", "A-7 ...."},
    {"A7(1)", "OpenA7", "A-7 Part I", "A7p1"},
    {"A7(2)", "OpenA7", "A-7 Part II", "A7p2"},
    {"OpenA8", "OpenA_", "A-8", "A8"},
    {"OpenA81", "OpenA_", "A-81 ..."},
    {"OpenA81p1", "OpenA81", "A-81 Part I", "A81p1"},
    {"OpenA81p2", "OpenA81", "A-81 Part II", "A81p2"},
    {"OpenB", "Open", "B ...", "", "OpenB_"},
    {"OpenBp", "OpenB", "B Part ", "Bp", "", "OpenB_"},
    {"OpenB1p", "OpenB", "B-1 Part ", "B1p", "", "OpenB_"},
    {"OpenC", "Open", "C ..."},
    {"OpenCp", "OpenC", "C Part ", "Cp"},
    {"OpenC1p", "OpenC", "C-1 Part ", "C1p"},
    {"OpenCCs", "Open", "Cost Centers", "CCs"},
    {"OpenD", "Open", "D ..."},
    {"OpenDp", "OpenD", "D Part ", "Dp"},
    {"OpenD1p", "OpenD", "D-1 Part ", "D1p"},
    {"E", "Open", "E ..."},
    {"OpenES", "E", "Pooled Allocation Statistical Basis", "ES"},
    {"OpenE", "E", "E", "E"},
    {"OpenE1p", "E", "E-1 Part ", "E1p"},
    {"F", "Open", "F ..."},
    {"OpenFp", "F", "F Part ", "Fp"},
    {"OpenF1p", "F", "F-1 Part ", "F1p"},
    {"OpenF2p", "F", "F-2 Part ", "F2p"},
    {"OpenG_", "Open", "G ..."},
    {"OpenG", "OpenG_", "G", "G"},
    {"OpenG1", "OpenG_", "G-1", "G1"},
    {"OpenS", "Open", "S ..."},
    // What the array holds is read from the CRF.
    {"Sx(0)", "OpenS", "S", "S"},
};
// clang-format on

void Add(std::vector<MenuEntry>& table, const Entry& entry) {
    table.push_back({std::string(entry.Name), std::string(entry.Parent), std::string(entry.Caption),
                     entry.Kind, std::string(entry.Shortcut), "", ""});
}

void AddSheet(std::vector<MenuEntry>& table, const SheetEntry& sheet, bool view) {
    const std::string_view prefix = view ? "mnuView" : "mnuEdit";
    const auto named = [&](std::string_view name, std::string_view viewName) {
        return fmt::format("{}{}", prefix, view && !viewName.empty() ? viewName : name);
    };
    MenuEntry entry{.Name = named(sheet.Name, sheet.ViewName),
                    .Parent = named(sheet.Parent, sheet.ViewParent),
                    .Caption = std::string(sheet.Caption),
                    .Kind = sheet.Item.empty() ? kParent : MenuKind::Command,
                    .Shortcut = "",
                    .Mode = view ? "view" : "edit",
                    .Item = std::string(sheet.Item)};
    // A worksheet in three parts has an entry for each.
    if (!sheet.Item.ends_with('p')) return table.push_back(entry);
    for (int part = 1; part <= 3; ++part) {
        table.push_back(entry);
        table.back().Name += std::to_string(part);
        table.back().Caption += RomanNumeral(part);
        table.back().Item += std::to_string(part);
    }
}

void AddWorksheetMenu(std::vector<MenuEntry>& table, bool view) {
    const Entry edit[] = {
        {"mnuEdit", "", "&Edit", kParent},
        {"mnuEditOpen", "mnuEdit", "&Open ...", kParent},
        {"mnuEditClose", "mnuEdit", "&Close All Edits"},
    };
    const Entry views[] = {
        {"mnuView", "", "&View", kParent},
        {"mnuViewOpen", "mnuView", "&Open ...", kParent},
        {"mnuViewCloseAll", "mnuView", "&Close All Views"},
    };
    for (const Entry& entry : view ? views : edit) Add(table, entry);
    for (const SheetEntry& sheet : kSheets) AddSheet(table, sheet, view);
}

std::vector<MenuEntry> MakeTable() {
    std::vector<MenuEntry> table;
    for (const Entry& entry : kReport) Add(table, entry);
    AddWorksheetMenu(table, false);
    AddWorksheetMenu(table, true);
    for (const Entry& entry : kHelp) Add(table, entry);
    return table;
}

}  // namespace

const std::vector<MenuEntry>& MenuTable() {
    static const std::vector<MenuEntry> table = MakeTable();
    return table;
}

std::string MemberName(std::string_view array, int index) {
    return fmt::format("{}({})", array, index);
}

}  // namespace zolmara::ui
