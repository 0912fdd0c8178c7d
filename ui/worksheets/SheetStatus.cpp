// The line below the grid: what the selection adds up to, and what A-6 moves under a code.

#include <QItemSelection>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/QtText.h"
#include "ui/tools/EntryCalculation.h"
#include "ui/worksheets/BlockCopy.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

/// Cells that are added up before the window takes keys again.
constexpr int kCellsAtOnce = 20'000;

QString TextOf(const BlockSums& sums) {
    if (sums.Count == 0) return {};
    const auto shown = [](double value) {
        return Q(
            FormatNumber(value, IsExactTo(value, 0) ? "#,##0;(#,##0)" : "#,##0.00;(#,##0.00)"));
    };
    return QString("Sum %1   Count %2   Average %3")
        .arg(shown(sums.Sum))
        .arg(sums.Count)
        .arg(shown(sums.Average()));
}

QString CopyText(std::optional<int> percent) {
    return percent ? QString("Copying ... %1 % (Escape stops it)").arg(*percent) : QString();
}

}  // namespace

BlockRange frmWorksheet::Selected() const {
    const QItemSelection selection = grd_->selectionModel()->selection();
    const QModelIndex current = grd_->currentIndex();
    BlockRange range{current.row(), current.row(), current.column(), current.column()};
    for (const QItemSelectionRange& part : selection) {
        range.FirstRow = std::min(range.FirstRow, part.top());
        range.LastRow = std::max(range.LastRow, part.bottom());
        range.FirstColumn = std::min(range.FirstColumn, part.left());
        range.LastColumn = std::max(range.LastColumn, part.right());
    }
    return range;
}

QString frmWorksheet::SumsText() {
    const BlockRange range = Selected();
    const int rows = range.LastRow - range.FirstRow + 1;
    const int columns = range.LastColumn - range.FirstColumn + 1;
    if (range.FirstRow < 0 || (rows == 1 && columns == 1)) return {};
    if (rows * columns <= kCellsAtOnce) return TextOf(SumsOfBlock(Form(), model_.Rows(), range));
    if (!bigSum_ || bigSum_->Range != range) {
        bigSum_ = {range, range.FirstRow, {}};
        tmrSum_->start(0);
    }
    return bigSum_->Done() ? TextOf(bigSum_->Sums) : QString("Adding up ...");
}

/// A slice of the block; keys and clicks come in between.
void frmWorksheet::AddUp() {
    if (!bigSum_ || bigSum_->Done()) return;
    BlockRange slice = bigSum_->Range;
    const int columns = slice.LastColumn - slice.FirstColumn + 1;
    slice.FirstRow = bigSum_->NextRow;
    slice.LastRow = std::min(slice.LastRow, slice.FirstRow + kCellsAtOnce / columns);
    try {
        const BlockSums sums = SumsOfBlock(Form(), model_.Rows(), slice);
        bigSum_->Sums.Sum += sums.Sum;
        bigSum_->Sums.Count += sums.Count;
    } catch (const StoreError&) {
        // The next refresh begins anew.
    }
    bigSum_->NextRow = slice.LastRow + 1;
    if (bigSum_->Done()) return ShowStatus();
    tmrSum_->start(0);
}

/// What A-6 moves under the code of the current line.
QString frmWorksheet::CodeText() const {
    const int row = grd_->currentIndex().row();
    const int column = Form().ColumnOf("Col_2");
    if (!SameText(Form().Item, "A6") || !model_.HasRow(row) || column < 0) return {};
    const QString code = model_.Plain(row, column);
    if (code.isEmpty()) return {};
    const CodeSums sums = SumsOfCode(S(code), model_.Keyed());
    const auto shown = [](double value) { return Q(FormatNumber(value, "#,##0;(#,##0)")); };
    return QString("Code %1: increases %2, decreases %3, difference %4")
        .arg(code, shown(sums.Increases), shown(sums.Decreases), shown(sums.Difference()));
}

/// What the next key may be, where there is nothing to go on to.
QString frmWorksheet::HintText() const {
    const auto add = buttons_.find("cmdAdd");
    const bool adds = add != buttons_.end() && add->second && add->second->isEnabled();
    if (Form().Mode == FormMode::Edit && model_.rowCount() == 0)
        return adds ? QString("No lines yet: Alt+A adds the first") : QString();
    if (!atEnd_) return {};
    return adds ? QString("Last cell: Alt+A adds a line, Tab goes to the buttons")
                : QString("Last cell: Tab goes to the buttons");
}

void frmWorksheet::ShowStatus() {
    QStringList parts;
    try {
        const QModelIndex current = grd_->currentIndex();
        if (model_.KeyedRow() >= 0) parts << "Row not stored yet";
        if (Form().Mode == FormMode::Edit && current.isValid() &&
            !model_.IsOpen(current.row(), current.column()))
            parts << "Locked cell";
        parts << HintText() << CopyText(CopyPercent(this)) << CodeText() << SumsText()
              << EntryCalculation::Note();
    } catch (const StoreError&) {
        // The next refresh shows them.
    }
    parts.removeAll(QString());
    lblStatus_->setText(parts.join("   |   "));
}

}  // namespace zolmara::ui
