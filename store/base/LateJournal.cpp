// Method: SQLite asks for a journal before the first page of a transaction changes, writes each
// page into it as it was, brings it to the disk, and only then writes to the file. What it writes
// until then need not be on the disk; it is kept here. A transaction that is taken back before has
// no journal to delete.

#include "store/base/LateJournal.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace zolmara {
namespace {

/// A journal that grows beyond becomes a file at once.
constexpr sqlite3_int64 kMostKept = 32 << 20;

/// Asked for anew each time, for a program may put another one in front.
sqlite3_vfs* System() { return sqlite3_vfs_find(nullptr); }

/// The journal that was closed without ever having been a file: SQLite deletes it next.
thread_local std::string neverMade;

/// Bytes that grow piece by piece, so that none is ever moved.
class Pieces {
public:
    std::size_t Size() const { return size_; }
    /// How many of the bytes from a place on were read.
    std::size_t Read(char* into, std::size_t count, std::size_t at) const {
        const std::size_t have = at < size_ ? std::min(count, size_ - at) : 0;
        Walk(at, have, [&](char* piece, std::size_t done, std::size_t size) {
            std::memcpy(into + done, piece, size);
        });
        return have;
    }
    /// What lies between the end and the place becomes zeros. std::bad_alloc changes nothing.
    void Write(const char* from, std::size_t count, std::size_t at) {
        while (pieces_.size() * kPiece < at + count)
            pieces_.push_back(std::make_unique<char[]>(kPiece));
        size_ = std::max(size_, at + count);
        Walk(at, count, [&](char* piece, std::size_t done, std::size_t size) {
            std::memcpy(piece, from + done, size);
        });
    }
    void Truncate(std::size_t size) {
        if (size >= size_) return;
        pieces_.resize((size + kPiece - 1) / kPiece);
        size_ = pieces_.size() * kPiece;
        Walk(size, size_ - size,
             [](char* piece, std::size_t, std::size_t rest) { std::memset(piece, 0, rest); });
        size_ = size;
    }
    /// Gives the bytes in their order, piece by piece, until one is not taken.
    template <class Take>
    int ForEach(const Take& take) const {
        int code = SQLITE_OK;
        Walk(0, size_, [&](const char* piece, std::size_t at, std::size_t size) {
            if (code == SQLITE_OK) code = take(piece, at, size);
        });
        return code;
    }

private:
    static constexpr std::size_t kPiece = 65536;

    template <class Work>
    void Walk(std::size_t at, std::size_t count, const Work& work) const {
        for (std::size_t done = 0, size = 0; done < count; done += size) {
            const std::size_t within = (at + done) % kPiece;
            size = std::min(count - done, kPiece - within);
            work(pieces_[(at + done) / kPiece].get() + within, done, size);
        }
    }

    std::vector<std::unique_ptr<char[]>> pieces_;
    std::size_t size_ = 0;
};

struct Journal {
    const char* Name;  ///< SQLite keeps it until the journal is closed
    int Flags;
    Pieces Bytes;
    bool IsFile = false;
};

/// What SQLite makes room for; the system's own file follows behind.
struct LateFile {
    sqlite3_file Base;
    Journal* Kept;
};

Journal& KeptOf(sqlite3_file* file) { return *reinterpret_cast<LateFile*>(file)->Kept; }
sqlite3_file* FileOf(sqlite3_file* file) {
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<LateFile*>(file) + 1);
}

/// The system's own file takes no more at once than SQLite ever gives it, which is a page.
int WriteAll(sqlite3_file* real, const Pieces& bytes) {
    return bytes.ForEach([&](const char* piece, std::size_t at, std::size_t size) {
        return real->pMethods->xWrite(real, piece, static_cast<int>(size),
                                      static_cast<sqlite3_int64>(at));
    });
}

/// Where the journal cannot be written as a whole it stays in memory, for the transaction is taken
/// back by it.
int MakeFile(sqlite3_file* file) {
    Journal& journal = KeptOf(file);
    if (journal.IsFile) return SQLITE_OK;
    sqlite3_file* const real = FileOf(file);
    real->pMethods = nullptr;
    int code = System()->xOpen(System(), journal.Name, real, journal.Flags, nullptr);
    if (code == SQLITE_OK) code = WriteAll(real, journal.Bytes);
    journal.IsFile = code == SQLITE_OK;
    if (journal.IsFile) {
        journal.Bytes = {};
    } else if (real->pMethods != nullptr) {
        real->pMethods->xClose(real);
        System()->xDelete(System(), journal.Name, 0);
    }
    return code;
}

int Close(sqlite3_file* file) {
    const std::unique_ptr<Journal> journal(&KeptOf(file));
    if (journal->IsFile) return FileOf(file)->pMethods->xClose(FileOf(file));
    neverMade = journal->Name;
    return SQLITE_OK;
}

int Read(sqlite3_file* file, void* into, int count, sqlite3_int64 at) {
    const Journal& journal = KeptOf(file);
    if (journal.IsFile) return FileOf(file)->pMethods->xRead(FileOf(file), into, count, at);
    const auto wanted = static_cast<std::size_t>(count);
    char* const bytes = static_cast<char*>(into);
    const auto have = journal.Bytes.Read(bytes, wanted, static_cast<std::size_t>(at));
    if (have == wanted) return SQLITE_OK;
    std::memset(bytes + have, 0, wanted - have);
    return SQLITE_IOERR_SHORT_READ;
}

int Keep(Pieces& bytes, const void* from, int count, sqlite3_int64 at) {
    try {
        bytes.Write(static_cast<const char*>(from), static_cast<std::size_t>(count),
                    static_cast<std::size_t>(at));
    } catch (const std::bad_alloc&) {
        return SQLITE_IOERR_NOMEM;
    }
    return SQLITE_OK;
}

int Write(sqlite3_file* file, const void* from, int count, sqlite3_int64 at) {
    Journal& journal = KeptOf(file);
    if (!journal.IsFile && at + count > kMostKept)
        if (const int code = MakeFile(file); code != SQLITE_OK) return code;
    if (journal.IsFile) return FileOf(file)->pMethods->xWrite(FileOf(file), from, count, at);
    return Keep(journal.Bytes, from, count, at);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    Journal& journal = KeptOf(file);
    if (journal.IsFile) return FileOf(file)->pMethods->xTruncate(FileOf(file), size);
    journal.Bytes.Truncate(static_cast<std::size_t>(size));
    return SQLITE_OK;
}

int Sync(sqlite3_file* file, int flags) {
    const int code = MakeFile(file);
    return code == SQLITE_OK ? FileOf(file)->pMethods->xSync(FileOf(file), flags) : code;
}

int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    const Journal& journal = KeptOf(file);
    if (journal.IsFile) return FileOf(file)->pMethods->xFileSize(FileOf(file), size);
    *size = static_cast<sqlite3_int64>(journal.Bytes.Size());
    return SQLITE_OK;
}

// A journal is never locked, and tells nothing of its disk: its Cost Report File does.
int NoLock(sqlite3_file*, int) { return SQLITE_OK; }
int IsLocked(sqlite3_file*, int* locked) {
    *locked = 0;
    return SQLITE_OK;
}
int Control(sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; }
int SectorSize(sqlite3_file*) { return 0; }
int Characteristics(sqlite3_file*) { return 0; }

const sqlite3_io_methods kMethods = {.iVersion = 1,
                                     .xClose = Close,
                                     .xRead = Read,
                                     .xWrite = Write,
                                     .xTruncate = Truncate,
                                     .xSync = Sync,
                                     .xFileSize = FileSize,
                                     .xLock = NoLock,
                                     .xUnlock = NoLock,
                                     .xCheckReservedLock = IsLocked,
                                     .xFileControl = Control,
                                     .xSectorSize = SectorSize,
                                     .xDeviceCharacteristics = Characteristics,
                                     .xShmMap = nullptr,
                                     .xShmLock = nullptr,
                                     .xShmBarrier = nullptr,
                                     .xShmUnmap = nullptr,
                                     .xFetch = nullptr,
                                     .xUnfetch = nullptr};

/// True where a journal of the name can become a file later as well as now.
bool CanWait(const char* name) {
    const std::string path(name);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return false;
    int exists = 1;
    int writable = 0;
    System()->xAccess(System(), name, SQLITE_ACCESS_EXISTS, &exists);
    System()->xAccess(System(), path.substr(0, slash + 1).c_str(), SQLITE_ACCESS_READWRITE,
                      &writable);
    return exists == 0 && writable != 0;
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* given) {
    constexpr int kNewJournal = SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_CREATE;
    if ((flags & SQLITE_OPEN_MAIN_JOURNAL) != 0) neverMade.clear();
    if ((flags & kNewJournal) != kNewJournal || name == nullptr || !CanWait(name))
        return System()->xOpen(System(), name, file, flags, given);
    auto* const late = reinterpret_cast<LateFile*>(file);
    late->Kept = new (std::nothrow) Journal{name, flags, {}};
    late->Base.pMethods = late->Kept ? &kMethods : nullptr;
    if (given != nullptr) *given = flags;
    return late->Kept ? SQLITE_OK : SQLITE_NOMEM;
}

int Delete(sqlite3_vfs*, const char* name, int syncFolder) {
    if (name == nullptr || neverMade != name) return System()->xDelete(System(), name, syncFolder);
    neverMade.clear();
    return SQLITE_OK;
}

sqlite3_vfs MakeVfs() {
    sqlite3_vfs vfs = *System();
    vfs.pNext = nullptr;
    vfs.zName = "zolmara-late-journal";
    vfs.xOpen = Open;
    vfs.xDelete = Delete;
    return vfs;
}

}  // namespace

const char* LateJournalVfs() {
    static sqlite3_vfs vfs = MakeVfs();
    static const int registered = sqlite3_vfs_register(&vfs, 0);
    vfs.szOsFile = std::max(vfs.szOsFile, System()->szOsFile + static_cast<int>(sizeof(LateFile)));
    return registered == SQLITE_OK ? vfs.zName : nullptr;
}

}  // namespace zolmara
