#pragma once

// What a preparer waits for after one edit, beside what spreadsheets and raw SQLite take for the
// same, for statements of four sizes: the table of README.md.

#include <string>

namespace zolmara::bench {

/// `cli` is the command line's program, `sample` the sample's CRF. Prints the table. Raises when
/// a figure could not be taken; a spreadsheet that is not installed is none.
void BenchTable(const std::string& folder, const std::string& cli, const std::string& sample);

}  // namespace zolmara::bench
