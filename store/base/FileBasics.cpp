#include "store/base/FileBasics.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "store/base/StoreError.h"

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

}  // namespace

void FileFailed(const std::string& path, const std::error_code& error) {
    throw StoreError(KindOf(error), fmt::format("{}: {}", path, error.message()));
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

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) return std::nullopt;
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (file.bad()) return std::nullopt;
    return content;
}

}  // namespace zolmara
