#pragma once

// The windows that are open, in the order in which they were opened; the main window first. A
// window is known by its objectName, which is the form's name.

#include <QString>
#include <functional>
#include <string>
#include <vector>

class QWidget;

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

/// Asks whether the worksheet windows may go and closes them: 0 none stood in the way and all are
/// closed, 1 the user cancelled, 2 one would not close.
int CloseWorksheetForms(bool keepCostCenterForms);

/// What runs whenever a window has been opened or closed.
void OnFormsChanged(std::function<void()> handler);

/// A window of the program: named, titled, on its own. A modal one bars the others.
void SetUpForm(QWidget* form, const char* name, const std::string& caption, bool modal);

/// Shows a window that SetUpForm has set up, in front.
void ShowForm(QWidget* form);

}  // namespace zolmara::ui
