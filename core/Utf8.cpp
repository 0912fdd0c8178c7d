#include "core/Utf8.h"

namespace zolmara {
namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;

/// What the first byte of a character says: its own bits, how many bytes follow, and the least
/// character that needs so many.
struct Lead {
    char32_t Bits;
    std::size_t Following;
    char32_t Least;
};

Lead LeadOf(unsigned char byte) {
    if (byte < 0x80) return {byte, 0, 0};
    if (byte >= 0xC0 && byte < 0xE0) return {byte & 0x1Fu, 1, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {byte & 0x0Fu, 2, 0x800};
    if (byte >= 0xF0 && byte < 0xF8) return {byte & 0x07u, 3, 0x10000};
    return {kBadByte, 0, 0};
}

bool IsCharacter(char32_t value, char32_t least) {
    return value >= least && value <= kLastCharacter && (value < 0xD800 || value > 0xDFFF);
}

char Byte(char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); }

}  // namespace

char32_t DecodeUtf8(std::string_view text, std::size_t& at) {
    const Lead lead = LeadOf(static_cast<unsigned char>(text[at++]));
    if (lead.Bits == kBadByte || at + lead.Following > text.size()) return kBadByte;
    char32_t character = lead.Bits;
    for (std::size_t i = 0; i < lead.Following; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0u) != 0x80) return kBadByte;
        character = (character << 6) | (byte & 0x3Fu);
    }
    if (!IsCharacter(character, lead.Least)) return kBadByte;
    at += lead.Following;
    return character;
}

void AppendUtf8(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += Byte(character);
        return;
    }
    if (character < 0x800) {
        text += Byte(0xC0 | (character >> 6));
    } else {
        if (character < 0x10000) {
            text += Byte(0xE0 | (character >> 12));
        } else {
            text += Byte(0xF0 | (character >> 18));
            text += Byte(0x80 | ((character >> 12) & 0x3F));
        }
        text += Byte(0x80 | ((character >> 6) & 0x3F));
    }
    text += Byte(0x80 | (character & 0x3F));
}

}  // namespace zolmara
