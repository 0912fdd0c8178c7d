#pragma once

// A component of the chain is a line of S-2. The same line number stands for it on the ten
// schedules of its part, so a line is added, deleted and renamed on all eleven tables at once.

#include <array>
#include <string>
#include <string_view>

#include "core/Currency.h"
#include "structure/Renumber.h"

namespace zolmara {

/// The tables of a part (1, 2 or 3) in the order in which they are worked: S-2, then its mirrors.
std::array<std::string, 11> ComponentTables(int part);

/// Adds a component's line to the part's tables: a whole line moves those from it by one, a
/// subscript the rest of its group by .01. StoreError when a table already has the line after
/// that, or, before anything is changed, when a group is full to its end or the lines behind a
/// whole one have no room to move.
void AddS2Line(Currency line, int part);

/// Deletes a component's line from the part's tables and closes the gap. No question is asked.
LineResult DeleteS2Line(Currency line, int part);

/// Writes a component's name and CCN to S-2 and its mirrors, which take 40 characters.
void RenameS2Line(Currency line, int part, std::string_view name, std::string_view ccn);

}  // namespace zolmara
