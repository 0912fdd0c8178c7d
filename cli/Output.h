#pragma once

// What a command has to say, on standard output, as text for people, CSV or JSON.

#include <string>
#include <string_view>
#include <vector>

#include "core/Variant.h"
#include "store/Dao.h"

namespace zolmara::cli {

enum class OutputFormat { Text, Csv, Json };

/// The format that the command line asks for.
OutputFormat TheFormat();
void SetFormat(OutputFormat format);

/// Rows under named columns. A row's values stand in the order of the columns.
struct Listing {
    std::vector<std::string> Columns;
    std::vector<std::vector<Variant>> Rows;
};

/// All rows of a recordset, with its fields as columns.
Listing ListingOf(Recordset& rows);

/// A table: aligned columns, CSV with a head line, or a JSON array of objects.
void PrintListing(const Listing& listing);
/// One record: "Name: value" lines, CSV with a head line, or one JSON object.
void PrintRecord(const Listing& record);
/// Messages: a line each with its values between tabs, line breaks as blanks; else as a table.
void PrintMessages(const Listing& messages);
/// A single value: its text, or as JSON.
void PrintValue(const Variant& value);
/// A line for people; nothing in CSV and JSON.
void PrintLine(std::string_view line);

/// Text on standard error, at once. Where that takes nothing it is lost: a run that was asked for
/// does not end because nobody hears of it.
void PutError(std::string_view text);

/// A text as a terminal may have it: a control character of a file must not steer it. Tabs and
/// line feeds stay; what is no character is "?".
std::string ForPeople(std::string_view text);
/// The text of a message on one line: each line break, of one or two characters, is a blank.
std::string OneLine(std::string_view text);

}  // namespace zolmara::cli
