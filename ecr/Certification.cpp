#include "ecr/Certification.h"

#include <fmt/format.h>

#include "core/Clock.h"
#include "core/Globals.h"
#include "core/Windows.h"
#include "ecr/Build_ECR.h"
#include "print/CertificationText.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

void ClearSignature() {
    RunAct("Clear the signature", [] {
        gDB.Execute(
            "Update Master Set ESFirstName=Null, ESLastName=Null, ESTitle=Null, ESDate=Null;");
    });
}

void CloseWindow() { TheWindows().UnloadForm("frmESCert"); }

}  // namespace

CertificationForm LoadCertification() {
    const Recordset master = gDB.OpenRecordset("Select * From Master;");
    const std::string homeOffice = fmt::format("{} ({})", gProviderName, gProviderNumber);
    return {fmt::format("{}\r\n\r\n{}\r\n\r\n{}", kCertificationHeading, kCertificationWarning,
                        CertificationStatement(homeOffice, Text(gFYStart), Text(gFYEnd))),
            Text(master["ESFirstName"]), Text(master["ESLastName"]), Text(master["ESTitle"])};
}

bool CanAccept(std::string_view first, std::string_view last, std::string_view title) {
    return !Trim(first).empty() && !Trim(last).empty() && !Trim(title).empty();
}

void AcceptCertification(std::string_view first, std::string_view last, std::string_view title) {
    RunAct("Sign", [&] {
        Recordset master = gDB.OpenRecordset("Select * From Master;");
        master.Edit();
        master.Set("ESFirstName", first);
        master.Set("ESLastName", last);
        master.Set("ESTitle", title);
        master.Set("ESDate", Now());
        master.Update();
    });
    CloseWindow();
    Build_ECR();
}

void SignManually() {
    ClearSignature();
    CloseWindow();
    Build_ECR();
}

void CancelCertification() {
    ClearSignature();
    CloseWindow();
}

void mnuReportManually() {
    ClearSignature();
    Build_ECR();
}

}  // namespace zolmara
