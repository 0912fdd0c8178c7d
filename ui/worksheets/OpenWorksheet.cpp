#include "ui/worksheets/OpenWorksheet.h"

#include <fmt/format.h>

#include <QPointer>
#include <QSessionManager>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "forms/CellAddress.h"
#include "store/session/Session.h"
#include "ui/main/OpenForms.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/WindowPlace.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

constexpr qsizetype kModeInCaption = 4;
constexpr qsizetype kItemInCaption = 15;
constexpr qsizetype kItemInName = 7;

bool Same(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

bool Matches(const QWidget& form, const QString& mode, const QString& item) {
    const QString caption = form.windowTitle();
    const QString name = form.objectName();
    if (Same(name, item)) return true;
    return IsWorksheetForm(&form) && Same(caption.left(kModeInCaption), mode) &&
           (Same(caption.mid(kItemInCaption), item) || Same(name.mid(kItemInName), item));
}

/// What has no editor is viewed.
std::string ModeThatIs(const std::string& mode, const std::string& item) {
    const auto wanted = ModeNamed(mode);
    return wanted == FormMode::Edit && !HasForm(FormMode::Edit, item) &&
                   HasForm(FormMode::View, item)
               ? "view"
               : mode;
}

std::string FieldNamed(const frmWorksheet& window, const std::string& column) {
    if (column.empty()) return {};
    return FieldOfColumn(window.Form().Table, column).value_or("");
}

void ShowWorksheet(const std::string& asked, const std::string& item, std::optional<Currency> line,
                   const std::string& column) {
    const std::string mode = ModeThatIs(asked, item);
    QPointer<QWidget> form = FindOpenForm(mode, item);
    if (form) {
        BringForward(*form);
        SetGrd(form);
    } else {
        form = CreateWorksheetForm(mode, item);
    }
    if (!form) return;
    KeepOnScreen(*form);
    TheStatus().DoEvents();
    auto* window = dynamic_cast<frmWorksheet*>(form.data());
    if (window && line) window->GoToLine(*line, FieldNamed(*window, column));
}

}  // namespace

std::function<void(const std::string&, const std::string&, std::optional<Currency>,
                   const std::string&)>
    gShowWorksheet = ShowWorksheet;

void OpenWorksheet(const std::string& mode, const std::string& item, std::optional<Currency> line,
                   const std::string& column) {
    gShowWorksheet(mode, item, line, column);
}

QWidget* FindOpenForm(const std::string& mode, const std::string& item) {
    const std::vector<QWidget*> open = OpenForms();
    for (auto form = open.rbegin(); form != open.rend(); ++form)
        if (Matches(**form, Q(mode), Q(item))) return *form;
    return nullptr;
}

QWidget* CreateWorksheetForm(const std::string& mode, const std::string& item) {
    const auto wanted = ModeNamed(mode);
    auto form = wanted ? DescribeForm(*wanted, item) : std::nullopt;
    if (!form) {
        TheDialogs().MsgBox(UnknownWorksheetText(mode, item), kCritical, std::string(kProductName));
        return nullptr;
    }
    if (!FormMayOpen(*form)) return nullptr;
    auto* window = new frmWorksheet;
    try {
        window->FormSetup(std::move(*form));
    } catch (...) {
        delete window;
        throw;
    }
    PlaceWindow(*window);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void RefreshWorksheetForm(const std::string& mode, const std::string& item) {
    const QString wanted = Q(mode);
    for (QWidget* form : OpenForms())
        if (IsWorksheetForm(form) && Matches(*form, wanted, Q(item))) SetGrd(form);
    if (SameText(mode, "view")) TheWindows().EnableMenu("mnuReportSubmit", false);
}

void BringForward(QWidget& form) {
    form.setWindowState(form.windowState() & ~Qt::WindowMinimized);
    form.show();
    form.raise();
    form.activateWindow();
}

bool CommitOpenRows() {
    for (frmWorksheet* window : WorksheetWindows()) {
        if (!window->HasOpenRow() || window->CommitGrid()) continue;
        const int answer = TheDialogs().MsgBox(
            fmt::format("A row of \"{}\" has not been stored.  Leave it and lose what was keyed?",
                        S(window->windowTitle())),
            kYesNo + kExclamation + kDefaultButton2, std::string(kProductName));
        if (answer != kYes) {
            BringForward(*window);
            return false;
        }
        window->GiveUp();
    }
    return true;
}

bool SessionMayEnd(bool mayAsk) {
    if (mayAsk) return CommitOpenRows();
    int refused = 0;
    const QuietHost quiet(refused);
    for (frmWorksheet* window : WorksheetWindows())
        if (window->HasOpenRow()) window->CommitGrid();
    return true;
}

void CommitBeforeSessionEnd(QSessionManager& session) {
    const bool mayAsk = session.allowsInteraction();
    if (!SessionMayEnd(mayAsk)) session.cancel();
    if (mayAsk) session.release();
}

}  // namespace zolmara::ui
