#pragma once

#include "core/Status.h"

namespace zolmara {

/// The hourglass for the length of a step, however it ends.
class BusyPointer {
public:
    BusyPointer() { TheStatus().SetPointer(Pointer::Hourglass); }
    ~BusyPointer() { TheStatus().SetPointer(Pointer::Normal); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace zolmara
