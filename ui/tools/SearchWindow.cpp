#include "ui/tools/SearchWindow.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/tools/ExplainTree.h"
#include "worksheets/CellNames.h"

namespace zolmara::ui {
namespace {

/// The search waits until the typing pauses.
constexpr int kPause = 150;  ///< milliseconds

}  // namespace

// --- What was found ------------------------------------------------------------------------

void FoundModel::Show(std::vector<FoundCell> found) {
    beginResetModel();
    found_ = std::move(found);
    titles_.clear();
    endResetModel();
}

int FoundModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(found_.size());
}

int FoundModel::columnCount(const QModelIndex& /*parent*/) const { return kColumns; }

QString FoundModel::TitleOf(const CellRef& cell) const {
    const auto [titles, isNew] = titles_.try_emplace(cell.Item);
    try {
        if (isNew) titles->second = ColumnTitles(cell.Item);
    } catch (const StoreError&) {
        return {};
    }
    return Q(titles->second[cell.Field]);
}

QVariant FoundModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const FoundCell& found = found_[static_cast<std::size_t>(index.row())];
    if (role == Qt::TextAlignmentRole && index.column() == kValue && found.Value.IsNumber())
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (index.column() == kCell) return Q(CellName(found.Cell));
    return index.column() == kTitle ? TitleOf(found.Cell) : ShownValue(found.Value);
}

QVariant FoundModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr const char* kTitles[] = {"Cell", "Column", "Value"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return QString(kTitles[section]);
}

// --- The window ----------------------------------------------------------------------------

SearchWindow::SearchWindow() {
    SetUpForm(this, "wndSearch", "Search", FormKind::Dialog);
    auto* column = new QVBoxLayout(this);
    auto* label = new QLabel("&Text or amount in the whole statement:");
    txtSearch_ = new QLineEdit;
    txtSearch_->setObjectName("txtSearch");
    txtSearch_->setAccessibleName("Text or amount");
    txtSearch_->setClearButtonEnabled(true);
    txtSearch_->installEventFilter(this);
    label->setBuddy(txtSearch_);
    lblCount_ = new QLabel;
    lblCount_->setObjectName("lblCount");
    MakeList();
    auto* go = MakeButton("cmdGoTo", "&Go To Cell", [this] { GoTo(); });
    auto* close = MakeButton("cmdClose", "&Close", [this] { this->close(); });
    column->addWidget(label);
    column->addWidget(txtSearch_);
    column->addWidget(lstFound_, 1);
    column->addWidget(lblCount_);
    column->addWidget(MakeButtonStrip({go, close}));
    PressOnEscape(this, close);
    tmrSearch_ = new QTimer(this);
    tmrSearch_->setSingleShot(true);
    tmrSearch_->setInterval(kPause);
    tmrSearch_->callOnTimeout([this] { Search(); });
    connect(txtSearch_, &QLineEdit::textChanged, this, [this] { tmrSearch_->start(); });
    WatchStatement(this, [this] { Refresh(); });
    FitScreen(this, {fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 26});
}

void SearchWindow::MakeList() {
    lstFound_ = new QTreeView;
    lstFound_->setObjectName("lstFound");
    lstFound_->setAccessibleName("Cells found");
    lstFound_->setModel(&model_);
    lstFound_->setRootIsDecorated(false);
    lstFound_->setUniformRowHeights(true);
    lstFound_->setAlternatingRowColors(true);
    lstFound_->setToolTip("Return or a double click goes to the cell.");
    const int letter = fontMetrics().averageCharWidth();
    lstFound_->header()->resizeSection(FoundModel::kCell, letter * 38);
    lstFound_->header()->resizeSection(FoundModel::kTitle, letter * 26);
    connect(lstFound_, &QTreeView::activated, this, [this] { GoTo(); });
}

void SearchWindow::Start() {
    txtSearch_->setFocus(Qt::ShortcutFocusReason);
    txtSearch_->selectAll();
}

void SearchWindow::Search() {
    if (!CrfIsOpen() || TheQtHost().InLongStep()) return;
    Guarded([this] { model_.Show(FindCells(S(txtSearch_->text()))); });
    const int count = model_.rowCount();
    lblCount_->setText(txtSearch_->text().trimmed().isEmpty() ? QString()
                       : count == 1                           ? QString("1 cell")
                                                              : QString("%1 cells").arg(count));
    lblCount_->setAccessibleName(lblCount_->text());
    if (count > 0) lstFound_->setCurrentIndex(model_.index(0, 0));
}

/// From the field, Return goes to the first cell and the arrow leads into the list.
bool SearchWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (tmrSearch_->isActive()) {
            tmrSearch_->stop();
            Search();
        }
        GoTo();
        return true;
    }
    if (key != Qt::Key_Down) return QWidget::eventFilter(watched, event);
    lstFound_->setFocus(Qt::TabFocusReason);
    return true;
}

void SearchWindow::GoTo() {
    const QModelIndex at = lstFound_->currentIndex();
    if (!at.isValid() || TheQtHost().InLongStep()) return;
    const CellRef cell = model_.Found()[static_cast<std::size_t>(at.row())].Cell;
    Guarded([&] { GoToCell(cell); });
}

/// What was found is of the open CRF as it stands; the window closes with it.
void SearchWindow::Refresh() {
    if (!CrfIsOpen()) {
        model_.Show({});
        close();
        return;
    }
    const int row = lstFound_->currentIndex().row();
    Search();
    if (row > 0 && row < model_.rowCount()) lstFound_->setCurrentIndex(model_.index(row, 0));
}

void ShowSearch() {
    static QPointer<SearchWindow> shown;
    if (!shown || shown->isHidden()) shown = new SearchWindow;
    ShowForm(shown);
    shown->Start();
}

}  // namespace zolmara::ui
