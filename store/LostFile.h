#pragma once

// An open CRF whose name leads to another file by now, or to none. What it holds is to be had
// through its handle alone, as long as that is open.

#include <string>

#include "store/Dao.h"

namespace zolmara {

/// True when another program has deleted, moved or replaced the file since it was opened.
bool IsLost(Database& open);

/// Copies what an open CRF holds over one that is there or to a new file. StoreError when that
/// fails, also for a target that NeedReplaceable refuses; what stood there is as it was.
void CopyLost(Database& open, const std::string& target);

}  // namespace zolmara
