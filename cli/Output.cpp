#include "cli/Output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "cli/Json.h"
#include "core/Globals.h"
#include "core/Utf8.h"

namespace zolmara::cli {

namespace {

using Json = JsonDoc;

OutputFormat gFormat = OutputFormat::Text;

void Put(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

/// Dates are text in one form for programs; people read them in "Short Date".
std::string PlainText(const Variant& value) {
    return value.IsDate() ? StoreDateText(value.AsDate()) : Text(value);
}

Json JsonNumber(double value) {
    constexpr double kWholeLimit = 9e15;
    if (std::isfinite(value) && std::trunc(value) == value && std::abs(value) < kWholeLimit)
        return static_cast<std::int64_t>(value);
    return value;
}

Json JsonObject(const Listing& listing, const std::vector<Variant>& row) {
    Json object = Json::object();
    for (std::size_t i = 0; i < row.size(); ++i) object[listing.Columns[i]] = JsonValue(row[i]);
    return object;
}

std::string Enclosed(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    return "\"" + Replace(text, "\"", "\"\"") + "\"";
}

/// A field by RFC 4180. A file or a program gets every character as it is stored; on a terminal
/// none may steer it, and a line break ends a row only.
std::string CsvField(const std::string& text) {
    static const bool toPerson = isatty(STDOUT_FILENO) != 0;
    return Enclosed(toPerson ? OneLine(text) : text);
}

void PutCsv(const Listing& listing) {
    auto putRow = [](const auto& cells, auto textOf) {
        std::string line;
        for (const auto& cell : cells) line += CsvField(textOf(cell)) + ",";
        if (!line.empty()) line.back() = '\n';
        Put(line);
    };
    putRow(listing.Columns, [](const std::string& name) { return name; });
    for (const auto& row : listing.Rows) putRow(row, PlainText);
}

void PutJsonArray(const Listing& listing) {
    Json array = Json::array();
    for (const auto& row : listing.Rows) array.push_back(JsonObject(listing, row));
    PutJson(array);
}

/// CSV and JSON have one form for every listing. False when the format is text.
bool PutForPrograms(const Listing& listing) {
    if (gFormat == OutputFormat::Csv) PutCsv(listing);
    if (gFormat == OutputFormat::Json) PutJsonArray(listing);
    return gFormat != OutputFormat::Text;
}

/// JSON must escape the control characters below the blank. Those from 0x7F on steer a terminal as
/// well, and mean the same escaped; they stand inside of strings alone.
std::string WithControlsEscaped(const std::string& json) {
    std::string escaped;
    for (std::size_t at = 0; at < json.size();) {
        const std::size_t start = at;
        const char32_t character = DecodeUtf8(json, at);
        if (character >= 0x7F && character < 0xA0)
            escaped += fmt::format("\\u{:04x}", static_cast<unsigned>(character));
        else
            escaped.append(json, start, at - start);
    }
    return escaped;
}

struct ColumnShape {
    std::size_t Width = 0;
    bool Right = true;  ///< only numbers in it
};

std::vector<ColumnShape> ShapesOf(const Listing& listing) {
    std::vector<ColumnShape> shapes(listing.Columns.size());
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        shapes[i].Width = TextLength(listing.Columns[i]);
        for (const auto& row : listing.Rows) {
            shapes[i].Width = std::max(shapes[i].Width, TextLength(OneLine(Text(row[i]))));
            if (!row[i].IsNull() && !row[i].IsNumber()) shapes[i].Right = false;
        }
    }
    return shapes;
}

std::string Padded(const std::string& text, const ColumnShape& shape) {
    const std::string padding(shape.Width - std::min(shape.Width, TextLength(text)), ' ');
    return shape.Right ? padding + text : text + padding;
}

void PutTextRow(const std::vector<std::string>& cells, const std::vector<ColumnShape>& shapes) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) line += "  ";
        line += Padded(cells[i], shapes[i]);
    }
    Put(std::string(RTrim(line)) + "\n");
}

}  // namespace

JsonDoc JsonValue(const Variant& value) {
    if (value.IsNull()) return nullptr;
    if (value.IsNumber()) return JsonNumber(value.Number());
    return PlainText(value);
}

void PutJson(const JsonDoc& json) {
    Put(WithControlsEscaped(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n");
}

OutputFormat TheFormat() { return gFormat; }
void SetFormat(OutputFormat format) { gFormat = format; }

Listing ListingOf(Recordset& rows) {
    Listing listing;
    const int fields = rows.FieldCount();
    for (int i = 0; i < fields; ++i) listing.Columns.push_back(rows.FieldName(i));
    for (; !rows.Eof(); rows.MoveNext()) {
        std::vector<Variant> row;
        row.reserve(static_cast<std::size_t>(fields));
        for (int i = 0; i < fields; ++i) row.push_back(rows[i]);
        listing.Rows.push_back(std::move(row));
    }
    return listing;
}

void PrintListing(const Listing& listing) {
    if (PutForPrograms(listing)) return;
    const auto shapes = ShapesOf(listing);
    PutTextRow(listing.Columns, shapes);
    for (const auto& row : listing.Rows) {
        std::vector<std::string> cells;
        cells.reserve(row.size());
        for (const Variant& value : row) cells.push_back(OneLine(Text(value)));
        PutTextRow(cells, shapes);
    }
}

void PrintRecord(const Listing& record) {
    const auto& row = record.Rows.front();
    if (gFormat == OutputFormat::Json) return PutJson(JsonObject(record, row));
    if (gFormat == OutputFormat::Csv) return PutCsv(record);
    std::size_t width = 0;
    for (const auto& name : record.Columns) width = std::max(width, TextLength(name));
    for (std::size_t i = 0; i < row.size(); ++i)
        Put(std::string(RTrim(fmt::format("{:<{}}  {}", record.Columns[i] + ":", width + 1,
                                          OneLine(Text(row[i]))))) +
            "\n");
}

void PrintMessages(const Listing& messages) {
    if (PutForPrograms(messages)) return;
    for (const auto& row : messages.Rows) {
        std::string line;
        for (const Variant& value : row) line += OneLine(Text(value)) + "\t";
        line.back() = '\n';
        Put(line);
    }
}

void PrintValue(const Variant& value) {
    if (gFormat == OutputFormat::Json) return PutJson(JsonValue(value));
    Put((gFormat == OutputFormat::Csv ? CsvField(PlainText(value)) : ForPeople(Text(value))) +
        "\n");
}

void PrintLine(std::string_view line) {
    if (gFormat == OutputFormat::Text) Put(ForPeople(line) + "\n");
}

void PutError(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

std::string ForPeople(std::string_view text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t character = DecodeUtf8(text, at);
        const bool isLayout = character == U'\n' || character == U'\t';
        const bool isControl = character < U' ' || (character >= 0x7F && character < 0xA0);
        if (character == kBadByte || (isControl && !isLayout))
            shown += '?';
        else
            shown += text.substr(start, at - start);
    }
    return shown;
}

std::string OneLine(std::string_view text) {
    auto isBreak = [](char c) { return c == '\r' || c == '\n'; };
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isBreak(text[i])) {
            line += text[i];
            continue;
        }
        line += ' ';
        if (i + 1 < text.size() && isBreak(text[i + 1]) && text[i + 1] != text[i]) ++i;
    }
    return ForPeople(line);
}

}  // namespace zolmara::cli
