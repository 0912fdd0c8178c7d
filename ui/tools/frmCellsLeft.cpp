#include "ui/tools/frmCellsLeft.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/tools/ListingModel.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

QString CountText(std::size_t count) {
    return count == 1 ? QString("1 keyed cell is not in the file:")
                      : QString("%1 keyed cells are not in the file:").arg(count);
}

ListingModel* MakeModel(const std::vector<LeftCell>& cells, QObject* parent) {
    ListingModel::Rows rows;
    for (const LeftCell& left : cells)
        rows.push_back({left.Cell.Item, left.Cell.Line, left.Cell.Field, left.Value, left.Reason});
    auto* const model = new ListingModel(parent);
    model->Set({{"Worksheet"}, {"Line"}, {"Column"}, {"Contents"}, {"Reason"}}, std::move(rows));
    return model;
}

}  // namespace

frmCellsLeft::frmCellsLeft(std::vector<LeftCell> cells) : cells_(std::move(cells)) {
    SetUpForm(this, "frmCellsLeft", "Cells That Were Left Out", FormKind::Dialog);
    auto* const count = new QLabel(CountText(cells_.size()));
    count->setObjectName("lblCount");
    auto* const grid = new QTableView;
    grid->setObjectName("grd");
    grid->setAccessibleName("Cells that were left out");
    grid->setToolTip("Double-click a cell, or press Return, to go to its worksheet.");
    grid->setModel(MakeModel(cells_, this));
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setTabKeyNavigation(false);
    grid->verticalHeader()->hide();
    grid->resizeColumnsToContents();
    connect(grid, &QTableView::activated, this, [this](const QModelIndex& at) { GoTo(at.row()); });
    auto* const close = MakeButton("cmdClose", "&Close", [this] { UnloadForm(this); });
    auto* const column = new QVBoxLayout(this);
    column->addWidget(count);
    column->addWidget(grid, 1);
    column->addWidget(MakeButtonStrip({close}));
    PressOnEscape(this, close);
    CloseWithStatement(this);
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 24);
}

/// Header lines and pooled bases have windows of their own kind.
void frmCellsLeft::GoTo(int row) {
    const CellRef cell = cells_.at(static_cast<std::size_t>(row)).Cell;
    if (FindWorksheet(cell.Item) == nullptr || !CrfIsOpen() || TheQtHost().InLongStep() ||
        CommandAtWork())
        return;
    Guarded([&] { GoToCell(cell); });
}

void ShowCellsLeft(std::vector<LeftCell> cells) { ShowForm(new frmCellsLeft(std::move(cells))); }

}  // namespace zolmara::ui
