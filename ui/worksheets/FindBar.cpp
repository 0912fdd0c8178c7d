#include "ui/worksheets/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "ui/main/Buttons.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {

FindBar::FindBar(frmWorksheet& form) : form_(form), txtFind_(new QLineEdit), lblFound_(new QLabel) {
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
    hide();
}

void FindBar::Open() {
    show();
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
}

bool FindBar::Holds(int row, int column, const QString& text) const {
    const SheetModel& model = form_.Model();
    return model.Shown(row, column).contains(text, Qt::CaseInsensitive) ||
           model.Plain(row, column).contains(text, Qt::CaseInsensitive);
}

void FindBar::Find(bool forward) {
    const QString text = txtFind_->text();
    SheetView& grid = form_.Grid();
    const int columns = form_.Model().columnCount();
    const int cells = form_.Model().rowCount() * columns;
    if (text.isEmpty() || cells == 0) return;
    const QModelIndex from = grid.currentIndex();
    const int start = from.isValid() ? from.row() * columns + from.column() : 0;
    for (int step = 1; step <= cells; ++step) {
        const int at = (start + (forward ? step : cells - step)) % cells;
        const int row = at / columns;
        const int column = at % columns;
        if (grid.isColumnHidden(column) || !Holds(row, column, text)) continue;
        lblFound_->clear();
        return grid.GoTo(form_.Model().index(row, column));
    }
    lblFound_->setText("Not found in this worksheet.");
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->key() == Qt::Key_Escape) {
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
