#include "ui/main/OpenForms.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMainWindow>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "core/Dialogs.h"
#include "core/Status.h"
#include "store/session/Session.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

struct OpenForm {
    QPointer<QWidget> Window;
    std::function<void()> SetGrd;
};

std::vector<OpenForm> forms;
std::function<void()> formsChanged;

void TellChange() {
    if (formsChanged) formsChanged();
}

/// Sees windows come and go.
class FormWatcher : public QObject {
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Show || event->type() == QEvent::Hide) TellChange();
        return false;
    }
};

FormWatcher& Watcher() {
    static FormWatcher watcher;
    return watcher;
}

bool IsGone(const OpenForm& form) { return form.Window.isNull(); }

bool Counts(const QWidget* form, bool keepCostCenterForms) {
    const QString name = form->objectName().toUpper();
    if (!IsWorksheetForm(form)) return false;
    return !keepCostCenterForms || (name != "FRMEDITCCS" && name != "FRMVIEWCCS");
}

/// The Item of a worksheet window stands behind "Edit Worksheet " in its caption.
constexpr qsizetype kItemInCaption = 15;
constexpr qsizetype kItemInName = 7;

constexpr const char* kKind = "FormKind";

bool IsOfKind(const QWidget* form, FormKind kind) {
    const QVariant told = form->property(kKind);
    return told.isValid() && told.toInt() == static_cast<int>(kind);
}

}  // namespace

void AddForm(QWidget* form, std::function<void()> setGrd) {
    std::erase_if(forms, IsGone);
    forms.push_back({form, std::move(setGrd)});
    form->installEventFilter(&Watcher());
}

std::vector<QWidget*> OpenForms() {
    std::vector<QWidget*> open;
    for (const OpenForm& form : forms)
        if (form.Window && !form.Window->isHidden()) open.push_back(form.Window);
    return open;
}

QWidget* FindForm(const std::string& name) {
    for (QWidget* form : OpenForms())
        if (form->objectName().compare(Q(name), Qt::CaseInsensitive) == 0) return form;
    return nullptr;
}

bool FormIsOpen(const std::string& name) {
    if (FindForm(name)) return true;
    const QString item = Q(name).mid(kItemInName);
    return !item.isEmpty() && std::ranges::any_of(OpenForms(), [&](const QWidget* form) {
        return form->windowTitle().mid(kItemInCaption).compare(item, Qt::CaseInsensitive) == 0;
    });
}

void SetGrd(QWidget* form) {
    for (std::size_t i = 0; i < forms.size(); ++i)
        if (forms[i].Window == form && forms[i].SetGrd) return forms[i].SetGrd();
}

bool UnloadForm(QWidget* form) {
    const QPointer<QWidget> window = form;
    return form->close() || window.isNull();
}

void UnloadFormsLike(const QString& prefix) {
    const std::vector<QWidget*> open = OpenForms();
    for (auto form = open.rbegin(); form != open.rend(); ++form)
        if ((*form)->objectName().startsWith(prefix, Qt::CaseInsensitive)) UnloadForm(*form);
}

bool IsWorksheetForm(const QWidget* form) {
    const QString name = form->objectName().toUpper();
    return name.startsWith("FRMVIEW") || name.startsWith("FRMEDIT");
}

namespace {

int CloseSheets(bool keepCostCenterForms) {
    std::vector<QWidget*> open = OpenForms();
    std::erase_if(open, [&](const QWidget* form) { return !Counts(form, keepCostCenterForms); });
    if (open.empty()) return 0;
    const int answer = TheDialogs().MsgBox(
        "This process requires all forms to be closed.  Pressing OK will close all open forms.",
        kOkCancel + kQuestion + kDefaultButton2, "Close form " + S(open.front()->objectName()));
    if (answer != kOk) return 1;
    QStringList failed;
    for (auto form = open.rbegin(); form != open.rend(); ++form) {
        const QString name = (*form)->objectName();
        if (!UnloadForm(*form)) failed << name;
        TheStatus().DoEvents();
    }
    if (failed.isEmpty()) return 0;
    TheDialogs().MsgBox("Unable to close forms: " + S(failed.join(", ")), kCritical,
                        std::string(kProductName));
    return 2;
}

}  // namespace

bool CloseHelpers() {
    const std::vector<QWidget*> open = OpenForms();
    return std::ranges::all_of(open.rbegin(), open.rend(), [](QWidget* form) {
        return !IsOfKind(form, FormKind::Dialog) || UnloadForm(form);
    });
}

int CloseWorksheetForms(bool keepCostCenterForms) {
    const int answer = CloseSheets(keepCostCenterForms);
    if (answer != 0) return answer;
    return keepCostCenterForms || CloseHelpers() ? 0 : 1;
}

void OnFormsChanged(std::function<void()> handler) { formsChanged = std::move(handler); }

// --- Setting up and showing ----------------------------------------------------------------

namespace {

/// The toolkit tells a screen reader nothing of a plain widget that is a window.
QAccessibleInterface* AccessibleForm(const QString& /*className*/, QObject* object) {
    auto* const form = qobject_cast<QWidget*>(object);
    if (!form || !form->isWindow() || !form->property(kKind).isValid()) return nullptr;
    return new QAccessibleWidget(
        form, IsOfKind(form, FormKind::Window) ? QAccessible::Window : QAccessible::Dialog);
}

QWidget* MainForm() { return forms.empty() ? nullptr : forms.front().Window.data(); }

}  // namespace

void SetUpForm(QWidget* form, const char* name, const std::string& caption, FormKind kind) {
    static const bool installed = [] {
        QAccessible::installFactory(AccessibleForm);
        return true;
    }();
    static_cast<void>(installed);
    form->setProperty(kKind, static_cast<int>(kind));
    form->setObjectName(name);
    form->setWindowTitle(Q(caption));
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->setWindowFlags(kind == FormKind::Window ? Qt::Window : Qt::Dialog);
    if (kind == FormKind::Modal) form->setWindowModality(Qt::ApplicationModal);
    form->setWindowIcon(QApplication::windowIcon());
}

namespace {

bool BelongsToMain(const QWidget* form) {
    return IsOfKind(form, FormKind::Dialog) || IsOfKind(form, FormKind::Modal);
}

/// A dialog goes down and comes up with the main window.
void GiveOwner(QWidget* form) {
    QWidget* const main = MainForm();
    if (!main || main == form || !main->isVisible() || !BelongsToMain(form)) return;
    form->setParent(main, form->windowFlags());
}

/// Where the main window's menus end, on the screen.
int MenusEnd(const QWidget* over) {
    const auto* const main = qobject_cast<const QMainWindow*>(over);
    const QWidget* const menus = main ? main->menuWidget() : nullptr;
    return menus ? menus->mapToGlobal(QPoint(0, menus->height())).y() : 0;
}

constexpr int kTitleBar = 32;    ///< what the desktop puts above a window, about
constexpr int kLeastRoom = 240;  ///< a window is not squeezed into less

/// A window of its own begins below the menus, and gives up height for it.
void LeaveMenus(QRect& place, const QRect& area, const QWidget* over) {
    const int top = MenusEnd(over) + kTitleBar;
    if (place.top() >= top || area.bottom() - top < kLeastRoom) return;
    place.moveTop(top);
    place.setBottom(std::min(place.bottom(), area.bottom()));
}

/// In the middle of the main window, wholly on the screen.
void Place(QWidget* form) {
    const QWidget* const over = MainForm();
    const QScreen* const screen = over ? over->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    if (!form->testAttribute(Qt::WA_Resized)) form->adjustSize();
    form->resize(form->size().boundedTo(area.size()));
    QRect place = form->rect();
    const bool shown = over && over->isVisible() && !over->isMinimized();
    place.moveCenter(shown ? over->geometry().center() : area.center());
    place.moveLeft(std::clamp(place.left(), area.left(), area.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), area.top(), area.bottom() + 1 - place.height()));
    if (shown && !BelongsToMain(form)) LeaveMenus(place, area, over);
    form->setGeometry(place);
}

}  // namespace

void ShowForm(QWidget* form) {
    if (form->isHidden()) {
        GiveOwner(form);
        Place(form);
    }
    form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
    form->show();
    form->raise();
    form->activateWindow();
}

bool ShowOpenForm(const std::string& name) {
    QWidget* const form = FindForm(name);
    if (form) ShowForm(form);
    return form;
}

void FitScreen(QWidget* dialog, const QSize& wanted) {
    const QWidget* const owner = dialog->parentWidget();
    const QScreen* const screen = owner ? owner->screen() : QGuiApplication::primaryScreen();
    dialog->resize(wanted.boundedTo(screen->availableSize() - QSize(0, kTitleBar)));
}

namespace {

QPointer<QWidget> workedFor;

/// A box over a minimized window would not be seen.
QWidget* InSight(QWidget* form) {
    if (form->isMinimized()) form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
    return form;
}

}  // namespace

DialogsOver::DialogsOver(QWidget* form) : former_(workedFor) { workedFor = form; }
DialogsOver::~DialogsOver() { workedFor = former_; }

QWidget* DialogOwner() {
    for (QWidget* const owner :
         {QApplication::activeModalWidget(), workedFor.data(), QApplication::activeWindow()})
        if (owner && owner->isVisible()) return InSight(owner);
    const std::vector<QWidget*> open = OpenForms();
    return open.empty() || open.back()->windowType() == Qt::SplashScreen ? nullptr : open.back();
}

}  // namespace zolmara::ui
