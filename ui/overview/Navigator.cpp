#include "ui/overview/Navigator.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "core/Dialogs.h"
#include "print/PrintDriver.h"
#include "store/session/Session.h"
#include "ui/dialogs/frmReBuild_A_Worksheet.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/main/frmMain.h"
#include "ui/tools/ExplainWindow.h"
#include "ui/tools/ExportTool.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

enum Column { kName, kState, kFindings, kColumns };
constexpr int kItemRole = Qt::UserRole;

}  // namespace

Navigator::Navigator() {
    setObjectName("navigator");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    txtFilter_ = new QLineEdit;
    txtFilter_->setObjectName("txtFilter");
    txtFilter_->setAccessibleName("Filter worksheets");
    txtFilter_->setPlaceholderText("Filter: a name, a word, a code");
    txtFilter_->setClearButtonEnabled(true);
    txtFilter_->installEventFilter(this);
    connect(txtFilter_, &QLineEdit::textChanged, this, [this] { Filter(); });
    column->addWidget(txtFilter_);
    setFocusProxy(txtFilter_);
    MakeTree();
    MakeMenu();
    column->addWidget(treSheets_, 1);
}

void Navigator::MakeTree() {
    treSheets_ = new QTreeWidget;
    treSheets_->setObjectName("treSheets");
    treSheets_->setAccessibleName("Worksheets");
    treSheets_->setToolTip("Return opens the view, Ctrl+Return the editor.");
    treSheets_->setColumnCount(kColumns);
    treSheets_->setHeaderLabels({"Worksheet", "State", "Findings"});
    treSheets_->setRootIsDecorated(false);
    treSheets_->setUniformRowHeights(true);
    treSheets_->setAlternatingRowColors(true);
    treSheets_->header()->setStretchLastSection(false);
    treSheets_->header()->setSectionResizeMode(kName, QHeaderView::Stretch);
    treSheets_->header()->setSectionResizeMode(kState, QHeaderView::ResizeToContents);
    treSheets_->header()->setSectionResizeMode(kFindings, QHeaderView::ResizeToContents);
    treSheets_->header()->setMinimumSectionSize(24);
    treSheets_->installEventFilter(this);
    connect(treSheets_, &QTreeWidget::itemDoubleClicked, this, [this] { Open("view"); });
}

void Navigator::MakeMenu() {
    struct Entry {
        const char* Name;
        const char* Caption;
        void (*Run)(Navigator&);
    };
    static constexpr std::array<Entry, 6> kEntries = {{
        {"actView", "&View\tReturn", [](Navigator& n) { n.Open("view"); }},
        {"actEdit", "&Edit\tCtrl+Return", [](Navigator& n) { n.Open("edit"); }},
        {"actPrint", "&Print", [](Navigator& n) { n.PrintSheet(); }},
        {"actExport", "Export To &Spreadsheet ...", [](Navigator& n) { n.Export(); }},
        {"actExplain", "E&xplain Its Total\tF3", [](Navigator& n) { n.Explain(); }},
        {"actRebuild", "&ReBuild ...", [](Navigator& n) { n.Rebuild(); }},
    }};
    for (const Entry& entry : kEntries) {
        auto* action = new QAction(entry.Caption, this);
        action->setObjectName(entry.Name);
        connect(action, &QAction::triggered, this, [this, &entry] {
            if (frmMain* const main = TheQtHost().Main(); main && !Current().empty())
                main->Run([this, &entry] { entry.Run(*this); });
        });
        treSheets_->addAction(action);
    }
    treSheets_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

// --- Rows ----------------------------------------------------------------------------------

void Navigator::Refresh() {
    try {
        sheets_ = ReadSheets();
    } catch (const StoreError&) {
        // A file that cannot be read shows what it had.
    }
    ShowRows();
    Filter();
}

void Navigator::Clear() {
    sheets_.clear();
    treSheets_->clear();
    txtFilter_->clear();
}

void Navigator::ShowRows() {
    while (treSheets_->topLevelItemCount() > static_cast<int>(sheets_.size()))
        delete treSheets_->takeTopLevelItem(treSheets_->topLevelItemCount() - 1);
    for (int row = 0; const SheetRow& sheet : sheets_) {
        QTreeWidgetItem* item = treSheets_->topLevelItem(row++);
        if (!item) item = new QTreeWidgetItem(treSheets_);
        item->setText(kName, sheet.Name);
        item->setText(kState, sheet.State ? Q(NameOf(*sheet.State)) : QString());
        item->setText(kFindings, sheet.FindingsText());
        item->setToolTip(kName, sheet.Name);
        item->setData(kName, kItemRole, Q(sheet.Item));
        QFont font = treSheets_->font();
        font.setBold(sheet.Errors > 0);
        for (int at = 0; at < kColumns; ++at) item->setFont(at, font);
    }
    const auto hasFindings = [](const SheetRow& sheet) {
        return sheet.Errors + sheet.Warnings > 0;
    };
    treSheets_->setColumnHidden(kFindings, std::ranges::none_of(sheets_, hasFindings));
    if (!treSheets_->currentItem() && treSheets_->topLevelItemCount() > 0)
        treSheets_->setCurrentItem(treSheets_->topLevelItem(0));
}

/// The first that is left becomes current where the current one goes.
void Navigator::Filter() {
    QTreeWidgetItem* first = nullptr;
    for (int row = 0; row < treSheets_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = treSheets_->topLevelItem(row);
        const bool shown = sheets_[static_cast<std::size_t>(row)].Matches(txtFilter_->text());
        item->setHidden(!shown);
        if (shown && !first) first = item;
    }
    const QTreeWidgetItem* const current = treSheets_->currentItem();
    if (!current || current->isHidden()) treSheets_->setCurrentItem(first);
}

std::string Navigator::Current() const {
    const QTreeWidgetItem* const item = treSheets_->currentItem();
    return item && !item->isHidden() ? S(item->data(kName, kItemRole).toString()) : std::string();
}

// --- Steps ---------------------------------------------------------------------------------

namespace {

/// Undo and redo are the statement's, not the filter's: it has the keys whenever the main window
/// comes forward.
bool IsUndo(const QKeyEvent& key) {
    return key.modifiers().testFlag(Qt::ControlModifier) &&
           (key.key() == Qt::Key_Z || key.key() == Qt::Key_Y);
}

}  // namespace

/// Return opens from the list and from the filter; from the filter the arrow leads into the list.
bool Navigator::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsUndo(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool edits = key->modifiers().testFlag(Qt::ControlModifier);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        Open(edits ? "edit" : "view");
        return true;
    }
    if (watched == txtFilter_ && key->key() == Qt::Key_Down) {
        treSheets_->setFocus(Qt::TabFocusReason);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void Navigator::Open(const std::string& mode) {
    const std::string item = Current();
    if (item.empty() || TheQtHost().InLongStep()) return;
    Guarded([&] { GoToWorksheet(mode, item); });
}

void Navigator::PrintSheet() {
    const std::vector<std::string> entries{"(" + Current() + ")"};
    PrintSelected(entries);
}

void Navigator::Export() { ExportToSpreadsheet(Current()); }

void Navigator::Explain() {
    const auto total = TotalOf(Current());
    if (!total) return TheDialogs().Beep();
    ShowExplanation(*total, Direction::From);
}

void Navigator::Rebuild() {
    if (!FindWorksheet(Current())) return TheDialogs().Beep();
    if (CloseAllForms(false) == 0) ShowForm(new frmReBuild_A_Worksheet(Current()));
}

}  // namespace zolmara::ui
