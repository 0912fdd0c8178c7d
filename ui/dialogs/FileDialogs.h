#pragma once

// The file dialogs of the platform, set up as the engine tells them.

#include <QStringList>
#include <optional>
#include <string>

#include "core/Dialogs.h"

namespace zolmara::ui {

/// Shows the dialog. Nothing when the user cancelled.
std::optional<std::string> ChooseFileFor(const FileDialog& dialog);

/// The name that a choice means: a name to save under gets the dialog's extension where it has
/// none.
QString WholeName(const QString& chosen, const FileDialog& dialog);
/// Asks about a file that stands under a whole name, where the dialog is to warn. False to go on
/// choosing.
bool MayBeTaken(const std::string& path, const FileDialog& dialog);

/// The name filters of a dialog, each "Caption (patterns)". A pattern in the file name that no
/// filter has stands first: it is what the dialog begins with.
QStringList NameFilters(const FileDialog& dialog);
/// The filter that the dialog begins with.
QString FirstFilter(const FileDialog& dialog);

}  // namespace zolmara::ui
