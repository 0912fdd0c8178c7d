#include "structure/TableShape.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

/// The name that a new column has until it gets its place; it is not carried on.
constexpr std::string_view kNewField = "CC";
/// The columns that a table of the store can have.
constexpr std::size_t kMostColumns = 2000;

}  // namespace

TableShape::TableShape(std::string_view table) : table_(table) {
    for (const auto& field : gDB.Table(table).Fields) {
        if (SameText(field.Name, kNewField)) continue;
        const bool isColumn = IsCostCenterColumn(field.Name);
        slots_.push_back(
            {field.Name, field.Name, isColumn ? LineOfColumn(field.Name) : Currency(), isColumn});
    }
}

/// Columns stand in the order of their lines; the last of them stands ahead of the total.
TableShape::Place TableShape::PlaceOf(Currency line) const {
    Currency former;
    for (std::size_t at = 0; at < slots_.size(); ++at) {
        const Slot& slot = slots_[at];
        if (slot.IsColumn) former = slot.Line;
        if (slot.IsColumn && line <= slot.Line) return {at, line.Whole() == slot.Line.Whole()};
        if (!slot.IsColumn && line - former <= kWholeStep) return {at, false};
    }
    return {slots_.size(), false};
}

std::string TableShape::Obstacle(Currency line) const {
    const Place place = PlaceOf(line);
    if (slots_.size() >= kMostColumns)
        return fmt::format("table {} has no room for another column", table_);
    if (place.At == slots_.size() && !slots_.empty() && !slots_.back().IsColumn)
        return fmt::format("{} would stand behind the total of table {}", CostCenterColumn(line),
                           table_);
    const auto isNextTaken = [&](const Slot& slot) {
        return slot.IsColumn && slot.Line == line + kSubscriptStep;
    };
    const auto behind = slots_.begin() + static_cast<std::ptrdiff_t>(place.At) + 1;
    if (place.Moves && std::any_of(behind, slots_.end(), isNextTaken))
        return fmt::format("the columns behind {} in table {} cannot all move up",
                           CostCenterColumn(line), table_);
    return {};
}

void TableShape::Rename(Slot& slot, Currency line) {
    slot.Line = line;
    slot.Name = CostCenterColumn(line);
}

void TableShape::Add(Currency line) {
    const Place place = PlaceOf(line);
    if (place.Moves) Rename(slots_[place.At], line + kSubscriptStep);
    slots_.insert(slots_.begin() + static_cast<std::ptrdiff_t>(place.At),
                  {"", CostCenterColumn(line), line, true});
}

void TableShape::Remove(Currency line) {
    std::erase_if(slots_, [&](const Slot& slot) { return slot.IsColumn && slot.Line == line; });
    const auto inGroup = [&](const Slot& slot) {
        return slot.IsColumn && slot.Line.Whole() == line.Whole();
    };
    Currency next = line + kSubscriptStep;
    for (auto at = std::ranges::find_if(slots_, inGroup); at != slots_.end() && inGroup(*at);
         ++at) {
        if (at->Line != next) continue;
        Rename(*at, next - kSubscriptStep);
        next += kSubscriptStep;
    }
}

std::vector<RebuiltField> TableShape::Fields() const {
    std::vector<RebuiltField> fields;
    fields.reserve(slots_.size());
    for (const Slot& slot : slots_) fields.push_back({slot.From, slot.Name});
    return fields;
}

}  // namespace zolmara
