#include "ui/main/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "print/SendPrtFile.h"
#include "store/session/Backups.h"
#include "store/session/Session.h"
#include "ui/main/Buttons.h"
#include "ui/main/Desktop.h"
#include "ui/main/FileRoads.h"
#include "ui/main/Guard.h"
#include "ui/main/Logo.h"
#include "ui/main/MainCommands.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/frmSplash.h"
#include "ui/overview/Overview.h"
#include "ui/tools/ToolsMenu.h"
#include "ui/tools/UndoRedo.h"
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
    setAcceptDrops(true);
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
    EndUndo();
    BackUpAtOpening(false);
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

/// The files that were open last, beside the welcome frame.
QWidget* frmMain::MakeRecent() {
    fraRecent_ = new QFrame;
    fraRecent_->setObjectName("fraRecent");
    fraRecent_->setFrameShape(QFrame::StyledPanel);
    auto* column = new QVBoxLayout(fraRecent_);
    auto* label = new QLabel("Re&cent files");
    lstRecent_ = new QListWidget;
    lstRecent_->setObjectName("lstRecent");
    lstRecent_->setAccessibleName("Recent files");
    lstRecent_->setTextElideMode(Qt::ElideMiddle);
    label->setBuddy(lstRecent_);
    column->addWidget(label);
    column->addWidget(lstRecent_);
    lstRecent_->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    fraRecent_->setMaximumWidth(fontMetrics().averageCharWidth() * 110);
    connect(lstRecent_, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        const std::string path = S(item->toolTip());
        Run([path] { OpenFile(path); });
    });
    return fraRecent_;
}

void frmMain::ShowRecent() {
    lstRecent_->clear();
    for (const std::string& path : RecentFiles()) {
        const QFileInfo file(Q(path));
        auto* item = new QListWidgetItem(file.fileName() + "  (" + file.path() + ")", lstRecent_);
        item->setToolTip(Q(path));
    }
    if (lstRecent_->count() > 0) lstRecent_->setCurrentRow(0);
    fraRecent_->setVisible(welcome_ && lstRecent_->count() > 0);
}

namespace {

QLabel* MakeName() {
    auto* name = new QLabel;
    name->setObjectName("lblCRFName");
    name->setWordWrap(true);
    name->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return name;
}

QLabel* MakeHelp() {
    auto* help = new QLabel(kHelpText);
    help->setObjectName("lblHelp");
    help->setWordWrap(true);
    help->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    // While the text scrolls in, it is taller than the window; the window stays as it is.
    help->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    return help;
}

QLineEdit* MakeCalcMsg() {
    auto* message = new QLineEdit;
    message->setObjectName("txtCalcMsg");
    message->setAccessibleName("Progress");
    message->setReadOnly(true);
    message->setFocusPolicy(Qt::NoFocus);
    return message;
}

QProgressBar* MakeProgress() {
    auto* bar = new QProgressBar;
    bar->setObjectName("prgCalc");
    bar->setAccessibleName("How far the step is");
    bar->setRange(0, 1000);
    bar->setFixedWidth(220);
    return bar;
}

}  // namespace

void frmMain::MakeWindow() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(24, 16, 24, 16);
    column->setSpacing(12);
    imgVelquist_ = new QLabel;
    imgVelquist_->setObjectName("imgVelquist");
    imgVelquist_->setAccessibleName("Velquist");
    imgVelquist_->setPixmap(LogoPixmap(40, devicePixelRatioF()));
    lblCRFName_ = MakeName();
    lblHelp_ = MakeHelp();
    txtCalcMsg_ = MakeCalcMsg();
    prgCalc_ = MakeProgress();
    lblDone_ = new QLabel;
    lblDone_->setObjectName("lblDone");
    lblDone_->setWordWrap(true);
    auto* progress = new QHBoxLayout;
    progress->addWidget(lblDone_, 1);
    progress->addWidget(txtCalcMsg_, 1);
    progress->addWidget(prgCalc_);
    auto* head = new QHBoxLayout;
    head->addWidget(imgVelquist_);
    head->addWidget(lblCRFName_, 1);
    overview_ = new Overview;
    column->addLayout(head);
    start_ = new QWidget;
    layStart_ = new QBoxLayout(QBoxLayout::TopToBottom, start_);
    layStart_->addStretch(1);
    layStart_->addWidget(MakeWelcome(), 0, Qt::AlignCenter);
    layStart_->addWidget(MakeRecent(), 4);
    layStart_->addStretch(1);
    column->addWidget(start_, 2);
    column->addWidget(overview_, 12);
    column->addWidget(lblHelp_, 1);
    column->addLayout(progress);
    setCentralWidget(page);
    txtCalcMsg_->hide();
    prgCalc_->hide();
    HideStage();
}

/// At the top left corner of the screen, at most as large as it is with the window's title. A
/// window that its layout made larger as it shows would lose its title above the screen's edge.
void frmMain::PlaceWindow() {
    layout()->activate();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    constexpr QSize kWanted(1440, 900);
    constexpr int kTitleBar = 32;
    resize(kWanted.boundedTo(screen.size() - QSize(0, kTitleBar)));
    move(screen.topLeft());
}

/// The recent files stand beside the welcome frame where there is the room for their names, else
/// below it.
void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    constexpr int kLettersOfName = 60;
    const bool beside = width() > fraWelcome_->sizeHint().width() +
                                      fontMetrics().averageCharWidth() * kLettersOfName;
    layStart_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layStart_->setAlignment(fraRecent_, beside ? Qt::AlignVCenter : Qt::Alignment());
}

void frmMain::HideStage() {
    lblHelp_->hide();
    lblCRFName_->hide();
    imgVelquist_->hide();
    overview_->hide();
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
    BackUpAtOpening(true);
    KeepUndo();
    HandCrfMaker();
    StartUp();
    HideStage();
    SetWelcomeVisible(false);
    PlaceWindow();
    ShowSplash();
    HideStage();
    SetWelcomeVisible(true);
    PlaceWindow();
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
    LookAtStatement();
    TheDesktop().EndProgram();
    event->accept();
}

// --- Files dropped on the window -----------------------------------------------------------

namespace {

/// The files, where they are all of this machine; none for anything else.
std::vector<std::string> DroppedFiles(const QMimeData& data) {
    std::vector<std::string> files;
    for (const QUrl& url : data.urls()) files.push_back(S(url.toLocalFile()));
    if (std::ranges::find(files, std::string()) != files.end()) return {};
    return files;
}

}  // namespace

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (!InLongStep() && !DroppedFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

/// What it is dropped from waits for the end of the drop: a question comes behind it.
void frmMain::dropEvent(QDropEvent* event) {
    const std::vector<std::string> files = DroppedFiles(*event->mimeData());
    if (files.empty()) return;
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, files] { Run([files] { TakeFiles(files); }); });
}

void frmMain::Run(const std::function<void()>& command) {
    if (CommandAtWork() || InLongStep()) return;
    ShowDone("");
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
    lblDone_->hide();
    txtCalcMsg_->show();
    prgCalc_->show();
    txtCalcMsg_->repaint();
    RefreshTools();
}

void frmMain::HideCalcMsg() {
    txtCalcMsg_->hide();
    prgCalc_->hide();
    prgCalc_->setValue(0);
    lblDone_->show();
    RefreshTools();
}

void frmMain::ShowDone(const std::string& text) {
    lblDone_->setText(Q(text));
    lblDone_->setAccessibleName(Q(text));
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
    overview_->show();
    SetWelcomeVisible(false);
    overview_->setFocus();
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
    start_->setVisible(visible);
    fraWelcome_->setVisible(visible);
    ShowRecent();
    if (visible) cmdNew_->setFocus();
}

}  // namespace zolmara::ui
