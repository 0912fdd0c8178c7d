#pragma once

// What the engine asks of the program's windows. A program without windows leaves it undone.

#include <string>

namespace zolmara {

class Windows {
public:
    virtual ~Windows() = default;

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
};

Windows& TheWindows();

}  // namespace zolmara
