#pragma once

// The user's settings: one INI file, a section for each "Application/Section".

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace zolmara {

class Settings {
public:
    /// So long after its last change a file is as it looks: the system's clock of files stands
    /// still for some milliseconds, for two seconds on some disks, and a second change in that time
    /// would look like the first.
    static constexpr std::chrono::seconds kSettled{3};

    /// Settings of a file; a file that is not there has none.
    explicit Settings(std::string path, std::chrono::seconds settled = kSettled);

    /// The file in the user's configuration folder: "zolmara/settings.ini" in XDG_CONFIG_HOME,
    /// or in ~/.config.
    static std::string UserFile();

    const std::string& Path() const { return path_; }

    /// The value as the file has it now, whoever wrote it.
    std::string Get(const std::string& application, const std::string& section,
                    const std::string& key, const std::string& fallback) const;
    /// Writes the file at once, whole or not at all, with all that other programs have saved in it:
    /// of programs that save at the same moment each waits for the others. False when it cannot be
    /// written, when there is something under its name that is no settings file, or when the value
    /// would not stand on one line of it: no work of the user's hangs on a setting.
    bool Save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) const;

    /// How often the file was read, for tests: a file that stands as it was is not read again.
    std::int64_t ReadCount() const;

private:
    struct Kept;
    bool Refresh() const;
    bool Holds(const std::string& application, const std::string& section, const std::string& key,
               const std::string& value) const;

    std::string path_;
    std::chrono::seconds settled_;
    std::shared_ptr<Kept> kept_;  ///< the file as it was read last, shared with copies
};

}  // namespace zolmara
