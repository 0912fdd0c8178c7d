#pragma once

// The whole statement as a workbook: a sheet a worksheet, computed cells as live formulas with the
// stored values as their results.

#include <string>
#include <vector>

namespace zolmara {

struct ExportChoice {
    std::vector<std::string> Items =
        {};               ///< worksheets, CostCenters, ES, in any case; all where empty
    bool Values = false;  ///< plain values instead of formulas
};

/// Writes the workbook of the open CRF as it was calculated last, to a name that ends in .xlsx.
/// StoreError::NoSuchItem for a name that is no worksheet, FileKept for a file that stands there
/// and is to stay, StoreError when it cannot be written; then what stood there is as it was.
void ExportWorkbook(const std::string& path, const ExportChoice& choice = {});

/// The name of a total in a workbook: "A_L100_C8" is column 8 of line 100 on A.
std::string TotalName(const std::string& item, const std::string& lineText,
                      const std::string& field);

/// The sheet of the edit checks' findings.
inline constexpr const char* kFindingsSheet = "Findings";

}  // namespace zolmara
