#include "support/FailingDisk.h"

#include <cstring>
#include <new>

namespace zolmara::test {
namespace {

struct Plan {
    int FailAt = 0;
    int Code = SQLITE_FULL;
    FailingDisk::Calls Which = FailingDisk::Calls::Writes;
    int Count = 0;
    bool Failed = false;
};
Plan plan;
sqlite3_vfs* real = nullptr;
sqlite3_vfs failing;

/// SQLITE_OK, or the error that this call is to give.
int Ask(FailingDisk::Calls which) {
    if (which != plan.Which) return SQLITE_OK;
    if (++plan.Count != plan.FailAt) return SQLITE_OK;
    plan.Failed = true;
    return plan.Code;
}

struct File {
    sqlite3_file Base;
    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};
File* FileOf(sqlite3_file* file) { return reinterpret_cast<File*>(file); }
sqlite3_file* RealOf(sqlite3_file* file) { return FileOf(file)->Real(); }

int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 at) {
    if (const int code = Ask(FailingDisk::Calls::Writes)) return code;
    return RealOf(file)->pMethods->xWrite(RealOf(file), bytes, size, at);
}
int Read(sqlite3_file* file, void* bytes, int size, sqlite3_int64 at) {
    if (Ask(FailingDisk::Calls::Reads)) return SQLITE_IOERR_READ;
    return RealOf(file)->pMethods->xRead(RealOf(file), bytes, size, at);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    if (const int code = Ask(FailingDisk::Calls::Writes)) return code;
    return RealOf(file)->pMethods->xTruncate(RealOf(file), size);
}
int Sync(sqlite3_file* file, int flags) {
    if (const int code = Ask(FailingDisk::Calls::Writes)) return code;
    return RealOf(file)->pMethods->xSync(RealOf(file), flags);
}
int Close(sqlite3_file* file) { return RealOf(file)->pMethods->xClose(RealOf(file)); }
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    return RealOf(file)->pMethods->xFileSize(RealOf(file), size);
}
int Lock(sqlite3_file* file, int level) {
    return RealOf(file)->pMethods->xLock(RealOf(file), level);
}
int Unlock(sqlite3_file* file, int level) {
    return RealOf(file)->pMethods->xUnlock(RealOf(file), level);
}
int CheckLock(sqlite3_file* file, int* result) {
    return RealOf(file)->pMethods->xCheckReservedLock(RealOf(file), result);
}
int Control(sqlite3_file* file, int what, void* argument) {
    return RealOf(file)->pMethods->xFileControl(RealOf(file), what, argument);
}
int SectorSize(sqlite3_file* file) { return RealOf(file)->pMethods->xSectorSize(RealOf(file)); }
int Characteristics(sqlite3_file* file) {
    return RealOf(file)->pMethods->xDeviceCharacteristics(RealOf(file));
}

const sqlite3_io_methods kMethods{
    1,       Close,     Read,    Write,      Truncate,        Sync,    FileSize, Lock,
    Unlock,  CheckLock, Control, SectorSize, Characteristics, nullptr, nullptr,  nullptr,
    nullptr, nullptr,   nullptr};

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* own = new (file) File;
    own->Base.pMethods = nullptr;
    const int code = real->xOpen(real, name, own->Real(), flags, outFlags);
    if (own->Real()->pMethods) own->Base.pMethods = &kMethods;
    return code;
}
int Delete(sqlite3_vfs*, const char* name, int sync) {
    if (const int code = Ask(FailingDisk::Calls::Writes)) return code;
    return real->xDelete(real, name, sync);
}

}  // namespace

FailingDisk::FailingDisk() {
    real = sqlite3_vfs_find(nullptr);
    failing = *real;
    failing.zName = "failing";
    failing.szOsFile += static_cast<int>(sizeof(File));
    failing.xOpen = Open;
    failing.xDelete = Delete;
    plan = {};
    sqlite3_vfs_register(&failing, 1);
}

FailingDisk::~FailingDisk() {
    sqlite3_vfs_register(real, 1);
    sqlite3_vfs_unregister(&failing);
}

void FailingDisk::FailAt(int call, int code, Calls which) { plan = {call, code, which, 0, false}; }
void FailingDisk::Work() { plan = {}; }
int FailingDisk::Count() const { return plan.Count; }
bool FailingDisk::Failed() const { return plan.Failed; }

}  // namespace zolmara::test
