#pragma once

// Small questions about files.

#include <optional>
#include <string>
#include <system_error>

namespace zolmara {

bool FileExists(const std::string& path);
/// Deletes a file if it is there; a failure shows in FileExists.
void DeleteFile(const std::string& path);
/// True when both paths name the same file, by whatever links.
bool IsSameFile(const std::string& a, const std::string& b);
/// Raises the StoreError for a file operation that failed.
[[noreturn]] void FileFailed(const std::string& path, const std::error_code& error);
/// The content of a file; nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

}  // namespace zolmara
