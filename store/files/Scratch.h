#pragma once

// Files that are written aside until they are whole.

#include <string>
#include <string_view>

#include "store/files/FileLock.h"

namespace zolmara {

/// A new, empty file of this program's own, beside the file that it is for. Its name is nobody
/// else's, nobody but its owner can read it, and it goes when this object goes, or when the
/// program has died, with the next ClearScratch.
class Scratch {
public:
    /// StoreError, with the words of `target`, when the folder takes no file.
    explicit Scratch(const std::string& target);
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    const std::string& Path() const { return path_; }
    /// Open for reading and writing. Closing it ends the ownership.
    const Descriptor& File() const { return file_; }
    /// The file has got another name: nothing is deleted any more.
    void Keep() {
        path_.clear();
        file_ = Descriptor();
    }

private:
    std::string path_;
    Descriptor file_;
};

/// A new, empty folder of the same kind, for files that SQLite makes, with what it keeps beside
/// them. It goes with all that is in it.
class ScratchFolder {
public:
    /// StoreError, with the words of `target`, when the folder of the target takes none.
    explicit ScratchFolder(const std::string& target);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string File(std::string_view name) const { return path_ + "/" + std::string(name); }

private:
    std::string path_;
    Descriptor folder_;
};

/// Deletes what programs that are no more have left in a folder, and nothing else.
void ClearScratch(const std::string& folder);

/// True for a name that Scratch makes.
bool IsScratchName(std::string_view name);

}  // namespace zolmara
