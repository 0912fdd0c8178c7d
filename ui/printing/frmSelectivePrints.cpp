#include "ui/printing/frmSelectivePrints.h"

#include <QCloseEvent>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "print/PrintDriver.h"
#include "ui/main/Buttons.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {

frmSelectivePrints::frmSelectivePrints() {
    SetUpForm(this, "frmSelectivePrints", "Print Worksheets", FormKind::Dialog);
    MakeList();
    auto* label = new QLabel("&Worksheets to print:");
    label->setBuddy(lstWorksheets_);
    auto* all = MakeButton("cmdSelectAll", "&Select All", [this] { CheckAll(true); });
    auto* none = MakeButton("cmdClearAll", "C&lear All", [this] { CheckAll(false); });
    auto* print = MakeButton("cmdPrint", "&Print", [this] { Print(); });
    auto* close = MakeButton("cmdClose", "&Close", [this] { UnloadForm(this); });
    auto* column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(lstWorksheets_, 1);
    column->addWidget(MakeButtonStrip({all, none, print, close}));
    PressOnEscape(this, close);
    PressOnReturn(this, print);
    lstWorksheets_->setFocus();
    resize(460, 520);
    AddForm(this);
}

void frmSelectivePrints::MakeList() {
    lstWorksheets_ = new QListWidget;
    lstWorksheets_->setObjectName("lstWorksheets");
    lstWorksheets_->setAccessibleName("Worksheets to print");
    for (const std::string& entry : SelectivePrintList()) {
        auto* item = new QListWidgetItem(Q(entry), lstWorksheets_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    if (lstWorksheets_->count() > 0) lstWorksheets_->setCurrentRow(0);
}

void frmSelectivePrints::CheckAll(bool checked) {
    for (int row = 0; row < lstWorksheets_->count(); ++row)
        lstWorksheets_->item(row)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

/// The window is off while reports are printed, and comes back whatever ends that.
void frmSelectivePrints::Print() {
    std::vector<std::string> entries;
    for (int row = 0; row < lstWorksheets_->count(); ++row) {
        const QListWidgetItem* const item = lstWorksheets_->item(row);
        if (item->checkState() == Qt::Checked) entries.push_back(S(item->text()));
    }
    printing_ = true;
    setEnabled(false);
    const auto comeBack = [this] {
        printing_ = false;
        setEnabled(true);
    };
    try {
        PrintSelected(entries);
    } catch (...) {
        comeBack();
        throw;
    }
    comeBack();
}

void frmSelectivePrints::closeEvent(QCloseEvent* event) { event->setAccepted(!printing_); }

}  // namespace zolmara::ui
