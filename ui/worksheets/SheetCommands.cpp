// What the keys, the context menu and the buttons of a worksheet window do.

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPointer>
#include <algorithm>
#include <cmath>

#include "calc/Calc_All.h"
#include "core/BusyPointer.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "print/PrintDriver.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "ui/main/Done.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/overview/StatementNotes.h"
#include "ui/tools/EntryCalculation.h"
#include "ui/tools/ExplainWindow.h"
#include "ui/worksheets/BlockCopy.h"
#include "ui/worksheets/BlockReport.h"
#include "ui/worksheets/BlockText.h"
#include "ui/worksheets/FindBar.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/WindowPlace.h"
#include "ui/worksheets/frmWorksheet.h"
#include "worksheets/SheetNames.h"

namespace zolmara::ui {
namespace {

constexpr double kZoomStep = 1.1;
/// More cells than these go to the clipboard in slices.
constexpr std::size_t kCopiedAtOnce = 20'000;

/// The form is blocked and the pointer an hourglass for the length of a step.
class Blocked {
public:
    explicit Blocked(QWidget* form) : form_(form) { form->setEnabled(false); }
    ~Blocked() {
        if (form_) form_->setEnabled(true);
    }
    Blocked(const Blocked&) = delete;
    Blocked& operator=(const Blocked&) = delete;

private:
    BusyPointer busy_;
    QPointer<QWidget> form_;
};

/// A form takes no keys while its lines are moved: the work lets the windows breathe.
template <class Work>
LineOutcome InBlocked(QWidget* form, const Work& work) {
    const Blocked blocked(form);
    return work();
}

/// A block and all that follows from it on other worksheets go to the disk at once.
template <class Work>
BlockResult InOneAct(const std::string& name, const Work& work) {
    BlockResult result;
    RunAct(name, [&] { result = work(); });
    return result;
}

struct Hourglass {
    Hourglass() { TheStatus().SetPointer(Pointer::Hourglass); }
    ~Hourglass() { TheStatus().SetPointer(Pointer::Normal); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

struct SheetCommand {
    const char* Name;
    const char* Caption;
    const char* Keys;  ///< several apart by ";"; a key of "Tools" stands in the caption
    bool OnlyEdit;
    /// The key is the window's, wherever its focus is; else that of the cells.
    bool OfWindow;
    void (*Run)(frmWorksheet& form);
};

constexpr SheetCommand kCommands[] = {
    {"actCopy", "&Copy", "Ctrl+C;Ctrl+Insert", false, false,
     [](frmWorksheet& f) { f.Copy(false); }},
    {"actCopyHeadings", "Copy with &Headings", "Ctrl+Shift+C", false, false,
     [](frmWorksheet& f) { f.Copy(true); }},
    {"actPaste", "&Paste", "Ctrl+V;Shift+Insert", true, false, [](frmWorksheet& f) { f.Paste(); }},
    {"actFillDown", "Fill &Down", "Ctrl+D", true, false,
     [](frmWorksheet& f) { f.FillDownSelection(); }},
    {"actClear", "C&lear", "Delete", true, false, [](frmWorksheet& f) { f.ClearSelection(); }},
    {"actFind", "&Find ...", "Ctrl+F", false, true, [](frmWorksheet& f) { f.ShowFind(); }},
    {"actExplain", "E&xplain This Number\tF3", "", false, false,
     [](frmWorksheet& f) { f.Explain(Direction::From); }},
    {"actUses", "What Depends &On This\tShift+F3", "", false, false,
     [](frmWorksheet& f) { f.Explain(Direction::Uses); }},
    {"actZoomIn", "Zoom &In", "Ctrl++;Ctrl+=", false, true,
     [](frmWorksheet& f) { f.Zoom(SavedZoom() * kZoomStep); }},
    {"actZoomOut", "Zoom &Out", "Ctrl+-", false, true,
     [](frmWorksheet& f) { f.Zoom(SavedZoom() / kZoomStep); }},
    {"actZoomPlain", "&Plain Size", "Ctrl+0", false, true, [](frmWorksheet& f) { f.Zoom(1); }},
    {"actClose", "Clos&e", "Ctrl+W;Ctrl+F4", false, true, [](frmWorksheet& f) { UnloadForm(&f); }},
};

}  // namespace

void frmWorksheet::MakeCommands() {
    for (const SheetCommand& command : kCommands) {
        auto* action = new QAction(command.Caption, this);
        action->setObjectName(command.Name);
        QList<QKeySequence> keys;
        for (const QString& key : QString(command.Keys).split(';', Qt::SkipEmptyParts))
            keys << QKeySequence(key);
        action->setShortcuts(keys);
        action->setShortcutContext(command.OfWindow ? Qt::WindowShortcut
                                                    : Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, [this, &command] {
            if (TheQtHost().InLongStep()) return;
            if (command.OnlyEdit && Form().Mode == FormMode::View) return QApplication::beep();
            Guarded([&] { command.Run(*this); });
        });
        grd_->addAction(action);
    }
    grd_->setContextMenuPolicy(Qt::ActionsContextMenu);
    grd_->Frozen()->addActions(grd_->actions());
    grd_->Frozen()->setContextMenuPolicy(Qt::ActionsContextMenu);
}

// --- Blocks --------------------------------------------------------------------------------

std::vector<int> frmWorksheet::ShownColumns(const BlockRange& range) const {
    std::vector<int> columns;
    for (int column = range.FirstColumn; column <= range.LastColumn; ++column)
        if (!grd_->isColumnHidden(column)) columns.push_back(column);
    return columns;
}

void frmWorksheet::Copy(bool withHeadings) {
    const BlockRange range = Selected();
    if (range.FirstRow < 0) return;
    const Hourglass hourglass;
    std::vector<int> columns = ShownColumns(range);
    std::string text;
    const auto append = [&](const auto& cellOf) {
        for (std::size_t at = 0; at < columns.size(); ++at) {
            if (at > 0) text += '\t';
            AppendCell(text, S(cellOf(columns[at])));
        }
        text += '\n';
    };
    if (withHeadings) append([&](int column) { return model_.TitleAt(range.FirstRow, column); });
    const auto rows = static_cast<std::size_t>(range.LastRow - range.FirstRow) + 1;
    if (rows * columns.size() > kCopiedAtOnce)
        return StartCopy(
            std::make_unique<BlockSource>(model_, range, std::move(columns), std::move(text)), this,
            [this] { ShowStatus(); });
    for (int row = range.FirstRow; row <= range.LastRow; ++row)
        append([&](int column) { return model_.Plain(row, column); });
    QApplication::clipboard()->setText(Q(text));
}

/// Where the first row of an empty worksheet will begin to be keyed.
BlockRange frmWorksheet::AheadOfRows() const {
    const auto& columns = Form().Columns;
    const auto open = std::ranges::find_if(
        columns, [](const FormColumn& column) { return !column.Locked && !column.Hidden; });
    const int column = open == columns.end() ? 0 : static_cast<int>(open - columns.begin());
    return {0, 0, column, column};
}

/// A single value goes into every cell of the selection.
void frmWorksheet::Paste() {
    FinishCopy();
    if (!CommitGrid()) return;
    std::vector<std::vector<std::string>> cells;
    for (const QStringList& row : ReadBlock(QApplication::clipboard()->text())) {
        auto& texts = cells.emplace_back();
        for (const QString& cell : row) texts.push_back(S(cell));
    }
    const BlockRange range = model_.rowCount() == 0 ? AheadOfRows() : Selected();
    if (cells.empty() || range.FirstRow < 0) return;
    if (cells.size() == 1 && cells.front().size() == 1) {
        cells.front().assign(ShownColumns(range).size(), cells.front().front());
        cells.assign(static_cast<std::size_t>(range.LastRow - range.FirstRow) + 1, cells.front());
    }
    AfterBlock(InOneAct("Paste into " + PrintedName(Form().Item),
                        [&] {
                            return PasteBlock(*model_.SharedForm(), model_.Rows(), range.FirstRow,
                                              range.FirstColumn, cells);
                        }),
               "Paste");
}

void frmWorksheet::ClearSelection() {
    const BlockRange range = Selected();
    if (range.FirstRow < 0) return;
    const bool one = range.FirstRow == range.LastRow && range.FirstColumn == range.LastColumn;
    // One cell is keyed like any other: its row is stored when it is left.
    if (one) {
        const QModelIndex cell = grd_->currentIndex();
        if (model_.IsOpen(cell.row(), cell.column()) && BeforeEdit(cell)) KeyEntry(cell, "");
        return;
    }
    if (!CommitGrid()) return;
    AfterBlock(InOneAct("Clear cells of " + PrintedName(Form().Item),
                        [&] { return ClearBlock(*model_.SharedForm(), model_.Rows(), range); }),
               "Clear");
}

void frmWorksheet::FillDownSelection() {
    if (!CommitGrid()) return;
    const BlockRange range = Selected();
    if (range.FirstRow < 0 || range.FirstRow == range.LastRow) return;
    AfterBlock(InOneAct("Fill down on " + PrintedName(Form().Item),
                        [&] { return FillDown(*model_.SharedForm(), model_.Rows(), range); }),
               "Fill Down");
}

void frmWorksheet::AfterBlock(const BlockResult& result, const QString& what) {
    SetGrd();
    if (result.Stored > 0 || !result.Added.empty()) EntryCalculation::RowSaved();
    if (!result.Findings.empty()) ShowBlockReport(what, result);
}

void frmWorksheet::Explain(Direction direction) {
    if (const auto cell = CurrentCell()) ShowExplanation(*cell, direction);
}

void frmWorksheet::ShowFind() { find_->Open(); }

void frmWorksheet::Zoom(double zoom) {
    const double bounded = std::round(std::clamp(zoom, 0.5, 3.0) * 1000) / 1000;
    SaveZoom(bounded);
    for (frmWorksheet* window : WorksheetWindows()) window->Grid().SetZoom(bounded);
}

// --- Lists ---------------------------------------------------------------------------------

void frmWorksheet::ShowList(const QModelIndex& cell, const QPoint& place) {
    const auto form = model_.SharedForm();
    grd_->CloseEditors();
    auto* menu = new QMenu(this);
    menu->setObjectName(Q(ChoiceMenuOf(*form, model_.EntryOf(cell.row()), cell.column())));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QPersistentModelIndex at = cell;
    for (const FormChoice& choice : ChoicesOf(*form, model_.EntryOf(cell.row()), cell.column())) {
        QAction* const entry = menu->addAction(Q(choice.Text).replace("&", "&&"));
        connect(entry, &QAction::triggered, this, [this, at, keyed = Q(choice.Keyed)] {
            if (at.isValid() && BeforeEdit(at)) KeyEntry(at, keyed);
        });
    }
    menu->popup(place);
    if (!menu->actions().isEmpty()) menu->setActiveAction(menu->actions().front());
}

// --- Buttons -------------------------------------------------------------------------------

void frmWorksheet::PressButton(const std::string& name) {
    if (name == "cmdClose") {
        UnloadForm(this);
    } else if (name == "cmdRecalculate") {
        Recalculate();
    } else if (name == "cmdOpenView") {
        OpenOther("view");
    } else if (name == "cmdOpenEdit") {
        OpenOther("edit");
    } else if (name == "cmdNext" || name == "cmdPrevious") {
        if (!CommitGrid()) return;
        const std::string item = NextWorksheet(Form().Caption, name == "cmdNext");
        if (!item.empty()) OpenWorksheet(std::string(ModeName(Form().Mode)), item);
    } else if (name == "cmdPrint") {
        const std::vector<std::string> entries{"(" + Form().Item + ")"};
        PrintSelected(entries);
    } else if (name == "cmdAdd") {
        AddLine();
    } else if (name == "cmdDelete") {
        DeleteLines();
    }
}

void frmWorksheet::OpenOther(const std::string& mode) {
    const Blocked blocked(this);
    if (CommitGrid()) OpenWorksheet(mode, Form().Item);
}

/// Ends in the view of the worksheet, with fresh figures.
void frmWorksheet::Recalculate() {
    const Blocked blocked(this);
    if (!CommitGrid()) return;
    Calc_Changed();
    NoteCalculation(false);
    TellDone("Calculated");
    OpenWorksheet("view", Form().Item);
}

void frmWorksheet::AddLine() {
    if (!CommitGrid()) return;
    const LineOutcome outcome =
        InBlocked(this, [&] { return AddFormLine(*model_.SharedForm(), CurrentLine()); });
    if (outcome.Changed) SetGrd();
    if (outcome.Line) {
        GoToLine(*outcome.Line);
        const QModelIndex start = model_.index(grd_->currentIndex().row(), 0);
        if (start.isValid() && !model_.IsOpen(start.row(), 0))
            grd_->GoTo(grd_->OpenCell(start, Step::Tab));
    }
    grd_->setFocus();
    if (outcome.Changed) EntryCalculation::RowSaved();
    if (!outcome.OpenEdit.empty()) OpenWorksheet("edit", outcome.OpenEdit);
}

void frmWorksheet::DeleteLines() {
    if (!CommitGrid()) return;
    const std::vector<Currency> selected = SelectedLines();
    const LineOutcome outcome = InBlocked(
        this, [&] { return DeleteFormLines(*model_.SharedForm(), CurrentLine(), selected); });
    if (outcome.Changed) SetGrd();
    if (outcome.Line) GoToLine(*outcome.Line);
    grd_->setFocus();
    if (outcome.Changed) EntryCalculation::RowSaved();
    if (!outcome.OpenEdit.empty()) OpenWorksheet("edit", outcome.OpenEdit);
}

}  // namespace zolmara::ui
