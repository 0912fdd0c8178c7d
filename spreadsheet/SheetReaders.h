#pragma once

// Readers of the three kinds of spreadsheet files. They run in a process of their own
// (SheetProcess), which may be ended at any moment: a stranger may have made the file.

#include <stdexcept>
#include <string>
#include <string_view>

#include "spreadsheet/SheetRow.h"

namespace zolmara {

enum class SheetFileKind { Xlsx, Ods, Csv };

/// Why a file cannot be read, in words that go on behind its name.
struct UnreadableSheets : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Each gives the rows of all sheets in their order. UnreadableSheets for what is no such file.
void ReadXlsx(std::string_view file, const TakeRow& take);
void ReadOds(std::string_view file, const TakeRow& take);
void ReadCsv(std::string_view file, const TakeRow& take);

}  // namespace zolmara
