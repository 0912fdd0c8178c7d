#pragma once

// Adding and deleting lines from the command line: what cc, component and line have in common.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Command.h"
#include "core/Currency.h"
#include "forms/CellRules.h"
#include "structure/EditLines.h"

namespace zolmara::cli {

inline constexpr Argument kWholeFlag{"--whole", ArgumentKind::Flag, "Add a whole line"};
inline constexpr Argument kSubFlag{"--sub", ArgumentKind::Flag, "Add a subscript"};

/// LINE, where it was given.
std::optional<Currency> LineGiven(const Inputs& inputs);
/// LINE, which must be a line of the item.
Currency NeedLine(std::string_view item, const Inputs& inputs);

/// The line that may be added behind LINE, by the editor's rules and --whole or --sub. On a
/// table without LINE, LINE itself when it is what the rules offer. Nothing when it is refused;
/// the reason has been shown or is thrown.
std::optional<Currency> NewLine(std::string_view item, const Inputs& inputs);

/// True when all entries for a line would be accepted, one that is yet to be made among them. A
/// refusal's message has been shown.
bool AllAccepted(const std::vector<CellEntry>& entries);

/// Adds a line and enters its names, as one act: all of it, or nothing, is in the file. The
/// entries have been accepted.
bool AddNamedLine(std::string_view item, Currency line, std::vector<CellEntry> entries);

/// Deletes LINE. What stays is an error that says so.
ExitStatus DeleteGivenLine(std::string_view item, const Inputs& inputs);

/// Rows of a table, as a listing.
ExitStatus ListTable(std::string_view table);

}  // namespace zolmara::cli
