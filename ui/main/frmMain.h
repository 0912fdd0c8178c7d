#pragma once

// The main window: the menus, the welcome frame, the path of the open CRF, the progress line and
// the help text. It holds no data of its own.

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

class QAction;
class QBoxLayout;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QProgressBar;
class QPushButton;
class QTimer;

namespace zolmara::ui {

struct MenuEntry;
struct MenuInputs;
class Overview;
class ToolsMenu;

class frmMain : public QMainWindow {
public:
    frmMain();
    ~frmMain() override;

    /// Form_Load: everything from the settings to the welcome frame, with the splash in between.
    /// False when another copy of the program runs and this one is to end.
    bool Load();

    /// Reads the list of S worksheets and sets every menu by the state of the session. Runs at
    /// each activation of the window, and after each command that changes the state.
    void RefreshMenus();
    /// The entries of "Tools", each by its own rule.
    void RefreshTools();

    /// The entry of this name; none for any other.
    QAction* Menu(const std::string& name) const;
    /// True where the entry is on as the session stands now.
    bool MenuOn(const std::string& name) const;
    /// mnuReportSubmit opens and shuts the way to the submission; any other entry is off for as
    /// long as a step holds it.
    void EnableMenu(const std::string& name, bool enabled);
    /// Bars the whole window while a step runs.
    void EnableMain(bool enabled);

    void ShowCalcMsg(const std::string& text);
    void HideCalcMsg();
    void ShowProgress(double part);
    /// The line that says what ended well; it stays until the next command.
    void ShowDone(const std::string& text);
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
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void MakeMenus();
    void OpenMenuBar();
    void MakeMenu(const MenuEntry& entry);
    void MakeCommand(const MenuEntry& entry, QMenu& parent);
    QWidget* MakeWelcome();
    QWidget* MakeRecent();
    void ShowRecent();
    void MakeWindow();
    void PlaceWindow();
    void HideStage();
    void ShowSplash();
    void EndSecondCopy();
    void ReadWorksheetMenus();
    void FillSheetArray(const std::string& array, int index, const std::string& caption);
    void TrimSheetArray(const std::string& array, int keep);
    MenuInputs Inputs() const;
    void SetMenus();
    void TickHelpText();
    void StopHelpText();

    std::map<std::string, QAction*> menus_;
    std::map<std::string, QMenu*> parents_;
    std::unique_ptr<ToolsMenu> tools_;
    std::set<std::string, std::less<>> held_;
    bool maySubmit_ = false;
    bool sWorksheets_ = false;
    QFrame* fraWelcome_ = nullptr;
    QWidget* start_ = nullptr;  ///< the welcome frame and what stands beside it
    QBoxLayout* layStart_ = nullptr;
    QFrame* fraRecent_ = nullptr;
    QListWidget* lstRecent_ = nullptr;
    QPushButton* cmdNew_ = nullptr;
    Overview* overview_ = nullptr;
    QLabel* lblHelp_ = nullptr;
    QLabel* lblCRFName_ = nullptr;
    QLabel* imgVelquist_ = nullptr;
    QLabel* lblDone_ = nullptr;
    QLineEdit* txtCalcMsg_ = nullptr;
    QProgressBar* prgCalc_ = nullptr;
    QTimer* tmrMain_ = nullptr;
    bool welcome_ = true;
    bool blocked_ = false;
};

}  // namespace zolmara::ui
