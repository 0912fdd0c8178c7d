#include <fmt/format.h>

#include <array>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Json.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/ExplainByForm.h"
#include "store/session/Session.h"
#include "worksheets/Explain.h"

namespace zolmara::cli {

namespace {

constexpr Argument kLine{"LINE", ArgumentKind::Required, "The line, such as 4 or 4.01"};
constexpr Argument kColumn{"COLUMN", ArgumentKind::Required,
                           "A field (Col_1, CC_401, Description) or a column number of the form"};

constexpr std::array kExplainArguments{
    kFileArgument,
    kItemArgument,
    kLine,
    kColumn,
    Argument{"--depth", ArgumentKind::Option, "How deep the inputs are opened; 1 unless given"},
    Argument{"--uses", ArgumentKind::Flag, "What depends on the cell, not what it comes from"}};
constexpr std::array kTraceArguments{kFileArgument, kItemArgument, kLine, kColumn};

/// The cell that ITEM, LINE and COLUMN name; it is there.
CellRef CellOf(const Inputs& inputs) {
    const std::string item = TableNamed(inputs.Text("ITEM"));
    const Currency line = LineOf(inputs.Text("LINE"));
    const auto field = FieldOfColumn(item, inputs.Text("COLUMN"));
    if (!field)
        throw std::runtime_error(fmt::format("{} has no column {}", item, inputs.Text("COLUMN")));
    if (!HasLineKey(item))
        throw std::runtime_error(fmt::format("Table {} has no line numbers", item));
    if (!HasRow(item, line))
        throw std::runtime_error(fmt::format("{} has no line {}", item, NumberText(line)));
    return {item, line, *field};
}

int DepthOf(const Inputs& inputs) {
    constexpr double kDeepest = 100;
    if (!inputs.Has("--depth")) return 1;
    const std::string text = inputs.Text("--depth");
    const auto depth = ParseNumber(text);
    if (!depth || !Between(*depth, 0.0, kDeepest) || !IsExactTo(*depth, 0))
        throw CommandLineError{fmt::format("--depth must be a whole number from 0 to 100, not {}",
                                           text.empty() ? "empty" : text)};
    return static_cast<int>(*depth);
}

// --- The tree --------------------------------------------------------------------------------

/// A tree that opens every sum of a large statement has no end that anybody reads.
constexpr std::size_t kMostCells = 10000;

/// What is asked of a cell: where it comes from, or what depends on it.
struct Question {
    Explainer& Teller;
    bool Uses;
    std::size_t Told = 0;

    Explanation Explain(const CellRef& cell) {
        if (++Told > kMostCells)
            throw std::runtime_error(
                fmt::format("More than {} cells would have to be told; choose a smaller --depth",
                            Figure(kMostCells)));
        Explanation told = Teller.Explain(cell);
        TellByForm(told);
        return told;
    }

    std::vector<CellRef> Next(const Explanation& told) const {
        return Uses ? Teller.Uses(told.Cell) : told.Inputs;
    }
    std::string_view Name() const { return Uses ? "uses" : "inputs"; }
    bool Opens(const Explanation& told) const { return Uses || told.Kind == CellState::Computed; }
};

JsonDoc JsonOf(Question& question, const CellRef& cell, int depth) {
    const Explanation told = question.Explain(cell);
    JsonDoc json = {
        {"item", cell.Item},   {"line", JsonValue(cell.Line)},   {"column", cell.Field},
        {"title", told.Title}, {"value", JsonValue(told.Value)}, {"kind", NameOf(told.Kind)},
        {"rule", told.Rule},   {"formula", told.Formula}};
    if (depth == 0 || !question.Opens(told)) return json;
    JsonDoc next = JsonDoc::array();
    for (const CellRef& other : question.Next(told)) {
        next.push_back(JsonOf(question, other, depth - 1));
    }
    json[std::string(question.Name())] = std::move(next);
    return json;
}

std::string ValueText(const Variant& value) {
    if (value.IsNull()) return "nothing";
    return value.IsNumber() ? Figure(value.Number()) : OneLine(Text(value));
}

/// The lines of the tree, which are printed when all are known.
void TellTree(Question& question, const CellRef& cell, int depth, std::size_t indent,
              std::vector<std::string>& lines) {
    const Explanation told = question.Explain(cell);
    const std::string margin(indent, ' ');
    const std::string title = told.Title.empty() ? "" : fmt::format(" ({})", told.Title);
    lines.push_back(fmt::format("{}{}{}: {}", margin, told.Name, title, ValueText(told.Value)));
    lines.push_back(fmt::format("{}  {}", margin, told.Rule));
    if (!told.Formula.empty()) lines.push_back(fmt::format("{}  {}", margin, told.Formula));
    if (depth == 0 || !question.Opens(told)) return;
    for (const CellRef& other : question.Next(told)) {
        TellTree(question, other, depth - 1, indent + 4, lines);
    }
}

void Flatten(Question& question, const CellRef& cell, int depth, int level, Listing& listing) {
    const Explanation told = question.Explain(cell);
    listing.Rows.push_back({level, cell.Item, cell.Line, cell.Field, told.Title, told.Value,
                            NameOf(told.Kind), told.Rule, told.Formula});
    if (depth == 0 || !question.Opens(told)) return;
    for (const CellRef& other : question.Next(told)) {
        Flatten(question, other, depth - 1, level + 1, listing);
    }
}

ExitStatus ExplainCell(const Inputs& inputs) {
    const int depth = DepthOf(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const CellRef cell = CellOf(inputs);
    Explainer explainer;
    Question question{explainer, inputs.Has("--uses")};
    if (TheFormat() == OutputFormat::Json) {
        PutJson(JsonOf(question, cell, depth));
    } else if (TheFormat() == OutputFormat::Csv) {
        Listing listing{
            {"depth", "item", "line", "column", "title", "value", "kind", "rule", "formula"}, {}};
        Flatten(question, cell, depth, 0, listing);
        PrintListing(listing);
    } else {
        std::vector<std::string> lines;
        TellTree(question, cell, depth, 0, lines);
        for (const std::string& line : lines) PrintLine(line);
    }
    return kDone;
}

ExitStatus Trace(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const CellRef cell = CellOf(inputs);
    Explainer explainer;
    Listing listing{{"item", "line", "column", "value"}, {}};
    for (const CellRef& keyed : explainer.Trace(cell)) {
        listing.Rows.push_back(
            {keyed.Item, keyed.Line, keyed.Field, explainer.Walker().Cells().Value(keyed)});
    }
    PrintListing(listing);
    return kDone;
}

}  // namespace

const Command kExplain{
    "explain", "Show where a number comes from, or what depends on it",
    "The rule in words of the form, the same with the figures in it, and below it the cells\n"
    "that it reads, each in the same way, as deep as --depth says. With --uses the cells below\n"
    "are those that read it. In JSON a cell is an object with item, line, column, title, value,\n"
    "kind (keyed, computed or fixed), rule, formula, and inputs or uses.",
    kExplainArguments, ExplainCell};
const Command kTrace{"trace", "List the keyed cells that a number finally rests on",
                     "Cells that hold nothing are left out. A keyed cell rests on itself.",
                     kTraceArguments, Trace};

}  // namespace zolmara::cli
