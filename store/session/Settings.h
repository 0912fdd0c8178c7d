#pragma once

// The user's settings: one INI file, a section for each "Application/Section".

#include <string>

namespace zolmara {

class Settings {
public:
    /// Settings of a file; a file that is not there has none.
    explicit Settings(std::string path);

    /// The file in the user's configuration folder: "zolmara/settings.ini" in XDG_CONFIG_HOME,
    /// or in ~/.config.
    static std::string UserFile();

    const std::string& Path() const { return path_; }

    std::string Get(const std::string& application, const std::string& section,
                    const std::string& key, const std::string& fallback) const;
    /// Writes the file at once, whole or not at all. False when it cannot be written, when there
    /// is something under its name that is no settings file, or when the value would not stand on
    /// one line of it: no work of the user's hangs on a setting.
    bool Save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) const;

private:
    std::string path_;
};

}  // namespace zolmara
