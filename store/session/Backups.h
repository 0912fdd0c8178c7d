#pragma once

// The backups of a Cost Report File: whole copies in the user's data folder, kept by the file's
// place, so that two offices' files of one name are two.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/DateTime.h"

namespace zolmara {

/// One backup. The numbers grow with each that is made, whatever the clock says.
struct Backup {
    std::int64_t Which = 0;
    DateTime Time;  ///< by the program's clock
    std::uintmax_t Size = 0;
    std::string Path;
};

/// Where backups lie, by the settings "Folder", "Last" and "Days" of section "Backups".
struct BackupRules {
    std::string Folder;  ///< of all files' backups; XDG_DATA_HOME/zolmara/backups
    int Last = 10;       ///< so many of the newest stay
    int Days = 30;       ///< and the newest of each day, for so many days with a backup
};
BackupRules TheBackupRules();

/// The folder of one CRF's backups, whether it is there or not.
std::string BackupFolderOf(const std::string& crf);

/// The backups of a CRF, the newest first; also of one that is gone. None where their folder
/// cannot be read.
std::vector<Backup> BackupsOf(const std::string& crf);

/// Copies a CRF, as its last commit left it, into its folder of backups, and deletes those that
/// the rules do not keep. Nothing when it is as the newest backup has it. A file that is no
/// database any more is copied as it lies. StoreError when that fails; then the backups are as
/// they were. The CRF may be open.
std::optional<Backup> MakeBackup(const std::string& crf);

/// The backup with this number, or the newest for an empty text. StoreError::CannotOpen without
/// one, naming the file.
Backup FindBackup(const std::string& crf, const std::string& which);

/// Makes a CRF, which this program must not have open, what a backup of it is. What stands there
/// becomes a backup first. StoreError when the backup is damaged, when another program has the
/// file open, or when either cannot be written; then the CRF is as it was.
void RestoreBackup(const std::string& crf, const Backup& backup);

/// The same for the open CRF, whose windows are closed: it is closed, restored and opened again,
/// also when the restore fails. False when the user kept a window or the restored file was
/// refused.
bool RestoreOpenCrf(const Backup& backup);

/// With true, each CRF that OpenCrf opens from now on is backed up. A backup that cannot be made
/// is told in a box and keeps nothing from opening.
void BackUpAtOpening(bool wanted);
/// What OpenCrf calls.
void BackUpOpenedCrf();

}  // namespace zolmara
