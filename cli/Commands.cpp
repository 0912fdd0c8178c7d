#include "cli/Commands.h"

#include <array>

namespace zolmara::cli {

std::span<const Command* const> AllCommands() {
    static constexpr std::array kCommands{&kNew,
                                          &kInfo,
                                          &kCalc,
                                          &kCheck,
                                          &kShow,
                                          &kGet,
                                          &kSet,
                                          &kExplain,
                                          &kTrace,
                                          &kSheets,
                                          &kSummary,
                                          &kFind,
                                          &kImport,
                                          &kCells,
                                          &kExport,
                                          &kImportCrf,
                                          &kCcList,
                                          &kCcAdd,
                                          &kCcDelete,
                                          &kCcRename,
                                          &kComponentList,
                                          &kComponentAdd,
                                          &kComponentDelete,
                                          &kComponentRename,
                                          &kLineAdd,
                                          &kLineDelete,
                                          &kRebuild,
                                          &kDiff,
                                          &kBackupList,
                                          &kBackupMake,
                                          &kBackupRestore,
                                          &kPrint,
                                          &kEcr,
                                          &kHeader,
                                          &kIdentity,
                                          &kCompact};
    return kCommands;
}

std::span<const CommandGroup> AllCommandGroups() {
    static constexpr std::array<CommandGroup, 4> kGroups{{
        {"cc", "List, add, delete or rename cost centers"},
        {"component", "List, add, delete or rename the components of S-2"},
        {"line", "Add or delete lines of A6, A8, A81p1, A81p2, G1, S1p1 and S1p2"},
        {"backup", "List, make or restore the backups of a Cost Report File"},
    }};
    return kGroups;
}

}  // namespace zolmara::cli
