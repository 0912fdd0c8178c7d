#include "ui/main/StatementWatch.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <string>
#include <vector>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/QtHost.h"

namespace zolmara::ui {
namespace {

struct Watcher {
    QPointer<QObject> Who;
    std::function<void()> Changed;
};
std::vector<Watcher> watchers;

/// What the statement was when it was looked at last.
struct Stamp {
    std::string Path;
    const void* File = nullptr;
    std::int64_t Commits = 0;

    bool operator==(const Stamp&) const = default;
};
Stamp seen;
bool owed = false;  ///< there was something to tell, and no time for it yet

Stamp Now() {
    if (!CrfIsOpen()) return {.Path = gCRFPath};
    return {gCRFPath, &gDB.impl(), gDB.CommitCount()};
}

bool NobodyWatches() {
    std::erase_if(watchers, [](const Watcher& watcher) { return watcher.Who.isNull(); });
    return watchers.empty();
}

void Tell() {
    seen = Now();
    owed = false;
    if (NobodyWatches()) return;
    const std::vector<Watcher> all = watchers;
    for (const Watcher& watcher : all)
        if (watcher.Who) watcher.Changed();
}

void TellWhenDone() {
    // The host goes after the last window, and this may come later still.
    if (NobodyWatches()) return;
    // The end of the step looks again.
    if (TheQtHost().InLongStep() || (CrfIsOpen() && gDB.InBatch()) || !owed) return;
    Tell();
}

/// Lives with the application.
QTimer& Timer() {
    static QTimer* timer = nullptr;
    if (!timer) {
        timer = new QTimer(qApp);
        timer->setSingleShot(true);
        timer->callOnTimeout(TellWhenDone);
        QObject::connect(timer, &QObject::destroyed, [] { timer = nullptr; });
    }
    return *timer;
}

}  // namespace

void WatchStatement(QObject* watcher, std::function<void()> changed) {
    watchers.push_back({watcher, std::move(changed)});
}

void CloseWithStatement(QWidget* window) {
    WatchStatement(window, [window, path = gCRFPath] {
        if (!CrfIsOpen() || gCRFPath != path) window->close();
    });
}

void TellOfStatement() {
    owed = true;
    LookAtStatement();
}

void LookAtStatement() {
    owed = owed || Now() != seen;
    if (!owed) return;
    if (CrfIsOpen()) return Timer().start(0);
    Timer().stop();
    Tell();
}

}  // namespace zolmara::ui
