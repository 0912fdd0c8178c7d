#pragma once

// The cell records of the electronic report, one for each cell that says something.

#include <string_view>

namespace zolmara {

struct EcrRun;

/// Writes the cells of every worksheet in the registry, by Item, and shows in the status line
/// which one is at work. StoreError where a worksheet's table is not there.
void ECR_Type3(EcrRun& run);

/// Writes the cells of one worksheet, by line and column; with those of Sp1 the
/// electronic signature. Nothing for a name that is no worksheet of the form. Stored data stays
/// as it is.
void ECR_Worksheet(EcrRun& run, std::string_view item);

}  // namespace zolmara
