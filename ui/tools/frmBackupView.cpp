#include "ui/tools/frmBackupView.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

#include "import/CompareCrfs.h"
#include "store/CopyRows.h"
#include "store/PlainWords.h"
#include "ui/main/Buttons.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/tools/ListingModel.h"

namespace zolmara::ui {

frmBackupView::frmBackupView(const Backup& backup)
    : backup_(OpenReadOnly(backup.Path)),
      model_(new ListingModel(this)),
      cboTable_(new QComboBox),
      grd_(new QTableView) {
    SetUpForm(this, "frmBackupView", "Backup of " + StoreDateText(backup.Time) + " (read-only)",
              true);
    cboTable_->setObjectName("cboTable");
    cboTable_->setAccessibleName("Table");
    for (const std::string& table : ComparableTables())
        if (backup_.HasTable(table)) cboTable_->addItem(Q(table));
    cboTable_->setCurrentText("A");
    grd_->setObjectName("grd");
    grd_->setAccessibleName("Rows");
    grd_->setModel(model_);
    grd_->setTabKeyNavigation(false);
    grd_->verticalHeader()->hide();
    auto* const close = MakeButton("cmdClose", "&Close", [this] { UnloadForm(this); });
    auto* form = new QFormLayout;
    form->addRow("&Table:", cboTable_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(grd_, 1);
    column->addWidget(MakeButtonStrip({close}));
    PressOnEscape(this, close);
    connect(cboTable_, &QComboBox::currentIndexChanged, this, [this] { ShowTable(); });
    ShowTable();
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().lineSpacing() * 30);
}

void frmBackupView::ShowTable() {
    std::vector<ListingModel::Column> columns;
    ListingModel::Rows rows;
    try {
        Recordset table = backup_.OpenRecordset(S(cboTable_->currentText()));
        for (int i = 0; i < table.FieldCount(); ++i)
            columns.push_back({table.FieldName(i), i == 0 ? Shown::Plain : Shown::Amount});
        for (; !table.Eof(); table.MoveNext()) {
            auto& row = rows.emplace_back();
            for (int i = 0; i < table.FieldCount(); ++i) row.push_back(table[i]);
        }
    } catch (const StoreError& error) {
        columns = {{"This table cannot be read"}};
        rows = {{PlainWords(error)}};
    }
    model_->Set(std::move(columns), std::move(rows));
    grd_->resizeColumnsToContents();
}

}  // namespace zolmara::ui
