#pragma once

// Knows at the end of a batch whether any row differs from what it was at the beginning.

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <unordered_map>

namespace zolmara {

/// A calculation clears cells and posts them again, so that a run over unchanged entries writes
/// rows only to put back what was there. The tracker keeps a digest of each row at its first
/// write; a batch whose rows all end as they began need not touch the file.
class ChangeTracker {
public:
    /// Watches the connection's writes from here on.
    void Start(sqlite3* handle);
    void Stop();
    /// A table's shape changed: no comparison of rows can take that back.
    void MarkSchemaChange() { certain_ = true; }
    /// True unless every row written is as it was.
    bool NetChange();

private:
    struct RowState {
        bool Existed;
        std::uint64_t Digest;
    };
    using Rows = std::unordered_map<std::int64_t, RowState>;

    static void OnWrite(void* self, sqlite3* handle, int operation, const char* database,
                        const char* table, sqlite3_int64 before, sqlite3_int64 after);
    void Note(int operation, const char* table, std::int64_t row);
    bool SameAsNow(const std::string& table, const Rows& rows);

    /// Past so many rows the batch counts as a change and nothing more is kept.
    static constexpr std::size_t kMostRows = 4096;

    sqlite3* handle_ = nullptr;
    bool certain_ = false;
    std::size_t count_ = 0;
    std::unordered_map<std::string, Rows> tables_;
};

}  // namespace zolmara
