#pragma once

#include <string>

#include "core/DateTime.h"

namespace zolmara {

/// Sets a file's last-write time, given in local time. False when that cannot be done.
bool SetFileTime(const std::string& path, const DateTime& lastWrite);

}  // namespace zolmara
