// Method: the tables go aside, into memory, by a copy of whole rows, which costs next to nothing.
// From there their rows are put together anew, cell by cell, which is most of the work. A second
// thread has a copy of some of the tables that stand aside, and makes their rows in memory, table
// after table from the front, while this one works from the back, until they meet. What the second
// thread made comes into the file by a copy of whole rows again. One connection alone reads and
// writes the file.

#include "store/RebuildTables.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <map>
#include <new>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "core/Globals.h"
#include "core/Status.h"
#include "store/DatabaseImpl.h"
#include "store/MemoryBeside.h"

namespace zolmara {
namespace {

/// A table on its way.
struct Part {
    const RebuiltTable* Wanted;
    std::string Number;  ///< its name in memory, which is no table's of the file
    TableDef Old;
    TableDef New;
    std::string Columns;  ///< of the old one, as the new one has them
    std::size_t Cells = 0;
};
using Parts = std::vector<Part>;

/// So much of all cells is set out for the second thread at most: it can begin when that is aside.
constexpr double kShare = 0.8;

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

/// The tables that two threads share. Each is made by the one that takes it first.
class SharedParts {
public:
    explicit SharedParts(std::vector<const Part*> parts)
        : parts_(std::move(parts)), taken_(parts_.size()) {}

    const std::vector<const Part*>& All() const { return parts_; }
    /// Null where none is left.
    const Part* TakeFirst() {
        for (std::size_t i = 0; i < parts_.size(); ++i)
            if (!taken_[i].exchange(true)) return parts_[i];
        return nullptr;
    }
    const Part* TakeLast() {
        for (std::size_t i = parts_.size(); i-- > 0;)
            if (!taken_[i].exchange(true)) return parts_[i];
        return nullptr;
    }

    /// The other thread comes to an end soon.
    void TakeAll() {
        for (auto& taken : taken_) taken = true;
    }

private:
    std::vector<const Part*> parts_;
    std::vector<std::atomic<bool>> taken_;
};

/// What the second thread has made.
struct Made {
    std::vector<const Part*> Parts;
    std::optional<MemoryImage> Image;  ///< none without parts
};

/// The second thread. Where the work ends early it is waited for.
struct Second {
    SharedParts& Shared;
    std::future<Made> Result;
    ~Second() { Shared.TakeAll(); }
};

TableDef Numbered(const Part& part, TableDef table) {
    table.Name = part.Number;
    return table;
}

/// What is stored fits its field already. Fields without a type spare every cell the conversion to
/// it, which is a fifth of the work.
void ForgetTypes(MemoryWork& work, const SharedParts& shared) {
    std::map<std::string, std::string> definitions;
    for (const Part* const part : shared.All())
        definitions[part->Number] = CreateUntypedSql(Numbered(*part, part->Old));
    work.Redeclare("main", definitions);
}

void TellTypes(MemoryWork& work, const std::vector<const Part*>& parts) {
    std::map<std::string, std::string> definitions;
    for (const Part* const part : parts)
        definitions[part->Number] = CreateTableSql(Numbered(*part, part->New));
    work.Redeclare("made", definitions);
}

Made MakeShared(SharedParts& shared, MemoryImage aside) {
    if (TheRebuildShares().Ahead) TheRebuildShares().Ahead();
    MemoryWork work(std::move(aside));
    ForgetTypes(work, shared);
    Made made;
    while (const Part* const part = shared.TakeFirst()) {
        work.Run(CreateUntypedSql(Numbered(*part, part->New), "made"));
        work.Run(fmt::format("INSERT INTO made.{0} SELECT {1} FROM main.{0}", Quoted(part->Number),
                             part->Columns));
        made.Parts.push_back(part);
    }
    if (made.Parts.empty()) return made;
    TellTypes(work, made.Parts);
    made.Image.emplace(work.Made());
    return made;
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
        db_.Beside.ClearAside();
        SharedParts shared(ChooseShared(parts));
        for (const Part* const part : shared.All()) PutAside(*part);
        Second second{shared, StartSecond(shared)};
        std::vector<const Part*> own;
        for (const Part& part : parts)
            if (!std::ranges::count(shared.All(), &part)) own.push_back(&part);
        for (const Part* const part : own) PutAside(*part);
        ReplaceAll(parts, keepsCopy);
        for (const Part* const part : own) {
            Fill(*part, part->Columns, "aside");
            Index(*part);
        }
        ShareWith(second);
        for (const Part* const part : shared.All()) Index(*part);
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

    /// The largest tables first.
    std::vector<const Part*> ChooseShared(std::span<const Part> parts) const {
        std::vector<const Part*> bySize;
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

    /// Without the checks, so that the rows are copied as they are.
    void PutAside(const Part& part) {
        TableDef fields = part.Old;
        fields.Name = part.Number;
        SqliteRun(db_.Handle, CreateUncheckedSql(fields, "aside"));
        SqliteRun(db_.Handle,
                  fmt::format("INSERT INTO aside.{} SELECT * FROM main.{}", Quoted(part.Number),
                              Quoted(part.Old.Name)),
                  part.Old.Name);
    }

    /// Nothing where none are shared, or the system gives no thread and no memory for one.
    std::future<Made> StartSecond(SharedParts& shared) const {
        if (shared.All().empty()) return {};
        try {
            MemoryImage aside(db_.Handle, "aside");
            return std::async(std::launch::async, [&shared, image = std::move(aside)]() mutable {
                return MakeShared(shared, std::move(image));
            });
        } catch (const std::system_error&) {
            return {};
        } catch (const std::bad_alloc&) {
            return {};
        }
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

    void ShareWith(Second& second) {
        const bool isThere = second.Result.valid();
        const bool waits = isThere && TheRebuildShares().SecondAlone;
        while (const Part* const part = waits ? nullptr : second.Shared.TakeLast())
            Fill(*part, part->Columns, "aside");
        if (!isThere) return;
        Made made = Join(second.Result);
        if (!made.Image) return;
        const std::string image = db_.Beside.Take(std::move(*made.Image));
        for (const Part* const part : made.Parts) Fill(*part, "*", image);
    }

    /// A thread fails where memory gives out, and that is no place that anybody chose to stop at.
    Made Join(std::future<Made>& second) const {
        try {
            return second.get();
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
