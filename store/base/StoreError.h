#pragma once

// What the store reports when it cannot do what it was asked for.

#include <stdexcept>
#include <string>

namespace zolmara {

/// A failure that the store reports, in SQLite's words, with the statement's or file's name.
class StoreError : public std::runtime_error {
public:
    enum class Kind {
        Other,         ///< anything in a statement: no such table, a refused value, a duplicate key
        NoSuchItem,    ///< a table or field that is not there (3265)
        NotADatabase,  ///< the file is none of ours
        Damaged,       ///< the file's structure is broken
        CannotOpen,    ///< no such file, a folder, no permission
        ReadOnly,      ///< a write to a file or folder that takes none
        DiskFull,      ///< the disk, or the file's limit, has no room
        Locked,        ///< another program holds the file
    };
    StoreError(Kind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}
    Kind kind() const { return kind_; }
    /// True where the file itself could not be read or written.
    bool IsFileError() const { return kind_ != Kind::Other && kind_ != Kind::NoSuchItem; }

private:
    Kind kind_;
};

}  // namespace zolmara
