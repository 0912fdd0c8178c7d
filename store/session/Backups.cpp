#include "store/session/Backups.h"

#include <fmt/format.h>

#include <utility>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/CopyRows.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/WholeCrf.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"
#include "store/session/BackupFolder.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

bool atOpening = false;

class WithoutBackups {
public:
    WithoutBackups() : former_(std::exchange(atOpening, false)) {}
    ~WithoutBackups() { atOpening = former_; }
    WithoutBackups(const WithoutBackups&) = delete;
    WithoutBackups& operator=(const WithoutBackups&) = delete;

private:
    bool former_;
};

bool IsNoDatabase(const StoreError& error) {
    return error.kind() == StoreError::Kind::NotADatabase ||
           error.kind() == StoreError::Kind::Damaged;
}

/// A file that cannot be read as a database differs from every backup that can.
bool IsAsInBackup(const std::string& crf, const Backup& backup) {
    try {
        return HoldTheSame(crf, backup.Path);
    } catch (const StoreError& error) {
        if (error.kind() == StoreError::Kind::Locked) throw;
        return false;
    }
}

/// Whoever restores a backup must not find that a broken file is gone for good.
void CopyAside(const std::string& crf, const std::string& fresh) {
    try {
        CopyContent(crf, fresh);
    } catch (const StoreError& error) {
        if (!IsNoDatabase(error)) throw;
        NeedUnprotected(crf);  // a look into an open one would drop SQLite's locks
        DeleteFile(fresh);
        CopyWholeFile(crf, fresh);
    }
}

/// The first free number from here on: another program may back up at the same time.
Backup PutBackup(const std::string& fresh, const std::string& folder, std::int64_t which) {
    for (;; ++which) {
        Backup backup{.Which = which, .Time = Now(), .Size = SizeOfFile(fresh), .Path = {}};
        backup.Path = folder + "/" + BackupName(backup);
        if (HasBackup(folder, which)) continue;
        if (PutFile(fresh, backup.Path, false, fresh)) return backup;
    }
}

Backup CopyIntoFolder(const std::string& crf, const std::string& folder, std::int64_t which) {
    MakeBackupFolder(folder, crf);
    ClearScratch(folder);
    const ScratchFolder aside(folder + "/aside");
    const std::string fresh = aside.File("backup.CRF");
    CopyAside(crf, fresh);
    MakePrivate(fresh);
    return PutBackup(fresh, folder, which);
}

void NeedWholeBackup(const Backup& backup) {
    Database db = OpenReadOnly(backup.Path);
    NeedWhole(db);
}

}  // namespace

std::optional<Backup> MakeBackup(const std::string& crf) {
    const auto known = BackupsOf(crf);
    if (!known.empty() && IsAsInBackup(crf, known.front())) return std::nullopt;
    const std::int64_t next = known.empty() ? 1 : known.front().Which + 1;
    const Backup made = CopyIntoFolder(crf, BackupFolderOf(crf), next);
    for (const Backup& old : BackupsToDelete(BackupsOf(crf), TheBackupRules()))
        DeleteFile(old.Path);
    return made;
}

Backup FindBackup(const std::string& crf, const std::string& which) {
    const auto backups = BackupsOf(crf);
    if (backups.empty())
        throw StoreError(StoreError::Kind::CannotOpen, crf + ": there is no backup of this file");
    if (which.empty()) return backups.front();
    for (const Backup& backup : backups)
        if (std::to_string(backup.Which) == which) return backup;
    throw StoreError(StoreError::Kind::CannotOpen,
                     fmt::format("{}: there is no backup {} of this file", crf, which));
}

void RestoreBackup(const std::string& crf, const Backup& backup) {
    NeedWholeBackup(backup);
    NeedReplaceable(crf);
    const std::string target = BehindLinks(crf);
    const ScratchFolder aside(target);
    const std::string fresh = aside.File("restore.CRF");
    // Ahead of the backup of what stands there, which may be the one too many.
    CopyContent(backup.Path, fresh);
    const bool stood = FileExists(target);
    if (stood) MakeBackup(target);
    PutCrf(fresh, crf, stood);
}

bool RestoreOpenCrf(const Backup& backup) {
    if (CloseAllForms(false) != 0) return false;
    const std::string path = gCRFPath;
    // What comes back is a backup already.
    const WithoutBackups quiet;
    DropCrf();
    try {
        RestoreBackup(path, backup);
    } catch (...) {
        OpenCrf(path);
        throw;
    }
    return OpenCrf(path);
}

void BackUpAtOpening(bool wanted) { atOpening = wanted; }

void BackUpOpenedCrf() {
    if (!atOpening) return;
    try {
        MakeBackup(gCRFPath);
    } catch (const std::exception& error) {
        TheDialogs().MsgBox(
            fmt::format("{} was opened, but no backup of it could be made.\r{}\rBackups are kept "
                        "in {}.",
                        gCRFPath, PlainWords(error), TheBackupRules().Folder),
            kExclamation, "Backup");
    }
}

}  // namespace zolmara
