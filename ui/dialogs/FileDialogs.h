#pragma once

// The file dialogs of the platform, set up as the engine tells them.

#include <QStringList>
#include <optional>
#include <string>

#include "core/Dialogs.h"

namespace zolmara::ui {

/// Shows the dialog. Nothing when the user cancelled.
std::optional<std::string> ChooseFileFor(const FileDialog& dialog);

/// The extension of the kind of file that was chosen among the name filters; the dialog's own where
/// the kind tells none.
QString ExtensionToSave(const QString& kind, const FileDialog& dialog);
/// A name that has the extension of another kind in the dialog gets that of this one.
QString NameOfKind(const QString& name, const QString& kind, const FileDialog& dialog);
/// The name that a choice means: a name to save under gets the extension of its kind where it has
/// none.
QString WholeName(const QString& chosen, const QString& kind, const FileDialog& dialog);
/// Asks about a file that stands under a whole name, where the dialog is to warn. False to go on
/// choosing.
bool MayBeTaken(const std::string& path, const FileDialog& dialog);

/// The name filters of a dialog, each "Caption (patterns)". A pattern in the file name that no
/// filter has stands first: it is what the dialog begins with.
QStringList NameFilters(const FileDialog& dialog);
/// The filter that the dialog begins with.
QString FirstFilter(const FileDialog& dialog);

}  // namespace zolmara::ui
