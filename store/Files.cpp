#include "store/Files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>

#include "store/Dao.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

StoreError::Kind KindOf(const std::error_code& error) {
    if (error == std::errc::no_space_on_device || error == std::errc::file_too_large)
        return StoreError::Kind::DiskFull;
    if (error == std::errc::permission_denied || error == std::errc::read_only_file_system ||
        error == std::errc::operation_not_permitted)
        return StoreError::Kind::ReadOnly;
    return StoreError::Kind::CannotOpen;
}

void BringToDisk(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool done = file >= 0 && ::fsync(file) == 0;
    const std::error_code error(errno, std::generic_category());
    if (file >= 0) ::close(file);
    if (!done) FileFailed(path, error);
}

/// A new name is on the disk only when its folder is; some systems cannot do it.
void BringFolderToDisk(const std::string& target) {
    const fs::path folder = fs::path(target).parent_path();
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
}

/// Lets a file be written under another name beside the target, and gives it its own name when
/// it is complete.
void ReplaceFile(const std::string& target, const std::function<void(const std::string&)>& write) {
    const std::string scratch = fmt::format("{}.{}.tmp", target, ::getpid());
    try {
        write(scratch);
        PutInPlace(scratch, target);
    } catch (...) {
        DeleteFile(scratch);
        throw;
    }
}

}  // namespace

void FileFailed(const std::string& path, const std::error_code& error) {
    throw StoreError(KindOf(error), fmt::format("{}: {}", path, error.message()));
}

void PutInPlace(const std::string& scratch, const std::string& target) {
    BringToDisk(scratch);
    std::error_code error;
    fs::rename(scratch, target, error);
    if (error) FileFailed(target, error);
    BringFolderToDisk(target);
}

bool FileExists(const std::string& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

void DeleteFile(const std::string& path) {
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) fs::remove(path, ignored);
}

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code none;
    return a == b || fs::equivalent(a, b, none);
}

void CopyWholeFile(const std::string& source, const std::string& target) {
    if (IsSameFile(source, target))
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("{}: The file cannot be copied onto itself.", source));
    ReplaceFile(target, [&](const std::string& scratch) {
        std::error_code error;
        fs::copy_file(source, scratch, fs::copy_options::overwrite_existing, error);
        if (error) FileFailed(target, error);
    });
}

void WriteWholeFile(const std::string& path, const std::string& content) {
    ReplaceFile(path, [&](const std::string& scratch) {
        std::ofstream file(scratch, std::ios::binary | std::ios::trunc);
        file << content;
        file.close();
        if (!file) FileFailed(path, std::error_code(errno, std::generic_category()));
    });
}

void LinkOrCopyFile(const std::string& path, const std::string& name) {
    std::error_code error;
    fs::create_hard_link(path, name, error);
    if (error) CopyWholeFile(path, name);
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) return std::nullopt;
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (file.bad()) return std::nullopt;
    return content;
}

}  // namespace zolmara
