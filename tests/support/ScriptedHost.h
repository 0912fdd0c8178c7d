#pragma once

// A host that shows nothing: it records what the engine asks of it and gives prepared answers.

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/Dialogs.h"
#include "core/Host.h"
#include "core/Status.h"

namespace zolmara::test {

/// One message box that was shown, and the button that was chosen.
struct Box {
    std::string Text;
    int Style = 0;
    std::string Title;
    int Answer = 0;

    friend bool operator==(const Box&, const Box&) = default;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

/// Thrown in place of the end of the program.
struct ProgramEnded {};

class ScriptedHost : public Host {
public:
    /// Installs itself, and gives the place back to the former host at its end.
    ScriptedHost();
    ~ScriptedHost() override;
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;

    // --- Prepared
    std::deque<int> Answers;  ///< of boxes, in order; then their default buttons
    std::deque<std::optional<std::string>> Files;  ///< of file dialogs; then Cancel
    std::deque<int> CloseResults;                  ///< of CloseAllForms; then 0
    std::set<std::string> OpenForms;               ///< what FormIsOpen says
    std::function<void()> OnDoEvents;
    DateTime Clock{2024, 2, 1, 10, 30, 0};
    bool ClockCanBeSet = true;
    std::string Folder = ".";                     ///< ProgramFolder
    PageDevice* PrinterDevice = nullptr;          ///< Printer; none is installed
    std::map<std::string, std::string> Settings;  ///< by "Application/Section/Key"

    // --- Recorded
    std::vector<Box> Boxes;
    std::vector<FileDialog> Dialogs;
    /// Every call but DoEvents, ShowProgress and the questions for a value, in order, as
    /// "Name" or "Name: argument".
    std::vector<std::string> Events;
    std::map<std::string, bool> Menus;  ///< as last enabled or disabled
    Pointer PointerNow = Pointer::Normal;
    std::string Caption;
    std::string CalcMsg;  ///< empty when hidden
    std::string CrfName;
    bool Welcome = true;
    bool CrfShown = false;
    bool MainEnabled = true;
    int Beeps = 0;
    int DoEventsCount = 0;
    double Progress = 0;

    /// The texts of all boxes.
    std::vector<std::string> Texts() const;
    /// Where an event stands in Events, -1 when it did not happen.
    int IndexOf(const std::string& event) const;
    /// Forgets what was recorded of boxes, dialogs and events.
    void Forget();

    // --- Host
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
    PageDevice* Printer() override { return PrinterDevice; }
    DateTime Now() override;
    bool MaySetClock() override { return ClockCanBeSet; }
    std::string GetSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) override;
    void SaveSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) override;
    std::string ProgramFolder() override;
    [[noreturn]] void EndProgram() override;

private:
    void Record(const std::string& name, const std::string& argument);

    Host* former_;
};

}  // namespace zolmara::test
