// The desktop program.

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "core/StandardFiles.h"
#include "store/session/Session.h"
#include "store/session/Settings.h"
#include "ui/main/FileRoads.h"
#include "ui/main/Logo.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/Theme.h"
#include "ui/main/frmMain.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace {

constexpr int kNoDisplay = 1;

/// What the toolkit cannot go on from: as a rule, that there is no display.
void EndOnFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    if (type != QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        return;
    }
    std::fprintf(stderr, "Zolmara 287-22 cannot show its windows.\n%s\n", qPrintable(text));
    std::_Exit(kNoDisplay);
}

bool HasDisplay() {
    const auto isSet = [](const char* name) {
        const char* value = std::getenv(name);
        return value && *value;
    };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

std::string FolderOfProgram() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "." : program.parent_path().string();
}

/// The folders that the program remembers are whole ones.
std::string FullPath(const char* path) {
    std::error_code error;
    const auto full = std::filesystem::absolute(path, error);
    return error ? path : full.string();
}

}  // namespace

int main(int argc, char** argv) {
    zolmara::HoldStandardFiles();
    if (!HasDisplay()) {
        std::fprintf(stderr,
                     "Zolmara 287-22 shows windows and there is no display here (DISPLAY is not "
                     "set).  zolmara-cli works without one.\n");
        return kNoDisplay;
    }
    qInstallMessageHandler(EndOnFatal);
    QApplication app(argc, argv);
    QApplication::setApplicationName("Zolmara 287-22");
    QApplication::setDesktopFileName("zolmara");
    QApplication::setWindowIcon(QIcon(zolmara::ui::LogoPixmap(64, 1)));
    using namespace zolmara;
    ui::QtHost host(Settings(Settings::UserFile()), FolderOfProgram());
    ui::ApplySavedTheme();
    ui::frmMain main;
    if (!main.Load()) return 0;
    main.show();
    std::vector<std::string> files;
    for (int at = 1; at < argc; ++at) files.push_back(FullPath(argv[at]));
    if (!files.empty()) main.Run([&] { ui::TakeFiles(files); });
    // The desktop's session ends: what is being keyed is stored first, and a refused row asks.
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &main,
                     [](QSessionManager& session) { ui::CommitBeforeSessionEnd(session); });
    const int status = QApplication::exec();
    DropCrf();
    return status;
}
