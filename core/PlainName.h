#pragma once

// Names of files that are made from what a Cost Report File holds.

#include <string>
#include <string_view>

namespace zolmara {

/// A text as the name of a file: what would lead into another folder, or what no name can hold,
/// becomes "_", and so does the first of two points in front. The text of a file that a stranger
/// sent decides what a file of the user's is called, never where it goes.
std::string PlainFileName(std::string_view text);

}  // namespace zolmara
