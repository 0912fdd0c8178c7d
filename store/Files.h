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
/// Copies a file, over one that is there, and brings the copy to the disk before it takes its
/// name. StoreError when that fails; then the target is as it was.
void CopyWholeFile(const std::string& source, const std::string& target);
/// Writes a whole file in the same way.
void WriteWholeFile(const std::string& path, const std::string& content);
/// Brings a scratch file that is complete to the disk and gives it the target's name, in place of
/// a file that has it. StoreError when that fails; the target is as it was.
void PutInPlace(const std::string& scratch, const std::string& target);
/// Raises the StoreError for a file operation that failed.
[[noreturn]] void FileFailed(const std::string& path, const std::error_code& error);
/// Gives a file a second name: a link, or a copy where the folder has no links. StoreError when
/// neither can be made.
void LinkOrCopyFile(const std::string& path, const std::string& name);
/// The content of a file; nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

}  // namespace zolmara
