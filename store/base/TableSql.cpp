#include "store/base/TableSql.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "core/Globals.h"

namespace zolmara {
namespace {

struct DeclaredType {
    std::string_view Word;
    FieldType Type;
};
constexpr DeclaredType kDeclaredTypes[] = {
    {"CURRENCY", FieldType::dbCurrency}, {"DOUBLE", FieldType::dbDouble},
    {"SMALLINT", FieldType::dbInteger},  {"TEXT", FieldType::dbText},
    {"LONGTEXT", FieldType::dbMemo},     {"DATETIME", FieldType::dbDate},
};

/// "TEXT(36)" is a dbText of 36. A type that the system does not declare counts as memo.
void ReadDeclaredType(std::string_view declared, FieldDef& field) {
    const auto bracket = declared.find('(');
    const auto word = declared.substr(0, bracket);
    field.Type = FieldType::dbMemo;
    for (const auto& type : kDeclaredTypes)
        if (SameText(word, type.Word)) field.Type = type.Type;
    if (bracket != std::string_view::npos)
        std::from_chars(declared.data() + bracket + 1, declared.data() + declared.size(),
                        field.Size);
}

std::string DeclaredTypeText(const FieldDef& field) {
    if (field.Type == FieldType::dbText) return fmt::format("TEXT({})", field.Size);
    for (const auto& type : kDeclaredTypes)
        if (type.Type == field.Type) return std::string(type.Word);
    return "LONGTEXT";
}

/// Text sorts above every number, so a range keeps text, blobs and infinities out at the price
/// of two comparisons.
std::string CheckText(const FieldDef& field) {
    const auto name = Quoted(field.Name);
    switch (field.Type) {
        case FieldType::dbDouble:
            return fmt::format(" CHECK({} BETWEEN -1e308 AND 1e308)", name);
        case FieldType::dbCurrency:
            return fmt::format(" CHECK({} BETWEEN -9e14 AND 9e14)", name);
        case FieldType::dbInteger:
            return fmt::format(" CHECK({0} BETWEEN -32768 AND 32767 AND {0}=CAST({0} AS INTEGER))",
                               name);
        case FieldType::dbText:
            return fmt::format(" CHECK(length({})<={})", name, field.Size);
        case FieldType::dbDate:
            return fmt::format(
                " CHECK({} GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9] "
                "[0-9][0-9]:[0-9][0-9]:[0-9][0-9]')",
                name);
        case FieldType::dbMemo:
            break;
    }
    return "";
}

bool IsTextType(FieldType type) { return type == FieldType::dbText || type == FieldType::dbMemo; }

}  // namespace

std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string FieldDeclaration(const FieldDef& field) {
    return fmt::format("{} {}{}{}{}", Quoted(field.Name), DeclaredTypeText(field),
                       field.Required ? " NOT NULL" : "",
                       IsTextType(field.Type) ? " COLLATE NOCASE" : "", CheckText(field));
}

FieldDef FieldOfType(std::string name, std::string_view declared) {
    FieldDef field;
    field.Name = std::move(name);
    ReadDeclaredType(declared, field);
    return field;
}

std::string CreateTableSql(const TableDef& table) {
    std::string fields;
    for (const auto& field : table.Fields)
        fields += (fields.empty() ? "" : ", ") + FieldDeclaration(field);
    return fmt::format("CREATE TABLE {} ({})", Quoted(table.Name), fields);
}

int TableDef::FieldIndex(std::string_view name) const {
    // As it is written nearly always.
    const auto same = std::ranges::find(Fields, name, &FieldDef::Name);
    if (same != Fields.end()) return static_cast<int>(same - Fields.begin());
    // Names of fields are plain letters and digits: names of different size are different.
    for (std::size_t i = 0; i < Fields.size(); ++i)
        if (Fields[i].Name.size() == name.size() && SameText(Fields[i].Name, name))
            return static_cast<int>(i);
    return -1;
}

}  // namespace zolmara
