#pragma once

// Several files that take their names together. One rename is all or nothing, several are not: so
// the intention is written down ahead of the first, and whoever comes to the folder after the
// death of the program finishes what it tells of.

#include <sys/types.h>

#include <string>
#include <vector>

#include "store/files/FileLock.h"

namespace zolmara {

/// A file that is whole and on the disk under a scratch name, and is to get another name.
struct IntendedName {
    std::string Aside;
    std::string Target;
};

/// The intention, written down in each folder of its files. Only names that Scratch makes are ever
/// renamed, and only the very files that were meant: a file that has taken a target's place
/// meanwhile stays.
class PutJournal {
public:
    /// Written aside, where nobody takes it for an intention yet. StoreError when a folder takes no
    /// file.
    explicit PutJournal(const std::vector<IntendedName>& names);
    ~PutJournal();
    PutJournal(const PutJournal&) = delete;
    PutJournal& operator=(const PutJournal&) = delete;

    /// From here on it holds, as long as this lives. StoreError when it cannot be announced.
    void Announce();

private:
    struct Written {
        std::string Path;
        Descriptor File;  ///< locked, as its owner
    };
    void WriteInto(const std::string& folder, const std::string& text);
    void Drop();
    std::vector<Written> written_;
};

/// True when an intention is written down in a folder.
bool HasPutJournal(const std::string& folder);

/// Finishes what programs that have died intended in a folder. False while another program is at
/// it, or an intention is still a living program's.
bool FinishPuts(const std::string& folder);

}  // namespace zolmara
