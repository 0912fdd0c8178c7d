#pragma once

// A new Cost Report File that does not stay empty.

#include <functional>
#include <optional>
#include <string>

#include "worksheets/NewCrf.h"

namespace zolmara {

/// CreateCrf, with a last step in the batch that makes the tables: what it writes is in the file
/// from its first moment, and when it fails there is no file.
bool CreateFurnishedCrf(const std::string& path, const NewCrfFields& fields,
                        const std::function<void()>& furnish);

/// The dialog in which a new file is named; nothing on a cancel.
std::optional<std::string> ChooseNewCrf();

}  // namespace zolmara
