#pragma once

// What the worksheets' windows know of a cell of the open CRF, for its explanation: its title where
// the table has none, and where the user changes it. What the editors and the import let in is
// decided by their own tables; here it is only told.

#include "worksheets/Explain.h"

namespace zolmara {

/// Gives a cell without a title that of its window: of a cost center, a pooled basis, a particular
/// of S-1 Part I by its line. Tells of a keyed cell which of its editor and the import take it as
/// its line stands. One that neither takes, and that no calculation writes, comes with the form: it
/// becomes Fixed. All else stays as it is.
void TellByForm(Explanation& told);

}  // namespace zolmara
