#pragma once

#include <fmt/format.h>

#include <optional>
#include <string>

#include "core/Host.h"

namespace zolmara::bench {

/// Nobody is in front; what would be a message is printed, since a benchmark expects none.
class SilentHost : public Host {
public:
    int MsgBox(const std::string& text, int style, const std::string&) override {
        fmt::print("{}\n", text);
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

    PageDevice* Device = nullptr;
};

}  // namespace zolmara::bench
