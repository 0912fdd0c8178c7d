#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Lines.h"
#include "cli/Output.h"
#include "forms/CellRules.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"

namespace zolmara::cli {

namespace {

constexpr std::string_view kItem = "CostCenters";

constexpr std::array kListArguments{kFileArgument};
constexpr std::array kAddArguments{
    kFileArgument,
    Argument{"LINE", ArgumentKind::Optional, "Add behind this line; the last one when left out"},
    Argument{"NAME", ArgumentKind::Optional, "Name of the new cost center, which it needs"},
    kWholeFlag, kSubFlag};
constexpr std::array kDeleteArguments{
    kFileArgument, Argument{"LINE", ArgumentKind::Required, "The line to delete"}};
constexpr std::array kRenameArguments{
    kFileArgument, Argument{"LINE", ArgumentKind::Required, "The line to rename"},
    Argument{"NAME", ArgumentKind::Required, "Its new name"}};

CellEntry NameEntry(Currency line, const std::string& name) {
    CellEntry entry;
    entry.Item = kItem;
    entry.Line = line;
    entry.Field = "CCName";
    entry.Value = name;
    return entry;
}

/// The editor cannot be left while the list of cost centers is not in order.
ExitStatus Leave() { return CostCentersMayClose() ? kDone : kRefusedOrMessages; }

ExitStatus List(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    return ListTable(kItem);
}

/// A line without a name could not be left in the editor, so it is not made.
ExitStatus Add(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const auto line = NewLine(kItem, inputs);
    if (!line) return kRefusedOrMessages;
    CellEntry name = NameEntry(*line, inputs.Text("NAME"));
    name.NewRow = true;
    if (!AllAccepted({name}) || !AddNamedLine(kItem, *line, {name})) return kRefusedOrMessages;
    PrintValue(*line);
    return Leave();
}

ExitStatus Delete(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ExitStatus status = DeleteGivenLine(kItem, inputs);
    return status == kDone ? Leave() : status;
}

ExitStatus Rename(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    CellEntry name = NameEntry(NeedLine(kItem, inputs), inputs.Text("NAME"));
    return EnterCell(name) ? Leave() : kRefusedOrMessages;
}

}  // namespace

const Command kCcList{"cc list", "List the cost centers", "", kListArguments, List};
const Command kCcAdd{
    "cc add", "Add a cost center",
    "Behind the last whole line a whole line or a subscript can be added; elsewhere\n"
    "a subscript. The new line is printed.",
    kAddArguments, Add};
const Command kCcDelete{"cc delete", "Delete a cost center",
                        "Lines 1 to 28 are the form's and stay; their subscripts can go.",
                        kDeleteArguments, Delete};
const Command kCcRename{
    "cc rename", "Rename a cost center",
    "The names of lines 1 to 28 are the form's; their subscripts can be renamed.", kRenameArguments,
    Rename};

}  // namespace zolmara::cli
