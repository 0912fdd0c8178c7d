#include "ui/tools/ExportTool.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "spreadsheet/Export.h"
#include "store/session/Session.h"

namespace zolmara::ui {
namespace {

constexpr const char* kTitle = "Export To Spreadsheet";

/// While the workbook is written.
class Exporting {
public:
    explicit Exporting(const std::string& path) {
        TheStatus().SetPointer(Pointer::Hourglass);
        TheStatus().ShowCalcMsg("Writing " + path);
    }
    ~Exporting() {
        TheStatus().HideCalcMsg();
        TheStatus().SetPointer(Pointer::Normal);
    }
    Exporting(const Exporting&) = delete;
    Exporting& operator=(const Exporting&) = delete;
};

/// The open CRF's name, beside it.
std::string StartOfDialog() {
    return std::filesystem::path(gCRFPath).replace_extension(".xlsx").string();
}

}  // namespace

void ExportToSpreadsheet() {
    // The door asks itself before it replaces a file.
    const auto path = TheDialogs().ChooseFile({.Save = true,
                                               .Title = kTitle,
                                               .FileName = StartOfDialog(),
                                               .DefaultExt = ".xlsx",
                                               .Filter = "Spreadsheets (*.xlsx)|*.xlsx",
                                               .FilterIndex = 1,
                                               .Flags = 0});
    if (!path) return;
    {
        const Exporting exporting(*path);
        ExportWorkbook(*path);
    }
    TheDialogs().MsgBox(fmt::format("The statement was written to {}.", *path), kInformation,
                        kTitle);
}

}  // namespace zolmara::ui
