// How a Cost Report File gets another content as a whole.
//
// Two ways lead there. A new file can take the name of the old one by a rename; or the pages of
// the new content can be written into the file that stands there, in one transaction of SQLite's.
// The second is the way taken wherever SQLite can open the file, for these reasons.
//
// - SQLite's exclusive lock, which every other reader and writer of the file respects, holds from
//   the first look to the synced end. A rename replaces the very thing that the lock lies on:
//   whoever waits for the old file goes on to write where nobody will look.
// - A program that has the CRF open without a statement running has no lock. It keeps its handle
//   over a compaction in place and sees the new pages; after a rename its work would be lost.
// - The rollback journal makes it all or nothing: whatever moment the program dies at, the next
//   opening has the old content or the new one, under the one name. A rename has to deal with the
//   old file's journal apart from the old file, and there is no order of the two steps in which a
//   kill between them, with another program opening just then, does no harm.
// - Links, mode, owner, group and whatever else belongs to the file are simply not touched.
// - The disk can only be full while the journal is written, ahead of the first change.
//
// The price is a journal of the old pages: a compaction writes the file three times (the compact
// copy, the journal, the pages) instead of once. So pages are written back only when the copy is
// smaller; and a compact copy is made by VACUUM INTO, which keeps the rowids by which an open
// recordset of another program knows its rows, where VACUUM may change them.
//
// A rename remains for files that SQLite cannot open, which are in nobody's hands, and for new
// names.

#include "store/WholeCrf.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>

#include "store/Connection.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/base/Sqlite.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"
#include "store/files/OpenMark.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

/// Written once and wholly, ahead of its name; what is lost with the machine is lost aside.
constexpr const char* kAside = "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;";

/// Holds a CRF so that no other program reads or writes it until this ends. StoreError::Locked
/// when another one does.
class SoleConnection {
public:
    explicit SoleConnection(const std::string& path) : path_(path) {
        Connect(connection_, path, SQLITE_OPEN_READWRITE);
        SetUp(connection_.Handle, path);
        // In this mode a lock, once taken, outlasts its transaction.
        SqliteRun(connection_.Handle, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT;",
                  path);
    }
    ~SoleConnection() {
        // In that mode an ended journal stays with an empty head. It goes under the lock.
        for (const char* sql : {"PRAGMA locking_mode=NORMAL", "PRAGMA journal_mode=PERSIST",
                                "PRAGMA journal_mode=DELETE"})
            sqlite3_exec(connection_.Handle, sql, nullptr, nullptr, nullptr);
    }
    SoleConnection(const SoleConnection&) = delete;
    SoleConnection& operator=(const SoleConnection&) = delete;

    sqlite3* Handle() const { return connection_.Handle; }

private:
    std::string path_;
    Connection connection_;
};

/// Makes the content of one connection's file that of another's, in one transaction of it.
void CopyPages(sqlite3* from, sqlite3* to, const std::string& path) {
    sqlite3_backup* const copy = sqlite3_backup_init(to, "main", from, "main");
    if (!copy) ThrowSqlite(to, sqlite3_errcode(to), path);
    const int step = sqlite3_backup_step(copy, -1);
    const int end = sqlite3_backup_finish(copy);
    if (end != SQLITE_OK) ThrowSqlite(to, end, path);
    if (step != SQLITE_DONE) ThrowSqlite(nullptr, step, path);
}

bool IsSmaller(sqlite3* a, sqlite3* b, const std::string& path) {
    return Pragma(a, "page_count", path) * Pragma(a, "page_size", path) <
           Pragma(b, "page_count", path) * Pragma(b, "page_size", path);
}

/// A new file that nobody but its owner can read, marked as a living program's until this ends.
class OwnedFile {
public:
    explicit OwnedFile(const std::string& path)
        : path_(path),
          file_(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        if (!file_.IsOpen()) FileFailed(path, std::error_code(errno, std::generic_category()));
        LockFile(file_, FileMark::Owner, true);
    }
    ~OwnedFile() {
        ::unlink((path_ + "-journal").c_str());
        ::unlink(path_.c_str());
    }
    OwnedFile(const OwnedFile&) = delete;
    OwnedFile& operator=(const OwnedFile&) = delete;

private:
    std::string path_;
    Descriptor file_;
};

bool Exists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

/// A CRF that SQLite can open and that its rules let in; what a killed program left half done in
/// it has been taken back. None for any other file.
std::optional<std::string> NotACrf(const std::string& path) {
    try {
        Connection connection;
        Connect(connection, path, SQLITE_OPEN_READWRITE);
        NeedCostReportFile(connection.Handle, path);
        return std::nullopt;
    } catch (const StoreError& error) {
        if (error.kind() == StoreError::Kind::Locked) throw;
        return PlainWords(error);
    }
}

void WriteOver(const std::string& fresh, const std::string& target) {
    Connection from;
    Connect(from, fresh, SQLITE_OPEN_READONLY);
    const SoleConnection to(target);
    CopyPages(from.Handle, to.Handle(), target);
}

/// No file of another database may be played into the one that comes: its journals go first. What
/// stood there, if anything did, is no CRF, so that they hold nothing of one.
void DropJournals(const std::string& target) {
    for (const char* beside : {"-journal", "-wal", "-shm"}) ::unlink((target + beside).c_str());
}

/// A folder that takes no new file takes no CRF, and a journal needs a name, too.
void NeedRoomBeside(const std::string& target) {
    const std::string folder = FolderPathOf(target);
    std::error_code error;
    if (!fs::is_directory(folder, error))
        Fail(StoreError::Kind::CannotOpen, target, "there is no such folder");
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        Fail(StoreError::Kind::ReadOnly, target, "the folder takes no file");
    NeedRoomForJournal(target);
}

}  // namespace

void CompactCrfThrough(const std::string& path, const std::string& through) {
    NeedRegularFile(path);
    NeedWritable(path);
    const OwnedFile owned(through);
    const SoleConnection crf(path);
    SqliteStatement vacuum(crf.Handle(), "VACUUM INTO ?1");
    vacuum.BindText(1, through);
    vacuum.Step(path);
    vacuum = SqliteStatement();
    Connection compact;
    Connect(compact, through, SQLITE_OPEN_READONLY);
    if (IsSmaller(compact.Handle, crf.Handle(), path))
        CopyPages(compact.Handle, crf.Handle(), path);
    if (!Exists(path)) PutFile(through, path, false);
}

void ClearCompaction(const std::string& through) {
    struct stat info {};
    if (::lstat(through.c_str(), &info) != 0 || S_ISDIR(info.st_mode)) return;
    const Descriptor file(::open(through.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (file.IsOpen() && S_ISREG(info.st_mode)) {
        for (const FileMark mark : {FileMark::Owner, FileMark::Open})
            if (LockFile(file, mark, true) == LockResult::Held) return;
    }
    DropJournals(through);
    ::unlink(through.c_str());
}

void CopyContent(const std::string& source, const std::string& fresh) {
    Connection from;
    Connect(from, source, MayWrite(source) ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
    Connection to;
    Connect(to, fresh, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    SqliteRun(to.Handle, kAside, source);
    CopyPages(from.Handle, to.Handle, source);
}

void CopyCrf(const std::string& source, const std::string& target) {
    NeedRegularFile(source);
    const ProtectedFile guard(source, "the Cost Report File that is copied");
    NeedReplaceable(target);
    const bool stood = Exists(BehindLinks(target));
    const ScratchFolder aside(BehindLinks(target));
    const std::string fresh = aside.File("copy.CRF");
    CopyContent(source, fresh);
    PutCrf(fresh, target, stood, source);
}

void PutCrf(const std::string& fresh, const std::string& target, bool mayReplace,
            const std::string& like) {
    NeedReplaceable(target);
    const std::string file = BehindLinks(target);
    if (!Exists(file)) {
        // A journal that is alone is not another's: with its file everything is gone.
        DropJournals(file);
        if (PutFile(fresh, file, false, like)) return;
        mayReplace = false;
    }
    if (!mayReplace)
        Fail(StoreError::Kind::CannotOpen, target, "another program made the file meanwhile");
    const SoleClaim claim(file);
    if (!NotACrf(file)) return WriteOver(fresh, file);
    DropJournals(file);
    PutFile(fresh, file, true, like);
}

void NeedReplaceable(const std::string& target) {
    NeedUnprotected(target);
    const std::string file = BehindLinks(target);
    NeedRoomBeside(file);
    if (!Exists(file)) return;
    NeedRegularFile(file);
    NeedWritable(file);
    const SoleClaim alone(file);
    // Another program's database in that mode has half of its rows in a second file.
    if (Exists(file + "-wal") && NotACrf(file))
        Fail(StoreError::Kind::Locked, target, "is in use by another program");
}

}  // namespace zolmara
