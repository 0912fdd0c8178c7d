#include "ui/tools/ExportTool.h"

#include <filesystem>
#include <functional>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "spreadsheet/CellsTemplate.h"
#include "spreadsheet/Export.h"
#include "spreadsheet/WriteCells.h"
#include "store/session/Session.h"
#include "ui/main/Done.h"
#include "ui/tools/frmCellsLeft.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "worksheets/SheetNames.h"

namespace zolmara::ui {
namespace {

constexpr const char* kWorkbooks = "Spreadsheets (*.xlsx)|*.xlsx";
constexpr const char* kCellFiles =
    "Spreadsheets (*.xlsx)|*.xlsx|Comma Separated Values (*.csv)|*.csv|Text Files (*.txt)|*.txt";

/// While a file is written.
class Writing {
public:
    explicit Writing(const std::string& path) {
        TheStatus().SetPointer(Pointer::Hourglass);
        TheStatus().ShowCalcMsg("Writing " + path);
    }
    ~Writing() {
        TheStatus().HideCalcMsg();
        TheStatus().SetPointer(Pointer::Normal);
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;
};

struct FileToWrite {
    const char* Title;
    const char* Done;    ///< "Exported to", ahead of the file's name
    std::string Behind;  ///< the CRF's name, in the name that is proposed
    const char* Filter;
};

/// Beside the open CRF, with its name.
std::string ProposedName(const FileToWrite& file) {
    const std::filesystem::path crf(gCRFPath);
    return (crf.parent_path() / (crf.stem().string() + file.Behind + ".xlsx")).string();
}

/// Asks for the file, writes it and tells so. The door asks by itself before it replaces one.
void LetWrite(const FileToWrite& file, const std::function<void(const std::string&)>& write) {
    if (!CommitOpenRows()) return;
    const auto path = TheDialogs().ChooseFile({.Save = true,
                                               .Title = file.Title,
                                               .FileName = ProposedName(file),
                                               .DefaultExt = ".xlsx",
                                               .Filter = file.Filter,
                                               .FilterIndex = 1,
                                               .Flags = 0});
    if (!path || path->empty()) return;
    {
        const Writing writing(*path);
        write(*path);
    }
    TellDone(std::string(file.Done) + " " + FileName(*path));
}

}  // namespace

void ExportToSpreadsheet(const std::string& item) {
    ExportChoice choice;
    if (!item.empty()) choice.Items = {item};
    LetWrite({"Export To Spreadsheet", "Exported to", item.empty() ? "" : " " + PrintedName(item),
              kWorkbooks},
             [&](const std::string& path) { ExportWorkbook(path, choice); });
}

void SaveKeyedCells() {
    std::vector<LeftCell> left;
    LetWrite({"Save Keyed Cells As", "Saved the keyed cells as", " Cells", kCellFiles},
             [&](const std::string& path) { left = WriteCells(path); });
    if (!left.empty()) ShowCellsLeft(std::move(left));
}

void SaveTemplate() {
    LetWrite({"Save A Template To Fill", "Saved the template as", " Template", kWorkbooks},
             WriteCellsTemplate);
}

}  // namespace zolmara::ui
