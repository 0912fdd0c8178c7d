#include <fmt/format.h>

#include <array>
#include <optional>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Lines.h"
#include "cli/Output.h"
#include "forms/WorksheetForm.h"
#include "structure/EditLines.h"

namespace zolmara::cli {

namespace {

constexpr Argument kItem{"ITEM", ArgumentKind::Required, "A6, A8, A81p1, A81p2, G1, S1p1 or S1p2"};

constexpr std::array kAddArguments{
    kFileArgument, kItem,
    Argument{"LINE", ArgumentKind::Required,
             "Add behind this line; on an empty worksheet the first line"},
    kWholeFlag, kSubFlag};
constexpr std::array kDeleteArguments{
    kFileArgument, kItem, Argument{"LINE", ArgumentKind::Required, "The line to delete"}};

constexpr std::array<std::string_view, 7> kItems{"A6", "A8",   "A81p1", "A81p2",
                                                 "G1", "S1p1", "S1p2"};

/// The rows of a schedule are components: its window's own buttons say where they are added.
bool IsOfASchedule(const std::string& item) {
    if (HasFreeLines(item)) return false;
    const auto form = DescribeForm(FormMode::Edit, item);
    return form && !AddFormLine(*form, std::nullopt).OpenEdit.empty();
}

/// Cost centers and components have commands of their own. Nothing where the reason was told.
std::optional<std::string> ItemWithLines(const Inputs& inputs) {
    const std::string item = TableNamed(inputs.Text("ITEM"));
    for (const std::string_view known : kItems)
        if (known == item) return item;
    if (IsOfASchedule(item)) return std::nullopt;
    throw std::runtime_error(
        fmt::format("Lines of {} are not added or deleted by this command", item));
}

ExitStatus Add(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const auto item = ItemWithLines(inputs);
    if (!item) return kRefusedOrMessages;
    const auto line = NewLine(*item, inputs);
    if (!line || !AddLine(*item, *line)) return kRefusedOrMessages;
    PrintValue(*line);
    return kDone;
}

ExitStatus Delete(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const auto item = ItemWithLines(inputs);
    return item ? DeleteGivenLine(*item, inputs) : kRefusedOrMessages;
}

}  // namespace

const Command kLineAdd{"line add", "Add a line to a worksheet",
                       "The new line is printed. What a worksheet allows follows its editor.",
                       kAddArguments, Add};
const Command kLineDelete{"line delete", "Delete a line of a worksheet",
                          "Lines of the form and totals stay.", kDeleteArguments, Delete};

}  // namespace zolmara::cli
