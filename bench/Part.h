#pragma once

// A part of a run in a process of its own, which can neither hang the run nor leave a process
// behind.

#include <functional>
#include <stdexcept>

namespace zolmara::bench {

/// The run is to end: somebody has interrupted it.
struct Interrupted : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Does the work in a process of its own. Raises with the work's own words when it fails, and
/// when it takes more than so many seconds. However it ends, with it ends what it has started and
/// what that has started; where the run is interrupted too, with Interrupted.
void InPart(const std::function<void()>& work, int seconds);

}  // namespace zolmara::bench
