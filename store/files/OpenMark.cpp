#include "store/files/OpenMark.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <map>
#include <system_error>
#include <utility>

#include "store/base/FileBasics.h"
#include "store/base/Holder.h"
#include "store/base/StoreError.h"

namespace zolmara {
namespace {

constexpr int kTries = 40;
constexpr useconds_t kPause = 25000;

using Identity = std::pair<dev_t, ino_t>;

/// It outlives every database, also the one that is open when the program ends.
std::map<Identity, std::weak_ptr<Descriptor>>& SharedDescriptors() {
    static auto* const descriptors = new std::map<Identity, std::weak_ptr<Descriptor>>;
    return *descriptors;
}

Identity IdentityOf(const struct stat& info) { return {info.st_dev, info.st_ino}; }

/// The descriptor that marks of the file in this process have already; none without one.
std::shared_ptr<Descriptor> SharedOne(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return {};
    return SharedDescriptors()[IdentityOf(info)].lock();
}

/// A new mark. None while another program is replacing the file.
std::shared_ptr<Descriptor> TryToMark(const std::string& path) {
    auto file = std::make_shared<Descriptor>(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file->IsOpen()) FileFailed(path, std::error_code(errno, std::generic_category()));
    if (LockFile(*file, FileMark::Open, false) == LockResult::Held) return {};
    struct stat opened {};
    struct stat named {};
    // The file that was opened may have lost its name to another one before it was marked.
    if (::fstat(file->Number(), &opened) != 0 || ::stat(path.c_str(), &named) != 0 ||
        IdentityOf(opened) != IdentityOf(named))
        return {};
    SharedDescriptors()[IdentityOf(opened)] = file;
    return file;
}

std::shared_ptr<Descriptor> Mark(const std::string& path) {
    for (int tries = 0; tries < kTries; ++tries) {
        std::shared_ptr<Descriptor> file = SharedOne(path);
        if (!file) file = TryToMark(path);
        if (file) return file;
        ::usleep(kPause);
    }
    throw StoreError(StoreError::Kind::Locked, path + ": another program is replacing the file");
}

/// What SQLite locks of a file.
constexpr off_t kSqliteLocks = 0x40000000;
constexpr off_t kSqliteLocksSize = 512;

/// The process with a lock of SQLite's on the file; 0 where the system tells of none.
pid_t HolderOf(const Descriptor& file) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kSqliteLocks;
    lock.l_len = kSqliteLocksSize;
    const bool asked = ::fcntl(file.Number(), F_GETLK, &lock) == 0;
    return asked && lock.l_type != F_UNLCK && lock.l_pid > 0 ? lock.l_pid : 0;
}

}  // namespace

std::string WhoHolds(const std::string& path) {
    // Through the descriptor that is open anyway: another one may not be closed now.
    const std::shared_ptr<Descriptor> file = SharedOne(path);
    const pid_t holder = file ? HolderOf(*file) : 0;
    std::string name;
    if (holder != 0) std::getline(std::ifstream("/proc/" + std::to_string(holder) + "/comm"), name);
    if (name.empty()) return "another program is using the file";
    return name + " (process " + std::to_string(holder) + ") is using the file";
}

OpenMark::OpenMark(const std::string& path)
    : protected_(path, "the open Cost Report File"), file_(Mark(path)) {}

OpenMark::~OpenMark() {
    file_.reset();
    std::erase_if(SharedDescriptors(), [](const auto& entry) { return entry.second.expired(); });
}

SoleClaim::SoleClaim(const std::string& path) : file_(::open(path.c_str(), O_RDWR | O_CLOEXEC)) {
    if (!file_.IsOpen()) FileFailed(path, std::error_code(errno, std::generic_category()));
    if (LockFile(file_, FileMark::Open, true) == LockResult::Held)
        throw StoreError(StoreError::Kind::Locked, path + ": the file is open in another program");
}

}  // namespace zolmara
