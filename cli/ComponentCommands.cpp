#include <fmt/format.h>

#include <array>
#include <vector>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Lines.h"
#include "cli/Output.h"
#include "forms/CellRules.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr Argument kPart{"PART", ArgumentKind::Required,
                         "1 healthcare providers, 2 non-healthcare components, 3 regions"};

constexpr std::array kListArguments{kFileArgument, kPart};
constexpr std::array kAddArguments{
    kFileArgument,
    kPart,
    Argument{"LINE", ArgumentKind::Optional, "Add behind this line; the last one when left out"},
    Argument{"NAME", ArgumentKind::Optional, "Name of the new component"},
    Argument{"CCN", ArgumentKind::Optional, "Its CCN or regional number, NN-NNNN"},
    kWholeFlag,
    kSubFlag};
constexpr std::array kDeleteArguments{
    kFileArgument, kPart, Argument{"LINE", ArgumentKind::Required, "The line to delete"}};
constexpr std::array kRenameArguments{
    kFileArgument, kPart, Argument{"LINE", ArgumentKind::Required, "The line to rename"},
    Argument{"NAME", ArgumentKind::Required, "Its new name"},
    Argument{"CCN", ArgumentKind::Optional, "Its new CCN or regional number"}};

std::string ItemOfPart(const Inputs& inputs) {
    const std::string part = inputs.Text("PART");
    if (part == "1" || part == "2" || part == "3") return "S2p" + part;
    throw CommandLineError{fmt::format("PART must be 1, 2 or 3, not {}", part)};
}

/// The entries of NAME and CCN, as far as they were given.
std::vector<CellEntry> NameEntries(const std::string& item, Currency line, const Inputs& inputs) {
    std::vector<CellEntry> entries;
    for (const auto& [argument, field] : {std::pair{"NAME", "Col_1"}, std::pair{"CCN", "Col_2"}}) {
        if (!inputs.Has(argument)) continue;
        CellEntry entry;
        entry.Item = item;
        entry.Line = line;
        entry.Field = field;
        entry.Value = inputs.Text(argument);
        entries.push_back(entry);
    }
    return entries;
}

ExitStatus List(const Inputs& inputs) {
    const std::string item = ItemOfPart(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    return ListTable(item);
}

ExitStatus Add(const Inputs& inputs) {
    const std::string item = ItemOfPart(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const auto line = NewLine(item, inputs);
    if (!line) return kRefusedOrMessages;
    auto names = NameEntries(item, *line, inputs);
    for (CellEntry& name : names) name.NewRow = true;
    if (!AllAccepted(names) || !AddNamedLine(item, *line, names)) return kRefusedOrMessages;
    PrintValue(*line);
    return kDone;
}

ExitStatus Delete(const Inputs& inputs) {
    const std::string item = ItemOfPart(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    return DeleteGivenLine(item, inputs);
}

ExitStatus Rename(const Inputs& inputs) {
    const std::string item = ItemOfPart(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    auto names = NameEntries(item, NeedLine(item, inputs), inputs);
    if (!AllAccepted(names)) return kRefusedOrMessages;
    RunAct("Rename a component", [&] {
        for (CellEntry& name : names) EnterCell(name);
    });
    return kDone;
}

}  // namespace

const Command kComponentList{"component list", "List the components of a part", "", kListArguments,
                             List};
const Command kComponentAdd{
    "component add", "Add a component",
    "The line is added to S-2 and to all schedules of the part, and printed.", kAddArguments, Add};
const Command kComponentDelete{"component delete", "Delete a component",
                               "The line goes from S-2 and from all schedules of the part.",
                               kDeleteArguments, Delete};
const Command kComponentRename{"component rename", "Rename a component",
                               "Name and CCN are carried to all schedules of the part.",
                               kRenameArguments, Rename};

}  // namespace zolmara::cli
