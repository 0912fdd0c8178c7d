#include "ui/dialogs/frmReBuild_A_Worksheet.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "import/Rebuild.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "worksheets/SheetNames.h"

namespace zolmara::ui {

frmReBuild_A_Worksheet::frmReBuild_A_Worksheet(const std::string& item)
    : cboReBuild_(new QComboBox),
      cmdExecute_(MakeButton("cmdExecute", "&Execute", [this] { Execute(); })) {
    SetUpForm(this, "frmReBuild_A_Worksheet", "ReBuild A Worksheet", true);
    cboReBuild_->setObjectName("cboReBuild");
    cboReBuild_->setAccessibleName("Worksheet");
    for (const std::string_view each : RebuildableWorksheets())
        cboReBuild_->addItem(Q(std::string(each)));
    cboReBuild_->setCurrentIndex(-1);
    cmdExecute_->setEnabled(false);
    connect(cboReBuild_, &QComboBox::currentIndexChanged, this,
            [this](int index) { cmdExecute_->setEnabled(index >= 0); });
    cboReBuild_->setCurrentIndex(cboReBuild_->findText(Q(item)));
    auto* cancel = MakeButton("cmdCancel", "&Cancel", [this] { UnloadForm(this); });
    auto* column = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->addRow("Worksheet:", cboReBuild_);
    column->addLayout(form);
    auto* warning = new QLabel("All that was keyed on the worksheet will be lost.");
    warning->setObjectName("lblWarning");
    column->addWidget(warning);
    column->addWidget(MakeButtonStrip({cmdExecute_, cancel}));
    PressOnEscape(this, cancel);
    AddForm(this);
}

void frmReBuild_A_Worksheet::Execute() {
    const std::string item = S(cboReBuild_->currentText());
    if (RebuildWorksheet(item)) TellDone("Rebuilt " + PrintedName(item));
    UnloadForm(this);
}

}  // namespace zolmara::ui
