#pragma once

#include <QString>

namespace zolmara {
struct BlockResult;
}

namespace zolmara::ui {

/// Shows what a paste, a fill or a clear could not do as asked, in one window: worksheet, line,
/// column, value and reason. The window of the last one goes.
void ShowBlockReport(const QString& what, const BlockResult& result);

}  // namespace zolmara::ui
