#pragma once

// One character of UTF-8 text at a time.

#include <cstddef>
#include <string>
#include <string_view>

namespace zolmara {

/// What DecodeUtf8 gives for a byte that begins no character.
inline constexpr char32_t kBadByte = 0xFFFFFFFF;

/// The character at a position, which moves behind it; behind one byte when that is no UTF-8
/// (overlong forms, surrogates and numbers above U+10FFFF are none).
char32_t DecodeUtf8(std::string_view text, std::size_t& at);

void AppendUtf8(std::string& text, char32_t character);

}  // namespace zolmara
