// Each kind of statement. Expressions and queries have writers of their own.
//
// An UPDATE is given the condition that some field really changes. A statement that stores what
// is there already then touches no page.

#include "store/sql/SqlTranslator.h"

#include <fmt/format.h>

#include <unordered_set>

#include "core/Globals.h"
#include "store/base/StoreError.h"
#include "store/sql/ExprWriter.h"
#include "store/sql/SelectWriter.h"

namespace zolmara::sql {
namespace {

/// A statement on its way: what it is made of, and what has become of it.
struct Work {
    const Statement& From;
    const FindTable& Find;
    ExprWriter Expressions;
    bool Snapshot;
    Translation Result{};
};

TablePtr NeedTable(Work& work, const std::string& name) {
    if (auto table = work.Find(name)) {
        work.Result.Tables.push_back(table);
        return table;
    }
    throw StoreError(StoreError::Kind::NoSuchItem, "no such table: " + name);
}

void OpenScope(Work& work, const std::vector<TableRef>& tables) {
    for (const auto& table : tables)
        work.Expressions.AddTable(NeedTable(work, table.Name), table.Alias);
}

std::string FieldList(const std::vector<const FieldDef*>& fields) {
    std::string list;
    for (const auto* field : fields) list += (list.empty() ? "" : ",") + Quoted(field->Name);
    return list;
}

// --- SELECT, SELECT INTO

void TranslateSelect(Work& work) {
    OpenScope(work, work.From.Query.From);
    SelectWriter query(work.Expressions, work.From.Query);
    auto& result = work.Result;
    result.Columns = query.Columns();
    result.IsDynaset = !work.Snapshot && query.IsPlain();
    const auto& scope = work.Expressions.Scope();
    if (scope.size() == 1) result.Table = scope.front().Table;
    result.Sql = query.Sql(result.IsDynaset ? "rowid" : query.ColumnList());
}

void NeedDifferentNames(const std::vector<OutputColumn>& columns) {
    std::unordered_set<std::string> names;
    for (const OutputColumn& column : columns)
        if (!names.insert(LCase(column.Field.Name)).second)
            RefuseSql("duplicate column name: " + column.Field.Name);
}

void TranslateSelectInto(Work& work) {
    OpenScope(work, work.From.Query.From);
    SelectWriter query(work.Expressions, work.From.Query);
    auto& result = work.Result;
    result.Columns = query.Columns();
    result.NewTable.Name = work.From.Table;
    result.CopiesFields = true;
    NeedDifferentNames(result.Columns);
    for (std::size_t i = 0; i < result.Columns.size(); ++i) {
        result.NewTable.Fields.push_back(result.Columns[i].Field);
        result.NewTable.Fields.back().Required = false;
        if (result.Columns[i].Source < 0 && query.ColumnSql()[i] != kNullAmount)
            result.CopiesFields = false;
    }
    const auto source =
        query.IsWholeTable()
            ? "SELECT * FROM " + Quoted(work.Expressions.Scope().front().Table->Def.Name)
            : query.Sql(query.ColumnList());
    result.Sql = fmt::format("INSERT INTO {} {}", Quoted(work.From.Table), source);
}

// --- INSERT

/// The fields that an INSERT fills: those named, or all.
std::vector<const FieldDef*> TargetFields(const Work& work) {
    std::vector<const FieldDef*> fields;
    const auto& table = work.Result.Table->Def;
    for (const auto& name : work.From.Columns) fields.push_back(&NeedField(table, name));
    if (fields.empty())
        for (const auto& field : table.Fields) fields.push_back(&field);
    return fields;
}

void TranslateInsertValues(Work& work) {
    work.Result.Table = NeedTable(work, work.From.Table);
    const auto fields = TargetFields(work);
    const auto& given = work.From.Values;
    if (fields.size() != given.size())
        RefuseSql(fmt::format("{} values for {} columns of {}", given.size(), fields.size(),
                              work.From.Table));
    std::string values;
    for (std::size_t i = 0; i < fields.size(); ++i)
        values += (i ? "," : "") + work.Expressions.WriteInto(*fields[i], *given[i]);
    work.Result.Sql = fmt::format("INSERT INTO {} ({}) VALUES ({})",
                                  Quoted(work.Result.Table->Def.Name), FieldList(fields), values);
}

Written ColumnOf(const SelectWriter& query, std::size_t i) {
    const auto& column = query.Columns()[i];
    return {query.ColumnSql()[i], column.Typed ? TypeOfField(column.Field) : ValueType::Unknown,
            column.Source >= 0, column.Source >= 0 ? &column.Field : nullptr};
}

/// Without a list of fields, the columns of the query find theirs by name.
void TranslateInsertSelect(Work& work) {
    const auto& names = work.From.Columns;
    work.Result.Table = NeedTable(work, work.From.Table);
    OpenScope(work, work.From.Query.From);
    SelectWriter query(work.Expressions, work.From.Query);
    std::vector<const FieldDef*> fields;
    std::string list;
    for (std::size_t i = 0; i < query.Columns().size(); ++i) {
        const auto& name = i < names.size() ? names[i] : query.Columns()[i].Field.Name;
        fields.push_back(&NeedField(work.Result.Table->Def, name));
        list += (i ? "," : "") + Converted(*fields.back(), ColumnOf(query, i));
    }
    work.Result.Sql = fmt::format("INSERT INTO {} ({}) {}", Quoted(work.Result.Table->Def.Name),
                                  FieldList(fields), query.Sql(list));
}

// --- UPDATE, DELETE

/// The table that an UPDATE over a join writes to: the one its fields are named of.
const ScopeEntry& TargetOfUpdate(const Work& work) {
    const auto& first = work.From.Set.front();
    for (const auto& entry : work.Expressions.Scope()) {
        const bool named = first.Qualifier.empty() ? entry.Table->Def.FieldIndex(first.Field) >= 0
                                                   : SameText(first.Qualifier, entry.Alias);
        if (named) return entry;
    }
    throw StoreError(StoreError::Kind::NoSuchItem, "no such column: " + first.Field);
}

/// A change of case is a change.
std::string_view BinaryOrder(const FieldDef& field) {
    return TypeOfField(field) == ValueType::Text ? " COLLATE BINARY" : "";
}

std::string OtherTables(const Work& work, const ScopeEntry& target) {
    std::string list;
    for (const auto& entry : work.Expressions.Scope()) {
        if (&entry == &target) continue;
        list += fmt::format("{}{} AS {}", list.empty() ? " FROM " : ",",
                            Quoted(entry.Table->Def.Name), Quoted(entry.Alias));
    }
    return list;
}

std::string Conditions(Work& work) {
    std::string sql;
    for (const auto& table : work.From.Tables)
        if (table.On) sql += work.Expressions.Write(*table.On).Sql + " AND ";
    if (work.From.Where) sql += work.Expressions.Write(*work.From.Where).Sql + " AND ";
    return sql;
}

void TranslateUpdate(Work& work) {
    OpenScope(work, work.From.Tables);
    const auto& target = TargetOfUpdate(work);
    const auto& table = target.Table->Def;
    work.Result.Table = target.Table;
    std::string sets, changes;
    for (const auto& assignment : work.From.Set) {
        const auto& field = NeedField(table, assignment.Field);
        const auto value = work.Expressions.WriteInto(field, *assignment.Value);
        sets += fmt::format("{}{}={}", sets.empty() ? "" : ",", Quoted(field.Name), value);
        changes +=
            fmt::format("{}{} IS NOT ({}){}", changes.empty() ? "" : " OR ",
                        work.Expressions.WriteField(target, field).Sql, value, BinaryOrder(field));
    }
    work.Result.Sql = fmt::format("UPDATE {} AS {} SET {}{} WHERE {}({})", Quoted(table.Name),
                                  Quoted(target.Alias), sets, OtherTables(work, target),
                                  Conditions(work), changes);
}

void TranslateDelete(Work& work) {
    work.Result.Table = NeedTable(work, work.From.Table);
    const auto& name = work.Result.Table->Def.Name;
    work.Expressions.AddTable(work.Result.Table, name);
    work.Result.Sql = "DELETE FROM " + Quoted(name);
    if (work.From.Where)
        work.Result.Sql += " WHERE " + work.Expressions.Write(*work.From.Where).Sql;
}

// --- CREATE INDEX, DROP TABLE

void TranslateCreateIndex(Work& work) {
    auto& result = work.Result;
    result.Table = NeedTable(work, work.From.Table);
    std::vector<const FieldDef*> fields;
    for (const auto& name : work.From.Columns) {
        fields.push_back(&NeedField(result.Table->Def, name));
        if (work.From.DisallowNull) result.RequiredFields.push_back(fields.back()->Name);
    }
    result.Sql =
        fmt::format("CREATE {}INDEX {} ON {} ({})", work.From.Unique ? "UNIQUE " : "",
                    Quoted(work.From.IndexName), Quoted(result.Table->Def.Name), FieldList(fields));
}

void TranslateDropTable(Work& work) { work.Result.Table = NeedTable(work, work.From.Table); }

struct KindRule {
    Statement::Kind Kind;
    void (*Translate)(Work&);
};
constexpr KindRule kKinds[] = {
    {Statement::Kind::Select, TranslateSelect},
    {Statement::Kind::SelectInto, TranslateSelectInto},
    {Statement::Kind::InsertValues, TranslateInsertValues},
    {Statement::Kind::InsertSelect, TranslateInsertSelect},
    {Statement::Kind::Update, TranslateUpdate},
    {Statement::Kind::Delete, TranslateDelete},
    {Statement::Kind::CreateIndex, TranslateCreateIndex},
    {Statement::Kind::DropTable, TranslateDropTable},
};

}  // namespace

Translation Translate(const Statement& statement, const FindTable& find, const TokenList& tokens,
                      bool snapshot) {
    Work work{statement, find, ExprWriter(tokens), snapshot};
    work.Result.Kind = statement.kind;
    for (const auto& rule : kKinds)
        if (rule.Kind == statement.kind) rule.Translate(work);
    work.Result.Parameters = work.Expressions.Parameters();
    return std::move(work.Result);
}

Translation TranslateFind(const Expr& condition, const TablePtr& table, const TokenList& tokens) {
    ExprWriter expressions(tokens);
    expressions.AddTable(table, table->Def.Name);
    Translation result;
    result.Table = table;
    result.Sql = fmt::format("SELECT rowid FROM {} WHERE {}", Quoted(table->Def.Name),
                             expressions.Write(condition).Sql);
    result.Parameters = expressions.Parameters();
    return result;
}

}  // namespace zolmara::sql
