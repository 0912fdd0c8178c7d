#include "store/LostFile.h"

#include "store/BatchChange.h"
#include "store/Connection.h"
#include "store/DatabaseImpl.h"
#include "store/Files.h"
#include "store/WholeCrf.h"
#include "store/files/FileGuard.h"

namespace zolmara {
namespace {

/// All pages at once, as the last commit left them.
void CopyPages(sqlite3* from, const std::string& fresh, const std::string& target) {
    Connection to;
    Connect(to, fresh, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    SqliteRun(to.Handle, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;", target);
    sqlite3_backup* const copy = sqlite3_backup_init(to.Handle, "main", from, "main");
    if (!copy) ThrowSqlite(to.Handle, sqlite3_errcode(to.Handle), target);
    const int step = sqlite3_backup_step(copy, -1);
    const int end = sqlite3_backup_finish(copy);
    if (end != SQLITE_OK) ThrowSqlite(to.Handle, end, target);
    if (step != SQLITE_DONE) ThrowSqlite(nullptr, step, target);
}

}  // namespace

bool IsLost(Database& open) {
    int moved = 0;
    sqlite3_file_control(open.impl().Handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

void CopyLost(Database& open, const std::string& target) {
    NeedReplaceable(target);
    const bool stood = FileExists(BehindLinks(target));
    const ScratchFolder aside(BehindLinks(target));
    const std::string fresh = aside.File("copy.CRF");
    CopyPages(open.impl().Handle, fresh, target);
    PutCrf(fresh, target, stood);
}

}  // namespace zolmara
