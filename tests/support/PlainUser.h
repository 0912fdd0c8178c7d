#pragma once

// What the system refuses a user. It refuses root nothing, and a build server is root.

#include <filesystem>
#include <functional>

namespace zolmara::test {

/// Runs an act in a process of its own, as a user without rights when the tests run as root. The
/// folder and all in it are that user's, during the act and after it. True when none of the act's
/// expectations failed.
bool AsAPlainUser(const std::filesystem::path& folder, const std::function<void()>& act);

}  // namespace zolmara::test
