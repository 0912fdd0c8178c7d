// Where the tables begin: roots that the damaged list does not know are looked for.

#include <algorithm>
#include <bit>
#include <iterator>
#include <map>
#include <set>

#include "store/salvage/SalvageRepair.h"
#include "store/salvage/SalvageTwins.h"

namespace zolmara::salvage {
namespace {

// A table whose root nobody knows is looked for among the pages that are nobody's child.
struct Homeless {
    TableRows* Table;
    PageNo Told;                  // the number that the damaged list gives, or 0
    std::vector<PageNo> Fitting;  // pages that could be its root
};

bool CouldBeRoot(const Repair& repair, const TableRows& table, PageNo page) {
    TableRows trial;
    trial.Shape = table.Shape;
    trial.Shape.Root = page;
    trial.Index = table.Index;
    PageSet claimed = repair.Claimed;
    WalkTable(repair.File, trial, claimed);
    const bool whole = trial.Index.Column < 0 || !trial.Index.Complete ||
                       trial.Rows.size() == trial.Index.Keys.size();
    const bool exact =
        trial.Widths.size() == 1 && trial.Widths.contains(trial.Shape.Columns.size());
    return whole && exact && !trial.Rows.empty() && trial.Gaps.empty() &&
           std::all_of(trial.Rows.begin(), trial.Rows.end(),
                       [](const RowPlace& row) { return row.Confirmed; });
}

std::vector<PageNo> FreeRoots(const Repair& repair) {
    const std::vector<bool> children = ChildPages(repair.File);
    const std::vector<bool> free = FreePages(repair.File);
    std::set<PageNo> taken;
    for (const auto& definition : repair.Definitions) taken.insert(definition.Root);
    std::vector<PageNo> pages;
    for (PageNo page = 2; page <= repair.File.Count; ++page) {
        if (children[page] || free[page] || repair.Claimed[page] || taken.contains(page)) continue;
        if (ParseTablePage(repair.File, page).Sound) pages.push_back(page);
    }
    return pages;
}

bool DiffersByOneBit(PageNo a, PageNo b) { return std::popcount(a ^ b) == 1; }

// Of two tables with one root, the one that has found no other keeps it.
void GiveSharedRoots(std::vector<Homeless>& homeless) {
    std::map<PageNo, std::vector<Homeless*>> left;
    for (auto& table : homeless) {
        if (table.Table->Shape.Root == 0) left[table.Told].push_back(&table);
    }
    for (auto& [page, tables] : left) {
        const auto& fitting = tables.front()->Fitting;
        const bool fits = std::find(fitting.begin(), fitting.end(), page) != fitting.end();
        if (tables.size() == 1 && fits) tables.front()->Table->Shape.Root = page;
    }
}

void FindRoots(Repair& repair, std::vector<Homeless>& homeless) {
    std::map<PageNo, int> wanted;
    for (const PageNo page : homeless.empty() ? std::vector<PageNo>{} : FreeRoots(repair)) {
        for (auto& table : homeless) {
            if (!CouldBeRoot(repair, *table.Table, page)) continue;
            table.Fitting.push_back(page);
            ++wanted[page];
        }
    }
    // A number with one bit changed still tells which page it was. Without a number only a table
    // whose place in the list is gone may take a page that nobody else could have: the pages of a
    // table that nobody knows are free, too.
    for (auto& table : homeless) {
        std::vector<PageNo> near;
        for (const PageNo page : table.Fitting) {
            if (DiffersByOneBit(page, table.Told)) near.push_back(page);
        }
        const bool alone =
            table.Told == 0 && table.Fitting.size() == 1 && wanted[table.Fitting.front()] == 1;
        if (near.size() == 1) table.Table->Shape.Root = near.front();
        if (alone) table.Table->Shape.Root = table.Fitting.front();
    }
    GiveSharedRoots(homeless);
}

// A root that two tables share, or that is a page inside of a tree, is a damaged number.
std::vector<Homeless> DropDamagedRoots(Repair& repair, std::vector<TableRows>& tables) {
    std::vector<Homeless> homeless;
    const std::vector<bool> children = ChildPages(repair.File);
    std::map<PageNo, int> roots;
    for (const auto& definition : repair.Definitions) ++roots[definition.Root];
    for (auto& table : tables) {
        PageNo& root = table.Shape.Root;
        const bool there = root > 1 && root <= repair.File.Count;
        // A page that is there and is nobody else's is the root, whatever has become of it.
        if (there && roots[root] == 1 && !children[root]) continue;
        homeless.push_back({&table, root, {}});
        root = 0;
    }
    // A page that only one of those that lay claim to it can have is that one's.
    for (auto& definition : repair.Definitions) {
        if (definition.IsTable && roots[definition.Root] > 1) definition.Root = 0;
    }
    return homeless;
}

}  // namespace

// The tables without a definition are walked with the others, for the pages they own.
void FindRows(Repair& repair) {
    std::vector<TableRows> all = std::move(repair.Tables);
    const auto known = static_cast<std::ptrdiff_t>(all.size());
    std::move(repair.Lost.begin(), repair.Lost.end(), std::back_inserter(all));
    auto homeless = DropDamagedRoots(repair, all);
    FindRoots(repair, homeless);
    WalkTables(repair.File, all, repair.Claimed);
    for (auto& table : all) AddGapsByIndex(table);
    repair.Tables.assign(std::make_move_iterator(all.begin()),
                         std::make_move_iterator(all.begin() + known));
    repair.Lost.assign(std::make_move_iterator(all.begin() + known),
                       std::make_move_iterator(all.end()));
}

}  // namespace zolmara::salvage
