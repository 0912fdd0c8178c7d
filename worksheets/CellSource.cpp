#include "worksheets/CellSource.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

/// What is known of a worksheet so far.
struct StoreCells::Sheet {
    std::string Item;
    std::vector<std::string> Fields;
    std::unordered_map<std::string, std::size_t> PositionOf;
    std::vector<Currency> Lines;
    std::vector<std::vector<Variant>> Rows;                         ///< empty until read
    std::unordered_map<std::size_t, std::vector<Variant>> Columns;  ///< by position

    bool Exists() const { return !Fields.empty(); }

    std::size_t LastRow = 0;  ///< asked for; the next one asks for it again, or for the next

    bool IsFirstOn(std::size_t row, Currency line) const {
        return row < Lines.size() && Lines[row] == line && (row == 0 || Lines[row - 1] < line);
    }

    std::optional<std::size_t> RowOf(Currency line) {
        for (const std::size_t row : {LastRow, LastRow + 1})
            if (IsFirstOn(row, line)) return LastRow = row;
        const auto row = Search(line);
        if (row) LastRow = *row;
        return row;
    }

    std::optional<std::size_t> Search(Currency line) const {
        const auto found = std::ranges::lower_bound(Lines, line);
        if (found == Lines.end() || *found != line) return std::nullopt;
        return static_cast<std::size_t>(found - Lines.begin());
    }

    std::optional<std::size_t> Position(const std::string& field) const {
        const auto found = PositionOf.find(field);
        return found == PositionOf.end() ? std::nullopt : std::optional(found->second);
    }
};

struct StoreCells::Cache {
    std::unordered_map<std::string, Sheet> Sheets;
    Sheet* Last = nullptr;  ///< asked for
};

namespace {

std::vector<Variant> RowInHand(const Recordset& rows) {
    std::vector<Variant> row;
    row.reserve(static_cast<std::size_t>(rows.FieldCount()));
    for (int i = 0; i < rows.FieldCount(); ++i) row.push_back(rows[i]);
    return row;
}

}  // namespace

StoreCells::StoreCells() : cache_(std::make_unique<Cache>()) {}
StoreCells::~StoreCells() = default;

StoreCells::Sheet& StoreCells::SheetOf(const std::string& item) {
    if (cache_->Last != nullptr && cache_->Last->Item == item) return *cache_->Last;
    const auto known = cache_->Sheets.find(item);
    if (known != cache_->Sheets.end()) return *(cache_->Last = &known->second);
    Sheet& sheet = cache_->Sheets[item];
    sheet.Item = item;
    if (!gDB.HasTable(item)) return sheet;
    for (const FieldDef& field : gDB.Table(item).Fields) {
        sheet.PositionOf.emplace(field.Name, sheet.Fields.size());
        sheet.Fields.push_back(field.Name);
    }
    Recordset lines = gDB.OpenRecordset(
        fmt::format("SELECT {0} FROM {1} ORDER BY {0};", sheet.Fields.front(), item),
        dbOpenSnapshot);
    for (; !lines.Eof(); lines.MoveNext()) sheet.Lines.push_back(CurOr(lines[0]));
    sheet.Rows.resize(sheet.Lines.size());
    return sheet;
}

const std::vector<Currency>& StoreCells::Lines(const std::string& item) {
    return SheetOf(item).Lines;
}

const std::vector<std::string>& StoreCells::Fields(const std::string& item) {
    return SheetOf(item).Fields;
}

Variant StoreCells::Value(const CellRef& cell) {
    Sheet& sheet = SheetOf(cell.Item);
    const auto row = sheet.RowOf(cell.Line);
    const auto position = sheet.Position(cell.Field);
    if (!row || !position) return {};
    if (!sheet.Rows[*row].empty()) return sheet.Rows[*row][*position];
    const auto column = sheet.Columns.find(*position);
    if (column != sheet.Columns.end()) return column->second[*row];
    const Recordset read = gDB.OpenRecordset(
        fmt::format("SELECT * FROM {} WHERE {}=?;", sheet.Item, sheet.Fields.front()), {cell.Line},
        dbOpenSnapshot);
    if (read.Eof()) return {};
    sheet.Rows[*row] = RowInHand(read);
    return sheet.Rows[*row][*position];
}

void StoreCells::Expect(const std::string& item, const std::string& field) {
    Sheet& sheet = SheetOf(item);
    const auto position = sheet.Position(field);
    if (!position || sheet.Columns.contains(*position)) return;
    if (std::ranges::none_of(sheet.Rows, &std::vector<Variant>::empty)) return;
    std::vector<Variant>& column = sheet.Columns[*position];
    Recordset rows = gDB.OpenRecordset(
        fmt::format("SELECT [{}] FROM {} ORDER BY {};", field, sheet.Item, sheet.Fields.front()),
        dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) column.push_back(rows[0]);
    column.resize(sheet.Lines.size());
}

void StoreCells::ReadAll(const std::string& item) {
    Sheet& sheet = SheetOf(item);
    if (!sheet.Exists()) return;
    Recordset rows = gDB.OpenRecordset(
        fmt::format("SELECT * FROM {} ORDER BY {};", sheet.Item, sheet.Fields.front()),
        dbOpenSnapshot);
    for (std::size_t i = 0; !rows.Eof() && i < sheet.Rows.size(); rows.MoveNext(), ++i) {
        sheet.Rows[i] = RowInHand(rows);
    }
}

}  // namespace zolmara
