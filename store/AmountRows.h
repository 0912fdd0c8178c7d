#pragma once

// The amounts of a table for those who pass through them row by row and keep nothing: reports and
// the electronic report. However long a table is, no more than a band of it is in memory for them.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "store/AmountSpool.h"
#include "store/TableCells.h"

namespace zolmara {

/// The texts of a row, empty for Null. They last until the next row.
using RowTexts = std::span<const std::string_view>;

/// What names a row: its line, Null where it has none, and its texts in some fields.
using RowNames = std::function<void(const Variant& line, RowTexts texts)>;

/// The rows of a table as "ORDER BY" its first field has them. Where a calculation has the amounts
/// in memory they are taken from there; else from what AmountSpool keeps of the table, else from
/// the file.
class AmountRows {
public:
    /// Reads the rows' names. StoreError::NoSuchItem where there is no such table.
    AmountRows(Database& db, std::string_view table, std::span<const int> textFields,
               const RowNames& onRow);

    std::size_t Size() const { return rows_.size(); }

    /// Gives, in the order of the names, each row's numbers in so many fields from a position on;
    /// Null and what is no number is no number. StoreError where the table was written to since
    /// the names were read, unless PutAside was first; an exception of `onRow` ends the walk.
    void Walk(std::size_t first, std::size_t count, const RowNumbers& onRow);

    /// Makes what walks there will be one look at the table, also when it is written to between
    /// them. Needs an AmountSpool; without room for it nothing is done.
    void PutAside();

private:
    void ReadNames(std::span<const int> textFields, const RowNames& onRow);
    void WalkKept(std::size_t first, std::size_t count, const RowNumbers& onRow) const;
    void WalkFile(std::size_t first, std::size_t count, const RowNumbers& onRow) const;
    bool PutAll(const RowNumbers& onRow);
    void NeedUnchanged() const;
    [[noreturn]] void Changed() const;

    Database& db_;
    std::shared_ptr<const TableInfo> info_;
    std::int64_t version_ = 0;
    std::shared_ptr<const TableCells> kept_;
    std::int64_t lastChange_ = 0;     ///< of the cells in memory
    std::vector<std::int64_t> rows_;  ///< numbers of the store; places among the cells in memory
    std::shared_ptr<const SpooledTable> aside_;
};

}  // namespace zolmara
