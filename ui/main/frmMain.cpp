#include "ui/main/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "print/SendPrtFile.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Desktop.h"
#include "ui/main/Guard.h"
#include "ui/main/Logo.h"
#include "ui/main/MainCommands.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/frmSplash.h"
#include "ui/tools/ToolsMenu.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "worksheets/CrfMaker.h"

namespace zolmara::ui {
namespace {

constexpr const char* kHelpText =
    "Use the menus at the top of the form to manipulate Zolmara.  Use the Edit menu to edit "
    "worksheet information.  Use View to review worksheets and use Report File to perform all "
    "generalized operations.";

/// A row of the welcome frame: what to do, and the button that does it.
struct WelcomeRow {
    const char* Label;
    const char* Text;
    const char* Button;
    const char* Caption;
    const char* Menu;
};
constexpr WelcomeRow kWelcome[] = {
    {"lblWelcomeNew", "To create a new Cost Report File, select ...", "cmdNew", "&New",
     "mnuReportNew"},
    {"lblWelcomeOpen", "To open an existing Cost Report File, select ...", "cmdOpen", "&Open",
     "mnuReportOpen"},
    {"lblWelcomeExit", "To close and leave the Zolmara program, select ...", "cmdExit", "E&xit",
     "mnuReportExit"},
};

QFont Larger(const QFont& font, double factor) {
    QFont larger = font;
    if (font.pointSizeF() > 0) larger.setPointSizeF(font.pointSizeF() * factor);
    return larger;
}

}  // namespace

frmMain::frmMain() {
    setObjectName("frmMain");
    setWindowIcon(QIcon(LogoPixmap(64, 1)));
    MakeMenus();
    MakeWindow();
    tmrMain_ = new QTimer(this);
    tmrMain_->setObjectName("tmrMain");
    tmrMain_->callOnTimeout([this] { TickHelpText(); });
    AddForm(this);
    TheQtHost().SetMain(this);
    OnFormsChanged([this] {
        if (!InLongStep()) RefreshMenus();
    });
}

frmMain::~frmMain() {
    OnFormsChanged({});
    TheQtHost().SetMain(nullptr);
}

// --- The window ----------------------------------------------------------------------------

QWidget* frmMain::MakeWelcome() {
    fraWelcome_ = new QFrame;
    fraWelcome_->setObjectName("fraWelcome");
    fraWelcome_->setFrameShape(QFrame::StyledPanel);
    auto* grid = new QGridLayout(fraWelcome_);
    grid->setContentsMargins(28, 24, 28, 24);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(14);
    auto* title = new QLabel("Welcome to Velquist System's Zolmara 287-22");
    title->setObjectName("lblWelcome");
    title->setFont(Larger(font(), 1.5));
    fraWelcome_->setAccessibleName(title->text());
    grid->addWidget(title, 0, 0, 1, 2);
    for (int row = 1; const WelcomeRow& entry : kWelcome) {
        auto* label = new QLabel(entry.Text);
        label->setObjectName(entry.Label);
        auto* button = new QPushButton(entry.Caption);
        button->setObjectName(entry.Button);
        button->setAccessibleDescription(entry.Text);
        TakesReturn(button);
        const std::string menu = entry.Menu;
        connect(button, &QPushButton::clicked, this, [this, menu] { Menu(menu)->trigger(); });
        grid->addWidget(label, row, 0);
        grid->addWidget(button, row, 1);
        if (row == 1) cmdNew_ = button;
        ++row;
    }
    return fraWelcome_;
}

void frmMain::MakeWindow() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(24, 16, 24, 16);
    column->setSpacing(12);
    imgVelquist_ = new QLabel;
    imgVelquist_->setObjectName("imgVelquist");
    imgVelquist_->setAccessibleName("Velquist");
    imgVelquist_->setPixmap(LogoPixmap(96, devicePixelRatioF()));
    lblCRFName_ = new QLabel;
    lblCRFName_->setObjectName("lblCRFName");
    lblCRFName_->setWordWrap(true);
    lblCRFName_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lblHelp_ = new QLabel(kHelpText);
    lblHelp_->setObjectName("lblHelp");
    lblHelp_->setWordWrap(true);
    lblHelp_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    // While the text scrolls in, it is taller than the window; the window stays as it is.
    lblHelp_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    txtCalcMsg_ = new QLineEdit;
    txtCalcMsg_->setObjectName("txtCalcMsg");
    txtCalcMsg_->setAccessibleName("Progress");
    txtCalcMsg_->setReadOnly(true);
    txtCalcMsg_->setFocusPolicy(Qt::NoFocus);
    prgCalc_ = new QProgressBar;
    prgCalc_->setObjectName("prgCalc");
    prgCalc_->setAccessibleName("How far the step is");
    prgCalc_->setRange(0, 1000);
    prgCalc_->setFixedWidth(220);
    auto* progress = new QHBoxLayout;
    progress->addWidget(txtCalcMsg_, 1);
    progress->addWidget(prgCalc_);
    column->addWidget(imgVelquist_, 0, Qt::AlignLeft);
    column->addWidget(lblCRFName_);
    column->addWidget(MakeWelcome(), 2, Qt::AlignCenter);
    column->addWidget(lblHelp_, 1);
    column->addStretch(0);
    column->addLayout(progress);
    setCentralWidget(page);
    txtCalcMsg_->hide();
    prgCalc_->hide();
    HideStage();
}

/// At the top left corner of the screen, at most as large as it is.
void frmMain::PlaceWindow() {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    resize(std::min(900, screen.width()), std::min(560, screen.height()));
    move(screen.topLeft());
}

void frmMain::HideStage() {
    lblHelp_->hide();
    lblCRFName_->hide();
    imgVelquist_->hide();
}

// --- Form_Load -----------------------------------------------------------------------------

void frmMain::ShowSplash() {
    auto* splash = new frmSplash;
    splash->show();
    const int wait = gDebug ? 0 : TheDesktop().SplashTime;
    QEventLoop events;
    QTimer::singleShot(wait, &events, &QEventLoop::quit);
    events.exec();
    UnloadForm(splash);
}

void frmMain::EndSecondCopy() {
    const std::string title(kProductName);
    TheDialogs().MsgBox(
        "A copy of " + title +
            " is already running.  Only one copy may be run at a time.  After leaving "
            "this message box, this copy of " +
            title +
            " will shut down.  Then, you may [1] use the already running copy, [2] "
            "shut down the already running copy and then restart it, or [3] call "
            "Velquist for additional assistance.",
        kCritical, "Attempt to Run Multiple Copies of " + title);
    Menu("mnuReportExit")->trigger();
}

bool frmMain::Load() {
    HandCrfMaker();
    StartUp();
    HideStage();
    SetWelcomeVisible(false);
    PlaceWindow();
    ShowSplash();
    HideStage();
    SetWelcomeVisible(true);
    setWindowTitle(Q(MainCaption()));
    SetCrfName(gCRFPath);
    EnableMenu("mnuReportSubmit", false);
    if (TheDesktop().AnotherCopyRuns()) {
        EndSecondCopy();
        return false;
    }
    Menu("mnuReportUtilitiesHQ")->setText(Q(HighQualityCaption()));
    RefreshMenus();
    return true;
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !InLongStep())
        RefreshMenus();
}

/// Form_QueryUnload and Form_Unload. A step that is writing to the CRF is not torn down.
void frmMain::closeEvent(QCloseEvent* event) {
    if (InLongStep() || !CommitOpenRows() || !CloseHelpers()) return event->ignore();
    SetWelcomeVisible(false);
    DropCrf();
    TheDesktop().EndProgram();
    event->accept();
}

void frmMain::Run(const std::function<void()>& command) {
    if (CommandAtWork() || InLongStep()) return;
    const bool done = Guarded(command);
    if (done)
        SetMenus();
    else
        RefreshMenus();
}

// --- What the engine shows -----------------------------------------------------------------

bool frmMain::InLongStep() const { return blocked_ || !txtCalcMsg_->isHidden(); }

void frmMain::EnableMain(bool enabled) {
    blocked_ = !enabled;
    fraWelcome_->setEnabled(enabled);
    SetMenus();
}

void frmMain::ShowCalcMsg(const std::string& text) {
    txtCalcMsg_->setText(Q(text));
    txtCalcMsg_->show();
    prgCalc_->show();
    txtCalcMsg_->repaint();
    RefreshTools();
}

void frmMain::HideCalcMsg() {
    txtCalcMsg_->hide();
    prgCalc_->hide();
    prgCalc_->setValue(0);
    RefreshTools();
}

void frmMain::ShowProgress(double part) {
    prgCalc_->setValue(static_cast<int>(std::clamp(part, 0.0, 1.0) * prgCalc_->maximum()));
}

/// A screen reader speaks the name of a label and not its text.
void frmMain::SetCrfName(const std::string& path) {
    lblCRFName_->setText(Q(path));
    lblCRFName_->setAccessibleName(
        Q(path.empty() ? "No Cost Report File" : "Open Cost Report File " + path));
}

void frmMain::ShowCrf(const std::string& path) {
    SetCrfName(path);
    lblCRFName_->show();
    imgVelquist_->show();
    SetWelcomeVisible(false);
}

void frmMain::ShowWelcome() {
    StopHelpText();
    SetCrfName("");
    SetWelcomeVisible(true);
    HideStage();
}

bool frmMain::WelcomeVisible() const { return welcome_; }

void frmMain::SetWelcomeVisible(bool visible) {
    welcome_ = visible;
    fraWelcome_->setVisible(visible);
    if (visible) cmdNew_->setFocus();
}

}  // namespace zolmara::ui
