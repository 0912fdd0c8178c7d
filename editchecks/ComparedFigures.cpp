#include "editchecks/ComparedFigures.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "editchecks/RowChecks.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/CellNames.h"
#include "worksheets/CellSource.h"
#include "worksheets/SheetNames.h"

namespace zolmara {
namespace {

/// A message of the checks and the cells that it compares. In a message "{c}" is a number, the same
/// wherever it stands, "{k}" a code and "{*}" anything. Cells are "Item|line|field", joined by "-";
/// "{c}" in them is the number, "CC_{c}" the column of that cost center; the line "{k}" is every
/// line of the run of entries with that code.
struct ComparedCells {
    std::string_view Code;  ///< every code where empty
    std::string_view Message;
    std::string_view Left;
    std::string_view Right;
};

constexpr ComparedCells kCompared[] = {
    {"1020A", "{*}Line 100, column 5 must equal column 8.", "A6|100|Col_5", "A6|100|Col_8"},
    {"1025A",
     "{*}For each reclassification code ({k}) the sum of all increases ({*}) must equal the sum of "
     "all decreases ({*}).",
     "A6|{k}|Col_5", "A6|{k}|Col_8"},
    {"1060A", "{*}total in column 15 ({*}) must equal A column 5 ({*}) for line number{c}.",
     "A7p2|{c}|Col_15", "A|{c}|Col_5"},
    {"1060B", "{*}line 52, column {c} must equal A, line {c}, column 6.", "B1p3|52|CC_{c}",
     "A|{c}|Col_6"},
    {"", "B Part III, line 52, column {c} must equal A, line {c}, column 6.", "Bp3|52|CC_{c}",
     "A|{c}|Col_6"},
    {"1000C", "{*}column {c} must equal A, line {c}, column 7.", "Cp3|52|CC_{c}", "A|{c}|Col_7"},
    {"1020C", "{*}column {c} must equal A, line {c}, column 7.", "C1p3|53|CC_{c}", "A|{c}|Col_7"},
    {"1000D", "{*}column {c} must equal A, line {c}, column 7.", "Dp3|52|CC_{c}", "A|{c}|Col_7"},
    {"1020D", "{*}column {c} must equal A, line {c} column 7.", "D1p3|53|CC_{c}", "A|{c}|Col_7"},
    {"1020D", "{*}column {c} must equal D Part III, line 52 column {c}.", "D1p3|53|CC_{c}",
     "Dp3|52|CC_{c}"},
    {"", "Worksheet E, line 4, column {*} must equal A, line {c} column 8.", "E|4|CC_{c}",
     "A|{c}|Col_8"},
    {"", "Worksheet E-1, line 52, column {*} must equal A, line {c} column 8.", "E1p3|52|CC_{c}",
     "A|{c}|Col_8"},
    {"1100E", "Worksheet E-1, line 52, column 7 must equal A, line 99, column 8 minus {*}",
     "E1p3|52|Col_7", "A|99|Col_8-A|8|Col_8-A|9|Col_8-A|28|Col_8"},
    {"2000G", "Worksheet G: lines 32 and line 48 should be equal.", "G|32|Col_1", "G|48|Col_1"},
    {"2050A", "{*}should be equal G Line 26 column 1.", "A7p1|9|Col_6", "G|26|Col_1"},
};

/// The number that stands for "{c}", or the code for "{k}": empty where there is none in the
/// pattern; nothing where the message is another.
std::optional<std::string> NumberIn(std::string_view message, std::string_view pattern,
                                    std::string number = {}) {
    const std::size_t brace = pattern.find('{');
    if (brace == std::string_view::npos) {
        return message == pattern ? std::optional(number) : std::nullopt;
    }
    if (!message.starts_with(pattern.substr(0, brace))) return std::nullopt;
    message.remove_prefix(brace);
    const char kind = pattern[brace + 1];
    const bool isNumber = kind == 'c';
    pattern.remove_prefix(brace + 3);
    const std::size_t digits = std::min(message.find_first_not_of("0123456789."), message.size());
    for (std::size_t length = isNumber ? 1 : 0; length <= (isNumber ? digits : message.size());
         ++length) {
        const std::string taken(message.substr(0, length));
        if (isNumber && !number.empty() && taken != number) continue;
        if (auto found = NumberIn(message.substr(length), pattern, kind == '*' ? number : taken)) {
            return found;
        }
    }
    return std::nullopt;
}

CellRef CellNamed(std::string_view name, const std::string& number) {
    const std::size_t line = name.find('|') + 1;
    const std::size_t field = name.find('|', line) + 1;
    const Currency named(Val(number));
    const std::string_view lineText = name.substr(line, field - line - 1);
    const std::string_view fieldText = name.substr(field);
    return {std::string(name.substr(0, line - 1)),
            lineText == "{c}" ? named : Currency(Val(lineText)),
            fieldText == "CC_{c}" ? CostCenterColumn(named) : std::string(fieldText)};
}

/// The entries of A-6 that the check adds up under a code: those that follow each other. Where a
/// code comes in several runs, the first whose sums differ.
std::vector<Currency> LinesOfCode(std::string_view code) {
    Recordset rows = gDB.OpenRecordset(
        "SELECT LineNum, Col_2, Col_5, Col_8 FROM A6 WHERE LineNum<99 ORDER BY LineNum;",
        dbOpenSnapshot);
    std::vector<Currency> run;
    double difference = 0;
    for (; !rows.Eof(); rows.MoveNext()) {
        if (SameText(StrOr(rows[1]), code)) {
            run.push_back(CurOr(rows[0]));
            difference += NumOr(rows[2]) - NumOr(rows[3]);
        } else if (Currency(difference) != Currency()) {
            break;
        } else {
            run.clear();
            difference = 0;
        }
    }
    return run;
}

void AddCell(ComparedSide& side, int sign, const CellRef& cell, CellSource& cells) {
    side.Cells.push_back({sign, cell});
    side.Value = ThroughText(side.Value + sign * NumOr(cells.Value(cell)));
}

ComparedSide SideOf(std::string_view names, const std::string& named, CellSource& cells) {
    ComparedSide side;
    for (int sign = 1; !names.empty(); sign = -1) {
        const std::size_t end = std::min(names.find('-'), names.size());
        const std::string_view name = names.substr(0, end);
        CellRef cell = CellNamed(name, named);
        if (name.find("|{k}|") == std::string_view::npos) {
            AddCell(side, sign, cell, cells);
        } else {
            for (const Currency line : LinesOfCode(named)) {
                cell.Line = line;
                AddCell(side, sign, cell, cells);
            }
        }
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return side;
}

}  // namespace

std::optional<Comparison> ComparisonOf(std::string_view code, std::string_view message) {
    for (const ComparedCells& compared : kCompared) {
        if (!compared.Code.empty() && compared.Code != code) continue;
        const auto number = NumberIn(message, compared.Message);
        if (!number) continue;
        StoreCells cells;
        Comparison comparison{SideOf(compared.Left, *number, cells),
                              SideOf(compared.Right, *number, cells)};
        comparison.Difference = ThroughText(comparison.Left.Value - comparison.Right.Value);
        return comparison;
    }
    return std::nullopt;
}

bool IsRun(const ComparedSide& side) {
    return side.Cells.size() > 1 && std::ranges::all_of(side.Cells, [&](const SignedCell& cell) {
               const CellRef& first = side.Cells.front().Cell;
               return cell.Sign > 0 && cell.Cell.Item == first.Item &&
                      cell.Cell.Field == first.Field;
           });
}

namespace {

/// A column's cells, told as one: "A-6, lines 1 to 14, column 5".
std::string RunText(const ComparedSide& side) {
    const CellRef& first = side.Cells.front().Cell;
    return fmt::format("{}, lines {} to {}, column {}", PrintedName(first.Item),
                       NumberText(first.Line), NumberText(side.Cells.back().Cell.Line),
                       ColumnNumber(first.Field));
}

}  // namespace

std::string SideText(const ComparedSide& side) {
    if (IsRun(side)) return RunText(side);
    std::string text;
    for (const SignedCell& cell : side.Cells) {
        if (!text.empty()) text += cell.Sign < 0 ? " less " : " plus ";
        text += CellName(cell.Cell);
    }
    return text;
}

}  // namespace zolmara
