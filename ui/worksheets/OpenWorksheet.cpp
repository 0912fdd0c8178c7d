#include "ui/worksheets/OpenWorksheet.h"

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

void SayThereIsNoWindow(const std::string& mode, const std::string& item,
                        std::optional<Currency> /*line*/) {
    TheDialogs().MsgBox(
        fmt::format("The window that {} worksheet {} is not part of this version yet.  "
                    "Use Print Select Worksheets to read a worksheet, and the ASCII "
                    "import to fill it.",
                    mode == "edit" ? "edits" : "shows", item),
        kInformation, std::string(kProductName));
}

}  // namespace

std::function<void(const std::string&, const std::string&, std::optional<Currency>)>
    gShowWorksheet = SayThereIsNoWindow;

void OpenWorksheet(const std::string& mode, const std::string& item, std::optional<Currency> line) {
    gShowWorksheet(mode, item, line);
}

}  // namespace zolmara::ui
