#pragma once

// The single way to show a worksheet.

#include <functional>
#include <optional>
#include <string>

#include "core/Currency.h"

class QSessionManager;
class QWidget;

namespace zolmara::ui {

/// Shows a worksheet in the mode "edit" or "view": the window that is open comes to the front
/// with fresh data, else one is made. With a line, that line stands current; with a column, a
/// field's name or a column number of the form, that cell. What has no editor is viewed.
void OpenWorksheet(const std::string& mode, const std::string& item,
                   std::optional<Currency> line = std::nullopt, const std::string& column = "");

/// The open window of a mode and Item; none without one.
QWidget* FindOpenForm(const std::string& mode, const std::string& item);

/// Makes the window of a mode and Item and shows it. None for an unknown Item, which has been
/// told, and for a form that may not open now.
QWidget* CreateWorksheetForm(const std::string& mode, const std::string& item);

/// SetGrd on the open form of this mode and Item, errors passed by. In the mode "view" the
/// submission goes off: changed data must pass the edit checks again.
void RefreshWorksheetForm(const std::string& mode, const std::string& item);

/// What OpenWorksheet calls; tests put a record of their own in its place.
extern std::function<void(const std::string& mode, const std::string& item,
                          std::optional<Currency> line, const std::string& column)>
    gShowWorksheet;

/// Restores a window that is minimized, and makes it the active one.
void BringForward(QWidget& form);

/// Stores the rows that are being keyed in any window, ahead of the program's end. True when all
/// are stored, or the user lets what was refused go.
bool CommitOpenRows();

/// The same when the desktop's session ends. What was refused asks, where the session lets the
/// program ask. False where the user holds the end up.
bool SessionMayEnd(bool mayAsk);
/// The answer to a desktop that wants to end its session.
void CommitBeforeSessionEnd(QSessionManager& session);

}  // namespace zolmara::ui
