#include <fmt/format.h>

#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "import/CompareCrfs.h"
#include "spreadsheet/ComparisonSheet.h"
#include "store/CopyRows.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"OTHER", ArgumentKind::Required, "The Cost Report File to compare it with"},
    Argument{"ITEM", ArgumentKind::Several, "Tables: A, Bp1, CostCenters, ...; all when left out"},
    Argument{"--keyed", ArgumentKind::Flag, "Without what the calculation writes"},
    Argument{"--over", ArgumentKind::Option, "Only amounts that differ by more than this"},
    Argument{"--over-percent", ArgumentKind::Option,
             "Only amounts that differ by more per cent than this"},
    Argument{"--out", ArgumentKind::Option, "Write it to this .xlsx or .csv file instead"},
    Argument{"--force", ArgumentKind::Flag, kForceHelp},
};

std::optional<double> LimitGiven(const Inputs& inputs, std::string_view name) {
    if (!inputs.Has(name)) return std::nullopt;
    const auto limit = ParseNumber(inputs.Text(name));
    if (!limit || *limit < 0)
        throw CommandLineError{fmt::format("{} must be a number of 0 or more", name)};
    return limit;
}

Variant TextOrNull(const std::string& text) { return text.empty() ? Variant() : Variant(text); }

void PrintDifferences(const std::vector<CellDifference>& differences) {
    Listing listing{{"item", "line", "column", "name", "here", "there", "difference", "percent"},
                    {}};
    for (const CellDifference& cell : differences)
        listing.Rows.push_back({cell.Item, cell.Line, TextOrNull(cell.Column),
                                TextOrNull(cell.Name), cell.Here, cell.There, cell.Difference,
                                cell.Percent});
    if (listing.Rows.empty() && TheFormat() == OutputFormat::Text)
        PrintLine("No differences.");
    else
        PrintListing(listing);
}

void WriteDifferences(const Inputs& inputs, const std::vector<CellDifference>& differences) {
    const ReplaceAsTold told(inputs.Has("--force"), std::string(kForceHint));
    const std::string path = FullPath(inputs.Text("--out"));
    ClearScratch(FolderPathOf(path));
    SaveComparison(differences, FullPath(inputs.Text("OTHER")), path);
    Listing written{{"File"}, {}};
    written.Rows.push_back({path});
    PrintMessages(written);
}

ExitStatus Diff(const Inputs& inputs) {
    const ComparisonWish wish{.Items = inputs.Texts("ITEM"),
                              .Keyed = inputs.Has("--keyed"),
                              .Over = LimitGiven(inputs, "--over"),
                              .OverPercent = LimitGiven(inputs, "--over-percent")};
    if (inputs.Has("--out")) NeedComparisonName(inputs.Text("--out"));
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    Database other = OpenReadOnly(FullPath(inputs.Text("OTHER")));
    const std::vector<CellDifference> differences = CompareCrfs(gDB, other, wish);
    if (inputs.Has("--out"))
        WriteDifferences(inputs, differences);
    else
        PrintDifferences(differences);
    return differences.empty() ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kDiff{
    "diff", "Compare with another Cost Report File",
    "One row a cell that differs: here in FILE, there in OTHER, the difference and what per\n"
    "cent of OTHER's amount it is. Cost centers and components are matched by number and name\n"
    "where they stand on other lines. A row or column that only one file has is told by its\n"
    "name. Status 0 when nothing differs, 2 when something does. OTHER is only read. With --out\n"
    "the same goes to a workbook or a CSV file, and its path is shown.",
    kArguments, Diff};

}  // namespace zolmara::cli
