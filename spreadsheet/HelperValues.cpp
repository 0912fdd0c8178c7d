#include "spreadsheet/HelperValues.h"

#include <algorithm>
#include <cmath>

#include "core/Globals.h"
#include "spreadsheet/PassingCells.h"

namespace zolmara {

namespace {

/// As the formulas say it: a cell that holds nothing is smaller than any other.
double SizeOf(const Closing& group, const Variant& value) {
    constexpr double kNone = -1e300;
    const bool bySize = group.Largest == Closing::By::Size;
    if (value.IsNull()) return bySize ? -1 : kNone;
    return bySize ? std::abs(NumOr(value)) : NumOr(value);
}

/// What the largest is sought by. A computed cell that is Null shows 0.
Variant WeightOf(const Closing& group, const CellRef& cell, const Variant& share,
                 Evaluator& walker) {
    if (!group.Weight) return share;
    const Variant weight = walker.Value(*group.Weight, cell);
    const bool computed = weight.IsNull() && group.Weight->Kind == NodeKind::Cell &&
                          FindDescription(Resolve(group.Weight->At, cell)) != nullptr;
    return computed ? Variant(0.0) : weight;
}

}  // namespace

HelperValues::HelperValues(const BookLayout& layout) : layout_(layout) {
    for (const SheetLayout& sheet : layout.Sheets()) GatherSheet(sheet);
    StoreCells cells;
    Evaluator walker(cells);
    for (const SheetLayout& sheet : layout.Sheets())
        for (const ClosedColumn& closed : sheet.Closed) Close(sheet, closed, walker);
}

void HelperValues::GatherSheet(const SheetLayout& sheet) {
    if (sheet.Closed.empty()) return;
    PassingCells cells;
    Evaluator walker(cells);
    for (const Currency line : sheet.Lines) {
        cells.Pass(line);
        for (const ClosedColumn& closed : sheet.Closed) {
            if (!closed.Group->Lines.Holds(line)) continue;
            const CellRef cell{sheet.Item, line, closed.Field};
            const Variant share = walker.Value(closed.Group->Share, cell);
            const double size = SizeOf(*closed.Group, WeightOf(*closed.Group, cell, share, walker));
            Column& column = columns_[&closed];
            column.Got += NumOr(share);
            if (column.Any() && size <= column.Largest) continue;
            column.Largest = size;
            column.Place = sheet.RowOf(line);
        }
    }
}

/// What the helper cells of all sheets say together; the first of equal sheets takes the
/// difference.
void HelperValues::Close(const SheetLayout& sheet, const ClosedColumn& closed, Evaluator& walker) {
    Column& own = columns_[&closed];
    double got = 0;
    bool ahead = true;
    bool largest = own.Any();
    for (const SheetLayout* other : layout_.SheetsOf(*closed.Group, sheet)) {
        const ClosedColumn* there = other->ClosedAt(closed.Field, closed.Group);
        const auto known = there == nullptr ? columns_.end() : columns_.find(there);
        if (other == &sheet) ahead = false;
        if (known == columns_.end() || !known->second.Any()) continue;
        got += known->second.Got;
        if (other == &sheet) continue;
        const double size = std::max(own.Largest, 0.0);
        const double against = std::max(known->second.Largest, 0.0);
        largest = largest && (ahead ? size > against : size >= against);
    }
    own.Want = walker.Number(closed.Group->Want, {sheet.Item, Currency(), closed.Field});
    own.Difference = RoundTo(own.Want - got, 9);
    const bool moves = got != own.Want && !(closed.Group->LeavesZero && got == 0) &&
                       !(closed.Group->OnlyAboveZero && own.Largest <= 0);
    own.Taker = largest && moves ? own.Place : 0;
}

double HelperValues::Of(const ClosedColumn& closed, Helper helper) const {
    const Column& column = columns_.at(&closed);
    using enum Helper;
    switch (helper) {
        case Got:
            return column.Any() ? column.Got : -1;
        case Want:
            return column.Want;
        case Largest:
            return column.Any() ? column.Largest : -1;
        case Place:
            return column.Place;
        case Taker:
            return column.Taker;
        case Difference:
            return column.Difference;
    }
    return 0;
}

}  // namespace zolmara
