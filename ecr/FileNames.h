#pragma once

// The government's names of the submission files: "HO", six characters of the home office's number,
// ".", the fiscal year, "A" and the version; and the print image beside it, which begins with "PI".

#include <optional>
#include <string>
#include <string_view>

namespace zolmara {

/// The name that the open statement's electronic report is to have, "HO123456.23A1".
std::string EcrFileName();

/// True where a title, in any case, follows the rule that the government checks; the version is
/// not checked.
bool IsGovernmentName(std::string_view title);

/// Asks where the report is to be written, beginning in the CRF's folder, and again for another
/// name than the government's unless the user keeps it. Nothing when the user cancelled.
std::optional<std::string> AskEcrPath();

/// The path of the print image that belongs to a report.
std::string PiPath(const std::string& ecrPath);

/// What stands behind the last separator of a path.
std::string FileTitle(const std::string& path);

}  // namespace zolmara
