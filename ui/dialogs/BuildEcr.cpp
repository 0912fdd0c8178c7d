#include "ui/dialogs/BuildEcr.h"

#include "ecr/Certification.h"
#include "ui/dialogs/frmESCert.h"
#include "ui/main/OpenForms.h"

namespace zolmara::ui {

void ShowCertification() { ShowForm(new frmESCert); }
void BuildSignedByHand() { mnuReportManually(); }

}  // namespace zolmara::ui
