#include "ui/dialogs/frmESCert.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "ecr/Certification.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/overview/StatementNotes.h"

namespace zolmara::ui {
namespace {

constexpr int kLongestText = 255;
constexpr const char* kSign =
    "I have read and agree with the above certification statement. I certify that I intend my "
    "electronic signature on this certification statement to be the legally binding equivalent of "
    "my original signature.";

QLabel* TextLabel(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// The statement is long: on a small screen it is scrolled, and the buttons stay in sight.
QScrollArea* Scrolled(QLabel* label) {
    auto* area = new QScrollArea;
    label->setMargin(8);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setAccessibleName("Certification statement");
    return area;
}

/// The window, and the button with what it holds, goes on the way.
void Cancel(bool wasSigned) {
    const FiguresStay stay;
    CancelCertification();
    if (wasSigned) TellDone("Not signed: the earlier signature was taken back");
}

void SignByHand() {
    const FiguresStay stay;
    SignManually();
}

}  // namespace

frmESCert::frmESCert() {
    SetUpForm(this, "frmESCert", "Certification and Electronic Signature", true);
    const CertificationForm texts = LoadCertification();
    auto* column = new QVBoxLayout(this);
    column->addWidget(Scrolled(TextLabel("lblCert", Lines(texts.lblCert))), 1);
    column->addWidget(TextLabel("lblSign", kSign));
    auto* grid = new QGridLayout;
    txtESFirst_ = AddField(grid, 0, "lblESFirst", "txtESFirst", "&First Name:", texts.txtESFirst);
    txtESLast_ = AddField(grid, 1, "lblESLast", "txtESLast", "&Last Name:", texts.txtESLast);
    txtESTitle_ = AddField(grid, 2, "lblESTitle", "txtESTitle", "&Title:", texts.txtESTitle);
    column->addLayout(grid);
    cmdAccept_ = MakeButton("cmdAccept", "Accept", [this] {
        const FiguresStay stay;
        AcceptCertification(S(txtESFirst_->text()), S(txtESLast_->text()), S(txtESTitle_->text()));
    });
    auto* manually = MakeButton("cmdManually", "Sign Manually", SignByHand);
    const bool wasSigned = !texts.txtESLast.empty();
    auto* cancel = MakeButton("cmdCancel", "&Cancel", [wasSigned] { Cancel(wasSigned); });
    auto* choices = new QGridLayout;
    choices->setColumnStretch(0, 1);
    choices->addWidget(TextLabel("lblAccept",
                                 "Click Accept to electronically sign report and build ECR "
                                 "files."),
                       0, 0);
    choices->addWidget(cmdAccept_, 0, 1);
    choices->addWidget(TextLabel("lblManually",
                                 "Click Sign Manually to build ECR files and manually sign the "
                                 "report."),
                       1, 0);
    choices->addWidget(manually, 1, 1);
    choices->addWidget(cancel, 2, 1);
    column->addLayout(choices);
    PressOnEscape(this, cancel);
    EnableAccept();
    txtESFirst_->setFocus();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    resize(std::min(760, screen.width()), std::min(620, screen.height()));
    AddForm(this);
}

QLineEdit* frmESCert::AddField(QGridLayout* grid, int row, const char* label, const char* name,
                               const QString& caption, const std::string& text) {
    auto* field = new QLineEdit(Q(text));
    field->setObjectName(name);
    field->setMaxLength(kLongestText);
    field->setAccessibleName(QString(caption).remove('&').remove(':'));
    auto* caption_label = new QLabel(caption);
    caption_label->setObjectName(label);
    caption_label->setBuddy(field);
    grid->addWidget(caption_label, row, 0);
    grid->addWidget(field, row, 1);
    connect(field, &QLineEdit::textChanged, this, [this] { EnableAccept(); });
    return field;
}

/// While the window is being made, not all fields are there.
void frmESCert::EnableAccept() {
    if (!cmdAccept_) return;
    cmdAccept_->setEnabled(
        CanAccept(S(txtESFirst_->text()), S(txtESLast_->text()), S(txtESTitle_->text())));
}

}  // namespace zolmara::ui
