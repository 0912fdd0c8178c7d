#include "ui/worksheets/SheetModel.h"

#include <algorithm>
#include <utility>

#include "core/Globals.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

/// How many rows' looks are kept at most.
constexpr std::size_t kKeptRows = 1000;

bool SameShape(const WorksheetForm& a, const WorksheetForm& b) {
    return std::ranges::equal(a.Columns, b.Columns, [](const FormColumn& x, const FormColumn& y) {
        return x.Field == y.Field && x.Hidden == y.Hidden;
    });
}

Qt::Alignment AlignmentOf(CellAlign align) {
    switch (align) {
        case CellAlign::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case CellAlign::Center:
            return Qt::AlignCenter;
        default:
            return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

}  // namespace

std::string PlainText(const FormColumn& column, Currency line, const Variant& value) {
    return column.IsNumber() ? Text(value) : ShownText(column, line, value);
}

// --- Showing -------------------------------------------------------------------------------

void SheetModel::Show(WorksheetForm form) {
    FormRows rows(form);
    ForgetLooks();
    const bool same = rows_ && rows.Count() == rows_->Count() && SameShape(form, *form_);
    if (!same) beginResetModel();
    form_ = std::make_shared<const WorksheetForm>(std::move(form));
    rows_.emplace(std::move(rows));
    std::optional<RowEntry> lost = FollowKeyed();
    if (!same)
        endResetModel();
    else if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    if (lost && rowLost_) rowLost_(*lost);
}

/// What waits to be stored goes with its row, whatever line that has now. Gives back what was
/// keyed into a row that has gone.
std::optional<RowEntry> SheetModel::FollowKeyed() {
    if (!keyed_) return std::nullopt;
    keyedRow_ = rows_->RowMarked(keyedMark_);
    if (keyedRow_ < 0) return std::exchange(keyed_, std::nullopt);
    keyed_->Line = rows_->Line(keyedRow_);
    return std::nullopt;
}

void SheetModel::Requery() { Show(*form_); }

void SheetModel::ForgetLooks() { open_.clear(); }

void SheetModel::TellRow(int row) {
    open_.erase(row);
    if (HasRow(row)) emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void SheetModel::SetHeadings(std::vector<QString> headings) {
    if (headings == headings_) return;
    headings_ = std::move(headings);
    emit headerDataChanged(Qt::Horizontal, 0, std::max(0, columnCount() - 1));
}

// --- Keying --------------------------------------------------------------------------------

RowEntry SheetModel::EntryOf(int row) const {
    if (keyed_ && row == keyedRow_) return *keyed_;
    return BeginRow(*form_, Line(row));
}

bool SheetModel::IsOpen(int row, int column) const {
    if (form_->Mode == FormMode::View || Column(column).Locked || !HasRow(row)) return false;
    if (open_.size() > kKeptRows) open_.clear();
    std::vector<char>& known = open_[row];
    known.resize(form_->Columns.size());
    char& state = known[static_cast<std::size_t>(column)];
    try {
        if (state == 0) state = IsCellOpen(*form_, EntryOf(row), column) ? 2 : 1;
    } catch (const StoreError&) {
        return false;
    }
    return state == 2;
}

bool SheetModel::HasChoices(int row, int column) const {
    return IsOpen(row, column) && Column(column).HasList &&
           !ChoicesOf(*form_, EntryOf(row), column).empty();
}

bool SheetModel::Key(int row, int column, const Variant& value) {
    const auto form = form_;
    RowEntry entry = EntryOf(row);
    if (!KeyCell(*form, entry, column, value)) return false;
    if (entry.Changed()) {
        keyed_ = std::move(entry);
        keyedRow_ = row;
        keyedMark_ = rows_->Mark(row);
    }
    TellRow(row);
    return true;
}

bool SheetModel::Commit() {
    if (!keyed_) return true;
    // Lines may have been numbered anew since, by another window or another program.
    if (rows_->LineNow(keyedRow_) != keyed_->Line) Requery();
    if (!keyed_) return true;
    const auto form = form_;
    RowEntry entry = *keyed_;
    if (!CommitRow(*form, entry)) return false;
    TakeBack();
    Requery();
    return true;
}

void SheetModel::TakeBack() {
    const int row = KeyedRow();
    keyed_.reset();
    keyedRow_ = -1;
    TellRow(row);
}

// --- Reading -------------------------------------------------------------------------------

Variant SheetModel::Value(int row, int column) const {
    if (keyed_ && row == keyedRow_)
        if (const Variant* keyed = keyed_->Find(Column(column).Field)) return *keyed;
    try {
        return rows_->Cell(row, column);
    } catch (const StoreError&) {
        return {};
    }
}

QString SheetModel::Shown(int row, int column) const {
    return Q(ShownText(Column(column), Line(row), Value(row, column)));
}

QString SheetModel::Plain(int row, int column) const {
    return Q(PlainText(Column(column), Line(row), Value(row, column)));
}

Currency SheetModel::Line(int row) const {
    try {
        return rows_->Line(row);
    } catch (const StoreError&) {
        return {};
    }
}

QString SheetModel::HeadingAt(int row, int column) const {
    if (!HasRow(row) || Column(column).Identity || Column(column).Hidden)
        return Q(Column(column).Title);
    try {
        return Q(TitleOnRow(*form_, EntryOf(row), column));
    } catch (const StoreError&) {
        return Q(Column(column).Title);
    }
}

QString SheetModel::TitleAt(int row, int column) const {
    return HeadingAt(row, column).replace('|', ' ').simplified();
}

QString SheetModel::Spoken(int row, int column) const {
    const QString value = Shown(row, column);
    return QString("%1, line %2, %3: %4%5")
        .arg(spokenName_, Q(NumberText(Line(row))), TitleAt(row, column),
             value.isEmpty() ? QString("blank") : value,
             form_->Mode == FormMode::Edit && !IsOpen(row, column) ? ", locked" : "");
}

int SheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !rows_ ? 0 : rows_->Count();
}

int SheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(form_->Columns.size());
}

/// A CRF that has been closed, or cannot be read any more, shows empty cells.
QVariant SheetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    try {
        return Look(index, role);
    } catch (const StoreError&) {
        return {};
    }
}

QVariant SheetModel::Look(const QModelIndex& index, int role) const {
    switch (role) {
        case Qt::DisplayRole:
            return Shown(index.row(), index.column());
        case Qt::ToolTipRole:
            return Column(index.column()).IsNumber() ? QString()
                                                     : Shown(index.row(), index.column());
        case Qt::EditRole:
            return Plain(index.row(), index.column());
        case Qt::TextAlignmentRole:
            return static_cast<int>(AlignmentOf(Column(index.column()).Align));
        case Qt::AccessibleTextRole:
            return Spoken(index.row(), index.column());
        case kLockedRole:
            return form_->Mode == FormMode::Edit && !IsOpen(index.row(), index.column());
        default:
            return {};
    }
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical)
        return role == Qt::AccessibleTextRole && HasRow(section)
                   ? QVariant(QString("Row %1").arg(section + 1))
                   : QVariant();
    const auto at = static_cast<std::size_t>(section);
    if (role == Qt::DisplayRole) return at < headings_.size() ? headings_[at] : QString();
    if (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole)
        return Q(Column(section).Title).replace('|', ' ').simplified();
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignHCenter | Qt::AlignTop);
    return {};
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return {};
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    // The toolkit asks this of every row to paint a heading: a column answers without its rows, and
    // the grid asks IsOpen before it opens a cell.
    if (form_->Mode == FormMode::Edit && !Column(index.column()).Locked)
        flags |= Qt::ItemIsEditable;
    return flags;
}

}  // namespace zolmara::ui
