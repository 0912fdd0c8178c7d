#include "spreadsheet/KeyedCells.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/CellRoads.h"
#include "forms/CellRules.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/W_A8.h"
#include "worksheets/W_S1p2.h"

namespace zolmara {

namespace {

/// In the order in which an import loads them; the last ones it does not take at all.
constexpr std::string_view kTables[] = {
    "CostCenters", "S1p1",  "S1p2", "S2p1", "S2p2", "S2p3", "A",    "A6",   "A7p1", "A7p2", "A8",
    "A81p1",       "A81p2", "Bp1",  "Bp2",  "Bp3",  "B1p1", "B1p2", "B1p3", "C1p1", "C1p2", "C1p3",
    "D1p1",        "D1p2",  "D1p3", "E1p1", "E1p2", "E1p3", "G",    "G1",   "Sp1",  "ES"};

/// Lines that were added and hold nothing come along by an empty text in one of their columns.
struct EmptyLine {
    std::string_view Table;
    std::int64_t From;
    bool OnlySubscripts;
    std::string_view Field;
};
constexpr EmptyLine kEmptyLines[] = {
    {"S1p2", 6, false, "Col_2"},  {"S2p1", 1, false, "Col_1"},  {"S2p2", 1, false, "Col_1"},
    {"S2p3", 1, false, "Col_1"},  {"A6", 1, false, "Col_1"},    {"A8", 18, false, "Col_1"},
    {"A81p1", 1, false, "Col_3"}, {"A81p2", 1, false, "Col_3"}, {"G1", 10, true, "Col_1"}};

constexpr const char* kNoRoad = "the import has no place for it";
constexpr const char* kNotWhole = "the import takes whole numbers alone here";

bool IsSeed(std::span<const SeedRow> seeds, Currency line, const std::string& text) {
    return std::ranges::any_of(seeds, [&](const SeedRow& seed) {
        return Currency::FromWhole(seed.Line) == line && seed.Text == text;
    });
}

/// True where a new file has the same in this cell.
bool ComesWithForm(const CellRef& cell, const std::string& text) {
    if (cell.Item == "A8" && cell.Field == "Col_1") return IsSeed(Seeds_A8(), cell.Line, text);
    if (cell.Item == "S1p2" && cell.Field == "Col_1") return IsSeed(Seeds_S1p2(), cell.Line, text);
    if (cell.Item == "Sp1") return text == "0" || FirstLetter(Variant(text)) == "N";
    if (cell.Item == "ES") return text == "Total" || text == "Costs" || text == "1";
    return false;
}

class Walker {
public:
    explicit Walker(const TakeKeyedCell& take) : take_(take) {}

    void WalkTable(const std::string& table) {
        if (!gDB.HasTable(table)) return;
        const TableRoads roads(table);
        Recordset rows = gDB.OpenRecordset(
            fmt::format("SELECT * FROM [{}] ORDER BY {};", table, LineKeyOf(table)),
            dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) WalkRow(table, roads, rows);
    }

    void WalkHeaderLines() {
        if (!gDB.HasTable("HeaderLines")) return;
        Recordset rows =
            gDB.OpenRecordset("SELECT LineNum, LineText FROM HeaderLines ORDER BY LineNum;");
        for (; !rows.Eof(); rows.MoveNext())
            if (!IsBlankValue(rows[1]))
                left_.push_back(
                    {{"HeaderLines", CurOr(rows[0]), "LineText"}, Text(rows[1]), kNoRoad});
    }

    std::vector<LeftCell> Left() { return std::move(left_); }

private:
    void WalkRow(const std::string& table, const TableRoads& roads, const Recordset& row) {
        const Currency line = CurOr(row[0]);
        bool any = false;
        for (int i = 1; i < row.FieldCount(); ++i) {
            if (IsBlankValue(row[i])) continue;
            const auto column = roads.ColumnOf(i, line);
            if (column)
                any |= Give(table, line, *column, row, i);
            else
                Leave(table, line, row, i);
        }
        if (!any) GiveEmptyLine(table, line, roads, row);
    }

    bool Give(const std::string& table, Currency line, Currency column, const Recordset& row,
              int field) {
        const Variant& value = row[field];
        const bool isNumber = value.IsNumber();
        if (isNumber && TakesWholeNumbers(table, row.FieldName(field)) &&
            value.Number() != std::trunc(value.Number())) {
            left_.push_back({{table, line, row.FieldName(field)}, Text(value), kNotWhole});
            return false;
        }
        take_({ImportNameOf(table), line, column, Text(value), isNumber});
        return true;
    }

    void Leave(const std::string& table, Currency line, const Recordset& row, int field) {
        const CellRef cell{table, line, row.FieldName(field)};
        const std::string text = Text(row[field]);
        if (text == "0" && row[field].IsNumber()) return;
        if (!IsCellOpen(table, line, cell.Field) || ComesWithForm(cell, text)) return;
        left_.push_back({cell, text, kNoRoad});
    }

    void GiveEmptyLine(const std::string& table, Currency line, const TableRoads& roads,
                       const Recordset& row) {
        for (const EmptyLine& empty : kEmptyLines) {
            const bool fits = empty.Table == table && line >= Currency::FromWhole(empty.From) &&
                              !(empty.OnlySubscripts && line.IsWhole());
            if (!fits) continue;
            const auto column = roads.ColumnOf(row.FieldIndex(empty.Field), line);
            if (column) take_({ImportNameOf(table), line, *column, "", false});
        }
    }

    const TakeKeyedCell& take_;
    std::vector<LeftCell> left_;
};

}  // namespace

std::vector<std::string> KeyedTables() { return {std::begin(kTables), std::end(kTables)}; }

std::vector<LeftCell> WalkKeyedCells(const TakeKeyedCell& take) {
    Walker walker(take);
    for (const std::string_view table : kTables) walker.WalkTable(std::string(table));
    walker.WalkHeaderLines();
    return walker.Left();
}

}  // namespace zolmara
