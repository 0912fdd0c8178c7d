#pragma once

// The close of the session's CRF, for whoever must know how it went.

#include <optional>
#include <string>

namespace zolmara {

/// mnuReportClose. Its steps pass errors by; this gives the words of the first one that left the
/// file not repaired or not compacted. The file is whole in every case.
std::optional<std::string> CloseCrf();

}  // namespace zolmara
