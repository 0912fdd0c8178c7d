#pragma once

// What a backup is told by in a list.

#include <string>

#include "core/Variant.h"
#include "store/session/Backups.h"

namespace zolmara {

struct BackupFigures {
    Variant Expenses;     ///< worksheet A, line 100, column 1; Null where it cannot be read
    Variant Differences;  ///< how many cells differ from the file now; Null where that or the
                          ///< backup cannot be read
};

/// Reads a backup of a CRF, which may be open or gone.
BackupFigures FiguresOfBackup(const std::string& crf, const Backup& backup);

}  // namespace zolmara
