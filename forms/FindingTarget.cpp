#include "forms/FindingTarget.h"

// With the sanitizers g++ 12 takes what a pattern keeps inside for uninitialised (bug 105562).
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"

#include <regex>
#include <vector>

#include "core/Globals.h"
#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr auto kAnyCase = std::regex::ECMAScript | std::regex::icase;

/// "A-8-1 Part I", "A81p1", "B-1  Part-3", "E": letter, numbers, part.
const std::regex& WorksheetName() {
    static const std::regex pattern(
        R"(^(?:Worksheet |Schedule )?([A-GS])-?(\d?)-?(\d?)(?:p(\d)|,?\s*Part[ -]*(III|II|I|\d))?(?![A-Za-z0-9]))",
        kAnyCase);
    return pattern;
}

const std::regex& LineNumber() {
    static const std::regex pattern(R"(\blines?(?: number)? (\d+(?:\.\d+)?))", kAnyCase);
    return pattern;
}

/// "column 4", "col. 4", "column Col_4", "column CC_401"
const std::regex& ColumnName() {
    static const std::regex pattern(
        R"(\bcol(?:umn|\.)?s?(?: number)? (\d+(?:\.\d+)?|(?:Col|CC)_\d+))", kAnyCase);
    return pattern;
}

/// "Worksheet A: LineNum (4.02) cost center ..."
const std::regex& KeyInBrackets() {
    static const std::regex pattern(R"(: (?:LineNum|SeqNum) \((\d+(?:\.\d+)?)\))");
    return pattern;
}

/// What the first group of a pattern takes; empty where it does not match.
std::string FirstGroup(const std::string& text, const std::regex& pattern) {
    std::smatch match;
    return std::regex_search(text, match, pattern) ? match.str(1) : std::string();
}

std::string PartNumber(const std::string& part) {
    return FirstLetter(Variant(part)) == "I" ? std::to_string(part.size()) : part;
}

/// A worksheet in parts may be named without one: its totals stand in the third.
std::string ItemNamed(const std::string& bare, const std::string& part,
                      std::optional<Currency> line) {
    std::vector<std::string> candidates;
    if (!part.empty()) candidates.push_back(bare + "p" + part);
    candidates.push_back(bare);
    const bool total = line && *line >= kGrandTotal;
    candidates.push_back(bare + (total ? "p3" : "p1"));
    for (const std::string& item : candidates)
        if (const Worksheet* sheet = FindWorksheet(item)) return std::string(sheet->Item);
    return {};
}

std::optional<Currency> LineIn(const std::string& message) {
    for (const std::regex* pattern : {&KeyInBrackets(), &LineNumber()}) {
        const std::string line = FirstGroup(message, *pattern);
        if (!line.empty() && Currency::Holds(Val(line))) return Currency(Val(line));
    }
    return std::nullopt;
}

}  // namespace

std::optional<FindingTarget> TargetOf(const std::string& message) {
    std::smatch name;
    if (!std::regex_search(message, name, WorksheetName())) return std::nullopt;
    const std::string bare = UCase(name.str(1)) + name.str(2) + name.str(3);
    const std::string part = PartNumber(name.str(4).empty() ? name.str(5) : name.str(4));
    const std::optional<Currency> line = LineIn(message);
    const std::string item = ItemNamed(bare, part, line);
    if (item.empty()) return std::nullopt;
    return FindingTarget{item, line, FirstGroup(message, ColumnName())};
}

}  // namespace zolmara
