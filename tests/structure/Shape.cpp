#include "structure/Shape.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara::test {

namespace {

std::string Join(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string KeyOf(std::string_view table) { return gDB.Table(table).Fields.front().Name; }

std::string DumpRow(const Recordset& row) {
    std::string text = "  ";
    for (int i = 0; i < row.FieldCount(); ++i)
        text += row[i].IsNull() ? "|Null" : "|" + Text(row[i]);
    return text;
}

std::vector<std::string> DumpTable(const std::string& table) {
    std::string head = table + ":";
    for (const auto& field : gDB.Table(table).Fields)
        head += fmt::format(" {} {} {}", field.Name, static_cast<int>(field.Type), field.Size);
    std::vector<std::string> lines = {head};
    auto rows = gDB.OpenRecordset("SELECT * FROM [" + table + "];");
    for (; !rows.Eof(); rows.MoveNext()) lines.push_back(DumpRow(rows));
    std::sort(lines.begin() + 1, lines.end());
    return lines;
}

}  // namespace

std::vector<std::string> Columns(std::string_view table) {
    std::vector<std::string> names;
    for (const auto& field : gDB.Table(table).Fields) names.push_back(field.Name);
    return names;
}

std::string CostCenterColumns(std::string_view table) {
    std::vector<std::string> names;
    for (const auto& name : Columns(table))
        if (name.starts_with("CC")) names.push_back(name);
    return Join(names);
}

std::string Lines(std::string_view table) { return Lines(table, -1e6, 1e6); }

std::string Lines(std::string_view table, double from, double to) {
    const auto key = KeyOf(table);
    std::vector<std::string> lines;
    auto rows = gDB.OpenRecordset(
        fmt::format("SELECT {0} FROM {1} WHERE {0}>=? And {0}<=? ORDER BY {0};", key, table),
        {Currency(from), Currency(to)});
    for (; !rows.Eof(); rows.MoveNext()) lines.push_back(Text(rows[0]));
    return Join(lines);
}

std::vector<std::string> DumpCrf() {
    std::vector<std::string> dump;
    auto tables = gDB.TableNames();
    std::sort(tables.begin(), tables.end());
    for (const auto& table : tables) {
        if (table.starts_with("tbl") || table == "Log") continue;
        const auto lines = DumpTable(table);
        dump.insert(dump.end(), lines.begin(), lines.end());
    }
    return dump;
}

}  // namespace zolmara::test
