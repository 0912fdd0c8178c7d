#include "store/CopyRows.h"

#include <fmt/format.h>

#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

constexpr std::size_t kRowsPerStep = 512;

std::string List(std::span<const std::string> fields) {
    std::string list;
    for (const std::string& field : fields) list += (list.empty() ? "" : ",") + Quoted(field);
    return list;
}

std::string Marks(std::size_t count) {
    std::string marks;
    for (std::size_t i = 0; i < count; ++i) marks += i == 0 ? "?" : ",?";
    return marks;
}

/// The table, with every one of the fields: a name that is none would be taken for a text.
TablePtr NeedTable(Database& db, std::string_view name, std::span<const std::string> fields) {
    TablePtr table = db.impl().Tables.Find(name);
    if (!table)
        throw StoreError(StoreError::Kind::NoSuchItem, fmt::format("no such table: {}", name));
    for (const std::string& field : fields)
        if (table->Def.FieldIndex(field) < 0)
            throw StoreError(StoreError::Kind::NoSuchItem,
                             fmt::format("no such column: {}.{}", name, field));
    return table;
}

/// The rows of one table under way to another.
class Copy {
public:
    Copy(Database& from, Database& to, std::string_view table, std::span<const std::string> fields)
        : to_(to.impl()),
          target_(NeedTable(to, table, fields)),
          width_(static_cast<int>(fields.size())),
          read_(from.impl().Handle, fmt::format("SELECT {} FROM {} ORDER BY rowid", List(fields),
                                                Quoted(NeedTable(from, table, fields)->Def.Name))),
          write_(to_.Handle,
                 fmt::format("INSERT INTO {} ({}) VALUES ({})", Quoted(target_->Def.Name),
                             List(fields), Marks(fields.size()))),
          fromFile_(from.Path()) {}

    bool Next() { return read_.Step(fromFile_); }

    void Write() {
        for (int i = 0; i < width_; ++i)
            sqlite3_bind_value(write_.get(), i + 1, sqlite3_column_value(read_.get(), i));
        to_.RunWrite(write_, target_);
    }

    Variant Key() const { return read_.Value(0); }

private:
    Database::Impl& to_;
    TablePtr target_;
    int width_;
    SqliteStatement read_;
    SqliteStatement write_;
    std::string fromFile_;
};

}  // namespace

void NeedWhole(Database& db) {
    SqliteStatement check(db.impl().Handle, "PRAGMA quick_check(100)");
    while (check.Step(db.Path())) {
        const std::string finding = check.Text(0);
        // A cell that its field cannot hold is a matter of its row alone.
        if (finding == "ok" || finding.starts_with("CHECK ") || finding.starts_with("NULL "))
            continue;
        throw StoreError(StoreError::Kind::Damaged,
                         fmt::format("{}: the file is damaged; open it as a Cost Report File and "
                                     "close it to have it repaired",
                                     db.Path()));
    }
}

std::size_t CopyRows(Database& from, Database& to, std::string_view table,
                     std::span<const std::string> fields, const CopyWatch& watch) {
    Copy copy(from, to, table, fields);
    std::size_t copied = 0;
    for (std::size_t read = 1; copy.Next(); ++read) {
        try {
            copy.Write();
            ++copied;
        } catch (const StoreError& error) {
            if (error.IsFileError() || !watch.Refused) throw;
            watch.Refused(copy.Key(), error);
        }
        if (watch.Progress && read % kRowsPerStep == 0) watch.Progress(read);
    }
    return copied;
}

}  // namespace zolmara
