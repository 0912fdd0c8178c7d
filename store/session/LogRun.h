#pragma once

// Where a run leaves what it has to say: rows of table Log, or of table Error.

#include <string_view>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

/// A run whose messages go to the log, under a letter of its own, as long as this lives. The rows
/// of its last run go first.
class LogRun {
public:
    explicit LogRun(std::string_view logType) { ClearLog(logType); }
    ~LogRun() { gLogType.clear(); }
    LogRun(const LogRun&) = delete;
    LogRun& operator=(const LogRun&) = delete;
};

/// Table Error for a run that begins: without rows, made where it is missing.
void EmptyErrors();

}  // namespace zolmara
