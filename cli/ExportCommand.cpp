#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "spreadsheet/Export.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"OUT", ArgumentKind::Required, "The workbook to write, .xlsx"},
    Argument{"ITEM", ArgumentKind::Several, "Worksheets: A, A6, Bp1, ...; all without one"},
    Argument{"--values", ArgumentKind::Flag, "Plain values instead of formulas"},
    Argument{"--force", ArgumentKind::Flag, kForceHelp},
};

ExitStatus Export(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ReplaceAsTold told(inputs.Has("--force"), std::string(kForceHint));
    const std::string path = FullPath(inputs.Text("OUT"));
    ClearScratch(FolderPathOf(path));
    ExportWorkbook(path, {inputs.Texts("ITEM"), inputs.Has("--values")});
    Listing written{{"File"}, {}};
    written.Rows.push_back({path});
    PrintMessages(written);
    return kDone;
}

}  // namespace

const Command kExport{
    "export", "Write the statement as a workbook",
    "A sheet a worksheet, with the head, titles and number formats of the form. Computed cells\n"
    "are live formulas over the other sheets, with the stored values as their results; what\n"
    "closes a column stands in hidden rows below it. Totals have names such as A_L100_C8.\n"
    "Findings of the last edit checks stand on a sheet with links to their cells.\n"
    "Calculate first: cells are written as they stand.",
    kArguments, Export};

}  // namespace zolmara::cli
