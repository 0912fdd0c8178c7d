#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "cli/CliHost.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/ImportLog.h"
#include "cli/Output.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "import/CompareCostCenters.h"
#include "import/ImportSource.h"
#include "import/ImportWorksheets.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"SOURCE", ArgumentKind::Required, "The Cost Report File to take worksheets from"},
    Argument{"ITEM", ArgumentKind::Several, "Worksheets: A, A6, Bp1, ..."},
    Argument{"--all", ArgumentKind::Flag, "Every worksheet that both files have, but S1p1"},
    kNoBackup,
};

/// False, with each line that differs, where the lists are not the same.
bool CostCentersAgree() {
    const auto pairs = CompareCostCenters();
    if (CostCentersMatch(pairs)) return true;
    TheCliHost().MsgBox(std::string(CostCenterWarning(false)), kExclamation, "");
    Listing listing{{"Current CRF", "Import CRF"}, {}};
    for (const CostCenterPair& pair : pairs)
        if (pair.Mismatch()) listing.Rows.push_back({pair.Current, pair.Import});
    PrintListing(listing);
    return false;
}

ImportEntry EntryNamed(const std::vector<ImportEntry>& offered, const std::string& item) {
    const auto found = std::ranges::find_if(
        offered, [&](const ImportEntry& entry) { return SameText(entry.Item, item); });
    if (found == offered.end())
        throw std::runtime_error(
            fmt::format("Worksheet {} cannot be imported: it is not in both files, or it is S1p1, "
                        "which says whose statement this is",
                        item));
    return *found;
}

/// The worksheets that were named, each once, in the order of the list.
std::vector<ImportEntry> Chosen(const Inputs& inputs) {
    const auto offered = ImportableWorksheets();
    if (inputs.Has("--all")) return offered;
    std::vector<ImportEntry> named;
    for (const std::string& item : inputs.Texts("ITEM")) named.push_back(EntryNamed(offered, item));
    std::vector<ImportEntry> chosen;
    for (const ImportEntry& entry : offered)
        if (std::ranges::any_of(named,
                                [&](const ImportEntry& other) { return other.Item == entry.Item; }))
            chosen.push_back(entry);
    return chosen;
}

ExitStatus ImportCrf(const Inputs& inputs) {
    if (inputs.Has("--all") == !inputs.Texts("ITEM").empty())
        throw CommandLineError{"Name worksheets, or give --all"};
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ImportSource source(FullPath(inputs.Text("SOURCE")));
    if (source.Result() == SourceResult::Unreadable) return kFileTrouble;
    if (source.Result() != SourceResult::Open || !CostCentersAgree()) return kRefusedOrMessages;
    const auto chosen = Chosen(inputs);
    BackUpAhead(inputs);
    ImportWorksheets(chosen);
    return PrintImportMessages(ImportMessages());
}

}  // namespace

ExitStatus PrintImportMessages(std::span<const ImportMessage> messages) {
    Listing listing{{"Severity", "Message"}, {}};
    for (const ImportMessage& message : messages)
        listing.Rows.push_back({message.Severity, message.Text});
    if (messages.empty() && TheFormat() == OutputFormat::Text) return kDone;
    PrintMessages(listing);
    return messages.empty() ? kDone : kRefusedOrMessages;
}

const Command kImportCrf{
    "import-crf", "Take worksheets over from another Cost Report File",
    "Both files must have the same cost centers. Each worksheet is made anew and filled with\n"
    "the rows of SOURCE, which is only read. Messages are printed, one a line: severity, tab,\n"
    "message. Nothing is recalculated. A backup is made first.",
    kArguments, ImportCrf};

}  // namespace zolmara::cli
