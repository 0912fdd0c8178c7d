#include "import/BackupFigures.h"

#include "import/CompareCrfs.h"
#include "store/CopyRows.h"

namespace zolmara {
namespace {

/// Null for what a damaged or missing file does not tell.
template <class Ask>
Variant OrNull(const Ask& ask) {
    try {
        return ask();
    } catch (const StoreError&) {
        return {};
    }
}

}  // namespace

BackupFigures FiguresOfBackup(const std::string& crf, const Backup& backup) {
    BackupFigures figures;
    figures.Expenses = OrNull([&] {
        return OpenReadOnly(backup.Path).Scalar("SELECT Col_1 FROM A WHERE LineNum = 100;");
    });
    figures.Differences = OrNull([&]() -> Variant {
        Database kept = OpenReadOnly(backup.Path);
        Database now = OpenReadOnly(crf);
        return static_cast<double>(CompareCrfs(now, kept, {}).size());
    });
    return figures;
}

}  // namespace zolmara
