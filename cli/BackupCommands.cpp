#include <fmt/format.h>

#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "import/BackupFigures.h"
#include "store/Files.h"
#include "store/session/Backups.h"

namespace zolmara::cli {

namespace {

constexpr std::array kListArguments{
    kFileArgument,
    Argument{"--compare", ArgumentKind::Flag,
             "Also the total expenses of each, and how many cells differ from FILE"},
};
constexpr std::array kMakeArguments{kFileArgument};
constexpr std::array kRestoreArguments{
    kFileArgument,
    Argument{"WHICH", ArgumentKind::Optional, "The number of the backup; the newest without it"},
};

/// The backups of a file that is damaged or gone are what it can be brought back from: none of
/// these commands opens it by the rules of opening.
std::string FileOf(const Inputs& inputs) { return FullPath(inputs.Text("FILE")); }

Variant Whole(std::uintmax_t number) { return static_cast<double>(number); }

ExitStatus List(const Inputs& inputs) {
    const std::string path = FileOf(inputs);
    const bool compare = inputs.Has("--compare");
    Listing listing{{"which", "time", "size"}, {}};
    if (compare) listing.Columns.insert(listing.Columns.end(), {"expenses", "differences"});
    for (const Backup& backup : BackupsOf(path)) {
        auto& row = listing.Rows.emplace_back(std::vector<Variant>{
            static_cast<double>(backup.Which), StoreDateText(backup.Time), Whole(backup.Size)});
        if (!compare) continue;
        const BackupFigures figures = FiguresOfBackup(path, backup);
        row.insert(row.end(), {figures.Expenses, figures.Differences});
    }
    if (listing.Rows.empty() && TheFormat() == OutputFormat::Text) {
        PrintLine("No backups.");
        return kDone;
    }
    PrintListing(listing);
    return kDone;
}

ExitStatus Make(const Inputs& inputs) {
    const std::string path = FileOf(inputs);
    if (!FileExists(path))
        throw StoreError(StoreError::Kind::CannotOpen, path + ": there is no such file");
    if (const auto made = MakeBackup(path))
        PrintValue(static_cast<double>(made->Which));
    else
        PrintLine("The newest backup holds the same.");
    return kDone;
}

ExitStatus Restore(const Inputs& inputs) {
    const std::string path = FileOf(inputs);
    RestoreBackup(path, FindBackup(path, inputs.Text("WHICH")));
    return kDone;
}

}  // namespace

void BackUpAhead(const Inputs& inputs) {
    if (!inputs.Has(kNoBackup.Name)) MakeBackup(FullPath(inputs.Text("FILE")));
}

const Command kBackupList{"backup list", "List the backups of a Cost Report File",
                          "The newest first. FILE need not be there any more.", kListArguments,
                          List};

const Command kBackupMake{
    "backup make", "Back up a Cost Report File",
    "Prints the number of the backup. A file that is as its newest backup has it is not copied\n"
    "again. The last ten stay, and the last of each day for thirty days. The settings Folder,\n"
    "Last and Days of the section Backups tell another place and other numbers.",
    kMakeArguments, Make};

const Command kBackupRestore{"backup restore", "Bring a Cost Report File back from a backup",
                             "What stands there becomes a backup first. Refused while another\n"
                             "program has FILE open.",
                             kRestoreArguments, Restore};

}  // namespace zolmara::cli
