#pragma once

// The main window: the menus, the welcome frame, the path of the open CRF, the progress line and
// the help text. It holds no data of its own.

#include <QMainWindow>
#include <functional>
#include <map>
#include <string>

class QAction;
class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QTimer;

namespace zolmara::ui {

struct MenuEntry;

class frmMain : public QMainWindow {
public:
    frmMain();
    ~frmMain() override;

    /// Form_Load: everything from the settings to the welcome frame, with the splash in between.
    /// False when another copy of the program runs and this one is to end.
    bool Load();

    /// Sets every menu by the state of the session. Runs at each activation of the window, and
    /// after each command that changes the state.
    void RefreshMenus();

    /// The entry of this name; none for any other.
    QAction* Menu(const std::string& name) const;
    void EnableMenu(const std::string& name, bool enabled);
    void EnableMain(bool enabled);

    void ShowCalcMsg(const std::string& text);
    void HideCalcMsg();
    void ShowProgress(double part);
    /// True while a long step holds the window: it takes no command then.
    bool InLongStep() const;

    void SetCrfName(const std::string& path);
    void ShowCrf(const std::string& path);
    void ShowWelcome();
    bool WelcomeVisible() const;
    void SetWelcomeVisible(bool visible);
    void StartHelpText();

    /// Runs a command of the menus, unless another one is at work.
    void Run(const std::function<void()>& command);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeMenus();
    void MakeMenu(const MenuEntry& entry);
    void MakeCommand(const MenuEntry& entry, QMenu* parent);
    QWidget* MakeWelcome();
    void MakeWindow();
    void PlaceWindow();
    void HideStage();
    void ShowSplash();
    void EndSecondCopy();
    void ReadWorksheetMenus();
    void FillSheetArray(const std::string& array, int index, const std::string& caption);
    void TrimSheetArray(const std::string& array, int keep);
    bool MenusOfOpenForms();
    void TickHelpText();
    void StopHelpText();

    std::map<std::string, QAction*> menus_;
    std::map<std::string, QMenu*> parents_;
    QFrame* fraWelcome_ = nullptr;
    QLabel* lblHelp_ = nullptr;
    QLabel* lblCRFName_ = nullptr;
    QLabel* imgVelquist_ = nullptr;
    QLineEdit* txtCalcMsg_ = nullptr;
    QProgressBar* prgCalc_ = nullptr;
    QTimer* tmrMain_ = nullptr;
    bool welcome_ = true;
    bool blocked_ = false;
    bool running_ = false;
};

}  // namespace zolmara::ui
