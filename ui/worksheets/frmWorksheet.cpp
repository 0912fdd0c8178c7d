#include "ui/worksheets/frmWorksheet.h"

#include <fmt/format.h>

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/PlainWords.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "ui/dialogs/frmCRFEditInfo.h"
#include "ui/main/Buttons.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/tools/EntryCalculation.h"
#include "ui/worksheets/BlockCopy.h"
#include "ui/worksheets/FindBar.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/WindowPlace.h"

namespace zolmara::ui {
namespace {

constexpr int kStatusDelay = 30;  ///< milliseconds

/// Not of the window's own class: while it goes it is a plain widget, and is no worksheet any more.
QPointer<QObject> lastActive;

}  // namespace

frmWorksheet::frmWorksheet() : model_(this) {
    MakeActs();
    grd_ = new SheetView(model_, acts_);
    find_ = new FindBar(*this);
    lblStatus_ = new QLabel;
    lblStatus_->setObjectName("lblStatus");
    lblStatus_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblStatus_->setMinimumWidth(1);
    lblStatus_->setWordWrap(true);
    picButtons_ = new QWidget;
    picButtons_->setObjectName("picButtons");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(4);
    column->addWidget(picButtons_);
    column->addWidget(grd_, 1);
    column->addWidget(find_);
    column->addWidget(lblStatus_);
    tmrStatus_ = new QTimer(this);
    tmrStatus_->setObjectName("tmrStatus");
    tmrStatus_->setSingleShot(true);
    tmrStatus_->setInterval(kStatusDelay);
    tmrStatus_->callOnTimeout([this] { ShowStatus(); });
    tmrSum_ = new QTimer(this);
    tmrSum_->setObjectName("tmrSum");
    tmrSum_->setSingleShot(true);
    tmrSum_->callOnTimeout([this] { AddUp(); });
    connect(&model_, &QAbstractItemModel::modelReset, this, [this] { wasReset_ = true; });
    connect(grd_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { tmrStatus_->start(); });
    connect(grd_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& to, const QModelIndex& from) {
                CurrentChanged();
                if (to.row() != from.row()) RowChanged();
            });
    model_.OnRowLost([this](const RowEntry& lost) { TellLost(lost); });
    MakeCommands();
}

frmWorksheet::~frmWorksheet() = default;

std::vector<frmWorksheet*> WorksheetWindows() {
    std::vector<frmWorksheet*> windows;
    for (QWidget* form : OpenForms())
        if (auto* window = dynamic_cast<frmWorksheet*>(form)) windows.push_back(window);
    return windows;
}

frmWorksheet* LastWorksheet() {
    auto* const active = dynamic_cast<frmWorksheet*>(lastActive.data());
    if (active && !active->isHidden()) return active;
    const auto open = WorksheetWindows();
    return open.empty() ? nullptr : open.back();
}

// --- Showing -------------------------------------------------------------------------------

void frmWorksheet::FormSetup(WorksheetForm form) {
    SetUpForm(this, form.Name.c_str(), form.Caption, false);
    const QString name = Q(ItemDisplayName(form.Item));
    model_.SetSpokenName("Worksheet " + (name.isEmpty() ? Q(form.Item) : name.simplified()));
    grd_->setAccessibleName(Q(form.Caption));
    model_.Show(std::move(form));
    grd_->SetZoom(SavedZoom());
    grd_->SetColumns();
    if (const auto widths = SavedWidths(Form()); !widths.empty()) grd_->SetWidths(widths);
    MakeButtons();
    wasReset_ = false;
    grd_->GoTo(grd_->FirstCell());
    grd_->setFocus();
    tmrStatus_->start();
    AddForm(this, [this] { SetGrd(); });
}

void frmWorksheet::SetGrd() {
    try {
        RefreshData();
    } catch (const StoreError&) {
        // The window shows what it had until the next refresh.
    }
}

void frmWorksheet::RefreshData() {
    auto form = DescribeForm(Form().Mode, Form().Item);
    if (!form) return;
    const Place place = CurrentPlace();
    wasReset_ = false;
    bigSum_.reset();
    model_.Show(std::move(*form));
    if (wasReset_) BackTo(place);
    grd_->FoldHeadings();
    ShowButtonStates();
    tmrStatus_->start();
}

frmWorksheet::Place frmWorksheet::CurrentPlace() const {
    const QModelIndex at = grd_->currentIndex();
    return {CurrentLine(), at.isValid() ? model_.Column(at.column()).Field : std::string(),
            at.row(), at.isValid() ? model_.Rows().Mark(at.row()) : 0, grd_->Widths()};
}

void frmWorksheet::BackTo(const Place& place) {
    grd_->SetColumns();
    if (grd_->WidthsChanged() && place.Widths.size() == Form().Columns.size())
        grd_->SetWidths(place.Widths);
    // The row may have another line now; where it has gone, its line has another row.
    const int row = model_.Rows().RowMarked(place.Mark);
    if (row >= 0)
        GoToLine(model_.Line(row), place.Field);
    else if (place.Line)
        GoToLine(*place.Line, place.Field);
    if (!grd_->currentIndex().isValid() && model_.rowCount() > 0)
        GoToLine(model_.Line(std::clamp(place.Row, 0, model_.rowCount() - 1)), place.Field);
}

void frmWorksheet::GoToLine(Currency line, const std::string& field) {
    const int row = model_.RowOf(line);
    if (row < 0) return;
    int column = Form().ColumnOf(field);
    if (column < 0 || Form().Columns[static_cast<std::size_t>(column)].Hidden)
        column = field.empty() && grd_->currentIndex().isValid() ? grd_->currentIndex().column()
                                                                 : grd_->FirstShownColumn();
    grd_->GoTo(model_.index(row, std::max(0, column)));
}

void frmWorksheet::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    grd_->scrollTo(grd_->currentIndex());
}

// --- Storing -------------------------------------------------------------------------------

bool frmWorksheet::HasOpenRow() const { return model_.KeyedRow() >= 0 || grd_->Editor(); }

bool frmWorksheet::CommitGrid() {
    if (committing_) return true;
    // The box that tells of an entry takes the keys from the window; its cell is not done yet.
    if (keying_) return false;
    const DialogsOver over(this);
    committing_ = true;
    refused_ = false;
    wasReset_ = false;
    const Place place = CurrentPlace();
    const bool keyed = model_.KeyedRow() >= 0 || grd_->Editor();
    bool stored = false;
    bool done = Guarded([&] {
                    grd_->CloseEditors();
                    const bool changed = model_.KeyedRow() >= 0;
                    done = !refused_ && model_.Commit();
                    stored = done && changed;
                }) &&
                !refused_ && model_.KeyedRow() < 0;
    if (wasReset_) BackTo(place);
    committing_ = false;
    if (keyed) tmrStatus_->start();
    if (done) told_ = false;
    if (stored) EntryCalculation::RowSaved();
    return done;
}

/// The refresh that met it is over by then.
void frmWorksheet::TellLost(const RowEntry& lost) {
    std::string keyed;
    for (const auto& [field, value] : lost.Cells) {
        const int column = Form().ColumnOf(field);
        const QString title = column < 0 ? Q(field) : model_.TitleAt(-1, column);
        keyed += fmt::format("{}{}: {}", keyed.empty() ? "" : "; ", S(title), Text(value));
    }
    const std::string text = fmt::format(
        "Line {} of \"{}\" is no longer there.  What was keyed into it has not been "
        "stored:  {}",
        NumberText(lost.Line), S(windowTitle()), keyed);
    QTimer::singleShot(0, this, [this, text] {
        const DialogsOver over(this);
        TheDialogs().MsgBox(text, kExclamation, std::string(kProductName));
    });
}

void frmWorksheet::GiveUp() {
    model_.TakeBack();
    tmrStatus_->start();
}

bool frmWorksheet::MayClose() {
    if (!CommitGrid()) return false;
    try {
        const auto form = model_.SharedForm();
        if (!FormMayClose(*form)) {
            SetGrd();
            return false;
        }
        FormCloses(*form);
    } catch (const StoreError& error) {
        // A file that cannot be read any more does not hold its windows.
        TheDialogs().MsgBox(PlainWords(error), kCritical, std::string(kProductName));
    }
    return true;
}

void frmWorksheet::closeEvent(QCloseEvent* event) {
    // A step that holds the program closes the windows itself; the user does not meanwhile.
    if (event->spontaneous() && TheQtHost().InLongStep()) return event->ignore();
    const DialogsOver over(this);
    if (CrfIsOpen() && !MayClose()) return event->ignore();
    if (CopyPercent(this)) FinishCopy();
    RememberWindow(*this);
    event->accept();
}

bool frmWorksheet::MayBeLeft() {
    if (!HasOpenRow()) return true;
    if (told_ && !grd_->Editor()) {
        int boxes = 0;
        const QuietHost quiet(boxes);
        CommitGrid();
        return true;
    }
    if (CommitGrid()) return true;
    told_ = HasOpenRow();
    return false;
}

/// Leaving the window stores the row, as leaving the row does. The box that tells of a refused row
/// stands over this window; then the keys go to where the user went, be it to look up what the row
/// needs, or to save elsewhere as the disk is full. It is told once: going to and fro afterwards
/// tries again, and says nothing.
void frmWorksheet::Left() {
    const QPointer<QWidget> wanted = QApplication::activeWindow();
    if (MayBeLeft()) return;
    if (wanted && wanted != this && wanted->isVisible()) BringForward(*wanted);
}

bool frmWorksheet::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) lastActive = this;
    if (event->type() == QEvent::WindowDeactivate && !isHidden() && CrfIsOpen() &&
        !TheQtHost().InLongStep() && HasOpenRow() && !committing_ && !keying_)
        Left();
    return QWidget::event(event);
}

void frmWorksheet::RowChanged() {
    const int keyed = model_.KeyedRow();
    if (keyed >= 0 && keyed != grd_->currentIndex().row() && !committing_ && !CommitGrid()) {
        // What was refused stays under the cursor.
        const QPersistentModelIndex back =
            model_.index(keyed, std::max(0, grd_->currentIndex().column()));
        QTimer::singleShot(0, this, [this, back] {
            if (back.isValid()) grd_->GoTo(back);
        });
    }
    if (SameText(Form().Item, "S1p1")) grd_->FoldHeadings();
    ShowButtonStates();
}

void frmWorksheet::CurrentChanged() {
    const QModelIndex current = grd_->currentIndex();
    atEnd_ = false;
    grd_->SetCurrentLook(current);
    grd_->Frozen()->SetCurrentLook(current);
    grd_->Frozen()->viewport()->update();
    grd_->viewport()->update();
    tmrStatus_->start();
}

// --- Keying --------------------------------------------------------------------------------

void frmWorksheet::MakeActs() {
    acts_.BeforeEdit = [this](const QModelIndex& cell) { return BeforeEdit(cell); };
    acts_.OnlyPicked = [this](const QModelIndex& cell) {
        return IsOnlyPicked(Form(), model_.EntryOf(cell.row()), cell.column());
    };
    acts_.Key = [this](const QModelIndex& cell, const QString& text) {
        return KeyEntry(cell, text);
    };
    acts_.OpenList = [this](const QModelIndex& cell, const QPoint& place) {
        Guarded([&] { ShowList(cell, place); });
    };
    acts_.HasList = [this](const QModelIndex& cell) {
        return model_.HasChoices(cell.row(), cell.column());
    };
    acts_.Move = [this](Step step) { Move(step); };
    acts_.TakeBack = [this] {
        if (StopCopy(this)) return;
        model_.TakeBack();
        tmrStatus_->start();
    };
    acts_.Typed = [] { EntryCalculation::Typed(); };
}

bool frmWorksheet::BeforeEdit(const QModelIndex& cell) {
    if (TheQtHost().InLongStep() || Form().Mode == FormMode::View) return false;
    const int keyed = model_.KeyedRow();
    if (keyed >= 0 && keyed != cell.row() && !CommitGrid()) return false;
    if (!OpensIdentity(Form(), model_.Line(cell.row()), cell.column()))
        return model_.IsOpen(cell.row(), cell.column());
    if (CommitGrid()) Guarded([] { ShowCRFEditInfo(); });
    return false;
}

bool frmWorksheet::KeyEntry(const QModelIndex& cell, const QString& text) {
    const QPersistentModelIndex at = cell;
    bool taken = false;
    EntryCalculation::Typed();
    told_ = false;
    keying_ = true;
    Guarded([&] {
        const std::string value = S(text);
        taken = model_.Key(at.row(), at.column(), value.empty() ? Variant() : Variant(value));
    });
    keying_ = false;
    if (!taken) refused_ = true;
    if (!taken && !committing_)
        QTimer::singleShot(0, this, [this, at] {
            if (at.isValid() && grd_->currentIndex() != at) grd_->GoTo(at);
        });
    if (taken && SameText(Form().Item, "S1p1")) grd_->FoldHeadings();
    tmrStatus_->start();
    return taken;
}

void frmWorksheet::Move(Step step) {
    const QModelIndex from = grd_->currentIndex();
    if (step == Step::Stay) return;
    if (step == Step::Up || step == Step::Down) {
        const QModelIndex to = from.siblingAtRow(from.row() + (step == Step::Down ? 1 : -1));
        return grd_->GoTo(to);
    }
    const QModelIndex to = grd_->OpenCell(from, step);
    if (to.isValid()) return grd_->GoTo(to);
    // Behind the last cell the row is done.
    if (!CommitGrid()) return;
    if (step == Step::Enter || step == Step::BackEnter) return StayAtEnd(step);
    for (const FormButton& button : Form().Buttons)
        if (auto* control = buttons_[button.Name]; control && control->isEnabled())
            return control->setFocus(Qt::TabFocusReason);
}

/// Enter, pressed once more than there are cells, must not press a button. Where nothing is keyed
/// it walks the rows.
void frmWorksheet::StayAtEnd(Step step) {
    if (Form().Mode == FormMode::Edit) {
        atEnd_ = step == Step::Enter;
        tmrStatus_->start();
        return QApplication::beep();
    }
    Move(step == Step::Enter ? Step::Down : Step::Up);
}

void frmWorksheet::keyPressEvent(QKeyEvent* event) {
    // Escape takes back what is being keyed; it never closes a worksheet.
    if (event->key() == Qt::Key_Escape) return event->accept();
    QWidget::keyPressEvent(event);
}

// --- Buttons -------------------------------------------------------------------------------

void frmWorksheet::MakeButtons() {
    auto* row = new QHBoxLayout(picButtons_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch(1);
    for (const FormButton& button : Form().Buttons) {
        auto* control = MakeButton(button.Name.c_str(), Q(button.Caption),
                                   [this, name = button.Name] { PressButton(name); });
        control->setAutoDefault(true);
        buttons_[button.Name] = control;
        row->addWidget(control);
        row->addStretch(1);
    }
    ShowButtonStates();
}

void frmWorksheet::ShowButtonStates() {
    LineButtons lines;
    try {
        if (Form().Mode == FormMode::Edit) lines = LineButtonsOn(Form(), CurrentLine());
    } catch (const StoreError&) {
        // Without its rows a worksheet takes no lines.
    }
    for (const FormButton& button : Form().Buttons) {
        QPushButton* const control = buttons_[button.Name];
        if (!control) continue;
        bool enabled = button.Enabled;
        if (button.Name == "cmdAdd") enabled = lines.Add;
        if (button.Name == "cmdDelete") enabled = lines.Delete;
        control->setEnabled(enabled);
        control->setToolTip(Q(button.ToolTip));
        control->setAccessibleDescription(Q(button.ToolTip));
    }
}

std::optional<Currency> frmWorksheet::CurrentLine() const {
    const int row = grd_->currentIndex().row();
    if (!model_.HasRow(row)) return std::nullopt;
    return model_.Line(row);
}

std::optional<CellRef> frmWorksheet::CurrentCell() const {
    const QModelIndex current = grd_->currentIndex();
    const auto line = CurrentLine();
    if (!line) return std::nullopt;
    return CellRef{Form().Table, *line, model_.Column(current.column()).Field};
}

std::vector<Currency> frmWorksheet::SelectedLines() const {
    std::vector<Currency> lines;
    for (const QModelIndex& row : grd_->selectionModel()->selectedRows())
        lines.push_back(model_.Line(row.row()));
    return lines;
}

}  // namespace zolmara::ui
