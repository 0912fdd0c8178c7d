#pragma once

namespace zolmara {

/// Writes the electronic signature of the statement; nothing where it is to be signed by hand.
void ECR_Signature();

}  // namespace zolmara
