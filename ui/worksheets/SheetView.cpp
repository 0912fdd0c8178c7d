#include "ui/worksheets/SheetView.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "ui/main/QtText.h"
#include "ui/worksheets/Headings.h"
#include "ui/worksheets/SheetModel.h"

namespace zolmara::ui {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr int kLeastRowHeight = 230;  ///< twips
constexpr double kRowLines = 1.35;
constexpr int kSelectorWidth = 14;
/// What stays in sight takes at most so much of the grid.
constexpr double kMostFrozen = 0.6;

}  // namespace

SheetView::SheetView(SheetModel& model, const CellActs& acts, QWidget* parent)
    : GridPart(acts, parent), model_(model), plainSize_(QApplication::font().pointSizeF()) {
    setObjectName("grd");
    setCornerButtonEnabled(true);
    verticalHeader()->setFixedWidth(kSelectorWidth);
    MakeFrozen();
    SheetView::setModel(&model);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int /*before*/, int width) { ColumnResized(column, width); });
    connect(frozen_->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int /*before*/, int width) {
                if (!placing_) setColumnWidth(column, width);
            });
    SetZoom(1);
}

// --- The columns that stay -----------------------------------------------------------------

void SheetView::MakeFrozen() {
    frozen_ = new GridPart(acts_, this);
    frozen_->setObjectName("grdFrozen");
    frozen_->setFocusPolicy(Qt::NoFocus);
    frozen_->setFocusProxy(this);
    frozen_->verticalHeader()->hide();
    frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setFrameShape(QFrame::NoFrame);
    frozen_->hide();
    connect(frozen_->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, frozen_->verticalScrollBar(),
            &QScrollBar::setValue);
}

void SheetView::setModel(QAbstractItemModel* model) {
    GridPart::setModel(model);
    frozen_->setModel(model);
    frozen_->setSelectionModel(selectionModel());
}

int SheetView::ColumnsThatStay() const {
    const int count = model()->columnCount();
    int stay = std::min(model_.Form().FrozenColumns, count);
    const auto width = [&] {
        int sum = 0;
        for (int column = 0; column < stay; ++column) sum += columnWidth(column);
        return sum;
    };
    while (stay > 0 && width() > kMostFrozen * viewport()->width()) --stay;
    return stay;
}

int SheetView::FrozenWidth() const {
    int width = 0;
    for (int column = 0; column < frozenColumns_; ++column) width += columnWidth(column);
    return width;
}

void SheetView::PlaceFrozen() {
    placing_ = true;
    frozenColumns_ = ColumnsThatStay();
    const int count = model()->columnCount();
    for (int column = 0; column < count; ++column) {
        const bool shown = IsFrozen(column) && !isColumnHidden(column);
        if (frozen_->isColumnHidden(column) == shown) frozen_->setColumnHidden(column, !shown);
        if (shown) frozen_->setColumnWidth(column, columnWidth(column));
    }
    const int left = verticalHeader()->width() + frameWidth();
    frozen_->setGeometry(left, frameWidth(), FrozenWidth(),
                         viewport()->height() + horizontalHeader()->height());
    frozen_->setVisible(frozenColumns_ > 0);
    placing_ = false;
}

// --- Sizes ---------------------------------------------------------------------------------

int SheetView::Pixels(int twips) const {
    return static_cast<int>(std::lround(twips * logicalDpiX() / kTwipsPerInch * zoom_));
}

void SheetView::SetColumns() {
    std::vector<int> twips;
    for (int at = 0; const FormColumn& column : model_.Form().Columns) {
        setColumnHidden(at++, column.Hidden);
        twips.push_back(column.Width);
    }
    SetRowHeight();
    SetWidths(std::move(twips));
}

void SheetView::SetZoom(double zoom) {
    zoom_ = zoom;
    QFont letters = QApplication::font();
    letters.setPointSizeF(plainSize_ * zoom);
    for (GridPart* part : {static_cast<GridPart*>(this), frozen_}) {
        part->setFont(letters);
        part->horizontalHeader()->setFont(letters);
    }
    SetRowHeight();
    SetWidths(twips_);
}

/// Two lines where long text goes on in a second one.
void SheetView::SetRowHeight() {
    const bool wraps = std::ranges::any_of(model_.Form().Columns, [](const FormColumn& column) {
        return column.Wrap && !column.Hidden;
    });
    const double lines = wraps ? kRowLines + 1 : kRowLines;
    const int height =
        std::max(Pixels(kLeastRowHeight), static_cast<int>(fontMetrics().lineSpacing() * lines));
    for (GridPart* part : {static_cast<GridPart*>(this), frozen_}) {
        part->verticalHeader()->setMinimumSectionSize(height);
        part->verticalHeader()->setDefaultSectionSize(height);
    }
}

int SheetView::ColumnsWidth() const {
    int width = 0;
    for (int column = 0; column < model()->columnCount(); ++column)
        if (!isColumnHidden(column)) width += columnWidth(column);
    return width;
}

void SheetView::SetWidths(std::vector<int> twips) {
    twips_ = std::move(twips);
    placing_ = true;
    const int count = std::min(model()->columnCount(), static_cast<int>(twips_.size()));
    for (int column = 0; column < count; ++column)
        if (!isColumnHidden(column))
            setColumnWidth(column, Pixels(twips_[static_cast<std::size_t>(column)]));
    placing_ = false;
    FoldHeadings();
    PlaceFrozen();
}

void SheetView::ColumnResized(int column, int width) {
    if (placing_ || static_cast<std::size_t>(column) >= twips_.size()) return;
    twips_[static_cast<std::size_t>(column)] =
        static_cast<int>(std::lround(width * kTwipsPerInch / logicalDpiX() / zoom_));
    widthsChanged_ = true;
    FoldHeadings();
    PlaceFrozen();
}

// --- Headings ------------------------------------------------------------------------------

void SheetView::FoldHeadings() {
    const QFontMetricsF letters(horizontalHeader()->font());
    const auto measure = [&](const QString& text) { return letters.horizontalAdvance(text); };
    const int row = currentIndex().row();
    std::vector<QString> headings;
    for (int at = 0; const FormColumn& column : model_.Form().Columns) {
        headings.push_back(
            Heading(Q(column.Number), model_.HeadingAt(row, at), columnWidth(at) - 8.0, measure));
        ++at;
    }
    model_.SetHeadings(std::move(headings));
    SetHeadHeight();
}

/// Both heads are as high as the heading with the most lines.
void SheetView::SetHeadHeight() {
    qsizetype lines = 1;
    for (int column = 0; column < model()->columnCount(); ++column)
        if (!isColumnHidden(column))
            lines = std::max(lines, model()->headerData(column, Qt::Horizontal, Qt::DisplayRole)
                                            .toString()
                                            .count('\n') +
                                        1);
    const int height = static_cast<int>(
        QFontMetricsF(horizontalHeader()->font()).lineSpacing() * static_cast<double>(lines) + 8);
    horizontalHeader()->setFixedHeight(height);
    frozen_->horizontalHeader()->setFixedHeight(height);
}

// --- Moving --------------------------------------------------------------------------------

int SheetView::FirstShownColumn() const {
    for (int column = 0; column < model()->columnCount(); ++column)
        if (!isColumnHidden(column)) return column;
    return -1;
}

QModelIndex SheetView::OpenCell(const QModelIndex& from, Step step) const {
    const auto& columns = model_.Form().Columns;
    if (std::ranges::all_of(columns, [](const FormColumn& c) { return c.Locked || c.Hidden; }))
        return {};
    const int direction = IsForward(step) ? 1 : -1;
    const int count = model()->columnCount();
    int row = from.row();
    int column = from.column() + direction;
    for (; row >= 0 && row < model()->rowCount(); row += direction) {
        for (; column >= 0 && column < count; column += direction)
            if (!isColumnHidden(column) && model_.IsOpen(row, column))
                return model()->index(row, column);
        column = direction > 0 ? 0 : count - 1;
    }
    return {};
}

QModelIndex SheetView::FirstCell() const {
    if (model()->rowCount() == 0) return {};
    const QModelIndex first = OpenCell(model()->index(0, 0), Step::Tab);
    if (model_.IsOpen(0, 0)) return model()->index(0, 0);
    return first.isValid() ? first : model()->index(0, std::max(0, FirstShownColumn()));
}

void SheetView::GoTo(const QModelIndex& cell) {
    if (!cell.isValid()) return;
    setCurrentIndex(cell);
    scrollTo(cell);
}

/// Where a block of filled or of empty cells ends, as seen from the current cell.
QModelIndex SheetView::Edge(int rowStep, int columnStep) const {
    const QModelIndex from = currentIndex();
    if (!from.isValid()) return from;
    QModelIndex at = from;
    const auto next = [&](const QModelIndex& cell) {
        int column = cell.column() + columnStep;
        while (columnStep != 0 && column >= 0 && column < model()->columnCount() &&
               isColumnHidden(column))
            column += columnStep;
        return model()->index(cell.row() + rowStep, column);
    };
    const auto filled = [&](const QModelIndex& cell) {
        return !model_.Value(cell.row(), cell.column()).IsNull();
    };
    const bool inBlock = filled(at) && next(at).isValid() && filled(next(at));
    for (QModelIndex cell = next(at); cell.isValid(); cell = next(cell)) {
        if (inBlock && !filled(cell)) break;
        at = cell;
        if (!inBlock && filled(cell)) break;
    }
    return at;
}

QModelIndex SheetView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (modifiers.testFlag(Qt::ControlModifier)) {
        if (action == MoveLeft) return Edge(0, -1);
        if (action == MoveRight) return Edge(0, 1);
        if (action == MoveUp) return Edge(-1, 0);
        if (action == MoveDown) return Edge(1, 0);
    }
    return GridPart::moveCursor(action, modifiers);
}

bool SheetView::Moves(const QKeyEvent* event) {
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Tab:
            acts_.Move(shift ? Step::BackTab : Step::Tab);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            acts_.Move(shift ? Step::BackEnter : Step::Enter);
            return true;
        case Qt::Key_Backtab:
            acts_.Move(Step::BackTab);
            return true;
        case Qt::Key_Escape:
            acts_.TakeBack();
            return true;
        default:
            return false;
    }
}

/// What a click on the left margin does.
void SheetView::SelectLines() {
    QItemSelection lines = selectionModel()->selection();
    if (lines.isEmpty()) lines.select(currentIndex(), currentIndex());
    selectionModel()->select(lines, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void SheetView::keyPressEvent(QKeyEvent* event) {
    const bool alone = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (alone && Moves(event)) return event->accept();
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ShiftModifier) {
        SelectLines();
        return event->accept();
    }
    const bool opensList = event->key() == Qt::Key_F4 ||
                           (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier));
    if (opensList && currentIndex().isValid() && acts_.HasList(currentIndex())) {
        GridPart* const part = IsFrozen(currentIndex().column()) ? frozen_ : this;
        part->OpenList(currentIndex());
        return event->accept();
    }
    GridPart::keyPressEvent(event);
}

bool SheetView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    if (index.isValid() && IsFrozen(index.column()))
        return frozen_->EditCell(index, trigger, event);
    return GridPart::edit(index, trigger, event);
}

void SheetView::CloseEditors() {
    frozen_->CloseOpenEditor();
    CloseOpenEditor();
}

QWidget* SheetView::Editor() const {
    QWidget* const editor = OpenEditor();
    return editor ? editor : frozen_->OpenEditor();
}

/// A cell must not come to lie under the columns that stay.
void SheetView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid()) return;
    if (IsFrozen(index.column())) {
        const int kept = horizontalScrollBar()->value();
        GridPart::scrollTo(index, hint);
        horizontalScrollBar()->setValue(kept);
        return;
    }
    GridPart::scrollTo(index, hint);
    const int covered = FrozenWidth() - visualRect(index).left();
    if (covered > 0) horizontalScrollBar()->setValue(horizontalScrollBar()->value() - covered);
}

void SheetView::resizeEvent(QResizeEvent* event) {
    GridPart::resizeEvent(event);
    PlaceFrozen();
}

void SheetView::changeEvent(QEvent* event) {
    GridPart::changeEvent(event);
    if (event->type() == QEvent::StyleChange) PlaceFrozen();
}

}  // namespace zolmara::ui
