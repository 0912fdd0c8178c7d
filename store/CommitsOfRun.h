#pragma once

#include <cstdint>

namespace zolmara {

/// How many transactions this run of the program has committed to Cost Report Files that it had
/// open, whichever they were. 0 says that none of them holds anything else than before.
std::int64_t CommitsOfRun();

}  // namespace zolmara
