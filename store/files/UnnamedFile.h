#pragma once

// A temporary file without a name: nobody else can open it, and it is gone with this program,
// however that ends.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <system_error>

#include "store/files/FileLock.h"

namespace zolmara {

/// Where it lies: the folder that TMPDIR names, else /var/tmp, which is a disk also where /tmp is
/// memory, else /tmp; the first of them that takes a file.
class UnnamedFile {
public:
    /// StoreError with the last folder when none of them takes a file.
    UnnamedFile();

    const std::string& Folder() const { return folder_; }
    /// Writes at a place. What went wrong, if anything did.
    std::error_code Write(std::uint64_t at, std::span<const std::byte> bytes);
    /// Reads what was written. StoreError with the folder when that fails.
    void Read(std::uint64_t at, std::span<std::byte> bytes) const;
    /// Gives back the room from a place on.
    void CutAt(std::uint64_t at) noexcept;

private:
    std::string folder_;
    Descriptor file_;
};

}  // namespace zolmara
