#include "ui/tools/ExplainWindow.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QRadioButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

QPointer<ExplainWindow> shown;

/// A text that wraps, and that a keyboard can reach and copy.
QLabel* MakeLabel(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

/// A screen reader speaks the name of a label and not its text.
void SetText(QLabel* label, const char* what, const QString& text) {
    label->setText(text);
    label->setAccessibleName(QString("%1: %2").arg(what, text));
    label->setVisible(!text.isEmpty());
}

}  // namespace

ExplainWindow::ExplainWindow() {
    SetUpForm(this, "wndExplain", "Explain This Number", FormKind::Dialog);
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeText());
    column->addWidget(MakeDirections());
    MakeTree();
    MakeMenu();
    column->addWidget(treCells_, 1);
    cmdBack_ = MakeButton("cmdBack", "&Back", [this] { GoBack(); });
    cmdBack_->setShortcut(QKeySequence("Alt+Left"));
    auto* go = MakeButton("cmdGoTo", "&Go To Cell", [this] { GoTo(); });
    auto* close = MakeButton("cmdClose", "&Close", [this] { this->close(); });
    column->addWidget(MakeButtonStrip({cmdBack_, go, close}));
    PressOnEscape(this, close);
    WatchStatement(this, [this] { Refresh(); });
    const int letter = fontMetrics().averageCharWidth();
    FitScreen(this, {letter * 110, fontMetrics().lineSpacing() * 28});
}

// --- Its parts -----------------------------------------------------------------------------

QWidget* ExplainWindow::MakeText() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    lblCell_ = MakeLabel("lblCell");
    QFont bold = lblCell_->font();
    bold.setBold(true);
    lblCell_->setFont(bold);
    lblValue_ = MakeLabel("lblValue");
    lblRule_ = MakeLabel("lblRule");
    lblFormula_ = MakeLabel("lblFormula");
    for (QLabel* label : {lblCell_, lblValue_, lblRule_, lblFormula_}) column->addWidget(label);
    return page;
}

QWidget* ExplainWindow::MakeDirections() {
    auto* strip = new QWidget;
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    optFrom_ = new QRadioButton("What it comes &from");
    optFrom_->setObjectName("optFrom");
    optUses_ = new QRadioButton("What &depends on it");
    optUses_->setObjectName("optUses");
    row->addWidget(optFrom_);
    row->addWidget(optUses_);
    row->addStretch(1);
    connect(optUses_, &QRadioButton::clicked, this, [this] {
        if (const auto cell = Current()) Show(*cell, Direction::Uses);
    });
    connect(optFrom_, &QRadioButton::clicked, this, [this] {
        if (const auto cell = Current()) Show(*cell, Direction::From);
    });
    return strip;
}

void ExplainWindow::MakeTree() {
    treCells_ = new QTreeView;
    treCells_->setObjectName("treCells");
    treCells_->setAccessibleName("Cells");
    treCells_->setModel(&model_);
    treCells_->setUniformRowHeights(true);
    treCells_->setAlternatingRowColors(true);
    treCells_->setExpandsOnDoubleClick(false);
    treCells_->setToolTip("Double-click a cell, or press Return, to go to it.");
    const int letter = fontMetrics().averageCharWidth();
    treCells_->header()->setStretchLastSection(false);
    treCells_->header()->setSectionResizeMode(ExplainTree::kTitle, QHeaderView::Stretch);
    treCells_->header()->resizeSection(ExplainTree::kCell, letter * 46);
    treCells_->header()->resizeSection(ExplainTree::kValue, letter * 18);
    treCells_->header()->resizeSection(ExplainTree::kKind, letter * 12);
    connect(treCells_, &QTreeView::activated, this, [this] { GoTo(); });
    connect(treCells_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { ShowCurrent(); });
}

void ExplainWindow::MakeMenu() {
    const auto add = [this](const char* name, const char* caption, std::function<void()> run) {
        auto* action = new QAction(caption, this);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, std::move(run));
        treCells_->addAction(action);
    };
    add("actGoTo", "&Go To Cell\tReturn", [this] { GoTo(); });
    add("actExplain", "E&xplain This Number\tF3", [this] {
        if (const auto cell = Current()) Show(*cell, Direction::From);
    });
    add("actUses", "What &Depends On This\tShift+F3", [this] {
        if (const auto cell = Current()) Show(*cell, Direction::Uses);
    });
    treCells_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

// --- Showing -------------------------------------------------------------------------------

void ExplainWindow::Show(const CellRef& cell, Direction direction) {
    const auto root = model_.Root();
    if (root && (*root != cell || model_.Way() != direction))
        former_.emplace_back(*root, model_.Way());
    ShowRoot(cell, direction);
}

void ExplainWindow::ShowRoot(const CellRef& cell, Direction direction) {
    Guarded([&] {
        model_.Show(cell, direction);
        (direction == Direction::Uses ? optUses_ : optFrom_)->setChecked(true);
        const QModelIndex root = model_.index(0, 0);
        treCells_->expand(root);
        treCells_->setCurrentIndex(root);
        ShowCurrent();
    });
    cmdBack_->setEnabled(!former_.empty());
    treCells_->setFocus();
}

std::optional<CellRef> ExplainWindow::Current() const {
    return model_.CellAt(treCells_->currentIndex());
}

void ExplainWindow::ShowCurrent() {
    const auto cell = Current();
    if (!cell || !CrfIsOpen()) return;
    const Explanation told = model_.Told(*cell);
    const QString name = Q(told.Name);
    SetText(lblCell_, "Cell", told.Title.empty() ? name : name + " - " + Q(told.Title));
    const QString value = ShownValue(told.Value);
    SetText(lblValue_, "Value", value.isEmpty() ? QString("nothing") : value);
    SetText(lblRule_, "Rule", Q(told.Rule));
    SetText(lblFormula_, "With the figures", Q(told.Formula));
}

void ExplainWindow::GoBack() {
    if (former_.empty()) return;
    const auto [cell, direction] = former_.back();
    former_.pop_back();
    ShowRoot(cell, direction);
}

void ExplainWindow::GoTo() {
    const auto cell = Current();
    if (!cell || TheQtHost().InLongStep()) return;
    Guarded([&] { GoToCell(*cell); });
}

/// The figures are of the open CRF as it stands; the window closes with it.
void ExplainWindow::Refresh() {
    if (!CrfIsOpen()) {
        model_.Show(std::nullopt, model_.Way());
        close();
        return;
    }
    if (const auto root = model_.Root()) {
        const bool focused = treCells_->hasFocus();
        QWidget* const before = QApplication::focusWidget();
        ShowRoot(*root, model_.Way());
        if (!focused && before && before->window() == this) before->setFocus();
    }
}

// --- Roads to it ---------------------------------------------------------------------------

void ShowExplanation(const CellRef& cell, Direction direction) {
    if (!shown || shown->isHidden()) shown = new ExplainWindow;
    ShowForm(shown);
    shown->Show(cell, direction);
}

namespace {

std::optional<CellRef> CellToExplain() {
    if (shown && shown->isActiveWindow()) return shown->Current();
    const frmWorksheet* const sheet = LastWorksheet();
    return sheet ? sheet->CurrentCell() : std::nullopt;
}

}  // namespace

bool HasCellToExplain() {
    return CrfIsOpen() && ((shown && shown->isActiveWindow()) || LastWorksheet());
}

void ExplainCurrentCell(Direction direction) {
    const auto cell = HasCellToExplain() ? CellToExplain() : std::nullopt;
    if (!cell) return TheDialogs().Beep();
    ShowExplanation(*cell, direction);
}

}  // namespace zolmara::ui
