#include "store/files/FileDoor.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

#include "core/Dialogs.h"
#include "store/base/FileBasics.h"
#include "store/files/FileGuard.h"
#include "store/files/NotConfirmed.h"
#include "store/files/PutJournal.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr mode_t kGroupBits = S_IRWXG;

ReplaceAsTold*& Told() {
    static ReplaceAsTold* told = nullptr;
    return told;
}

std::error_code LastError() { return {errno, std::generic_category()}; }

[[noreturn]] void Failed(const std::string& path) { FileFailed(path, LastError()); }

/// The first bytes of a file; all of it is none of the door's business.
std::string HeadOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) Failed(path);
    std::string head(kHeadBytes, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

mode_t NewFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/// The owner first, since a change of it may drop bits of the mode. Where the group cannot be
/// kept, what the group might do is nobody's right any more.
void TakeRights(const Descriptor& file, const struct stat& former) {
    mode_t mode = former.st_mode & 07777;
    if (::fchown(file.Number(), former.st_uid, former.st_gid) != 0 &&
        ::fchown(file.Number(), static_cast<uid_t>(-1), former.st_gid) != 0)
        mode &= ~kGroupBits;
    ::fchmod(file.Number(), mode);
}

/// The rights of what stands there, or else of the file `like`, or else of a new file.
void GiveRights(const Descriptor& file, const std::string& target, const std::string& like) {
    struct stat model {};
    if (::stat(target.c_str(), &model) == 0)
        TakeRights(file, model);
    else if (!like.empty() && ::stat(like.c_str(), &model) == 0)
        ::fchmod(file.Number(), model.st_mode & 0777);
    else
        ::fchmod(file.Number(), NewFileMode());
}

/// Gives a file a name that nothing has yet. False when something has it.
bool RenameToNew(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno == EEXIST) return false;
    if (errno != EINVAL && errno != ENOSYS) Failed(to);
    if (::access(to.c_str(), F_OK) == 0) return false;
    if (::rename(from.c_str(), to.c_str()) != 0) Failed(to);
    return true;
}

/// A file that is aside gets the rights that it will have, and all of it is on the disk.
void MakeReadyAside(const std::string& aside, const std::string& target, const std::string& like) {
    const Descriptor file(::open(aside.c_str(), O_RDWR | O_CLOEXEC));
    if (!file.IsOpen()) Failed(target);
    GiveRights(file, target, like);
    if (::fsync(file.Number()) != 0) Failed(target);
}

bool GiveName(const std::string& aside, const std::string& target, bool mayReplace) {
    if (!mayReplace) return RenameToNew(aside, target);
    if (::rename(aside.c_str(), target.c_str()) != 0) Failed(target);
    return true;
}

/// Another name for the file at `path`, so that it can come back; a copy where the folder knows no
/// second names.
void KeepUnder(const Scratch& scratch, const std::string& path) {
    ::unlink(scratch.Path().c_str());
    if (::link(path.c_str(), scratch.Path().c_str()) == 0) return;
    std::error_code error;
    fs::copy_file(path, scratch.Path(), fs::copy_options::overwrite_existing, error);
    if (error) FileFailed(path, error);
}

/// One that is closed, or a backup: a year's work, which nobody means to give for an output.
bool IsCostReportFile(std::string_view head) {
    constexpr std::size_t kMarkAt = 68;
    constexpr std::string_view kMark = "ZMLR";
    return head.starts_with("SQLite format 3") && head.size() > kMarkAt &&
           head.substr(kMarkAt).starts_with(kMark);
}

}  // namespace

bool AnyFile(std::string_view /*head*/) { return true; }

// --- Consent -------------------------------------------------------------------------------

ReplaceAsTold::ReplaceAsTold(bool replace, std::string hint)
    : replace_(replace), hint_(std::move(hint)), former_(Told()) {
    Told() = this;
}

ReplaceAsTold::~ReplaceAsTold() { Told() = former_; }

void NeedConsent(const std::string& path) {
    if (const ReplaceAsTold* told = Told()) {
        if (told->replace_) return;
        throw FileKept(fmt::format("{} is there already; {}", path, told->hint_));
    }
    const int answer = TheDialogs().MsgBox(
        fmt::format("{} is there already, and somebody may need it.  Replace it?", path),
        kYesNo + kExclamation + kDefaultButton2, "Replace File");
    if (answer != kYes) throw FileKept(fmt::format("{} was kept; nothing was written", path));
}

void NeedMayWrite(const std::string& path, const OwnOutput& own) {
    NeedUnprotected(path);
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return;
    if (S_ISDIR(info.st_mode)) FileFailed(path, std::make_error_code(std::errc::is_a_directory));
    if (!S_ISREG(info.st_mode))
        throw StoreError(StoreError::Kind::CannotOpen, path + ": is no file");
    const bool writable = (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
    if (!writable || ::access(path.c_str(), W_OK) != 0)
        throw StoreError(StoreError::Kind::ReadOnly, path + ": the file is read-only");
    if (info.st_size == 0) return;
    const std::string head = HeadOf(path);
    if (own && own(head)) return;
    if (IsCostReportFile(head))
        throw StoreError(StoreError::Kind::Other,
                         path + ": This is a Cost Report File; choose another name");
    NeedConsent(path);
}

// --- A file on its way ---------------------------------------------------------------------

OutFile::Standing OutFile::StandingAt(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return {};
    return {true, info.st_dev, info.st_ino};
}

OutFile::OutFile(const std::string& path, OwnOutput own)
    : path_(path),
      target_(JudgedTarget(path, own)),
      own_(std::move(own)),
      scratch_(target_),
      writer_(scratch_.File().Number()),
      judged_(StandingAt(target_)) {}

OutFile::~OutFile() = default;

std::string OutFile::JudgedTarget(const std::string& path, const OwnOutput& own) {
    NeedMayWrite(path, own);
    return BehindLinks(path);
}

void OutFile::Write(std::string_view bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= writer_.PieceSize()) Flush();
}

void OutFile::Flush() {
    if (const std::error_code error = writer_.Take(buffer_)) FileFailed(path_, error);
}

void OutFile::Deliver() {
    Flush();
    if (const std::error_code error = writer_.Finish()) FileFailed(path_, error);
}

void OutFile::Complete() {
    Deliver();
    if (::fsync(scratch_.File().Number()) != 0) Failed(path_);
}

/// What stands there now is what was judged, or is judged anew, without a question: nobody is
/// asked twice.
void OutFile::NeedUnchanged() {
    if (IsUnchanged()) return;
    const ReplaceAsTold quiet(false, "another program made it meanwhile");
    NeedMayWrite(path_, own_);
    judged_ = StandingAt(target_);
}

void OutFile::MakeReady() {
    Complete();
    NeedUnprotected(path_);
    NeedUnchanged();
    MakeReadyAside(scratch_.Path(), target_, "");
}

void OutFile::TakeName() {
    if (!GiveName(scratch_.Path(), target_, judged_.There)) {
        NeedUnchanged();
        GiveName(scratch_.Path(), target_, true);
    }
    scratch_.Keep();
}

constexpr std::string_view kInPlace = "the file is in its place";

void OutFile::Put() {
    MakeReady();
    TakeName();
    if (!SyncedFolderOf(target_)) throw NotConfirmed(path_, kInPlace);
}

bool SyncedFolderOf(const std::string& path) {
    const Descriptor folder(::open(FolderPathOf(path).c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
    // Some file systems cannot do it.
    return !folder.IsOpen() || ::fsync(folder.Number()) == 0 || errno == EINVAL;
}

bool PutFile(const std::string& aside, const std::string& target, bool mayReplace,
             const std::string& like) {
    MakeReadyAside(aside, target, like);
    if (!GiveName(aside, target, mayReplace)) return false;
    if (!SyncedFolderOf(target)) throw NotConfirmed(target, kInPlace);
    return true;
}

// --- Files that belong together ------------------------------------------------------------

FilesTogether::FilesTogether(const std::vector<OutFile*>& files) {
    for (OutFile* const file : files) {
        file->MakeReady();
        parts_.push_back({file, nullptr});
    }
    WriteJournal();
}

FilesTogether::~FilesTogether() = default;

void FilesTogether::WriteJournal() {
    std::vector<IntendedName> names;
    for (const Part& part : parts_) names.push_back({part.File->AsidePath(), part.File->target_});
    journal_ = std::make_unique<PutJournal>(names);
}

void FilesTogether::Put() {
    const auto isUnchanged = [](const Part& part) { return part.File->IsUnchanged(); };
    if (!std::ranges::all_of(parts_, isUnchanged)) {
        for (const Part& part : parts_) part.File->NeedUnchanged();
        WriteJournal();
    }
    try {
        GiveNames();
    } catch (...) {
        TakeNamesBack();
        journal_.reset();
        throw;
    }
    const bool synced = IsOnDisk();
    journal_.reset();
    if (!synced) throw NotConfirmed(Paths(), "the files are in their places");
}

/// Without the announcement another program might take what is kept for a dead one's.
void FilesTogether::GiveNames() {
    journal_->Announce();
    for (Part& part : parts_) KeepFormer(part);
    for (Part& part : parts_) {
        part.File->TakeName();
        part.Named = true;
    }
}

void FilesTogether::KeepFormer(Part& part) {
    if (!part.File->judged_.There) return;
    part.Former = std::make_unique<Scratch>(part.File->target_);
    KeepUnder(*part.Former, part.File->target_);
}

void FilesTogether::TakeNamesBack() {
    for (Part& part : parts_) {
        if (!part.Named) continue;
        const std::string& target = part.File->target_;
        if (!part.Former)
            ::unlink(target.c_str());
        else if (::rename(part.Former->Path().c_str(), target.c_str()) == 0)
            part.Former->Keep();
    }
}

bool FilesTogether::IsOnDisk() const {
    std::set<std::string> folders;
    for (const Part& part : parts_)
        if (folders.insert(FolderPathOf(part.File->target_)).second &&
            !SyncedFolderOf(part.File->target_))
            return false;
    return true;
}

std::string FilesTogether::Paths() const {
    std::string paths;
    for (const Part& part : parts_) paths += (paths.empty() ? "" : ", ") + part.File->Path();
    return paths;
}

void PutTogether(OutFile& first, OutFile& second) { FilesTogether({&first, &second}).Put(); }

}  // namespace zolmara
