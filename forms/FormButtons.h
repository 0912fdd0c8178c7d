#pragma once

// The buttons of a window's strip picButtons.

#include <vector>

#include "forms/FormTable.h"

namespace zolmara {

/// The buttons in their order, as they stand while the form opens. `form` has its caption.
std::vector<FormButton> FormButtons(const WorksheetForm& form, const FormSpec& spec);

}  // namespace zolmara
