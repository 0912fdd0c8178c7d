#include "store/session/BackupFolder.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <set>

#include "core/DigestFunctions.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "core/PlainName.h"
#include "store/Files.h"
#include "store/files/FileGuard.h"
#include "store/files/UserFolders.h"
#include "store/session/Session.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr std::string_view kEnd = ".CRF";
constexpr std::string_view kNote = "path.txt";
constexpr std::size_t kStampSize = 15;  // "20260131-235959"
constexpr std::size_t kLongestTitle = 80;

std::string Setting(const std::string& key) {
    return TheMachine().GetSetting(std::string(kProductName), "Backups", key, "");
}

int NumberSetting(const std::string& key, int fallback) {
    const auto number = ParseNumber(Setting(key));
    return number && *number >= 1 && *number <= 10000 ? static_cast<int>(*number) : fallback;
}

/// Enough of the path's digest to tell files of one name apart.
std::string KeyOf(const std::string& path) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    if (EVP_Digest(path.data(), path.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1)
        throw StoreError(StoreError::Kind::Other, path + ": the key of its backups failed");
    std::string key;
    for (int i = 0; i < 8; ++i) key += fmt::format("{:02x}", digest[static_cast<std::size_t>(i)]);
    return key;
}

/// The one path of a file, by whatever links it is reached, also when it is gone.
fs::path CanonicalPath(const std::string& crf) {
    std::error_code error;
    const fs::path path = fs::weakly_canonical(fs::absolute(BehindLinks(crf), error), error);
    return error ? fs::path(crf) : path;
}

std::optional<std::int64_t> Digits(std::string_view text) {
    std::int64_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return text.empty() ? std::nullopt : std::optional(number);
}

/// "20260131-235959" as a date.
std::optional<DateTime> ReadStamp(std::string_view stamp) {
    if (stamp.size() != kStampSize || stamp[8] != '-') return std::nullopt;
    const auto part = [&](std::size_t at, std::size_t size) {
        return std::string(stamp.substr(at, size));
    };
    return ParseStoreDate(fmt::format("{}-{}-{} {}:{}:{}", part(0, 4), part(4, 2), part(6, 2),
                                      part(9, 2), part(11, 2), part(13, 2)));
}

/// What a name tells; nothing for any other file.
std::optional<Backup> ReadName(std::string_view name) {
    if (!name.ends_with(kEnd)) return std::nullopt;
    name.remove_suffix(kEnd.size());
    const auto line = name.find('-');
    if (line < 6 || line > 12) return std::nullopt;
    const auto which = Digits(name.substr(0, line));
    const auto time = ReadStamp(name.substr(std::min(line + 1, name.size())));
    if (!which || !time) return std::nullopt;
    return Backup{.Which = *which, .Time = *time, .Size = 0, .Path = {}};
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) return;
    if (!folder.parent_path().empty() && folder.parent_path() != folder)
        MakeFolder(folder.parent_path());
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        FileFailed(folder.string(), std::error_code(errno, std::generic_category()));
}

}  // namespace

BackupRules TheBackupRules() {
    BackupRules rules;
    rules.Folder = Setting("Folder");
    if (!fs::path(rules.Folder).is_absolute())
        rules.Folder = (fs::path(UserDataFolder()) / "zolmara" / "backups").string();
    rules.Last = NumberSetting("Last", rules.Last);
    rules.Days = NumberSetting("Days", rules.Days);
    return rules;
}

std::string BackupFolderOf(const std::string& crf) {
    const fs::path path = CanonicalPath(crf);
    std::string title = PlainFileName(path.stem().string());
    if (title.size() > kLongestTitle) title = LeftText(title, kLongestTitle / 4);
    return (fs::path(TheBackupRules().Folder) / (title + "-" + KeyOf(path.string()))).string();
}

std::vector<Backup> BackupsOf(const std::string& crf) {
    std::vector<Backup> backups;
    std::error_code error;
    for (fs::directory_iterator entry(BackupFolderOf(crf), error), end; !error && entry != end;
         entry.increment(error)) {
        auto backup = ReadName(entry->path().filename().string());
        std::error_code none;
        if (!backup || !entry->is_regular_file(none)) continue;
        backup->Path = entry->path().string();
        backup->Size = SizeOfFile(backup->Path);
        backups.push_back(*backup);
    }
    std::ranges::sort(backups, std::greater{}, &Backup::Which);
    return backups;
}

std::string BackupName(const Backup& backup) {
    const DateTime& time = backup.Time;
    return fmt::format("{:06}-{:04}{:02}{:02}-{:02}{:02}{:02}{}", backup.Which, time.Year(),
                       time.Month(), time.Day(), time.Hour(), time.Minute(), time.Second(), kEnd);
}

bool HasBackup(const std::string& folder, std::int64_t which) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto backup = ReadName(entry->path().filename().string());
        if (backup && backup->Which == which) return true;
    }
    return false;
}

void MakeBackupFolder(const std::string& folder, const std::string& crf) {
    MakeFolder(folder);
    const std::string note = (fs::path(folder) / kNote).string();
    if (!FileExists(note)) WriteWholeFile(note, CanonicalPath(crf).string() + "\n");
}

void MakePrivate(const std::string& path) {
    if (::chmod(path.c_str(), S_IRUSR | S_IWUSR) != 0)
        FileFailed(path, std::error_code(errno, std::generic_category()));
}

std::uintmax_t SizeOfFile(const std::string& path) {
    std::error_code error;
    const auto size = fs::file_size(path, error);
    return error ? 0 : size;
}

std::vector<Backup> BackupsToDelete(const std::vector<Backup>& backups, const BackupRules& rules) {
    std::set<std::int64_t> days;
    std::vector<Backup> unkept;
    for (std::size_t i = 0; i < backups.size(); ++i) {
        const bool newDay = days.insert(backups[i].Time.DayNumber()).second;
        const bool ofItsDay = newDay && static_cast<int>(days.size()) <= rules.Days;
        if (static_cast<int>(i) >= rules.Last && !ofItsDay) unkept.push_back(backups[i]);
    }
    return unkept;
}

}  // namespace zolmara
