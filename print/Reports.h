#pragma once

// The reports, one for each worksheet family. Each sets up its page and writes into the
// file of the run, or where that has none into a file of its own in the CRF's folder, which it
// sends to the printer. An empty worksheet gives no pages. StoreError where a table is missing or
// the file cannot be written.

#include <string>
#include <string_view>

#include "print/PrintRun.h"

namespace zolmara {

void Print_A(PrintRun& run);
void Print_A6(PrintRun& run);
void Print_A7(PrintRun& run);  ///< both parts
void Print_A8(PrintRun& run);
void Print_A81(PrintRun& run);  ///< both parts
void Print_G(PrintRun& run);
void Print_G1(PrintRun& run);
void Print_S1(PrintRun& run);  ///< both parts
void Print_S2(PrintRun& run);  ///< all parts

/// A schedule of B to D-1, of E or E-1, of F to F-2. Columns that do not fit on a page stand on
/// further pages, where the lines and their names are repeated.
void Print_Bx(std::string_view item, PrintRun& run);
void Print_Ex(std::string_view item, PrintRun& run);
void Print_Fx(std::string_view item, PrintRun& run);

/// The time stamp of the electronic report, "mm/dd/yyyy hh:mm", while it is being built; else
/// empty.
extern std::string ECRStamp;

/// Worksheet S with the certification. `certification` tells the page that follows a build, with a
/// print file of its own, from the worksheet as one of the form. The texts are the seals of the
/// electronic report and the print image, and the stamp of the print image.
void Print_Sp1(PrintRun& run, bool certification = false, std::string_view ecrFingerprint = "",
               std::string_view piStamp = "", std::string_view piFingerprint = "");

/// The findings of the last edit checks, into "CalcErrors.prt" in the CRF's folder, and to the
/// printer.
void Print_Errors();

}  // namespace zolmara
