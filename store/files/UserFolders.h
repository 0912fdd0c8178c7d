#pragma once

#include <string>

namespace zolmara {

/// Where the user's settings lie: XDG_CONFIG_HOME, else .config in the home folder.
std::string UserConfigFolder();

/// Where programs keep what they remember for the user: XDG_DATA_HOME, else .local/share in the
/// home folder.
std::string UserDataFolder();

}  // namespace zolmara
