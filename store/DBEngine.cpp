// Making and opening Cost Report Files.

#include <filesystem>

#include "store/Connection.h"
#include "store/CopyRows.h"
#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

namespace fs = std::filesystem;

/// A program that was killed early leaves a journal with nothing in it, which SQLite would keep
/// until the next write. Leaving the persistent mode deletes it under the lock that makes sure
/// that it is nobody's.
void DropDeadJournal(sqlite3* handle, const std::string& path) {
    if (!fs::exists(path + "-journal")) return;
    SqliteRun(handle, "PRAGMA journal_mode=PERSIST; PRAGMA journal_mode=DELETE;", path);
}

/// All that must hold of the file, in one look. The first reading rolls back what a killed program
/// left behind.
void LookWhole(sqlite3* handle, const std::string& path) {
    SqliteRun(handle, "BEGIN", path);
    NeedCostReportFile(handle, path);
    SqliteRun(handle, "ROLLBACK", path);
}

/// Takes away a file whose making failed.
void DropFile(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
    fs::remove(path + "-journal", ignored);
}

}  // namespace

Database DBEngine::CreateDatabase(const std::string& path, std::string_view) {
    NeedRoomForJournal(path);
    if (fs::exists(path)) Fail(StoreError::Kind::CannotOpen, path, "the file is there already");
    std::unique_ptr<OpenMark> mark;
    Connection connection;
    try {
        Connect(connection, path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        MarkAsCostReportFile(connection.Handle, path);
        SetUp(connection.Handle, path);
        mark = std::make_unique<OpenMark>(path);
    } catch (...) {
        // The beginning of a file is no file.
        DropFile(path);
        throw;
    }
    Database database;
    database.impl_ =
        std::make_shared<Database::Impl>(connection.Handle, path, false, std::move(mark));
    connection.Release();
    return database;
}

Database DBEngine::Open(const std::string& path, bool onlyToRead) {
    NeedRegularFile(path);
    NeedRoomForJournal(path);
    const bool readOnly = onlyToRead || !MayWrite(path);
    auto mark = std::make_unique<OpenMark>(path);
    Connection connection;
    Connect(connection, path, readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    if (readOnly) NeedOneFile(connection.Handle, path);
    LookWhole(connection.Handle, path);
    if (!readOnly) DropDeadJournal(connection.Handle, path);
    SetUp(connection.Handle, path);
    Database database;
    database.impl_ =
        std::make_shared<Database::Impl>(connection.Handle, path, readOnly, std::move(mark));
    connection.Release();
    return database;
}

Database DBEngine::OpenDatabase(const std::string& path) { return Open(path, false); }

Database OpenReadOnly(const std::string& path) { return DBEngine::Open(path, true); }

}  // namespace zolmara
