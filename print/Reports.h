#pragma once

// The reports, one for each worksheet family. Each writes into an open file, or with a number below
// 1 into a file of its own in the CRF's folder, which it sends to the printer. An empty worksheet
// gives no pages. StoreError where a table is missing or the file cannot be written.

#include <string>
#include <string_view>

#include "print/PrintFile.h"

namespace zolmara {

void Print_A(FileNumber file);
void Print_A6(FileNumber file);
void Print_A7(FileNumber file);  ///< both parts
void Print_A8(FileNumber file);
void Print_A81(FileNumber file);  ///< both parts
void Print_G(FileNumber file);
void Print_G1(FileNumber file);
void Print_S1(FileNumber file);  ///< both parts
void Print_S2(FileNumber file);  ///< all parts

/// A schedule of B to D-1, of E or E-1, of F to F-2. Columns that do not fit on a page stand on
/// further pages, where the lines and their names are repeated.
void Print_Bx(std::string_view item, FileNumber file);
void Print_Ex(std::string_view item, FileNumber file);
void Print_Fx(std::string_view item, FileNumber file);

/// The time stamp of the electronic report, "mm/dd/yyyy hh:mm", while it is being built; else
/// empty.
extern std::string ECRStamp;

/// Worksheet S with the certification. `certification` tells the page that follows a build, with a
/// print file of its own, from the worksheet as one of the form. The texts are the seals of the
/// electronic report and the print image, and the stamp of the print image.
void Print_Sp1(FileNumber file, bool certification = false, std::string_view ecrFingerprint = "",
               std::string_view piStamp = "", std::string_view piFingerprint = "");

/// The findings of the last edit checks, into "CalcErrors.prt" in the CRF's folder, and to the
/// printer.
void Print_Errors();

}  // namespace zolmara
