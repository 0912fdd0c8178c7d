#include "ecr/CopySubmission.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/Dialogs.h"
#include "ecr/FileNames.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/files/PutJournal.h"
#include "store/session/Session.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr std::string_view kLocation =
    "Or if you do not have a removable drive, click cancel.  The SN and PI files must be burned "
    "to a CD or copied to a flash drive.  The files are located at";

/// Puts two characters in place of those that the file's name begins with.
void Rename(std::string& path, std::string_view prefix) {
    const std::size_t start = path.size() - FileTitle(path).size();
    path.replace(start, std::min(prefix.size(), path.size() - start), prefix);
}

bool CopyTo(const std::string& source, const std::string& target) {
    try {
        CopyWholeFile(source, target);
        return true;
    } catch (const StoreError& error) {
        TheDialogs().MsgBox(
            fmt::format("The following error occurred while coping {} to {}.\r\n\r\n   {}", source,
                        target, PlainWords(error)),
            kOkOnly, "Copy Error");
        return false;
    }
}

}  // namespace

std::string CopyLocation(const std::string& ecrPath) {
    const std::size_t title = FileTitle(ecrPath).size();
    return std::string(kLocation) + ecrPath.substr(0, ecrPath.size() - title);
}

bool CopySubmission(std::string& path, const std::string& drive) {
    if (path.empty()) return true;
    FinishPuts(FolderOf(path));
    for (const std::string_view prefix : {"SN", "PI"}) {
        Rename(path, prefix);
        if (!CopyTo(path, (fs::path(drive) / FileTitle(path)).string())) return false;
    }
    return true;
}

}  // namespace zolmara
