#include "ui/BuildEcr.h"

#include "ecr/Certification.h"
#include "ui/OpenForms.h"
#include "ui/frmESCert.h"

namespace zolmara::ui {

void ShowCertification() { ShowForm(new frmESCert); }
void BuildSignedByHand() { mnuReportManually(); }

}  // namespace zolmara::ui
