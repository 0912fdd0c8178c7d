#pragma once

// What a preparer waits for after one edit, beside what a spreadsheet and raw SQLite take for the
// same, for statements of four sizes: the table of README.md.

#include <functional>
#include <string>

namespace zolmara::bench {

/// `cli` is the command line's program, `sample` the sample's CRF. `makeNew` makes a new CRF of a
/// path and leaves it open. Where a spreadsheet is installed, it opens and recalculates each
/// statement as a workbook with live formulas, once; else the figures of an earlier run stand for
/// it.
void BenchTable(const std::string& folder, const std::string& cli, const std::string& sample,
                const std::function<void(const std::string&)>& makeNew);

}  // namespace zolmara::bench
