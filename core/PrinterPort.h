#pragma once

// The printer that print files are sent to.

namespace zolmara {

class PageDevice;

class PrinterPort {
public:
    virtual ~PrinterPort() = default;

    /// Null where there is none.
    virtual PageDevice* Printer() { return nullptr; }
};

PrinterPort& ThePrinterPort();

}  // namespace zolmara
