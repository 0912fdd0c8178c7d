#pragma once

// A worksheet's rows as the grids see them: the stored rows, with the row that is being keyed laid
// over its own. Rows are read when they are looked at.

#include <QAbstractTableModel>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "forms/WorksheetForm.h"

namespace zolmara::ui {

/// True for a cell of an editor that takes no entry.
inline constexpr int kLockedRole = Qt::UserRole;

/// The value of a cell as it is keyed and copied: a number without its signs.
std::string PlainText(const FormColumn& column, Currency line, const Variant& value);

class SheetModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows a form, or shows it afresh. Where it has the rows and columns that it had, every
    /// index stays good and so do selection and open editor; the row being keyed stays keyed.
    void Show(WorksheetForm form);

    const WorksheetForm& Form() const { return *form_; }
    /// The form, kept alive while a step works on it: a refresh may put another in its place.
    std::shared_ptr<const WorksheetForm> SharedForm() const { return form_; }
    const FormRows& Rows() const { return *rows_; }
    bool HasRow(int row) const { return rows_ && row >= 0 && row < rows_->Count(); }
    /// The row's line; 0 where it cannot be read.
    Currency Line(int row) const;
    int RowOf(Currency line) const { return rows_ ? rows_->RowOf(line) : -1; }
    const FormColumn& Column(int column) const {
        return form_->Columns[static_cast<std::size_t>(column)];
    }

    /// A row as it is to be keyed further.
    RowEntry EntryOf(int row) const;
    bool IsOpen(int row, int column) const;
    bool HasChoices(int row, int column) const;

    /// The row that is being keyed: -1 when no entry waits to be stored.
    int KeyedRow() const { return keyed_ ? keyedRow_ : -1; }
    const RowEntry* Keyed() const { return keyed_ ? &*keyed_ : nullptr; }

    /// Checks an entry and lays it over the row. Another row that is being keyed must have been
    /// stored before. False when it was refused.
    bool Key(int row, int column, const Variant& value);
    /// What hears of a keyed row that has gone ahead of being stored, with what was keyed.
    void OnRowLost(std::function<void(const RowEntry&)> hears) { rowLost_ = std::move(hears); }
    /// Stores the row that is being keyed. False when it was refused and stays keyed.
    bool Commit();
    /// Drops what was keyed and not stored.
    void TakeBack();
    /// Reads all rows afresh.
    void Requery();

    /// The folded headings, by column.
    void SetHeadings(std::vector<QString> headings);
    /// What heads a column while the row is current; "|" begins a new line of it.
    QString HeadingAt(int row, int column) const;
    /// The same on one line.
    QString TitleAt(int row, int column) const;

    /// "A-6": as the caption and a screen reader name the worksheet.
    void SetSpokenName(QString name) { spokenName_ = std::move(name); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// The value of a cell as the grid shows it.
    QString Shown(int row, int column) const;
    /// Its PlainText.
    QString Plain(int row, int column) const;
    Variant Value(int row, int column) const;

private:
    void ForgetLooks();
    std::optional<RowEntry> FollowKeyed();
    void TellRow(int row);
    QVariant Look(const QModelIndex& index, int role) const;
    QString Spoken(int row, int column) const;

    std::shared_ptr<const WorksheetForm> form_ = std::make_shared<WorksheetForm>();
    std::optional<FormRows> rows_;
    std::optional<RowEntry> keyed_;
    int keyedRow_ = -1;
    std::int64_t keyedMark_ = 0;
    std::function<void(const RowEntry&)> rowLost_;
    std::vector<QString> headings_;
    QString spokenName_;
    /// What is known of a cell's being open: 0 nothing, 1 closed, 2 open.
    mutable std::unordered_map<int, std::vector<char>> open_;
};

}  // namespace zolmara::ui
