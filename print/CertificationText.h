#pragma once

// The wording of Worksheet S, Part II, that is shown before signing and printed.

#include <string>
#include <string_view>

namespace zolmara {

extern const std::string_view kCertificationHeading;
extern const std::string_view kCertificationWarning;

/// The statement that is certified. `homeOffice` names who prepared it, with the number; the dates
/// are the ends of the period, as they are to be shown.
std::string CertificationStatement(std::string_view homeOffice, std::string_view start,
                                   std::string_view end);

/// The foot of the worksheet.
extern const std::string_view kPaperworkNotice;

}  // namespace zolmara
