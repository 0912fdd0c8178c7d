#include "store/session/Settings.h"

// Settings are UTF-8 in the file and in the program alike.
#define SI_NO_CONVERSION
// The code comes from the header: its library brings along tables of all scripts, which every
// start of the program would load.
#define SI_IMPLEMENTATION
#include <SimpleIni.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <optional>

#include "core/Globals.h"
#include "store/Dao.h"
#include "store/Files.h"
#include "store/files/FileGuard.h"
#include "store/files/FileLock.h"
#include "store/files/NotConfirmed.h"
#include "store/files/UserFolders.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

std::string SectionName(const std::string& application, const std::string& section) {
    return application + "/" + section;
}

/// What tells one state of a file from another.
struct FileState {
    dev_t Device = 0;
    ino_t Node = 0;
    off_t Size = 0;
    std::int64_t Written = 0;  ///< nanoseconds
    std::int64_t Changed = 0;

    bool operator==(const FileState&) const = default;
};

std::int64_t Nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileState StateOf(const struct stat& info) {
    return {info.st_dev, info.st_ino, info.st_size, Nanoseconds(info.st_mtim),
            Nanoseconds(info.st_ctim)};
}

struct SettingsText {
    std::string Content;
    FileState State;  ///< ahead of the reading
};

/// The text of the file; nothing when it cannot be read, or is no file at all. Opening a pipe
/// must not wait for somebody to write into it.
std::optional<SettingsText> ReadSettingsFile(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return std::nullopt;
    SettingsText text;
    struct stat info {};
    bool good = ::fstat(file, &info) == 0 && S_ISREG(info.st_mode);
    text.State = StateOf(info);
    char part[4096];
    for (ssize_t count = 1; good && count > 0;) {
        count = ::read(file, part, sizeof part);
        good = count >= 0;
        if (count > 0) text.Content.append(part, static_cast<std::size_t>(count));
    }
    ::close(file);
    return good ? std::optional(std::move(text)) : std::nullopt;
}

/// A section, a setting, a comment or nothing: what is written back as it was read.
bool IsSettingsLine(std::string_view line) {
    const auto text = Trim(line);
    return text.empty() || text.front() == ';' || text.front() == '#' || text.front() == '[' ||
           text.find('=') != std::string_view::npos;
}

/// True for a text that holds settings and nothing that would be lost by writing them anew.
bool HoldsSettingsAlone(std::string_view content) {
    if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
    if (!IsValidUtf8(content) || content.find('\0') != std::string_view::npos) return false;
    while (!content.empty()) {
        const auto end = std::min(content.find_first_of("\r\n"), content.size());
        if (!IsSettingsLine(content.substr(0, end))) return false;
        content.remove_prefix(std::min(end + 1, content.size()));
    }
    return true;
}

/// One line of the file holds the value and gives it back as it is.
bool FitsOnALine(std::string_view value) {
    const bool control = std::any_of(value.begin(), value.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    });
    return !control && IsValidUtf8(value) && Trim(value) == value;
}

}  // namespace

namespace {

constexpr int kTries = 400;
constexpr useconds_t kPause = 25000;

/// The folder of the file, for this program alone: another one that saves a setting of its own
/// reads the file when this one has written it. Nothing is left behind that could outlast a program
/// that dies. False where a program that has been stopped holds it on and on.
class SoleSaver {
public:
    explicit SoleSaver(const std::string& path)
        : folder_(
              ::open(FolderPathOf(BehindLinks(path)).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        // Where a folder cannot be locked, or is none, the writing has its say.
        for (int tries = 0; folder_.IsOpen() && LockFolder(folder_) == LockResult::Held; ++tries) {
            if (tries == kTries) return;
            ::usleep(kPause);
        }
        alone_ = true;
    }
    bool IsAlone() const { return alone_; }

private:
    Descriptor folder_;
    bool alone_ = false;
};

bool WriteSettings(const std::string& path, const std::string& content) {
    try {
        WriteWholeFile(path, content);
        return true;
    } catch (const NotConfirmed&) {
        return true;
    } catch (const StoreError&) {
        return false;
    }
}

}  // namespace

/// The state is that of a file which was settled when it was read; none of any other.
struct Settings::Kept {
    CSimpleIniA Ini;
    std::optional<FileState> State;
    std::int64_t Reads = 0;

    bool Read(const std::string& path, std::chrono::seconds settled) {
        ++Reads;
        Ini.Reset();
        State.reset();
        const auto text = ReadSettingsFile(path);
        if (!text || !HoldsSettingsAlone(text->Content) || Ini.LoadData(text->Content) < 0)
            return false;
        timespec now{};
        ::clock_gettime(CLOCK_REALTIME, &now);
        const std::chrono::nanoseconds age(Nanoseconds(now) -
                                           std::max(text->State.Written, text->State.Changed));
        if (age >= settled) State = text->State;
        return true;
    }
};

Settings::Settings(std::string path, std::chrono::seconds settled)
    : path_(std::move(path)), settled_(settled), kept_(std::make_shared<Kept>()) {
    kept_->Ini.SetUnicode();
}

std::int64_t Settings::ReadCount() const { return kept_->Reads; }

/// Makes what is kept the file as it is now, since another program may have written to it. False
/// for one that is there and cannot be read as settings.
bool Settings::Refresh() const {
    struct stat info {};
    if (::stat(path_.c_str(), &info) == 0)
        return kept_->State == StateOf(info) || kept_->Read(path_, settled_);
    const bool none = errno == ENOENT || errno == ENOTDIR;
    kept_->Ini.Reset();
    kept_->State.reset();
    return none;
}

std::string Settings::UserFile() {
    return (fs::path(UserConfigFolder()) / "zolmara" / "settings.ini").string();
}

std::string Settings::Get(const std::string& application, const std::string& section,
                          const std::string& key, const std::string& fallback) const {
    if (!Refresh()) return fallback;
    return kept_->Ini.GetValue(SectionName(application, section).c_str(), key.c_str(),
                               fallback.c_str());
}

bool Settings::Save(const std::string& application, const std::string& section,
                    const std::string& key, const std::string& value) const {
    if (!FitsOnALine(value) || !Refresh()) return false;
    // Every opening saves its folder; the same one again is not worth a write to the disk.
    if (Holds(application, section, key, value)) return true;
    std::error_code error;
    fs::create_directories(FolderPathOf(path_), error);
    const SoleSaver saver(path_);
    if (!saver.IsAlone() || !Refresh()) return false;
    CSimpleIniA& ini = kept_->Ini;
    // What is kept is the file's again when it is read the next time.
    kept_->State.reset();
    ini.SetValue(SectionName(application, section).c_str(), key.c_str(), value.c_str());
    std::string content;
    return ini.Save(content) >= 0 && WriteSettings(path_, content);
}

bool Settings::Holds(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) const {
    const char* const saved =
        kept_->Ini.GetValue(SectionName(application, section).c_str(), key.c_str());
    return saved && value == saved;
}

}  // namespace zolmara
