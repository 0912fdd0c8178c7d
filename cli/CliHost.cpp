#include "cli/CliHost.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <utility>

#include "cli/Output.h"
#include "core/Dialogs.h"
#include "core/Globals.h"

namespace zolmara::cli {

namespace {

/// The word in front of a message, by its icon.
std::string_view SeverityOf(int style) {
    switch (IconOf(style)) {
        case kCritical:
            return "ERROR";
        case kExclamation:
            return "Warning";
        default:
            return "F.Y.I.";
    }
}

std::string_view AnswerName(int answer) {
    switch (answer) {
        case kYes:
            return "Yes";
        case kNo:
            return "No";
        case kOk:
            return "OK";
        default:
            return "Cancel";
    }
}

bool IsYesNo(int style) { return ButtonsOf(style) == kYesNo || ButtonsOf(style) == kYesNoCancel; }

constexpr int kBarWidth = 30;

}  // namespace

CliHost::CliHost() : settings_(Settings::UserFile()), terminal_(isatty(STDERR_FILENO) == 1) {}
CliHost::~CliHost() { ClearProgress(); }

void CliHost::SetOptions(const Options& options) {
    options_ = options;
    messages_ = 0;
    folders_.clear();
    if (!options.SettingsPath.empty()) settings_ = Settings(options.SettingsPath);
}

int CliHost::AnswerOf(int style) const {
    const bool yesNo = IsYesNo(style);
    switch (options_.Answer) {
        case Answers::Yes:
            return yesNo ? kYes : kOk;
        case Answers::No:
            return yesNo ? kNo : kCancel;
        case Answers::Default:
            break;
    }
    return DefaultAnswer(style);
}

int CliHost::MsgBox(const std::string& text, int style, const std::string& /*title*/) {
    ClearProgress();
    std::string line = fmt::format("{}\t{}", SeverityOf(style), OneLine(text));
    const bool question = ButtonsOf(style) != kOkOnly;
    const int answer = question ? AnswerOf(style) : int{kOk};
    if (question)
        line += fmt::format("\t{}", AnswerName(answer));
    else
        ++messages_;
    PutError(line + "\n");
    return answer;
}

void CliHost::ShowCalcMsg(const std::string& text) {
    status_ = OneLine(Trim(text));
    if (options_.Quiet) return;
    if (terminal_)
        DrawProgress();
    else
        PutError(status_ + "\n");
}

void CliHost::HideCalcMsg() { ClearProgress(); }

void CliHost::ShowProgress(double part) {
    part_ = std::clamp(part, 0.0, 1.0);
    if (terminal_ && !options_.Quiet) DrawProgress();
}

void CliHost::DrawProgress() {
    const int filled = static_cast<int>(part_ * kBarWidth);
    const std::string status(LeftText(status_, 40));
    PutError(fmt::format("\r[{:#<{}}{:.<{}}] {:3.0f}%  {:<40}", "", filled, "", kBarWidth - filled,
                         part_ * 100, status));
    barShown_ = true;
}

void CliHost::ClearProgress() {
    if (!barShown_) return;
    PutError("\r\033[K");
    barShown_ = false;
}

std::optional<std::string> CliHost::ChooseFile(const FileDialog& /*dialog*/) {
    auto chosen = file_;
    file_.reset();
    return chosen;
}

DateTime CliHost::Now() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    return DateTime(local.tm_year + 1900, static_cast<unsigned>(local.tm_mon + 1),
                    static_cast<unsigned>(local.tm_mday), local.tm_hour, local.tm_min,
                    std::min(local.tm_sec, 59));
}

std::string CliHost::GetSetting(const std::string& application, const std::string& section,
                                const std::string& key, const std::string& fallback) {
    for (const Folder& folder : folders_)
        if (folder.Is(application, section, key)) return folder.Value;
    return settings_.Get(application, section, key, fallback);
}

void CliHost::SaveSetting(const std::string& application, const std::string& section,
                          const std::string& key, const std::string& value) {
    std::erase_if(folders_,
                  [&](const Folder& folder) { return folder.Is(application, section, key); });
    folders_.push_back({application, section, key, value});
}

void CliHost::SaveFolders() {
    for (const Folder& folder : std::exchange(folders_, {}))
        settings_.Save(folder.Application, folder.Section, folder.Key, folder.Value);
}

std::string CliHost::ProgramFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "." : program.parent_path().string();
}

CliHost& TheCliHost() {
    static CliHost host;
    return host;
}

}  // namespace zolmara::cli
