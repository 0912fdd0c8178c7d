// The rows on their way into the new tables.

#include <algorithm>
#include <map>

#include "store/salvage/SalvageRepair.h"
#include "store/salvage/SalvageReport.h"

namespace zolmara::salvage {
namespace {

// What a row has become on its way into the new table.
struct Cleaned {
    Record Values;
    std::vector<std::string> Emptied;  // names of fields
};

// A line number that cannot be read is taken from the index, which repeats it.
bool TakeFromIndex(const TableRows& table, const RowPlace& row, std::size_t column, Value& value) {
    if (table.Index.Column != static_cast<int>(column)) return false;
    const auto found = table.Index.Keys.find(row.RowId);
    if (found == table.Index.Keys.end()) return false;
    value = found->second;
    return CanHold(table.Shape.Columns[column], value);
}

Cleaned Clean(const TableRows& table, const RowPlace& row, Record record) {
    Cleaned cleaned{std::move(record), {}};
    for (std::size_t i = 0; i < cleaned.Values.size(); ++i) {
        const auto& column = table.Shape.Columns[i];
        Value& value = cleaned.Values[i];
        if (CanHold(column, value) || TakeFromIndex(table, row, i, value)) continue;
        value = Value{};
        cleaned.Emptied.push_back(column.Name);
    }
    return cleaned;
}

void AddRefusal(std::map<std::string, std::vector<std::string>>& refusals, const std::string& why,
                std::string row) {
    refusals[why].push_back(std::move(row));
}

// Rows that a tree led to go first, so that of two rows with one key the surer one stays.
std::vector<const RowPlace*> InsertOrder(const TableRows& table) {
    std::vector<const RowPlace*> order;
    for (const auto& row : table.Rows) order.push_back(&row);
    std::stable_partition(order.begin(), order.end(),
                          [](const RowPlace* row) { return !row->Loose; });
    return order;
}

}  // namespace

void InsertRows(Repair& repair, Target& target, const TableRows& table) {
    std::map<std::string, std::vector<std::string>> refusals;
    for (const RowPlace* row : InsertOrder(table)) {
        auto record = ReadRow(repair.File, row->Page, row->Place, table.Shape);
        const std::string name = RowText(table.Shape, *row);
        if (!record) {
            AddRefusal(refusals, "could not be read", name);
            continue;
        }
        bool mended = false;
        const Cleaned cleaned = Clean(table, *row, std::move(*record));
        const auto outcome = target.Insert(table.Shape, row->RowId, cleaned.Values, mended);
        repair.Result.RowsKept += outcome == Target::Outcome::Kept;
        if (outcome == Target::Outcome::Refused) {
            AddRefusal(refusals, "left out, with values that the table does not take", name);
        } else if (outcome == Target::Outcome::Repeated) {
            AddRefusal(refusals, "left out, its key stands twice", name);
        } else if (!cleaned.Emptied.empty()) {
            for (const auto& field : cleaned.Emptied)
                AddRefusal(refusals, field + " could not be read and is empty now", name);
        } else if (mended) {
            AddRefusal(refusals, "kept, with \"?\" for letters that could not be read", name);
        }
    }
    for (const auto& [why, rows] : refusals) {
        Lose(repair, TitleOf(table.Shape) + ": " + Listed(rows) + ": " + why + ".");
    }
}

}  // namespace zolmara::salvage
