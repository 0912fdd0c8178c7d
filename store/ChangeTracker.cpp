#include "store/ChangeTracker.h"

#include <cstring>

#include "store/Catalog.h"
#include "store/Sqlite.h"

namespace zolmara {
namespace {

class Digest {
public:
    void Add(sqlite3_value* value) {
        switch (sqlite3_value_type(value)) {
            case SQLITE_NULL:
                return AddBytes("n", 1);
            case SQLITE_INTEGER:
            case SQLITE_FLOAT: {
                const double number = sqlite3_value_double(value);
                AddBytes("d", 1);
                return AddBytes(&number, sizeof number);
            }
            default:
                AddBytes("t", 1);
                AddBytes(sqlite3_value_text(value),
                         static_cast<std::size_t>(sqlite3_value_bytes(value)));
        }
    }
    std::uint64_t Value() const { return hash_; }

private:
    void AddBytes(const void* bytes, std::size_t size) {
        const auto* at = static_cast<const unsigned char*>(bytes);
        for (std::size_t i = 0; i < size; ++i) hash_ = (hash_ ^ at[i]) * 1099511628211u;
        hash_ = (hash_ ^ size) * 1099511628211u;
    }
    std::uint64_t hash_ = 14695981039346656037u;
};

std::uint64_t DigestBeforeWrite(sqlite3* handle) {
    Digest digest;
    const int count = sqlite3_preupdate_count(handle);
    for (int i = 0; i < count; ++i) {
        sqlite3_value* value = nullptr;
        if (sqlite3_preupdate_old(handle, i, &value) == SQLITE_OK) digest.Add(value);
    }
    return digest.Value();
}

std::uint64_t DigestOfRow(const SqliteStatement& row) {
    Digest digest;
    for (int i = 0; i < sqlite3_column_count(row.get()); ++i)
        digest.Add(sqlite3_column_value(row.get(), i));
    return digest.Value();
}

}  // namespace

void ChangeTracker::Start(sqlite3* handle) {
    handle_ = handle;
    certain_ = false;
    count_ = 0;
    tables_.clear();
    sqlite3_preupdate_hook(handle, OnWrite, this);
}

void ChangeTracker::Stop() {
    if (handle_) sqlite3_preupdate_hook(handle_, nullptr, nullptr);
    handle_ = nullptr;
}

void ChangeTracker::OnWrite(void* self, sqlite3*, int operation, const char*, const char* table,
                            sqlite3_int64 before, sqlite3_int64 after) {
    static_cast<ChangeTracker*>(self)->Note(operation, table,
                                            operation == SQLITE_INSERT ? after : before);
}

void ChangeTracker::Note(int operation, const char* table, std::int64_t row) {
    if (certain_) return;
    auto& rows = tables_[table];
    if (rows.count(row)) return;
    if (++count_ > kMostRows) {
        certain_ = true;
        sqlite3_preupdate_hook(handle_, nullptr, nullptr);
        return;
    }
    const bool existed = operation != SQLITE_INSERT;
    rows[row] = {existed, existed ? DigestBeforeWrite(handle_) : 0};
}

bool ChangeTracker::NetChange() {
    if (certain_) return true;
    for (const auto& [table, rows] : tables_)
        if (!SameAsNow(table, rows)) return true;
    return false;
}

bool ChangeTracker::SameAsNow(const std::string& table, const Rows& rows) {
    SqliteStatement select(handle_, "SELECT * FROM " + Quoted(table) + " WHERE rowid=?1");
    for (const auto& [row, state] : rows) {
        select.BindInteger(1, row);
        const bool exists = select.Step();
        const bool same =
            exists == state.Existed && (!exists || DigestOfRow(select) == state.Digest);
        select.Reset();
        if (!same) return false;
    }
    return true;
}

}  // namespace zolmara
