#pragma once

namespace zolmara {

struct EcrRun;

/// Writes the electronic signature of the statement; nothing where it is to be signed by hand.
void ECR_Signature(EcrRun& run);

}  // namespace zolmara
