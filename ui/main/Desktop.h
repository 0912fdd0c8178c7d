#pragma once

// What the windows need of the desktop around them: boxes, file and printer dialogs, the preview,
// other programs. Tests put answers of their own in its place.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/Dialogs.h"

class QPrinter;

namespace zolmara::ui {

struct PrintJob;

/// A removable medium that is mounted.
struct Drive {
    std::string Name;  ///< as it is shown
    std::string Root;  ///< its folder
};

struct Desktop {
    /// Gives the button chosen, as Host::MsgBox.
    std::function<int(const std::string& text, int style, const std::string& title)> MsgBox;
    /// Nothing when the user cancelled.
    std::function<std::optional<std::string>(const FileDialog&)> ChooseFile;
    /// The printer dialog; a cancel changes nothing.
    std::function<void(QPrinter& printer, const std::string& title)> SetUpPrinter;
    /// The dialog ahead of printing so many pages, with their range; false when cancelled.
    std::function<bool(QPrinter& printer, int pages)> AskToPrint;
    /// Shows the jobs of a command and prints them where the user wants.
    std::function<void(const std::vector<PrintJob>& jobs, QPrinter& printer)> Print;
    /// Hands a file to the program that the desktop opens it with.
    std::function<void(const std::string& path)> OpenDocument;
    std::function<std::vector<Drive>()> RemovableDrives;
    /// True when another copy of the program runs; from the first call on, this one counts.
    std::function<bool()> AnotherCopyRuns;
    /// Ends the program.
    std::function<void()> EndProgram;
    int SplashTime = 3000;  ///< milliseconds
};

/// The desktop that the program runs on.
Desktop RealDesktop();

/// The desktop in use.
Desktop& TheDesktop();

}  // namespace zolmara::ui
