#include "ui/worksheets/GridPart.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>

#include "ui/worksheets/CellDelegate.h"

namespace zolmara::ui {

GridPart::GridPart(const CellActs& acts, QWidget* parent)
    : QTableView(parent), acts_(acts), look_(new CellDelegate(acts, this)) {
    setItemDelegate(look_);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setSelectionMode(ContiguousSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    setWordWrap(true);
    setTextElideMode(Qt::ElideRight);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setMinimumSectionSize(24);
    horizontalHeader()->setHighlightSections(false);
}

void GridPart::SetCurrentLook(const QModelIndex& index) { look_->SetCurrent(index); }

bool GridPart::EditCell(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    return GridPart::edit(index, trigger, event);
}

bool GridPart::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool starts = trigger == AllEditTriggers || (trigger & editTriggers()) != 0;
    if (starts && index.isValid()) {
        if (!acts_.BeforeEdit(index)) return false;
        if (acts_.OnlyPicked(index)) {
            OpenList(index);
            return false;
        }
    }
    if (!QTableView::edit(index, trigger, event)) return false;
    // F2 goes on with what stands there; a letter begins anew.
    if (trigger == EditKeyPressed)
        if (auto* field = qobject_cast<QLineEdit*>(OpenEditor())) field->end(false);
    return true;
}

void GridPart::OpenList(const QModelIndex& cell) {
    acts_.OpenList(cell, viewport()->mapToGlobal(visualRect(cell).bottomLeft()));
}

/// One that has been closed lives on for a while.
QWidget* GridPart::OpenEditor() const {
    if (!isPersistentEditorOpen(currentIndex())) return nullptr;
    for (QWidget* editor : viewport()->findChildren<QWidget*>("txtCell"))
        if (!editor->isHidden()) return editor;
    return nullptr;
}

void GridPart::CloseOpenEditor() {
    const QPointer<QWidget> editor = OpenEditor();
    if (!editor || state() != EditingState) return;
    commitData(editor);
    if (editor) closeEditor(editor, QAbstractItemDelegate::NoHint);
}

/// The keys go back to the view that has them, which need not be the one that was edited in.
void GridPart::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const bool hadKeys = editor && editor->hasFocus();
    QTableView::closeEditor(editor, hint);
    if (hadKeys) (focusProxy() ? focusProxy() : this)->setFocus();
}

void GridPart::mousePressEvent(QMouseEvent* event) {
    const QModelIndex cell = indexAt(event->position().toPoint());
    const bool current = cell.isValid() && cell == currentIndex();
    if (current && event->button() == Qt::LeftButton && acts_.HasList(cell) &&
        CellDelegate::ListButton(visualRect(cell)).contains(event->position().toPoint()))
        return OpenList(cell);
    QTableView::mousePressEvent(event);
}

}  // namespace zolmara::ui
