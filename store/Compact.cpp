// The compaction of a closed Cost Report File into another one, or in place.

#include "store/Connection.h"
#include "store/Files.h"
#include "store/WholeCrf.h"
#include "store/base/Sqlite.h"
#include "store/files/FileGuard.h"

namespace zolmara {

void DBEngine::CompactDatabase(const std::string& source, const std::string& target) {
    NeedRegularFile(source);
    if (IsSameFile(source, target)) {
        const ScratchFolder aside(BehindLinks(source));
        return CompactCrfThrough(source, aside.File("compact.CRF"));
    }
    NeedReplaceable(target);
    const bool stood = FileExists(target);
    const ScratchFolder aside(BehindLinks(target));
    const std::string fresh = aside.File("compact.CRF");
    {
        Connection connection;
        Connect(connection, source, SQLITE_OPEN_READWRITE);
        SqliteStatement vacuum(connection.Handle, "VACUUM INTO ?1");
        vacuum.BindText(1, fresh);
        vacuum.Step(target);
    }
    PutCrf(fresh, target, stood, source);
}

}  // namespace zolmara
