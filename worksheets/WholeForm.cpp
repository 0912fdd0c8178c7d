#include "worksheets/WholeForm.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

#include "core/Globals.h"
#include "store/AmountRows.h"
#include "store/TableCells.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/FormLines.h"
#include "worksheets/Rows.h"
#include "worksheets/Schedules.h"
#include "worksheets/W_Bpx.h"

namespace zolmara {
namespace {

/// Lines of the form that are always there, from one to another.
struct Lines {
    std::string_view Item;
    std::int64_t From;
    std::int64_t To;
};
constexpr std::array<Lines, 17> kLines = {
    {{"Sp1", 1, 10},
     {"S1p1", 1, 5},
     {"S1p2", 1, 5},
     {"A6", kTotalOfEntries.Whole(), kTotalOfEntries.Whole()},
     {"A7p1", 1, 9},
     {"A7p2", 3, 3},
     {"A81p1", kTotalOfEntries.Whole(), kTotalOfEntries.Whole()},
     {"A8", 1, 17},
     {"A8", kTotalOfEntries.Whole(), kTotalOfEntries.Whole()},
     {"A", 3, 3},
     {"A", 7, 7},
     {"A", kNonCapitalSubtotal.Whole(), kTotalOfA.Whole()},
     {"E", 1, 4},
     {"G", 1, 48},
     {"G1", 1, 9},
     {"G1", 15, 15},
     {"G1", 21, 22}}};

/// The table whose lines a worksheet has one for one, and where they end.
struct Follows {
    std::string Table;
    Currency Below;
};

Follows FollowedBy(const Worksheet& sheet) {
    if (sheet.Item == "A") return {"CostCenters", kTotalOfA};
    if (sheet.Item == "A7p2") return {"CostCenters", kCapitalSubtotal};
    const Schedule* schedule = FindSchedule(sheet.Item);
    if (!schedule || !schedule->HasParts) return {};
    return {fmt::format("S2p{}", PartOf(sheet.Item)), kPartTotal};
}

std::int64_t LastFixedLine(const Schedule& schedule, char part) {
    if (part != '3') return kPartTotal.Whole();
    return schedule.Kind == ScheduleKind::Statistics ? kUnitCostMultiplier.Whole()
                                                     : kGrandTotal.Whole();
}

using LineList = std::vector<Currency>;

void Append(LineList& lines, std::int64_t from, std::int64_t to) {
    for (auto line = from; line <= to; ++line) lines.push_back(Currency::FromWhole(line));
}

LineList FormLinesOf(const Worksheet& sheet) {
    LineList lines;
    for (const Lines& some : kLines)
        if (some.Item == sheet.Item) Append(lines, some.From, some.To);
    const Schedule* schedule = FindSchedule(sheet.Item);
    if (schedule && schedule->HasParts)
        Append(lines, kPartTotal.Whole(), LastFixedLine(*schedule, PartOf(sheet.Item)));
    return lines;
}

LineList LinesOf(const TableCells& cells) {
    LineList lines;
    for (const TableCells::Row row : cells.Rows()) lines.push_back(cells.Line(row));
    return lines;
}

/// Those of a table whose amounts are not to be read for it.
LineList LinesAlone(std::string_view table) {
    if (const auto kept = KeptCellsOf(gDB, table)) return LinesOf(*kept);
    LineList lines;
    const AmountRows rows(gDB, table, {},
                          [&](const Variant& line, RowTexts) { lines.push_back(CurOr(line)); });
    std::ranges::sort(lines);
    return lines;
}

std::string NoLine(std::string_view table, Currency line) {
    return fmt::format("Worksheet {} has no line {}.", table, NumberText(line));
}

void NeedAll(std::string_view table, const LineList& have, const LineList& need) {
    LineList missing;
    std::ranges::set_difference(need, have, std::back_inserter(missing));
    if (missing.empty()) return;
    throw StoreError(StoreError::Kind::Other, fmt::format("Worksheet {} has no line {}.", table,
                                                          NumberText(missing.front())));
}

void NeedRows(const Worksheet& sheet, const LineList& have) {
    const LineList form = FormLinesOf(sheet);
    NeedAll(sheet.Item, have, form);
    const Follows follows = FollowedBy(sheet);
    if (follows.Table.empty() || !gDB.HasTable(follows.Table)) return;
    const auto isOwn = [&](Currency line) {
        return line < follows.Below && !std::ranges::binary_search(form, line);
    };
    LineList own, followed;
    std::ranges::copy_if(have, std::back_inserter(own), isOwn);
    std::ranges::copy_if(LinesOf(CellsOf(gDB, follows.Table)), std::back_inserter(followed), isOwn);
    NeedAll(sheet.Item, own, followed);
    NeedAll(follows.Table, followed, own);
}

using FieldList = std::vector<WorksheetField>;

bool Has(const FieldList& fields, std::string_view name) {
    return std::ranges::any_of(
        fields, [&](const WorksheetField& field) { return SameText(field.Name, name); });
}

/// A column that the worksheet does not have; one of a cost center asks for that cost center.
std::string OfStranger(std::string_view item, std::string_view column) {
    if (IsCostCenterColumn(column)) return NoLine("CostCenters", LineOfColumn(column));
    return fmt::format("Worksheet {} has a column that is not the form's: {}.", item, column);
}

/// The columns of the cost centers in a schedule; all other pools stand right ahead of interest
/// income.
std::vector<std::string> CenterNames(const Schedule& schedule) {
    std::vector<std::string> names;
    for (const Currency line : CostCenterLines(schedule)) {
        if (schedule.Kind == ScheduleKind::Pooled && line == kInterestIncome)
            names.emplace_back(kAllOtherPools);
        names.push_back(CostCenterColumn(line));
    }
    return names;
}

/// The names of the worksheet's fields in their order, without the titles that these take time to
/// make.
std::vector<std::string> ColumnNames(const Worksheet& sheet) {
    std::vector<std::string> names;
    for (const WorksheetField& field : sheet.FixedFields(sheet.Item)) names.push_back(field.Name);
    const Schedule* schedule = sheet.CostCenterCells ? FindSchedule(sheet.Item) : nullptr;
    if (!schedule) return names;
    if (schedule->Kind == ScheduleKind::Pooled) names.pop_back();
    const std::vector<std::string> centers = CenterNames(*schedule);
    names.insert(names.begin() + schedule->FirstColumn, centers.begin(), centers.end());
    return names;
}

using NameList = std::vector<std::string_view>;

NameList FieldNames(const TableCells& cells) {
    NameList names;
    for (int i = 0; i < cells.FieldCount(); ++i) names.emplace_back(cells.FieldName(i));
    return names;
}

NameList FieldNames(const TableDef& table) {
    NameList names;
    for (const FieldDef& field : table.Fields) names.emplace_back(field.Name);
    return names;
}

/// What is wrong with the columns of a table; empty where nothing is. Those of a schedule are
/// counted, so each must stand in its place.
std::string WrongColumn(const TableDef& table, const FieldList& fields) {
    for (const WorksheetField& field : fields)
        if (table.FieldIndex(field.Name) < 0)
            return fmt::format("Worksheet {} has no column {}.", table.Name, field.Name);
    if (!FindSchedule(table.Name)) return {};
    for (const FieldDef& column : table.Fields)
        if (!Has(fields, column.Name)) return OfStranger(table.Name, column.Name);
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (!SameText(table.Fields[i].Name, fields[i].Name))
            return fmt::format("Worksheet {} has its column {} in another place.", table.Name,
                               fields[i].Name);
    return {};
}

void NeedColumns(const Worksheet& sheet, const NameList& have) {
    if (std::ranges::equal(have, ColumnNames(sheet))) return;
    const std::string wrong = WrongColumn(gDB.Table(sheet.Item), sheet.Fields(sheet.Item));
    if (!wrong.empty()) throw StoreError(StoreError::Kind::Other, wrong);
}

/// Every table is asked for, so that the next calculation goes by it.
bool HasNewShape(const Worksheet& sheet, KeptColumns& kept) {
    std::vector<std::string> tables = {std::string(sheet.Item)};
    if (sheet.CostCenterCells) tables.emplace_back("CostCenters");
    const std::string followed = FollowedBy(sheet).Table;
    if (!followed.empty() && gDB.HasTable(followed)) tables.push_back(followed);
    bool isNew = false;
    for (const std::string& table : tables)
        isNew = kept.ChangesOf(CellsOf(gDB, table)).Shape() || isNew;
    return isNew;
}

}  // namespace

void NeedWholeForm(std::string_view item, KeptColumns& kept) {
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet && gDB.HasTable(sheet->Item) && HasNewShape(*sheet, kept)) NeedWholeForm(item);
}

void NeedWholeForm(std::string_view item, FormAmounts amounts) {
    const Worksheet* sheet = FindWorksheet(item);
    if (!sheet || !gDB.HasTable(sheet->Item)) return;
    if (amounts == FormAmounts::Kept) {
        const TableCells& cells = CellsOf(gDB, sheet->Item);
        NeedColumns(*sheet, FieldNames(cells));
        NeedRows(*sheet, LinesOf(cells));
    } else {
        NeedColumns(*sheet, FieldNames(gDB.Table(sheet->Item)));
        NeedRows(*sheet, LinesAlone(sheet->Item));
    }
}

}  // namespace zolmara
