#include "store/salvage/Salvage.h"

#include "core/Globals.h"

// Method: the library that writes a CRF walks no tree in which a single page is broken, but the
// pages themselves are simple, and most rows of a damaged file stand where they always stood. So
// the file is read here as what it is, a row of pages of equal size.
//
// A table is a tree of pages: interior pages lead, by ascending rowid, to leaf pages, which hold
// the rows. Each interior cell tells the highest rowid below it, so when a leaf cannot be read the
// rowids that are lost are known, and when a page stands in a place where its rowids do not belong
// it is a stray copy and is not believed. A leaf that is partly broken gives the rows that still
// fill their records to the byte and fit the table's field types.
//
// The tables' definitions are rows of one more such tree, rooted in page 1. Its pages tell
// themselves by what they hold, so they are found without the root too.
//
// When an interior page is lost, the leaves below it are loose. A loose leaf is given to a table
// only when exactly one table has a gap that its rows fit in number, rowids and types, and when
// that table's index does not speak against it. Otherwise the rows are reported and left out: a
// missing figure can be keyed again, a figure in the wrong table would go unseen.
//
// The indexes are built anew. What is left of the old ones serves as a witness: an index repeats
// the line number of each row, so it can tell which lines are missing.

#include <algorithm>
#include <bit>
#include <iterator>
#include <limits>
#include <map>
#include <set>

#include "store/base/PlainSchema.h"
#include "store/base/StoreError.h"
#include "store/salvage/PageMend.h"
#include "store/salvage/PageReader.h"
#include "store/salvage/SalvageLoose.h"
#include "store/salvage/SalvageReport.h"
#include "store/salvage/SalvageTarget.h"
#include "store/salvage/SalvageTree.h"
#include "store/salvage/SalvageTwins.h"

namespace zolmara {
namespace salvage {
namespace {

constexpr std::size_t kMostColumns = 2000;  // of any table

// A row of the file's list of tables and indexes.
struct Definition {
    bool IsTable = false;
    std::string Name;
    std::string Table;
    PageNo Root = 0;
    std::string Sql;  // empty for an index that belongs to its table's definition
};

struct Repair {
    const zolmara::Definitions& Made;
    const zolmara::Definitions& Indexed;
    PageFile File{};
    PageSet Claimed{};
    TableRows Schema{};
    std::vector<Definition> Definitions{};
    std::vector<TableRows> Tables{};
    std::vector<TableRows> Lost{};  // tables whose statement cannot be read
    std::vector<Leftover> Leftovers{};
    SalvageResult Result{};
};

void Lose(Repair& repair, std::string sentence) {
    if (!sentence.empty()) repair.Result.Losses.push_back(std::move(sentence));
}

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

bool IsInternal(const std::string& name) { return name.starts_with("sqlite_"); }

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

bool DiffersByOneBit(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    int bits = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        bits += std::popcount(static_cast<unsigned char>(a[i] ^ b[i]));
    return bits == 1;
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

// A table whose root nobody knows is looked for among the pages that are nobody's child.
struct Homeless {
    TableRows* Table;
    PageNo Told;                  // the number that the damaged list gives, or 0
    std::vector<PageNo> Fitting;  // pages that could be its root
};

bool CouldBeRoot(const Repair& repair, const TableRows& table, PageNo page) {
    TableRows trial;
    trial.Shape = table.Shape;
    trial.Shape.Root = page;
    trial.Index = table.Index;
    PageSet claimed = repair.Claimed;
    WalkTable(repair.File, trial, claimed);
    const bool whole = trial.Index.Column < 0 || !trial.Index.Complete ||
                       trial.Rows.size() == trial.Index.Keys.size();
    const bool exact =
        trial.Widths.size() == 1 && trial.Widths.contains(trial.Shape.Columns.size());
    return whole && exact && !trial.Rows.empty() && trial.Gaps.empty() &&
           std::all_of(trial.Rows.begin(), trial.Rows.end(),
                       [](const RowPlace& row) { return row.Confirmed; });
}

std::vector<PageNo> FreeRoots(const Repair& repair) {
    const std::vector<bool> children = ChildPages(repair.File);
    const std::vector<bool> free = FreePages(repair.File);
    std::set<PageNo> taken;
    for (const auto& definition : repair.Definitions) taken.insert(definition.Root);
    std::vector<PageNo> pages;
    for (PageNo page = 2; page <= repair.File.Count; ++page) {
        if (children[page] || free[page] || repair.Claimed[page] || taken.contains(page)) continue;
        if (ParseTablePage(repair.File, page).Sound) pages.push_back(page);
    }
    return pages;
}

bool DiffersByOneBit(PageNo a, PageNo b) { return std::popcount(a ^ b) == 1; }

// Of two tables with one root, the one that has found no other keeps it.
void GiveSharedRoots(std::vector<Homeless>& homeless) {
    std::map<PageNo, std::vector<Homeless*>> left;
    for (auto& table : homeless) {
        if (table.Table->Shape.Root == 0) left[table.Told].push_back(&table);
    }
    for (auto& [page, tables] : left) {
        const auto& fitting = tables.front()->Fitting;
        const bool fits = std::find(fitting.begin(), fitting.end(), page) != fitting.end();
        if (tables.size() == 1 && fits) tables.front()->Table->Shape.Root = page;
    }
}

void FindRoots(Repair& repair, std::vector<Homeless>& homeless) {
    std::map<PageNo, int> wanted;
    for (const PageNo page : homeless.empty() ? std::vector<PageNo>{} : FreeRoots(repair)) {
        for (auto& table : homeless) {
            if (!CouldBeRoot(repair, *table.Table, page)) continue;
            table.Fitting.push_back(page);
            ++wanted[page];
        }
    }
    // A number with one bit changed still tells which page it was. Without a number only a table
    // whose place in the list is gone may take a page that nobody else could have: the pages of a
    // table that nobody knows are free, too.
    for (auto& table : homeless) {
        std::vector<PageNo> near;
        for (const PageNo page : table.Fitting) {
            if (DiffersByOneBit(page, table.Told)) near.push_back(page);
        }
        const bool alone =
            table.Told == 0 && table.Fitting.size() == 1 && wanted[table.Fitting.front()] == 1;
        if (near.size() == 1) table.Table->Shape.Root = near.front();
        if (alone) table.Table->Shape.Root = table.Fitting.front();
    }
    GiveSharedRoots(homeless);
}

// A root that two tables share, or that is a page inside of a tree, is a damaged number.
std::vector<Homeless> DropDamagedRoots(Repair& repair, std::vector<TableRows>& tables) {
    std::vector<Homeless> homeless;
    const std::vector<bool> children = ChildPages(repair.File);
    std::map<PageNo, int> roots;
    for (const auto& definition : repair.Definitions) ++roots[definition.Root];
    for (auto& table : tables) {
        PageNo& root = table.Shape.Root;
        const bool there = root > 1 && root <= repair.File.Count;
        // A page that is there and is nobody else's is the root, whatever has become of it.
        if (there && roots[root] == 1 && !children[root]) continue;
        homeless.push_back({&table, root, {}});
        root = 0;
    }
    // A page that only one of those that lay claim to it can have is that one's.
    for (auto& definition : repair.Definitions) {
        if (definition.IsTable && roots[definition.Root] > 1) definition.Root = 0;
    }
    return homeless;
}

// The tables without a definition are walked with the others, for the pages they own.
void FindRows(Repair& repair) {
    std::vector<TableRows> all = std::move(repair.Tables);
    const auto known = static_cast<std::ptrdiff_t>(all.size());
    std::move(repair.Lost.begin(), repair.Lost.end(), std::back_inserter(all));
    auto homeless = DropDamagedRoots(repair, all);
    FindRoots(repair, homeless);
    WalkTables(repair.File, all, repair.Claimed);
    for (auto& table : all) AddGapsByIndex(table);
    repair.Tables.assign(std::make_move_iterator(all.begin()),
                         std::make_move_iterator(all.begin() + known));
    repair.Lost.assign(std::make_move_iterator(all.begin() + known),
                       std::make_move_iterator(all.end()));
}

bool AnyGaps(const std::vector<TableRows>& tables) {
    return std::any_of(tables.begin(), tables.end(),
                       [](const TableRows& table) { return !table.Gaps.empty(); });
}

void ReportLostTables(Repair& repair) {
    for (const auto& table : repair.Lost) {
        if (IsInternal(table.Shape.Name)) continue;
        Lose(repair, "Table definition lost: " + table.Shape.Name + "; its " +
                         std::to_string(table.Rows.size()) + " rows cannot be put back.");
    }
}

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

std::string Listed(const std::vector<std::string>& rows) {
    constexpr std::size_t kMostNamed = 10;
    std::string list;
    for (std::size_t i = 0; i < std::min(rows.size(), kMostNamed); ++i) {
        list += (list.empty() ? "" : ", ") + rows[i];
    }
    if (rows.size() <= kMostNamed) return list;
    return list + " and " + std::to_string(rows.size() - kMostNamed) + " more";
}

// Rows that a tree led to go first, so that of two rows with one key the surer one stays.
std::vector<const RowPlace*> InsertOrder(const TableRows& table) {
    std::vector<const RowPlace*> order;
    for (const auto& row : table.Rows) order.push_back(&row);
    std::stable_partition(order.begin(), order.end(),
                          [](const RowPlace* row) { return !row->Loose; });
    return order;
}

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

// The rows are there already, so that none is left out because its key stands twice.
void CreateLostIndexes(Repair& repair, Target& target) {
    for (const auto& table : repair.Tables) {
        if (!MakesIndexes(repair.Indexed, table.Shape.Name)) continue;
        const auto& statements = repair.Indexed.at(table.Shape.Name);
        for (std::size_t i = 1; i < statements.size(); ++i)
            Lose(repair, LostIndexText(target, table, statements[i]));
    }
}

void ReportTable(Repair& repair, Target& target, const TableRows& table) {
    for (auto& sentence : MissingRows(table)) Lose(repair, std::move(sentence));
    InsertRows(repair, target, table);
}

}  // namespace
}  // namespace salvage

bool HoldsTables(const std::string& path, const std::vector<std::string>& names) {
    using namespace salvage;
    const Definitions none;
    Repair repair{none, none};
    ReadFile(repair, path);
    const auto found = TableNames(repair);
    return std::all_of(names.begin(), names.end(), [&](const std::string& name) {
        return std::find(found.begin(), found.end(), name) != found.end();
    });
}

bool HoldsOwnIndexes(const std::string& path) {
    using namespace salvage;
    const Definitions none;
    Repair repair{none, none};
    ReadFile(repair, path);
    return std::ranges::any_of(repair.Definitions, [](const Definition& definition) {
        return !definition.IsTable && definition.Name == "ndx" + definition.Table;
    });
}

SalvageResult SalvageDatabase(const std::string& source, const std::string& target,
                              const std::function<void(sqlite3*)>& prepare, const Definitions& made,
                              const Definitions& indexed) {
    using namespace salvage;
    Repair repair{made, indexed};
    ReadFile(repair, source);
    const std::vector<std::string> names = TableNames(repair);
    if (names.empty()) {
        throw StoreError(StoreError::Kind::NotADatabase, source + ": is not a Cost Report File");
    }
    Target file(target, prepare);
    const std::string missing = MissingDefinitions(repair.Schema, names);
    Lose(repair, missing);
    CreateTables(repair, file);
    CreateIndexes(repair, file);
    FindRows(repair);
    // Where every table of a CRF has its definition again, no unknown one can own a page.
    const bool needsWitness = (!missing.empty() && made.empty()) || AnyGaps(repair.Lost);
    repair.Leftovers = TakeLoosePages(repair.File, repair.Tables, repair.Claimed, needsWitness);
    ReportLostTables(repair);
    for (const auto& table : repair.Tables) ReportTable(repair, file, table);
    CreateLostIndexes(repair, file);
    for (auto& text : TwinTexts(repair.File, repair.Tables)) Lose(repair, std::move(text));
    for (const auto& left : repair.Leftovers) Lose(repair, LeftoverText(left));
    file.Finish();
    return repair.Result;
}

}  // namespace zolmara
