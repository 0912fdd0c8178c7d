#include "store/files/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace zolmara {
namespace {

/// SQLite's own bytes begin at 0x40000000 and are 512.
constexpr off_t kFirstByte = 0x40000400;

}  // namespace

Descriptor::~Descriptor() {
    if (number_ >= 0) ::close(number_);
}

LockResult LockFile(const Descriptor& file, FileMark mark, bool exclusive) {
    struct flock lock {};
    lock.l_type = exclusive ? F_WRLCK : F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kFirstByte + static_cast<off_t>(mark);
    lock.l_len = 1;
    if (::fcntl(file.Number(), F_OFD_SETLK, &lock) == 0) return LockResult::Taken;
    return errno == EAGAIN || errno == EACCES ? LockResult::Held : LockResult::Unavailable;
}

bool HasName(const Descriptor& file, const std::string& path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file.Number(), &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

LockResult LockFolder(const Descriptor& folder) {
    if (::flock(folder.Number(), LOCK_EX | LOCK_NB) == 0) return LockResult::Taken;
    return errno == EWOULDBLOCK ? LockResult::Held : LockResult::Unavailable;
}

}  // namespace zolmara
