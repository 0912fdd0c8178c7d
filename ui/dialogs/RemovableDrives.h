#pragma once

#include <vector>

#include "ui/main/Desktop.h"

namespace zolmara::ui {

/// The removable media that are mounted and take writes, in the order of their folders.
std::vector<Drive> GetRemovableDrives();

}  // namespace zolmara::ui
