#include "worksheets/Sheets.h"

#include <fmt/format.h>

#include <algorithm>

namespace zolmara::test {
namespace {

std::string Exact(const Variant& value) {
    if (value.IsNull()) return "Null";
    return value.IsDouble() ? fmt::format("{:.17g}", value.AsDouble()) : Text(value);
}

std::vector<std::string> DumpTable(const std::string& table) {
    std::vector<std::string> lines;
    Recordset rows = gDB.OpenRecordset("SELECT * FROM [" + table + "];", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        std::string line;
        for (int i = 0; i < rows.FieldCount(); ++i) line += Exact(rows[i]) + "|";
        lines.push_back(line);
    }
    std::ranges::sort(lines);
    return lines;
}

void RebuildSchedules() {
    RunBatch(gDB, [] {
        for (const Worksheet& sheet : AllWorksheets()) {
            if (std::string("BCDEF").find(sheet.Item.front()) != std::string::npos) {
                BuildWorksheet(sheet.Item);
            }
        }
    });
}

}  // namespace

double Num(std::string_view table, double line, std::string_view field) {
    return NumOr(Cell(table, line, field));
}

bool IsNullCell(std::string_view table, double line, std::string_view field) {
    return Cell(table, line, field).IsNull();
}

std::string TextCell(std::string_view table, double line, std::string_view field) {
    return Text(Cell(table, line, field));
}

std::vector<double> Column(std::string_view sql) {
    std::vector<double> values;
    for (Recordset rows = gDB.OpenRecordset(sql, dbOpenSnapshot); !rows.Eof(); rows.MoveNext()) {
        values.push_back(NumOr(rows[0]));
    }
    return values;
}

std::vector<std::string> FieldNames(std::string_view table) {
    std::vector<std::string> names;
    for (const FieldDef& field : gDB.Table(table).Fields) names.push_back(field.Name);
    return names;
}

std::map<std::string, std::vector<std::string>> Dump() {
    std::map<std::string, std::vector<std::string>> tables;
    for (const std::string& table : gDB.TableNames()) {
        if (table != "Log") tables[table] = DumpTable(table);
    }
    return tables;
}

const std::vector<std::string>& MirrorFamilies() {
    static const std::vector<std::string> families = {"Bp",  "B1p", "Cp", "C1p", "Dp",
                                                      "D1p", "E1p", "Fp", "F1p", "F2p"};
    return families;
}

void SetComponents(int part, const std::vector<double>& lines) {
    gDB.Execute(fmt::format("DELETE * FROM S2p{};", part));
    for (const double line : lines) {
        gDB.Execute(fmt::format("INSERT INTO S2p{} (LineNum,Col_1,Col_2) VALUES (?,?,?);", part),
                    {Currency(line), "Component " + NumberText(line), "14-" + NumberText(line)});
    }
    RebuildSchedules();
}

void AddCenters(const std::vector<double>& lines) {
    for (const double line : lines) {
        const std::string name = "Center " + NumberText(line);
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (?,?);",
                    {Currency(line), name});
        gDB.Execute("INSERT INTO A (LineNum,CCName) VALUES (?,?);", {Currency(line), name});
    }
    BuildWorksheet("A7p2");
    RebuildSchedules();
}

}  // namespace zolmara::test
