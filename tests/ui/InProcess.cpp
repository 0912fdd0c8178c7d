#include "InProcess.h"

#include <gtest/gtest.h>

#include "cli/CommandLine.h"
#include "core/Globals.h"
#include "core/Host.h"

namespace zolmara::ui {
namespace {

/// The command line installs its own host.
struct KeptHost {
    Host* Kept = &TheHost();
    ~KeptHost() { InstallHost(Kept); }
};

}  // namespace

CommandResult RunCommand(std::vector<std::string> words, const std::string& settings) {
    const KeptHost kept;
    words.insert(words.begin(), {"zolmara-cli", "--quiet", "--settings", settings});
    std::vector<const char*> pointers;
    for (const std::string& word : words) pointers.push_back(word.c_str());
    CommandResult result;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    result.Status = cli::RunCommandLine(static_cast<int>(pointers.size()), pointers.data());
    result.Err = ::testing::internal::GetCapturedStderr();
    result.Out = ::testing::internal::GetCapturedStdout();
    return result;
}

}  // namespace zolmara::ui
