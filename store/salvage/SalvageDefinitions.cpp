// The file's own list of tables and indexes, and the tables made by it.

#include <algorithm>
#include <limits>
#include <optional>
#include <set>

#include "store/base/PlainSchema.h"
#include "store/salvage/PageMend.h"
#include "store/salvage/SalvageRepair.h"

namespace zolmara::salvage {
namespace {

constexpr std::size_t kMostColumns = 2000;  // of any table

TableShape SchemaShape() {
    TableShape shape;
    shape.Root = 1;
    shape.IsSchema = true;
    shape.Columns.resize(5);
    return shape;
}

// Kind, name, table and root stand at the record's beginning; the statement, which is long, can
// be lost without them.
std::optional<Definition> DefinitionOf(const Record& record) {
    if (record.size() < 4 || record[3].Integer <= 0) return std::nullopt;
    const bool isTable = record[0].Bytes == "table";
    if (!isTable && record[0].Bytes != "index") return std::nullopt;
    const std::int64_t root = record[3].Integer;
    return Definition{isTable, record[1].Bytes, record[2].Bytes,
                      root <= std::numeric_limits<PageNo>::max() ? static_cast<PageNo>(root) : 0,
                      record.size() > 4 ? record[4].Bytes : ""};
}

// Entries whose statement is lost, but not their names.
void AddHeads(const PageFile& file, const PageSet& claimed, TableRows& schema) {
    for (PageNo number = 1; number <= file.Count; ++number) {
        if (!claimed[number]) continue;
        const TreePage page = ParseTablePage(file, number);
        if (page.Kind != PageKind::TableLeaf) continue;
        for (const auto& cell : page.Cells) {
            if (!cell || ReadRecord(file, number, *cell)) continue;
            if (!DefinitionOf(ReadRecordHead(file, number, *cell))) continue;
            schema.Rows.push_back({cell->Key, number, *cell, 0, true, false});
        }
    }
    std::stable_sort(schema.Rows.begin(), schema.Rows.end(),
                     [](const RowPlace& a, const RowPlace& b) { return a.RowId < b.RowId; });
}

void ReadDefinitions(Repair& repair) {
    std::vector<TableRows> schema(1);
    schema[0].Shape = SchemaShape();
    WalkTable(repair.File, schema[0], repair.Claimed);
    TakeLoosePages(repair.File, schema, repair.Claimed, false);
    AddHeads(repair.File, repair.Claimed, schema[0]);
    repair.Schema = std::move(schema[0]);
    std::set<std::string> names;
    for (const auto& row : repair.Schema.Rows) {
        const auto whole = ReadRecord(repair.File, row.Page, row.Place);
        auto definition =
            DefinitionOf(whole ? *whole : ReadRecordHead(repair.File, row.Page, row.Place));
        if (!definition || !names.insert(definition->Name).second) continue;
        repair.Definitions.push_back(std::move(*definition));
    }
}

// A table that has pages in the file but no place in the new one. Its rows are walked so that
// nobody else takes them.
TableRows TableWithoutShape(const Definition& definition) {
    TableRows table;
    table.Shape.Name = definition.Name;
    table.Shape.Root = definition.Root;
    table.Shape.Columns.resize(kMostColumns);
    return table;
}

// The entries of tables that the file's own list has lost altogether: nobody knows their roots.
void AddMadeTables(Repair& repair) {
    std::set<std::string> known;
    for (const auto& definition : repair.Definitions) {
        if (definition.IsTable) known.insert(definition.Name);
    }
    for (const auto& [name, statements] : repair.Made) {
        if (!known.contains(name)) repair.Definitions.push_back({true, name, name, 0, ""});
    }
}

// A statement of the file's own is run only where it says what it should; then one made anew.
bool CreateTable(const Repair& repair, Target& target, const Definition& definition) {
    if (IsInternal(definition.Name)) return false;
    const auto own = ReadTableText(definition.Sql);
    if (own && own->Name == definition.Name && target.Create(definition.Sql)) return true;
    const auto made = repair.Made.find(definition.Name);
    return made != repair.Made.end() && target.Create(made->second.front());
}

}  // namespace

void ReadFile(Repair& repair, const std::string& path) {
    repair.File = ReadPageFile(path);
    MendPages(repair.File);
    repair.Claimed.resize(repair.File.Count + 1ULL, false);
    ReadDefinitions(repair);
}

std::vector<std::string> TableNames(const Repair& repair) {
    std::vector<std::string> names;
    for (const auto& definition : repair.Definitions) {
        if (definition.IsTable && !IsInternal(definition.Name)) names.push_back(definition.Name);
    }
    return names;
}

void CreateTables(Repair& repair, Target& target) {
    AddMadeTables(repair);
    for (const auto& definition : repair.Definitions) {
        if (!definition.IsTable) continue;
        std::optional<TableShape> shape;
        if (CreateTable(repair, target, definition)) shape = target.Describe(definition.Name);
        if (shape) {
            shape->Root = definition.Root;
            repair.Tables.emplace_back().Shape = std::move(*shape);
        } else {
            repair.Lost.push_back(TableWithoutShape(definition));
        }
    }
}

}  // namespace zolmara::salvage
