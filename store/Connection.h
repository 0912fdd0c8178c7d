#pragma once

// The connections to SQLite that stand behind open files and behind the work on whole ones.

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "store/Dao.h"

namespace zolmara {

/// Owns a connection until a Database takes it.
struct Connection {
    sqlite3* Handle = nullptr;
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { sqlite3_close_v2(Handle); }
    sqlite3* Release() { return std::exchange(Handle, nullptr); }
};

/// Opens a file with the flags of SQLite. StoreError when that fails.
void Connect(Connection& connection, const std::string& path, int flags);
/// Gives an open connection the behaviour of a CRF's: what is committed is on the disk.
void SetUp(sqlite3* handle, const std::string& path);
/// Gives a new file the marks of a CRF.
void MarkAsCostReportFile(sqlite3* handle, const std::string& path);
/// Raises NotADatabase for a file without the marks of a CRF, and for one that holds more than
/// tables and plain indexes.
void NeedCostReportFile(sqlite3* handle, const std::string& path);
/// What the marks of a file have against its being a CRF of this version; nothing when nothing.
std::optional<std::string> MarkObjection(sqlite3* handle, const std::string& path);

/// Raises a StoreError of the file where its list of tables and indexes cannot be read.
void NeedReadableList(sqlite3* handle, const std::string& path);
/// What is wrong with the numbers in the file's head that say how its pages are to be read and
/// written; nothing when nothing.
std::optional<std::string> HeadObjection(sqlite3* handle);

/// Raises ReadOnly for a file that another program has put into the way of writing that keeps two
/// more files beside it. Whoever only reads would make those, and leave them there. Asked ahead of
/// the first statement.
void NeedOneFile(sqlite3* handle, const std::string& path);

/// The value of a pragma that gives one whole number; 0 without a row.
std::int64_t Pragma(sqlite3* handle, const std::string& name, const std::string& path);

/// Raises CannotOpen for a path that is no regular file.
void NeedRegularFile(const std::string& path);
/// Raises CannotOpen for a name so long that its journal could have none.
void NeedRoomForJournal(const std::string& path);
/// A file that is marked read-only is left alone, also by those whom the system would let.
bool MayWrite(const std::string& path);
/// Raises ReadOnly where MayWrite is false.
void NeedWritable(const std::string& path);

/// Raises a StoreError that begins with the path.
[[noreturn]] void Fail(StoreError::Kind kind, const std::string& path, const std::string& what);

}  // namespace zolmara
