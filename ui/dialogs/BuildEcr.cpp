#include "ui/dialogs/BuildEcr.h"

#include "ecr/Certification.h"
#include "ui/dialogs/frmESCert.h"
#include "ui/main/OpenForms.h"
#include "ui/overview/StatementNotes.h"

namespace zolmara::ui {

void ShowCertification() { ShowForm(new frmESCert); }
void BuildSignedByHand() {
    const FiguresStay stay;
    mnuReportManually();
}

}  // namespace zolmara::ui
