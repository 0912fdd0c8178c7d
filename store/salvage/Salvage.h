#pragma once

// Repair of a damaged Cost Report File.

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

struct sqlite3;

namespace zolmara {

/// What a repair kept and what it could not bring back.
struct SalvageResult {
    std::size_t RowsKept = 0;
    /// One sentence for each thing that is lost, naming the table and, where known, the lines.
    std::vector<std::string> Losses;
};

/// CREATE statements of a table and its indexes, by the table's name: what stands in for
/// definitions that the damaged file has lost.
using Definitions = std::map<std::string, std::vector<std::string>>;

/// True where a file that may be damaged holds these tables, as far as it still tells.
bool HoldsTables(const std::string& path, const std::vector<std::string>& names);

/// True where it tells of an index that has the name which the store gives to a worksheet's.
bool HoldsOwnIndexes(const std::string& path);

/// Reads the damaged file's pages directly and writes what can be read into a new database file
/// at `target`, which must not exist. The source is not changed. `prepare` is called with the
/// new file's connection before anything is written, to give it the text orders that indexes
/// rely on. `made` gives the statements of tables whose own definition cannot be read, `indexed`
/// those of tables of which an index's cannot: such an index is made when the rows are there, and
/// where they do not suit it, it is left out and the rows stay.
///
/// A cell that its field cannot hold becomes Null and is named among the losses.
///
/// StoreError NotADatabase when the file holds no table of a CRF, CannotOpen when it cannot be
/// read or the target is there already, DiskFull and the like when the target cannot be written;
/// no target is left then.
SalvageResult SalvageDatabase(const std::string& source, const std::string& target,
                              const std::function<void(sqlite3*)>& prepare = {},
                              const Definitions& made = {}, const Definitions& indexed = {});

}  // namespace zolmara
