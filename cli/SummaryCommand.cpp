#include <fmt/format.h>

#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Findings.h"
#include "cli/Json.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"
#include "worksheets/Explain.h"
#include "worksheets/Summary.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument, Argument{"--components", ArgumentKind::Flag,
                                                        "Also the ten components that bear most"}};
constexpr std::size_t kMostComponents = 10;

std::vector<ComponentCost> ComponentsFor(const Inputs& inputs) {
    return inputs.Has("--components") ? LargestComponents(kMostComponents)
                                      : std::vector<ComponentCost>();
}

/// How many findings of a level the last edit checks left; Null where none were made.
Variant FindingsOf(std::string_view level) {
    if (!gDB.HasTable("Error")) return {};
    const Variant checked = gDB.Scalar("SELECT Count(*) AS Cnt FROM Error WHERE Level In(?,?,?);",
                                       {kPotentialError, kNonFatalError, kNoErrorsFound});
    if (NumOr(checked) == 0) return {};
    return gDB.Scalar("SELECT Count(*) AS Cnt FROM Error WHERE Level=?;", {level});
}

struct State {
    std::string_view Name;
    Variant Value;
};

std::vector<State> StatesOf() {
    return {{"Potential errors", FindingsOf(kPotentialError)},
            {"Non-fatal errors", FindingsOf(kNonFatalError)},
            {"Signature", Signature()}};
}

void PrintJson(const std::vector<SummaryFigure>& figures,
               const std::vector<ComponentCost>& components) {
    JsonDoc json = {{"figures", JsonDoc::array()}, {"state", JsonDoc::object()}};
    for (const SummaryFigure& figure : figures) {
        json["figures"].push_back({{"figure", figure.Name},
                                   {"item", figure.Cell.Item},
                                   {"line", JsonValue(figure.Cell.Line)},
                                   {"column", figure.Cell.Field},
                                   {"value", JsonValue(figure.Value)}});
    }
    for (const State& state : StatesOf()) {
        json["state"][std::string(state.Name)] = JsonValue(state.Value);
    }
    for (const ComponentCost& component : components) {
        json["components"].push_back({{"name", component.Name},
                                      {"item", component.Cell.Item},
                                      {"line", JsonValue(component.Cell.Line)},
                                      {"cost", component.Cost}});
    }
    PutJson(json);
}

ExitStatus Summary(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    StoreCells cells;
    const std::vector<SummaryFigure> figures = SummaryFigures(cells);
    if (TheFormat() == OutputFormat::Json) {
        PrintJson(figures, ComponentsFor(inputs));
        return kDone;
    }
    Listing listing{{"figure", "item", "line", "column", "value"}, {}};
    const bool people = TheFormat() == OutputFormat::Text;
    for (const SummaryFigure& figure : figures) {
        Variant value = figure.Value;
        if (people && value.IsNumber()) value = Figure(value.Number());
        listing.Rows.push_back(
            {figure.Name, figure.Cell.Item, figure.Cell.Line, figure.Cell.Field, value});
    }
    for (const ComponentCost& component : ComponentsFor(inputs)) {
        const Variant cost = people ? Variant(Figure(component.Cost)) : Variant(component.Cost);
        listing.Rows.push_back(
            {component.Name, component.Cell.Item, component.Cell.Line, component.Cell.Field, cost});
    }
    for (const State& state : StatesOf()) {
        Variant value = state.Value;
        if (people && value.IsNull()) value = state.Name == "Signature" ? "none" : "not checked";
        listing.Rows.push_back({state.Name, {}, {}, {}, value});
    }
    PrintListing(listing);
    return kDone;
}

}  // namespace

const Command kSummary{"summary", "Show the figures of the whole statement and its state",
                       "Each figure with its cell, as last calculated; the findings of the last\n"
                       "edit checks by level, and who signed.",
                       kArguments, Summary};

}  // namespace zolmara::cli
