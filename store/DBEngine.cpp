#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include "store/DatabaseImpl.h"
#include "store/salvage/Salvage.h"

namespace zolmara {
namespace {

namespace fs = std::filesystem;

constexpr int kApplicationId = 0x5A4D4C52;
constexpr int kUserVersion = 1;

[[noreturn]] void Fail(StoreError::Kind kind, const std::string& path, const std::string& what) {
    throw StoreError(kind, path + ": " + what);
}

/// Owns a connection until a Database takes it.
struct Connection {
    sqlite3* Handle = nullptr;
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { sqlite3_close_v2(Handle); }
    sqlite3* Release() { return std::exchange(Handle, nullptr); }
};

void Connect(Connection& connection, const std::string& path, int flags) {
    // One thread uses a connection: its locks would be taken millions of times for nobody.
    const int code =
        sqlite3_open_v2(path.c_str(), &connection.Handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) ThrowSqlite(connection.Handle, code, path);
    sqlite3_extended_result_codes(connection.Handle, 1);
    sqlite3_busy_timeout(connection.Handle, 1000);
    RegisterSqlFunctions(connection.Handle);
}

/// A saved row is on the disk and the file stands alone; a batch keeps its pages in memory until
/// it is known whether anything changed.
void SetUp(sqlite3* handle, const std::string& path) {
    SqliteRun(handle,
              "PRAGMA synchronous=FULL; PRAGMA cache_size=-262144; PRAGMA cache_spill=OFF; "
              "PRAGMA temp_store=MEMORY; PRAGMA trusted_schema=ON;",
              path);
}

void NeedRegularFile(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0)
        Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    if (S_ISDIR(info.st_mode)) Fail(StoreError::Kind::CannotOpen, path, "is a folder");
    if (!S_ISREG(info.st_mode)) Fail(StoreError::Kind::CannotOpen, path, "is no file");
}

/// A file that is marked read-only is left alone, also by those whom the system would let.
bool MayWrite(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) return false;
    return (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 && access(path.c_str(), W_OK) == 0;
}

std::int64_t Pragma(sqlite3* handle, const std::string& name, const std::string& path) {
    SqliteStatement select(handle, "PRAGMA " + name);
    return select.Step(path) ? select.Integer(0) : 0;
}

void NeedCostReportFile(sqlite3* handle, const std::string& path) {
    SqliteStatement schema(handle, "SELECT count(*) FROM sqlite_schema");
    schema.Step(path);
    if (Pragma(handle, "application_id", path) != kApplicationId)
        Fail(StoreError::Kind::NotADatabase, path, "is not a Cost Report File");
    if (Pragma(handle, "user_version", path) > kUserVersion)
        Fail(StoreError::Kind::NotADatabase, path, "was made by a later version of the program");
}

/// Reads the first page, rolling back what a killed program left behind.
void ReadFirstPage(Connection& connection, const std::string& path) {
    try {
        NeedCostReportFile(connection.Handle, path);
    } catch (const StoreError& error) {
        if (error.kind() == StoreError::Kind::NotADatabase)
            Fail(error.kind(), path, "is not a Cost Report File");
        throw;
    }
}

/// A program that was killed early leaves a journal with nothing in it, which SQLite would keep
/// until the next write. Leaving the persistent mode deletes it under the lock that makes sure
/// that it is nobody's.
void DropDeadJournal(sqlite3* handle, const std::string& path) {
    if (!fs::exists(path + "-journal")) return;
    SqliteRun(handle, "PRAGMA journal_mode=PERSIST; PRAGMA journal_mode=DELETE;", path);
}

void SyncPath(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY);
    if (file < 0) Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    const int result = fsync(file);
    const int reason = errno;
    close(file);
    // Some file systems refuse to sync a folder; the file's own sync is what counts.
    if (result != 0 && reason != EINVAL)
        Fail(StoreError::Kind::DiskFull, path, std::strerror(reason));
}

void SyncFolderOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path();
    SyncPath(folder.empty() ? "." : folder.string());
}

/// Puts a finished file in the place of another, so that at no moment neither is there.
void ReplaceFile(const std::string& fresh, const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) == 0) chmod(fresh.c_str(), info.st_mode & 07777);
    SyncPath(fresh);
    if (std::rename(fresh.c_str(), path.c_str()) != 0)
        Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    SyncFolderOf(path);
}

std::vector<std::string> IntegrityFindings(const std::string& path) {
    Connection connection;
    Connect(connection, path, SQLITE_OPEN_READWRITE);
    std::vector<std::string> findings;
    SqliteStatement check(connection.Handle, "PRAGMA integrity_check(100)");
    while (check.Step(path))
        if (check.Text(0) != "ok") findings.push_back(check.Text(0));
    return findings;
}

/// Nothing when the file is whole; one finding when it cannot even be walked.
std::vector<std::string> FindDamage(const std::string& path) {
    try {
        return IntegrityFindings(path);
    } catch (const StoreError& error) {
        const auto kind = error.kind();
        if (kind != StoreError::Kind::Damaged && kind != StoreError::Kind::NotADatabase) throw;
        return {error.what()};
    }
}

struct ScratchFile {
    std::string Path;
    explicit ScratchFile(std::string path) : Path(std::move(path)) { Remove(); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() { Remove(); }
    void Remove() {
        std::error_code ignored;
        fs::remove(Path, ignored);
        fs::remove(Path + "-journal", ignored);
    }
};

constexpr const char* kRepairSuffix = "~repair";
constexpr const char* kCompactSuffix = "~compact";

/// What a program that was killed in a repair or compaction had written so far.
void DropScratchFiles(const std::string& path) {
    for (const auto* suffix : {kRepairSuffix, kCompactSuffix}) ScratchFile{path + suffix};
}

void MarkAsCostReportFile(sqlite3* handle, const std::string& path) {
    SqliteRun(handle,
              fmt::format("PRAGMA page_size=4096; PRAGMA application_id={}; PRAGMA "
                          "user_version={};",
                          kApplicationId, kUserVersion),
              path);
}

void RequireWritable(const std::string& path) {
    if (!MayWrite(path)) Fail(StoreError::Kind::ReadOnly, path, "the file is read-only");
}

}  // namespace

Database DBEngine::CreateDatabase(const std::string& path, std::string_view) {
    if (fs::exists(path)) Fail(StoreError::Kind::CannotOpen, path, "the file is there already");
    Connection connection;
    try {
        Connect(connection, path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        MarkAsCostReportFile(connection.Handle, path);
        SetUp(connection.Handle, path);
    } catch (...) {
        // The beginning of a file is no file.
        ScratchFile{path};
        throw;
    }
    Database database;
    database.impl_ = std::make_shared<Database::Impl>(connection.Handle, path, false);
    connection.Release();
    return database;
}

Database DBEngine::OpenDatabase(const std::string& path) {
    NeedRegularFile(path);
    const bool readOnly = !MayWrite(path);
    Connection connection;
    Connect(connection, path, readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    ReadFirstPage(connection, path);
    if (!readOnly) {
        DropDeadJournal(connection.Handle, path);
        DropScratchFiles(path);
    }
    SetUp(connection.Handle, path);
    Database database;
    database.impl_ = std::make_shared<Database::Impl>(connection.Handle, path, readOnly);
    connection.Release();
    return database;
}

RepairReport DBEngine::RepairDatabase(const std::string& path) {
    NeedRegularFile(path);
    RequireWritable(path);
    RepairReport report;
    const auto findings = FindDamage(path);
    if (findings.empty()) return report;
    report.WasDamaged = true;
    // Not REINDEX, even where only indexes are complained of: a page of rows that was overwritten
    // by an empty one looks like that too, and the indexes are what still tells of the loss.
    ScratchFile fresh(path + kRepairSuffix);
    const auto salvaged = SalvageDatabase(path, fresh.Path, RegisterSqlFunctions);
    report.Losses = salvaged.Losses;
    report.RowsKept = salvaged.RowsKept;
    // A journal of the damaged file must never be played back into the new one.
    std::error_code ignored;
    fs::remove(path + "-journal", ignored);
    ReplaceFile(fresh.Path, path);
    return report;
}

void DBEngine::CompactDatabase(const std::string& source, const std::string& target) {
    NeedRegularFile(source);
    if (fs::exists(target)) RequireWritable(target);
    ScratchFile fresh(target + kCompactSuffix);
    {
        Connection connection;
        Connect(connection, source, SQLITE_OPEN_READWRITE);
        SqliteStatement vacuum(connection.Handle, "VACUUM INTO ?1");
        vacuum.BindText(1, fresh.Path);
        vacuum.Step(source);
    }
    if (!fs::exists(target)) {
        struct stat info {};
        if (stat(source.c_str(), &info) == 0) chmod(fresh.Path.c_str(), info.st_mode & 07777);
    }
    ReplaceFile(fresh.Path, target);
}

}  // namespace zolmara
