#pragma once

// A step that has its whole effect or none, within a batch or alone.

#include <functional>

#include "store/Dao.h"

namespace zolmara {

/// Runs a step. When it fails, what it has written is taken back and the exception goes on to the
/// caller; what stood before it in the batch stays.
void RunWholeStep(Database& db, const std::function<void()>& work);

}  // namespace zolmara
