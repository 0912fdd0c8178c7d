#include "store/files/UserFolders.h"

#include <cstdlib>
#include <filesystem>

namespace zolmara {
namespace {

std::string FolderOfUser(const char* variable, const char* inHome) {
    if (const char* told = std::getenv(variable); told && *told) return told;
    const char* home = std::getenv("HOME");
    return (std::filesystem::path(home ? home : ".") / inHome).string();
}

}  // namespace

std::string UserConfigFolder() { return FolderOfUser("XDG_CONFIG_HOME", ".config"); }
std::string UserDataFolder() { return FolderOfUser("XDG_DATA_HOME", ".local/share"); }

}  // namespace zolmara
