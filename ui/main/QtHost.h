#pragma once

// The engine's host with windows in front of it.

#include <memory>
#include <optional>
#include <string>

#include "core/Dialogs.h"
#include "core/Host.h"
#include "store/session/Settings.h"
#include "ui/printing/QtPageDevice.h"

namespace zolmara::ui {

class frmMain;

class QtHost : public Host {
public:
    /// Installs itself, and gives the place back to the former host at its end.
    QtHost(Settings settings, std::string programFolder);
    ~QtHost() override;
    QtHost(const QtHost&) = delete;
    QtHost& operator=(const QtHost&) = delete;

    /// The main window that is meant; none while there is none.
    void SetMain(frmMain* main) { main_ = main; }
    frmMain* Main() const { return main_; }

    int MsgBox(const std::string& text, int style, const std::string& title) override;
    void Beep() override;
    void SetPointer(Pointer pointer) override;
    void ShowCalcMsg(const std::string& text) override;
    void HideCalcMsg() override;
    void ShowProgress(double part) override;
    void EnableMenu(const std::string& name, bool enabled) override;
    void EnableMain(bool enabled) override;
    void RefreshMenus() override;
    void SetCaption(const std::string& text) override;
    void SetCrfName(const std::string& path) override;
    void ShowCrf(const std::string& path) override;
    void ShowWelcome() override;
    bool WelcomeVisible() override;
    void SetWelcomeVisible(bool visible) override;
    void StartHelpText() override;
    void DoEvents() override;
    std::optional<std::string> ChooseFile(const FileDialog& dialog) override;
    int CloseAllForms(bool keepCostCenterForms) override;
    void RefreshOpenForms(const std::string& exceptForm) override;
    void RefreshWorksheetForm(const std::string& mode, const std::string& item) override;
    bool FormIsOpen(const std::string& name) override;
    void SetGrd(const std::string& form) override;
    void UnloadForm(const std::string& name) override;
    void ShowErrors(const std::string& caption) override;
    void ShowCopy2Floppy(const std::string& ecrPath) override;
    PageDevice* Printer() override { return &printer_; }
    DateTime Now() override;
    std::string GetSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) override;
    void SaveSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) override;
    std::string ProgramFolder() override { return programFolder_; }
    [[noreturn]] void EndProgram() override;

    /// From here on boxes are counted instead of shown, and the user's keys wait; until it ends.
    void BeginQuiet(int& boxes);
    void EndQuiet();

    /// True while a long step holds the program: no window takes a command then.
    bool InLongStep() const;

    /// Shows what has been sent to the printer since the last call, and prints it.
    void PrintJobs();
    /// The printer dialog.
    void SetUpPrinter(const std::string& title);

private:
    Host* former_;
    frmMain* main_ = nullptr;
    Settings settings_;
    std::string programFolder_;
    QtPageDevice printer_;
    bool hourglass_ = false;
    int* quietBoxes_ = nullptr;
};

/// A step that shows nothing: no boxes, no status line, no pointer. What it would have shown is
/// counted.
class QuietHost {
public:
    explicit QuietHost(int& boxes);
    ~QuietHost();
    QuietHost(const QuietHost&) = delete;
    QuietHost& operator=(const QuietHost&) = delete;
};

/// The host in use.
QtHost& TheQtHost();

}  // namespace zolmara::ui
