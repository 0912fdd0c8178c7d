#include "ui/worksheets/BlockReport.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/Globals.h"
#include "forms/WorksheetForm.h"
#include "ui/main/Buttons.h"
#include "ui/main/QtText.h"
#include "ui/worksheets/BlockText.h"

namespace zolmara::ui {
namespace {

const QStringList kTitles{"Worksheet", "Line", "Column", "Value", "Entry", "Reason"};

QStringList CellsOf(const BlockFinding& finding) {
    return {Q(finding.Item),
            finding.Line == Currency() ? QString() : Q(NumberText(finding.Line)),
            Q(finding.Column),
            Q(finding.Value),
            finding.Refused ? "refused" : "changed",
            Lines(finding.Reason).replace('\n', ' ')};
}

QTableWidget* MakeTable(const BlockResult& result) {
    auto* table = new QTableWidget(static_cast<int>(result.Findings.size()),
                                   static_cast<int>(kTitles.size()));
    table->setObjectName("grdFindings");
    table->setAccessibleName("What did not go in as it was");
    table->setHorizontalHeaderLabels(kTitles);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    for (int row = 0; const BlockFinding& finding : result.Findings) {
        for (int column = 0; const QString& cell : CellsOf(finding))
            table->setItem(row, column++, new QTableWidgetItem(cell));
        ++row;
    }
    // A reason is a sentence or two: it folds in what the others leave.
    table->resizeColumnsToContents();
    table->horizontalHeader()->setSectionResizeMode(static_cast<int>(kTitles.size()) - 1,
                                                    QHeaderView::Stretch);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return table;
}

void CopyFindings(const BlockResult& result) {
    std::vector<QStringList> rows{kTitles};
    for (const BlockFinding& finding : result.Findings) rows.push_back(CellsOf(finding));
    QApplication::clipboard()->setText(WriteBlock(rows));
}

QString Summary(const BlockResult& result) {
    const auto refused =
        std::ranges::count_if(result.Findings, [](const BlockFinding& f) { return f.Refused; });
    return QString("%1 cells went in.  %2 were refused and stay as they were, %3 went in changed.")
        .arg(result.Stored)
        .arg(refused)
        .arg(static_cast<qsizetype>(result.Findings.size()) - refused);
}

}  // namespace

void ShowBlockReport(const QString& what, const BlockResult& result) {
    static QPointer<QDialog> shown;
    delete shown;
    auto* window = new QDialog(QApplication::activeWindow());
    shown = window;
    window->setObjectName("wndBlockReport");
    window->setWindowTitle(what);
    window->setAttribute(Qt::WA_DeleteOnClose);
    auto* column = new QVBoxLayout(window);
    auto* summary = new QLabel(Summary(result));
    summary->setObjectName("lblSummary");
    summary->setWordWrap(true);
    column->addWidget(summary);
    column->addWidget(MakeTable(result), 1);
    auto* copy = MakeButton("cmdCopy", "Co&py List", [result] { CopyFindings(result); });
    auto* close = MakeButton("cmdClose", "&Close", [window] { window->close(); });
    column->addWidget(MakeButtonStrip({copy, close}));
    close->setDefault(true);
    window->resize(760, 360);
    window->show();
}

}  // namespace zolmara::ui
