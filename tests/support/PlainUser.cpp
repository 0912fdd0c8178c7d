#include "support/PlainUser.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace fs = std::filesystem;

namespace zolmara::test {
namespace {

constexpr uid_t kNobody = 65534;

bool GiveUpRights() {
    return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
}

void GiveAway(const fs::path& folder) {
    EXPECT_EQ(::chown(folder.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        EXPECT_EQ(::lchown(entry.path().c_str(), kNobody, kNobody), 0) << entry.path();
}

}  // namespace

bool AsAPlainUser(const fs::path& folder, const std::function<void()>& act) {
    const bool root = ::geteuid() == 0;
    if (root) GiveAway(folder);
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        if (root && !GiveUpRights()) ::_exit(2);
        act();
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace zolmara::test
