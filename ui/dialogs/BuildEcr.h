#pragma once

namespace zolmara::ui {

/// Shows frmESCert, where the statement is signed ahead of the build.
void ShowCertification();

/// mnuReportManually: clears the signature and builds the files.
void BuildSignedByHand();

}  // namespace zolmara::ui
