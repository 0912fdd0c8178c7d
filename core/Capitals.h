#pragma once

// Capital letters in files for the outside.

#include <string>
#include <string_view>

namespace zolmara {

/// Upper case as code page 1252 has it: a letter whose capital the code page lacks stays.
std::string UCaseIn1252(std::string_view text);

}  // namespace zolmara
