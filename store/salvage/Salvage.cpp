#include "store/salvage/Salvage.h"

// Method: the library that writes a CRF walks no tree in which a single page is broken, but the
// pages themselves are simple, and most rows of a damaged file stand where they always stood. So
// the file is read here as what it is, a row of pages of equal size.
//
// A table is a tree of pages: interior pages lead, by ascending rowid, to leaf pages, which hold
// the rows. Each interior cell tells the highest rowid below it, so when a leaf cannot be read the
// rowids that are lost are known, and when a page stands in a place where its rowids do not belong
// it is a stray copy and is not believed. A leaf that is partly broken gives the rows that still
// fill their records to the byte and fit the table's field types.
//
// The tables' definitions are rows of one more such tree, rooted in page 1. Its pages tell
// themselves by what they hold, so they are found without the root too.
//
// When an interior page is lost, the leaves below it are loose. A loose leaf is given to a table
// only when exactly one table has a gap that its rows fit in number, rowids and types, and when
// that table's index does not speak against it. Otherwise the rows are reported and left out: a
// missing figure can be keyed again, a figure in the wrong table would go unseen.
//
// The indexes are built anew. What is left of the old ones serves as a witness: an index repeats
// the line number of each row, so it can tell which lines are missing.

#include <algorithm>

#include "store/base/StoreError.h"
#include "store/salvage/SalvageRepair.h"
#include "store/salvage/SalvageReport.h"
#include "store/salvage/SalvageTwins.h"

namespace zolmara {
namespace salvage {
namespace {

bool AnyGaps(const std::vector<TableRows>& tables) {
    return std::any_of(tables.begin(), tables.end(),
                       [](const TableRows& table) { return !table.Gaps.empty(); });
}

void ReportLostTables(Repair& repair) {
    for (const auto& table : repair.Lost) {
        if (IsInternal(table.Shape.Name)) continue;
        Lose(repair, "Table definition lost: " + table.Shape.Name + "; its " +
                         std::to_string(table.Rows.size()) + " rows cannot be put back.");
    }
}

void ReportTable(Repair& repair, Target& target, const TableRows& table) {
    for (auto& sentence : MissingRows(table)) Lose(repair, std::move(sentence));
    InsertRows(repair, target, table);
}

}  // namespace
}  // namespace salvage

bool HoldsTables(const std::string& path, const std::vector<std::string>& names) {
    using namespace salvage;
    const Definitions none;
    Repair repair{none, none};
    ReadFile(repair, path);
    const auto found = TableNames(repair);
    return std::all_of(names.begin(), names.end(), [&](const std::string& name) {
        return std::find(found.begin(), found.end(), name) != found.end();
    });
}

bool HoldsOwnIndexes(const std::string& path) {
    using namespace salvage;
    const Definitions none;
    Repair repair{none, none};
    ReadFile(repair, path);
    return std::ranges::any_of(repair.Definitions, [](const Definition& definition) {
        return !definition.IsTable && definition.Name == "ndx" + definition.Table;
    });
}

SalvageResult SalvageDatabase(const std::string& source, const std::string& target,
                              const std::function<void(sqlite3*)>& prepare, const Definitions& made,
                              const Definitions& indexed) {
    using namespace salvage;
    Repair repair{made, indexed};
    ReadFile(repair, source);
    const std::vector<std::string> names = TableNames(repair);
    if (names.empty()) {
        throw StoreError(StoreError::Kind::NotADatabase, source + ": is not a Cost Report File");
    }
    Target file(target, prepare);
    const std::string missing = MissingDefinitions(repair.Schema, names);
    Lose(repair, missing);
    CreateTables(repair, file);
    CreateIndexes(repair, file);
    FindRows(repair);
    // Where every table of a CRF has its definition again, no unknown one can own a page.
    const bool needsWitness = (!missing.empty() && made.empty()) || AnyGaps(repair.Lost);
    repair.Leftovers = TakeLoosePages(repair.File, repair.Tables, repair.Claimed, needsWitness);
    ReportLostTables(repair);
    for (const auto& table : repair.Tables) ReportTable(repair, file, table);
    CreateLostIndexes(repair, file);
    for (auto& text : TwinTexts(repair.File, repair.Tables)) Lose(repair, std::move(text));
    for (const auto& left : repair.Leftovers) Lose(repair, LeftoverText(left));
    file.Finish();
    return repair.Result;
}

}  // namespace zolmara
