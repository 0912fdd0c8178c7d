#pragma once

// The database layer: the names and meanings that the rest of the system knows a database by,
// on top of one SQLite file. See docs/store.md for how the dialect, the typed fields, dynasets
// and batches work.

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Variant.h"
#include "store/base/StoreError.h"
#include "store/base/TableDef.h"

namespace zolmara {

class Database;

/// The rows of a table or statement.
///
/// A single table with plain conditions gives a dynaset: it keeps the keys of its rows, and each
/// read shows what the store holds now. Anything else (aggregates, joins, DISTINCT) gives a
/// snapshot. Positions count from 0. Fields are found by position or by name without regard to
/// case; a name that is not there raises StoreError::NoSuchItem.
class Recordset {
public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    // --- Walking. A new recordset stands on its first row.
    bool Eof() const;
    bool Bof() const;
    bool Empty() const { return RecordCount() == 0; }
    std::size_t RecordCount() const;
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();
    std::size_t AbsolutePosition() const;

    /// A row's mark, to come back to it by SetBookmark. Marks stay good over Requery as long as
    /// the row is there.
    std::int64_t Bookmark() const;
    void SetBookmark(std::int64_t mark);
    /// The row that was added or changed last.
    std::int64_t LastModified() const;

    /// Runs the statement again and goes to the first row.
    void Requery();
    Recordset Clone() const;

    /// Goes to the first (last) row for which the criteria, a condition in the dialect, hold;
    /// `?` in it stands for the next argument. Without such a row the recordset stays where it
    /// stands and NoMatch() is true.
    void FindFirst(std::string_view criteria, std::initializer_list<Variant> args = {});
    void FindLast(std::string_view criteria, std::initializer_list<Variant> args = {});
    bool NoMatch() const;

    // --- Fields
    int FieldCount() const;
    const std::string& FieldName(int index) const;
    FieldType TypeOf(int index) const;
    bool FieldExists(std::string_view name) const;
    int FieldIndex(std::string_view name) const;  ///< -1 when it is not there

    /// A cell of the current row; of the buffer while the row is in Edit or AddNew.
    const Variant& Value(int index) const;
    const Variant& Value(std::string_view name) const;
    const Variant& operator[](int index) const { return Value(index); }
    const Variant& operator[](std::string_view name) const { return Value(name); }

    // --- Editing
    void Edit();
    void AddNew();
    /// Puts a value into the buffer; the field's type converts it or refuses it (StoreError).
    /// Needs Edit or AddNew.
    void Set(int index, const Variant& value);
    void Set(std::string_view name, const Variant& value);
    /// Writes the buffer. A row whose values are all as they were is not written.
    void Update();
    void CancelUpdate();
    void Delete();
    bool Editing() const;

    void Close();

private:
    friend class Database;
    struct State;
    explicit Recordset(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

enum RecordsetType { dbOpenTable = 1, dbOpenDynaset = 2, dbOpenSnapshot = 4 };

/// An open Cost Report File.
class Database {
public:
    Database();  ///< no file
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    bool IsOpen() const;
    const std::string& Path() const;
    /// True where the file, or the way it was opened, takes no writes.
    bool IsReadOnly() const;
    void Close();

    /// Runs an action statement. `?` stands for the next argument, bound as a value, so that a
    /// quote in a text is a letter of the text; a number in a statement or argument counts in
    /// its text form of 15 digits. Gives the number of rows changed.
    int Execute(std::string_view sql, std::initializer_list<Variant> args = {});
    int Execute(std::string_view sql, std::span<const Variant> args);

    /// A table's name or a SELECT statement.
    Recordset OpenRecordset(std::string_view source, RecordsetType type = dbOpenDynaset);
    Recordset OpenRecordset(std::string_view source, std::initializer_list<Variant> args,
                            RecordsetType type = dbOpenDynaset);

    /// The first row's first value of a SELECT; Null without a row.
    Variant Scalar(std::string_view sql, std::initializer_list<Variant> args = {});

    // --- TableDefs
    void RefreshTableDefs();
    /// Names of all tables, in the order of their creation.
    std::vector<std::string> TableNames();
    bool HasTable(std::string_view name);
    /// The table's description. StoreError::NoSuchItem when it is not there.
    const TableDef& Table(std::string_view name);
    /// Makes the table. Its indexes are made by statements.
    void AppendTable(const TableDef& table);
    void DeleteTable(std::string_view name);
    void AppendField(std::string_view table, const FieldDef& field);
    void DeleteField(std::string_view table, std::string_view field);
    void RenameField(std::string_view table, std::string_view from, std::string_view to);

    // --- Batches
    /// True while a batch is open.
    bool InBatch() const;
    /// Numbers the committed transactions that this handle wrote, for tests and benchmarks.
    std::int64_t CommitCount() const;

    struct Impl;
    Impl& impl() { return *impl_; }

private:
    friend class DBEngine;
    friend void RunBatch(Database&, const std::function<void()>&);
    std::shared_ptr<Impl> impl_;
};

/// Runs a long operation as one transaction. Whatever way out `work` takes, what it has written
/// is committed; an exception then goes on to the caller. Only the death of the process takes
/// the whole back, or an error of the file itself (no room, a failing disk, damage), also one
/// that `work` passed over: then StoreError of that kind is raised and the file is as it was. A
/// batch that leaves every row as it found it writes nothing. Batches nest.
void RunBatch(Database& db, const std::function<void()>& work);

/// What a repair found and did.
struct RepairReport {
    bool WasDamaged = false;
    /// One line for each thing that could not be brought back.
    std::vector<std::string> Losses;
    std::size_t RowsKept = 0;
};

class DBEngine {
public:
    /// A new, empty file; the path must not exist. The locale is kept for its meaning of text
    /// (";LANGID=0x0409;CP=1252;COUNTRY=0") and has no effect of its own.
    static Database CreateDatabase(const std::string& path, std::string_view locale);
    /// Opens for reading and writing, or for reading alone where the file allows no more.
    static Database OpenDatabase(const std::string& path);
    /// Checks the closed file and, when it is damaged, makes it anew from every row that can
    /// still be read; the damaged file is replaced only by a whole one. StoreError when the file
    /// cannot be read, or holds nothing of a CRF at all.
    static RepairReport RepairDatabase(const std::string& path);
    /// Writes a compact copy of the closed source. The target appears whole or not at all; one
    /// that is there is replaced.
    static void CompactDatabase(const std::string& source, const std::string& target);

private:
    friend Database OpenReadOnly(const std::string& path);
    static Database Open(const std::string& path, bool onlyToRead);
};

}  // namespace zolmara
