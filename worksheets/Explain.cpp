#include "worksheets/Explain.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/CellNames.h"
#include "worksheets/Descriptions.h"
#include "worksheets/Schedules.h"
#include "worksheets/SheetNames.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

bool IsFixedFormula(const Node& formula) {
    return formula.Kind == NodeKind::Nothing || formula.Kind == NodeKind::Constant;
}

/// Tables beside the worksheets whose cells are keyed.
bool IsKeyedTable(std::string_view item) { return item == "CostCenters" || item == "ES"; }

/// What the worksheet has in the column; of a cost center's column without asking which there are.
std::optional<CellKind> KindOf(const CellRef& cell) {
    const Worksheet* sheet = FindWorksheet(cell.Item);
    if (sheet == nullptr) return std::nullopt;
    if (IsCostCenterColumn(cell.Field)) return sheet->CostCenterCells;
    for (const WorksheetField& field : sheet->FixedFields(sheet->Item)) {
        if (field.Name == cell.Field) return field.Kind;
    }
    return std::nullopt;
}

std::string KeyedRule(const CellRef& cell) {
    return fmt::format("Keyed in {}, or imported.", EditorOf(cell.Item));
}

}  // namespace

std::string EditorOf(std::string_view item) {
    if (item == "CostCenters") return "the cost centers";
    if (item == "ES") return "the pooled allocation statistical basis";
    return fmt::format("the editor of worksheet {}", PrintedName(item));
}

std::string FixedRule(const CellRef& cell) {
    if (FindSchedule(cell.Item) != nullptr && cell.Line < kPartTotal && cell.Item != "E") {
        return fmt::format("It comes with the component, from S-2 Part {}.",
                           PrintedName(cell.Item).substr(PrintedName(cell.Item).find("Part ") + 5));
    }
    if (cell.Item == "A" || cell.Item == "A7p2") {
        return "It comes with the line; a cost center's name is changed in the cost centers.";
    }
    return "It comes with the line of the form.";
}

namespace {

std::string RuleOf(const CellRef& cell, CellState state) {
    if (const CellDescription* description = FindDescription(cell)) return description->Words;
    if (state == CellState::Fixed) return FixedRule(cell);
    const CellDescription* over = FindOverwriting(cell);
    return over == nullptr ? KeyedRule(cell) : KeyedRule(cell) + " " + over->Words;
}

/// Sums name every cell of a column; those that hold nothing say nothing. A single cell is named
/// even so.
std::vector<CellRef> InputsOf(const Node& formula, const CellRef& own, Evaluator& walker) {
    std::vector<CellRef> inputs;
    std::set<CellRef> seen;
    walker.Inputs(formula, own, [&](const CellRef& input) {
        if (seen.insert(input).second) inputs.push_back(input);
    });
    constexpr std::size_t kFew = 4;
    if (inputs.size() <= kFew) return inputs;
    std::erase_if(inputs, [&](const CellRef& input) {
        const Variant value = walker.Cells().Value(input);
        return value.IsNull() || (value.IsNumber() && value.Number() == 0);
    });
    return inputs;
}

/// A cell that was never calculated holds nothing, which says no more than 0.
bool SameValue(const Variant& stored, const Variant& told) {
    if (told.IsNumber() && !stored.IsText()) return NumOr(stored) == told.Number();
    return stored.IsNull() == told.IsNull() && Text(stored) == Text(told);
}

}  // namespace

std::string_view NameOf(CellState state) {
    switch (state) {
        case CellState::Keyed:
            return "keyed";
        case CellState::Computed:
            return "computed";
        case CellState::Fixed:
            break;
    }
    return "fixed";
}

CellState StateOf(const CellRef& cell) {
    if (const CellDescription* description = FindDescription(cell)) {
        return IsFixedFormula(description->Formula) ? CellState::Fixed : CellState::Computed;
    }
    if (FindOverwriting(cell) != nullptr || IsKeyedTable(cell.Item)) return CellState::Keyed;
    const bool keyed =
        KindOf(cell) == CellKind::Keyed && !IsComputedCell(cell.Item, cell.Line, cell.Field);
    return keyed ? CellState::Keyed : CellState::Fixed;
}

Explainer::Explainer() : own_(std::make_unique<StoreCells>()), cells_(*own_), walker_(cells_) {}
Explainer::Explainer(CellSource& cells) : cells_(cells), walker_(cells) {}

const std::string& Explainer::TitleOf(const CellRef& cell) {
    const auto [titles, isNew] = titles_.try_emplace(cell.Item);
    if (isNew) titles->second = ColumnTitles(cell.Item);
    return titles->second[cell.Field];
}

Explanation Explainer::Glance(const CellRef& cell) {
    Explanation told{.Cell = cell,
                     .Name = CellName(cell),
                     .Title = TitleOf(cell),
                     .Value = cells_.Value(cell),
                     .Kind = StateOf(cell)};
    told.Rule = RuleOf(cell, told.Kind);
    return told;
}

Explanation Explainer::Explain(const CellRef& cell) {
    Explanation told = Glance(cell);
    if (told.Kind != CellState::Computed) return told;
    const Node& formula = FindDescription(cell)->Formula;
    told.Formula = FormulaInFigures(formula, cell, walker_);
    told.Inputs = InputsOf(formula, cell, walker_);
    if (!SameValue(told.Value, walker_.Value(formula, cell))) {
        told.Rule += " It has not been calculated since its inputs changed.";
    }
    return told;
}

std::vector<CellRef> Explainer::Trace(const CellRef& cell) {
    std::vector<CellRef> keyed;
    std::set<CellRef> seen = {cell};
    std::vector<CellRef> open = {cell};
    while (!open.empty()) {
        const CellRef next = std::move(open.back());
        open.pop_back();
        const CellState state = StateOf(next);
        if (state == CellState::Keyed && !cells_.Value(next).IsNull()) keyed.push_back(next);
        if (state != CellState::Computed) continue;
        std::vector<CellRef> inputs;
        walker_.Inputs(FindDescription(next)->Formula, next, [&](const CellRef& input) {
            if (seen.insert(input).second) inputs.push_back(input);
        });
        open.insert(open.end(), inputs.rbegin(), inputs.rend());
    }
    return keyed;
}

}  // namespace zolmara
