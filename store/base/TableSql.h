#pragma once

// Tables and fields as a file declares them.

#include <string>
#include <string_view>

#include "store/base/TableDef.h"

namespace zolmara {

/// A name in double quotes, as a generated statement carries it.
std::string Quoted(std::string_view name);

/// The check that keeps out of a field what its type cannot hold; empty where it holds everything.
std::string FieldCheck(const FieldDef& field);
/// The size of that check where a text begins with it, with the field's name as it is given; 0
/// where it does not.
std::size_t SizeOfCheck(std::string_view text, std::string_view name, const FieldDef& field);
/// The declaration of a field with its type and its check.
std::string FieldDeclaration(const FieldDef& field);
/// The statement that makes a table, in one of the connection's databases where it is named.
std::string CreateTableSql(const TableDef& table, std::string_view database = {});
/// The same with fields that take anything, for rows that have been checked.
std::string CreateUncheckedSql(const TableDef& table, std::string_view database);
/// The same with fields of no type: what is put in is stored as it comes.
std::string CreateUntypedSql(const TableDef& table, std::string_view database = {});
/// A field by the type that a file declares for it. A type that the system does not declare
/// counts as memo.
FieldDef FieldOfType(std::string name, std::string_view declared);

}  // namespace zolmara
