#include "ui/main/FileRoads.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/Windows.h"
#include "import/ImportASCII.h"
#include "spreadsheet/ImportFile.h"
#include "store/session/RepairCrf.h"
#include "store/session/Session.h"
#include "ui/main/Done.h"
#include "ui/main/QtHost.h"
#include "ui/main/frmMain.h"

namespace zolmara::ui {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSection = "Recent";
constexpr int kMostRecent = 8;
constexpr std::size_t kMostNamed = 5;

/// What asks to be imported; one of the older kind is refused there, in words.
constexpr std::array<std::string_view, 7> kImported = {".TXT", ".CSV", ".XLSX", ".XLSM",
                                                       ".XLS", ".ODS", ".TSV"};

bool IsImported(const std::string& path) {
    const std::string end = UCase(fs::path(path).extension().string());
    return std::ranges::find(kImported, end) != kImported.end();
}

std::string KeyOf(int place) { return fmt::format("File{}", place); }

std::vector<std::string> Remembered() {
    std::vector<std::string> files;
    for (int place = 1; place <= kMostRecent; ++place) {
        std::string file =
            TheMachine().GetSetting(std::string(kProductName), kSection, KeyOf(place), "");
        if (!file.empty()) files.push_back(std::move(file));
    }
    return files;
}

bool MayTake(const char* menu) {
    const frmMain* const main = TheQtHost().Main();
    return main && main->MenuOn(menu);
}

void Tell(const std::string& text) {
    TheDialogs().MsgBox(text, kExclamation, std::string(kProductName));
}

/// Whether there is a file that can be read; what is wrong with it is told. It is asked ahead of
/// all else, so that the open CRF stays open where there is nothing to take its place.
bool CanBeRead(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    const bool there = fs::exists(status);
    if (there && fs::is_regular_file(status) && std::ifstream(path, std::ios::binary)) return true;
    const char* const wrong = !there                        ? "There is no file {}."
                              : fs::is_regular_file(status) ? "{} cannot be read."
                                                            : "{} is no file.";
    Tell(fmt::format(fmt::runtime(wrong), path));
    return false;
}

/// By its name, or by how it begins: a damaged one may be offered for repair.
bool MayBeCrf(const std::string& path) {
    constexpr std::string_view kHead = "SQLite format 3";
    if (UCase(fs::path(path).extension().string()) == ".CRF") return true;
    std::string head(kHead.size(), ' ');
    std::ifstream(path, std::ios::binary)
        .read(head.data(), static_cast<std::streamsize>(head.size()));
    return head == kHead;
}

}  // namespace

bool OpenFile(const std::string& path) {
    if (!CanBeRead(path)) return false;
    if (!MayTake("mnuReportOpen")) {
        Tell(fmt::format("{} cannot be opened now.  Please close the other windows first.", path));
        return false;
    }
    if (CrfIsOpen() && CloseAllForms(false) != 0) return false;
    TheWindows().SetWelcomeVisible(false);
    if (!OpenOrRepairCrf(path)) return false;
    TellDone("Opened " + gCRFTitle);
    return true;
}

bool ImportAndTell(const std::string& path) {
    const bool clean = ImportFile(path);
    if (clean) TellDone("Imported " + FileName(path));
    return clean;
}

void TakeFile(const std::string& path) {
    if (!CanBeRead(path)) return;
    if (!IsImported(path) && !MayBeCrf(path)) {
        Tell(
            fmt::format("{} is no Cost Report File, and no text file or workbook that could be "
                        "imported.",
                        path));
    } else if (!IsImported(path)) {
        OpenFile(path);
    } else if (!MayTake("mnuReportImport")) {
        Tell(
            fmt::format("{} can be imported when a Cost Report File is open and no other window "
                        "stands in the way.",
                        path));
    } else {
        mnuReportImportASCII(path, ImportAndTell);
    }
}

/// Which of several is meant is not guessed: the first one would be that of the file manager's
/// order.
void TakeFiles(const std::vector<std::string>& paths) {
    if (paths.size() == 1) return TakeFile(paths.front());
    std::string names;
    for (std::size_t at = 0; at < std::min(paths.size(), kMostNamed); ++at)
        names += (at > 0 ? ", " : "") + FileName(paths[at]);
    if (paths.size() > kMostNamed) names += fmt::format(" and {} more", paths.size() - kMostNamed);
    Tell(
        fmt::format("These are {} files: {}.\rOne file is opened or imported at a time, so none of "
                    "them was taken.  Please choose one.",
                    paths.size(), names));
}

std::vector<std::string> RecentFiles() {
    std::vector<std::string> files = Remembered();
    std::erase_if(files, [](const std::string& file) {
        std::error_code error;
        return !fs::exists(file, error);
    });
    return files;
}

void RememberFile(const std::string& path) {
    std::vector<std::string> files = Remembered();
    if (!files.empty() && files.front() == path) return;
    std::erase(files, path);
    files.insert(files.begin(), path);
    if (files.size() > kMostRecent) files.resize(kMostRecent);
    for (int place = 1; const std::string& file : files)
        TheMachine().SaveSetting(std::string(kProductName), kSection, KeyOf(place++), file);
}

}  // namespace zolmara::ui
