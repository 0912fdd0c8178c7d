#include "core/CsvText.h"

namespace zolmara {

namespace {

constexpr char kMark = '\'';

bool BeginsFormula(std::string_view text) {
    constexpr std::string_view kSigns = "=+-@\t\r\n";
    return !text.empty() && kSigns.find(text.front()) != std::string_view::npos;
}

std::string_view BehindMarks(std::string_view text) {
    while (!text.empty() && text.front() == kMark) text.remove_prefix(1);
    return text;
}

}  // namespace

std::string CsvMarked(std::string_view text) {
    const bool marked = BeginsFormula(BehindMarks(text));
    return (marked ? std::string(1, kMark) : std::string()) + std::string(text);
}

std::string_view WithoutCsvMark(std::string_view text) {
    const bool marked = text.starts_with(kMark) && BeginsFormula(BehindMarks(text));
    return marked ? text.substr(1) : text;
}

std::string CsvQuoted(std::string_view text) {
    if (text.find_first_of(",;\"\t\r\n ") == std::string_view::npos) return std::string(text);
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"') quoted += '"';
        quoted += letter;
    }
    return quoted + '"';
}

}  // namespace zolmara
