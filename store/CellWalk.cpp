#include "store/CellWalk.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <string>
#include <vector>

#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

std::string SelectOf(const TableCells& cells, std::span<const int> textFields) {
    std::string fields = "rowid";
    for (const int field : textFields) fields += "," + Quoted(cells.FieldName(field));
    return fmt::format("SELECT {} FROM {} ORDER BY {}", fields, Quoted(cells.Name()),
                       Quoted(cells.FieldName(0)));
}

std::string_view TextIn(const SqliteStatement& row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row.get(), column));
    const int size = sqlite3_column_bytes(row.get(), column);
    return text ? std::string_view(text, static_cast<std::size_t>(size)) : std::string_view();
}

[[noreturn]] void Changed(const TableCells& cells) {
    throw StoreError(
        StoreError::Kind::Other,
        fmt::format("table {} was changed while it was read; do it again", cells.Name()));
}

}  // namespace

void WalkLines(Database& db, const TableCells& cells, std::span<const int> textFields,
               const std::function<void(TableCells::Row row, RowTexts texts)>& onRow) {
    SqliteStatement rows(db.impl().Handle, SelectOf(cells, textFields));
    std::vector<std::string_view> texts(textFields.size());
    while (rows.Step(cells.Name())) {
        if (!cells.AreCurrent()) Changed(cells);
        const auto row = cells.RowWithId(rows.Integer(0));
        if (!row) Changed(cells);
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i] = TextIn(rows, static_cast<int>(i) + 1);
        onRow(*row, texts);
    }
}

}  // namespace zolmara
