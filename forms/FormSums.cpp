// The figures of a window's status line.

#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/WorksheetForm.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

double Amount(const RowEntry* keyed, const Recordset& row, std::string_view field) {
    const Variant* value = keyed == nullptr ? nullptr : keyed->Find(field);
    return NumOr(value != nullptr ? *value : row[field]);
}

bool HasCode(const RowEntry* keyed, const Recordset& row, std::string_view code) {
    const Variant* value = keyed == nullptr ? nullptr : keyed->Find("Col_2");
    return SameText(Text(value != nullptr ? *value : row["Col_2"]), code);
}

/// Line numbers and codes are no amounts.
bool IsAmount(const FormColumn& column) {
    return !column.Hidden && !column.Identity && !column.NumberFormat.starts_with("##0");
}

}  // namespace

CodeSums SumsOfCode(std::string_view code, const RowEntry* keyed) {
    CodeSums sums;
    sums.Code = code;
    auto rows = gDB.OpenRecordset("SELECT LineNum, Col_2, Col_5, Col_8 FROM A6 WHERE LineNum<100;",
                                  dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const bool own = keyed != nullptr && CurOr(rows["LineNum"]) == keyed->Line;
        const RowEntry* entry = own ? keyed : nullptr;
        if (!HasCode(entry, rows, code)) continue;
        sums.Increases += Amount(entry, rows, "Col_5");
        sums.Decreases += Amount(entry, rows, "Col_8");
    }
    return sums;
}

BlockSums SumsOfBlock(const WorksheetForm& form, const FormRows& rows, const BlockRange& range) {
    BlockSums sums;
    const int columns = static_cast<int>(form.Columns.size());
    for (int row = range.FirstRow; row <= range.LastRow; ++row)
        for (int column = range.FirstColumn; column <= range.LastColumn; ++column) {
            if (column < 0 || column >= columns) continue;
            if (!IsAmount(form.Columns[static_cast<std::size_t>(column)])) continue;
            const Variant value = rows.Cell(row, column);
            if (!value.IsNumber()) continue;
            sums.Sum += value.Number();
            ++sums.Count;
        }
    return sums;
}

}  // namespace zolmara
