#pragma once

// What the engine needs of whoever stands in front of it. One host is installed at start: the
// windows', the command line's, or the scripted one of the tests.

#include <optional>
#include <string>
#include <string_view>

#include "core/DateTime.h"

namespace zolmara {

class PageDevice;

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

enum class Pointer { Normal, Hourglass };

struct FileDialog {
    bool Save = false;
    std::string Title;
    std::string FileName;  ///< folder and pattern to begin with
    std::string DefaultExt;
    std::string Filter;  ///< "Caption|pattern|Caption|pattern"
    int FilterIndex = 1;
    int Flags = 0;
};

class Host {
public:
    virtual ~Host() = default;

    /// Shows a message box and gives the button chosen.
    virtual int MsgBox(const std::string& text, int style, const std::string& title) = 0;
    virtual void Beep() {}
    virtual void SetPointer(Pointer) {}
    /// The status line of the main window, txtCalcMsg.
    virtual void ShowCalcMsg(const std::string& /*text*/) {}
    virtual void HideCalcMsg() {}
    /// How far a long step is, from 0 to 1; for a bar beside the status line.
    virtual void ShowProgress(double /*part*/) {}
    /// Enables or disables a menu or command of the main window by its name.
    virtual void EnableMenu(const std::string& /*name*/, bool /*enabled*/) {}
    /// Blocks or unblocks the main window as a whole.
    virtual void EnableMain(bool /*enabled*/) {}
    virtual void RefreshMenus() {}
    virtual void SetCaption(const std::string& /*text*/) {}
    /// The text of lblCRFName, shown or not.
    virtual void SetCrfName(const std::string& /*path*/) {}
    /// The main window with a CRF: lblCRFName and imgVelquist show, fraWelcome does not.
    virtual void ShowCrf(const std::string& /*path*/) {}
    /// The main window with none: the help text stops and goes, lblCRFName is emptied and goes
    /// with imgVelquist, fraWelcome shows.
    virtual void ShowWelcome() {}
    /// fraWelcome alone, for the time of a dialog.
    virtual bool WelcomeVisible() { return false; }
    virtual void SetWelcomeVisible(bool /*visible*/) {}
    /// Scrolls the help text in, once a CRF has been opened or made.
    virtual void StartHelpText() {}
    /// Lets the interface breathe.
    virtual void DoEvents() {}
    /// The chosen path; nothing when the user cancelled.
    virtual std::optional<std::string> ChooseFile(const FileDialog&) { return std::nullopt; }

    /// Closes the worksheet windows: 0 all closed, 1 the user cancelled, 2 one would not close.
    virtual int CloseAllForms(bool /*keepCostCenterForms*/) { return 0; }
    /// SetGrd on every open worksheet window but the one named.
    virtual void RefreshOpenForms(const std::string& /*exceptForm*/) {}
    virtual void RefreshWorksheetForm(const std::string& /*mode*/, const std::string& /*item*/) {}
    virtual bool FormIsOpen(const std::string& /*name*/) { return false; }
    virtual void SetGrd(const std::string& /*form*/) {}
    virtual void UnloadForm(const std::string& /*name*/) {}
    /// Shows the findings in frmViewError under the given caption.
    virtual void ShowErrors(const std::string& /*caption*/) {}
    /// Offers, in frmCopy2Floppy, to copy the finished submission files to a removable drive.
    virtual void ShowCopy2Floppy(const std::string& /*ecrPath*/) {}

    /// The printer that print files are sent to; none where there is none.
    virtual PageDevice* Printer() { return nullptr; }

    /// The machine's clock, local time. The engine's clock is Now() of core/Clock.h.
    virtual DateTime Now() = 0;
    /// Whether the program's own clock may be set.
    virtual bool MaySetClock() { return true; }
    virtual std::string GetSetting(const std::string& application, const std::string& section,
                                   const std::string& key, const std::string& fallback) = 0;
    virtual void SaveSetting(const std::string& application, const std::string& section,
                             const std::string& key, const std::string& value) = 0;
    /// The folder of the program, where its loose files lie.
    virtual std::string ProgramFolder() = 0;
    /// Ends the program on the spot.
    [[noreturn]] virtual void EndProgram();
};

/// The installed host. Installing gives back the former one.
Host& TheHost();
Host* InstallHost(Host* host);

}  // namespace zolmara
