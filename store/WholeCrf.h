#pragma once

// A closed Cost Report File as a whole: compacted, copied, put in the place of another.

#include <string>

#include "store/files/Scratch.h"

namespace zolmara {

/// Compacts the CRF `path` by way of the file `through`, which this makes and, however it ends,
/// takes away. StoreError when `through` stands there already, when another program holds the CRF,
/// or when the disk has no room; the CRF is then as it was. A CRF whose name is gone behind the
/// copy gets it back by that.
void CompactCrfThrough(const std::string& path, const std::string& through);

/// Copies a CRF, as its last commit left it, over one that is there or as a new file with the
/// rights of the source. StoreError when that fails, also for a target that NeedReplaceable
/// refuses; what stood there is as it was.
void CopyCrf(const std::string& source, const std::string& target);

/// Copies the content of a CRF, as its last commit left it, into the file `fresh`, which is not
/// there yet and which nobody else knows. The source may be open. StoreError when that fails, and
/// for a source that is no database.
void CopyContent(const std::string& source, const std::string& fresh);

/// Whether two CRFs hold the same to the last page. What SQLite counts in a file's head, such as
/// its commits, is no content. StoreError when one cannot be read.
bool HoldTheSame(const std::string& a, const std::string& b);

/// Puts the whole, closed CRF `fresh`, which lies in a scratch folder beside the target, in the
/// place of `target`: of a CRF, of any other file, or of none. With `mayReplace` false a file that
/// stands there is an error. `like` names a file whose rights a new one takes; without it the
/// user's wish for new files holds. StoreError as CopyCrf.
void PutCrf(const std::string& fresh, const std::string& target, bool mayReplace,
            const std::string& like = "");

/// Raises StoreError unless a CRF can be put in this place: nobody has the file there open, it may
/// be written, and it is no other program's database; or there is none and the folder takes one.
void NeedReplaceable(const std::string& target);

/// Deletes what stands under the name of a close's temporary file, unless a close that still runs
/// has made it or a program has it open.
void ClearCompaction(const std::string& through);

}  // namespace zolmara
