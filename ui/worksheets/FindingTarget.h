#pragma once

// What a finding speaks of, for the windows that open it.

#include "forms/FindingTarget.h"

namespace zolmara::ui {

using zolmara::FindingTarget;
using zolmara::TargetOf;

}  // namespace zolmara::ui
