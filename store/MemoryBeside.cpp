#include "store/MemoryBeside.h"

#include <fmt/format.h>

#include <new>
#include <utility>
#include <vector>

#include "store/base/Sqlite.h"
#include "store/base/TableSql.h"

namespace zolmara {
namespace {

constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;

/// Nothing of it outlives the work: its freed pages need not be overwritten.
void AttachEmpty(sqlite3* handle, const std::string& name) {
    SqliteRun(handle, fmt::format("ATTACH ':memory:' AS {0}; PRAGMA {0}.secure_delete=OFF", name));
}

std::string NameOfImage(int number) { return fmt::format("image{}", number); }

}  // namespace

MemoryImage::MemoryImage(sqlite3* handle, const char* database) {
    bytes_ = sqlite3_serialize(handle, database, &size_, 0);
    if (!bytes_) throw std::bad_alloc();
}

MemoryImage::MemoryImage(MemoryImage&& other) noexcept
    : bytes_(std::exchange(other.bytes_, nullptr)), size_(other.size_) {}

MemoryImage::~MemoryImage() { sqlite3_free(bytes_); }

void MemoryImage::Become(sqlite3* handle, const char* database) && {
    // Whether it succeeds or not, SQLite frees the bytes.
    const int code = sqlite3_deserialize(handle, database, std::exchange(bytes_, nullptr), size_,
                                         size_, SQLITE_DESERIALIZE_FREEONCLOSE);
    if (code != SQLITE_OK) ThrowSqlite(handle, code, "");
    SqliteRun(handle, fmt::format("PRAGMA {}.mmap_size={}", database, size_));
}

MemoryWork::MemoryWork(MemoryImage image) {
    const int code = sqlite3_open_v2(":memory:", &connection_.Handle, kFlags, nullptr);
    if (code != SQLITE_OK) ThrowSqlite(connection_.Handle, code, "");
    std::move(image).Become(connection_.Handle, "main");
    AttachEmpty(connection_.Handle, "made");
    SqliteRun(connection_.Handle, "PRAGMA ignore_check_constraints=ON");
}

void MemoryWork::Redeclare(const char* database,
                           const std::map<std::string, std::string>& definitions) {
    Run("PRAGMA writable_schema=ON");
    SqliteStatement update(
        connection_.Handle,
        fmt::format("UPDATE {}.sqlite_schema SET sql=?1 WHERE name=?2", database));
    for (const auto& [name, sql] : definitions) {
        update.BindText(1, sql);
        update.BindText(2, name);
        update.Step();
        update.Reset();
    }
    // What was read of the tables is forgotten.
    Run("PRAGMA writable_schema=RESET");
}

void MemoryWork::Run(const std::string& sql) { SqliteRun(connection_.Handle, sql); }

std::string MemoryBeside::NameOfAside(int number) { return fmt::format("aside{}", number); }

void MemoryBeside::ClearAside(const std::string& name) {
    if (name == NameOfAside(asides_)) {
        AttachEmpty(handle_, name);
        ++asides_;
        return;
    }
    std::vector<std::string> tables;
    SqliteStatement select(
        handle_, fmt::format("SELECT name FROM {}.sqlite_schema WHERE type='table'", name));
    while (select.Step()) tables.push_back(select.Text(0));
    for (const std::string& table : tables)
        SqliteRun(handle_, fmt::format("DROP TABLE {}.{}", name, Quoted(table)));
}

std::string MemoryBeside::Take(MemoryImage image) {
    std::string name = NameOfImage(images_);
    AttachEmpty(handle_, name);
    ++images_;
    std::move(image).Become(handle_, name.c_str());
    return name;
}

void MemoryBeside::LetGo() {
    while (asides_ > 0 && Detach(NameOfAside(asides_ - 1))) --asides_;
    while (images_ > 0 && Detach(NameOfImage(images_ - 1))) --images_;
}

bool MemoryBeside::Detach(const std::string& name) {
    return sqlite3_exec(handle_, ("DETACH " + name).c_str(), nullptr, nullptr, nullptr) ==
           SQLITE_OK;
}

}  // namespace zolmara
