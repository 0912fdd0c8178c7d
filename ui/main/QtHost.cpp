#include "ui/main/QtHost.h"

#include <QApplication>
#include <QDateTime>
#include <QPrinter>
#include <algorithm>
#include <cstdlib>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Host.h"
#include "core/Status.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"
#include "ui/dialogs/frmCopy2Floppy.h"
#include "ui/dialogs/frmViewError.h"
#include "ui/main/Desktop.h"
#include "ui/main/Done.h"
#include "ui/main/Guard.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtText.h"
#include "ui/main/frmMain.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {
namespace {

QtHost* theHost = nullptr;

/// Paints what has changed, and takes nothing of the user's in between.
void PaintNow() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

}  // namespace

QtHost& TheQtHost() { return *theHost; }

QtHost::QtHost(Settings settings, std::string programFolder)
    : former_(InstallHost(this)),
      settings_(std::move(settings)),
      programFolder_(std::move(programFolder)) {
    theHost = this;
}

QtHost::~QtHost() {
    QtHost::SetPointer(Pointer::Normal);
    InstallHost(former_);
    theHost = nullptr;
}

// --- Boxes and dialogs ---------------------------------------------------------------------

int QtHost::MsgBox(const std::string& text, int style, const std::string& title) {
    if (quietBoxes_) {
        ++*quietBoxes_;
        return DefaultAnswer(style);
    }
    return TheDesktop().MsgBox(text, style, title);
}

void QtHost::Beep() { QApplication::beep(); }

std::optional<std::string> QtHost::ChooseFile(const FileDialog& dialog) {
    return TheDesktop().ChooseFile(dialog);
}

void QtHost::SetUpPrinter(const std::string& title) {
    TheDesktop().SetUpPrinter(printer_.Target(), title);
}

bool QtHost::InLongStep() const { return main_ && main_->InLongStep(); }

void QtHost::PrintJobs() {
    const std::vector<PrintJob> jobs = printer_.TakeJobs();
    if (!jobs.empty()) TheDesktop().Print(jobs, printer_.Target());
}

void QtHost::BeginQuiet(int& boxes) { quietBoxes_ = &boxes; }
void QtHost::EndQuiet() { quietBoxes_ = nullptr; }

QuietHost::QuietHost(int& boxes) { TheQtHost().BeginQuiet(boxes); }
QuietHost::~QuietHost() { TheQtHost().EndQuiet(); }

namespace {

int commands = 0;  ///< at work, one within the other

struct AtWork {
    AtWork() { ++commands; }
    ~AtWork() { --commands; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;
};

}  // namespace

bool CommandAtWork() { return commands > 0; }

bool Guarded(const std::function<void()>& action) {
    const AtWork atWork;
    bool done = false;
    std::string error;
    try {
        action();
        done = true;
    } catch (const std::exception& failure) {
        error = PlainWords(failure);
    }
    if (!done) {
        TheStatus().SetPointer(Pointer::Normal);
        TheStatus().HideCalcMsg();
        TheDialogs().MsgBox(error, kCritical, std::string(kProductName));
    }
    TheQtHost().PrintJobs();
    // A step that ended on the spot has left its line: the window may be closed again.
    if (commands == 1) TheStatus().HideCalcMsg();
    return done;
}

// --- The main window -----------------------------------------------------------------------

void QtHost::SetPointer(Pointer pointer) {
    if (quietBoxes_) return;
    const bool hourglass = pointer == Pointer::Hourglass;
    if (hourglass == hourglass_) return;
    hourglass_ = hourglass;
    if (hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtHost::ShowCalcMsg(const std::string& text) {
    if (!main_ || quietBoxes_) return;
    main_->ShowCalcMsg(text);
    PaintNow();
}

void QtHost::HideCalcMsg() {
    if (main_) main_->HideCalcMsg();
}

void QtHost::ShowProgress(double part) {
    if (!main_ || quietBoxes_) return;
    main_->ShowProgress(part);
    PaintNow();
}

void QtHost::EnableMenu(const std::string& name, bool enabled) {
    if (main_) main_->EnableMenu(name, enabled);
}

void QtHost::EnableMain(bool enabled) {
    if (main_) main_->EnableMain(enabled);
}

void QtHost::RefreshMenus() {
    if (main_) main_->RefreshMenus();
}

void QtHost::SetCaption(const std::string& text) {
    if (main_) main_->setWindowTitle(Q(text));
}

void QtHost::SetCrfName(const std::string& path) {
    if (main_) main_->SetCrfName(path);
}

void QtHost::ShowCrf(const std::string& path) {
    if (main_) main_->ShowCrf(path);
}

void QtHost::ShowWelcome() {
    if (main_) main_->ShowWelcome();
}

bool QtHost::WelcomeVisible() { return main_ && main_->WelcomeVisible(); }

void QtHost::SetWelcomeVisible(bool visible) {
    if (main_) main_->SetWelcomeVisible(visible);
}

void QtHost::StartHelpText() {
    if (main_) main_->StartHelpText();
}

void QtHost::DoEvents() {
    if (!quietBoxes_) QCoreApplication::processEvents();
}

// --- The other windows ---------------------------------------------------------------------

int QtHost::CloseAllForms(bool keepCostCenterForms) {
    return CloseWorksheetForms(keepCostCenterForms);
}

void QtHost::RefreshOpenForms(const std::string& exceptForm) {
    for (QWidget* form : OpenForms())
        if (form->objectName().compare(Q(exceptForm), Qt::CaseInsensitive) != 0) ui::SetGrd(form);
}

void QtHost::RefreshWorksheetForm(const std::string& mode, const std::string& item) {
    ui::RefreshWorksheetForm(mode, item);
}

bool QtHost::FormIsOpen(const std::string& name) { return ui::FormIsOpen(name); }

void QtHost::SetGrd(const std::string& form) {
    if (QWidget* window = FindForm(form)) ui::SetGrd(window);
}

void QtHost::UnloadForm(const std::string& name) {
    if (QWidget* window = FindForm(name)) ui::UnloadForm(window);
}

void QtHost::ShowErrors(const std::string& caption) { ShowViewError(caption); }

void QtHost::ShowCopy2Floppy(const std::string& ecrPath) {
    TellDone("Built " + FileName(ecrPath));
    ShowCopyWindow(ecrPath);
}

// --- Clock and settings --------------------------------------------------------------------

DateTime QtHost::Now() {
    const QDateTime now = QDateTime::currentDateTime();
    const QDate day = now.date();
    const QTime time = now.time();
    return DateTime(day.year(), static_cast<unsigned>(day.month()),
                    static_cast<unsigned>(day.day()), time.hour(), time.minute(), time.second());
}

std::string QtHost::GetSetting(const std::string& application, const std::string& section,
                               const std::string& key, const std::string& fallback) {
    return settings_.Get(application, section, key, fallback);
}

void QtHost::SaveSetting(const std::string& application, const std::string& section,
                         const std::string& key, const std::string& value) {
    settings_.Save(application, section, key, value);
}

void QtHost::EndProgram() {
    DropCrf();
    std::fflush(nullptr);
    std::_Exit(4);
}

}  // namespace zolmara::ui
