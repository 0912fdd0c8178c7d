#pragma once

#include <QStyledItemDelegate>

#include "ui/worksheets/CellActs.h"

namespace zolmara::ui {

/// How a cell looks and how it is keyed. Locked cells stand on the window's ground under thin
/// stripes, the current one has a frame and, where it has a list, the list's button.
class CellDelegate : public QStyledItemDelegate {
public:
    CellDelegate(const CellActs& acts, QObject* parent);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// Where a cell's list button stands in its rectangle.
    static QRect ListButton(const QRect& cell);

    void SetCurrent(const QModelIndex& index);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool KeyInEditor(QWidget* editor, int key, bool shift);
    void Finish(QWidget* editor, Step step);

    const CellActs& acts_;
    QPersistentModelIndex current_;
    mutable bool taken_ = true;
};

}  // namespace zolmara::ui
