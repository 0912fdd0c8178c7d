#include "store/Catalog.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/base/Sqlite.h"
#include "store/base/TableSql.h"

namespace zolmara {
TablePtr Catalog::Find(std::string_view name) {
    LoadNames();
    const auto lower = LCase(name);
    if (const auto found = tables_.find(lower); found != tables_.end()) return found->second;
    const auto known = byLower_.find(lower);
    if (known == byLower_.end()) return nullptr;
    return tables_[lower] = Load(known->second);
}

TablePtr Catalog::FindWithIndexes(std::string_view name) {
    TablePtr table = Find(name);
    if (table && !withIndexes_.contains(LCase(name))) {
        LoadIndexes(*table);
        withIndexes_.insert(LCase(name));
    }
    return table;
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
    withIndexes_.clear();
}

void Catalog::Forget(const std::string& name, Shape shape) {
    const auto lower = LCase(name);
    if (const auto version = versions_.find(lower); version != versions_.end()) ++*version->second;
    tables_.erase(lower);
    withIndexes_.erase(lower);
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
    return table;
}

void Catalog::LoadIndexes(TableInfo& table) {
    SqliteStatement indexes(handle_, fmt::format("PRAGMA index_list({})", Quoted(table.Def.Name)));
    while (indexes.Step()) {
        IndexDef index{indexes.Text(1), indexes.Integer(2) != 0, {}};
        SqliteStatement columns(handle_, fmt::format("PRAGMA index_info({})", Quoted(index.Name)));
        while (columns.Step()) index.Fields.push_back(columns.Text(2));
        table.Def.Indexes.push_back(std::move(index));
    }
}

}  // namespace zolmara
