#include "worksheets/ColumnInputs.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zolmara {

std::vector<int> ColumnsToCalculate(int from, int end, std::initializer_list<TableChanges> inputs) {
    std::vector<int> columns;
    for (int i = from; i < end; ++i) {
        const auto hasChanged = [i](const TableChanges& table) { return table.Column(i); };
        if (std::ranges::any_of(inputs, hasChanged)) columns.push_back(i);
    }
    return columns;
}

void ColumnFinding::Add(Currency line, double amount, bool isNull) {
    Sum += amount;
    const double size = isNull ? kNullSize : std::abs(amount);
    if (!IsEmpty && size <= Size) return;
    IsEmpty = false;
    Line = line;
    Size = size;
}

void KeptColumns::Begin() {
    before_ = std::exchange(now_, {});
    for (auto& [table, findings] : findings_) findings.AreNew = false;
}

TableChanges KeptColumns::ChangesOf(const TableCells& cells) {
    const auto known = before_.find(cells.Name());
    now_.try_emplace(cells.Name(), cells.LastChange());
    return {cells, known == before_.end() ? kNever : known->second};
}

}  // namespace zolmara
