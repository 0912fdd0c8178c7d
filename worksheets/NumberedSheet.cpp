#include "worksheets/NumberedSheet.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/CellRows.h"

namespace zolmara {

NumberedSheet::NumberedSheet(std::string_view item) : cells_(CellsOf(gDB, item)) {
    for (int column = 1;; ++column) {
        const int position = cells_.Position(fmt::format("Col_{}", column));
        if (position < 0) break;
        positions_.push_back(position);
    }
}

int NumberedSheet::At(int column) const {
    const auto index = static_cast<std::size_t>(column - 1);
    if (index < positions_.size()) return positions_[index];
    return RequiredPosition(cells_, fmt::format("Col_{}", column));
}

double NumberedSheet::OnLine(Currency line, int column) const {
    const auto row = cells_.RowOn(line);
    return row ? Amount(*row, column) : 0;
}

void NumberedSheet::Set(Currency line, int column, double amount) const {
    SetOnLine(cells_, line, At(column), amount);
}

void NumberedSheet::Put(Currency line, int column, double amount) const {
    PutOnLine(cells_, line, At(column), amount);
}

}  // namespace zolmara
