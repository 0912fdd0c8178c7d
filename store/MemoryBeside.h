#pragma once

// Databases in memory beside an open file, and work on them that another thread can do.

#include <sqlite3.h>

#include <map>
#include <string>

#include "store/Connection.h"

namespace zolmara {

/// A whole database as bytes: it passes from one connection to another.
class MemoryImage {
public:
    /// A copy of a database of the connection, with what its transaction has not committed yet.
    /// std::bad_alloc where there is no memory for it.
    MemoryImage(sqlite3* handle, const char* database);
    MemoryImage(MemoryImage&& other) noexcept;
    MemoryImage& operator=(MemoryImage&&) = delete;
    ~MemoryImage();

    /// Becomes a database, read in place, that the connection has already; no transaction may
    /// have touched that one. Nobody writes to it. StoreError when that fails.
    void Become(sqlite3* handle, const char* database) &&;

private:
    unsigned char* bytes_ = nullptr;
    sqlite3_int64 size_ = 0;
};

/// A connection that has an image as "main", to read from, and an empty database "made". It touches
/// no file and nothing of the program's, so that any thread may have one. StoreError,
/// std::bad_alloc.
class MemoryWork {
public:
    explicit MemoryWork(MemoryImage image);
    /// Values that are copied are not checked again.
    void Run(const std::string& sql);
    /// Gives tables other definitions, by their names, of the same number of fields. Their rows
    /// stay as they are stored. It comes last in "made": there the tables are not read again.
    void Redeclare(const char* database, const std::map<std::string, std::string>& definitions);
    MemoryImage Made() { return {connection_.Handle, "made"}; }

private:
    Connection connection_;
};

/// The databases in memory that a connection has beside its file for the length of a batch. None of
/// them has a journal or anything else on the disk.
class MemoryBeside {
public:
    explicit MemoryBeside(sqlite3* handle) : handle_(handle) {}

    /// The names of databases to write to, from number 0 on.
    static std::string NameOfAside(int number);
    /// Makes one of them, or empties it. They are made in the order of their numbers.
    void ClearAside(const std::string& name);
    /// False where so many images were taken in this batch that two more have no room.
    bool HasRoom() const { return images_ + 2 <= kMostImages; }
    /// Takes an image in, to read from; gives the name that it has.
    std::string Take(MemoryImage image);
    /// Lets go of all of them. What a statement that has not ended stands in the way of stays until
    /// the next time.
    void LetGo();

private:
    static constexpr int kMostImages = 6;  ///< SQLite takes ten databases beside the file
    bool Detach(const std::string& name);

    sqlite3* handle_;
    int asides_ = 0;
    int images_ = 0;
};

}  // namespace zolmara
