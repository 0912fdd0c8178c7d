#include "store/session/Settings.h"

// Settings are UTF-8 in the file and in the program alike.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include <cstdlib>
#include <filesystem>

#include "store/Dao.h"
#include "store/Files.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

std::string SectionName(const std::string& application, const std::string& section) {
    return application + "/" + section;
}

/// The file as it is now, since another program may have written to it. False for one that is
/// there and cannot be read.
bool Load(CSimpleIniA& ini, const std::string& path) {
    ini.SetUnicode();
    if (!FileExists(path)) return true;
    const std::optional<std::string> content = ReadWholeFile(path);
    return content && ini.LoadData(*content) >= 0;
}

fs::path ConfigFolder() {
    if (const char* configured = std::getenv("XDG_CONFIG_HOME"); configured && *configured)
        return configured;
    const char* home = std::getenv("HOME");
    return fs::path(home ? home : ".") / ".config";
}

}  // namespace

Settings::Settings(std::string path) : path_(std::move(path)) {}

std::string Settings::UserFile() { return (ConfigFolder() / "zolmara" / "settings.ini").string(); }

std::string Settings::Get(const std::string& application, const std::string& section,
                          const std::string& key, const std::string& fallback) const {
    CSimpleIniA ini;
    if (!Load(ini, path_)) return fallback;
    return ini.GetValue(SectionName(application, section).c_str(), key.c_str(), fallback.c_str());
}

bool Settings::Save(const std::string& application, const std::string& section,
                    const std::string& key, const std::string& value) const {
    CSimpleIniA ini;
    if (!Load(ini, path_)) return false;
    const std::string name = SectionName(application, section);
    // Every opening saves its folder; the same one again is not worth a write to the disk.
    if (const char* saved = ini.GetValue(name.c_str(), key.c_str()); saved && value == saved)
        return true;
    ini.SetValue(name.c_str(), key.c_str(), value.c_str());
    std::string content;
    if (ini.Save(content) < 0) return false;
    std::error_code error;
    if (const fs::path folder = fs::path(path_).parent_path(); !folder.empty())
        fs::create_directories(folder, error);
    try {
        WriteWholeFile(path_, content);
        return true;
    } catch (const StoreError&) {
        return false;
    }
}

}  // namespace zolmara
