#include "spreadsheet/PassingCells.h"

namespace zolmara {

/// None for a table that is not there.
PassingCells::Sheet* PassingCells::SheetOf(const std::string& item) {
    const auto known = sheets_.find(item);
    if (known != sheets_.end()) return &known->second;
    const std::vector<std::string>& fields = others_.Fields(item);
    if (fields.empty()) return nullptr;
    Sheet sheet{PassingRows(item, fields.front(), others_.Lines(item))};
    for (const std::string& field : fields)
        sheet.PositionOf.emplace(field, static_cast<int>(sheet.PositionOf.size()));
    return &sheets_.emplace(item, std::move(sheet)).first->second;
}

Variant PassingCells::Value(const CellRef& cell) {
    if (cell.Line != line_) return others_.Value(cell);
    Sheet* sheet = SheetOf(cell.Item);
    if (sheet == nullptr) return {};
    PassingRows& rows = sheet->Rows;
    while (!rows.Eof() && rows.Line() < cell.Line) rows.MoveNext();
    if (rows.Eof() || rows.Line() != cell.Line) return others_.Value(cell);
    const auto position = sheet->PositionOf.find(cell.Field);
    return position == sheet->PositionOf.end() ? Variant() : rows[position->second];
}

}  // namespace zolmara
