#include <fmt/format.h>

#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument, kItemArgument};

/// Lines in their order; tables without line numbers as they were written.
std::string RowsOf(const std::string& table) {
    const std::string& first = gDB.Table(table).Fields.front().Name;
    const bool numbered = SameText(first, "LineNum") || SameText(first, "SeqNum");
    return fmt::format("SELECT * FROM [{}]{};", table, numbered ? " ORDER BY " + first : "");
}

ExitStatus Show(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    auto rows = gDB.OpenRecordset(RowsOf(TableNamed(inputs.Text("ITEM"))), dbOpenSnapshot);
    PrintListing(ListingOf(rows));
    return kDone;
}

}  // namespace

const Command kShow{
    "show", "Show a table as it stands",
    "Any table of the CRF, the worksheets as well as CostCenters, ES, Master, Log,\n"
    "Error, HeaderLines and Worksheets. With --format json an array of objects\n"
    "with the field names, numbers as numbers, Null as null, dates as text.",
    kArguments, Show};

}  // namespace zolmara::cli
