#pragma once

// An error in words for the person who works on the statement. What the libraries below say of a
// constraint, a vector or a stack helps nobody who keys amounts.

#include <exception>
#include <string>

namespace zolmara {

/// The error's own text where this program wrote it. Words of the database or of a library become
/// a sentence on the file, the worksheet and the column; the text of a statement is left out.
std::string PlainWords(const std::exception& error);

}  // namespace zolmara
