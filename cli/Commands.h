#pragma once

// The commands, one unit each, in the order of the help.

#include "cli/Command.h"

namespace zolmara::cli {

extern const Command kNew;
extern const Command kInfo;
extern const Command kCalc;
extern const Command kCheck;
extern const Command kShow;
extern const Command kGet;
extern const Command kSet;
extern const Command kExplain;
extern const Command kTrace;
extern const Command kSheets;
extern const Command kSummary;
extern const Command kFind;
extern const Command kImport;
extern const Command kCells;
extern const Command kExport;
extern const Command kImportCrf;
extern const Command kCcList;
extern const Command kCcAdd;
extern const Command kCcDelete;
extern const Command kCcRename;
extern const Command kComponentList;
extern const Command kComponentAdd;
extern const Command kComponentDelete;
extern const Command kComponentRename;
extern const Command kLineAdd;
extern const Command kLineDelete;
extern const Command kRebuild;
extern const Command kDiff;
extern const Command kBackupList;
extern const Command kBackupMake;
extern const Command kBackupRestore;
extern const Command kPrint;
extern const Command kEcr;
extern const Command kHeader;
extern const Command kIdentity;
extern const Command kCompact;

}  // namespace zolmara::cli
