#include "store/salvage/SalvageLoose.h"

#include <algorithm>
#include <unordered_set>

namespace zolmara::salvage {
namespace {

struct LoosePage {
    PageNo Number = 0;
    std::vector<Cell> Cells;
    std::vector<std::int64_t> RowIds;
    std::vector<Record> Records;
};

// A table that still has room for a page.
struct Candidate {
    TableRows* Table = nullptr;
    std::vector<RowIdRange> Open;  // ascending, apart from each other
    std::unordered_set<std::int64_t> Kept;
};

std::vector<RowIdRange> JoinedGaps(const std::vector<Gap>& gaps) {
    std::vector<RowIdRange> ranges;
    for (const auto& gap : gaps) ranges.push_back(gap.Range);
    std::sort(ranges.begin(), ranges.end(),
              [](RowIdRange a, RowIdRange b) { return a.After < b.After; });
    std::vector<RowIdRange> joined;
    for (const auto& range : ranges) {
        if (!joined.empty() && range.After <= joined.back().UpTo) {
            joined.back().UpTo = std::max(joined.back().UpTo, range.UpTo);
        } else {
            joined.push_back(range);
        }
    }
    return joined;
}

std::vector<Candidate> TablesWithGaps(std::vector<TableRows>& tables) {
    std::vector<Candidate> candidates;
    for (auto& table : tables) {
        if (table.Gaps.empty()) continue;
        Candidate candidate{&table, JoinedGaps(table.Gaps), {}};
        for (const auto& row : table.Rows) candidate.Kept.insert(row.RowId);
        candidates.push_back(std::move(candidate));
    }
    return candidates;
}

bool InsideAGap(const Candidate& candidate, std::int64_t first, std::int64_t last) {
    const auto behind =
        std::lower_bound(candidate.Open.begin(), candidate.Open.end(), first,
                         [](RowIdRange range, std::int64_t row) { return range.After < row; });
    return behind != candidate.Open.begin() && (behind - 1)->UpTo >= last;
}

bool ShapeFits(const TableRows& table, const LoosePage& page) {
    return std::all_of(page.Records.begin(), page.Records.end(), [&](const Record& record) {
        const bool width =
            record.size() == table.Shape.Columns.size() || table.Widths.contains(record.size());
        return width && FitsShape(record, table.Shape);
    });
}

bool AnyRowKept(const Candidate& candidate, const LoosePage& page) {
    return std::any_of(page.RowIds.begin(), page.RowIds.end(),
                       [&](std::int64_t rowId) { return candidate.Kept.contains(rowId); });
}

bool HasWitness(const TableRows& table, const LoosePage& page) {
    for (std::size_t i = 0; i < page.RowIds.size(); ++i) {
        if (AskIndex(table.Index, page.RowIds[i], page.Records[i]) == Witness::Confirms)
            return true;
    }
    return false;
}

bool Fits(const Candidate& candidate, const LoosePage& page, bool needsWitness) {
    const TableRows& table = *candidate.Table;
    return InsideAGap(candidate, page.RowIds.front(), page.RowIds.back()) &&
           !AnyRowKept(candidate, page) && ShapeFits(table, page) &&
           !IndexContradicts(table.Index, page.RowIds, page.Records) &&
           (!needsWitness || HasWitness(table, page));
}

LoosePage ReadLoosePage(const PageFile& file, PageNo number) {
    LoosePage page;
    page.Number = number;
    const TreePage tree = ParsePage(file, number);
    if (!tree.Sound || tree.Kind != PageKind::TableLeaf) return page;
    for (const auto& cell : tree.Cells) {
        auto record = ReadRecord(file, number, *cell);
        if (!record) continue;
        page.Cells.push_back(*cell);
        page.RowIds.push_back(cell->Key);
        page.Records.push_back(std::move(*record));
    }
    return page;
}

void Take(Candidate& candidate, const LoosePage& page) {
    TableRows& table = *candidate.Table;
    for (std::size_t i = 0; i < page.Cells.size(); ++i) {
        table.Rows.push_back(PlaceOf(table, page.Number, page.Cells[i], page.Records[i]));
        table.Rows.back().Loose = true;
        candidate.Kept.insert(page.RowIds[i]);
    }
}

void AddLeftover(std::vector<Leftover>& leftovers, Leftover found) {
    for (auto& known : leftovers) {
        if (known.Columns != found.Columns || known.MayBelongTo != found.MayBelongTo) continue;
        known.Rows += found.Rows;
        return;
    }
    leftovers.push_back(std::move(found));
}

void Place(std::vector<Candidate>& candidates, const LoosePage& page, PageSet& claimed,
           bool needsWitness, std::vector<Leftover>& leftovers) {
    std::vector<Candidate*> fitting;
    for (auto& candidate : candidates) {
        if (Fits(candidate, page, needsWitness)) fitting.push_back(&candidate);
    }
    if (fitting.size() == 1) {
        Take(*fitting.front(), page);
        claimed[page.Number] = true;
        return;
    }
    Leftover left{page.Records.size(), page.Records.front().size(), {}};
    for (const auto* candidate : fitting) left.MayBelongTo.push_back(candidate->Table->Shape.Name);
    AddLeftover(leftovers, std::move(left));
}

// A page that is the copy of one already read has nothing of its own.
std::unordered_set<std::uint64_t> MarksRead(const PageFile& file, const PageSet& claimed) {
    std::unordered_set<std::uint64_t> marks;
    for (PageNo page = 1; page <= file.Count; ++page) {
        if (claimed[page]) marks.insert(file.Marks[page]);
    }
    return marks;
}

void SortRows(std::vector<TableRows>& tables) {
    for (auto& table : tables) {
        std::stable_sort(table.Rows.begin(), table.Rows.end(),
                         [](const RowPlace& a, const RowPlace& b) { return a.RowId < b.RowId; });
    }
}

}  // namespace

std::vector<Leftover> TakeLoosePages(const PageFile& file, std::vector<TableRows>& tables,
                                     PageSet& claimed, bool needsWitness) {
    std::vector<Leftover> leftovers;
    std::vector<Candidate> candidates = TablesWithGaps(tables);
    const std::vector<bool> free = FreePages(file);
    std::unordered_set<std::uint64_t> read = MarksRead(file, claimed);
    for (PageNo number = 1; number <= file.Count; ++number) {
        if (claimed[number] || free[number]) continue;
        const LoosePage page = ReadLoosePage(file, number);
        if (page.Records.empty() || !read.insert(file.Marks[number]).second) continue;
        Place(candidates, page, claimed, needsWitness, leftovers);
    }
    SortRows(tables);
    return leftovers;
}

}  // namespace zolmara::salvage
