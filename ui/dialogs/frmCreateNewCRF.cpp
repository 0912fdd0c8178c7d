#include "ui/dialogs/frmCreateNewCRF.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Windows.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

NewCrfFields FirstFields() {
    if (!gDebug) return {};
    return {"287", "12-3456", "10/1/2022", "9/30/2023", "Sample Home Office"};
}

QLineEdit* AddField(QFormLayout* form, const char* name, const QString& label,
                    const QString& hint) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setAccessibleName(QString(label).remove('&').remove(':'));
    field->setPlaceholderText(hint);
    form->addRow(label, field);
    return field;
}

}  // namespace

frmCreateNewCRF::frmCreateNewCRF() : welcome_(TheWindows().WelcomeVisible()) {
    SetUpForm(this, "frmCreateNewCRF", "Create New CRF", true);
    TheWindows().SetWelcomeVisible(false);
    MakeFields(FirstFields());
    cmdCreate_ = MakeButton("cmdCreate", "C&reate", [this] { Create(); });
    cmdCreate_->setText("Create");
    cmdCancel_ = MakeButton("cmdCancel", "Cancel", [this] { UnloadForm(this); });
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addWidget(MakeButtonStrip({cmdCreate_, cmdCancel_}));
    PressOnReturn(this, cmdCreate_);
    PressOnEscape(this, cmdCancel_);
    txtProviderNum_->setFocus();
    AddForm(this);
}

void frmCreateNewCRF::MakeFields(const NewCrfFields& fields) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(16);
    auto* form = new QFormLayout;
    column->addLayout(form);
    txtFormNum_ = AddField(form, "txtFormNum", "Form #:", "");
    txtProviderNum_ = AddField(form, "txtProviderNum", "Provider #:", "NN-NNNN");
    txtFYStart_ = AddField(form, "txtFYStart", "F/Y Start:", "M/D/YYYY");
    txtFYEnd_ = AddField(form, "txtFYEnd", "F/Y End:", "M/D/YYYY, empty for a year");
    txtFacilityName_ = AddField(form, "txtFacilityName", "Facility Name:", "");
    txtFacilityName_->setMinimumWidth(320);
    txtProviderNum_->installEventFilter(this);
    ShowFields(fields);
}

NewCrfFields frmCreateNewCRF::Fields() const {
    return {S(txtFormNum_->text()), S(txtProviderNum_->text()), S(txtFYStart_->text()),
            S(txtFYEnd_->text()), S(txtFacilityName_->text())};
}

void frmCreateNewCRF::ShowFields(const NewCrfFields& fields) {
    txtFormNum_->setText(Q(fields.FormNum));
    txtProviderNum_->setText(Q(fields.ProviderNum));
    txtFYStart_->setText(Q(fields.FYStart));
    txtFYEnd_->setText(Q(fields.FYEnd));
    txtFacilityName_->setText(Q(fields.FacilityName));
}

void frmCreateNewCRF::GoTo(NewCrfField field) {
    QLineEdit* const target = field == NewCrfField::ProviderNum ? txtProviderNum_
                              : field == NewCrfField::FYStart   ? txtFYStart_
                              : field == NewCrfField::FYEnd     ? txtFYEnd_
                                                                : txtFacilityName_;
    target->setFocus();
    target->selectAll();
}

void frmCreateNewCRF::EnableButtons(bool enabled) {
    cmdCreate_->setEnabled(enabled);
    cmdCancel_->setEnabled(enabled);
}

void frmCreateNewCRF::Create() {
    EnableButtons(false);
    checking_ = true;
    bool refused = false;
    const bool done = Guarded([&] {
        NewCrfFields fields = Fields();
        const NewCrfField wrong = CheckNewCrfFields(fields);
        ShowFields(fields);
        refused = wrong != NewCrfField::None;
        if (refused)
            GoTo(wrong);
        else
            made_ = New_CRF(fields);
    });
    checking_ = false;
    EnableButtons(true);
    if (!done || !made_) return;
    hide();
    UnloadForm(this);
    TellDone("Created " + gCRFTitle);
    TheWindows().RefreshMenus();
}

/// The number is checked when it is left for another field.
bool frmCreateNewCRF::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtProviderNum_ || event->type() != QEvent::FocusOut) return false;
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    const bool within = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                        reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
    if (!within || checking_ || cmdCancel_->hasFocus()) return false;
    checking_ = true;
    Guarded([this] {
        if (!CheckProviderNumOnExit(S(txtProviderNum_->text()))) GoTo(NewCrfField::ProviderNum);
    });
    checking_ = false;
    return false;
}

void frmCreateNewCRF::closeEvent(QCloseEvent* event) {
    if (!cmdCancel_->isEnabled()) return event->ignore();
    if (!made_) TheWindows().SetWelcomeVisible(welcome_);
    event->accept();
}

}  // namespace zolmara::ui
