// The help text of the main window, which scrolls in once a CRF has been opened or made. It stands
// so many lines down as it begins with carriage returns.

#include <QCoreApplication>
#include <QLabel>
#include <QTimer>

#include "ui/main/frmMain.h"

namespace zolmara::ui {
namespace {

constexpr int kLinesDown = 14;
constexpr int kTick = 100;  ///< milliseconds
constexpr const char* kTag = "Tag";

void EndAnimation(QTimer* timer) {
    timer->setProperty(kTag, "");
    timer->stop();
}

}  // namespace

void frmMain::StartHelpText() {
    tmrMain_->setProperty(kTag, "");
    tmrMain_->start(kTick);
}

void frmMain::StopHelpText() { tmrMain_->setProperty(kTag, "Stopped"); }

void frmMain::TickHelpText() {
    const QString tag = tmrMain_->property(kTag).toString();
    QString text = lblHelp_->text();
    if (tag == "Running") {
        if (text.startsWith('\n')) {
            lblHelp_->setText(text.mid(1));
            lblHelp_->show();
        } else {
            EndAnimation(tmrMain_);
        }
    } else if (tag == "Stopped") {
        while (text.startsWith('\n')) text.remove(0, 1);
        lblHelp_->setText(text);
        EndAnimation(tmrMain_);
    } else {
        tmrMain_->setProperty(kTag, "Running");
        lblHelp_->setText(QString(kLinesDown, '\n') + text);
    }
}

}  // namespace zolmara::ui
