#include "ui/dialogs/frmNewFromLastYear.h"

#include <fmt/format.h>

#include <QCloseEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Windows.h"
#include "import/ImportSource.h"
#include "import/ImportWorksheets.h"
#include "import/LastYear.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "worksheets/FurnishedCrf.h"

namespace zolmara::ui {
namespace {

constexpr const char* kTitle = "New From Last Year";
constexpr int kItemRole = Qt::UserRole;

QLineEdit* AddDate(QFormLayout* form, const char* name, const QString& label) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setAccessibleName(QString(label).remove(':'));
    field->setPlaceholderText("M/D/YYYY");
    form->addRow(label, field);
    return field;
}

}  // namespace

frmNewFromLastYear::frmNewFromLastYear() : fields_(FieldsAfterLastYear("", "")) {
    SetUpForm(this, "frmNewFromLastYear", kTitle, true);
    auto* column = new QVBoxLayout(this);
    MakeFields();
    MakeList();
    auto* create = MakeButton("cmdCreate", "C&reate ...", [this] { Create(); });
    auto* cancel = MakeButton("cmdCancel", "Cancel", [this] { UnloadForm(this); });
    column->addWidget(MakeButtonStrip({create, cancel}));
    PressOnReturn(this, create);
    PressOnEscape(this, cancel);
    ShowFields();
    txtFYStart_->setFocus();
    AddForm(this);
}

void frmNewFromLastYear::closeEvent(QCloseEvent* event) {
    CloseImportSource();
    event->accept();
}

void frmNewFromLastYear::MakeFields() {
    auto* form = new QFormLayout;
    auto* from = new QLabel(Q(ImportTitle()));
    from->setObjectName("lblLastYear");
    from->setTextFormat(Qt::PlainText);
    form->addRow("Last year's file:", from);
    auto* whose = new QLabel(Q(fmt::format("{}  {}", fields_.ProviderNum, fields_.FacilityName)));
    whose->setObjectName("lblIdentity");
    whose->setTextFormat(Qt::PlainText);
    form->addRow("Home office:", whose);
    txtFYStart_ = AddDate(form, "txtFYStart", "F/Y Start:");
    txtFYEnd_ = AddDate(form, "txtFYEnd", "F/Y End:");
    static_cast<QVBoxLayout*>(layout())->addLayout(form);
}

void frmNewFromLastYear::MakeList() {
    auto* column = static_cast<QVBoxLayout*>(layout());
    auto* what = new QLabel(
        "Cost centers, components, regions, bases, header lines, S-1 and officers come over.  "
        "Take along what was keyed on:");
    what->setObjectName("lblWorksheets");
    what->setWordWrap(true);
    column->addWidget(what);
    lbWorksheets_ = new QListWidget;
    lbWorksheets_->setObjectName("lbWorksheets");
    lbWorksheets_->setAccessibleName("Worksheets to take along");
    for (const std::string& item : WorksheetsToTakeAlong()) {
        auto* entry = new QListWidgetItem(Q(fmt::format("{} ({})", ItemDisplayName(item), item)),
                                          lbWorksheets_);
        entry->setFlags(entry->flags() | Qt::ItemIsUserCheckable);
        entry->setCheckState(Qt::Unchecked);
        entry->setData(kItemRole, Q(item));
    }
    column->addWidget(lbWorksheets_, 1);
}

std::vector<std::string> frmNewFromLastYear::TakeAlong() const {
    std::vector<std::string> items;
    for (int row = 0; row < lbWorksheets_->count(); ++row) {
        const QListWidgetItem* const entry = lbWorksheets_->item(row);
        if (entry->checkState() == Qt::Checked)
            items.push_back(S(entry->data(kItemRole).toString()));
    }
    return items;
}

void frmNewFromLastYear::ShowFields() {
    txtFYStart_->setText(Q(fields_.FYStart));
    txtFYEnd_->setText(Q(fields_.FYEnd));
}

void frmNewFromLastYear::GoTo(NewCrfField field) {
    QLineEdit* const target = field == NewCrfField::FYEnd ? txtFYEnd_ : txtFYStart_;
    target->setFocus();
    target->selectAll();
}

void frmNewFromLastYear::Create() {
    fields_ = FieldsAfterLastYear(S(txtFYStart_->text()), S(txtFYEnd_->text()));
    const NewCrfField wrong = CheckNewCrfFields(fields_);
    ShowFields();
    if (wrong != NewCrfField::None) return GoTo(wrong);
    const auto path = ChooseNewCrf();
    if (!path) return;
    if (IsImportSource(*path)) {
        TheDialogs().MsgBox("The file selected is last year's.  Please name another one.",
                            kExclamation, kTitle);
        return;
    }
    if (CreateFromLastYear(*path, fields_, TakeAlong())) Made();
}

/// What could not come over is shown at once: it has to be keyed.
void frmNewFromLastYear::Made() {
    std::string text;
    for (const ImportMessage& message : ImportMessages()) text += message.Text + "\r";
    hide();
    UnloadForm(this);
    TellDone("Created " + gCRFTitle + " from last year's");
    TheWindows().RefreshMenus();
    if (!text.empty()) TheDialogs().MsgBox(text, kExclamation, kTitle);
}

void ShowNewFromLastYear() {
    if (CloseAllForms(false) != 0) return;
    const auto chosen = ChooseImportSource("Last Year's CRF");
    if (!chosen) return;
    // Last year's file is often the one that is open.
    if (!gCRFPath.empty()) mnuReportClose();
    if (!gCRFPath.empty()) return;
    if (OpenImportSource(*chosen) == SourceResult::Open) ShowForm(new frmNewFromLastYear);
}

}  // namespace zolmara::ui
