#pragma once

#include <functional>

namespace zolmara::ui {

/// Runs what a click or key asks for. An error that reaches it is shown in the general error
/// report, and the pointer is put right. What was sent to the printer is shown afterwards. False
/// when there was an error.
bool Guarded(const std::function<void()>& action);

/// True while such an action runs: another click or key asks for nothing then.
bool CommandAtWork();

}  // namespace zolmara::ui
