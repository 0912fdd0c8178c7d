#pragma once

// The columns of a window, from the fields of its table.

#include <string>
#include <vector>

#include "forms/FormTable.h"

namespace zolmara {

/// All fields of the table in their order, those that the form does not use hidden.
std::vector<FormColumn> FormColumns(const FormSpec& spec, const std::string& table, FormMode mode);

}  // namespace zolmara
