#include "store/salvage/SalvageTwins.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "store/salvage/SalvageReport.h"

namespace zolmara::salvage {
namespace {

void Clear(TableRows& table) {
    table.Rows.clear();
    table.Gaps.clear();
    table.Widths.clear();
    table.Pages.clear();
}

// Each table for itself, as if it were alone in the file.
void WalkAlone(const PageFile& file, std::vector<TableRows>& tables, const PageSet& claimed) {
    for (auto& table : tables) {
        PageSet own = claimed;
        Clear(table);
        WalkTable(file, table, own);
    }
}

// True where a complete index lists just the rows that were found.
bool AgreesWithIndex(const TableRows& table) {
    return table.Index.Column >= 0 && table.Index.Complete && table.Gaps.empty() &&
           table.Rows.size() == table.Index.Keys.size() &&
           std::all_of(table.Rows.begin(), table.Rows.end(),
                       [](const RowPlace& row) { return row.Confirmed; });
}

struct Claims {
    int Tables = 0;
    int Agreeing = 0;  // tables that agree with their index
};

// A page has one parent. Where two tables lead to it, one of the pages above is a copy; only an
// index can tell which.
bool RefuseContestedPages(const PageFile& file, std::vector<TableRows>& tables) {
    std::vector<Claims> claims(file.Count + 1ULL);
    for (const auto& table : tables) {
        const bool agrees = AgreesWithIndex(table);
        for (const PageNo page : table.Pages) {
            ++claims[page].Tables;
            claims[page].Agreeing += agrees;
        }
    }
    bool any = false;
    for (auto& table : tables) {
        const bool agrees = AgreesWithIndex(table);
        for (const PageNo page : table.Pages) {
            if (claims[page].Tables < 2 || (agrees && claims[page].Agreeing == 1)) continue;
            any |= table.Refused.insert(page).second;
        }
    }
    return any;
}

// A page with rows, and how many of them are shorter than the table. Rows are short when a
// column was added after they were written, but also when they are another table's.
struct PageInUse {
    TableRows* Table = nullptr;
    PageNo Page = 0;
    std::size_t ShortBy = 0;
};

using Twins = std::map<std::uint64_t, std::vector<PageInUse>>;

std::size_t ShortBy(const PageFile& file, const TableRows& table, const RowPlace& row) {
    const auto record = ReadRecord(file, row.Page, row.Place);
    return record ? table.Shape.Columns.size() - record->size() : 0;
}

Twins FindTwins(const PageFile& file, std::vector<TableRows>& tables) {
    Twins twins;
    for (auto& table : tables) {
        PageNo last = 0;
        for (const auto& row : table.Rows) {
            if (row.Page == last || !HasTwin(file, row.Page)) continue;
            last = row.Page;
            twins[file.Marks[last]].push_back({&table, last, ShortBy(file, table, row)});
        }
    }
    std::erase_if(twins, [](const auto& entry) { return entry.second.size() < 2; });
    return twins;
}

// Of pages with the same bytes, those whose tables have more columns than the rows, while another
// table has just as many, are copies.
bool RefuseCopies(const PageFile& file, std::vector<TableRows>& tables) {
    bool any = false;
    for (const auto& [mark, pages] : FindTwins(file, tables)) {
        const bool exact = std::any_of(pages.begin(), pages.end(),
                                       [](const PageInUse& page) { return page.ShortBy == 0; });
        for (const auto& page : pages) {
            if (exact && page.ShortBy > 0) any |= page.Table->Refused.insert(page.Page).second;
        }
    }
    return any;
}

bool HoldsFigures(const Record& record, const TableShape& shape) {
    for (std::size_t i = shape.HasLineNum ? 1 : 0; i < record.size(); ++i) {
        if (shape.Columns[i].Takes == Accepts::Number && record[i].Number() != 0) return true;
    }
    return false;
}

std::vector<const RowPlace*> RowsOn(const TableRows& table, PageNo page) {
    std::vector<const RowPlace*> rows;
    for (const auto& row : table.Rows) {
        if (row.Page == page) rows.push_back(&row);
    }
    return rows;
}

std::string TwinText(const PageFile& file, const PageInUse& a, const PageInUse& b) {
    const auto rows = RowsOn(*a.Table, a.Page);
    const bool figures = std::any_of(rows.begin(), rows.end(), [&](const RowPlace* row) {
        const auto record = ReadRecord(file, row->Page, row->Place);
        return record && HoldsFigures(*record, a.Table->Shape);
    });
    if (!figures || a.Table == b.Table) return "";
    return fmt::format(
        "Tables {} and {}: {} to {} are the same in both to the last byte; one of them may have "
        "been overwritten by a copy of the other.",
        a.Table->Shape.Name, b.Table->Shape.Name, RowText(a.Table->Shape, *rows.front()),
        RowText(a.Table->Shape, *rows.back()));
}

}  // namespace

void WalkTables(const PageFile& file, std::vector<TableRows>& tables, PageSet& claimed) {
    WalkAlone(file, tables, claimed);
    if (RefuseCopies(file, tables)) WalkAlone(file, tables, claimed);
    if (RefuseContestedPages(file, tables)) WalkAlone(file, tables, claimed);
    for (const auto& table : tables) {
        for (const PageNo page : table.Pages) claimed[page] = true;
    }
}

void AddGapsByIndex(TableRows& table) {
    if (table.Index.Column < 0 || !table.Index.Complete) return;
    std::set<std::int64_t> missing;
    for (const auto& [rowId, key] : table.Index.Keys) missing.insert(rowId);
    for (const auto& row : table.Rows) missing.erase(row.RowId);
    std::size_t next = 0;
    for (const std::int64_t rowId : missing) {
        while (next < table.Rows.size() && table.Rows[next].RowId < rowId) ++next;
        RowIdRange range;
        if (next > 0) range.After = table.Rows[next - 1].RowId;
        if (next < table.Rows.size()) range.UpTo = table.Rows[next].RowId - 1;
        if (!table.Gaps.empty() && table.Gaps.back().Range.After == range.After) continue;
        table.Gaps.push_back({range, std::nullopt});
    }
}

std::vector<std::string> TwinTexts(const PageFile& file, std::vector<TableRows>& tables) {
    std::vector<std::string> texts;
    for (const auto& [mark, pages] : FindTwins(file, tables)) {
        for (std::size_t i = 1; i < pages.size(); ++i) {
            std::string text = TwinText(file, pages[0], pages[i]);
            if (!text.empty()) texts.push_back(std::move(text));
        }
    }
    return texts;
}

}  // namespace zolmara::salvage
