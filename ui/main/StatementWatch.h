#pragma once

// Tells what shows figures of the statement, beside the forms, that they may be others now.

#include <functional>

class QObject;
class QWidget;

namespace zolmara::ui {

/// From here on `changed` runs whenever the open CRF was written to, another one was opened, or
/// it was closed; as long as the watcher lives. After a close it runs at once, else when the
/// command at work is done.
void WatchStatement(QObject* watcher, std::function<void()> changed);

/// The window is of the CRF that is open now: it closes with it.
void CloseWithStatement(QWidget* window);

/// What is told of the statement is another, though the CRF may be as it was.
void TellOfStatement();

/// Looks whether there is something to tell. The main window asks after each command, a worksheet
/// after each row that it has stored.
void LookAtStatement();

}  // namespace zolmara::ui
