#pragma once

// What the creation of every worksheet has in common: the table from the described fields, seed
// rows, the unique index on the line, the entry in the registry.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "worksheets/Worksheet.h"

namespace zolmara {

/// A form line and the text that it comes with.
struct SeedRow {
    std::int64_t Line;
    std::string_view Text;
};

/// Makes the table of a worksheet from its fields. The table must not exist.
void MakeWorksheetTable(std::string_view item);

/// Inserts the form's lines with their texts in the named field.
void InsertSeedRows(std::string_view item, std::string_view textField,
                    std::span<const SeedRow> rows);

/// "CREATE UNIQUE INDEX ndx<Item> ON <Item> (<key>);"
void MakeWorksheetIndex(std::string_view item);

/// Enters the worksheet in the registry with its level.
void RegisterBuiltWorksheet(std::string_view item);

/// Deletes the table ahead of a rebuild; none being there is fine. On any other failure the
/// reason is shown and the answer is False: the rebuild stops.
bool DropWorksheetTable(std::string_view item);

/// A row per component of the part that the table's last letter names, then its fixed lines:
/// 51 'Total', and on the third part 52 'Grand Total'.
void InsertComponentRows(std::string_view item);

/// The last letter of a table of the three component parts.
inline char PartOf(std::string_view item) { return item.back(); }

}  // namespace zolmara
