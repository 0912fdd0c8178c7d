#pragma once

// The windows that are open, in the order in which they were opened; the main window first. A
// window is known by its objectName, which is the form's name.

#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QSize;

namespace zolmara::ui {

/// Takes a window into the list. `setGrd` shows its data afresh. A window that is closed leaves
/// the list by itself.
void AddForm(QWidget* form, std::function<void()> setGrd = {});

/// The open windows, first to last.
std::vector<QWidget*> OpenForms();

/// The open window of this name; none without one.
QWidget* FindForm(const std::string& name);
/// True if an open form has this name, or is of the worksheet that the name ends in.
bool FormIsOpen(const std::string& name);

/// Shows a form's data afresh, where it has some.
void SetGrd(QWidget* form);

/// Closes a window. False when it would not close.
bool UnloadForm(QWidget* form);
/// Closes every window whose name begins like this, in any case, from the last to the first.
void UnloadFormsLike(const QString& prefix);

/// True for frmEdit... and frmView....
bool IsWorksheetForm(const QWidget* form);

/// Asks whether the worksheet windows may go and closes them, and the helper windows with them,
/// each with its own question where it holds changes: 0 none stood in the way and all are closed,
/// 1 the user cancelled, 2 one would not close.
int CloseWorksheetForms(bool keepCostCenterForms);

/// Closes the helper windows that leave the main window usable. What they show is of the open CRF;
/// one with changes asks first. False when one stays.
bool CloseHelpers();

/// What runs whenever a window has been opened or closed.
void OnFormsChanged(std::function<void()> handler);

/// How a form stands among the others.
enum class FormKind {
    Window,  ///< on its own, beside the main window
    Dialog,  ///< belongs to the main window, stays above it, and leaves it usable
    Modal,   ///< belongs to the main window and bars all others
};

/// A form of the program: named, titled, and known to a screen reader as what it is.
void SetUpForm(QWidget* form, const char* name, const std::string& caption, FormKind kind);
inline void SetUpForm(QWidget* form, const char* name, const std::string& caption, bool modal) {
    SetUpForm(form, name, caption, modal ? FormKind::Modal : FormKind::Window);
}

/// Shows a form that SetUpForm has set up, in front. A window on its own leaves the main window's
/// menus in sight where the screen has the room.
void ShowForm(QWidget* form);

/// Shows the open form of this name in front. False where there is none.
bool ShowOpenForm(const std::string& name);

/// Gives a dialog this size, or what the screen has room for beside the desktop's title bar.
void FitScreen(QWidget* dialog, const QSize& wanted);

/// What a box or dialog belongs to: a modal window, else the form that a step works for, else the
/// one that the user looks at. None where none shows.
QWidget* DialogOwner();

/// While it lives, a step works for this form, whichever window is active: what the step has to
/// tell stands over the form.
class DialogsOver {
public:
    explicit DialogsOver(QWidget* form);
    ~DialogsOver();
    DialogsOver(const DialogsOver&) = delete;
    DialogsOver& operator=(const DialogsOver&) = delete;

private:
    QPointer<QWidget> former_;
};

}  // namespace zolmara::ui
