// Another program may write to the file while it is open here. Its change counter, which every
// commit raises, stands at a fixed place of the first page. It is read through the connection's own
// file and without a lock, so that asking before every cell costs next to nothing: a number that
// is read in the middle of another's commit only leads to reading the row again, and that is done
// under a lock.

#include <algorithm>

#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

constexpr int kCounterAt = 24;
constexpr std::size_t kSchemaNumberAt = 16;  // in a mark

}  // namespace

bool OtherPrograms::ReadMark(sqlite3* handle, Mark& mark) {
    if (!file_) sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
    if (!file_ || !file_->pMethods) return false;
    return file_->pMethods->xRead(file_, mark.data(), static_cast<int>(mark.size()), kCounterAt) ==
           SQLITE_OK;
}

std::uint32_t OtherPrograms::CounterOf(const Mark& mark) {
    return std::uint32_t{mark[0]} << 24 | std::uint32_t{mark[1]} << 16 |
           std::uint32_t{mark[2]} << 8 | std::uint32_t{mark[3]};
}

bool OtherPrograms::HasNews(sqlite3* handle) {
    Mark now{};
    return known_ && ReadMark(handle, now) && now != seen_;
}

void OtherPrograms::Look(Database::Impl& impl) {
    Mark now{};
    // What cannot be read here is told by the statement that comes next.
    if (!ReadMark(impl.Handle, now) || (known_ && now == seen_)) return;
    const bool sameTables =
        std::equal(now.begin() + kSchemaNumberAt, now.end(), seen_.begin() + kSchemaNumberAt);
    const bool first = !known_;
    seen_ = now;
    known_ = true;
    if (first) return;
    if (impl.Listener) impl.Listener->ChangedElsewhere();
    if (sameTables) {
        impl.Tables.TouchAll();
    } else {
        impl.ForgetStatements();
        impl.Tables.Refresh();
    }
}

void OtherPrograms::TakeOwnCommit(sqlite3* handle) {
    Mark now{};
    if (!known_ || !ReadMark(handle, now)) return;
    if (CounterOf(now) == CounterOf(seen_) + 1) seen_ = now;
}

}  // namespace zolmara
