#pragma once

namespace zolmara {

/// Reads the identity of the open CRF, and its component flags, into the session.
void ReadSession();

}  // namespace zolmara
