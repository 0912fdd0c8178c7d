#pragma once

// The buttons of the program's windows.

#include <QPushButton>
#include <functional>
#include <initializer_list>

class QBoxLayout;
class QWidget;

namespace zolmara::ui {

/// A button by its control name and caption; the action runs guarded.
QPushButton* MakeButton(const char* name, const QString& caption, std::function<void()> action);

/// The strip picButtons with these buttons, at the right end of it.
QWidget* MakeButtonStrip(std::initializer_list<QPushButton*> buttons);

/// Escape does what a button does.
void PressOnEscape(QWidget* form, QPushButton* button);
/// Return presses a button that has the focus.
void TakesReturn(QPushButton* button);
/// Return in any field does what a button does; on another button it presses that one.
void PressOnReturn(QWidget* form, QPushButton* button);

}  // namespace zolmara::ui
