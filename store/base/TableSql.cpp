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
    /// What keeps out what the field cannot hold; @ stands for its name and # for its size. Text
    /// sorts above every number, so a range keeps text, blobs and infinities out at the price of
    /// two comparisons.
    std::string_view Check;
};
constexpr DeclaredType kDeclaredTypes[] = {
    {"CURRENCY", FieldType::dbCurrency, "CHECK(@ BETWEEN -9e14 AND 9e14)"},
    {"DOUBLE", FieldType::dbDouble, "CHECK(@ BETWEEN -1e308 AND 1e308)"},
    {"SMALLINT", FieldType::dbInteger,
     "CHECK(@ BETWEEN -32768 AND 32767 AND @=CAST(@ AS INTEGER))"},
    {"TEXT", FieldType::dbText, "CHECK(length(@)<=#)"},
    {"LONGTEXT", FieldType::dbMemo, ""},
    {"DATETIME", FieldType::dbDate,
     "CHECK(@ GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9] "
     "[0-9][0-9]:[0-9][0-9]:[0-9][0-9]')"},
};

/// "TEXT(36)" is a dbText of 36. A type that the system does not declare counts as memo.
void ReadDeclaredType(std::string_view declared, FieldDef& field) {
    const auto bracket = declared.find('(');
    const auto word = declared.substr(0, bracket);
    field.Type = FieldType::dbMemo;
    for (const auto& type : kDeclaredTypes)
        if (word.size() == type.Word.size() && SameText(word, type.Word)) field.Type = type.Type;
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

std::string_view CheckOf(FieldType type) {
    for (const auto& declared : kDeclaredTypes)
        if (declared.Type == type) return declared.Check;
    return "";
}

bool IsTextType(FieldType type) { return type == FieldType::dbText || type == FieldType::dbMemo; }

std::string UncheckedDeclaration(const FieldDef& field) {
    return fmt::format("{} {}{}{}", Quoted(field.Name), DeclaredTypeText(field),
                       field.Required ? " NOT NULL" : "",
                       IsTextType(field.Type) ? " COLLATE NOCASE" : "");
}

template <class Declaration>
std::string CreateSql(const TableDef& table, std::string_view database,
                      const Declaration& declaration) {
    std::string sql = fmt::format("CREATE TABLE {}{}{} (", database, database.empty() ? "" : ".",
                                  Quoted(table.Name));
    for (const auto& field : table.Fields)
        sql.append(&field == &table.Fields.front() ? "" : ", ").append(declaration(field));
    return sql += ')';
}

}  // namespace

std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    quoted.reserve(name.size() + 2);
    for (const char c : name) {
        if (c == '"') quoted += c;
        quoted += c;
    }
    return quoted += '"';
}

std::string FieldCheck(const FieldDef& field) {
    const std::string_view pattern = CheckOf(field.Type);
    const auto name = Quoted(field.Name);
    std::string check;
    check.reserve(pattern.size() + 3 * name.size());
    for (const char c : pattern) {
        if (c == '@')
            check += name;
        else if (c == '#')
            check += std::to_string(field.Size);
        else
            check += c;
    }
    return check;
}

std::size_t SizeOfCheck(std::string_view text, std::string_view name, const FieldDef& field) {
    std::size_t at = 0;
    const auto pass = [&](std::string_view part) {
        if (!text.substr(at).starts_with(part)) return false;
        at += part.size();
        return true;
    };
    for (const char c : CheckOf(field.Type)) {
        const bool passed = c == '@'   ? pass(name)
                            : c == '#' ? pass(std::to_string(field.Size))
                                       : pass({&c, 1});
        if (!passed) return 0;
    }
    return at;
}

std::string FieldDeclaration(const FieldDef& field) {
    const std::string check = FieldCheck(field);
    return fmt::format("{}{}{}", UncheckedDeclaration(field), check.empty() ? "" : " ", check);
}

FieldDef FieldOfType(std::string name, std::string_view declared) {
    FieldDef field;
    field.Name = std::move(name);
    ReadDeclaredType(declared, field);
    return field;
}

std::string CreateTableSql(const TableDef& table, std::string_view database) {
    return CreateSql(table, database, FieldDeclaration);
}

std::string CreateUntypedSql(const TableDef& table, std::string_view database) {
    return CreateSql(table, database, [](const FieldDef& field) { return Quoted(field.Name); });
}

std::string CreateUncheckedSql(const TableDef& table, std::string_view database) {
    return CreateSql(table, database, UncheckedDeclaration);
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
