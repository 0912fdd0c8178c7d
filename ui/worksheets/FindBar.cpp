#include "ui/worksheets/FindBar.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <cstdint>

#include "ui/main/Buttons.h"
#include "ui/main/QtText.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {

namespace {

/// Cells that are looked through before the window takes keys again.
constexpr int kCellsAtOnce = 20'000;

}  // namespace

FindBar::FindBar(frmWorksheet& form)
    : form_(form), txtFind_(new QLineEdit), lblFound_(new QLabel), tmrFind_(new QTimer(this)) {
    setObjectName("findBar");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel("Fin&d:");
    label->setBuddy(txtFind_);
    txtFind_->setObjectName("txtFind");
    txtFind_->setAccessibleName("Find in this worksheet");
    txtFind_->setMaximumWidth(280);
    lblFound_->setObjectName("lblFound");
    row->addWidget(label);
    row->addWidget(txtFind_);
    row->addWidget(MakeButton("cmdFindNext", "Next", [this] { Find(true); }));
    row->addWidget(MakeButton("cmdFindPrevious", "Previous", [this] { Find(false); }));
    row->addWidget(lblFound_, 1);
    tmrFind_->setObjectName("tmrFind");
    tmrFind_->setSingleShot(true);
    tmrFind_->callOnTimeout([this] { GoOn(); });
    connect(txtFind_, &QLineEdit::textChanged, this, [this] { Stop(); });
    connect(form.Grid().selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { Stop(); });
    hide();
}

void FindBar::Open() {
    show();
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
}

bool FindBar::Holds(int row, int column, const Search& search) const {
    const FormColumn& described = form_.Model().Column(column);
    const Variant value = form_.Model().Value(row, column);
    if (value.IsNull()) return false;
    const Currency line = form_.Model().Line(row);
    const auto isIn = [&](const std::string& text) {
        return Q(text).contains(search.Text, Qt::CaseInsensitive);
    };
    if (isIn(ShownText(described, line, value))) return true;
    if (!described.IsNumber()) return false;
    return isIn(PlainText(described, line, value)) ||
           (value.IsNumber() && search.Amount.Is(value.Number()));
}

int FindBar::CountOfCells() const { return form_.Model().rowCount() * form_.Model().columnCount(); }

void FindBar::Find(bool forward) {
    Stop();
    const int cells = CountOfCells();
    if (txtFind_->text().isEmpty() || cells == 0) return;
    const QModelIndex from = form_.Grid().currentIndex();
    const int start = from.isValid() ? from.row() * form_.Model().columnCount() + from.column() : 0;
    search_ = {txtFind_->text(), SoughtAmount(S(txtFind_->text())), forward, start, cells, 1};
    GoOn();
}

/// Looks through some cells; true where one of them holds the text.
bool FindBar::Slice() {
    const int columns = form_.Model().columnCount();
    const int last = search_->Step + kCellsAtOnce;
    for (; search_->Step < last && !search_->Done(); ++search_->Step) {
        const int column = search_->At() % columns;
        if (form_.Grid().isColumnHidden(column)) continue;
        if (Holds(search_->At() / columns, column, *search_)) return true;
    }
    return false;
}

void FindBar::GoOn() {
    // Lines were added or taken away, or a cell is being keyed: what was counted holds no more.
    if (!search_ || search_->Cells != CountOfCells() || form_.Grid().Editor()) return Stop();
    if (Slice()) {
        const int columns = form_.Model().columnCount();
        const int at = search_->At();
        Stop();
        form_.Grid().GoTo(form_.Model().index(at / columns, at % columns));
    } else if (search_->Done()) {
        Stop();
        lblFound_->setText("Not found in this worksheet.");
    } else {
        lblFound_->setText(QString("Searching ... %1 % (Escape stops it)")
                               .arg(std::int64_t{search_->Step} * 100 / search_->Cells));
        tmrFind_->start(0);
    }
}

void FindBar::Stop() {
    tmrFind_->stop();
    search_.reset();
    lblFound_->clear();
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->key() == Qt::Key_Escape && search_) {
        Stop();
    } else if (event->key() == Qt::Key_Escape) {
        hide();
        form_.Grid().setFocus();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Find(!shift);
    } else {
        return QWidget::keyPressEvent(event);
    }
    event->accept();
}

}  // namespace zolmara::ui
