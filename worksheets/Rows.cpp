#include "worksheets/Rows.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

Currency LineOf(const Recordset& rows) { return CurOr(rows.Value(0)); }

double SumOf(std::string_view sql, std::initializer_list<Variant> args) {
    return NumOr(gDB.Scalar(sql, args));
}

std::vector<double> AmountsOf(const Recordset& row) {
    std::vector<double> amounts(static_cast<std::size_t>(row.FieldCount()));
    for (int i = 0; i < row.FieldCount(); ++i) {
        amounts[static_cast<std::size_t>(i)] = NumOr(row.Value(i));
    }
    return amounts;
}

Recordset RequiredRow(std::string_view table, Currency line) {
    Recordset row = gDB.OpenRecordset(fmt::format("SELECT * FROM {} WHERE LineNum=?;", table),
                                      {line}, dbOpenDynaset);
    if (row.Eof()) {
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet {} has no line {}.", table, NumberText(line)));
    }
    return row;
}

LineCursor::LineCursor(std::string_view table, std::string_view sql)
    : table_(table), rows_(gDB.OpenRecordset(sql)) {
    if (!rows_.Eof()) amounts_ = AmountsOf(rows_);
}

void LineCursor::Seek(Currency line) {
    while (!rows_.Eof() && LineOf(rows_) < line) rows_.MoveNext();
    if (!rows_.Eof() && LineOf(rows_) == line) amounts_ = AmountsOf(rows_);
}

double LineCursor::Amount(int position) const {
    const auto index = static_cast<std::size_t>(position);
    if (index >= amounts_.size()) {
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet {} lacks a line or column to read.", table_));
    }
    return amounts_[index];
}

}  // namespace zolmara
