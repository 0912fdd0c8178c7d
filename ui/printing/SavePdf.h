#pragma once

#include <string>

#include "ui/printing/PaintJobs.h"

namespace zolmara::ui {

/// Writes pages, from 0 and up to the one ahead of `end`, into a PDF file: whole or not at all.
/// StoreError when it cannot be written.
PaintResult SavePdf(const Document& document, PageRange range, const std::string& path,
                    const PageProgress& progress);

}  // namespace zolmara::ui
