#include "worksheets/Summary.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <map>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

struct FigureCell {
    std::string_view Name;
    std::string_view Item;
    Currency Line;
    std::string_view Field;
};

constexpr FigureCell kFigures[] = {
    {"Expenses per books", "A", kTotalOfA, "Col_1"},
    {"Reclassifications, increases", "A6", kTotalOfEntries, "Col_5"},
    {"Reclassifications, decreases", "A6", kTotalOfEntries, "Col_8"},
    {"Adjustments", "A", kTotalOfA, "Col_4"},
    {"Net allowable expenses", "A", kTotalOfA, "Col_5"},
    {"Direct allocations", "A", kTotalOfA, "Col_6"},
    {"Functional allocations", "A", kTotalOfA, "Col_7"},
    {"Pooled allocations", "A", kTotalOfA, "Col_8"},
    {"F, capital cost", "Fp3", kGrandTotal, "Col_4"},
    {"F-1, non-capital cost", "F1p3", kGrandTotal, "Col_9"},
    {"F-2, interest income", "F2p3", kGrandTotal, "Col_4"},
};

}  // namespace

std::vector<SummaryFigure> SummaryFigures(CellSource& cells) {
    std::vector<SummaryFigure> figures;
    for (const FigureCell& figure : kFigures) {
        const CellRef cell{std::string(figure.Item), figure.Line, std::string(figure.Field)};
        figures.push_back({figure.Name, cell, cells.Value(cell)});
    }
    return figures;
}

// --- The path of the money -------------------------------------------------------------------

namespace {

struct StepCell {
    std::string_view Name;
    MoneyStep::Is Kind;
    std::string_view Field;  ///< of A's total line
};

constexpr StepCell kPath[] = {
    {"Expenses per books", MoneyStep::Is::Sum, "Col_1"},
    {"Reclassifications", MoneyStep::Is::Change, "Col_2"},
    {"Adjustments", MoneyStep::Is::Change, "Col_4"},
    {"Net allowable expenses", MoneyStep::Is::Sum, "Col_5"},
    {"Direct allocations", MoneyStep::Is::Share, "Col_6"},
    {"Functional allocations", MoneyStep::Is::Share, "Col_7"},
    {"Pooled allocations", MoneyStep::Is::Share, "Col_8"},
};

}  // namespace

std::vector<MoneyStep> MoneyPath(CellSource& cells) {
    std::vector<MoneyStep> path;
    double reached = 0;
    for (const StepCell& step : kPath) {
        const CellRef cell{"A", kTotalOfA, std::string(step.Field)};
        // The shares begin at 0 again and add up to the net.
        const bool starts = step.Kind == MoneyStep::Is::Sum ||
                            (!path.empty() && path.back().Kind == MoneyStep::Is::Sum &&
                             step.Kind == MoneyStep::Is::Share);
        if (starts) reached = 0;
        path.push_back({step.Name, step.Kind, cell, reached, NumOr(cells.Value(cell))});
        reached += path.back().Amount;
    }
    return path;
}

// --- Components ------------------------------------------------------------------------------

namespace {

struct CostColumn {
    std::string_view Family;
    std::string_view Field;
};
constexpr CostColumn kCosts[] = {{"F1p", "Col_9"}, {"Fp", "Col_4"}, {"F2p", "Col_4"}};

void AddPart(int part, std::vector<ComponentCost>& components) {
    std::map<Currency, ComponentCost> byLine;
    for (const CostColumn& cost : kCosts) {
        const std::string item = fmt::format("{}{}", cost.Family, part);
        Recordset rows = gDB.OpenRecordset(
            fmt::format("SELECT LineNum, Description, {} FROM {} WHERE LineNum<{};", cost.Field,
                        item, kPartTotal.Whole()),
            dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) {
            const Currency line = CurOr(rows[0]);
            const auto [at, isNew] = byLine.try_emplace(line);
            if (isNew) at->second = {StrOr(rows[1]), {item, line, std::string(cost.Field)}};
            at->second.Cost += NumOr(rows[2]);
        }
    }
    for (auto& [line, component] : byLine)
        if (component.Cost != 0) components.push_back(std::move(component));
}

}  // namespace

std::vector<ComponentCost> LargestComponents(std::size_t count) {
    std::vector<ComponentCost> components;
    for (int part = 1; part <= 3; ++part) AddPart(part, components);
    std::ranges::stable_sort(components, std::greater(), &ComponentCost::Cost);
    if (components.size() > count) components.resize(count);
    return components;
}

}  // namespace zolmara
