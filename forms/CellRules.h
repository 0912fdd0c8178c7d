#pragma once

// What may be keyed into which cell of a worksheet's editor, and how an entry is met: stored as
// keyed, put into another form, or refused with a message. A cell that no rule names is locked.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Currency.h"
#include "core/Variant.h"

namespace zolmara {

/// An entry on its way into a cell of the open CRF.
struct CellEntry {
    std::string Item;   ///< the worksheet, or CostCenters or ES
    Currency Line;      ///< LineNum or SeqNum of the row
    std::string Field;  ///< by its name
    Variant Value;      ///< as keyed; after the check, as it is to be stored
    /// Other cells of the row that follow the entry, as a name follows its line number.
    std::vector<std::pair<std::string, Variant>> Others;

    bool Refused = false;
    std::string Text;  ///< what the user is told; empty when there is nothing to tell
    std::string Title;
    int Style = 0;

    void Refuse(std::string_view text, std::string_view title = "Entry Error", int style = 16);
    void Warn(std::string_view text, std::string_view title = "Entry Warning", int style = 64);
    /// A blank entry empties the cell.
    bool IsBlank() const;
};

/// The text that refuses a locked cell.
inline constexpr std::string_view kLockedCellText =
    "The cell you are attempting to input or modify does not accept changes.  Select OK to "
    "continue.";

/// True where the worksheet has an editor at all; C, D, E, F and the like are computed.
bool HasEditor(std::string_view item);

/// True where the editor lets the cell be entered. The row must be there: on some rows another
/// cell of the row decides.
bool IsCellOpen(std::string_view item, Currency line, std::string_view field);

/// Checks the entry by the rules of its cell; nothing is written and nothing shown.
void CheckCell(CellEntry& entry);

/// Checks the entry, tells what is to be told, and stores it with all that follows from it:
/// names of cost centers and components are carried to the other worksheets. False when it was
/// refused; the CRF is then as it was. The row must be there.
bool EnterCell(CellEntry& entry);

}  // namespace zolmara
