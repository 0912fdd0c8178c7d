#include "store/ReadThrough.h"

#include <fmt/format.h>

#include "store/Connection.h"
#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

/// Beyond what is there already. Enough for rows that do not lie in the order of their lines.
constexpr std::int64_t kKilobytes = 1024;

/// What SQLite's cache of the file takes now.
std::int64_t CachedKilobytes(sqlite3* handle) {
    int bytes = 0;
    int most = 0;
    sqlite3_db_status(handle, SQLITE_DBSTATUS_CACHE_USED, &bytes, &most, 0);
    return bytes / 1024;
}

void SetCache(Database& db, std::int64_t size) {
    SqliteRun(db.impl().Handle, fmt::format("PRAGMA cache_size={}", size), db.Path());
}

}  // namespace

ReadThrough::ReadThrough(Database& db) : db_(db) {
    if (!db.IsOpen() || db.impl().ReadingThrough) return;
    sqlite3* const handle = db.impl().Handle;
    former_ = Pragma(handle, "cache_size", db.Path());
    SetCache(db, -(CachedKilobytes(handle) + kKilobytes));
    db.impl().ReadingThrough = true;
}

ReadThrough::~ReadThrough() {
    if (former_ == 0 || !db_.IsOpen()) return;
    db_.impl().ReadingThrough = false;
    try {
        SetCache(db_, former_);
    } catch (const StoreError&) {
        // A smaller cache costs time and nothing else.
    }
}

}  // namespace zolmara
