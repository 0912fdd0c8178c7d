#include "ui/main/SingleCopy.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

namespace zolmara::ui {

bool AnotherCopyRuns() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) folder = QDir::tempPath();
    static QLockFile lock(folder + "/zolmara-287-22.lock");
    // The lock of a copy that died is stale at once, not after a time.
    lock.setStaleLockTime(0);
    if (lock.isLocked() || lock.tryLock(0)) return false;
    return lock.error() == QLockFile::LockFailedError;
}

}  // namespace zolmara::ui
