// What is done with a closed Cost Report File as a whole: its repair and its compaction.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "store/Connection.h"
#include "store/DatabaseImpl.h"
#include "store/Files.h"
#include "store/WholeCrf.h"
#include "store/files/FileGuard.h"
#include "store/salvage/Salvage.h"

namespace zolmara {
namespace {

namespace fs = std::filesystem;

void SyncPath(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY);
    if (file < 0) Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    const int result = fsync(file);
    const int reason = errno;
    close(file);
    // Some file systems refuse to sync a folder; the file's own sync is what counts.
    if (result != 0 && reason != EINVAL)
        Fail(StoreError::Kind::DiskFull, path, std::strerror(reason));
}

void SyncFolderOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path();
    SyncPath(folder.empty() ? "." : folder.string());
}

/// Puts a finished file in the place of another, so that at no moment neither is there.
void ReplaceFile(const std::string& fresh, const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) == 0) chmod(fresh.c_str(), info.st_mode & 07777);
    SyncPath(fresh);
    if (std::rename(fresh.c_str(), path.c_str()) != 0)
        Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    SyncFolderOf(path);
}

std::vector<std::string> IntegrityFindings(const std::string& path) {
    Connection connection;
    Connect(connection, path, SQLITE_OPEN_READWRITE);
    std::vector<std::string> findings;
    SqliteStatement check(connection.Handle, "PRAGMA integrity_check(100)");
    while (check.Step(path))
        if (check.Text(0) != "ok") findings.push_back(check.Text(0));
    return findings;
}

/// Nothing when the file is whole; one finding when it cannot even be walked.
std::vector<std::string> FindDamage(const std::string& path) {
    try {
        return IntegrityFindings(path);
    } catch (const StoreError& error) {
        const auto kind = error.kind();
        if (kind != StoreError::Kind::Damaged && kind != StoreError::Kind::NotADatabase) throw;
        return {error.what()};
    }
}

struct ScratchFile {
    std::string Path;
    explicit ScratchFile(std::string path) : Path(std::move(path)) { Remove(); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() { Remove(); }
    void Remove() {
        std::error_code ignored;
        fs::remove(Path, ignored);
        fs::remove(Path + "-journal", ignored);
    }
};

constexpr const char* kRepairSuffix = "~repair";

}  // namespace

RepairReport DBEngine::RepairDatabase(const std::string& path) {
    NeedRegularFile(path);
    NeedWritable(path);
    RepairReport report;
    const auto findings = FindDamage(path);
    if (findings.empty()) return report;
    report.WasDamaged = true;
    // Not REINDEX, even where only indexes are complained of: a page of rows that was overwritten
    // by an empty one looks like that too, and the indexes are what still tells of the loss.
    ScratchFile fresh(path + kRepairSuffix);
    const auto salvaged = SalvageDatabase(path, fresh.Path, RegisterSqlFunctions);
    report.Losses = salvaged.Losses;
    report.RowsKept = salvaged.RowsKept;
    // A journal of the damaged file must never be played back into the new one.
    std::error_code ignored;
    fs::remove(path + "-journal", ignored);
    ReplaceFile(fresh.Path, path);
    return report;
}

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
