#pragma once

// The rows of a table of the open CRF from the first to the last, some at a time: a large worksheet
// takes no more memory than a small one, and no cell asks the store by itself.

#include <optional>
#include <string>
#include <vector>

#include "core/Currency.h"
#include "store/Dao.h"

namespace zolmara {

class PassingRows {
public:
    /// Of the table's lines, which live as long as the rows.
    PassingRows(std::string table, std::string key, const std::vector<Currency>& lines);

    bool Eof() const { return !rows_; }
    void MoveNext();
    Currency Line() const;
    int FieldCount() const { return rows_->FieldCount(); }
    const Variant& operator[](int field) const { return (*rows_)[field]; }

private:
    void ReadPiece();

    std::string table_;
    std::string key_;
    const std::vector<Currency>& lines_;
    std::size_t next_ = 0;           ///< the first line that was not read yet
    std::optional<Recordset> rows_;  ///< none behind the last
};

}  // namespace zolmara
