#include "store/Repair.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "core/Clock.h"
#include "core/Globals.h"
#include "store/Connection.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/base/PlainSchema.h"
#include "store/base/Sqlite.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"
#include "store/files/OpenMark.h"
#include "store/salvage/Salvage.h"
#include "store/sql/SqlFunctions.h"

namespace zolmara {
namespace {

namespace fs = std::filesystem;

/// Tables that no CRF is without: a file that still tells of them was one.
const std::vector<std::string> kOwnTables{"Master", "Worksheets"};

/// A file that is damaged so that nobody can open it need not tell of both, nor of either.
bool TellsOfACrf(const std::string& path) {
    return HoldsOwnIndexes(path) || std::ranges::any_of(kOwnTables, [&](const std::string& name) {
               return HoldsTables(path, {name});
           });
}

/// What is wrong with the file's pages, tables, marks and head.
struct Condition {
    std::optional<std::string> Mark;
    std::optional<std::string> Head;
    std::optional<SchemaObjection> Schema;
    std::vector<std::string> Pages;
};

Condition Look(const std::string& path) {
    Connection connection;
    Connect(connection, path, SQLITE_OPEN_READWRITE);
    NeedReadableList(connection.Handle, path);
    Condition condition{MarkObjection(connection.Handle, path),
                        HeadObjection(connection.Handle),
                        FindSchemaObjection(connection.Handle, path),
                        {}};
    // The check runs what the tables declare.
    if (condition.Schema) return condition;
    SqliteStatement check(connection.Handle, "PRAGMA integrity_check(100)");
    while (check.Step(path))
        if (check.Text(0) != "ok") condition.Pages.push_back(check.Text(0));
    return condition;
}

/// A file of another make is none of ours to repair; one that is ours but for its mark is damaged.
std::vector<std::string> Findings(const std::string& path) {
    auto condition = Look(path);
    if (condition.Schema && condition.Schema->Foreign)
        Fail(StoreError::Kind::CannotOpen, path,
             fmt::format("is not a Cost Report File.  It holds {}.", condition.Schema->What));
    if (condition.Mark && !HoldsTables(path, kOwnTables))
        Fail(StoreError::Kind::CannotOpen, path, "is not a Cost Report File");
    auto findings = std::move(condition.Pages);
    if (condition.Mark) findings.push_back(*condition.Mark);
    if (condition.Head) findings.push_back(*condition.Head);
    if (condition.Schema) findings.push_back(condition.Schema->What);
    return findings;
}

/// Nothing when the file is whole; one finding when it cannot even be walked.
std::vector<std::string> FindDamage(const std::string& path, const RepairHelp& help) {
    try {
        auto findings = Findings(path);
        if (!findings.empty() || !help.Inspect) return findings;
        if (auto finding = help.Inspect(path); !finding.empty()) findings.push_back(finding);
        return findings;
    } catch (const StoreError& error) {
        const auto kind = error.kind();
        if (kind != StoreError::Kind::Damaged && kind != StoreError::Kind::NotADatabase) throw;
        if (!TellsOfACrf(path))
            Fail(StoreError::Kind::NotADatabase, path, "is not a Cost Report File");
        return {PlainWords(error)};
    }
}

/// The statements that make a table as it stands in a file, and its indexes.
std::vector<std::string> StatementsOf(sqlite3* handle, const std::string& table) {
    SqliteStatement select(handle,
                           "SELECT sql FROM sqlite_schema WHERE tbl_name=?1 AND sql IS NOT NULL "
                           "ORDER BY type='index', rowid");
    select.BindText(1, table);
    std::vector<std::string> statements;
    while (select.Step()) statements.push_back(select.Text(0));
    return statements;
}

/// Adds the definitions of the tables that a file lacks. False when there are none to add.
bool AddMissing(const std::string& path, const RepairHelp& help, Definitions& definitions) {
    if (!help.MakeMissing) return false;
    const auto names = help.MakeMissing(path);
    Connection connection;
    Connect(connection, path, SQLITE_OPEN_READONLY);
    bool any = false;
    for (const auto& name : names) {
        auto statements = StatementsOf(connection.Handle, name);
        any |= !statements.empty() && definitions.emplace(name, std::move(statements)).second;
    }
    return any;
}

struct Rescue {
    SalvageResult Result;
    Definitions Made;
    Definitions Indexed;  // tables that are there, with the indexes that they should have
};

/// The tables of a file that have no index. A worksheet has one; of other tables it costs little
/// to ask.
std::vector<std::string> WithoutIndex(const std::string& path) {
    Connection connection;
    Connect(connection, path, SQLITE_OPEN_READONLY);
    SqliteStatement select(connection.Handle,
                           "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT IN "
                           "(SELECT tbl_name FROM sqlite_schema WHERE type='index')");
    std::vector<std::string> names;
    while (select.Step(path)) names.push_back(select.Text(0));
    return names;
}

void DropTables(const std::string& path, const std::vector<std::string>& names) {
    Connection connection;
    Connect(connection, path, SQLITE_OPEN_READWRITE);
    for (const auto& name : names)
        SqliteRun(connection.Handle, fmt::format("DROP TABLE \"{}\"", Replace(name, "\"", "\"\"")),
                  path);
}

/// How tables of a file are made, as a draft tells in which they are made anew.
Definitions MadeIn(const std::string& draft, const std::string& fresh,
                   const std::vector<std::string>& names, const RepairHelp& help) {
    DeleteFile(draft);
    CopyWholeFile(fresh, draft);
    DropTables(draft, names);
    Definitions made;
    // Tables that others take their fields from are made first, alone.
    constexpr int kMostRounds = 4;
    try {
        for (int round = 0; round < kMostRounds && AddMissing(draft, help, made);) ++round;
    } catch (const StoreError& error) {
        // What the maker stumbles over in the damaged figures costs the indexes, not the repair.
        if (error.IsFileError()) throw;
    }
    return made;
}

/// Learns how the tables that have lost their index are made. False when there is nothing new.
bool AddIndexes(const std::string& fresh, const std::string& draft, const RepairHelp& help,
                Definitions& indexed) {
    if (!help.MakeMissing) return false;
    auto bare = WithoutIndex(fresh);
    std::erase_if(bare, [&](const std::string& name) { return indexed.contains(name); });
    if (bare.empty()) return false;
    const Definitions made = MadeIn(draft, fresh, bare, help);
    bool any = false;
    for (const auto& name : bare) {
        auto& statements = indexed[name];
        if (const auto found = made.find(name); found != made.end()) statements = found->second;
        any |= statements.size() > 1;
    }
    return any;
}

/// A table that is made anew may take its fields from one that was lost with it, so the rescue is
/// done again with each answer.
Rescue RescueInto(const ScratchFolder& aside, const std::string& fresh, const std::string& path,
                  const RepairHelp& help) {
    constexpr int kMostRounds = 5;
    Rescue rescue;
    for (int round = 0; round < kMostRounds; ++round) {
        DeleteFile(fresh);
        rescue.Result =
            SalvageDatabase(path, fresh, RegisterSqlFunctions, rescue.Made, rescue.Indexed);
        if (!AddMissing(fresh, help, rescue.Made) &&
            !AddIndexes(fresh, aside.File("draft.CRF"), help, rescue.Indexed))
            break;
    }
    return rescue;
}

/// The beginning of a name that leaves room for its end, and for a journal's beside it.
std::string Shortened(std::string name, std::size_t end) {
    static constexpr std::size_t kLongestName = 247;
    while (!name.empty() && name.size() + end > kLongestName)
        name = LeftText(name, TextLength(name) - 1);
    return name;
}

/// "Sample.damaged-2026-11-21.CRF", with a number behind the date where that is taken by another
/// file. A repair that was killed may have given the file that name already.
std::string NameForDamaged(const fs::path& path) {
    const auto day = Format(Now(), "yyyy-mm-dd");
    const auto named = [&](int number) {
        const auto count = number > 1 ? fmt::format("-{}", number) : "";
        const auto end = fmt::format(".damaged-{}{}{}", day, count, path.extension().string());
        return (path.parent_path() / (Shortened(path.stem().string(), end.size()) + end)).string();
    };
    int number = 1;
    while (FileExists(named(number)) && !IsSameFile(path, named(number))) ++number;
    return named(number);
}

/// A second name costs nothing; where the folder has none, a copy with the same rights. Gives the
/// name.
std::string KeepBeside(const std::string& file, const ScratchFolder& aside) {
    auto name = NameForDamaged(file);
    std::error_code error;
    fs::create_hard_link(file, name, error);
    if (!error || IsSameFile(file, name)) return name;
    const std::string copy = aside.File("damaged.CRF");
    CopyWholeFile(file, copy);
    if (!PutFile(copy, name, false, file))
        Fail(StoreError::Kind::CannotOpen, name, "another program made the file meanwhile");
    return name;
}

std::vector<std::string> NamesOf(const Definitions& definitions) {
    std::vector<std::string> names;
    for (const auto& [name, statements] : definitions) names.push_back(name);
    return names;
}

ino_t NodeOf(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

/// Gives the file's name to the new one. Where that fails the damaged one has its first name alone.
void PutInPlace(const std::string& fresh, const std::string& file, const std::string& kept) {
    // A journal of the damaged file must never be played back into the new one.
    DeleteFile(file + "-journal");
    try {
        PutFile(fresh, file, true);
    } catch (const StoreError&) {
        if (!kept.empty() && IsSameFile(file, kept)) DeleteFile(kept);
        throw;
    }
}

/// Makes a damaged file anew, which is in nobody's hands.
FileRepair Renew(const std::string& file, const RepairHelp& help) {
    // Not REINDEX, even where only indexes are complained of: a page of rows that was overwritten
    // by an empty one looks like that too, and the indexes are what still tells of the loss.
    const ScratchFolder aside(file);
    const std::string fresh = aside.File("repaired.CRF");
    auto rescue = RescueInto(aside, fresh, file, help);
    FileRepair repair{true, std::move(rescue.Result.Losses), rescue.Result.RowsKept, {}};
    if (help.Complete)
        for (auto& sentence : help.Complete(fresh, NamesOf(rescue.Made)))
            repair.Losses.push_back(std::move(sentence));
    if (!repair.Losses.empty()) repair.KeptAs = KeepBeside(file, aside);
    PutInPlace(fresh, file, repair.KeptAs);
    return repair;
}

}  // namespace

FileRepair RepairFile(const std::string& path, const RepairHelp& help) {
    NeedRegularFile(path);
    NeedWritable(path);
    const std::string file = BehindLinks(path);
    const ino_t node = NodeOf(file);
    if (FindDamage(file, help).empty()) return {};
    {
        // Nobody may come to the file between the rescue of its rows and the name of the new one.
        const SoleClaim claim(file);
        if (NodeOf(file) == node) return Renew(file, help);
    }
    // Another program was quicker.
    return RepairFile(path, help);
}

RepairReport DBEngine::RepairDatabase(const std::string& path) {
    auto repair = RepairFile(path, {});
    if (!repair.KeptAs.empty())
        repair.Losses.push_back("The damaged file is kept as " + repair.KeptAs + ".");
    return {repair.WasDamaged, std::move(repair.Losses), repair.RowsKept};
}

bool CanBeRepaired(const std::string& path) {
    try {
        NeedRegularFile(path);
        return TellsOfACrf(path);
    } catch (const StoreError&) {
        return false;
    }
}

}  // namespace zolmara
