#include "store/Files.h"

#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <vector>

#include "store/Dao.h"
#include "store/files/FileDoor.h"

namespace zolmara {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16;

[[noreturn]] void LastOperationFailed(const std::string& path) {
    FileFailed(path, std::error_code(errno, std::generic_category()));
}

}  // namespace

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

}  // namespace zolmara
