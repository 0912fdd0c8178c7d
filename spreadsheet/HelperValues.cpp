#include "spreadsheet/HelperValues.h"

#include <cmath>

#include "core/Globals.h"

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
    const bool computed = group.Weight->Kind == NodeKind::Cell &&
                          FindDescription(Resolve(group.Weight->At, cell)) != nullptr;
    return weight.IsNull() && computed ? Variant(0.0) : weight;
}

}  // namespace

HelperValues::HelperValues(const SheetLayout& sheet) : sheet_(sheet) {
    StoreCells cells;
    Evaluator walker(cells);
    for (const ClosedColumn& column : sheet.Closed) Gather(column, walker);
}

void HelperValues::Gather(const ClosedColumn& column, Evaluator& walker) {
    const Closing& group = *column.Group;
    std::array<double, kHelpers>& values = values_[&column];
    const auto set = [&](Helper helper, double value) {
        values.at(static_cast<std::size_t>(helper)) = value;
    };
    set(Helper::Got, -1);
    set(Helper::Largest, -1);
    CellRef cell{sheet_.Item, Currency(), column.Field};
    const ClosedShares& shares = walker.Shares(group, cell);
    double got = 0;
    double largest = 0;
    int place = 0;
    for (const Currency line : sheet_.Lines) {
        if (!group.Lines.Holds(line)) continue;
        cell.Line = line;
        const Variant share = walker.Share(group, cell);
        got += NumOr(share);
        const double size = SizeOf(group, WeightOf(group, cell, share, walker));
        if (place != 0 && size <= largest) continue;
        largest = size;
        place = sheet_.RowOf(line);
    }
    if (place != 0) {
        set(Helper::Got, got);
        set(Helper::Largest, largest);
    }
    set(Helper::Want, shares.Want);
    set(Helper::Place, place);
    const bool takes = shares.Moves && shares.Item == sheet_.Item;
    set(Helper::Taker, takes ? sheet_.RowOf(shares.Line) : 0);
    set(Helper::Difference, RoundTo(shares.Want - shares.Got, 9));
}

double HelperValues::Of(const ClosedColumn& column, Helper helper) const {
    return values_.at(&column).at(static_cast<std::size_t>(helper));
}

}  // namespace zolmara
