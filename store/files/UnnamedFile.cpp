#include "store/files/UnnamedFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

#include "store/base/StoreError.h"

namespace zolmara {
namespace {

std::vector<std::string> Folders() {
    std::vector<std::string> folders;
    const char* const told = std::getenv("TMPDIR");
    if (told && *told != '\0') folders.emplace_back(told);
    folders.insert(folders.end(), {"/var/tmp", "/tmp"});
    return folders;
}

/// File systems that know no file without a name get one with a name that goes at once.
int OpenIn(const std::string& folder) {
    const int file = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_EXCL | O_CLOEXEC, 0600);
    if (file >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return file;
    std::string name = folder + "/zolmara-XXXXXX";
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) ::unlink(name.c_str());
    return named;
}

std::error_code LastError() { return {errno, std::generic_category()}; }

}  // namespace

UnnamedFile::UnnamedFile() {
    std::error_code error;
    for (const std::string& folder : Folders()) {
        folder_ = folder;
        file_ = Descriptor(OpenIn(folder));
        if (file_.IsOpen()) return;
        error = LastError();
    }
    throw StoreError(StoreError::Kind::CannotOpen,
                     fmt::format("{}: no temporary file: {}", folder_, error.message()));
}

std::error_code UnnamedFile::Write(std::uint64_t at, std::span<const std::byte> bytes) {
    auto place = static_cast<off_t>(at);
    for (auto rest = bytes; !rest.empty();) {
        const ssize_t written = ::pwrite(file_.Number(), rest.data(), rest.size(), place);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return LastError();
        rest = rest.subspan(static_cast<std::size_t>(written));
        place += written;
    }
    return {};
}

void UnnamedFile::Read(std::uint64_t at, std::span<std::byte> bytes) const {
    auto place = static_cast<off_t>(at);
    for (auto rest = bytes; !rest.empty();) {
        const ssize_t read = ::pread(file_.Number(), rest.data(), rest.size(), place);
        if (read < 0 && errno == EINTR) continue;
        if (read <= 0)
            throw StoreError(StoreError::Kind::Other,
                             fmt::format("{}: a temporary file cannot be read: {}", folder_,
                                         read < 0 ? LastError().message() : "it is too short"));
        rest = rest.subspan(static_cast<std::size_t>(read));
        place += read;
    }
}

void UnnamedFile::CutAt(std::uint64_t at) noexcept {
    // Where that fails the room comes back with the end of the file.
    static_cast<void>(::ftruncate(file_.Number(), static_cast<off_t>(at)) == 0);
}

}  // namespace zolmara
