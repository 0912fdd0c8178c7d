#include "ui/main/Done.h"

#include <filesystem>

#include "ui/main/QtHost.h"
#include "ui/main/frmMain.h"

namespace zolmara::ui {

void TellDone(const std::string& text) {
    if (frmMain* const main = TheQtHost().Main()) main->ShowDone(text);
}

std::string FileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

}  // namespace zolmara::ui
