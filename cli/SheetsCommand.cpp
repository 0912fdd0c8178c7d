#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "worksheets/SheetNames.h"
#include "worksheets/SheetStates.h"
#include "worksheets/SheetTitles.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument};

ExitStatus Sheets(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    Listing listing{{"item", "name", "title", "state"}, {}};
    for (const std::string& item : SheetsByLetter())
        listing.Rows.push_back(
            {item, PrintedName(item), SheetTitle(item), NameOf(StateOfSheet(item))});
    PrintListing(listing);
    return kDone;
}

}  // namespace

const Command kSheets{"sheets", "List the worksheets with their titles and states",
                      "A worksheet is empty, keyed (it has entries) or calculated (a calculation\n"
                      "left figures there).",
                      kArguments, Sheets};

}  // namespace zolmara::cli
