#pragma once

// Which reports are printed, in which order and into which file.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "print/PrintRun.h"

namespace zolmara {

/// True when the worksheet has a report of its own or shares one. With `doPrint` the report runs.
bool Print_Worksheet(std::string_view item, PrintRun& run, bool doPrint);

/// The path of the print file that a worksheet's report writes when it has a file of its own;
/// empty for a worksheet without a report.
std::string PrintFileOf(std::string_view item);

/// Prints the whole form: worksheet S and its family first, then the rest by name. With 0 into the
/// file of WholePrintFile, which is sent to the printer; else into an open file, which stays open.
void Print_All(FileNumber file);

/// The CRF's folder, the provider number and ".PRT".
std::string WholePrintFile();

// --- frmSelectivePrints

/// The worksheets that have a report, in the order of Print_All, as "ItemName (Item)".
std::vector<std::string> SelectivePrintList();
/// The worksheet of an entry of that list.
std::string ItemOfEntry(std::string_view entry);
/// cmdPrint: prints the entries that are checked, each as a job of its own; S-1, S-2 and A-7 once,
/// however many of their parts are checked.
void PrintSelected(std::span<const std::string> entries);

}  // namespace zolmara
