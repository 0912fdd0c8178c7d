#pragma once

// The cells that an import has staged, read from their table once and handed out by worksheet: the
// table is not gone through again for each worksheet.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/Currency.h"

namespace zolmara {

/// A staged cell.
struct SourceRow {
    Currency Row;
    Currency Col;
    std::string Contents;
};

class StagedRows {
public:
    /// Reads table ImportASCII.
    void Read();

    /// The worksheets' names in capitals, in the order in which each comes first in the table.
    const std::vector<std::string>& WorkSheets() const { return names_; }
    /// The cells of a worksheet, in the order of their rows, then columns. They are given away.
    std::vector<SourceRow> Take(std::string_view sheet);
    /// On how many lines of a worksheet there are cells.
    std::size_t Lines(std::string_view sheet) const;

private:
    std::size_t BucketOf(const std::string& name);

    std::vector<std::string> names_;
    std::vector<std::vector<SourceRow>> rows_;  ///< of each name
    std::unordered_map<std::string, std::size_t> bucketOf_;
};

}  // namespace zolmara
