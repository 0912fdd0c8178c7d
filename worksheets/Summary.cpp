#include "worksheets/Summary.h"

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

}  // namespace zolmara
