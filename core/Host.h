#pragma once

// Whoever stands in front of the engine: the windows, the command line, or the script of the
// tests. One host is installed at start; the engine's units include the side of it that they ask.

#include "core/Dialogs.h"
#include "core/Machine.h"
#include "core/PrinterPort.h"
#include "core/Status.h"
#include "core/Windows.h"

namespace zolmara {

class Host : public Dialogs, public Status, public Machine, public PrinterPort, public Windows {};

/// The installed host. Installing gives back the former one.
Host& TheHost();
Host* InstallHost(Host* host);

}  // namespace zolmara
