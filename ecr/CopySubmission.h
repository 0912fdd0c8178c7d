#pragma once

// Copies the submission files to a removable drive, as frmCopy2Floppy offers after a build.

#include <string>

namespace zolmara {

/// What frmCopy2Floppy shows of where the files lie: tbLocation for the path of an ECR file.
std::string CopyLocation(const std::string& ecrPath);

/// cmdProcess: copies the file whose name begins with "SN" in place of the path's own beginning,
/// then the one that begins with "PI", to the top folder of a drive, over files of those names.
/// `path` takes on the name that was tried last. True when the window is done; False after an
/// error, which has been shown. An empty path copies nothing.
bool CopySubmission(std::string& path, const std::string& drive);

}  // namespace zolmara
