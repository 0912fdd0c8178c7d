#include "ecr/FileNames.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/PlainName.h"
#include "ecr/Labels.h"
#include "store/session/Session.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr std::size_t kStemLength = 11;  ///< base name, point and year
constexpr std::size_t kNameLength = 13;
constexpr std::size_t kPrefixLength = 2;

std::string BaseName() { return "HO" + ShortProviderNumber(); }

std::string_view LastCharacters(std::string_view text, std::size_t count) {
    return text.size() > count ? text.substr(text.size() - count) : text;
}

std::string FiscalYear() { return std::string(LastCharacters(Text(gFYEnd), 2)); }

/// The last digit of the number that follows line 3 of the status.
std::string VersionDigit() {
    const Variant number = gDB.Scalar("Select Col_1 From Sp1 Where LineNum=3;");
    return std::string(LastCharacters(NumberText(1 + NumOr(number)), 1));
}

std::string Stem() { return PlainFileName(fmt::format("{}.{}", BaseName(), FiscalYear())); }

FileDialog EcrDialog(const std::string& folder, const std::string& name) {
    FileDialog dialog;
    dialog.Save = true;
    dialog.Title = "Save ECR File As ...";
    dialog.FileName = (fs::path(folder) / name).string();
    dialog.Filter = fmt::format("ECR files ({0}*)|{0}*", Stem());
    dialog.Flags = 2054;  // warn before overwriting, no read-only box, the path must exist
    return dialog;
}

/// Whether another name than the government's is to be asked for again.
int AskToReenter() {
    return TheDialogs().MsgBox(
        "This is not a goverment file name, do you wish to re-enter it?",  // as given
        kYesNoCancel + kQuestion + kDefaultButton2, "Valid File?");
}

}  // namespace

std::string EcrFileName() { return fmt::format("{}A{}", Stem(), VersionDigit()); }

bool IsGovernmentName(std::string_view title) {
    const std::string stem = Stem();
    if (TextLength(title) != kNameLength || !SameText(LeftText(title, kStemLength), stem))
        return false;
    const std::size_t dot = title.find('.');
    if (dot == std::string_view::npos) return false;
    const std::string letter = UCase(title.substr(dot + 3, 1));
    return letter.size() == 1 && Between(letter[0], 'A', 'Z');
}

std::optional<std::string> AskEcrPath() {
    const std::string proposed = EcrFileName();
    std::string folder = gCRFDir;
    while (true) {
        const std::optional<std::string> chosen =
            TheDialogs().ChooseFile(EcrDialog(folder, proposed));
        if (!chosen) return std::nullopt;
        folder = FolderOf(*chosen);
        std::string path = *chosen;
        std::string title = UCase(FileTitle(path));
        if (title.find('.') == std::string::npos) {
            title += fmt::format(".{}A{}", FiscalYear(), VersionDigit());
            path = (fs::path(folder) / title).string();
        }
        if (IsGovernmentName(title)) return path;
        const int answer = AskToReenter();
        if (answer == kCancel) return std::nullopt;
        if (answer == kNo) return path;
    }
}

std::string PiPath(const std::string& ecrPath) {
    const std::string title = FileTitle(ecrPath);
    const std::size_t folder = ecrPath.size() - title.size();
    return ecrPath.substr(0, folder) + "PI" + std::string(MidText(title, kPrefixLength + 1));
}

std::string FileTitle(const std::string& path) { return fs::path(path).filename().string(); }

}  // namespace zolmara
