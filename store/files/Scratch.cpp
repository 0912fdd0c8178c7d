#include "store/files/Scratch.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

#include "store/base/FileBasics.h"
#include "store/files/FileGuard.h"
#include "store/files/PutJournal.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

// Short, so that there is room for it wherever there is room for the file's own name.
constexpr std::string_view kStart = ".zolmara-";
constexpr std::string_view kEnd = ".tmp";
constexpr std::string_view kJournal = "-journal";
constexpr std::size_t kLetters = 6;
constexpr int kTries = 20;

bool IsLetter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Deletes a scratch file whose owner is gone, its journal first: a journal alone could be taken
/// for another file's. What is to get another name stays until it has it; its owner being dead,
/// that was written down before now or never.
void DeleteIfOrphan(const std::string& path) {
    const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat info {};
    if (!file.IsOpen() || ::fstat(file.Number(), &info) != 0 || !S_ISREG(info.st_mode)) return;
    if (LockFile(file, FileMark::Owner, true) != LockResult::Taken || !HasName(file, path)) return;
    if (HasPutJournal(FolderPathOf(path))) return;
    ::unlink((path + std::string(kJournal)).c_str());
    ::unlink(path.c_str());
}

Descriptor OpenFolder(const std::string& path) {
    return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW));
}

void DeleteFolderIfOrphan(const std::string& path) {
    const Descriptor folder = OpenFolder(path);
    if (!folder.IsOpen() || LockFolder(folder) != LockResult::Taken || !HasName(folder, path))
        return;
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

/// The name of a scratch file without that of its journal.
std::string_view WithoutJournal(std::string_view name) {
    if (name.ends_with(kJournal)) name.remove_suffix(kJournal.size());
    return name;
}

}  // namespace

bool IsScratchName(std::string_view name) {
    if (name.ends_with(kEnd)) name.remove_suffix(kEnd.size());
    return name.size() == kStart.size() + kLetters && name.starts_with(kStart) &&
           std::ranges::all_of(name.substr(kStart.size(), kLetters), IsLetter);
}

Scratch::Scratch(const std::string& target) {
    const fs::path folder = fs::path(target).parent_path();
    const std::string pattern =
        (folder / (std::string(kStart) + std::string(kLetters, 'X') + std::string(kEnd))).string();
    for (int tries = 0; tries < kTries; ++tries) {
        std::string name = pattern;
        Descriptor file(::mkostemps(name.data(), static_cast<int>(kEnd.size()), O_CLOEXEC));
        if (!file.IsOpen()) FileFailed(target, std::error_code(errno, std::generic_category()));
        // Until it is locked another program may take it for a dead one's.
        if (LockFile(file, FileMark::Owner, true) == LockResult::Held || !HasName(file, name))
            continue;
        path_ = std::move(name);
        file_ = std::move(file);
        return;
    }
    FileFailed(target, std::make_error_code(std::errc::file_exists));
}

Scratch::~Scratch() {
    if (path_.empty()) return;
    ::unlink((path_ + std::string(kJournal)).c_str());
    ::unlink(path_.c_str());
}

ScratchFolder::ScratchFolder(const std::string& target) {
    const fs::path beside = fs::path(target).parent_path();
    for (int tries = 0; tries < kTries; ++tries) {
        // The system's own call wants the free letters at the end.
        std::string name = (beside / (std::string(kStart) + std::string(kLetters, 'X'))).string();
        if (!::mkdtemp(name.data()))
            FileFailed(target, std::error_code(errno, std::generic_category()));
        Descriptor folder = OpenFolder(name);
        if (LockFolder(folder) == LockResult::Held || !HasName(folder, name)) continue;
        path_ = std::move(name);
        folder_ = std::move(folder);
        return;
    }
    FileFailed(target, std::make_error_code(std::errc::file_exists));
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void ClearScratch(const std::string& folder) {
    if (!FinishPuts(folder)) return;
    std::error_code error;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (IsScratchName(WithoutJournal(name))) names.push_back(name);
    }
    for (const std::string& name : names) {
        const std::string path = (fs::path(folder) / std::string(WithoutJournal(name))).string();
        std::error_code none;
        const fs::file_status found = fs::symlink_status(path, none);
        if (!fs::exists(found))
            ::unlink((fs::path(folder) / name).c_str());
        else if (fs::is_directory(found))
            DeleteFolderIfOrphan(path);
        else
            DeleteIfOrphan(path);
    }
}

}  // namespace zolmara
