#include "ui/main/OpenForms.h"

#include <QApplication>
#include <QEvent>
#include <QGuiApplication>
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

int CloseWorksheetForms(bool keepCostCenterForms) {
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

void OnFormsChanged(std::function<void()> handler) { formsChanged = std::move(handler); }

void SetUpForm(QWidget* form, const char* name, const std::string& caption, bool modal) {
    form->setObjectName(name);
    form->setWindowTitle(Q(caption));
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->setWindowFlag(Qt::Window);
    if (modal) form->setWindowModality(Qt::ApplicationModal);
    form->setWindowIcon(QApplication::windowIcon());
}

namespace {

/// In the middle of the main window, wholly on the screen.
void Place(QWidget* form) {
    const QWidget* const over = forms.empty() ? nullptr : forms.front().Window.data();
    const QScreen* const screen = over ? over->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    if (!form->testAttribute(Qt::WA_Resized)) form->adjustSize();
    form->resize(form->size().boundedTo(area.size()));
    QRect place = form->rect();
    place.moveCenter(over && over->isVisible() ? over->geometry().center() : area.center());
    place.moveLeft(std::clamp(place.left(), area.left(), area.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), area.top(), area.bottom() + 1 - place.height()));
    form->move(place.topLeft());
}

}  // namespace

void ShowForm(QWidget* form) {
    if (form->isHidden()) Place(form);
    form->show();
    form->raise();
    form->activateWindow();
}

}  // namespace zolmara::ui
