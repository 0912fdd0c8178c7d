#pragma once

// Several readings of a file as one look at it.

#include "store/Dao.h"

namespace zolmara {

/// As long as it lives, a file is read as it stood at its beginning: another program's change of
/// it waits, so it must not last while a person is asked. Readings share one lock, which costs less
/// than one for each. Within another one, or in a batch, it has nothing to do. Nothing is written
/// to the file meanwhile, in this program either. StoreError when the file cannot be read.
class ReadSnapshot {
public:
    explicit ReadSnapshot(Database& db);
    ~ReadSnapshot();
    ReadSnapshot(const ReadSnapshot&) = delete;
    ReadSnapshot& operator=(const ReadSnapshot&) = delete;

private:
    Database& db_;
    bool mine_;
};

}  // namespace zolmara
