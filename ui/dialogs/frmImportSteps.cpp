#include "ui/dialogs/frmImportSteps.h"

#include <fmt/format.h>

#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "import/CompareCostCenters.h"
#include "import/ImportSource.h"
#include "ui/main/Buttons.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

QLabel* MakeLabel(const char* name, const QString& text = {}) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* CloseButton(QWidget* step) {
    return MakeButton("cmdClose", "&Close", [step] { step->window()->close(); });
}

constexpr int kProgressSteps = 1000;

}  // namespace

// --- Cost centers --------------------------------------------------------------------------

frmImportCCMis::frmImportCCMis(std::function<void()> next)
    : grd_(MakeGrid()), lblWarning_(MakeLabel("lblWarning")) {
    setObjectName("frmImportCCMis");
    auto* column = new QVBoxLayout(this);
    auto* heads = new QHBoxLayout;
    heads->addWidget(MakeLabel("lblCurrentCRF", "Current CRF\n" + Q(gCRFTitle)), 1);
    heads->addWidget(MakeLabel("lblImportCRF", "Import CRF\n" + Q(ImportTitle())), 1);
    column->addLayout(heads);
    column->addWidget(grd_, 1);
    column->addWidget(lblWarning_);
    auto* button = MakeButton("mnuNext", "&Next", std::move(next));
    mnuNext_ = button;
    column->addWidget(MakeButtonStrip({button, CloseButton(this)}));
    FillGrid();
}

QTableWidget* frmImportCCMis::MakeGrid() {
    auto* grid = new QTableWidget(0, 2);
    grid->setObjectName("grd");
    grid->setAccessibleName("Cost centers of both files");
    grid->setHorizontalHeaderLabels({"Current CRF", "Import CRF"});
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setTabKeyNavigation(false);
    return grid;
}

/// A line that is not the same on both sides stands out, and the first one is in sight.
void frmImportCCMis::FillGrid() {
    const auto pairs = CompareCostCenters();
    grd_->setRowCount(static_cast<int>(pairs.size()));
    QTableWidgetItem* first = nullptr;
    for (int row = 0; const CostCenterPair& pair : pairs) {
        int side = 0;
        for (const std::string& text : {pair.Current, pair.Import}) {
            auto* cell = new QTableWidgetItem(Q(text));
            QFont font = cell->font();
            font.setBold(pair.Mismatch());
            cell->setFont(font);
            grd_->setItem(row, side++, cell);
            if (pair.Mismatch() && !first) first = cell;
        }
        ++row;
    }
    if (first) grd_->scrollToItem(first);
    const bool match = CostCentersMatch(pairs);
    lblWarning_->setText(Q(std::string(CostCenterWarning(match))));
    mnuNext_->setEnabled(match);
}

// --- Worksheets ----------------------------------------------------------------------------

frmImportWkshts::frmImportWkshts(std::function<void()> next)
    : entries_(ImportableWorksheets()), lbWorksheets_(new QListWidget) {
    setObjectName("frmImportWkshts");
    lbWorksheets_->setObjectName("lbWorksheets");
    lbWorksheets_->setAccessibleName("Worksheets");
    for (const ImportEntry& entry : entries_) {
        auto* item = new QListWidgetItem(Q(entry.Text), lbWorksheets_);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeLabel("lblWorksheets", "Worksheets in the import CRF:\n(\"" +
                                                     Q(ImportTitle()) +
                                                     "\")\nthat are also in the current CRF"));
    column->addWidget(lbWorksheets_, 1);
    column->addWidget(
        MakeButtonStrip({MakeButton("cmdSelectAll", "Select &All", [this] { SetAll(true); }),
                         MakeButton("cmdClearAll", "C&lear All", [this] { SetAll(false); }),
                         MakeButton("mnuNext", "&Next", std::move(next)), CloseButton(this)}));
}

std::vector<ImportEntry> frmImportWkshts::Chosen() const {
    std::vector<ImportEntry> chosen;
    for (int row = 0; row < lbWorksheets_->count(); ++row)
        if (lbWorksheets_->item(row)->checkState() == Qt::Checked)
            chosen.push_back(entries_.at(static_cast<std::size_t>(row)));
    return chosen;
}

void frmImportWkshts::SetAll(bool chosen) {
    for (int row = 0; row < lbWorksheets_->count(); ++row)
        lbWorksheets_->item(row)->setCheckState(chosen ? Qt::Checked : Qt::Unchecked);
}

void frmImportWkshts::AskForChoice() {
    TheDialogs().MsgBox(
        "No worksheets were selected for import.  Please select one or more worksheets.",
        kExclamation, "No Worksheets Selected");
    lbWorksheets_->setFocus();
}

// --- Copying -------------------------------------------------------------------------------

frmImportProgress::frmImportProgress(std::function<void()> back)
    : lblProgress_(MakeLabel("lblProgress")),
      prgImport_(new QProgressBar),
      lbMessages_(new QListWidget) {
    setObjectName("frmImportProgress");
    prgImport_->setObjectName("prgImport");
    prgImport_->setAccessibleName("How far the import is");
    prgImport_->setRange(0, kProgressSteps);
    lbMessages_->setObjectName("lbMessages");
    lbMessages_->setAccessibleName("Messages of the import");
    lbMessages_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(lblProgress_);
    column->addWidget(prgImport_);
    column->addWidget(lbMessages_, 1);
    auto* button = MakeButton("cmdBack", "&Worksheets", std::move(back));
    cmdBack_ = button;
    column->addWidget(MakeButtonStrip({button, CloseButton(this)}));
}

void frmImportProgress::Begin() {
    lbMessages_->clear();
    cmdBack_->setEnabled(false);
    prgImport_->setValue(0);
}

void frmImportProgress::Show(const std::string& text, double part) {
    lblProgress_->setText(Q(text));
    prgImport_->setValue(static_cast<int>(part * kProgressSteps));
    repaint();
}

void frmImportProgress::Finish(std::size_t chosen, const std::vector<std::string>& failed) {
    const std::string without =
        failed.empty() ? "" : fmt::format("Not imported: {}.  ", fmt::join(failed, ", "));
    lblProgress_->setText(
        Q(fmt::format("{} of {} worksheets were imported.  {}Nothing has been recalculated yet.",
                      chosen - failed.size(), chosen, without)));
    for (const ImportMessage& message : ImportMessages())
        lbMessages_->addItem(Q(message.Severity) + ": " + Lines(message.Text));
    cmdBack_->setEnabled(true);
}

void frmImportProgress::Fail() {
    lblProgress_->setText("The import could not be finished.  Nothing of it was kept.");
    cmdBack_->setEnabled(true);
}

}  // namespace zolmara::ui
