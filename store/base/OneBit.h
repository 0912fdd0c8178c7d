#pragma once

#include <bit>
#include <string_view>

namespace zolmara {

/// True for texts of one length that differ by one bit, which is what a failing disk or memory
/// changes.
inline bool DiffersByOneBit(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    int bits = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        bits += std::popcount(static_cast<unsigned char>(a[i] ^ b[i]));
    return bits == 1;
}

}  // namespace zolmara
