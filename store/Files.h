#pragma once

// Whole files: copies that appear complete or not at all.

#include <optional>
#include <string>
#include <system_error>

namespace zolmara {

bool FileExists(const std::string& path);
/// Deletes a file if it is there; a failure shows in FileExists.
void DeleteFile(const std::string& path);
/// True when both paths name the same file, by whatever links.
bool IsSameFile(const std::string& a, const std::string& b);
/// Copies a file, over one that is there: through the door of store/files/FileDoor.h, as a whole
/// or not at all. StoreError when that fails; then the target is as it was.
void CopyWholeFile(const std::string& source, const std::string& target);
/// Writes a whole file in the same way.
void WriteWholeFile(const std::string& path, const std::string& content);
/// Raises the StoreError for a file operation that failed.
[[noreturn]] void FileFailed(const std::string& path, const std::error_code& error);
/// The content of a file; nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

}  // namespace zolmara
