#include <fmt/format.h>

#include <array>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/CellRules.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr Argument kLine{"LINE", ArgumentKind::Required, "The line, such as 4 or 4.01"};
constexpr Argument kColumn{"COLUMN", ArgumentKind::Required,
                           "A field (Col_1, CC_401, Description) or a column number of the form"};

constexpr std::array kGetArguments{kFileArgument, kItemArgument, kLine, kColumn};
constexpr std::array kSetArguments{
    kFileArgument, kItemArgument, kLine, kColumn,
    Argument{"VALUE", ArgumentKind::Required,
             "The entry; an empty one empties the cell; put -- ahead of one that begins with --"}};

#define COLUMN_HELP                                                                              \
    "COLUMN is a field's name in any case, or a column number of the form: 1 is Col_1, and in\n" \
    "the schedules 4.01 is CC_401, the column of cost center 4.01. Where a schedule has Col_n "  \
    "of\n"                                                                                       \
    "its own, n is that field. In CostCenters and ES 0 is the name, 1 the next field, and so on."

constexpr std::string_view kGetHelp = COLUMN_HELP;
constexpr std::string_view kSetHelp =
    "The entry goes through the rules of the worksheet's editor: cells that are locked or\n"
    "computed are refused, with the editor's message and status 2. An entry that is put into\n"
    "another form, such as a rounded amount, is stored, and its message gives status 2 as well.\n"
    "\n" COLUMN_HELP;

/// The cell that ITEM, LINE and COLUMN name; it is there.
CellEntry CellOf(const Inputs& inputs) {
    CellEntry cell;
    cell.Item = TableNamed(inputs.Text("ITEM"));
    cell.Line = LineOf(inputs.Text("LINE"));
    const auto field = FieldOfColumn(cell.Item, inputs.Text("COLUMN"));
    if (!field)
        throw std::runtime_error(
            fmt::format("{} has no column {}", cell.Item, inputs.Text("COLUMN")));
    cell.Field = *field;
    if (!HasLineKey(cell.Item))
        throw std::runtime_error(fmt::format("Table {} has no line numbers", cell.Item));
    if (!HasRow(cell.Item, cell.Line))
        throw std::runtime_error(
            fmt::format("{} has no line {}", cell.Item, NumberText(cell.Line)));
    return cell;
}

ExitStatus Get(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const CellEntry cell = CellOf(inputs);
    PrintValue(gDB.Scalar(fmt::format("SELECT [{}] FROM [{}] WHERE {}=?;", cell.Field, cell.Item,
                                      LineKeyOf(cell.Item)),
                          {cell.Line}));
    return kDone;
}

ExitStatus Set(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    CellEntry cell = CellOf(inputs);
    if (!HasEditor(cell.Item))
        throw std::runtime_error(
            fmt::format("{} has no editor, nothing is keyed on it", cell.Item));
    cell.Value = inputs.Text("VALUE");
    return EnterCell(cell) ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kGet{"get", "Show one cell", kGetHelp, kGetArguments, Get};
const Command kSet{"set", "Key an entry into one cell", kSetHelp, kSetArguments, Set};

}  // namespace zolmara::cli
