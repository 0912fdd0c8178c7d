#pragma once

// Who stands in front of the engine when there is no window: message boxes become lines of
// standard error, questions are answered by rule, file dialogs by the command line.

#include <optional>
#include <string>
#include <vector>

#include "core/Dialogs.h"
#include "core/Host.h"
#include "store/session/Settings.h"

namespace zolmara::cli {

/// How questions are answered.
enum class Answers { Default, Yes, No };

class CliHost : public Host {
public:
    struct Options {
        bool Quiet = false;
        Answers Answer = Answers::Default;
        std::string SettingsPath;  ///< empty for the user's own file
    };

    CliHost();
    ~CliHost() override;

    /// A command begins: nothing has been said yet.
    void SetOptions(const Options& options);
    /// The path that the next file dialog gives.
    void AnswerFile(const std::string& path) { file_ = path; }
    /// The electronic report that has been built whole with its print image; nothing before.
    const std::optional<std::string>& BuiltEcr() const { return builtEcr_; }
    /// What print files are sent to; none to begin with.
    void UsePrinter(PageDevice* printer) { printer_ = printer; }
    /// Message boxes shown so far; answered questions do not count.
    int MessageCount() const { return messages_; }
    /// Saves the folders that the command has remembered. One that has changed nothing leaves no
    /// trace, in the settings neither: it does not call this.
    void SaveFolders();
    /// Takes the progress bar off the screen.
    void ClearProgress();

    int MsgBox(const std::string& text, int style, const std::string& title) override;
    void ShowCalcMsg(const std::string& text) override;
    void HideCalcMsg() override;
    void ShowProgress(double part) override;
    std::optional<std::string> ChooseFile(const FileDialog& dialog) override;
    void ShowCopy2Floppy(const std::string& ecrPath) override { builtEcr_ = ecrPath; }
    PageDevice* Printer() override { return printer_; }
    DateTime Now() override;
    std::string GetSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) override;
    void SaveSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) override;
    std::string ProgramFolder() override;

private:
    struct Folder {
        std::string Application;
        std::string Section;
        std::string Key;
        std::string Value;

        bool Is(const std::string& application, const std::string& section,
                const std::string& key) const {
            return Application == application && Section == section && Key == key;
        }
    };

    int AnswerOf(int style) const;
    void DrawProgress();

    Options options_;
    Settings settings_;
    std::vector<Folder> folders_;  ///< remembered and not saved yet
    std::optional<std::string> file_;
    std::optional<std::string> builtEcr_;
    PageDevice* printer_ = nullptr;
    int messages_ = 0;
    bool terminal_ = false;
    bool barShown_ = false;
    double part_ = 0;
    std::string status_;
};

/// The host of this run.
CliHost& TheCliHost();

}  // namespace zolmara::cli
