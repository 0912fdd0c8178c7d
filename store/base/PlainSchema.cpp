#include "store/base/PlainSchema.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>

#include "core/Globals.h"
#include "store/base/SchemaTokens.h"
#include "store/base/Sqlite.h"
#include "store/base/TableSql.h"

namespace zolmara {
namespace {

/// Words that make more of a field than a value of a type.
constexpr std::array<std::string_view, 8> kBeyondPlain{
    "AS", "GENERATED", "ALWAYS", "REFERENCES", "CONSTRAINT", "CONFLICT", "AUTOINCREMENT", "SELECT"};
/// Words that end a field's type.
constexpr std::array<std::string_view, 7> kConstraints{"NOT",     "NULL",   "COLLATE", "CHECK",
                                                       "PRIMARY", "UNIQUE", "DEFAULT"};

/// Walks the tokens of a statement; every step says whether what it looks for was there.
class DefinitionReader {
public:
    explicit DefinitionReader(std::string_view sql) : tokens_(sql) {}

    std::optional<TableText> Table() {
        TableText table;
        if (!Take("CREATE") || !Take("TABLE") || !TakeName(table.Name) || !Take("("))
            return std::nullopt;
        do {
            if (!Field(table.Fields.emplace_back())) return std::nullopt;
        } while (Take(","));
        return Take(")") && AtEnd() ? std::optional(table) : std::nullopt;
    }

    std::optional<IndexText> Index() {
        IndexText index;
        if (!Take("CREATE")) return std::nullopt;
        Take("UNIQUE");
        if (!Take("INDEX") || !TakeName(index.Name) || !Take("ON") || !TakeName(index.Table) ||
            !Take("("))
            return std::nullopt;
        do {
            if (!TakeName(index.Fields.emplace_back()) || !Collation()) return std::nullopt;
            if (!Take("ASC")) Take("DESC");
        } while (Take(","));
        return Take(")") && AtEnd() ? std::optional(index) : std::nullopt;
    }

private:
    bool AtEnd() const { return tokens_.AtEnd(); }
    bool See(std::string_view text) const { return !AtEnd() && tokens_.Now().Is(text); }
    template <std::size_t N>
    bool SeeOneOf(const std::array<std::string_view, N>& words) const {
        return std::ranges::any_of(words, [&](std::string_view word) { return See(word); });
    }
    bool Take(std::string_view text) {
        if (!See(text)) return false;
        tokens_.Next();
        return true;
    }
    bool TakeKind(SchemaToken::Kind kind) {
        if (AtEnd() || tokens_.Now().What != kind) return false;
        tokens_.Next();
        return true;
    }
    bool TakeName(std::string& name) {
        if (AtEnd() || !tokens_.Now().IsName()) return false;
        name = tokens_.Now().Plain();
        tokens_.Next();
        return true;
    }
    bool Collation() {
        std::string ignored;
        return !Take("COLLATE") || TakeName(ignored);
    }

    bool Field(std::string& name) {
        // A constraint of the table begins where a field would.
        if (SeeOneOf(kConstraints) || See("FOREIGN")) return false;
        written_ = tokens_.Written();
        if (!TakeName(name)) return false;
        std::string type;
        if (!Type(type)) return false;
        while (!AtEnd() && !See(",") && !See(")"))
            if (!Constraint(name, type)) return false;
        return true;
    }

    bool Type(std::string& type) {
        std::string word;
        while (!AtEnd() && !SeeOneOf(kConstraints)) {
            if (SeeOneOf(kBeyondPlain)) return false;
            if (!TakeName(word)) break;
            type += (type.empty() ? "" : " ") + word;
        }
        if (!Take("(")) return true;
        if (AtEnd()) return false;
        type += "(" + tokens_.Now().Plain() + ")";
        if (!TakeKind(SchemaToken::Kind::Number)) return false;
        if (Take(",") && !TakeKind(SchemaToken::Kind::Number)) return false;
        return Take(")");
    }

    bool Constraint(const std::string& name, const std::string& type) {
        if (See("COLLATE")) return Collation();
        if (Take("NULL") || Take("UNIQUE")) return true;
        if (Take("NOT")) return Take("NULL");
        if (Take("PRIMARY")) {
            if (!Take("KEY")) return false;
            if (!Take("ASC")) Take("DESC");
            return true;
        }
        if (Take("DEFAULT")) return Constant();
        return See("CHECK") && OwnCheck(name, type);
    }

    bool Constant() {
        if (Take("NULL") || TakeKind(SchemaToken::Kind::String)) return true;
        if (!Take("-")) Take("+");
        return TakeKind(SchemaToken::Kind::Number);
    }

    /// The check that the store lays down for a field of the type: as the store writes it, or token
    /// by token.
    bool OwnCheck(const std::string& name, const std::string& type) {
        const FieldDef field = FieldOfType(name, type);
        if (const auto letters = SizeOfCheck(tokens_.Rest(), written_, field); letters > 0) {
            tokens_.Pass(letters);
            return true;
        }
        const std::string own = FieldCheck(field);
        if (own.empty()) return false;
        for (SchemaTokens expected(own); !expected.AtEnd(); expected.Next(), tokens_.Next())
            if (AtEnd() || !SameText(tokens_.Now().Plain(), expected.Now().Plain())) return false;
        return true;
    }

    SchemaTokens tokens_;
    std::string_view written_;  ///< the name of the present field
};

// --- The schema of an open file

/// An entry of the file's own list of what it holds.
struct Entry {
    std::string Type;
    std::string Name;
    std::string Table;
    std::string Sql;
    std::int64_t Root = 0;
};

std::vector<Entry> ReadEntries(sqlite3* handle, const std::string& path) {
    std::vector<Entry> entries;
    SqliteStatement select(handle, "SELECT type,name,tbl_name,sql,rootpage FROM sqlite_schema");
    while (select.Step(path))
        entries.push_back(
            {select.Text(0), select.Text(1), select.Text(2), select.Text(3), select.Integer(4)});
    return entries;
}

bool IsInternal(std::string_view name) { return LCase(name).starts_with("sqlite_"); }

/// Neither table nor index; a table that is made by a program has no page.
bool IsForeign(const Entry& entry) {
    return (entry.Type != "table" && entry.Type != "index") ||
           LCase(entry.Sql).starts_with("create virtual");
}

class SchemaCheck {
public:
    /// What is wrong with an entry; empty when nothing is. Tables come ahead of their indexes.
    std::string Objection(const Entry& entry) {
        if (entry.Type == "table") return TableObjection(entry);
        if (entry.Type == "index") return IndexObjection(entry);
        return fmt::format("the {} \"{}\"", entry.Type, entry.Name);
    }

private:
    bool Taken(std::int64_t root) { return root < 2 || !roots_.insert(root).second; }

    std::string TableObjection(const Entry& entry) {
        auto text = ReadTableText(entry.Sql);
        if (!text || IsInternal(entry.Name) || Taken(entry.Root) ||
            !SameText(text->Name, entry.Name) || !SameText(entry.Table, entry.Name))
            return fmt::format("the table \"{}\", which is no table of plain fields", entry.Name);
        fields_[LCase(entry.Name)] = std::move(text->Fields);
        return "";
    }

    std::string IndexObjection(const Entry& entry) {
        const auto table = fields_.find(LCase(entry.Table));
        const auto found = [&](const std::string& field) {
            return std::any_of(table->second.begin(), table->second.end(),
                               [&](const std::string& name) { return SameText(name, field); });
        };
        bool plain = table != fields_.end() && !Taken(entry.Root);
        if (plain && !(entry.Sql.empty() && IsInternal(entry.Name))) {
            const auto text = ReadIndexText(entry.Sql);
            plain = text && SameText(text->Name, entry.Name) &&
                    SameText(text->Table, entry.Table) &&
                    std::all_of(text->Fields.begin(), text->Fields.end(), found);
        }
        return plain ? ""
                     : fmt::format("the index \"{}\", which is no index of fields", entry.Name);
    }

    std::set<std::int64_t> roots_;
    std::map<std::string, std::vector<std::string>> fields_;
};

void Limit(sqlite3* handle, const std::string& path) {
    constexpr int kLongestValue = 1 << 26;
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kLongestValue);
    // What the longest statement over the largest file that makes sense needs, and ten times that.
    constexpr std::uintmax_t kFloor = 100'000'000;
    constexpr std::uintmax_t kForEachByte = 500;
    constexpr std::uintmax_t kMost = 2'000'000'000;
    std::error_code none;
    const auto size = std::filesystem::file_size(path, none);
    const auto steps = none || size > kMost / kForEachByte
                           ? (none ? kFloor : kMost)
                           : std::min(kFloor + size * kForEachByte, kMost);
    sqlite3_progress_handler(
        handle, static_cast<int>(steps), [](void*) { return 1; }, nullptr);
}

}  // namespace

std::optional<TableText> ReadTableText(std::string_view sql) {
    return DefinitionReader(sql).Table();
}

std::optional<IndexText> ReadIndexText(std::string_view sql) {
    return DefinitionReader(sql).Index();
}

std::optional<SchemaObjection> FindSchemaObjection(sqlite3* handle, const std::string& path) {
    auto entries = ReadEntries(handle, path);
    std::stable_partition(entries.begin(), entries.end(),
                          [](const Entry& entry) { return entry.Type == "table"; });
    SchemaCheck check;
    std::optional<SchemaObjection> first;
    for (const auto& entry : entries) {
        const auto what = check.Objection(entry);
        if (!what.empty() && IsForeign(entry)) return SchemaObjection{what, true};
        if (!what.empty() && !first) first = SchemaObjection{what, false};
    }
    return first;
}

void RefuseSchema(const std::string& path, const SchemaObjection& objection) {
    if (objection.Foreign)
        throw StoreError(
            StoreError::Kind::NotADatabase,
            fmt::format("{}: is not a Cost Report File.  It holds {}.", path, objection.What));
    throw StoreError(
        StoreError::Kind::Damaged,
        fmt::format("{}: was damaged or tampered with.  It holds {}.", path, objection.What));
}

void NeedPlainSchema(sqlite3* handle, const std::string& path) {
    if (const auto objection = FindSchemaObjection(handle, path)) RefuseSchema(path, *objection);
}

void GuardConnection(sqlite3* handle, const std::string& path) {
    for (const auto& [what, value] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                      {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                      {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                      {SQLITE_DBCONFIG_ENABLE_VIEW, 0}})
        sqlite3_db_config(handle, what, value, nullptr);
    Limit(handle, path);
}

}  // namespace zolmara
