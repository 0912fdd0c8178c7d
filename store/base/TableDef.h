#pragma once

// What a table is.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara {

/// Types of a field.
enum class FieldType {
    dbInteger,   ///< 16 bit whole number
    dbCurrency,  ///< four exact decimals
    dbDouble,
    dbText,  ///< of a size in characters
    dbMemo,  ///< text without a size
    dbDate,
};

/// A field's description.
struct FieldDef {
    std::string Name;
    FieldType Type = FieldType::dbDouble;
    int Size = 0;  ///< characters, for dbText
    bool AllowZeroLength = true;
    bool Required = false;  ///< refuses Null
};

/// An index on a table.
struct IndexDef {
    std::string Name;
    bool Unique = false;
    std::vector<std::string> Fields;
};

/// A table's description, to be filled and appended, or as the store has it.
struct TableDef {
    std::string Name;
    std::vector<FieldDef> Fields;
    std::vector<IndexDef> Indexes;  ///< as read; made by CREATE INDEX statements

    /// Position of a field by name, without regard to case; -1 when it is not there.
    int FieldIndex(std::string_view name) const;
};

/// A table as the store has it. `Version` grows with every write to the table, so that a row
/// read before is known to be old; it outlives a change of the table's shape.
struct TableInfo {
    TableDef Def;
    std::shared_ptr<std::int64_t> Version;
};
using TablePtr = std::shared_ptr<TableInfo>;

}  // namespace zolmara
