#pragma once

// Where the user changes a cell of the open CRF, for its explanation. What the editors and the
// import let in is decided by their own tables; here it is only told.

#include "worksheets/Explain.h"

namespace zolmara {

/// Tells of a keyed cell which of its editor and the import take it as its line stands. One that
/// neither takes, and that no calculation writes, comes with the form: it becomes Fixed. Other
/// explanations stay as they are.
void TellWhereKeyed(Explanation& told);

}  // namespace zolmara
