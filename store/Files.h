#pragma once

// Whole files: copies that appear complete or not at all.

#include <string>

#include "store/base/FileBasics.h"

namespace zolmara {

/// Copies a file, over one that is there: through the door of store/files/FileDoor.h, as a whole
/// or not at all. StoreError when that fails; then the target is as it was.
void CopyWholeFile(const std::string& source, const std::string& target);
/// Writes a whole file in the same way.
void WriteWholeFile(const std::string& path, const std::string& content);

}  // namespace zolmara
