#pragma once

// Reading rows of amounts: lines, sums, and two recordsets walked side by side.

#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

/// The line of the current row, which every worksheet has as its first field.
Currency LineOf(const Recordset& rows);

/// The first value of a statement as a number; Null and no row count as 0.
double SumOf(std::string_view sql, std::initializer_list<Variant> args = {});

/// The current row's fields as numbers, by position; what is no number counts as 0.
std::vector<double> AmountsOf(const Recordset& row);

/// The first row of a statement that must give one. StoreError that names the place otherwise.
Recordset RequiredRow(std::string_view table, Currency line);

/// A statement's rows in the order of their lines, asked for lines in that same order. A line
/// that is not among them leaves the amounts those of the line found before, or of the first row.
class LineCursor {
public:
    /// `table` is what the statement reads, for messages.
    LineCursor(std::string_view table, std::string_view sql);

    /// Takes the amounts of the line's row. Lines must not go down from call to call.
    void Seek(Currency line);
    /// A cell of the row in hand, as a number, by position. StoreError where there is none.
    double Amount(int position) const;

private:
    std::string table_;
    Recordset rows_;
    std::vector<double> amounts_;
};

}  // namespace zolmara
