#include "core/Host.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace zolmara {
namespace {

Host* installedHost = nullptr;

// The answers of the buttons of each set, from left to right; a set without a third button
// repeats its first.
constexpr int kRetry = 4;
constexpr int kIgnore = 5;
constexpr std::array<std::array<int, 3>, 6> kButtonSets{{
    {kOk, kOk, kOk},
    {kOk, kCancel, kOk},
    {kAbort, kRetry, kIgnore},
    {kYes, kNo, kCancel},
    {kYes, kNo, kYes},
    {kRetry, kCancel, kRetry},
}};

}  // namespace

int DefaultAnswer(int style) {
    const auto set = static_cast<std::size_t>(ButtonsOf(style));
    if (set >= kButtonSets.size()) return kOk;
    if (style & kDefaultButton3) return kButtonSets[set][2];
    return kButtonSets[set][style & kDefaultButton2 ? 1 : 0];
}

Host& TheHost() {
    if (!installedHost) throw std::logic_error("No host is installed.");
    return *installedHost;
}

Dialogs& TheDialogs() { return TheHost(); }
Status& TheStatus() { return TheHost(); }
Machine& TheMachine() { return TheHost(); }
PrinterPort& ThePrinterPort() { return TheHost(); }
Windows& TheWindows() { return TheHost(); }

Host* InstallHost(Host* host) {
    Host* former = installedHost;
    installedHost = host;
    return former;
}

void Machine::EndProgram() {
    std::fflush(nullptr);
    std::_Exit(4);
}

}  // namespace zolmara
