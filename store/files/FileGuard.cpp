#include "store/files/FileGuard.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "core/Globals.h"
#include "store/base/FileBasics.h"
#include "store/base/StoreError.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr int kMostLinks = 40;
constexpr std::array<std::string_view, 4> kBesides{"", "-journal", "-wal", "-shm"};

/// Never destroyed: the open CRF, a global, is protected until the program has ended.
std::vector<const ProtectedFile*>& ProtectedFiles() {
    static auto& files = *new std::vector<const ProtectedFile*>();
    return files;
}

/// A file as the system tells files apart; a file that is not there is nobody's.
using Identity = std::pair<dev_t, ino_t>;

bool Identify(const std::string& path, Identity& identity) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return false;
    identity = {info.st_dev, info.st_ino};
    return true;
}

/// A file's place: the same for names that differ in case alone, since folders are shared with
/// machines to which those are one name.
struct Place {
    Identity Folder;
    std::string Name;
    bool Known = false;

    explicit Place(const std::string& path)
        : Name(UCase(fs::path(path).filename().string())),
          Known(Identify(FolderPathOf(path), Folder)) {}
    bool operator==(const Place& other) const {
        return Known && other.Known && Folder == other.Folder && Name == other.Name;
    }
};

bool IsOne(const std::string& path, const std::string& guarded) {
    Identity a;
    Identity b;
    if (Identify(path, a) && Identify(guarded, b) && a == b) return true;
    return Place(path) == Place(guarded);
}

}  // namespace

ProtectedFile::ProtectedFile(std::string path, std::string what)
    : path_(BehindLinks(path)), what_(std::move(what)) {
    ProtectedFiles().push_back(this);
}

ProtectedFile::~ProtectedFile() { std::erase(ProtectedFiles(), this); }

void NeedUnprotected(const std::string& path) {
    const std::string target = BehindLinks(path);
    std::error_code error;
    if (fs::is_symlink(target, error))
        FileFailed(path, std::make_error_code(std::errc::too_many_symbolic_link_levels));
    for (const ProtectedFile* file : ProtectedFiles()) {
        for (const std::string_view beside : kBesides) {
            if (!IsOne(target, file->Path() + std::string(beside))) continue;
            throw StoreError(StoreError::Kind::Other,
                             fmt::format("{}: This is {}{}", path,
                                         beside.empty() ? "" : "a part of ", file->What()));
        }
    }
}

std::string FolderPathOf(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

std::string BehindLinks(const std::string& path) {
    fs::path file = path;
    std::error_code error;
    for (int links = 0; links < kMostLinks && fs::is_symlink(file, error); ++links) {
        const fs::path target = fs::read_symlink(file, error);
        if (error) break;
        file = file.parent_path() / target;
    }
    return file.string();
}

}  // namespace zolmara
