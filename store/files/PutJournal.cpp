#include "store/files/PutJournal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>

#include "store/base/FileBasics.h"
#include "store/files/FileDoor.h"
#include "store/files/FileGuard.h"
#include "store/files/Scratch.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr std::string_view kHead = "names to be given";
constexpr std::string_view kEnd = ".put";
constexpr std::string_view kScratchEnd = ".tmp";

/// What the system knows a file by, whatever its name; 0 where there is none.
ino_t NodeAt(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

/// A name as the file tells it, with the file that was meant and the one that it replaces.
struct Step {
    std::string Aside;
    std::string Target;
    ino_t Node = 0;
    ino_t Former = 0;

    bool IsDone() const { return NodeAt(Target) == Node; }
    bool IsPending() const { return NodeAt(Aside) == Node && NodeAt(Target) == Former; }
};

// --- The text: fields that end with a zero byte, which no path has in it

void AddField(std::string& text, std::string_view field) { text.append(field).push_back('\0'); }

/// Plain in its own folder, so that the folder may be found by another road.
std::string PathIn(const std::string& folder, const std::string& path) {
    if (FolderPathOf(path) == folder) return fs::path(path).filename().string();
    return fs::absolute(path).string();
}

std::string TextFor(const std::string& folder, const std::vector<IntendedName>& names) {
    std::string text;
    AddField(text, kHead);
    for (const IntendedName& name : names) {
        AddField(text, PathIn(folder, name.Aside));
        AddField(text, PathIn(folder, name.Target));
        AddField(text, std::to_string(NodeAt(name.Aside)));
        AddField(text, std::to_string(NodeAt(name.Target)));
    }
    return text;
}

std::optional<ino_t> NodeIn(const std::string& field) {
    ino_t node = 0;
    std::istringstream in(field);
    return in >> node ? std::optional(node) : std::nullopt;
}

/// Nothing for a text that is not whole, or that names what is no scratch file.
std::optional<std::vector<Step>> ReadSteps(const std::string& folder, const std::string& text) {
    std::istringstream in(text);
    std::string field;
    if (!std::getline(in, field, '\0') || field != kHead) return std::nullopt;
    std::vector<Step> steps;
    while (std::getline(in, field, '\0')) {
        Step step;
        step.Aside = (fs::path(folder) / field).string();
        if (!IsScratchName(fs::path(field).filename().string())) return std::nullopt;
        if (!std::getline(in, field, '\0')) return std::nullopt;
        step.Target = (fs::path(folder) / field).string();
        for (ino_t* node : {&step.Node, &step.Former}) {
            if (!std::getline(in, field, '\0')) return std::nullopt;
            const auto value = NodeIn(field);
            if (!value) return std::nullopt;
            *node = *value;
        }
        steps.push_back(std::move(step));
    }
    return steps;
}

// --- Finishing

/// All of the names, or none: where one of the files is gone or a target is another file, the
/// program that died had given none, or has taken them back. False when a rename fails.
bool Finish(const std::vector<Step>& steps) {
    const auto known = [](const Step& step) { return step.IsDone() || step.IsPending(); };
    if (!std::ranges::all_of(steps, known)) return true;
    for (const Step& step : steps)
        if (!step.IsDone() && ::rename(step.Aside.c_str(), step.Target.c_str()) != 0) return false;
    return std::ranges::all_of(steps, [](const Step& step) { return SyncedFolderOf(step.Target); });
}

bool FinishOne(const std::string& folder, const std::string& path) {
    const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat info {};
    if (!file.IsOpen() || ::fstat(file.Number(), &info) != 0 || !S_ISREG(info.st_mode))
        return errno == ENOENT;
    if (LockFile(file, FileMark::Owner, true) != LockResult::Taken) return false;
    if (!HasName(file, path)) return true;
    const auto text = ReadWholeFile(path);
    const auto steps = ReadSteps(folder, text.value_or(""));
    if (steps && !Finish(*steps)) return false;
    ::unlink(path.c_str());
    return true;
}

bool IsJournalName(const std::string& name) {
    if (!name.ends_with(kEnd)) return false;
    return IsScratchName(name.substr(0, name.size() - kEnd.size()) + std::string(kScratchEnd));
}

std::vector<std::string> JournalsIn(const std::string& folder) {
    std::vector<std::string> paths;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        // The folder may be one of thousands of files.
        if (entry->path().native().ends_with(kEnd) &&
            IsJournalName(entry->path().filename().string()))
            paths.push_back(entry->path().string());
    return paths;
}

}  // namespace

PutJournal::PutJournal(const std::vector<IntendedName>& names) {
    std::set<std::string> folders;
    for (const IntendedName& name : names) folders.insert(FolderPathOf(name.Target));
    try {
        for (const auto& folder : folders) WriteInto(folder, TextFor(folder, names));
    } catch (...) {
        Drop();
        throw;
    }
}

PutJournal::~PutJournal() { Drop(); }

void PutJournal::WriteInto(const std::string& folder, const std::string& text) {
    Scratch aside((fs::path(folder) / "names").string());
    const auto failed = [&] {
        FileFailed(folder, std::error_code(errno, std::generic_category()));
    };
    const ssize_t written = ::write(aside.File().Number(), text.data(), text.size());
    if (written < 0) failed();
    if (static_cast<std::size_t>(written) != text.size())
        FileFailed(folder, std::make_error_code(std::errc::no_space_on_device));
    if (::fsync(aside.File().Number()) != 0) failed();
    std::string path = aside.Path();
    written_.push_back({std::move(path), aside.Release()});
}

void PutJournal::Announce() {
    for (Written& written : written_) {
        const auto failed = [&] {
            FileFailed(FolderPathOf(written.Path), std::error_code(errno, std::generic_category()));
        };
        std::string path = written.Path;
        path.replace(path.size() - kScratchEnd.size(), kScratchEnd.size(), kEnd);
        if (::rename(written.Path.c_str(), path.c_str()) != 0) failed();
        written.Path = std::move(path);
        if (!SyncedFolderOf(written.Path)) failed();
    }
}

void PutJournal::Drop() {
    for (const Written& written : written_) ::unlink(written.Path.c_str());
    written_.clear();
}

bool HasPutJournal(const std::string& folder) { return !JournalsIn(folder).empty(); }

bool FinishPuts(const std::string& folder) {
    bool all = true;
    for (const std::string& path : JournalsIn(folder)) all &= FinishOne(folder, path);
    return all;
}

}  // namespace zolmara
