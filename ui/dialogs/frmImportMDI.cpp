#include "ui/dialogs/frmImportMDI.h"

#include <fmt/format.h>

#include <QCloseEvent>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "core/Dialogs.h"
#include "core/Windows.h"
#include "import/ImportSource.h"
#include "import/ImportWorksheets.h"
#include "ui/dialogs/frmImportSteps.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"

namespace zolmara::ui {
namespace {

constexpr int kCloseDelay = 10;  ///< milliseconds

/// True as long as it lives.
class Flag {
public:
    explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
    ~Flag() { flag_ = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& flag_;
};

}  // namespace

frmImportMDI::frmImportMDI()
    : steps_(new QStackedWidget),
      lists_(new frmImportCCMis([this] { ChooseWorksheets(); })),
      worksheets_(nullptr),
      progress_(new frmImportProgress([this] { ChooseWorksheets(); })),
      tmrMDIClose_(new QTimer(this)) {
    SetUpForm(this, "frmImportMDI", "CRF to CRF Import", true);
    steps_->addWidget(lists_);
    steps_->addWidget(progress_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(steps_);
    tmrMDIClose_->setObjectName("tmrMDIClose");
    tmrMDIClose_->setSingleShot(true);
    tmrMDIClose_->setInterval(kCloseDelay);
    connect(tmrMDIClose_, &QTimer::timeout, this, [this] { close(); });
    auto* const escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, [this] { close(); });
    resize(fontMetrics().averageCharWidth() * 90, fontMetrics().lineSpacing() * 28);
    AddForm(this);
}

void frmImportMDI::ChooseWorksheets() {
    if (!worksheets_) {
        worksheets_ = new frmImportWkshts([this] { Import(); });
        steps_->addWidget(worksheets_);
    }
    steps_->setCurrentWidget(worksheets_);
}

void frmImportMDI::Import() {
    const std::vector<ImportEntry> chosen = worksheets_->Chosen();
    if (chosen.empty()) return worksheets_->AskForChoice();
    const Flag running(running_);
    progress_->Begin();
    steps_->setCurrentWidget(progress_);
    try {
        const std::vector<std::string> failed = ImportWorksheets(
            chosen, [this](const std::string& text, double part) { progress_->Show(text, part); });
        progress_->Finish(chosen.size(), failed);
        TellDone(fmt::format("Took over {} of {} worksheets from {}", chosen.size() - failed.size(),
                             chosen.size(), ImportTitle()));
    } catch (...) {
        progress_->Fail();
        throw;
    }
}

/// The lists alone can be left without a question.
bool frmImportMDI::MayClose() {
    if (running_) {
        TheDialogs().MsgBox("Unable to cancel import while import is in progress.", kExclamation,
                            "Unable to cancel");
        return false;
    }
    if (!worksheets_) return true;
    return TheDialogs().MsgBox("Are you finished importing \"" + ImportTitle() + "\"?",
                               kYesNo + kQuestion, "Cancel Import?") == kYes;
}

void frmImportMDI::closeEvent(QCloseEvent* event) {
    if (closing_) {
        CloseImportSource();
        return event->accept();
    }
    event->ignore();
    if (!MayClose()) return;
    closing_ = true;
    // The window goes when its steps have gone.
    steps_->hide();
    tmrMDIClose_->start();
}

void ShowImportCRF() {
    TheWindows().EnableMenu("mnuReportSubmit", false);
    if (ImportCRF() == 1) ShowForm(new frmImportMDI);
}

}  // namespace zolmara::ui
