// Text: trimming, case, parts, and code page 1252.

#include <locale.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cwctype>

#include "core/Capitals.h"
#include "core/Globals.h"
#include "core/Utf8.h"

namespace zolmara {
namespace {

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

bool AllAscii(std::string_view text) { return std::all_of(text.begin(), text.end(), IsAscii); }

char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// The rules of case of all scripts, whatever locale the process runs in.
locale_t CaseRules() {
    static const locale_t rules = [] {
        const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return unicode ? unicode : newlocale(LC_CTYPE_MASK, "C", nullptr);
    }();
    return rules;
}

char32_t UpperOf(char32_t c) {
    return static_cast<char32_t>(towupper_l(static_cast<wint_t>(c), CaseRules()));
}
char32_t LowerOf(char32_t c) {
    return static_cast<char32_t>(towlower_l(static_cast<wint_t>(c), CaseRules()));
}

std::string MapCase(std::string_view text, char (*ascii)(char), char32_t (*other)(char32_t)) {
    std::string result(text);
    if (AllAscii(text)) {
        std::transform(text.begin(), text.end(), result.begin(), ascii);
        return result;
    }
    result.clear();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t character = DecodeUtf8(text, at);
        if (character == kBadByte) {
            result += text[start];
        } else {
            AppendUtf8(result, other(character));
        }
    }
    return result;
}

/// The next character without its case: forms of one letter that share a capital are the same,
/// so that texts are equal wherever their upper cases are. A byte that is no character sorts behind
/// all of them.
char32_t NextFolded(std::string_view text, std::size_t& at) {
    if (IsAscii(text[at])) return static_cast<unsigned char>(LowerAscii(text[at++]));
    const auto byte = static_cast<unsigned char>(text[at]);
    const char32_t character = DecodeUtf8(text, at);
    return character == kBadByte ? 0x110000u + byte : LowerOf(UpperOf(character));
}

bool StartsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80; }

/// The byte at which the character of this number (from 0) begins; the size when there is none.
std::size_t ByteOf(std::string_view text, std::size_t character) {
    std::size_t seen = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (StartsCharacter(text[at]) && seen++ == character) return at;
    }
    return text.size();
}

/// What code page 1252 has at 0x80 to 0x9F. The five bytes it leaves undefined stand for the
/// control characters of the same code.
constexpr std::array<char32_t, 32> kPage1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOf1252(char32_t character) {
    const bool same = character < 0x80 || (character >= 0xA0 && character <= 0xFF);
    if (same) return static_cast<char>(static_cast<unsigned char>(character));
    const auto* found = std::find(kPage1252.begin(), kPage1252.end(), character);
    if (found == kPage1252.end()) return '?';
    return static_cast<char>(static_cast<unsigned char>(0x80 + (found - kPage1252.begin())));
}

char32_t UpperIn1252(char32_t c) {
    const char32_t upper = UpperOf(c);
    return ByteOf1252(upper) == '?' ? c : upper;
}

}  // namespace

std::string_view LTrim(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

std::string_view RTrim(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::string UCase(std::string_view text) { return MapCase(text, UpperAscii, UpperOf); }
std::string UCaseIn1252(std::string_view text) { return MapCase(text, UpperAscii, UpperIn1252); }
std::string LCase(std::string_view text) { return MapCase(text, LowerAscii, LowerOf); }

int CompareText(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    // What is the same byte by byte needs no look at its case, up to a letter of more than one.
    const std::size_t least = std::min(a.size(), b.size());
    while (i < least && a[i] == b[i] && IsAscii(a[i])) ++i;
    j = i;
    while (i < a.size() && j < b.size()) {
        const char32_t left = NextFolded(a, i);
        const char32_t right = NextFolded(b, j);
        if (left != right) return left < right ? -1 : 1;
    }
    if (i < a.size()) return 1;
    return j < b.size() ? -1 : 0;
}

std::size_t TextLength(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

std::string_view LeftText(std::string_view text, std::size_t count) {
    return text.substr(0, ByteOf(text, count));
}

std::string_view MidText(std::string_view text, std::size_t start, std::size_t count) {
    text.remove_prefix(ByteOf(text, start > 0 ? start - 1 : 0));
    return LeftText(text, count);
}

std::string Replace(std::string_view text, std::string_view what, std::string_view with) {
    if (what.empty()) return std::string(text);
    std::string result;
    for (std::size_t found = text.find(what); found != std::string_view::npos;
         found = text.find(what)) {
        result.append(text.substr(0, found)).append(with);
        text.remove_prefix(found + what.size());
    }
    return result.append(text);
}

bool IsValidUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        if (DecodeUtf8(text, at) == kBadByte) return false;
    }
    return true;
}

std::string FromCodePage1252(std::string_view bytes) {
    if (AllAscii(bytes)) return std::string(bytes);
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const bool special = byte >= 0x80 && byte < 0xA0;
        AppendUtf8(text, special ? kPage1252[byte - 0x80u] : char32_t{byte});
    }
    return text;
}

std::string ToCodePage1252(std::string_view text) {
    // ASCII, which most texts are to their end, is the same in both.
    const auto isOther = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
    std::string bytes(text.begin(), std::find_if(text.begin(), text.end(), isOther));
    for (std::size_t at = bytes.size(); at < text.size();) {
        const char32_t character = DecodeUtf8(text, at);
        bytes += character == kBadByte ? '?' : ByteOf1252(character);
    }
    return bytes;
}

}  // namespace zolmara
