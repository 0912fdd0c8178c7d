#pragma once

#include <string>

namespace zolmara {

/// Who keeps an open CRF from being written, in words: "zolmara-cli (process 4711) is using the
/// file"; "another program is using the file" where the system does not tell, or it has just
/// finished.
std::string WhoHolds(const std::string& path);

}  // namespace zolmara
