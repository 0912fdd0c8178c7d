#pragma once

// What the engine says to a person, and asks of one.

#include <optional>
#include <string>

namespace zolmara {

/// Message box styles and answers, by their numbers in the user interface.
enum MsgStyle : int {
    kOkOnly = 0,
    kOkCancel = 1,
    kYesNoCancel = 3,
    kYesNo = 4,
    kCritical = 16,
    kQuestion = 32,
    kExclamation = 48,
    kInformation = 64,
    kDefaultButton2 = 256,
    kDefaultButton3 = 512,
};
enum MsgAnswer : int { kOk = 1, kCancel = 2, kAbort = 3, kYes = 6, kNo = 7 };

/// The answer of the default button of a box of this style.
int DefaultAnswer(int style);
/// The buttons of a style (its low four bits).
inline int ButtonsOf(int style) { return style & 15; }
/// The icon of a style.
inline int IconOf(int style) { return style & 0x70; }

struct FileDialog {
    bool Save = false;
    std::string Title;
    std::string FileName;  ///< folder and pattern to begin with
    std::string DefaultExt;
    std::string Filter;  ///< "Caption|pattern|Caption|pattern"
    int FilterIndex = 1;
    int Flags = 0;
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// Shows a message box and gives the button chosen.
    virtual int MsgBox(const std::string& text, int style, const std::string& title) = 0;
    virtual void Beep() {}
    /// The chosen path; nothing when the user cancelled.
    virtual std::optional<std::string> ChooseFile(const FileDialog&) { return std::nullopt; }
};

Dialogs& TheDialogs();

}  // namespace zolmara
