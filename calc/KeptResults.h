#pragma once

// What a file's worksheets were calculated from when they were calculated last. A worksheet whose
// tables hold the same still would come out the same, and need not be calculated.
//
// Method: everything that a calculation can depend on stands in tables, so a worksheet's inputs
// are the tables that its statements named, as they were when its calculation began, its own
// results of the run before among them. Which they are is noted while it calculates, so that no
// list of them can be out of date. A table that was written to and holds what it held counts as
// unchanged: calculations clear cells and post them again. Of worksheets that must be calculated,
// the columns whose inputs stand are left out; what these go by is kept here with the rest.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "store/TableWatch.h"
#include "worksheets/ColumnInputs.h"

namespace zolmara {

class KeptResults {
public:
    /// Those of the open CRF, which go with it.
    static KeptResults& OfOpenCrf();

    /// Begins a run, within its batch. `alone` where that batch is the run's own: only then can be
    /// told what the run has changed.
    void BeginRun(bool alone);
    /// True where the worksheets that are calculated together, named by the first of them, would
    /// come out as they are, without a word to the person.
    bool Stands(const std::string& first) const;
    /// What their calculation kept of columns, for the one that begins now.
    KeptColumns TakeColumns(const std::string& first);
    /// Keeps what they were just calculated from. Those that spoke must speak again.
    void Keep(const std::string& first, const TableWatch& watch, KeptColumns columns, bool spoke);
    /// Ends a run: ahead of the end of its batch, and behind it.
    void EndRun();
    void AfterBatch();
    /// Nothing is sure, as after a run that failed.
    void Forget();

private:
    /// A table's content by the number of the write that made it.
    struct Content {
        std::int64_t Writes;  ///< the table's last write, at which this was known
        std::int64_t Made;
    };
    struct Input {
        WriteCount Table;
        std::int64_t Made;
    };
    struct Result {
        std::vector<Input> Inputs;
        KeptColumns Columns;
        bool Spoke = false;
    };

    std::int64_t MadeAt(const WriteCount& table, std::int64_t writes) const;

    std::map<std::string, Result> results_;
    std::map<WriteCount, Content> contents_;  ///< older than the table's last write
    std::set<WriteCount> changed_;            ///< in this run
    bool alone_ = false;
};

}  // namespace zolmara
