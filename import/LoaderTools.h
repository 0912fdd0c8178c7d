#pragma once

// What all loaders share: the staged rows, the messages, and the target row that stays open for
// editing over all the columns of one line.

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/Currency.h"
#include "import/StagedRows.h"
#include "store/Dao.h"

namespace zolmara {

class ImportRun;

/// One line of a worksheet's table, read by its key when the line changes, so that finding it
/// costs the same however long the table is.
class TargetRow {
public:
    /// `where` narrows the rows that can be found; empty for all.
    TargetRow(std::string_view table, std::string_view key, std::string_view where = {});

    /// Stands on the line; a row that was being edited is stored first. False when there is no
    /// such line.
    bool GoTo(Currency line);
    /// The same, and a line that is not there is added.
    void GoToOrAdd(Currency line);
    /// Reads the line anew after statements that may have made it.
    bool Refind(Currency line);

    bool Editing() const { return row_ && row_->Editing(); }
    const Variant& operator[](std::string_view field) const { return row_->Value(field); }
    const Variant& operator[](int field) const { return row_->Value(field); }
    /// Puts a value into a field, opening the row for editing if it is not. StoreError for a
    /// field that is not there or a value that it refuses.
    void Set(int field, const Variant& value);
    void Set(std::string_view field, const Variant& value);
    /// Position of a field, -1 when it is not there.
    int FieldIndex(std::string_view field) const { return row_->FieldIndex(field); }
    /// Stores a row that is being edited.
    void Store();

private:
    std::string table_;
    std::string key_;
    std::string select_;
    std::optional<Recordset> row_;
    std::optional<Currency> line_;
};

/// What a value that the store refuses, and a column that the table lacks, is told by.
inline constexpr std::string_view kConversionError = "Conversion error: ";

/// The position of the field that a column number stands for: the column and an offset. -1 for a
/// column that is no whole number.
int Ordinal(Currency column, int offset);

/// A range of rows or columns, both bounds included.
struct Range {
    double Low;
    double High;
};
bool InAny(std::span<const Range> ranges, Currency value);
inline bool InRange(const Range& range, Currency value) {
    return InAny(std::span(&range, 1), value);
}

/// Loads one staged row; gives the rule that it breaks, empty when it was taken.
using LoadOne = std::function<std::string(const SourceRow&)>;

/// Walks a worksheet's staged rows. A broken rule, and a value that the store refuses, is told
/// and the walk goes on.
void LoadRows(ImportRun& run, std::string_view sheet, const LoadOne& loadOne);
/// The same, and stores the target's last row.
void LoadRows(ImportRun& run, std::string_view sheet, TargetRow& target, const LoadOne& loadOne);

/// Loads a worksheet row by row, and has the open windows show it.
void LoadWorksheet(ImportRun& run, std::string_view sheet, TargetRow target,
                   std::string (*loadOne)(TargetRow&, const SourceRow&));

}  // namespace zolmara
