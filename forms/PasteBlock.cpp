// Blocks of cells: paste, the Delete key, fill down. All of them key each row silently, check it,
// and store it; one batch holds the whole.

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "forms/CellRules.h"
#include "forms/PasteText.h"
#include "forms/WorksheetForm.h"
#include "store/PlainWords.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "structure/EditLines.h"
#include "worksheets/SheetNames.h"

namespace zolmara {

namespace {

/// What is to go into one row: a text for some of the columns.
struct PastedCell {
    int Column;
    std::string Text;
};
using PastedRow = std::vector<PastedCell>;

enum class OnLocked { Report, PassOver };

const FormColumn& ColumnAt(const WorksheetForm& form, int column) {
    return form.Columns[static_cast<std::size_t>(column)];
}

/// The heading on one line, with the number of the column where there is no other word.
std::string OneLineTitle(const WorksheetForm& form, const RowEntry& row, int column) {
    if (column < 0) return "";
    const std::string title = Replace(TitleOnRow(form, row, column), "|", " ");
    return title.empty() ? ColumnAt(form, column).Number : title;
}

class BlockWriter {
public:
    BlockWriter(const WorksheetForm& form, OnLocked onLocked) : form_(form), onLocked_(onLocked) {}

    void Put(Currency line, const PastedRow& cells) {
        RowEntry row = BeginRow(form_, line);
        std::vector<PastedCell> taken;
        for (const PastedCell& cell : cells)
            if (KeySilently(row, cell)) taken.push_back(cell);
        EntryMessage refusal = CheckRow(row);
        while (row.Changed() && row.Find(refusal.Field) != nullptr) {
            RefuseCell(row, taken, refusal);
            refusal = CheckRow(row);
        }
        if (!row.Changed()) return;
        if (!refusal.Text.empty()) return RefuseTaken(row, taken, refusal.Text);
        StoreOrRefuse(row, taken);
    }

    void RefuseAll(Currency line, const PastedRow& cells, const std::string& reason) {
        RefuseRow(BeginRow(form_, line), cells, reason);
    }

    /// The views follow once for the whole block.
    void Follow() {
        changed_.Table = form_.Table;
        FollowRow(changed_);
    }

    BlockResult Result;

private:
    void Note(const RowEntry& row, const PastedCell& cell, const std::string& reason,
              bool refused) {
        Result.Findings.push_back({form_.Item, row.Line, OneLineTitle(form_, row, cell.Column),
                                   cell.Text, reason, refused});
    }

    /// The row goes in without the cell that is at fault.
    void RefuseCell(RowEntry& row, PastedRow& taken, const EntryMessage& refusal) {
        for (const PastedCell& cell : taken)
            if (SameText(ColumnAt(form_, cell.Column).Field, refusal.Field))
                Note(row, cell, refusal.Text, true);
        std::erase_if(taken, [&](const PastedCell& cell) {
            return SameText(ColumnAt(form_, cell.Column).Field, refusal.Field);
        });
        row.Erase(refusal.Field);
    }

    void RefuseRow(const RowEntry& row, const PastedRow& cells, const std::string& reason) {
        for (const PastedCell& cell : cells)
            if (!PlainText(cell.Text).empty()) Note(row, cell, reason, true);
    }

    bool IsToldAsRefused(Currency line) const {
        return std::ranges::any_of(Result.Findings, [&](const BlockFinding& finding) {
            return finding.Refused && finding.Line == line;
        });
    }

    /// A row that was to be emptied and stays is told by its first cell.
    void RefuseTaken(const RowEntry& row, const PastedRow& taken, const std::string& reason) {
        RefuseRow(row, taken, reason);
        if (!taken.empty() && !IsToldAsRefused(row.Line)) Note(row, taken.front(), reason, true);
    }

    /// Nothing is lost where nothing is to go into a locked cell, or what it holds already.
    bool IsHarmless(const RowEntry& row, const PastedCell& cell) const {
        if (onLocked_ == OnLocked::PassOver || PlainText(cell.Text).empty()) return true;
        const Variant stored = CellOfRow(form_, row, cell.Column);
        return PlainText(cell.Text) == ShownText(ColumnAt(form_, cell.Column), row.Line, stored) ||
               PlainNumber(cell.Text) == Text(stored);
    }

    bool KeySilently(RowEntry& row, const PastedCell& cell) {
        if (cell.Column < 0) {
            RefuseRow(row, {cell}, "The worksheet has no column there.");
            return false;
        }
        const FormColumn& column = ColumnAt(form_, cell.Column);
        if (!IsCellOpen(form_, row, cell.Column) && IsHarmless(row, cell)) return false;
        CellEntry entry;
        entry.Item = row.Table;
        entry.Line = row.Line;
        entry.Field = column.Field;
        entry.Value = column.IsNumber() ? PlainNumber(cell.Text) : PlainText(cell.Text);
        entry.Row = &row;
        CheckCell(entry);
        if (!entry.Text.empty()) Note(row, cell, entry.Text, entry.Refused);
        if (entry.Refused) return false;
        row = RowOf(entry);
        return true;
    }

    void StoreOrRefuse(const RowEntry& row, const PastedRow& taken) {
        try {
            const RowEntry changes = WriteRow(row);
            for (const auto& [field, value] : changes.Cells) changed_.Set(field, value);
        } catch (const StoreError& error) {
            if (error.IsFileError()) throw;
            return RefuseTaken(row, taken, PlainWords(error));
        }
        Result.Stored += static_cast<int>(taken.size());
    }

    const WorksheetForm& form_;
    OnLocked onLocked_;
    RowEntry changed_;  ///< fields that changed on any row
};

/// The columns that are shown, from one on.
std::vector<int> ShownColumns(const WorksheetForm& form, int first) {
    std::vector<int> columns;
    for (int i = std::max(first, 0); i < static_cast<int>(form.Columns.size()); ++i)
        if (!ColumnAt(form, i).Hidden) columns.push_back(i);
    return columns;
}

/// A text behind the last column has no place to go to.
constexpr int kNoColumn = -1;

PastedRow ToColumns(const std::vector<int>& columns, const std::vector<std::string>& texts) {
    PastedRow row;
    for (std::size_t i = 0; i < texts.size(); ++i)
        row.push_back({i < columns.size() ? columns[i] : kNoColumn, texts[i]});
    return row;
}

bool IsEmptyRow(const PastedRow& row) {
    return std::ranges::all_of(row, [](const auto& cell) { return PlainText(cell.Text).empty(); });
}

/// The whole line behind the last, or the next subscript where no whole line can be added.
LineOffer OfferBehindLast(const WorksheetForm& form) {
    const Variant last = gDB.Scalar(fmt::format(
        "SELECT Max({0}) From {1} Where {0}<100 And Fix({0})={0};", form.Key, form.Table));
    return OfferLine(form.Table, last.IsNull() ? std::nullopt : std::optional(CurOr(last)));
}

std::string WhyNotAdded(const LineOffer& offer) {
    return offer.Refused() ? offer.RefusalText : "There is no room for a further line.";
}

/// Adds a line and puts the row into it; a line into which nothing went goes again.
void WriteNewRow(const WorksheetForm& form, BlockWriter& writer, const PastedRow& cells) {
    if (IsEmptyRow(cells)) return;
    if (!form.GrowsByPaste)
        return writer.RefuseAll({}, cells, "The worksheet has no line there, and takes none.");
    const LineOffer offer = OfferBehindLast(form);
    const auto line = offer.Whole ? offer.Whole : offer.Subscript;
    if (!line || !AddLine(form.Table, *line))
        return writer.RefuseAll({}, cells, WhyNotAdded(offer));
    const int before = writer.Result.Stored;
    writer.Put(*line, cells);
    if (writer.Result.Stored > before)
        writer.Result.Added.push_back(*line);
    else
        DeleteLine(form.Table, *line);
}

}  // namespace

BlockResult PasteBlock(const WorksheetForm& form, const FormRows& rows, int row, int column,
                       const std::vector<std::vector<std::string>>& cells) {
    BlockWriter writer(form, OnLocked::Report);
    if (form.Mode == FormMode::View) return writer.Result;
    const std::vector<int> columns = ShownColumns(form, column);
    std::vector<Currency> lines;
    for (int i = 0; i < static_cast<int>(cells.size()) && row + i < rows.Count(); ++i)
        lines.push_back(rows.Line(row + i));
    RunAct("Paste into " + PrintedName(form.Item), [&] {
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (i < lines.size())
                writer.Put(lines[i], ToColumns(columns, cells[i]));
            else
                WriteNewRow(form, writer, ToColumns(columns, cells[i]));
    });
    writer.Follow();
    return writer.Result;
}

BlockResult ClearBlock(const WorksheetForm& form, const FormRows& rows, const BlockRange& range) {
    BlockWriter writer(form, OnLocked::PassOver);
    PastedRow blanks;
    for (int i = range.FirstColumn; i <= range.LastColumn; ++i)
        if (!ColumnAt(form, i).Hidden) blanks.push_back({i, ""});
    RunAct("Clear cells of " + PrintedName(form.Item), [&] {
        for (int row = range.FirstRow; row <= range.LastRow; ++row)
            writer.Put(rows.Line(row), blanks);
    });
    writer.Follow();
    return writer.Result;
}

BlockResult FillDown(const WorksheetForm& form, const FormRows& rows, const BlockRange& range) {
    BlockWriter writer(form, OnLocked::PassOver);
    PastedRow first;
    for (int i = range.FirstColumn; i <= range.LastColumn; ++i)
        if (!ColumnAt(form, i).Hidden) first.push_back({i, Text(rows.Cell(range.FirstRow, i))});
    RunAct("Fill down on " + PrintedName(form.Item), [&] {
        for (int row = range.FirstRow + 1; row <= range.LastRow; ++row)
            writer.Put(rows.Line(row), first);
    });
    writer.Follow();
    return writer.Result;
}

}  // namespace zolmara
