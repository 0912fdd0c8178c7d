#include "forms/CellAddress.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

std::optional<std::string> FieldNamed(const TableDef& table, std::string_view name) {
    const int index = table.FieldIndex(name);
    if (index < 0) return std::nullopt;
    return table.Fields[static_cast<std::size_t>(index)].Name;
}

/// Column 0 is the field behind the line number.
std::optional<std::string> FieldByPosition(const TableDef& table, double column) {
    const double last = static_cast<double>(table.Fields.size()) - 2;
    if (column < 0 || column > last || !IsExactTo(column, 0)) return std::nullopt;
    return table.Fields[static_cast<std::size_t>(column) + 1].Name;
}

}  // namespace

std::string LineKeyOf(std::string_view table) { return gDB.Table(table).Fields.front().Name; }

bool HasLineKey(std::string_view table) {
    const std::string key = LineKeyOf(table);
    return SameText(key, "LineNum") || SameText(key, "SeqNum");
}

bool HasRow(std::string_view table, Currency line) {
    return NumOr(gDB.Scalar(
               fmt::format("SELECT Count(*) AS Cnt FROM [{}] WHERE {}=?;", table, LineKeyOf(table)),
               {line})) > 0;
}

std::optional<std::string> FieldOfColumn(std::string_view table, std::string_view column) {
    const TableDef& shape = gDB.Table(table);
    if (auto field = FieldNamed(shape, column)) return field;
    const auto number = ParseNumber(column);
    constexpr double kHighestColumn = 110;
    if (!number || !Between(*number, 0.0, kHighestColumn)) return std::nullopt;
    if (SameText(table, "CostCenters") || SameText(table, "ES"))
        return FieldByPosition(shape, *number);
    if (auto field = FieldNamed(shape, "Col_" + NumberText(*number))) return field;
    return FieldNamed(shape, CostCenterColumn(Currency(*number)));
}

}  // namespace zolmara
