// The fields of an import line and the checks that need no other line.

#include <fmt/format.h>

#include <cmath>
#include <optional>
#include <tuple>

#include "core/Globals.h"
#include "core/LeadingNumber.h"
#include "import/Staging.h"

namespace zolmara {

namespace {

constexpr std::string_view kNoSheet =
    "The Worksheet specification is missing from ASCII Import line: ";
constexpr std::string_view kNoRow = "The Row specification is missing from ASCII Import line: ";
constexpr std::string_view kNoColumn =
    "The Column specification is missing from ASCII Import line: ";
constexpr std::string_view kNoContents = "The Contents value is missing from ASCII Import line: ";
constexpr std::string_view kBadContents =
    "The Contents value has invalid characters, no commas or '$' from ASCII Import line: ";
constexpr std::string_view kBadColumn = "The column number is illegal for: ";
constexpr std::string_view kBadRow = "The row number is illegal for: ";
constexpr std::string_view kNameTooLong =
    "The WorkSheet name is longer than 20 characters in ASCII Import line: ";
constexpr std::string_view kLineTooLong =
    "The line is longer than 65536 bytes in ASCII Import line: ";
constexpr std::string_view kNoText = "There are characters that are no text in ASCII Import line: ";

constexpr std::size_t kMaxName = 20;
constexpr std::size_t kMaxContents = 255;
constexpr Currency kMaxColumn = Currency::FromWhole(110);

/// Takes the text before the next TAB off the rest; nothing when no TAB follows.
std::optional<std::string_view> NextField(std::string_view& rest) {
    const auto tab = rest.find('\t');
    if (tab == std::string_view::npos) return std::nullopt;
    const auto field = rest.substr(0, tab);
    rest = LTrim(rest.substr(tab + 1));
    return field;
}

std::optional<Currency> FixedPoint(std::string_view text) {
    const auto value = LeadingNumber(text);
    return value && Currency::Holds(*value) ? std::optional(Currency(*value)) : std::nullopt;
}

/// Quoted contents end at the next quote and may hold anything, others at the next TAB.
std::string_view TakeContents(ImportLine& line, std::string_view rest) {
    if (rest.starts_with('"')) {
        const auto text = rest.substr(1);
        const auto end = text.find('"');
        line.Contents = text.substr(0, end);
        line.IsWhole = end != std::string_view::npos;
        return {};
    }
    const auto end = rest.find('\t');
    line.Contents = rest.substr(0, end);
    line.IsWhole = end != std::string_view::npos;
    return line.Contents.find_first_of("$,") == std::string::npos ? std::string_view()
                                                                  : kBadContents;
}

std::string_view TakeCell(ImportLine& line, std::string_view columnText, std::string_view rest) {
    const auto column = FixedPoint(columnText);
    if (!column) return kBadColumn;
    line.Col = *column;
    line.Echo =
        fmt::format("{}, {}, {}", line.WorkSheet, NumberText(line.Row), NumberText(line.Col));
    if (const auto complaint = TakeContents(line, rest); !complaint.empty()) return complaint;
    if (!Between(line.Col, Currency(), kMaxColumn)) return kBadColumn;
    return TextLength(line.Contents) > kMaxContents ? kContentsTooLong : std::string_view();
}

/// Reads the fields of a trimmed line. Gives the complaint, empty when all is well.
std::string_view TakeFields(ImportLine& line, std::string_view rest) {
    if (rest.find('\0') != std::string_view::npos) return kNoText;
    const auto sheet = NextField(rest);
    if (!sheet) return kNoRow;
    line.WorkSheet = Trim(*sheet);
    const auto rowText = NextField(rest);
    if (!rowText || line.WorkSheet.empty()) return kNoColumn;
    if (TextLength(line.WorkSheet) > kMaxName) return kNameTooLong;
    const auto row = FixedPoint(*rowText);
    if (!row) return kBadRow;
    line.Row = *row;
    const auto columnText = NextField(rest);
    return columnText ? TakeCell(line, *columnText, rest) : kNoContents;
}

bool HoldsNoText(std::string_view field) {
    constexpr std::string_view kNone("\0\t\r\n", 4);
    return field.find_first_of(kNone) != std::string_view::npos;
}

std::string_view CheckSheet(ImportLine& line, std::string_view field) {
    if (HoldsNoText(field)) return kNoText;
    line.WorkSheet = Trim(field);
    if (line.WorkSheet.empty()) return kNoSheet;
    return TextLength(line.WorkSheet) > kMaxName ? kNameTooLong : std::string_view();
}

std::string_view CheckRow(ImportLine& line, std::string_view field) {
    if (Trim(field).empty()) return kNoRow;
    const auto row = FixedPoint(Trim(field));
    line.Row = row.value_or(Currency());
    return row ? std::string_view() : kBadRow;
}

std::string_view CheckColumn(ImportLine& line, std::string_view field) {
    if (Trim(field).empty()) return kNoColumn;
    const auto column = FixedPoint(Trim(field));
    line.Col = column.value_or(Currency());
    const bool good = column && Between(*column, Currency(), kMaxColumn);
    return good ? std::string_view() : kBadColumn;
}

std::string_view CheckContents(ImportLine& line, std::string_view field) {
    if (HoldsNoText(field)) return kNoText;
    line.Contents = field;
    return TextLength(field) > kMaxContents ? kContentsTooLong : std::string_view();
}

constexpr std::string_view kWholeNumberSheets[] = {"E1p", "D1p", "C1p", "B1p", "Bp"};

}  // namespace

ImportLine ParseImportLine(std::string_view text, bool cut) {
    ImportLine line;
    const auto trimmed = Trim(text);
    line.Skip = !cut && (trimmed.empty() || trimmed == "#VALUE!");
    line.Echo = text;
    if (line.Skip) return line;
    line.Complaint = TakeFields(line, trimmed);
    if (cut && !line.IsWhole) {
        line.Echo = text;
        line.Complaint = kLineTooLong;
    }
    return line;
}

ImportLine CheckImportLine(const ImportFields& fields, ImportField& wrong) {
    using Check = std::string_view (*)(ImportLine&, std::string_view);
    const std::tuple<ImportField, Check, std::string_view> checks[] = {
        {ImportField::WorkSheet, CheckSheet, fields.WorkSheet},
        {ImportField::Row, CheckRow, fields.Row},
        {ImportField::Col, CheckColumn, fields.Col},
        {ImportField::Contents, CheckContents, fields.Contents}};
    ImportLine line;
    line.IsWhole = true;
    for (const auto& [field, check, text] : checks) {
        if (!line.Complaint.empty()) break;
        line.Complaint = check(line, text);
        wrong = field;
    }
    line.Echo =
        fmt::format("{}, {}, {}", Trim(fields.WorkSheet), Trim(fields.Row), Trim(fields.Col));
    return line;
}

bool MustBeWhole(const ImportLine& line) {
    const auto sheet = std::string_view(line.WorkSheet).substr(0, line.WorkSheet.find('t'));
    for (auto prefix : kWholeNumberSheets) {
        if (!sheet.starts_with(prefix)) continue;
        const auto value = ParseNumber(line.Contents);
        return value && *value != std::trunc(*value);
    }
    return false;
}

std::string ReadMessage(std::string_view text, std::string_view echo) {
    auto message = fmt::format("{}\n\r{}", text, echo);
    for (auto& c : message)
        if (c == '\0') c = ' ';
    return message;
}

}  // namespace zolmara
