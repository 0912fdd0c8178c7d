#pragma once

// What a Cost Report File may hold. A file may come by mail from anybody; what it holds is figures
// and nothing that could run: tables of plain fields, and indexes over fields.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace zolmara {

/// A table as its CREATE statement declares it.
struct TableText {
    std::string Name;
    std::vector<std::string> Fields;
};

/// An index as its CREATE statement declares it.
struct IndexText {
    std::string Name;
    std::string Table;
    std::vector<std::string> Fields;
};

/// Reads a CREATE TABLE statement of plain fields: name, type, NOT NULL, UNIQUE, PRIMARY KEY,
/// COLLATE, a constant DEFAULT, and the CHECK that the store itself lays down for the type.
/// Nothing for any other statement.
std::optional<TableText> ReadTableText(std::string_view sql);

/// Reads a CREATE INDEX statement over fields, without a condition. Nothing for any other.
std::optional<IndexText> ReadIndexText(std::string_view sql);

/// Why a file's list of what it holds is not that of a Cost Report File.
struct SchemaObjection {
    std::string What;      ///< "the trigger "x""
    bool Foreign = false;  ///< true for what no damage makes of a table or index
};
std::optional<SchemaObjection> FindSchemaObjection(sqlite3* handle, const std::string& path);

/// StoreError, which names it, when an open file holds anything but tables of plain fields and
/// plain indexes: NotADatabase for what is neither table nor index, else Damaged.
void NeedPlainSchema(sqlite3* handle, const std::string& path);
[[noreturn]] void RefuseSchema(const std::string& path, const SchemaObjection& objection);

/// Sets a connection so that nothing in its file can run, and that no statement is kept going for
/// ever by a file whose pages lead in circles.
void GuardConnection(sqlite3* handle, const std::string& path);

}  // namespace zolmara
