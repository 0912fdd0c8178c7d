#pragma once

// How a long step shows that it is at work.

#include <string>

namespace zolmara {

enum class Pointer { Normal, Hourglass };

class Status {
public:
    virtual ~Status() = default;

    virtual void SetPointer(Pointer) {}
    /// The status line of the main window, txtCalcMsg.
    virtual void ShowCalcMsg(const std::string& /*text*/) {}
    virtual void HideCalcMsg() {}
    /// How far a long step is, from 0 to 1; for a bar beside the status line.
    virtual void ShowProgress(double /*part*/) {}
    /// Lets the interface breathe.
    virtual void DoEvents() {}
};

Status& TheStatus();

}  // namespace zolmara
