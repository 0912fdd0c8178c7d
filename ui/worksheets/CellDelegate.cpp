#include "ui/worksheets/CellDelegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <algorithm>

#include "ui/worksheets/SheetModel.h"

namespace zolmara::ui {
namespace {

constexpr const char* kAsRead = "asRead";
constexpr int kListButton = 16;
constexpr int kFrame = 2;
constexpr int kPlainWidth = 100;  ///< of a letter, in percent
constexpr int kLeastWidth = 65;

QColor Mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](double x, double y) { return x * (1 - share) + y * share; };
    return QColor::fromRgbF(static_cast<float>(mix(a.redF(), b.redF())),
                            static_cast<float>(mix(a.greenF(), b.greenF())),
                            static_cast<float>(mix(a.blueF(), b.blueF())));
}

void PaintLocked(QPainter* painter, const QStyleOptionViewItem& option) {
    const QPalette& colours = option.palette;
    const QColor ground = colours.color(QPalette::Window);
    painter->fillRect(option.rect, ground);
    painter->fillRect(option.rect,
                      QBrush(Mixed(ground, colours.color(QPalette::Text), 0.10), Qt::BDiagPattern));
}

void PaintListButton(QPainter* painter, const QStyleOptionViewItem& option) {
    QStyleOption arrow;
    arrow.rect = CellDelegate::ListButton(option.rect);
    arrow.palette = option.palette;
    arrow.state = QStyle::State_Enabled;
    painter->fillRect(arrow.rect, option.palette.button());
    painter->setPen(option.palette.color(QPalette::Mid));
    painter->drawRect(arrow.rect.adjusted(0, 0, -1, -1));
    arrow.rect.adjust(3, 3, -3, -3);
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter);
}

void PaintFrame(QPainter* painter, const QStyleOptionViewItem& option) {
    painter->setPen(QPen(option.palette.color(QPalette::Text), kFrame));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
}

}  // namespace

CellDelegate::CellDelegate(const CellActs& acts, QObject* parent)
    : QStyledItemDelegate(parent), acts_(acts) {}

QRect CellDelegate::ListButton(const QRect& cell) {
    const int width = std::min(kListButton, cell.width() / 2);
    return {cell.right() - width + 1, cell.top() + 1, width, cell.height() - 2};
}

void CellDelegate::SetCurrent(const QModelIndex& index) { current_ = index; }

// --- Looks ---------------------------------------------------------------------------------

/// A number that is a little too wide for its column is set narrower: half a number misleads.
void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (!option->displayAlignment.testFlag(Qt::AlignRight) || option->text.isEmpty()) return;
    const QStyle* const style = option->widget ? option->widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, option, option->widget) + 1;
    const int room = option->rect.width() - 2 * margin;
    const auto width = [option] { return option->fontMetrics.horizontalAdvance(option->text); };
    if (width() <= room) return;
    int stretch = std::clamp(room * kPlainWidth / width() + 1, kLeastWidth + 1, kPlainWidth);
    while (width() > room && stretch > kLeastWidth) {
        option->font.setStretch(--stretch);
        option->fontMetrics = QFontMetrics(option->font);
    }
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    painter->save();
    QStyleOptionViewItem cell = option;
    cell.state &= ~QStyle::State_HasFocus;
    const bool current = index == current_;
    const bool selected = cell.state.testFlag(QStyle::State_Selected);
    if (!selected && index.data(kLockedRole).toBool()) PaintLocked(painter, option);
    if (selected && current) {
        cell.state &= ~QStyle::State_Selected;
        painter->fillRect(option.rect, option.palette.base());
    }
    QStyledItemDelegate::paint(painter, cell, index);
    if (current && acts_.HasList(index)) PaintListButton(painter, option);
    if (current) PaintFrame(painter, option);
    painter->restore();
}

// --- Editing -------------------------------------------------------------------------------

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const {
    auto* editor = new QLineEdit(parent);
    editor->setObjectName("txtCell");
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    editor->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    connect(editor, &QLineEdit::textEdited, editor, [this] { acts_.Typed(); });
    return editor;
}

/// A refresh leaves what is being typed alone.
void CellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* field = qobject_cast<QLineEdit*>(editor);
    if (!field || field->property(kAsRead).isValid()) return;
    const QString text = index.data(Qt::EditRole).toString();
    field->setProperty(kAsRead, text);
    field->setText(text);
    field->selectAll();
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                                const QModelIndex& index) const {
    const auto* field = qobject_cast<QLineEdit*>(editor);
    if (!field) return;
    taken_ =
        field->text() == field->property(kAsRead).toString() || acts_.Key(index, field->text());
}

void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& /*index*/) const {
    // The frame of the current cell stays in sight while it is keyed.
    editor->setGeometry(option.rect.adjusted(kFrame, kFrame, -kFrame, -kFrame));
}

void CellDelegate::Finish(QWidget* editor, Step step) {
    const QPointer<QObject> alive = this;
    taken_ = true;
    emit commitData(editor);
    if (!alive) return;
    emit closeEditor(editor, NoHint);
    if (taken_) acts_.Move(step);
}

bool CellDelegate::KeyInEditor(QWidget* editor, int key, bool shift) {
    switch (key) {
        case Qt::Key_Tab:
            Finish(editor, Step::Tab);
            return true;
        case Qt::Key_Backtab:
            Finish(editor, Step::BackTab);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Finish(editor, shift ? Step::BackEnter : Step::Enter);
            return true;
        case Qt::Key_Up:
            Finish(editor, Step::Up);
            return true;
        case Qt::Key_Down:
            Finish(editor, Step::Down);
            return true;
        default:
            return false;
    }
}

bool CellDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(object);
    if (editor && event->type() == QEvent::KeyPress) {
        const auto* key = dynamic_cast<QKeyEvent*>(event);
        const bool shift = key->modifiers().testFlag(Qt::ShiftModifier);
        if (KeyInEditor(editor, key->key(), shift)) return true;
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

}  // namespace zolmara::ui
