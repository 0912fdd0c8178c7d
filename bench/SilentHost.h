#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "core/Host.h"

namespace zolmara::bench {

/// Nobody is in front, and a benchmark expects no message: where there was one, what was measured
/// was something else.
class SilentHost : public Host {
public:
    int MsgBox(const std::string& text, int style, const std::string&) override {
        if (message_.empty()) message_ = text;
        return DefaultAnswer(style);
    }
    DateTime Now() override { return DateTime(2024, 2, 1); }
    std::string GetSetting(const std::string&, const std::string&, const std::string&,
                           const std::string& fallback) override {
        return fallback;
    }
    void SaveSetting(const std::string&, const std::string&, const std::string&,
                     const std::string&) override {}
    std::string ProgramFolder() override { return "."; }
    std::optional<std::string> ChooseFile(const FileDialog& dialog) override {
        return dialog.FileName;
    }
    PageDevice* Printer() override { return Device; }

    /// Raises with the first message that was shown.
    void NeedSilence() const {
        if (!message_.empty()) throw std::runtime_error("a message was shown: " + message_);
    }

    PageDevice* Device = nullptr;

private:
    std::string message_;
};

}  // namespace zolmara::bench
