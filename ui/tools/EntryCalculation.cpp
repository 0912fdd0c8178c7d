#include "ui/tools/EntryCalculation.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include "calc/Calc_All.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "store/PlainWords.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "ui/main/Guard.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/overview/StatementNotes.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui::EntryCalculation {
namespace {

constexpr const char* kSection = "Windows";
constexpr const char* kKey = "CalculateAfterEntry";
constexpr int kMoment = 20;  ///< milliseconds
QString note;
qint64 lastRun = 0;

void Run();

/// Lives with the application, so that no run comes after its end.
QTimer& Timer() {
    static QTimer* timer = nullptr;
    if (!timer) {
        timer = new QTimer(qApp);
        timer->setObjectName("tmrEntryCalculation");
        timer->setSingleShot(true);
        timer->callOnTimeout(Run);
        QObject::connect(timer, &QObject::destroyed, [] { timer = nullptr; });
    }
    return *timer;
}

/// The messages of the last run: those kept in the log, and those that would have been boxes.
int LoggedMessages() {
    return static_cast<int>(
        NumOr(gDB.Scalar("SELECT Count(*) AS Cnt FROM Log WHERE LogType = 'C';")));
}

qint64 Timed(const std::function<void()>& run) {
    QElapsedTimer clock;
    clock.start();
    run();
    return clock.elapsed();
}

void Calculate() {
    int boxes = 0;
    lastRun = ThePace().TimeOf([&] {
        const QuietHost quiet(boxes);
        Calc_Changed();
    });
    NoteCalculation(false);
    const int messages = boxes + LoggedMessages();
    note = messages == 0   ? QString("Calculated")
           : messages == 1 ? QString("Calculated, 1 message")
                           : QString("Calculated, %1 messages").arg(messages);
}

void Run() {
    if (!IsOn() || !CrfIsOpen()) return;
    // A box or a long step stands in the way: later.
    if (TheQtHost().InLongStep() || QApplication::activeModalWidget())
        return Timer().start(ThePace().Pause);
    // A command that lets the windows breathe may have tables in the making.
    if (CommandAtWork()) return Timer().start(kMoment);
    try {
        // The figures come and go with the entry that brought them.
        TheActs().RunJoined(Calculate);
    } catch (const std::exception& error) {
        note = "Not calculated: " + Q(PlainWords(error));
    }
    for (frmWorksheet* window : WorksheetWindows()) window->SetGrd();
}

}  // namespace

Pace& ThePace() {
    static Pace pace{.TimeOf = Timed};
    return pace;
}

bool IsOn() {
    return TheMachine().GetSetting(std::string(kProductName), kSection, kKey, "False") == "True";
}

void Toggle() {
    const bool on = !IsOn();
    TheMachine().SaveSetting(std::string(kProductName), kSection, kKey, on ? "True" : "False");
    note.clear();
    lastRun = 0;
    if (on && CrfIsOpen()) RowSaved();
}

void RowSaved() {
    NoteEntry();
    LookAtStatement();
    if (IsOn()) Timer().start(lastRun > ThePace().Felt ? ThePace().Pause : 0);
}

void Typed() {
    if (lastRun > ThePace().Felt && IsDue()) Timer().start(ThePace().Pause);
}

QString Note() { return IsOn() ? note : QString(); }

bool IsDue() { return Timer().isActive(); }

}  // namespace zolmara::ui::EntryCalculation
