#pragma once

// A piece of work in a process of its own, so that what it takes is known for it alone.

#include <functional>

namespace zolmara::bench {

struct Usage {
    double Cpu = 0;      ///< seconds, of the program and of the system for it
    double Elapsed = 0;  ///< seconds
    double PeakMb = 0;   ///< resident memory at its highest
    bool Done = false;   ///< false when it failed
};

Usage InChild(const std::function<void()>& work);

}  // namespace zolmara::bench
