#pragma once

// New and deleted cost centers of a large statement.

#include <string>

namespace zolmara::bench {

/// Adds and deletes a cost center of a copy of the large statement, against raw SQLite copying the
/// same tables, and imports new cost centers, more and more in one file, which is to cost the more
/// in the same measure. With the command line's program, deletes by its command as well.
void BenchStructure(const std::string& folder, const std::string& large, const std::string& cli);

}  // namespace zolmara::bench
