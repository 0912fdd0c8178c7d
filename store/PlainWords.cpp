#include "store/PlainWords.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <typeinfo>

#include "core/Globals.h"
#include "store/Dao.h"

namespace zolmara {
namespace {

/// What the database says of a file, and what that means.
struct Saying {
    std::string_view Theirs;
    std::string_view Ours;
};
constexpr std::array<Saying, 9> kSayings = {{
    {"database disk image is malformed", "the file is damaged"},
    {"database or disk is full", "there is no room on the disk"},
    {"attempt to write a readonly database", "the file, or its folder, takes no writes"},
    {"unable to open database file", "the file cannot be opened"},
    {"disk I/O error", "the disk could not be read or written"},
    {"database is locked", "another program is using the file"},
    {"database table is locked", "the table is in use"},
    {"file is not a database", "is not a Cost Report File"},
    {"out of memory", "there is not enough memory"},
}};

/// The limits of the database on a statement, which the shape of a file can pass.
constexpr std::array<std::string_view, 8> kLimits = {
    "parser stack overflow",  "Expression tree is too large",
    "too many SQL variables", "too many columns",
    "too many terms",         "string or blob too big",
    "too many arguments",     "at most 64 tables"};

constexpr std::string_view kTooLarge = "there are more lines or columns than one step can take";

bool Has(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// What stands behind a mark, up to one of the characters given; empty without the mark.
std::string_view Behind(std::string_view text, std::string_view mark, std::string_view until) {
    const auto at = text.find(mark);
    if (at == std::string_view::npos) return {};
    const auto rest = text.substr(at + mark.size());
    return rest.substr(0, rest.find_first_of(until));
}

/// The table ahead of SQLite's words, where a step named one.
std::string TableAhead(std::string_view text, std::string_view words) {
    const auto at = text.find(words);
    const auto ahead = text.substr(0, at < 2 ? 0 : at - 2);
    return Has(ahead, " ") ? std::string() : std::string(ahead);
}

/// "A8.LineNum" as a worksheet and its column.
std::string Place(std::string_view field) {
    const auto point = field.find('.');
    if (point == std::string_view::npos) return std::string(field);
    return fmt::format("{} {}", field.substr(0, point), field.substr(point + 1));
}

std::string OfUnique(std::string_view text) {
    const auto field = Behind(text, "UNIQUE constraint failed: ", ",");
    const auto table = field.substr(0, field.find('.'));
    if (Has(field, ".LineNum") || Has(field, ".SeqNum"))
        return fmt::format("{} has that line already", table);
    return fmt::format("{} has an entry of that name already", table);
}

std::string OfCheck(std::string_view text) {
    const auto words = std::string_view("CHECK constraint failed: ");
    const auto table = TableAhead(text, words);
    auto field = Behind(text, words, " ");
    if (const auto quoted = Behind(field, "\"", "\""); !quoted.empty()) field = quoted;
    return fmt::format("{}{}{} cannot hold a value", table, table.empty() ? "" : " ", field);
}

/// The table that a statement reads, for a text that ends in the statement.
std::string TableOfStatement(std::string_view text) {
    const std::string upper = UCase(text);
    const auto at = upper.find(" FROM ");
    if (upper.size() != text.size() || at == std::string::npos)
        return std::string(text.substr(0, text.find(' ')));
    const auto name = text.substr(at + 6);
    const auto trimmed = name.substr(name.find_first_not_of("[ ") == 0 ? 0 : 1);
    return std::string(trimmed.substr(0, trimmed.find_first_of(" ];,")));
}

std::string OfConstraint(std::string_view text) {
    if (Has(text, "UNIQUE constraint failed: ")) return OfUnique(text);
    if (Has(text, "CHECK constraint failed: ")) return OfCheck(text);
    if (const auto field = Behind(text, "NOT NULL constraint failed: ", ","); !field.empty())
        return Place(field) + " cannot be empty";
    return {};
}

std::string OfMissing(std::string_view text) {
    if (const auto table = Behind(text, "no such table: ", " "); !table.empty())
        return fmt::format("the table {} is missing", table);
    if (const auto column = Behind(text, "no such column: ", " "); !column.empty()) {
        const auto statement = Behind(text, " in ", "");
        return fmt::format("the column {} is missing{}", Place(column),
                           statement.empty() ? "" : " in " + TableOfStatement(statement));
    }
    for (const std::string_view mark : {"No current record: ", "Record is deleted: "})
        if (const auto source = Behind(text, mark, ""); !source.empty())
            return fmt::format("a line of {} is missing", TableOfStatement(source));
    return {};
}

std::string OfLimit(std::string_view text) {
    for (const auto limit : kLimits) {
        if (!Has(text, limit)) continue;
        const auto table = TableAhead(text, limit);
        return fmt::format("{}{}{}", table, table.empty() ? "" : ": ", kTooLarge);
    }
    return {};
}

/// A statement that stands in a text; nobody reads one.
std::string WithoutStatement(std::string text) {
    for (const std::string_view verb : {": SELECT ", ": UPDATE ", ": INSERT ", ": DELETE "}) {
        const std::string upper = UCase(text);
        if (const auto at = upper.find(verb); at != std::string::npos && at <= text.size())
            text.resize(at);
    }
    return text;
}

std::string OfFile(std::string text) {
    for (const auto& saying : kSayings) text = Replace(text, saying.Theirs, saying.Ours);
    return text;
}

std::string OfStore(const StoreError& error) {
    const std::string text = error.what();
    if (error.IsFileError()) return OfFile(text);
    for (const auto translate : {OfConstraint, OfMissing, OfLimit})
        if (auto words = translate(text); !words.empty()) return words;
    return WithoutStatement(OfFile(text));
}

std::string OfFileSystem(const std::filesystem::filesystem_error& error) {
    const auto reason = error.code().message();
    return error.path1().empty() ? reason : fmt::format("{}: {}", error.path1().string(), reason);
}

}  // namespace

std::string PlainWords(const std::exception& error) {
    if (const auto* store = dynamic_cast<const StoreError*>(&error)) return OfStore(*store);
    if (dynamic_cast<const std::bad_alloc*>(&error)) return "there is not enough memory";
    if (const auto* files = dynamic_cast<const std::filesystem::filesystem_error*>(&error))
        return OfFileSystem(*files);
    if (const auto* system = dynamic_cast<const std::system_error*>(&error))
        return system->code().message();
    // What this program throws itself is worded for the person.
    if (typeid(error) == typeid(std::runtime_error)) return error.what();
    return "the lines or columns are not those of the form";
}

}  // namespace zolmara
