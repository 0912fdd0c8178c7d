#pragma once

#include <functional>
#include <string>

#include "print/PageDevice.h"

namespace zolmara::bench {

/// The electronic report of the open statement, and both files with their seals, against writing
/// the same bytes plainly and durably, the digests of these bytes, and raw SQLite reading the same
/// tables. The files go to the folder.
void BenchEcr(const std::string& folder);

/// The whole form into print file and PDF file, and how much memory the process had taken ahead of
/// it and behind it. `usePrinter` puts a device in the printer's place.
void BenchPdf(const std::string& folder, const std::function<void(PageDevice*)>& usePrinter);

}  // namespace zolmara::bench
