// Method: the tables go aside, into memory, by a copy of whole rows, which costs next to nothing.
// From there their rows are put together anew, cell by cell, which is most of the work. A second
// thread gets copies of the larger tables that stand aside, in two lots so that it begins early,
// and makes their rows in memory, table after table from the front, while this one works from the
// back, until they meet. What the second thread made comes into the file by a copy of whole rows
// again. One connection alone reads and writes the file.

#include "store/RebuildTables.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>
#include <thread>
#include <utility>

#include "core/Globals.h"
#include "core/Status.h"
#include "store/DatabaseImpl.h"
#include "store/MemoryBeside.h"
#include "store/RebuildLots.h"

namespace zolmara {
namespace {

using Part = RebuildPart;
using Parts = std::vector<Part>;

/// So much of all cells is set out for the second thread at most: the rest is made here.
constexpr double kShare = 0.8;
/// So much of that is the first lot.
constexpr double kFirstLot = 0.4;

bool HasSecondProcessor() {
    const unsigned set = TheRebuildShares().Processors;
    return (set > 0 ? set : std::thread::hardware_concurrency()) > 1;
}

/// Former fields are named in their order nearly always: looking begins behind the last one.
const FieldDef& FormerField(const TableDef& table, const std::string& name, std::size_t& next) {
    const bool isNext = next < table.Fields.size() && table.Fields[next].Name == name;
    const int at = isNext ? static_cast<int>(next) : table.FieldIndex(name);
    if (at < 0)
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("no such column: {}.{}", table.Name, name));
    next = static_cast<std::size_t>(at) + 1;
    return table.Fields[static_cast<std::size_t>(at)];
}

void AddField(Part& part, const RebuiltField& wanted, std::size_t& next) {
    part.Columns += part.Columns.empty() ? "" : ",";
    FieldDef field;
    if (wanted.From.empty()) {
        part.Columns += "NULL";
    } else {
        field = FormerField(part.Old, wanted.From, next);
        part.Columns += Quoted(field.Name);
    }
    field.Name = wanted.Name;
    field.Required = false;
    part.New.Fields.push_back(std::move(field));
}

/// As many rows as a table has, or a few more where some were deleted, without counting them.
std::size_t GuessRows(sqlite3* handle, const std::string& table) {
    SqliteStatement select(handle, "SELECT max(rowid) FROM main." + Quoted(table));
    return select.Step(table) ? static_cast<std::size_t>(select.Integer(0)) : 0;
}

/// The first tables of a list, up to so many cells, and the rest.
RebuildLots InLots(const RebuildParts& parts, double cells) {
    auto next = parts.begin();
    for (; next != parts.end() && cells > 0; ++next) cells -= static_cast<double>((*next)->Cells);
    RebuildLots lots;
    if (next != parts.begin()) lots.emplace_back(RebuildParts(parts.begin(), next));
    if (next != parts.end()) lots.emplace_back(RebuildParts(next, parts.end()));
    return lots;
}

class Rebuild {
public:
    Rebuild(Database::Impl& db, std::string_view copy) : db_(db), copy_(copy) {}

    Part MakePart(const RebuiltTable& wanted, std::size_t number) const {
        const TablePtr table = db_.Tables.Find(wanted.Name);
        if (!table) throw StoreError(StoreError::Kind::NoSuchItem, "no such table: " + wanted.Name);
        db_.Note(*table);
        Part part{&wanted, std::to_string(number), table->Def, {wanted.Name, {}, {}}, ""};
        part.New.Fields.reserve(wanted.Fields.size());
        std::size_t next = 0;
        for (const RebuiltField& field : wanted.Fields) AddField(part, field, next);
        part.Cells = GuessRows(db_.Handle, part.Old.Name) * part.New.Fields.size();
        return part;
    }

    /// Makes some tables anew. With `keepsCopy` the last one's copy is left.
    void Run(std::span<Part> parts, bool keepsCopy) {
        const ChangeRecorder::Rest unheard(db_.Changes);
        RebuildParts own;
        RebuildLots lots = ChooseLots(parts, own);
        RebuildHelper helper(lots);
        for (const RebuildLot& lot : lots) {
            PutAside(lot.Parts());
            if (helper.IsThere()) helper.Give({db_.Handle, lot.Parts().front()->Aside.c_str()});
        }
        PutAside(own);
        ReplaceAll(parts, keepsCopy);
        for (const Part* const part : own) {
            Fill(*part, part->Columns, part->Aside);
            Index(*part);
        }
        for (std::size_t i = 0; i < lots.size(); ++i) Finish(lots, i, helper);
        if (keepsCopy)
            Do("INSERT INTO main.{} SELECT * FROM main.{}", copy_, parts.back().New.Name);
    }

    void DropCopy() {
        const TablePtr known = db_.Tables.Find(copy_);
        if (!known) return;
        Do("DROP TABLE main.{}", known->Def.Name);
        db_.AfterSchemaChange(known->Def.Name, Shape::Gone);
    }

private:
    template <class... Names>
    void Do(fmt::format_string<std::string, Names...> sql, const std::string& name,
            const Names&... names) {
        SqliteRun(db_.Handle, fmt::format(sql, Quoted(name), Quoted(names)...), name);
    }

    /// The lots of the second thread, and what it has no part in, by the order given.
    RebuildLots ChooseLots(std::span<Part> parts, RebuildParts& own) const {
        const RebuildParts shared = ChooseShared(parts);
        double cells = 0;
        for (const Part* const part : shared) cells += static_cast<double>(part->Cells);
        RebuildLots lots = InLots(shared, kFirstLot * cells);
        for (Part& part : parts) {
            const auto lot = std::ranges::find_if(lots, [&](const RebuildLot& one) {
                return std::ranges::count(one.Parts(), &part) > 0;
            });
            part.Aside = MemoryBeside::NameOfAside(static_cast<int>(lot - lots.begin()));
            if (lot == lots.end()) own.push_back(&part);
        }
        return lots;
    }

    /// The largest tables first.
    RebuildParts ChooseShared(std::span<const Part> parts) const {
        RebuildParts bySize;
        std::size_t all = 0;
        for (const Part& part : parts) {
            bySize.push_back(&part);
            all += part.Cells;
        }
        const RebuildShares& shares = TheRebuildShares();
        if (all < shares.LeastCells || !HasSecondProcessor() || !db_.Beside.HasRoom()) return {};
        if (shares.SecondAlone) return bySize;
        std::ranges::stable_sort(bySize, std::greater(), &Part::Cells);
        double left = kShare * static_cast<double>(all);
        std::erase_if(bySize, [&](const Part* part) {
            const auto cells = static_cast<double>(part->Cells);
            if (cells > left) return true;
            left -= cells;
            return false;
        });
        return bySize;
    }

    void PutAside(const RebuildParts& parts) {
        if (!parts.empty()) db_.Beside.ClearAside(parts.front()->Aside);
        for (const Part* const part : parts) PutAside(*part);
    }

    /// Without the checks, so that the rows are copied as they are.
    void PutAside(const Part& part) {
        TableDef fields = part.Old;
        fields.Name = part.Number;
        SqliteRun(db_.Handle, CreateUncheckedSql(fields, part.Aside));
        SqliteRun(db_.Handle,
                  fmt::format("INSERT INTO {}.{} SELECT * FROM main.{}", part.Aside,
                              Quoted(part.Number), Quoted(part.Old.Name)),
                  part.Old.Name);
    }

    /// In the order given, which is the order in which the file lists them.
    void ReplaceAll(std::span<Part> parts, bool keepsCopy) {
        for (const Part& part : parts) {
            if (keepsCopy && &part == &parts.back()) CreateCopy(part.New);
            Do("DROP TABLE main.{}", part.Old.Name);
            db_.AfterSchemaChange(part.Old.Name, Shape::Gone);
            Create(part.New);
        }
    }

    void CreateCopy(TableDef table) {
        table.Name = copy_;
        Create(table);
    }

    void Create(const TableDef& table) {
        SqliteRun(db_.Handle, CreateTableSql(table), table.Name);
        db_.AfterSchemaChange(table.Name, Shape::New);
    }

    void Fill(const Part& part, const std::string& columns, const std::string& from) {
        SqliteRun(db_.Handle,
                  fmt::format("INSERT INTO main.{} SELECT {} FROM {}.{}", Quoted(part.New.Name),
                              columns, from, Quoted(part.Number)),
                  part.New.Name);
    }

    void Index(const Part& part) {
        if (part.Wanted->Indexed)
            Do("CREATE UNIQUE INDEX main.{} ON {} ({})", "ndx" + part.New.Name, part.New.Name,
               std::string("LineNum"));
    }

    /// While the second thread is at a lot, this one takes tables from the back.
    void Finish(RebuildLots& lots, std::size_t at, RebuildHelper& helper) {
        while (!helper.HasMade(at)) {
            const Part* const part = TakeLast(lots);
            if (!part) break;
            Fill(*part, part->Columns, part->Aside);
        }
        if (helper.IsThere()) FillFrom(TakeMade(helper, at));
        for (const Part* const part : lots[at].Parts()) Index(*part);
    }

    static const Part* TakeLast(RebuildLots& lots) {
        for (std::size_t i = lots.size(); i-- > 0;)
            if (const Part* const part = lots[i].TakeLast()) return part;
        return nullptr;
    }

    void FillFrom(MadeLot made) {
        if (!made.Image) return;
        const std::string image = db_.Beside.Take(std::move(*made.Image));
        for (const Part* const part : made.Parts) Fill(*part, "*", image);
    }

    /// A thread fails where memory gives out, and that is no place that anybody chose to stop at.
    MadeLot TakeMade(RebuildHelper& helper, std::size_t lot) const {
        try {
            return helper.Take(lot);
        } catch (const std::bad_alloc&) {
            Fail("out of memory");
        } catch (const std::exception& error) {
            Fail(error.what());
        }
    }

    [[noreturn]] void Fail(std::string_view why) const {
        db_.TakeBatchBack();
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("{}: its tables could not be made anew: {}", db_.Path, why));
    }

    Database::Impl& db_;
    std::string copy_;
};

/// How many tables are worked together.
std::size_t GroupSize(const Parts& parts) {
    std::size_t cells = 0;
    for (const Part& part : parts) cells += part.Cells;
    return cells > TheRebuildShares().MostCells ? 1 : parts.size();
}

void RebuildAll(Database::Impl& db, std::span<const RebuiltTable> tables, std::string_view copy,
                bool keepsCopy) {
    Rebuild rebuild(db, copy);
    Parts parts;
    for (const RebuiltTable& table : tables) parts.push_back(rebuild.MakePart(table, parts.size()));
    // What follows is no matter of single rows.
    db.Changes.MarkSchemaChange();
    const WithoutChecks quiet(db.Handle);
    rebuild.DropCopy();
    const std::size_t size = GroupSize(parts);
    for (std::size_t at = 0; at < parts.size(); at += size) {
        rebuild.Run(std::span(parts).subspan(at, size), keepsCopy && at + size == parts.size());
        if (size < parts.size()) TheStatus().DoEvents();
    }
}

}  // namespace

void RebuildTables(Database& db, std::span<const RebuiltTable> tables, std::string_view copy,
                   bool keepsCopy) {
    if (tables.empty()) return;
    RunBatch(db,
             [&] { db.impl().RunWhole([&] { RebuildAll(db.impl(), tables, copy, keepsCopy); }); });
}

bool HasField(Database& db, std::string_view table, std::string_view field) {
    const TablePtr known = db.HasTable(table) ? db.impl().Tables.Find(table) : nullptr;
    return known && known->Def.FieldIndex(field) >= 0;
}

RebuildShares& TheRebuildShares() {
    static RebuildShares shares;
    return shares;
}

}  // namespace zolmara
