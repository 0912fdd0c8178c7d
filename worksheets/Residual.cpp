#include "worksheets/Residual.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "core/Globals.h"
#include "store/TableCells.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

/// The largest cell of a column so far. A Null is the smallest of all, and counts as 0 against
/// another part's.
struct Candidate {
    int Part = 0;  ///< 0 while there is none
    Currency Line;
    double Size = 0;
};

constexpr double kNullSize = -1;

using Row = TableCells::Row;

double SizeOf(const TableCells& cells, Row row, int position) {
    return cells.IsNull(row, position) ? kNullSize : std::abs(cells.Amount(row, position));
}

/// The largest cell of each column in one part.
std::vector<Candidate> LargestOfPart(std::string_view family, int part,
                                     const std::vector<Gap>& gaps) {
    std::vector<Candidate> largest(gaps.size());
    const TableCells& cells = CellsOf(gDB, TableOf(family, part));
    for (const Row row : cells.Rows()) {
        if (cells.Line(row) >= kPartTotal) break;
        for (std::size_t i = 0; i < gaps.size(); ++i) {
            const double size = SizeOf(cells, row, gaps[i].Position);
            if (largest[i].Part == 0 || size > largest[i].Size) {
                largest[i] = {part, cells.Line(row), size};
            }
        }
    }
    return largest;
}

std::vector<Candidate> LargestCells(std::string_view family, const std::vector<Gap>& gaps) {
    std::vector<Candidate> largest(gaps.size());
    for (const int part : {1, 2, 3}) {
        const std::vector<Candidate> ofPart = LargestOfPart(family, part, gaps);
        for (std::size_t i = 0; i < gaps.size(); ++i) {
            if (ofPart[i].Part == 0) continue;
            const double size = std::max(ofPart[i].Size, 0.0);
            if (largest[i].Part == 0 || size > largest[i].Size) {
                largest[i] = {part, ofPart[i].Line, size};
            }
        }
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

void CloseGaps(std::string_view family, const std::vector<Gap>& gaps, int totalPosition) {
    if (gaps.empty()) return;
    const std::vector<Candidate> largest = LargestCells(family, gaps);
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
        }
    });
}

}  // namespace zolmara
