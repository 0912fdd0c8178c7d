#pragma once

// Going through a whole file without keeping it in memory.

#include <cstdint>

#include "store/Dao.h"

namespace zolmara {

/// As long as it lives, the pages of a file that are read replace each other in a small cache:
/// what was in memory before may stay, and little comes to it, however long the file is. What is
/// written stays there until it is committed, as always. Within another one it has nothing to do.
class ReadThrough {
public:
    explicit ReadThrough(Database& db);
    ~ReadThrough();
    ReadThrough(const ReadThrough&) = delete;
    ReadThrough& operator=(const ReadThrough&) = delete;

private:
    Database& db_;
    std::int64_t former_ =
        0;  ///< what the cache may hold, as SQLite tells it; 0 for within another
};

}  // namespace zolmara
