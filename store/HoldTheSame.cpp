// Whether two Cost Report Files hold the same, page by page.

#include <algorithm>
#include <vector>

#include "store/Connection.h"
#include "store/WholeCrf.h"
#include "store/base/Sqlite.h"

namespace zolmara {
namespace {

constexpr sqlite3_int64 kChunk = 1 << 20;

/// A file that nobody changes as long as this lives. It is read through the connection's own
/// descriptor: another one would drop SQLite's locks when it is closed.
class HeldFile {
public:
    explicit HeldFile(const std::string& path) : path_(path) {
        Connect(connection_, path, MayWrite(path) ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
        SqliteRun(connection_.Handle, "BEGIN", path);
        // The lock comes with the first look.
        Pragma(connection_.Handle, "schema_version", path);
        sqlite3_file_control(connection_.Handle, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
    }

    sqlite3_int64 Size() {
        sqlite3_int64 size = 0;
        Need(file_->pMethods->xFileSize(file_, &size));
        return size;
    }
    void Read(std::vector<char>& into, sqlite3_int64 at) {
        Need(file_->pMethods->xRead(file_, into.data(), static_cast<int>(into.size()), at));
    }

private:
    void Need(int code) const {
        if (code != SQLITE_OK) ThrowSqlite(nullptr, code, path_);
    }

    std::string path_;
    Connection connection_;
    sqlite3_file* file_ = nullptr;
};

/// A part of a file's head that counts commits and changes of the schema.
struct Counter {
    std::size_t From;
    std::size_t To;
};
constexpr Counter kCounters[] = {{24, 28}, {40, 44}, {92, 100}};

void BlankCounters(std::vector<char>& head) {
    for (const auto& [from, to] : kCounters)
        if (to <= head.size())
            std::fill(head.begin() + static_cast<std::ptrdiff_t>(from),
                      head.begin() + static_cast<std::ptrdiff_t>(to), '\0');
}

}  // namespace

bool HoldTheSame(const std::string& a, const std::string& b) {
    HeldFile one(a);
    HeldFile other(b);
    const sqlite3_int64 size = one.Size();
    if (size != other.Size()) return false;
    for (sqlite3_int64 at = 0; at < size; at += kChunk) {
        const auto count = static_cast<std::size_t>(std::min(kChunk, size - at));
        std::vector<char> here(count);
        std::vector<char> there(count);
        one.Read(here, at);
        other.Read(there, at);
        if (at == 0) BlankCounters(here), BlankCounters(there);
        if (here != there) return false;
    }
    return true;
}

}  // namespace zolmara
