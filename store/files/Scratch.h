#pragma once

// Files that are written aside until they are whole.

#include <string>
#include <string_view>
#include <utility>

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
    void Keep() { Release(); }
    /// The same, with the ownership handed on.
    Descriptor Release() {
        path_.clear();
        return std::move(file_);
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

/// Finishes what programs that are no more were about to name (see PutJournal.h), deletes what
/// else they have left in a folder, and nothing else.
void ClearScratch(const std::string& folder);

/// True for a name that Scratch makes.
bool IsScratchName(std::string_view name);

}  // namespace zolmara
