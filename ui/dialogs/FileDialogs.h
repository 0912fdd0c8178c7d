#pragma once

// The file dialogs of the platform, set up as the engine tells them.

#include <QStringList>
#include <optional>
#include <string>

#include "core/Dialogs.h"

namespace zolmara::ui {

/// Shows the dialog. Nothing when the user cancelled.
std::optional<std::string> ChooseFileFor(const FileDialog& dialog);

/// The name filters of a dialog, each "Caption (patterns)". A pattern in the file name that no
/// filter has stands first: it is what the dialog begins with.
QStringList NameFilters(const FileDialog& dialog);
/// The filter that the dialog begins with.
QString FirstFilter(const FileDialog& dialog);

}  // namespace zolmara::ui
