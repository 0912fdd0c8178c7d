#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "spreadsheet/CellsTemplate.h"
#include "spreadsheet/WriteCells.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"OUT", ArgumentKind::Required, "The file to write: .txt, .csv or .xlsx"},
    Argument{"--template", ArgumentKind::Flag,
             "Write a workbook to fill instead: every cell that can be keyed, empty"},
    Argument{"--force", ArgumentKind::Flag, kForceHelp},
};

ExitStatus Cells(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ReplaceAsTold told(inputs.Has("--force"), std::string(kForceHint));
    const std::string path = FullPath(inputs.Text("OUT"));
    ClearScratch(FolderPathOf(path));
    if (inputs.Has("--template")) {
        WriteCellsTemplate(path);
        return kDone;
    }
    Listing listing{{"item", "line", "column", "value", "reason"}, {}};
    for (const LeftCell& left : WriteCells(path))
        listing.Rows.push_back(
            {left.Cell.Item, left.Cell.Line, left.Cell.Field, left.Value, left.Reason});
    PrintMessages(listing);
    return listing.Rows.empty() ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kCells{
    "cells", "Write every keyed cell to a file that import takes",
    "One line a cell: worksheet, line, column, contents. Into a new CRF of the same number and\n"
    "period it imports to the same statement. Cells that were keyed and that import has no\n"
    "place for are named, one line each: worksheet, line, column, value, reason; status 2 then.",
    kArguments, Cells};

}  // namespace zolmara::cli
