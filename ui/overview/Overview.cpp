#include "ui/overview/Overview.h"

#include "core/Globals.h"
#include "store/session/Session.h"
#include "ui/main/FileRoads.h"
#include "ui/main/StatementWatch.h"
#include "ui/overview/Navigator.h"
#include "ui/overview/StatementNotes.h"
#include "ui/overview/SummaryPanel.h"

namespace zolmara::ui {

Overview::Overview() : navigator_(new Navigator), summary_(new SummaryPanel) {
    setObjectName("overview");
    setChildrenCollapsible(false);
    addWidget(navigator_);
    addWidget(summary_);
    setFocusProxy(navigator_);
    setStretchFactor(0, 1);
    setStretchFactor(1, 2);
    const int letter = fontMetrics().averageCharWidth();
    setSizes({letter * 56, letter * 106});
    navigator_->setMinimumWidth(letter * 34);
    WatchStatement(this, [this] { Follow(); });
}

void Overview::Follow() {
    FollowNotes();
    if (CrfIsOpen()) RememberFile(gCRFPath);
    stale_ = true;
    if (!CrfIsOpen()) {
        navigator_->Clear();
        summary_->Clear();
    } else if (isVisible()) {
        stale_ = false;
        navigator_->Refresh();
        summary_->Refresh();
    }
}

/// What is not looked at is not read.
void Overview::showEvent(QShowEvent* event) {
    QSplitter::showEvent(event);
    if (stale_ && CrfIsOpen()) Follow();
}

}  // namespace zolmara::ui
