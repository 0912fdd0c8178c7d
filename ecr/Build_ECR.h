#pragma once

// The two files that are submitted: the electronic cost report (ECR), and the print image (PI) of
// the whole form, each sealed, stamped with the same minute and named as the government wants it.

#include <string>

#include "core/Variant.h"
#include "print/Reports.h"

namespace zolmara {

/// The stamp of the report that was built last, to the minute.
extern Variant ECRDate;

/// Asks for the file's name, writes the report, seals it, prints the form into the print image,
/// seals that, prints the certification page, and offers to copy the files. The signature has been
/// given or cleared before. Looks neither at findings nor at whether the statement is calculated.
///
/// Both files and the certification page are made aside, the former two sealed. They are put in
/// place, all or none, when the act that is under way is saved, and at once without one: then this
/// returns before they are (see Acts::OnceSaved). What a build that was killed has left aside goes
/// with the next one. When three print images in a row come without a
/// fingerprint, it ends on the spot after a message and no file is put in place: the
/// clock stays set back, ECRStamp stays and the menus stay off. Any other failure puts all of that
/// right and goes on to the caller: StoreError where a table is missing or a file cannot be
/// written, an error for a fingerprint library that cannot be used.
void Build_ECR();

/// Raises, or asks, unless the files of a build may be written: none is the CRF or another file
/// that is kept, and the two are not one. Build_ECR asks it ahead of everything.
void NeedMayBuild(const std::string& ecrPath);

/// The files of the build that was done last in this run of the program.
struct BuiltFiles {
    std::string Ecr;
    std::string Pi;
    std::string Seal;  ///< what the seal is worth, a sentence
};
const BuiltFiles& LastBuild();

/// Both files and their seal, for the user: lines ended by carriage returns. Empty before a build.
std::string BuiltNotice();

}  // namespace zolmara
