#include <fmt/format.h>

#include "core/Globals.h"
#include "store/DatabaseImpl.h"

namespace zolmara {

namespace {

/// The connection behind a handle that must be open.
Database::Impl& Need(const std::shared_ptr<Database::Impl>& impl) {
    if (!impl || impl->Closed)
        throw StoreError(StoreError::Kind::Other, "no Cost Report File is open");
    return *impl;
}

TablePtr NeedTable(Database::Impl& impl, std::string_view name) {
    impl.LookForChanges();
    if (auto table = impl.Tables.Find(name)) {
        impl.Note(*table);
        return table;
    }
    throw StoreError(StoreError::Kind::NoSuchItem, "no such table: " + std::string(name));
}

}  // namespace

Database::Database() = default;
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

bool Database::IsOpen() const { return impl_ && !impl_->Closed; }

const std::string& Database::Path() const { return Need(impl_).Path; }

bool Database::IsReadOnly() const { return Need(impl_).ReadOnly; }

void Database::Close() {
    if (!impl_) return;
    // Recordsets that are still about keep the connection's memory, not the file.
    impl_->Closed = true;
    impl_->EndWatch();
    impl_->RequestsByText.clear();
    impl_->StatementsByKey.clear();
    // So do those who hold a table; it is not the file's any more.
    impl_->Tables.TouchAll();
    impl_->Cells.Clear();
    impl_.reset();
}

int Database::Execute(std::string_view sql, std::initializer_list<Variant> args) {
    return Execute(sql, std::span<const Variant>(args.begin(), args.size()));
}

int Database::Execute(std::string_view sql, std::span<const Variant> args) {
    auto& impl = Need(impl_);
    const auto request = impl.Ask(sql, false);
    return impl.Execute(*request, args);
}

Variant Database::Scalar(std::string_view sql, std::initializer_list<Variant> args) {
    const auto rows = OpenRecordset(sql, args, dbOpenSnapshot);
    return rows.Eof() ? Variant() : rows.Value(0);
}

void Database::RefreshTableDefs() {
    auto& impl = Need(impl_);
    impl.LookForChanges();
    impl.Tables.ReadAgain();
}

std::vector<std::string> Database::TableNames() {
    auto& impl = Need(impl_);
    impl.LookForChanges();
    return impl.Tables.Names();
}

bool Database::HasTable(std::string_view name) {
    auto& impl = Need(impl_);
    impl.LookForChanges();
    const TablePtr table = impl.Tables.Find(name);
    if (table) impl.Note(*table);
    return table != nullptr;
}

const TableDef& Database::Table(std::string_view name) {
    auto& impl = Need(impl_);
    NeedTable(impl, name);
    return impl.Tables.FindWithIndexes(name)->Def;
}

void Database::AppendTable(const TableDef& table) {
    Need(impl_).RunSchemaChange(CreateTableSql(table), table.Name, Shape::New);
}

void Database::DeleteTable(std::string_view name) {
    auto& impl = Need(impl_);
    const auto table = NeedTable(impl, name);
    impl.RunSchemaChange("DROP TABLE " + Quoted(table->Def.Name), table->Def.Name, Shape::Gone);
}

void Database::AppendField(std::string_view table, const FieldDef& field) {
    auto& impl = Need(impl_);
    const auto name = NeedTable(impl, table)->Def.Name;
    // The rows hold Null in the new field; SQLite would read them all to check that.
    const WithoutChecks quiet(impl.Handle);
    impl.RunSchemaChange(
        fmt::format("ALTER TABLE {} ADD COLUMN {}", Quoted(name), FieldDeclaration(field)), name);
}

void Database::DeleteField(std::string_view table, std::string_view field) {
    auto& impl = Need(impl_);
    const auto found = NeedTable(impl, table);
    if (found->Def.FieldIndex(field) < 0)
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("no such column: {}.{}", table, field));
    impl.RunSchemaChange(
        fmt::format("ALTER TABLE {} DROP COLUMN {}", Quoted(found->Def.Name), Quoted(field)),
        found->Def.Name);
}

void Database::RenameField(std::string_view table, std::string_view from, std::string_view to) {
    auto& impl = Need(impl_);
    const auto found = NeedTable(impl, table);
    if (found->Def.FieldIndex(from) < 0)
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("no such column: {}.{}", table, from));
    impl.RunSchemaChange(fmt::format("ALTER TABLE {} RENAME COLUMN {} TO {}",
                                     Quoted(found->Def.Name), Quoted(from), Quoted(to)),
                         found->Def.Name);
}

bool Database::InBatch() const { return IsOpen() && impl_->BatchDepth > 0; }

std::int64_t Database::CommitCount() const { return Need(impl_).Commits; }

void RunBatch(Database& db, const std::function<void()>& work) {
    const auto impl = db.impl_;
    Need(impl).RunInBatch(work);
}

}  // namespace zolmara
