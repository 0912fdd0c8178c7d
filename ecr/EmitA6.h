#pragma once

namespace zolmara {

struct EcrRun;

/// Writes the reclassifications, and behind each adjustment's rows its totals. An explanation
/// stands for the rows of its adjustment that have none.
void ECR_A6(EcrRun& run);

}  // namespace zolmara
