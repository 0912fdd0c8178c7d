// The indexes: made again by the file's own statements or anew, and read as witnesses of the rows.

#include <algorithm>
#include <map>
#include <set>

#include "core/Globals.h"
#include "store/base/OneBit.h"
#include "store/base/PlainSchema.h"
#include "store/salvage/SalvageRepair.h"
#include "store/salvage/SalvageReport.h"

namespace zolmara::salvage {
namespace {

TableRows* FindTable(Repair& repair, const std::string& name) {
    const auto found = std::find_if(repair.Tables.begin(), repair.Tables.end(),
                                    [&](const TableRows& t) { return t.Shape.Name == name; });
    return found == repair.Tables.end() ? nullptr : &*found;
}

// A whole index on the line number makes the best witness.
bool IsBetter(const IndexFacts& a, const IndexFacts& b) {
    if (a.Complete != b.Complete) return a.Complete;
    if ((a.Column == 0) != (b.Column == 0)) return a.Column == 0;
    return a.Keys.size() > b.Keys.size();
}

void ReadIndex(Repair& repair, Target& target, const Definition& definition, TableRows& table) {
    const auto [column, count] = target.DescribeIndex(definition.Name);
    if (column < 0 || column == table.Shape.RowIdColumn) return;
    IndexFacts facts = WalkIndex(repair.File, definition.Root, count);
    facts.Column = column;
    if (table.Index.Column < 0 || IsBetter(facts, table.Index)) table.Index = std::move(facts);
}

// The one name among the table's fields that a damaged name can have been; empty without one.
std::string FieldMeant(const TableShape& shape, const std::string& name) {
    std::string meant;
    for (const auto& column : shape.Columns) {
        if (SameText(column.Name, name)) return column.Name;
        if (!DiffersByOneBit(column.Name, name)) continue;
        if (!meant.empty()) return "";
        meant = column.Name;
    }
    return meant;
}

// SQLite takes a name in double quotes that is no field's for a text, and indexes that.
bool CreateIndex(Target& target, const Definition& definition, const TableShape& shape) {
    const auto own = ReadIndexText(definition.Sql);
    if (!own || own->Name != definition.Name || own->Table != definition.Table) return false;
    std::string sql = definition.Sql;
    for (const auto& field : own->Fields) {
        const std::string meant = FieldMeant(shape, field);
        if (meant.empty()) return false;
        if (!SameText(meant, field)) sql.replace(sql.rfind(field), field.size(), meant);
    }
    return target.Create(sql);
}

// The indexes that a table is made with, where the file has not got them.
void CreateMadeIndexes(Repair& repair, Target& target) {
    for (const auto& table : repair.Tables) {
        const auto made = repair.Made.find(table.Shape.Name);
        if (made == repair.Made.end()) continue;
        for (std::size_t i = 1; i < made->second.size(); ++i) target.Create(made->second[i]);
    }
}

bool MakesIndexes(const zolmara::Definitions& definitions, const std::string& table) {
    const auto found = definitions.find(table);
    return found != definitions.end() && found->second.size() > 1;
}

// The lines that stand more than once in a table.
std::vector<std::string> RepeatedLines(const TableRows& table) {
    std::map<double, int> times;
    if (table.Shape.HasLineNum) {
        for (const auto& row : table.Rows) ++times[row.LineNum];
    }
    std::vector<std::string> lines;
    for (const auto& [line, count] : times) {
        if (count > 1) lines.push_back("line " + LineText(line));
    }
    return lines;
}

std::string LostIndexText(Target& target, const TableRows& table, const std::string& sql) {
    const auto index = ReadIndexText(sql);
    if (!index) return "";
    const std::string its = TitleOf(table.Shape) + ": its index " + index->Name;
    if (CreateIndex(target, {false, index->Name, table.Shape.Name, 0, sql}, table.Shape)) {
        return its + " was lost and made anew.";
    }
    const auto lines = RepeatedLines(table);
    const std::string why = lines.empty() ? "" : ": " + Listed(lines) + " stands more than once";
    return its + " was lost and could not be made anew" + why + ". The rows were kept.";
}

}  // namespace

void CreateIndexes(Repair& repair, Target& target) {
    std::set<std::string> lost;
    for (const auto& definition : repair.Definitions) {
        if (definition.IsTable) continue;
        TableRows* table = FindTable(repair, definition.Table);
        if (!table) {
            lost.insert(definition.Table);
            continue;
        }
        const bool own = definition.Sql.empty() || CreateIndex(target, definition, table->Shape);
        if (!own && (repair.Made.contains(definition.Table) ||
                     MakesIndexes(repair.Indexed, definition.Table)))
            continue;
        if (!own) {
            Lose(repair, TitleOf(table->Shape) + ": its index " + definition.Name +
                             " could not be made again.");
            continue;
        }
        ReadIndex(repair, target, definition, *table);
    }
    for (const auto& definition : repair.Definitions) {
        if (definition.IsTable) lost.erase(definition.Name);
    }
    for (const auto& name : lost) Lose(repair, "Table definition lost: " + name + ".");
    CreateMadeIndexes(repair, target);
}

void CreateLostIndexes(Repair& repair, Target& target) {
    for (const auto& table : repair.Tables) {
        if (!MakesIndexes(repair.Indexed, table.Shape.Name)) continue;
        const auto& statements = repair.Indexed.at(table.Shape.Name);
        for (std::size_t i = 1; i < statements.size(); ++i)
            Lose(repair, LostIndexText(target, table, statements[i]));
    }
}

}  // namespace zolmara::salvage
