#pragma once

// Repair of a damaged Cost Report File with the help of those who know how its tables are made.

#include <functional>
#include <string>
#include <vector>

namespace zolmara {

/// What the repair of a file asks of those who know what its tables mean. Each may be empty.
struct RepairHelp {
    /// What is wrong with a file whose pages are whole; empty when nothing is.
    std::function<std::string(const std::string& path)> Inspect;
    /// Makes the tables that a file lacks, in that file, and gives their names. It is asked again
    /// with what its answer has brought back, until nothing is missing.
    std::function<std::vector<std::string>(const std::string& path)> MakeMissing;
    /// Completes the repaired file, which has not taken its name yet. `made` are the tables that
    /// were made anew. Gives sentences for the report.
    std::function<std::vector<std::string>(const std::string& path,
                                           const std::vector<std::string>& made)>
        Complete;
};

/// What a repair found and did.
struct FileRepair {
    bool WasDamaged = false;
    std::vector<std::string> Losses;  ///< one sentence for each thing that was lost or is doubtful
    std::size_t RowsKept = 0;
    std::string KeptAs;  ///< where the damaged file is kept; empty when nothing was lost
};

/// Checks the closed file and, when it is damaged, makes it anew from all that can still be read.
/// Where anything was lost the damaged file stays beside it, under its name with "damaged" and
/// the date. StoreError when the file cannot be read or written, or holds nothing of a CRF at
/// all; then it is as it was.
FileRepair RepairFile(const std::string& path, const RepairHelp& help);

/// True for a file that cannot be opened, but of which a repair would bring back a CRF.
bool CanBeRepaired(const std::string& path);

}  // namespace zolmara
