#pragma once

// How the tables of a Cost Report File are made, for the repair of a damaged one.

namespace zolmara {

/// Hands the store's repair what it must know of the worksheets. Called once at the program's
/// start.
void HandCrfMaker();

}  // namespace zolmara
