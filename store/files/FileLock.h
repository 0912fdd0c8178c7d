#pragma once

// Locks that tell other programs of this kind, on this machine or on another one that shares the
// folder, that a file is in somebody's hands.

#include <string>
#include <utility>

namespace zolmara {

/// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }

private:
    int number_;
};

/// What a lock says. They lie on bytes of their own, behind those that SQLite locks, so that they
/// never stand in SQLite's way.
enum class FileMark {
    Open,   ///< a program has the CRF open; whoever puts another file in its place must be alone
    Owner,  ///< the program that made this scratch file is alive
};

enum class LockResult {
    Taken,
    Held,         ///< another opening of the file has it
    Unavailable,  ///< this file system has no locks
};

/// Locks a file through an open descriptor, until that is closed. The lock belongs to the
/// descriptor and not to the process: another one on the same file may come and go. An exclusive
/// lock needs a descriptor for writing, a shared one a descriptor for reading.
LockResult LockFile(const Descriptor& file, FileMark mark, bool exclusive);

/// Whether a name still leads to the opened file.
bool HasName(const Descriptor& file, const std::string& path);

/// Locks an open folder: exclusively, as its owner.
LockResult LockFolder(const Descriptor& folder);

}  // namespace zolmara
