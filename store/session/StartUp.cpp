// What holds for a run of the program: the developer flag, the caption, the loose files.

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "core/Globals.h"
#include "core/Machine.h"
#include "store/Files.h"
#include "store/session/Session.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

/// Where they lie, until somebody asks for them: the program's folder may be one of thousands of
/// programs.
std::optional<std::string> folderOfDates;
std::vector<DateTime> releaseDates;

bool AllDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The date that a name r??????.txt says, as MMDDYY.
std::optional<DateTime> ReleaseDate(const std::string& fileName) {
    const std::string name = LCase(fileName);
    if (name.size() != 11 || name[0] != 'r' || !name.ends_with(".txt")) return std::nullopt;
    const std::string digits = name.substr(1, 6);
    if (!AllDigits(digits)) return std::nullopt;
    return ParseDate(digits.substr(0, 2) + "/" + digits.substr(2, 2) + "/" + digits.substr(4, 2));
}

void ReadReleaseDates(const std::string& folder) {
    releaseDates.clear();
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        if (const auto date = ReleaseDate(at->path().filename().string()))
            releaseDates.push_back(*date);
    }
    std::sort(releaseDates.rbegin(), releaseDates.rend());
}

void ReadTitlePrefix(const std::string& folder) {
    gTitlePrefix = "Velquist - ";
    const auto content = ReadWholeFile((fs::path(folder) / "PrtTitle.txt").string());
    if (!content || content->empty()) return;
    const std::string line = content->substr(0, content->find_first_of("\r\n"));
    gTitlePrefix = IsValidUtf8(line) ? line : FromCodePage1252(line);
}

}  // namespace

void StartUp() {
    gDebug =
        TheMachine().GetSetting(std::string(kProductName), "Startup", "Debug", "False") == "True";
    const std::string folder = TheMachine().ProgramFolder();
    ReadTitlePrefix(folder);
    folderOfDates = folder;
}

const std::vector<DateTime>& ReleaseDates() {
    if (folderOfDates) ReadReleaseDates(*std::exchange(folderOfDates, std::nullopt));
    return releaseDates;
}

std::string MainCaption() {
    const std::string head =
        fmt::format("{} {} (version {})", gTitlePrefix, kProductName, gVersion);
    return gCRFPath.empty() ? head : head + " -- " + gCRFTitle;
}

}  // namespace zolmara
