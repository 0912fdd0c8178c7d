#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "worksheets/FindCells.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument, Argument{"TEXT", ArgumentKind::Required,
                            "A part of a text, in any case, or an amount such as 1,250.50"}};

ExitStatus Find(const Inputs& inputs) {
    if (IsBlankValue(inputs.Text("TEXT"))) throw CommandLineError{"TEXT must not be empty"};
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    Listing listing{{"item", "line", "column", "value"}, {}};
    for (const FoundCell& found : FindCells(inputs.Text("TEXT"))) {
        listing.Rows.push_back({found.Cell.Item, found.Cell.Line, found.Cell.Field, found.Value});
    }
    PrintListing(listing);
    return kDone;
}

}  // namespace

const Command kFind{
    "find", "Find the cells that hold a text or an amount",
    "Cost centers come first, then the worksheets in their order. A component is\n"
    "found on S-2, not on every schedule that repeats its name. What reads as a\n"
    "number is looked for among texts and amounts. Digits alone, such as 481,251,\n"
    "are found under either sign; -481,251 and (481,251) are negative amounts alone.",
    kArguments, Find};

}  // namespace zolmara::cli
