#include "forms/RowEntry.h"

#include <algorithm>

#include "core/Globals.h"

namespace zolmara {

const Variant* RowEntry::Find(std::string_view field) const {
    const auto found =
        std::ranges::find_if(Cells, [&](const auto& cell) { return SameText(cell.first, field); });
    return found == Cells.end() ? nullptr : &found->second;
}

void RowEntry::Set(std::string_view field, const Variant& value) {
    for (auto& [name, kept] : Cells)
        if (SameText(name, field)) {
            kept = value;
            return;
        }
    Cells.emplace_back(field, value);
}

void RowEntry::Erase(std::string_view field) {
    std::erase_if(Cells, [&](const auto& cell) { return SameText(cell.first, field); });
}

}  // namespace zolmara
