// Stands in front of the system calls that change files. See Faults.h.

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "store/harness/Power.h"

namespace {

char folder[PATH_MAX];
char onlyCalls[256];
char report[PATH_MAX];
int failAt = 0;
int failWith = -1;
int calls = 0;
bool armed = false;
int droppedLocks = 0;

template <class Call>
Call Real(const char* name) {
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}

bool Counts(const char* call) {
    if (onlyCalls[0] == '\0') return true;
    const char* at = strstr(onlyCalls, call);
    const std::size_t size = strlen(call);
    return at && (at == onlyCalls || at[-1] == ',') && (at[size] == ',' || at[size] == '\0');
}

bool IsBelow(const char* path) {
    const std::size_t size = strlen(folder);
    return strncmp(path, folder, size) == 0 && (path[size] == '/' || path[size] == '\0');
}

bool IsBelow(int file) {
    char link[64];
    char path[PATH_MAX];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t size = readlink(link, path, sizeof path - 1);
    if (size <= 0) return false;
    path[size] = '\0';
    return IsBelow(path);
}

/// True when this call is to fail; errno is set.
template <class File>
bool Fails(const char* call, File file) {
    if (!armed || !Counts(call)) return false;
    const int former = errno;
    if (!IsBelow(file)) {
        errno = former;
        return false;
    }
    if (++calls != failAt) return false;
    if (failWith < 0) kill(getpid(), SIGKILL);
    errno = failWith;
    return true;
}

// --- Locks

struct Held {
    dev_t Device;
    ino_t Node;
    bool Is;
};
Held held[64];
int heldCount = 0;

Held* FindHeld(int file, bool make) {
    struct stat info {};
    if (fstat(file, &info) != 0 || !S_ISREG(info.st_mode)) return nullptr;
    for (int i = 0; i < heldCount; ++i)
        if (held[i].Device == info.st_dev && held[i].Node == info.st_ino) return &held[i];
    if (!make || heldCount == 64) return nullptr;
    held[heldCount] = {info.st_dev, info.st_ino, false};
    return &held[heldCount++];
}

void NoteLock(int file, const struct flock& lock) {
    Held* const entry = FindHeld(file, true);
    if (!entry) return;
    if (lock.l_type != F_UNLCK)
        entry->Is = true;
    else if (lock.l_len == 0)
        entry->Is = false;
}

void NoteClose(int file) {
    const int former = errno;
    if (const Held* entry = FindHeld(file, false); entry && entry->Is) ++droppedLocks;
    errno = former;
}

int Control(const char* name, int file, int command, void* argument) {
    using Call = int (*)(int, int, ...);
    const int result = Real<Call>(name)(file, command, argument);
    if (result == 0 && command == F_SETLK)
        NoteLock(file, *static_cast<const struct flock*>(argument));
    return result;
}

// --- The environment

void Copy(char* to, std::size_t size, const char* from) {
    snprintf(to, size, "%s", from ? from : "");
}

__attribute__((constructor)) void ArmFromEnvironment() {
    const char* below = getenv("ZOLMARA_FAULT_FOLDER");
    if (!below) return;
    Copy(report, sizeof report, getenv("ZOLMARA_FAULT_REPORT"));
    Copy(folder, sizeof folder, below);
    Copy(onlyCalls, sizeof onlyCalls, getenv("ZOLMARA_FAULT_ONLY"));
    failAt = atoi(getenv("ZOLMARA_FAULT_AT"));
    failWith = atoi(getenv("ZOLMARA_FAULT_ERROR"));
    armed = true;
}

__attribute__((destructor)) void Report() {
    if (report[0] == '\0') return;
    armed = false;
    FILE* file = fopen(report, "w");
    if (!file) return;
    fprintf(file, "%d %d\n", calls, droppedLocks);
    fclose(file);
}

}  // namespace

extern "C" {

void FaultsArm(const char* below, int n, int error, const char* only) {
    Copy(folder, sizeof folder, below);
    Copy(onlyCalls, sizeof onlyCalls, only);
    failAt = n;
    failWith = error;
    calls = 0;
    armed = true;
}

int FaultsDisarm() {
    armed = false;
    return calls;
}

int FaultsDroppedLocks() { return droppedLocks; }

// NOLINTBEGIN: the names and arguments are the system's.
ssize_t write(int file, const void* bytes, size_t size) {
    if (Fails("write", file)) return -1;
    return Real<ssize_t (*)(int, const void*, size_t)>("write")(file, bytes, size);
}
ssize_t writev(int file, const struct iovec* pieces, int count) {
    if (Fails("write", file)) return -1;
    return Real<ssize_t (*)(int, const struct iovec*, int)>("writev")(file, pieces, count);
}
ssize_t pwrite(int file, const void* bytes, size_t size, off_t at) {
    if (Fails("write", file)) return -1;
    return Real<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite")(file, bytes, size, at);
}
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at) {
    if (Fails("write", file)) return -1;
    return Real<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64")(file, bytes, size, at);
}
int fsync(int file) {
    if (Fails("fsync", file)) return -1;
    const int result = Real<int (*)(int)>("fsync")(file);
    if (result == 0) PowerSynced(file);
    return result;
}
int fdatasync(int file) {
    if (Fails("fsync", file)) return -1;
    const int result = Real<int (*)(int)>("fdatasync")(file);
    if (result == 0) PowerSynced(file);
    return result;
}
int ftruncate(int file, off_t size) {
    if (Fails("ftruncate", file)) return -1;
    return Real<int (*)(int, off_t)>("ftruncate")(file, size);
}
int ftruncate64(int file, off64_t size) {
    if (Fails("ftruncate", file)) return -1;
    return Real<int (*)(int, off64_t)>("ftruncate64")(file, size);
}
int rename(const char* from, const char* to) {
    if (Fails("rename", to)) return -1;
    return Real<int (*)(const char*, const char*)>("rename")(from, to);
}
int renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
    if (Fails("rename", to)) return -1;
    return Real<int (*)(int, const char*, int, const char*, unsigned)>("renameat2")(a, from, b, to,
                                                                                    flags);
}
int link(const char* from, const char* to) {
    if (Fails("link", to)) return -1;
    return Real<int (*)(const char*, const char*)>("link")(from, to);
}
int unlink(const char* path) {
    if (Fails("unlink", path)) return -1;
    return Real<int (*)(const char*)>("unlink")(path);
}
int close(int file) {
    NoteClose(file);
    return Real<int (*)(int)>("close")(file);
}
int fcntl(int file, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return Control("fcntl", file, command, argument);
}
int fcntl64(int file, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return Control("fcntl64", file, command, argument);
}
// NOLINTEND
}
