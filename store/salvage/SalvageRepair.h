#pragma once

// One repair on its way: what was found in the damaged file, and what is known to be lost. It goes
// along to the steps, in the order in which they stand here.

#include <string>
#include <utility>
#include <vector>

#include "store/salvage/PageReader.h"
#include "store/salvage/Salvage.h"
#include "store/salvage/SalvageLoose.h"
#include "store/salvage/SalvageTarget.h"
#include "store/salvage/SalvageTree.h"

namespace zolmara::salvage {

/// A row of the file's list of tables and indexes.
struct Definition {
    bool IsTable = false;
    std::string Name;
    std::string Table;
    PageNo Root = 0;
    std::string Sql;  ///< empty for an index that belongs to its table's definition
};

struct Repair {
    const zolmara::Definitions& Made;
    const zolmara::Definitions& Indexed;
    PageFile File{};
    PageSet Claimed{};
    TableRows Schema{};
    std::vector<Definition> Definitions{};
    std::vector<TableRows> Tables{};
    std::vector<TableRows> Lost{};  ///< tables whose statement cannot be read
    std::vector<Leftover> Leftovers{};
    SalvageResult Result{};
};

/// Adds a sentence to what is lost, unless it is empty.
inline void Lose(Repair& repair, std::string sentence) {
    if (!sentence.empty()) repair.Result.Losses.push_back(std::move(sentence));
}

/// True for what the library keeps for itself in every file.
inline bool IsInternal(const std::string& name) { return name.starts_with("sqlite_"); }

/// Reads the pages of a file and its list of tables and indexes. StoreError when the file cannot
/// be read.
void ReadFile(Repair& repair, const std::string& path);
/// The tables of the list.
std::vector<std::string> TableNames(const Repair& repair);

/// Makes the tables in the new file, by the file's own statements or anew; those that cannot be
/// made are in `Lost`.
void CreateTables(Repair& repair, Target& target);
/// Makes the indexes of the list, and reads the old ones as witnesses.
void CreateIndexes(Repair& repair, Target& target);
/// Walks all tables for their rows, those too whose root is damaged.
void FindRows(Repair& repair);
/// Writes a table's rows into the new file, and tells of those that cannot be kept whole.
void InsertRows(Repair& repair, Target& target, const TableRows& table);
/// Makes the indexes that a worksheet needs and the file has lost. The rows are there already, so
/// that none is left out because its key stands twice.
void CreateLostIndexes(Repair& repair, Target& target);

}  // namespace zolmara::salvage
