#include "worksheets/CalcMessages.h"

#include "core/Dialogs.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

std::int64_t told = 0;

}  // namespace

void TellInCalculation(const std::string& text) {
    ++told;
    TheDialogs().MsgBox(text, kExclamation, std::string(kProductName));
}

std::int64_t CalculationMessages() { return told; }

}  // namespace zolmara
