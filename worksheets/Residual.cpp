#include "worksheets/Residual.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "core/Globals.h"
#include "store/TableCells.h"
#include "store/session/Session.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

/// The largest cell of a column so far. A Null counts as 0 against another part's.
struct Candidate {
    int Part = 0;  ///< 0 while there is none
    Currency Line;
    double Size = 0;
};

using Row = TableCells::Row;
using Findings = std::vector<ColumnFinding>;

/// What the columns with a gap hold.
Findings LookThrough(const TableCells& cells, const std::vector<Gap>& gaps) {
    Findings findings(static_cast<std::size_t>(cells.FieldCount()));
    for (const Row row : cells.Rows()) {
        const Currency line = cells.Line(row);
        if (line >= kPartTotal) break;
        for (const Gap& gap : gaps)
            findings[static_cast<std::size_t>(gap.Position)].Add(
                line, cells.Amount(row, gap.Position), cells.IsNull(row, gap.Position));
    }
    return findings;
}

/// Against the parts ahead of it a part's largest cell must be larger.
void TakeLarger(Candidate& largest, int part, const ColumnFinding& found) {
    if (found.IsEmpty) return;
    const double size = std::max(found.Size, 0.0);
    if (largest.Part == 0 || size > largest.Size) largest = {part, found.Line, size};
}

std::vector<Candidate> LargestCells(std::string_view family, const std::vector<Gap>& gaps,
                                    KeptColumns& kept) {
    std::vector<Candidate> largest(gaps.size());
    for (const int part : {1, 2, 3}) {
        const TableCells& cells = CellsOf(gDB, TableOf(family, part));
        const TableFindings& known = kept.FindingsOf(cells);
        const Findings found = known.AreNew ? known.Columns : LookThrough(cells, gaps);
        for (std::size_t i = 0; i < gaps.size(); ++i)
            TakeLarger(largest[i], part, found.at(static_cast<std::size_t>(gaps[i].Position)));
    }
    return largest;
}

double Moved(double cell, const Gap& gap) { return ThroughText(cell - gap.Got + gap.Want); }

/// A row of the three tables, and the columns whose difference it takes.
using RowKey = std::pair<int, Currency>;
using Adjustments = std::map<RowKey, std::vector<Gap>>;

void Adjust(TableCells& cells, Currency line, const std::vector<Gap>& gaps, int totalPosition) {
    const auto row = cells.RowOn(line);
    if (!row) return;
    RowEdit edit(cells, *row);
    for (const Gap& gap : gaps) {
        edit.Set(gap.Position, Moved(edit.Amount(gap.Position), gap));
        edit.Set(totalPosition, Moved(edit.Amount(totalPosition), gap));
    }
    edit.Update();
}

}  // namespace

void CloseGaps(std::string_view family, const std::vector<Gap>& gaps, int totalPosition,
               KeptColumns& kept) {
    if (gaps.empty()) return;
    const std::vector<Candidate> largest = LargestCells(family, gaps, kept);
    Adjustments adjustments;
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        const auto& [part, line, size] = largest[i];
        if (part == 0) continue;
        adjustments[{part, line}].push_back(gaps[i]);
        adjustments[{part, kPartTotal}].push_back(gaps[i]);
        adjustments[{3, kGrandTotal}].push_back(gaps[i]);
    }
    ChangeCells(gDB, [&] {
        for (const auto& [row, columns] : adjustments) {
            TableCells& cells = CellsOf(gDB, TableOf(family, row.first));
            Adjust(cells, row.second, columns, totalPosition);
            kept.FindingsOf(cells).WithResidual.insert(row.second);
        }
    });
}

}  // namespace zolmara
