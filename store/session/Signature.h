#pragma once

#include <string>

namespace zolmara {

/// Who signed the open CRF, and when: "Ann Lee, Controller, 3/31/2024". Empty where nobody has.
std::string SignatureText();

}  // namespace zolmara
