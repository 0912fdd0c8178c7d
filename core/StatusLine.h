#pragma once

#include <string>

#include "core/Status.h"

namespace zolmara {

/// The status line of a run, gone on every way out. The run may show other texts in it.
class StatusLine {
public:
    StatusLine() = default;
    explicit StatusLine(const std::string& text) { TheStatus().ShowCalcMsg(text); }
    ~StatusLine() { TheStatus().HideCalcMsg(); }
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;
};

}  // namespace zolmara
