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
                                          &kSummary,
                                          &kFind,
                                          &kImport,
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
                                          &kPrint,
                                          &kEcr,
                                          &kHeader,
                                          &kIdentity,
                                          &kCompact};
    return kCommands;
}

std::span<const CommandGroup> AllCommandGroups() {
    static constexpr std::array<CommandGroup, 3> kGroups{{
        {"cc", "List, add, delete or rename cost centers"},
        {"component", "List, add, delete or rename the components of S-2"},
        {"line", "Add or delete lines of A6, A8, A81p1, A81p2, G1, S1p1 and S1p2"},
    }};
    return kGroups;
}

}  // namespace zolmara::cli
