#include "ui/tools/UndoRedo.h"

#include <QApplication>
#include <QTimer>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Acts.h"
#include "ui/main/Done.h"
#include "ui/main/Guard.h"
#include "ui/main/QtHost.h"
#include "ui/tools/Tools.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

constexpr int kPause = 300;  ///< milliseconds

/// An ampersand in a name is none of the menu's.
std::string Plain(const std::string& text) { return Replace(text, "&", "&&"); }

/// A box stands in nobody's way: it comes when nothing else is at work.
void TellNotice() {
    if (!TheActs().HasNotice()) return;
    if (CommandAtWork() || TheQtHost().InLongStep() || QApplication::activeModalWidget())
        return QTimer::singleShot(kPause, qApp, TellNotice);
    TheDialogs().MsgBox(TheActs().TakeNotice(), kInformation, "Undo");
}

void FollowActs() {
    RefreshTools();
    if (TheActs().HasNotice()) QTimer::singleShot(0, qApp, TellNotice);
}

bool AnyRowIsOpen() {
    for (const frmWorksheet* window : WorksheetWindows())
        if (window->HasOpenRow()) return true;
    return false;
}

}  // namespace

void KeepUndo() {
    TheActs().Keep(true);
    TheActs().OnChange(FollowActs);
}

void EndUndo() {
    TheActs().OnChange({});
    TheActs().Keep(false);
    TheActs().TakeNotice();
}

bool CanUndo() { return TheActs().CanUndo() || AnyRowIsOpen(); }
bool CanRedo() { return TheActs().CanRedo(); }

void Undo() {
    if (!CommitOpenRows() || !TheActs().CanUndo()) return;
    const std::string name = TheActs().NameOfUndo();
    TheActs().Undo();
    TellDone("Undone: " + name);
}

void Redo() {
    if (!CommitOpenRows() || !TheActs().CanRedo()) return;
    const std::string name = TheActs().NameOfRedo();
    TheActs().Redo();
    TellDone("Done again: " + name);
}

std::string UndoCaption() {
    if (TheActs().CanUndo()) return "&Undo " + Plain(TheActs().NameOfUndo());
    const std::string& why = TheActs().WhyEmpty();
    return why.empty() ? "&Undo" : "&Undo (" + Plain(why) + ")";
}

std::string RedoCaption() {
    return TheActs().CanRedo() ? "&Redo " + Plain(TheActs().NameOfRedo()) : "&Redo";
}

}  // namespace zolmara::ui
