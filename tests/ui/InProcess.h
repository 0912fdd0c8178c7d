#pragma once

// Commands of the command line, run in the tests' own process: cheap enough for hundreds of them.

#include <string>
#include <vector>

namespace zolmara::ui {

struct CommandResult {
    int Status = -1;
    std::string Out;
    std::string Err;
};

/// Runs a command as zolmara-cli does, with settings of its own. No CRF must be open. Whoever
/// stood in front of the engine stands there again afterwards.
CommandResult RunCommand(std::vector<std::string> words, const std::string& settings);

}  // namespace zolmara::ui
