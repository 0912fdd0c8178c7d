#include "ui/BuildEcr.h"

#include "core/Host.h"
#include "store/Session.h"

namespace zolmara::ui {
namespace {

void SayThereIsNoBuild() {
    TheHost().MsgBox("Building an ECR file is not part of this version yet.", kInformation,
                     std::string(kProductName));
}

}  // namespace

void ShowCertification() { SayThereIsNoBuild(); }
void BuildSignedByHand() { SayThereIsNoBuild(); }

}  // namespace zolmara::ui
