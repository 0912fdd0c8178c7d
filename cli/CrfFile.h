#pragma once

// What the commands on a Cost Report File have in common.

#include <string>
#include <string_view>

#include "cli/Command.h"
#include "core/Currency.h"
#include "core/Variant.h"

namespace zolmara::cli {

/// Of "--force", for the commands that write files.
inline constexpr std::string_view kForceHelp = "Replace files that are no earlier output of it";
inline constexpr std::string_view kForceHint = "--force replaces it";

/// FILE, the first argument of every command on a CRF.
inline constexpr Argument kFileArgument{"FILE", ArgumentKind::Required,
                                        "The Cost Report File (CRF)"};
inline constexpr Argument kItemArgument{"ITEM", ArgumentKind::Required,
                                        "A table of the CRF: A, A6, Bp1, CostCenters, ..."};

/// Whose statement it is, where that is told or changed.
inline constexpr Argument kNumberArgument{"--number", ArgumentKind::Option,
                                          "The home office number, NN-NNNN"};
inline constexpr Argument kStartArgument{"--start", ArgumentKind::Option,
                                         "First day of the fiscal year, M/D/YYYY"};
inline constexpr Argument kNameArgument{"--name", ArgumentKind::Option, "Name of the home office"};

/// Of the commands that make a backup ahead of what they do.
inline constexpr Argument kNoBackup{"--no-backup", ArgumentKind::Flag,
                                    "Without a backup of FILE ahead of it"};
/// Backs FILE up, unless that was declined. StoreError when it cannot be done: then the command
/// does nothing.
void BackUpAhead(const Inputs& inputs);

/// The path in full, so that its folder is known whatever the working folder is.
std::string FullPath(const std::string& path);

/// Opens FILE by the rules of opening. False when it was refused and the reason shown.
/// StoreError when it is no database or cannot be read.
bool OpenFile(const Inputs& inputs);

/// The table's name as the open CRF spells it. An error naming table and file when there is none.
std::string TableNamed(const std::string& item);

/// The name of the table's line number field, its first: "LineNum" or "SeqNum".
std::string KeyOf(const std::string& table);

/// A line number from the command line, such as 4 or 4.01.
Currency LineOf(const std::string& text);

/// Who signed the open CRF, and when; Null while nobody has.
Variant Signature();

}  // namespace zolmara::cli
