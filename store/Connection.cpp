#include "store/Connection.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "store/base/LateJournal.h"
#include "store/base/PlainSchema.h"
#include "store/base/Sqlite.h"
#include "store/sql/SqlFunctions.h"

namespace zolmara {
namespace {

constexpr int kApplicationId = 0x5A4D4C52;
constexpr int kUserVersion = 1;
constexpr const char* kDamagedHead = "its first page is damaged";

/// A number of the file's head, and the most that it is in any CRF.
struct HeadNumber {
    std::size_t At;
    std::uint8_t Most;
};
constexpr std::array<HeadNumber, 4> kHeadNumbers{{{18, 2},    // version for those who write
                                                  {19, 2},    // and for those who read
                                                  {20, 0},    // bytes kept free on each page
                                                  {47, 4}}};  // how tables are laid down
constexpr std::size_t kHeadSize = 48;
using Head = std::array<std::uint8_t, kHeadSize>;

/// Through the connection's own file: the closing of another descriptor would drop its locks.
std::optional<Head> ReadHead(sqlite3* handle) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    Head head{};
    if (!file || !file->pMethods ||
        file->pMethods->xRead(file, head.data(), kHeadSize, 0) != SQLITE_OK)
        return std::nullopt;
    return head;
}

/// Nobody asks how much memory SQLite holds. Counting that takes a lock for every piece.
void CountNoMemory() {
    // Too late, and without effect, in a program that has used SQLite already.
    static const int once = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(once);
}

}  // namespace

void Fail(StoreError::Kind kind, const std::string& path, const std::string& what) {
    throw StoreError(kind, path + ": " + what);
}

void Connect(Connection& connection, const std::string& path, int flags) {
    CountNoMemory();
    // One thread uses a connection: its locks would be taken millions of times for nobody.
    const int code = sqlite3_open_v2(path.c_str(), &connection.Handle, flags | SQLITE_OPEN_NOMUTEX,
                                     LateJournalVfs());
    if (code != SQLITE_OK) ThrowSqlite(connection.Handle, code, path);
    sqlite3_extended_result_codes(connection.Handle, 1);
    sqlite3_busy_timeout(connection.Handle, 1000);
    RegisterSqlFunctions(connection.Handle);
    GuardConnection(connection.Handle, path);
}

/// A saved row is on the disk and the file stands alone; a batch keeps its pages in memory until
/// it is known whether anything changed.
void SetUp(sqlite3* handle, const std::string& path) {
    SqliteRun(handle,
              "PRAGMA synchronous=EXTRA; PRAGMA cache_size=-262144; PRAGMA cache_spill=OFF; "
              "PRAGMA temp_store=MEMORY;",
              path);
    // The other way of writing keeps two more files beside this one.
    SqliteStatement mode(handle, "PRAGMA journal_mode");
    const bool apart = mode.Step(path) && mode.Text(0) == "wal";
    mode = SqliteStatement();
    if (apart && !sqlite3_db_readonly(handle, "main"))
        SqliteRun(handle, "PRAGMA journal_mode=DELETE", path);
}

void NeedRegularFile(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0)
        Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    if (S_ISDIR(info.st_mode)) Fail(StoreError::Kind::CannotOpen, path, "is a folder");
    if (!S_ISREG(info.st_mode)) Fail(StoreError::Kind::CannotOpen, path, "is no file");
}

void NeedRoomForJournal(const std::string& path) {
    static constexpr std::size_t kLongestPath = 500;  // SQLite's own limit is 512
    static constexpr std::size_t kLongestName = NAME_MAX - std::string_view("-journal").size();
    if (std::filesystem::path(path).filename().string().size() > kLongestName)
        Fail(StoreError::Kind::CannotOpen, path,
             fmt::format("the name is too long; a Cost Report File's has at most {} bytes",
                         kLongestName));
    if (path.size() > kLongestPath)
        Fail(StoreError::Kind::CannotOpen, path,
             fmt::format("the path is too long; a Cost Report File's has at most {} bytes",
                         kLongestPath));
}

bool MayWrite(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) return false;
    return (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 && access(path.c_str(), W_OK) == 0;
}

std::int64_t Pragma(sqlite3* handle, const std::string& name, const std::string& path) {
    SqliteStatement select(handle, "PRAGMA " + name);
    return select.Step(path) ? select.Integer(0) : 0;
}

std::optional<std::string> MarkObjection(sqlite3* handle, const std::string& path) {
    if (Pragma(handle, "application_id", path) != kApplicationId)
        return "is not a Cost Report File";
    const auto version = Pragma(handle, "user_version", path);
    // Beyond what any version will count to, the number is damaged.
    constexpr std::int64_t kMostVersions = 100;
    if (version > kUserVersion && version < kMostVersions)
        return "was made by a later version of the program";
    return version < 0 || version >= kMostVersions ? std::optional(kDamagedHead) : std::nullopt;
}

std::optional<std::string> HeadObjection(sqlite3* handle) {
    const auto head = ReadHead(handle);
    if (!head) return std::nullopt;
    const bool sound = std::ranges::all_of(
        kHeadNumbers, [&](const HeadNumber& number) { return (*head)[number.At] <= number.Most; });
    return sound ? std::nullopt : std::optional(kDamagedHead);
}

void NeedOneFile(sqlite3* handle, const std::string& path) {
    constexpr std::size_t kVersionToRead = 19;
    constexpr std::uint8_t kInParts = 2;
    const auto head = ReadHead(handle);
    if (head && (*head)[kVersionToRead] == kInParts)
        Fail(StoreError::Kind::ReadOnly, path,
             "another program keeps a part of it in a second file; open it once as a Cost Report "
             "File and close it");
}

void NeedReadableList(sqlite3* handle, const std::string& path) {
    try {
        SqliteStatement schema(handle, "SELECT count(*) FROM sqlite_schema");
        schema.Step(path);
    } catch (const StoreError& error) {
        // SQLite does not blame the file for a way of laying down tables that it does not know.
        if (!error.IsFileError() && HeadObjection(handle))
            Fail(StoreError::Kind::NotADatabase, path, "is not a Cost Report File");
        throw;
    }
}

void NeedCostReportFile(sqlite3* handle, const std::string& path) {
    try {
        NeedReadableList(handle, path);
    } catch (const StoreError& error) {
        if (error.kind() == StoreError::Kind::NotADatabase)
            Fail(error.kind(), path, "is not a Cost Report File");
        if (error.kind() == StoreError::Kind::ReadOnly)
            Fail(error.kind(), path,
                 "a program that ended in the middle of its work left the file unfinished; open "
                 "it once as a Cost Report File and close it");
        throw;
    }
    if (const auto objection = MarkObjection(handle, path))
        Fail(StoreError::Kind::NotADatabase, path, *objection);
    if (const auto objection = HeadObjection(handle))
        Fail(StoreError::Kind::Damaged, path, *objection);
    NeedPlainSchema(handle, path);
}

void MarkAsCostReportFile(sqlite3* handle, const std::string& path) {
    SqliteRun(handle,
              fmt::format("PRAGMA page_size=4096; PRAGMA application_id={}; PRAGMA "
                          "user_version={};",
                          kApplicationId, kUserVersion),
              path);
}

void NeedWritable(const std::string& path) {
    if (!MayWrite(path)) Fail(StoreError::Kind::ReadOnly, path, "the file is read-only");
}

}  // namespace zolmara
