#pragma once

// Pages in which one bit is not what it was. What the database library keeps on a page fits
// together to the byte, so the bit can be found by trying.

#include "store/salvage/PageReader.h"

namespace zolmara::salvage {

/// Puts right each page of the file in memory whose structure comes out sound by the change of
/// exactly one bit of it. Pages of which that is not so stay as they are.
void MendPages(PageFile& file);

}  // namespace zolmara::salvage
