#include "ui/dialogs/frmCRFEditInfo.h"

#include <QCloseEvent>
#include <QFocusEvent>
#include <QFormLayout>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "core/Globals.h"
#include "core/Windows.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/frmSplash.h"
#include "ui/worksheets/BlockCopy.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {
namespace {

constexpr int kNameWidth = 320;

struct FieldRow {
    IdentityField Field;
    const char* Name;
    const char* Label;
    const char* Hint;
    std::string IdentityFields::*Value;
};

const std::array<FieldRow, 4> kRows{{
    {IdentityField::ProviderNum, "txtProviderNum", "Provider #:", "NN-NNNN",
     &IdentityFields::ProviderNum},
    {IdentityField::FYStart, "txtFYStart", "F/Y Start:", "M/D/YYYY", &IdentityFields::FYStart},
    {IdentityField::FYEnd, "txtFYEnd", "F/Y End:", "M/D/YYYY, empty for a year",
     &IdentityFields::FYEnd},
    {IdentityField::FacilityName, "txtFacilityName", "Facility Name:", "",
     &IdentityFields::FacilityName},
}};

/// From the last to the first, all but those that stay.
void UnloadAllBut(const QStringList& stay) {
    const std::vector<QWidget*> open = OpenForms();
    for (auto form = open.rbegin(); form != open.rend(); ++form)
        if (!stay.contains((*form)->objectName(), Qt::CaseInsensitive)) UnloadForm(*form);
}

void StartAnew() {
    UpgradeCRF();
    (new frmSplash)->show();
    UnloadAllBut({"frmMain", "frmSplash"});
}

}  // namespace

frmCRFEditInfo::frmCRFEditInfo(std::function<void(bool)> after) : after_(std::move(after)) {
    SetUpForm(this, "frmCRFEditInfo", "Edit Provider Information", true);
    MakeFields();
    auto* save = MakeButton("cmdSave", "&Save", [this] { Save(SaveIdentity); });
    auto* saveAs = MakeButton("cmdSaveAs", "Save &As ...", [this] { Save(SaveIdentityAs); });
    cmdCancel_ = MakeButton("cmdCancel", "Cancel", [this] { UnloadForm(this); });
    static_cast<QVBoxLayout*>(layout())->addWidget(MakeButtonStrip({save, saveAs, cmdCancel_}));
    PressOnReturn(this, save);
    PressOnEscape(this, cmdCancel_);
    ShowFields(PresentIdentity());
    fields_[0]->setFocus();
    AddForm(this);
}

/// What follows comes once the dialog has gone.
void frmCRFEditInfo::closeEvent(QCloseEvent* event) {
    event->accept();
    if (after_)
        QTimer::singleShot(0,
                           [after = std::exchange(after_, {}), saved = saved_] { after(saved); });
}

void frmCRFEditInfo::MakeFields() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(16);
    auto* form = new QFormLayout;
    column->addLayout(form);
    for (std::size_t at = 0; const FieldRow& row : kRows) {
        auto* field = new QLineEdit;
        field->setObjectName(row.Name);
        field->setAccessibleName(QString(row.Label).remove(':'));
        field->setPlaceholderText(row.Hint);
        field->setMinimumWidth(kNameWidth);
        field->installEventFilter(this);
        form->addRow(row.Label, field);
        fields_.at(at++) = field;
    }
}

IdentityFields frmCRFEditInfo::Fields() const {
    IdentityFields fields;
    for (std::size_t at = 0; at < kRows.size(); ++at)
        fields.*(kRows.at(at).Value) = S(fields_.at(at)->text());
    return fields;
}

void frmCRFEditInfo::ShowFields(const IdentityFields& fields) {
    for (std::size_t at = 0; at < kRows.size(); ++at)
        fields_.at(at)->setText(Q(fields.*(kRows.at(at).Value)));
}

QLineEdit* frmCRFEditInfo::FieldOf(IdentityField field) const {
    for (std::size_t at = 0; at < kRows.size(); ++at)
        if (kRows.at(at).Field == field) return fields_.at(at);
    return nullptr;
}

void frmCRFEditInfo::Save(IdentityResult (*save)(IdentityFields& fields)) {
    // A row that is being keyed belongs to the statement as it is now.
    if (!CommitOpenRows()) return;
    // So does a block that is being copied.
    FinishCopy();
    checking_ = true;
    const std::string before = gCRFPath;
    IdentityFields fields = Fields();
    IdentityResult result;
    const bool done = Guarded([&] { result = save(fields); });
    ShowFields(fields);
    if (QLineEdit* const wrong = FieldOf(result.Wrong)) {
        wrong->setFocus();
        wrong->selectAll();
    }
    checking_ = false;
    saved_ = done && result.End == IdentitySave::Saved;
    if (!saved_) return;
    UnloadAllBut({"frmMain", "frmEditCCs", "frmEditS1p1", "frmViewS1p1", "frmCRFEditInfo"});
    // What stays, for a reason of its own, shows the statement that is open now.
    TheWindows().RefreshOpenForms("");
    TellDone(before == gCRFPath ? "Saved the provider information" : "Saved as " + gCRFTitle);
    UnloadForm(this);
}

void frmCRFEditInfo::CheckLeft(QObject* field) {
    const auto at = std::ranges::find(fields_, field) - fields_.begin();
    IdentityFields fields = Fields();
    const bool right = CheckIdentityOnExit(fields, kRows.at(static_cast<std::size_t>(at)).Field);
    ShowFields(fields);
    if (!right) fields_.at(static_cast<std::size_t>(at))->setFocus();
}

/// A field is checked when it is left for another one.
bool frmCRFEditInfo::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FocusOut || checking_ || cmdCancel_->hasFocus()) return false;
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason &&
        reason != Qt::MouseFocusReason && reason != Qt::ShortcutFocusReason)
        return false;
    checking_ = true;
    Guarded([&] { CheckLeft(watched); });
    checking_ = false;
    return false;
}

void ShowCRFEditInfo() {
    if (FindForm("frmCRFEditInfo")) return;
    ShowForm(new frmCRFEditInfo([](bool saved) {
        if (saved) Guarded(StartAnew);
    }));
}

}  // namespace zolmara::ui
