#include "worksheets/Residual.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Rows.h"
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

double SizeOf(const Variant& cell) { return cell.IsNull() ? kNullSize : std::abs(NumOr(cell)); }

/// The largest cell of each column in one part. The columns are sought side by side, so that a
/// part is read once however many of them do not close.
std::vector<Candidate> LargestOfPart(std::string_view family, int part,
                                     const std::vector<Gap>& gaps) {
    std::vector<Candidate> largest(gaps.size());
    Recordset rows = gDB.OpenRecordset(
        fmt::format("Select * From {} Where LineNum<? Order By LineNum;", TableOf(family, part)),
        {kPartTotal});
    for (; !rows.Eof(); rows.MoveNext()) {
        for (std::size_t i = 0; i < gaps.size(); ++i) {
            const double size = SizeOf(rows[gaps[i].Position]);
            if (largest[i].Part == 0 || size > largest[i].Size) {
                largest[i] = {part, LineOf(rows), size};
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

double Moved(const Variant& cell, const Gap& gap) {
    return ThroughText(NumOr(cell) - gap.Got + gap.Want);
}

/// A row of the three tables, and the columns whose difference it takes.
using RowKey = std::pair<int, Currency>;
using Adjustments = std::map<RowKey, std::vector<Gap>>;

void Adjust(std::string_view family, const RowKey& row, const std::vector<Gap>& gaps,
            int totalPosition) {
    Recordset rows = gDB.OpenRecordset(
        fmt::format("Select * From {} Where LineNum=?;", TableOf(family, row.first)), {row.second});
    if (rows.Eof()) return;
    rows.Edit();
    for (const Gap& gap : gaps) {
        rows.Set(gap.Position, Moved(rows[gap.Position], gap));
        rows.Set(totalPosition, Moved(rows[totalPosition], gap));
    }
    rows.Update();
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
    for (const auto& [row, columns] : adjustments) Adjust(family, row, columns, totalPosition);
}

}  // namespace zolmara
