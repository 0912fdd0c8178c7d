#pragma once

// What frmESCert does: the certification of the statement, and how it is signed. mnuReportManually
// signs by hand without the window.

#include <string>
#include <string_view>

namespace zolmara {

/// What the window shows when it opens.
struct CertificationForm {
    std::string lblCert;
    std::string txtESFirst;
    std::string txtESLast;
    std::string txtESTitle;
};
CertificationForm LoadCertification();

/// True when the statement can be signed: each text has more than blanks.
bool CanAccept(std::string_view first, std::string_view last, std::string_view title);

/// cmdAccept: stores the signature with the present date and time, closes the window and builds
/// the files. The signature stays when the build is cancelled or fails. Each text takes 255
/// characters; StoreError for more.
void AcceptCertification(std::string_view first, std::string_view last, std::string_view title);

/// cmdManually: clears the signature, closes the window and builds the files.
void SignManually();

/// cmdCancel: clears the signature and closes the window.
void CancelCertification();

/// The command of the main window: clears the signature and builds the files.
void mnuReportManually();

}  // namespace zolmara
