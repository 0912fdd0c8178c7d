#pragma once

// Every worksheet window as data: its caption, rows, columns, headings, locks, lists and buttons;
// and the procedures behind what a person does in it. One window class shows them all.
//
// Method. A window is described by DescribeForm, anew at each refresh: the cost centers decide the
// columns of the schedules. FormRows gives its rows; it holds their keys and reads a row when it is
// asked for. What is keyed goes cell by cell through KeyCell into a RowEntry, which is the grid's
// changed row; CommitRow checks the row as a whole and stores it in one batch. Messages are shown
// on the way, through Dialogs, with the words and titles of each editor. A block from a spreadsheet
// goes through the same rules by PasteBlock, without a box.
//
// A `row` counts the rows of FormRows and a `column` the Columns of the form, both from 0.

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Currency.h"
#include "core/Variant.h"
#include "forms/RowEntry.h"
#include "store/Dao.h"

namespace zolmara {

enum class FormMode { Edit, View };

/// "Edit" or "View", as captions begin.
std::string_view ModeName(FormMode mode);
/// The mode of "edit" or "view" in any case; nothing for another word.
std::optional<FormMode> ModeNamed(std::string_view word);

enum class CellAlign { Left, Center, Right };

/// A column of the grid.
struct FormColumn {
    std::string Field;  ///< of the form's table
    /// The heading's own first line: the column's number on the form, a cost center's line. Empty
    /// for the line number and the name.
    std::string Number;
    /// To be folded to the column's width at its blanks; "|" always begins a new line.
    std::string Title;
    int Width = 0;  ///< twips
    CellAlign Align = CellAlign::Left;
    std::string NumberFormat;  ///< a pattern of FormatNumber; empty for text
    FieldType Type = FieldType::dbText;
    int Size = 0;          ///< characters that a text field takes
    bool Locked = true;    ///< no cell of it can be keyed; else IsCellOpen decides cell by cell
    bool Hidden = false;   ///< read with the row, not shown
    bool Wrap = false;     ///< long text goes on in a second line
    bool HasList = false;  ///< cells that can be keyed have a list button: ChoicesOf
    /// The column says which row it is (line, name): locked, and it stays in sight.
    bool Identity = false;

    bool IsNumber() const;
};

/// A button of picButtons.
struct FormButton {
    std::string Name;  ///< "cmdNext"
    std::string Caption;
    std::string ToolTip;
    bool Enabled = true;
};

/// A worksheet window.
struct WorksheetForm {
    FormMode Mode = FormMode::View;
    std::string Name;     ///< "frmEditA6"; of a class that serves several worksheets, "frmEditBpx"
    bool Shared = false;  ///< one class, a new instance for each worksheet
    std::string Item;     ///< as OpenWorksheet takes it: "A6", "CCs"
    std::string Table;    ///< what it is bound to: "A6", "CostCenters"
    std::string Key;      ///< the table's line number: "LineNum" or "SeqNum"
    std::string Caption;
    std::string RowSource;  ///< the statement that the data source is bound to
    std::vector<FormColumn> Columns;
    int FrozenColumns = 0;  ///< the first so many stay in sight while amounts scroll
    std::vector<FormButton> Buttons;
    bool GrowsByPaste = false;  ///< rows pasted past the end are added

    /// The column of a field, without regard to case; -1 when there is none.
    int ColumnOf(std::string_view field) const;
    const FormButton* Button(std::string_view name) const;  ///< null when the form has none such
};

/// The windows that there are, by mode and Item, in the order of the menus.
struct FormEntry {
    FormMode Mode;
    std::string Item;
    std::string Name;  ///< the form's name
};
const std::vector<FormEntry>& AllForms();

/// True where the mode has a window for the Item, in any case: "CCs", "ES" and "A" have both, "E"
/// and "Cp1" a view alone.
bool HasForm(FormMode mode, std::string_view item);

/// The window of a worksheet, for the CRF as it is now. What has no editor gives its view. Nothing
/// for an Item that is no worksheet; UnknownWorksheetText is then to be shown, style 16.
/// StoreError when the table is missing.
std::optional<WorksheetForm> DescribeForm(FormMode mode, std::string_view item);
std::string UnknownWorksheetText(std::string_view mode, std::string_view item);

/// The Item of the worksheet before or after the one that a caption names, in the order of the
/// registry's names; in "Edit" those without an editor are passed over. Empty at either end, and
/// for a caption that names no worksheet.
std::string NextWorksheet(std::string_view caption, bool forward);

/// The Item that stands from the sixteenth character of a caption on.
std::string ItemOfCaption(std::string_view caption);

// --- Rows ----------------------------------------------------------------------------------------

/// The rows of a form. Opening reads the keys alone; a row is read when a cell of it is asked for,
/// and the last few hundred are kept until Requery.
class FormRows {
public:
    explicit FormRows(const WorksheetForm& form);

    /// The rows as the store has them now.
    void Requery();
    int Count() const { return static_cast<int>(marks_.size()); }

    /// A cell; Null past the end, and for a row that has gone since.
    Variant Cell(int row, int column) const;
    Variant Cell(int row, std::string_view field) const;
    /// As the grid shows it: by the column's number format, 07/01/1987, Null as nothing.
    std::string CellText(int row, int column) const;
    /// The row's line number; 0 where it is Null.
    Currency Line(int row) const;
    /// The row of a line, or -1.
    int RowOf(Currency line) const;

    /// What a row is known by: it stays the row's own when lines are numbered anew. 0 past the end.
    std::int64_t Mark(int row) const;
    /// The row of a mark; -1 when it has gone.
    int RowMarked(std::int64_t mark) const;
    /// The row's line as the store has it now; nothing when the row has gone since.
    std::optional<Currency> LineNow(int row) const;

private:
    const std::vector<Variant>& Read(int row) const;

    std::string source_;
    std::string key_;
    std::vector<std::string> fields_;   ///< of the columns, in their order
    std::vector<std::string> formats_;  ///< of the columns
    mutable std::optional<Recordset> rows_;
    std::vector<int> positions_;  ///< of the columns' fields in the recordset
    std::vector<std::int64_t> marks_;
    mutable std::map<int, std::vector<Variant>> read_;
};

/// A value as the column shows it on a line: a unit cost multiplier has its six decimals.
std::string ShownText(const FormColumn& column, Currency line, const Variant& value);

// --- What holds on a row ------------------------------------------------------------------------

/// A row to be keyed, with nothing keyed yet.
RowEntry BeginRow(const WorksheetForm& form, Currency line);

/// True where the cell can be keyed, as the row stands with what has been keyed already. False in
/// a view.
bool IsCellOpen(const WorksheetForm& form, const RowEntry& row, int column);

/// The heading of a column while the cursor is on the row: on S-1 Part I each line gives its own
/// meaning to the six columns, elsewhere it is the column's title.
std::string TitleOnRow(const WorksheetForm& form, const RowEntry& row, int column);

/// An entry of the list that a cell's button opens, and what is keyed (KeyCell) when it is picked.
struct FormChoice {
    std::string Text;  ///< "Y - Yes"
    std::string Keyed;
};
/// Empty where the cell has no list, or cannot be keyed.
std::vector<FormChoice> ChoicesOf(const WorksheetForm& form, const RowEntry& row, int column);
/// True where the cell is locked for typing, and its list alone gives it a value.
bool IsOnlyPicked(const WorksheetForm& form, const RowEntry& row, int column);
/// The menu that the list is, for its objectName: "ButtonListYN", "ButtonListCodes", "mnuType" ...
std::string ChoiceMenuOf(const WorksheetForm& form, const RowEntry& row, int column);

/// Whether cmdAdd and cmdDelete work with the cursor on the line; without a line, on no row.
struct LineButtons {
    bool Add = false;
    bool Delete = false;
};
LineButtons LineButtonsOn(const WorksheetForm& form, std::optional<Currency> line);

/// True for the cells of the home office's identity, which are not keyed: entering one opens
/// frmCRFEditInfo.
bool OpensIdentity(const WorksheetForm& form, Currency line, int column);

// --- Keying -------------------------------------------------------------------------------------

/// BeforeColUpdate and AfterColUpdate: checks an entry by the rules of its cell and shows the
/// editor's message. True when it was taken into the row, perhaps in another form than keyed, and
/// with cells that follow it. False when it was refused: the row is as before.
bool KeyCell(const WorksheetForm& form, RowEntry& row, int column, const Variant& value);

/// A cell as the row will have it: as keyed, or as stored.
Variant CellOfRow(const WorksheetForm& form, const RowEntry& row, int column);

/// BeforeUpdate, Update and AfterUpdate: checks the row, stores it with all that follows from it in
/// one batch, refreshes the views that follow and turns mnuReportSubmit off. True when the row is
/// on the disk, or held nothing; it is empty then. False when it was refused or could not be
/// written (read-only, full, locked): a box has told, and the row is still as keyed.
bool CommitRow(const WorksheetForm& form, RowEntry& row);

// --- Lines --------------------------------------------------------------------------------------

/// What a button did.
struct LineOutcome {
    std::optional<Currency> Line;  ///< where the cursor goes; nothing when it stays
    bool Changed = false;          ///< rows were added or deleted: requery
    std::string OpenEdit;          ///< an Item that is to be opened for editing instead
};

/// cmdAdd behind the current line; the grid has been committed. Asks what is to be asked. On the
/// schedules it tells that lines come from S-2, whose Item is then given to be opened.
LineOutcome AddFormLine(const WorksheetForm& form, std::optional<Currency> current);
/// cmdDelete of the current line; on A-6 of the selected lines. Asks nothing.
LineOutcome DeleteFormLines(const WorksheetForm& form, std::optional<Currency> current,
                            std::span<const Currency> selected);

// --- Opening and closing ------------------------------------------------------------------------

/// Form_Load: frmEditCCs closes all other worksheet windows first. False when it must not open.
bool FormMayOpen(const WorksheetForm& form);

/// Form_QueryUnload, once the grid has been committed: the guards on leaving, with their messages.
/// False when the window must stay.
bool FormMayClose(const WorksheetForm& form);

/// Form_Unload, once it may close: A-6 is numbered anew by code, and its view refreshes.
void FormCloses(const WorksheetForm& form);

// --- Blocks -------------------------------------------------------------------------------------

/// A pasted value that did not go in as it was.
struct BlockFinding {
    std::string Item;
    Currency Line;       ///< 0 for a row that could not be added
    std::string Column;  ///< the title, on one line
    std::string Value;   ///< as pasted
    std::string Reason;
    bool Refused = true;  ///< false when it went in rounded, or otherwise corrected
};

struct BlockResult {
    int Stored = 0;  ///< cells that went in
    std::vector<BlockFinding> Findings;
    std::vector<Currency> Added;  ///< lines that were added
};

/// Pastes rows of texts with the first at a cell, hidden columns passed over, as one batch and
/// without a box. Numbers are read in the styles of spreadsheets: "1,234", "(1,234)", "$1,234.00",
/// "1 234", "-" for nothing, blanks around. An empty text empties its cell: a number becomes 0.
/// A row that its rules refuse stays as it was, the others go in. Rows past the end are added
/// where the form grows by paste. Requery afterwards. StoreError when the CRF could not be
/// written; then nothing went in.
BlockResult PasteBlock(const WorksheetForm& form, const FormRows& rows, int row, int column,
                       const std::vector<std::vector<std::string>>& cells);

/// Rows and columns of a selection, both ends included.
struct BlockRange {
    int FirstRow = 0;
    int LastRow = 0;
    int FirstColumn = 0;
    int LastColumn = 0;
    friend bool operator==(const BlockRange&, const BlockRange&) = default;
};
/// The Delete key: a number becomes 0, a text empty; cells that cannot be keyed are passed over.
BlockResult ClearBlock(const WorksheetForm& form, const FormRows& rows, const BlockRange& range);
/// Ctrl+D: the first row's cells go to the rows below; columns that cannot be keyed are passed
/// over.
BlockResult FillDown(const WorksheetForm& form, const FormRows& rows, const BlockRange& range);

// --- Figures ------------------------------------------------------------------------------------

/// What A-6 moves under a code, with a row that is being keyed counted as keyed.
struct CodeSums {
    std::string Code;
    double Increases = 0;
    double Decreases = 0;
    double Difference() const { return Increases - Decreases; }
};
CodeSums SumsOfCode(std::string_view code, const RowEntry* keyed = nullptr);

/// Sum, count and average of the numbers in a block.
struct BlockSums {
    double Sum = 0;
    int Count = 0;  ///< of cells that hold a number
    double Average() const { return Count == 0 ? 0 : Sum / Count; }
};
BlockSums SumsOfBlock(const WorksheetForm& form, const FormRows& rows, const BlockRange& range);

}  // namespace zolmara
