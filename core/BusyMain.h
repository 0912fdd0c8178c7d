#pragma once

#include "core/Status.h"
#include "core/Windows.h"

namespace zolmara {

/// The main window takes nothing for the length of a step, and comes back whatever ends it.
class BusyMain {
public:
    BusyMain() {
        TheStatus().SetPointer(Pointer::Hourglass);
        TheWindows().EnableMain(false);
    }
    ~BusyMain() {
        TheStatus().SetPointer(Pointer::Normal);
        TheWindows().EnableMain(true);
    }
    BusyMain(const BusyMain&) = delete;
    BusyMain& operator=(const BusyMain&) = delete;
};

}  // namespace zolmara
