// The checks of the allocation schedules B, C and D: their columns against worksheet A, and their
// statistics against the costs that they spread.

#include <fmt/format.h>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"
#include "worksheets/SheetNames.h"

namespace zolmara {
namespace {

// --- Columns against worksheet A -----------------------------------------------------------

/// A row whose cost center cells must equal a column of worksheet A, and sometimes the same cells
/// of another row too. "{c}" in a message is the cost center's column.
struct ColumnMatch {
    std::string_view Row;
    std::string_view Lines;
    std::string_view Column;
    std::string_view NoLine;  ///< "VLQ" for a column without a line; none when empty
    std::string_view Code;
    std::string_view Differs;
    std::string_view Other = "";
    std::string_view OtherDiffers = "";
};

constexpr ColumnMatch kB1p3{
    "Select * From B1p3 Where LineNum=52;",
    "Select * From A Where LineNum<99;",
    "Col_6",
    "B Part III, line 52, column {c} must have a line {c} within A.",
    "1060B",
    "B Part III, line 52, column {c} must equal A, line {c}, column 6.",
};
constexpr ColumnMatch kCp3{
    "Select * From Cp3 Where LineNum=52;",
    "Select * From A Where LineNum<3;",
    "Col_7",
    "C Part III, line 52, column {c} must have a line {c} within A.",
    "1000C",
    "C Part III, line 52, column {c} must equal A, line {c}, column 7.",
};
constexpr ColumnMatch kC1p3{
    "Select * From C1p3 Where LineNum=53;",
    "Select * From A Where LineNum<3;",
    "Col_7",
    "C-1 Part III, line 52, column {c} must have a line {c} within A.",
    "1020C",
    "C-1 Part III, line 52, column {c} must equal A, line {c}, column 7.",
    "Select * From Cp3 Where LineNum=52;",
    "C-1 Part III, line 52, column {c} must equal A, line {c}, column 7.",
};
constexpr ColumnMatch kDp3{
    "Select * From Dp3 Where LineNum=52;",
    "Select * From A Where LineNum<99;",
    "Col_7",
    "D Part III, line 52, column {c} must have a line {c} within A.",
    "1000D",
    "D Part III, line 52, column {c} must equal A, line {c}, column 7.",
};
constexpr ColumnMatch kD1p3{
    "Select * From D1p3 Where LineNum=53;",
    "Select * From A;",
    "Col_7",
    "",
    "1020D",
    "D-1 Part III, line 53, column {c} must equal A, line {c} column 7.",
    "Select * From Dp3 Where LineNum=52;",
    "D-1 Part III, line 53, column {c} must equal D Part III, line 52 column {c}.",
};

std::map<Currency, double> AmountsByColumn(std::string_view statement) {
    std::map<Currency, double> amounts;
    for (const CostCenterCell& cell : CostCenterCells(statement))
        amounts.emplace(cell.Line, cell.Amount);
    return amounts;
}

void CheckAgainstLine(const ColumnMatch& match, const CostCenterCell& cell,
                      const std::map<Currency, double>& lines) {
    const auto found = lines.find(cell.Line);
    if (found != lines.end()) {
        if (Differ(cell.Amount, found->second))
            AddNonFatal(match.Code, Fill(match.Differs, "c", cell.Column()));
    } else if (!match.NoLine.empty()) {
        AddNonFatal("VLQ", Fill(match.NoLine, "c", cell.Column()));
    }
}

void CheckAgainstRow(const ColumnMatch& match, const CostCenterCell& cell,
                     const std::map<Currency, double>& others) {
    if (others.empty()) return;
    const auto found = others.find(cell.Line);
    const double other = found == others.end() ? 0 : found->second;
    if (Differ(cell.Amount, other))
        AddNonFatal(match.Code, Fill(match.OtherDiffers, "c", cell.Column()));
}

void CheckMatch(const ColumnMatch& match) {
    const auto lines = AmountsByLine(match.Lines, match.Column);
    std::map<Currency, double> others;
    if (!match.Other.empty()) others = AmountsByColumn(match.Other);
    for (const CostCenterCell& cell : CostCenterCells(match.Row)) {
        CheckAgainstLine(match, cell, lines);
        if (!match.Other.empty()) CheckAgainstRow(match, cell, others);
    }
}

// --- Statistics against costs --------------------------------------------------------------

/// Columns whose statistics may not be below zero while they have a cost to spread.
struct StatisticRule {
    std::string_view Code;
    bool (*Covers)(Currency column);
    bool (*HasCost)(double cost);
    std::string_view Message;  ///< "{c}" column, "{part}" schedule, "{line}" component
};

struct StatisticSchedule {
    std::string_view Family;
    std::string_view Costs;
    std::string_view Rows;  ///< behind the table's name
    std::span<const StatisticRule> Rules;
};

constexpr StatisticRule kC1Rules[] = {
    {"1010C", [](Currency) { return true; }, IsAboveZero,
     "C-1 Part III, line 53, column {c} when greater than zero, {part}, line {line}, column {c} "
     "must be greater than or equal zero."},
};
/// Interest income is a negative cost; the columns from its line on go by the size of the cost.
constexpr StatisticRule kD1Rules[] = {
    {"1010D", [](Currency column) { return column < kInterestIncome; }, IsAboveZero,
     "D-1 Part III, line 53, column {c} when greater than zero, {part}, line {line}, column {c} "
     "must be greater than or equal zero."},
    {"1015D", [](Currency column) { return column >= kInterestIncome; },
     [](double cost) { return !IsZero(cost); },
     "D-1 Part III, line 53, column {c} when not zero, {part}, line {line}, column {c} must be "
     "greater than zero."},
};
constexpr StatisticSchedule kC1{"C1", "Select * From C1p3 Where LineNum=53;", "Where LineNum<51;",
                                kC1Rules};
constexpr StatisticSchedule kD1{"D1", "Select * From D1p3 Where LineNum=53;",
                                "Where LineNum<51 Order by LineNum;", kD1Rules};

/// A column that the rule watches, and where it stands in the table in hand.
struct WatchedColumn {
    int Position;
    std::string Column;
    const StatisticRule* Rule;
};

const StatisticRule* RuleFor(std::span<const StatisticRule> rules, const CostCenterCell& cost) {
    for (const StatisticRule& rule : rules) {
        if (rule.Covers(cost.Line) && rule.HasCost(cost.Amount)) return &rule;
    }
    return nullptr;
}

/// The rules of the columns that have a cost to spread.
std::map<Currency, const StatisticRule*> RulesInForce(const StatisticSchedule& schedule) {
    std::map<Currency, const StatisticRule*> rules;
    for (const CostCenterCell& cost : CostCenterCells(schedule.Costs)) {
        if (const StatisticRule* rule = RuleFor(schedule.Rules, cost))
            rules.emplace(cost.Line, rule);
    }
    return rules;
}

std::vector<WatchedColumn> WatchedColumns(const Recordset& rows,
                                          const std::map<Currency, const StatisticRule*>& rules) {
    std::vector<WatchedColumn> watched;
    for (int i = 0; i < rows.FieldCount(); ++i) {
        if (!IsCostCenterColumn(rows.FieldName(i))) continue;
        const Currency column = LineOfColumn(rows.FieldName(i));
        const auto found = rules.find(column);
        if (found != rules.end()) watched.push_back({i, NumberText(column), found->second});
    }
    return watched;
}

void ReportStatistic(const WatchedColumn& column, const std::string& item, const Recordset& row) {
    std::string message = Fill(column.Rule->Message, "c", column.Column);
    message = Fill(message, "part", PrintedName(item));
    AddNonFatal(column.Rule->Code, Fill(message, "line", KeyText(row)));
}

void CheckStatistics(const StatisticSchedule& schedule) {
    const auto rules = RulesInForce(schedule);
    for (int part = 1; part <= 3; ++part) {
        const std::string item = fmt::format("{}p{}", schedule.Family, part);
        Recordset rows = gDB.OpenRecordset(fmt::format("Select * From {} {}", item, schedule.Rows),
                                           dbOpenSnapshot);
        const std::vector<WatchedColumn> watched = WatchedColumns(rows, rules);
        for (; !rows.Eof(); rows.MoveNext()) {
            for (const WatchedColumn& column : watched) {
                if (IsBelowZero(NumOr(rows[column.Position]))) ReportStatistic(column, item, rows);
            }
        }
    }
}

// --- Direct allocations below zero ---------------------------------------------------------

bool IsAmount(FieldType type) {
    return type == FieldType::dbDouble || type == FieldType::dbCurrency;
}

void CheckDirectSchedule(const std::string& item) {
    Recordset rows = gDB.OpenRecordset(
        fmt::format("Select * From {} Where LineNum<51 Order by LineNum;", item), dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        for (int i = 0; i < rows.FieldCount(); ++i) {
            if (!IsAmount(rows.TypeOf(i)) || !IsBelowZero(NumOr(rows[i]))) continue;
            AddNonFatal("2000B", fmt::format("{}, Line {}: Amounts should be greater than or equal "
                                             "to zero.",
                                             PrintedName(item), KeyText(rows)));
        }
    }
}

}  // namespace

/// The first two columns of B are held against the first two lines of A, in their order.
void CheckBp3AgainstA() {
    const std::vector<CostCenterCell> totals =
        CostCenterCells("Select * From Bp3 Where LineNum=52;");
    Recordset lines = gDB.OpenRecordset("Select * From A Order By LineNum;", dbOpenSnapshot);
    for (std::size_t n = 1; n <= 2; ++n) {
        if (n > totals.size() || lines.Eof()) return;
        if (Differ(totals[n - 1].Amount, CellNumber(lines, "Col_6")))
            AddNonFatal(fmt::format("10{}0B", n),
                        fmt::format("B Part III, line 52, column {0} must equal A, line {0}, "
                                    "column 6.",
                                    n));
        lines.MoveNext();
    }
}

void CheckB1p3AgainstA() { CheckMatch(kB1p3); }
void CheckCp3AgainstA() { CheckMatch(kCp3); }
void CheckC1p3Costs() { CheckMatch(kC1p3); }
void CheckDp3AgainstA() { CheckMatch(kDp3); }
void CheckD1p3Costs() { CheckMatch(kD1p3); }

void CheckC1Statistics() { CheckStatistics(kC1); }
void CheckD1Statistics() { CheckStatistics(kD1); }

/// A negative direct amount blocks the report, although amounts below zero elsewhere do not.
void CheckDirectAmounts() {
    for (const Schedule& schedule : AllSchedules()) {
        if (schedule.Kind != ScheduleKind::Direct) continue;
        for (const int part : {1, 2, 3}) CheckDirectSchedule(TableOf(schedule, part));
    }
}

}  // namespace zolmara
