#include "store/ReadSnapshot.h"

#include "store/DatabaseImpl.h"

namespace zolmara {

ReadSnapshot::ReadSnapshot(Database& db)
    : db_(db), mine_(db.IsOpen() && sqlite3_get_autocommit(db.impl().Handle) != 0) {
    if (!mine_) return;
    sqlite3* const handle = db.impl().Handle;
    SqliteRun(handle, "BEGIN", db.Path());
    try {
        // The lock comes with the first look.
        SqliteRun(handle, "SELECT count(*) FROM sqlite_schema", db.Path());
    } catch (...) {
        sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

ReadSnapshot::~ReadSnapshot() {
    if (mine_ && db_.IsOpen())
        sqlite3_exec(db_.impl().Handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

}  // namespace zolmara
