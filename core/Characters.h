#pragma once

// Characters of codes and numbers, which are ASCII whatever the language of the machine.

namespace zolmara {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
constexpr bool IsLetterOrDigit(char c) { return IsDigit(c) || IsLetter(c); }

}  // namespace zolmara
