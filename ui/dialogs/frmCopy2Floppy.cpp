#include "ui/dialogs/frmCopy2Floppy.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "ecr/Build_ECR.h"
#include "ecr/CopySubmission.h"
#include "ui/main/Buttons.h"
#include "ui/main/Done.h"
#include "ui/main/MenuTable.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

/// As many as there are buttons.
constexpr std::size_t kMostDrives = 7;

QLabel* TextLabel(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(420);
    return label;
}

}  // namespace

frmCopy2Floppy::frmCopy2Floppy() : drives_(TheDesktop().RemovableDrives()) {
    SetUpForm(this, "frmCopy2Floppy", "Copy ECR and PI to removable drive", true);
    tbCopy_ = TextLabel("tbCopy", "Select a drive to copy the ECR and PI files to.");
    tbLocation_ = TextLabel("tbLocation", "");
    tbLocation_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    lblBuilt_ = TextLabel("lblBuilt", "");
    lblBuilt_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    column->addWidget(lblBuilt_);
    column->addWidget(tbCopy_);
    MakeDrives();
    column->addWidget(frmDrive_);
    column->addWidget(tbLocation_);
    cmdProcess_ = MakeButton("cmdProcess", "&Process", [this] { Process(); });
    auto* cancel = MakeButton("cmdCancel", "&Cancel", [this] { UnloadForm(this); });
    column->addWidget(MakeButtonStrip({cmdProcess_, cancel}));
    PressOnEscape(this, cancel);
    PressOnReturn(this, drives_.empty() ? cancel : cmdProcess_);
    if (drives_.empty()) SayThereAreNone();
    AddForm(this);
}

void frmCopy2Floppy::MakeDrives() {
    if (drives_.size() > kMostDrives) drives_.resize(kMostDrives);
    frmDrive_ = new QGroupBox;
    frmDrive_->setObjectName("frmDrive");
    frmDrive_->setAccessibleName("Drive");
    auto* rows = new QVBoxLayout(frmDrive_);
    for (const Drive& drive : drives_) {
        const QString name = Q(drive.Name).replace('&', "&&");
        auto* option = new QRadioButton("Copy To The &" + name + " Drive");
        option->setObjectName(Q(MemberName("OptDrive", static_cast<int>(OptDrive_.size()))));
        option->setToolTip(Q(drive.Root));
        rows->addWidget(option);
        OptDrive_.push_back(option);
    }
    if (!OptDrive_.empty()) OptDrive_.front()->setChecked(true);
}

void frmCopy2Floppy::SayThereAreNone() {
    tbCopy_->setVisible(gDebug);
    frmDrive_->hide();
    cmdProcess_->setEnabled(false);
    TheDialogs().MsgBox(
        "You do not have any removable drives. Please follow the instructions on the next screen "
        "and copy the files as directed and either burn a CD or insert a flash drive.",
        kOkOnly, "CMS Delivery Problem");
}

void frmCopy2Floppy::SetFile(const std::string& path) {
    path_ = path;
    tbLocation_->setText(Q(CopyLocation(path)));
    lblBuilt_->setText(Lines(BuiltNotice()));
}

void frmCopy2Floppy::Process() {
    const auto chosen = std::ranges::find_if(OptDrive_, &QRadioButton::isChecked);
    const Drive drive = chosen == OptDrive_.end()
                            ? Drive{}
                            : drives_[static_cast<std::size_t>(chosen - OptDrive_.begin())];
    if (!CopySubmission(path_, drive.Root)) return;
    TellDone("Copied to " + drive.Name);
    UnloadForm(this);
}

void ShowCopyWindow(const std::string& ecrPath) {
    auto* form = new frmCopy2Floppy;
    form->SetFile(ecrPath);
    ShowForm(form);
}

}  // namespace zolmara::ui
