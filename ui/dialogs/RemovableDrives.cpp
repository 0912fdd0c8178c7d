#include "ui/dialogs/RemovableDrives.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>

#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

bool SaysOne(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll().trimmed() == "1";
}

/// The kernel marks the disk, not its partitions.
bool IsRemovableDevice(const QString& device) {
    if (!device.startsWith("/dev/")) return false;
    const QString name = QFileInfo(device).fileName();
    const QFileInfo block("/sys/class/block/" + name);
    if (!block.exists()) return false;
    const QString folder = block.canonicalFilePath();
    return SaysOne(folder + "/removable") || SaysOne(folder + "/../removable");
}

/// Where desktops mount what the user plugs in.
bool IsMediaFolder(const QString& folder) {
    return folder.startsWith("/media/") || folder.startsWith("/run/media/");
}

bool IsRemovable(const QStorageInfo& volume) {
    if (!volume.isValid() || !volume.isReady() || volume.isRoot()) return false;
    return IsRemovableDevice(QString::fromUtf8(volume.device())) ||
           (IsMediaFolder(volume.rootPath()) && volume.device().startsWith("/dev/"));
}

}  // namespace

std::vector<Drive> GetRemovableDrives() {
    std::vector<Drive> drives;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (IsRemovable(volume)) drives.push_back({S(volume.displayName()), S(volume.rootPath())});
    }
    std::ranges::sort(drives, {}, &Drive::Root);
    return drives;
}

}  // namespace zolmara::ui
