#pragma once

// The files that no output may take the place of: open Cost Report Files, their journals, the
// sources of an import.

#include <string>

namespace zolmara {

/// Protects a file as long as it lives, with the files that SQLite keeps beside it.
class ProtectedFile {
public:
    /// `what` tells the user what the file is: "the open Cost Report File".
    ProtectedFile(std::string path, std::string what);
    ~ProtectedFile();
    ProtectedFile(const ProtectedFile&) = delete;
    ProtectedFile& operator=(const ProtectedFile&) = delete;

    const std::string& Path() const { return path_; }
    const std::string& What() const { return what_; }

private:
    std::string path_;
    std::string what_;
};

/// Raises StoreError::Other when the path, by whatever road, link or case, leads to a protected
/// file, CannotOpen when its links lead in a circle. Opens nothing: a look into an open CRF would
/// drop SQLite's locks on it.
void NeedUnprotected(const std::string& path);

/// The file that a path leads to behind its links, also where that is not there yet.
std::string BehindLinks(const std::string& path);

/// The folder that a path names, "." without one.
std::string FolderPathOf(const std::string& path);

}  // namespace zolmara
