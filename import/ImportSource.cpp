#include "import/ImportSource.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "store/CopyRows.h"
#include "store/Files.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kThisForm = "287";
constexpr std::string_view kFolderKey = "ImportCRFLoc";

std::string TitleOf(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

SourceResult Refuse(SourceResult why, const std::string& text) {
    TheDialogs().MsgBox(text, kCritical, "Invalid CRF");
    return why;
}

/// A file that only cannot be read just now is no worse for that: the reason is told.
SourceResult RefuseFile(const std::string& path, const StoreError& error) {
    std::string text = fmt::format(
        "The CRF file that was selected (\"{}\") is not a valid CRF file.", TitleOf(path));
    if (error.kind() != StoreError::Kind::NotADatabase)
        text += fmt::format("\r\n{}", PlainWords(error));
    return Refuse(SourceResult::Unreadable, text);
}

std::string ReadFormNum(Database& source) {
    const StoreError foreign(StoreError::Kind::NotADatabase, source.Path());
    if (!source.HasTable("Master") || source.Table("Master").FieldIndex("FormNum") < 0)
        throw foreign;
    const Variant form = source.Scalar("SELECT FormNum FROM Master;");
    if (form.IsNull()) throw foreign;
    return Text(form);
}

SourceResult RefuseForm(const std::string& path, const std::string& form) {
    return Refuse(SourceResult::OtherForm,
                  fmt::format("This program is for use only in producing CMS 287 Cost Reports.  "
                              "You have just attempted to open a CRF file ({}) containing data for "
                              "a CMS {} Cost Report.  Your request is being aborted.  Please "
                              "select a valid CRF.",
                              TitleOf(path), form));
}

/// The folder of the last source; before there was one, that of the last CRF.
FileDialog SourceDialog(const std::string& title) {
    FileDialog dialog = CrfDialog();
    const std::string folder = TheMachine().GetSetting(std::string(kProductName), "Startup",
                                                       std::string(kFolderKey), "None");
    if (folder != "None") dialog.FileName = (std::filesystem::path(folder) / "*.CRF").string();
    dialog.Title = title;
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    dialog.Flags = 4100;
    return dialog;
}

}  // namespace

SourceResult OpenImportSource(const std::string& path) {
    CloseImportSource();
    if (CrfIsOpen() && IsSameFile(path, gCRFPath))
        return Refuse(SourceResult::SameFile,
                      fmt::format("The import file (\"{}\") is the same file that is currently "
                                  "being used.  Please select another CRF file.",
                                  TitleOf(path)));
    try {
        Database source = OpenReadOnly(path);
        const std::string form = ReadFormNum(source);
        if (!form.starts_with(kThisForm)) return RefuseForm(path, form);
        NeedWhole(source);
        gImportDB = std::move(source);
    } catch (const StoreError& error) {
        return RefuseFile(path, error);
    }
    RememberFolder(std::string(kFolderKey), FolderOf(path));
    return SourceResult::Open;
}

std::string ImportTitle() { return gImportDB.IsOpen() ? TitleOf(gImportDB.Path()) : ""; }

bool IsImportSource(const std::string& path) {
    return gImportDB.IsOpen() && IsSameFile(path, gImportDB.Path());
}

void CloseImportSource() { gImportDB.Close(); }

std::optional<std::string> ChooseImportSource(const std::string& title) {
    const auto chosen = TheDialogs().ChooseFile(SourceDialog(title));
    return chosen && !chosen->empty() ? chosen : std::nullopt;
}

std::int16_t ImportCRF() {
    if (CloseAllForms(false) != 0) return 0;
    const auto chosen = ChooseImportSource("Import From An Existing CRF");
    if (!chosen) return 0;
    return OpenImportSource(*chosen) == SourceResult::Open ? 1 : 0;
}

}  // namespace zolmara
