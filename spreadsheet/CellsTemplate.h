#pragma once

// A workbook to fill: every cell that can be keyed and that the import takes, for the cost centers
// and components of the open CRF.

#include <string>

namespace zolmara {

/// Writes it to a name that ends in .xlsx: a sheet a worksheet, a row a cell, with the name of its
/// line and the title of its column. Contents alone can be keyed; rows that stay empty are passed
/// over by the import. FileKept for a file that stands there and is to stay; StoreError when it
/// cannot be written, and then what stood there is as it was.
void WriteCellsTemplate(const std::string& path);

}  // namespace zolmara
