#pragma once

// The folder of one file's backups: names, order, and which of them go.

#include <cstdint>
#include <string>
#include <vector>

#include "store/session/Backups.h"

namespace zolmara {

/// "000017-20260131-235959.CRF": the number, and the time for whoever looks into the folder.
std::string BackupName(const Backup& backup);
bool HasBackup(const std::string& folder, std::int64_t which);

/// Makes the folder, for its owner alone, with a note in it that tells whose backups these are.
/// StoreError when that fails.
void MakeBackupFolder(const std::string& folder, const std::string& crf);
/// Only the owner reads and writes the file. StoreError when that fails.
void MakePrivate(const std::string& path);
std::uintmax_t SizeOfFile(const std::string& path);

/// Those that the rules do not keep, of all backups of a file, the newest first. The days are
/// those on which a backup was made, so that a clock that jumps deletes nothing by itself.
std::vector<Backup> BackupsToDelete(const std::vector<Backup>& backups, const BackupRules& rules);

}  // namespace zolmara
