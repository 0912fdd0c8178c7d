// What is done with a closed Cost Report File as a whole, and its compaction.

#include "store/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "store/Connection.h"
#include "store/Sqlite.h"

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

constexpr const char* kCompactSuffix = "~compact";

}  // namespace

void ScratchFile::Remove() {
    std::error_code ignored;
    fs::remove(Path, ignored);
    fs::remove(Path + "-journal", ignored);
}

void ReplaceFile(const std::string& fresh, const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) == 0) chmod(fresh.c_str(), info.st_mode & 07777);
    SyncPath(fresh);
    if (std::rename(fresh.c_str(), path.c_str()) != 0)
        Fail(StoreError::Kind::CannotOpen, path, std::strerror(errno));
    SyncFolderOf(path);
}

void DBEngine::CompactDatabase(const std::string& source, const std::string& target) {
    NeedRegularFile(source);
    if (fs::exists(target)) NeedWritable(target);
    ScratchFile fresh(target + kCompactSuffix);
    {
        Connection connection;
        Connect(connection, source, SQLITE_OPEN_READWRITE);
        SqliteStatement vacuum(connection.Handle, "VACUUM INTO ?1");
        vacuum.BindText(1, fresh.Path);
        vacuum.Step(source);
    }
    if (!fs::exists(target)) {
        struct stat info {};
        if (stat(source.c_str(), &info) == 0) chmod(fresh.Path.c_str(), info.st_mode & 07777);
    }
    ReplaceFile(fresh.Path, target);
}

}  // namespace zolmara
