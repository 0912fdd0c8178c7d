#pragma once

// Tables made anew with other fields. SQLite appends a field at the end only, so a table that gains
// or loses one in the middle is made anew around it, with its rows.

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

/// A field of a table that is made anew.
struct RebuiltField {
    std::string From;  ///< the former field that it is; empty for a dbDouble, Null on every row
    std::string Name;
};

struct RebuiltTable {
    std::string Name;
    std::vector<RebuiltField> Fields;
    bool Indexed = true;  ///< gets the unique index of its lines, by the name "ndx" and its own
};

/// Makes tables anew, each with the fields given, in the order given; as one batch, all of them or
/// none. Rows keep their order, and every cell stays as it is stored, to the last bit. No field of
/// them refuses Null. A table by the name `copy` goes; with `keepsCopy` there is one in the end,
/// with the fields and the rows of the last table. Tables of many cells are shared with a second
/// thread, which works in memory. StoreError: NoSuchItem for a table or field that is not there,
/// Other for two fields of one name or two rows of one line. Where the second thread fails nothing
/// of the whole batch is kept.
void RebuildTables(Database& db, std::span<const RebuiltTable> tables, std::string_view copy,
                   bool keepsCopy);

bool HasField(Database& db, std::string_view table, std::string_view field);

/// When the rows of tables are shared with a second thread; tests set it.
struct RebuildShares {
    /// Below so many cells a thread costs more than it brings.
    std::size_t LeastCells = 200'000;
    /// Beyond so many the tables are made anew one after the other, for the memory that they take
    /// together: 9 bytes a number at most, up to four times.
    std::size_t MostCells = 10'000'000;
    /// Processors; 0 for those of the machine.
    unsigned Processors = 0;
    /// The second thread makes all tables, where there is one.
    bool SecondAlone = false;
    /// Run by the second thread ahead of its work.
    std::function<void()> Ahead;
};
RebuildShares& TheRebuildShares();

}  // namespace zolmara
