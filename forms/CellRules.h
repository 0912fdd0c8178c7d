#pragma once

// What may be keyed into which cell of a worksheet's editor, and how an entry is met: stored as
// keyed, put into another form, or refused with a message. A cell that no rule names is locked.

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Currency.h"
#include "core/Variant.h"
#include "forms/RowEntry.h"

namespace zolmara {

/// What the user is told of an entry; nothing where the text is empty.
struct EntryMessage {
    std::string Text;
    std::string Title;
    int Style = 0;
    bool Beeps = false;
    std::string Field = {};  ///< the cell that is at fault, where the row can do without it
};

/// An entry on its way into a cell of the open CRF.
struct CellEntry {
    std::string Item;     ///< the worksheet, or CostCenters or ES
    Currency Line;        ///< LineNum or SeqNum of the row
    std::string Field;    ///< by its name
    Variant Value;        ///< as keyed; after the check, as it is to be stored
    bool NewRow = false;  ///< the row is yet to be made; one that has its number will move up
    /// Other cells of the row that follow the entry, as a name follows its line number.
    std::vector<std::pair<std::string, Variant>> Others;
    /// What has been keyed into the row already and is not stored yet; null for nothing.
    const RowEntry* Row = nullptr;

    bool Refused = false;
    std::string Text;  ///< what the user is told; empty when there is nothing to tell
    std::string Title;
    int Style = 0;
    bool Beeps = false;  ///< with a refusal

    void Refuse(std::string_view text, std::string_view title = "Entry Error", int style = 16);
    void Warn(std::string_view text, std::string_view title = "Entry Warning", int style = 64);
    EntryMessage Message() const { return {Text, Title, Style, Beeps && Refused}; }
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
/// cell of the row decides, as keyed in `row` or else as stored.
bool IsCellOpen(std::string_view item, Currency line, std::string_view field,
                const RowEntry* row = nullptr);

/// True where the editor lets the field be entered on some line at least.
bool IsKeyedField(std::string_view item, std::string_view field);

/// The list of a cell's entries; empty where it has none.
struct EntryList {
    std::string_view Menu;
    std::span<const std::string_view> Entries;
    bool OnlyPicked = false;  ///< nothing is typed into the cell
};
EntryList ListOf(std::string_view item, Currency line, std::string_view field);
/// The same of the first line of a field that has a list.
EntryList ListOf(std::string_view item, std::string_view field);

/// Checks the entry by the rules of its cell; nothing is written and nothing shown.
void CheckCell(CellEntry& entry);

/// Checks a row as it will be, once its cells have passed. An empty text: it may be stored.
EntryMessage CheckRow(const RowEntry& row);

/// Stores a row that was checked, in one batch, with all that is carried to other worksheets: names
/// of cost centers and components. Cells that hold what is stored already are left out; gives the
/// others. The row must be there. StoreError when it cannot be written.
RowEntry WriteRow(const RowEntry& row);

/// What follows a stored row that changed: mnuReportSubmit goes off, the views of the worksheet and
/// those that depend on it refresh.
void FollowRow(const RowEntry& changes);

/// Both. A row of cells that are stored already does nothing.
void StoreRow(const RowEntry& row);

/// Shows a message with its beep, or logs it within a batch.
void Tell(const EntryMessage& message);

/// The row with the entry, which has passed, in it.
RowEntry RowOf(const CellEntry& entry);

/// Checks the entry and its row, tells what is to be told, and stores it. False when it was
/// refused; the CRF is then as it was. The row must be there.
bool EnterCell(CellEntry& entry);

}  // namespace zolmara
