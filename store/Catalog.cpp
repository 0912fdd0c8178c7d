#include "store/Catalog.h"

#include <fmt/format.h>

#include <charconv>

#include "core/Globals.h"
#include "store/Sqlite.h"

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

TablePtr Catalog::Find(std::string_view name) {
    LoadNames();
    const auto lower = LCase(name);
    if (const auto found = tables_.find(lower); found != tables_.end()) return found->second;
    const auto known = byLower_.find(lower);
    if (known == byLower_.end()) return nullptr;
    return tables_[lower] = Load(known->second);
}

std::vector<std::string> Catalog::Names() {
    LoadNames();
    return names_;
}

void Catalog::Refresh() {
    TouchAll();
    ReadAgain();
}

void Catalog::ReadAgain() {
    namesLoaded_ = false;
    names_.clear();
    byLower_.clear();
    tables_.clear();
}

void Catalog::Forget(const std::string& name, Shape shape) {
    const auto lower = LCase(name);
    if (const auto version = versions_.find(lower); version != versions_.end()) ++*version->second;
    tables_.erase(lower);
    if (shape == Shape::Changed || !namesLoaded_) return;
    if (shape == Shape::New)
        names_.push_back(name);
    else
        std::erase(names_, byLower_[lower]);
    if (shape == Shape::New)
        byLower_[lower] = name;
    else
        byLower_.erase(lower);
}

void Catalog::TouchAll() {
    for (auto& [name, version] : versions_) ++*version;
}

void Catalog::LoadNames() {
    if (namesLoaded_) return;
    SqliteStatement select(handle_,
                           "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE "
                           "'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
    while (select.Step()) {
        names_.push_back(select.Text(0));
        byLower_[LCase(names_.back())] = names_.back();
    }
    namesLoaded_ = true;
}

TablePtr Catalog::Load(const std::string& name) {
    auto table = std::make_shared<TableInfo>();
    table->Def.Name = name;
    auto& version = versions_[LCase(name)];
    if (!version) version = std::make_shared<std::int64_t>(0);
    table->Version = version;
    SqliteStatement fields(handle_, fmt::format("PRAGMA table_info({})", Quoted(name)));
    while (fields.Step()) {
        FieldDef field = FieldOfType(fields.Text(1), fields.Text(2));
        field.Required = fields.Integer(3) != 0;
        table->Def.Fields.push_back(std::move(field));
    }
    SqliteStatement indexes(handle_, fmt::format("PRAGMA index_list({})", Quoted(name)));
    while (indexes.Step()) {
        IndexDef index{indexes.Text(1), indexes.Integer(2) != 0, {}};
        SqliteStatement columns(handle_, fmt::format("PRAGMA index_info({})", Quoted(index.Name)));
        while (columns.Step()) index.Fields.push_back(columns.Text(2));
        table->Def.Indexes.push_back(std::move(index));
    }
    return table;
}

}  // namespace zolmara
