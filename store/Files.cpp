#include "store/Files.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "store/Dao.h"
#include "store/files/FileDoor.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16;

StoreError::Kind KindOf(const std::error_code& error) {
    if (error == std::errc::no_space_on_device || error == std::errc::file_too_large)
        return StoreError::Kind::DiskFull;
    if (error == std::errc::permission_denied || error == std::errc::read_only_file_system ||
        error == std::errc::operation_not_permitted)
        return StoreError::Kind::ReadOnly;
    return StoreError::Kind::CannotOpen;
}

[[noreturn]] void LastOperationFailed(const std::string& path) {
    FileFailed(path, std::error_code(errno, std::generic_category()));
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

void CopyWholeFile(const std::string& source, const std::string& target) {
    if (IsSameFile(source, target))
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("{}: The file cannot be copied onto itself.", source));
    std::ifstream from(source, std::ios::binary);
    if (!from) LastOperationFailed(source);
    OutFile to(target, AnyFile);
    std::vector<char> chunk(kChunk);
    while (from) {
        from.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        to.Write({chunk.data(), static_cast<std::size_t>(from.gcount())});
    }
    if (from.bad()) LastOperationFailed(source);
    to.Put();
}

void WriteWholeFile(const std::string& path, const std::string& content) {
    OutFile file(path, AnyFile);
    file.Write(content);
    file.Put();
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) return std::nullopt;
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (file.bad()) return std::nullopt;
    return content;
}

}  // namespace zolmara
