#pragma once

#include <cstdint>

#include "store/Dao.h"

namespace zolmara {

/// Tells whether another program has written to a file since this was made. What this program
/// writes does not count.
class WrittenElsewhere {
public:
    explicit WrittenElsewhere(Database& db);
    bool Happened() const;

private:
    Database& db_;
    std::int64_t before_;
};

}  // namespace zolmara
