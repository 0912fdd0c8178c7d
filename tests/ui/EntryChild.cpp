#include "EntryChild.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "UiTest.h"
#include "store/harness/Faults.h"
#include "ui/main/Desktop.h"
#include "ui/main/FileRoads.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/frmMain.h"
#include "ui/worksheets/OpenWorksheet.h"
#include "ui/worksheets/SheetView.h"
#include "ui/worksheets/frmWorksheet.h"

namespace zolmara::ui {
namespace {

constexpr const char* kFlag = "--entry-child";
constexpr const char* kCalls = "calls";
constexpr int kKill = -1;  ///< instead of an error number

std::string FolderOf(const std::string& crf) {
    return std::filesystem::path(crf).parent_path().string();
}
/// Beside the folder that is watched.
std::string ReportOf(const std::string& crf) { return FolderOf(crf) + "." + kCalls; }

/// The last key; what it does is what the program may die in.
void LastKey(ChildAct act, QWindow* window) {
    if (act == ChildAct::Row)
        QTest::keyClick(window, Qt::Key_Return);
    else
        QTest::keyClick(window, Qt::Key_V, Qt::ControlModifier);
}

void KeyAndDie(const std::string& crf, ChildAct act, int diesAt) {
    OpenWorksheet("edit", "A");
    auto* const sheet = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "A"));
    if (!sheet) return;
    QWindow* const window = sheet->windowHandle();
    // The keys go to the window that has the focus; that a window manager calls it active is not
    // waited for, as there may be none.
    if (!window || !WaitFor([&] { return QApplication::focusWindow() == window; })) return;
    sheet->GoToLine(Currency(8), "Col_1");
    if (act == ChildAct::Row)
        for (const char digit : {'7', '7', '7'}) QTest::keyClick(window, digit);
    else
        QApplication::clipboard()->setText("7771\n7772\n7773\n7774\n7775\n");
    FaultsArm(FolderOf(crf).c_str(), diesAt, kKill, "");
    LastKey(act, window);
    std::ofstream(ReportOf(crf)) << FaultsDisarm() << std::flush;
    raise(SIGKILL);
}

}  // namespace

bool IsEntryChild(int argc, char** argv) { return argc == 5 && std::strcmp(argv[1], kFlag) == 0; }

int BeEntryChild(char** argv) {
    int count = 1;
    QApplication app(count, argv);
    const std::string crf = argv[2];
    TheDesktop().SplashTime = 0;
    // Tests run beside one another.
    TheDesktop().AnotherCopyRuns = [] { return false; };
    TheDesktop().MsgBox = [](const std::string& text, int style, const std::string&) {
        std::fprintf(stderr, "%s\n", text.c_str());
        return DefaultAnswer(style);
    };
    QtHost host(Settings(FolderOf(crf) + ".ini"), FolderOf(crf));
    frmMain main;
    if (!main.Load()) return 1;
    main.show();
    main.Run([&] { TakeFile(crf); });
    KeyAndDie(crf, static_cast<ChildAct>(std::atoi(argv[3])), std::atoi(argv[4]));
    return 2;
}

int RunEntryChild(const EntryChild& child) {
    QFile::remove(Q(ReportOf(child.Crf)));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_DATA_HOME", Q(FolderOf(child.Crf)) + ".data");
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(),
                  {kFlag, Q(child.Crf), QString::number(static_cast<int>(child.Act)),
                   QString::number(child.DiesAt)});
    EXPECT_TRUE(program.waitForFinished(600'000));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit) << program.exitCode();
    EXPECT_EQ(program.exitCode(), SIGKILL) << program.readAllStandardError().constData();
    int calls = -1;
    std::ifstream(ReportOf(child.Crf)) >> calls;
    return calls;
}

}  // namespace zolmara::ui
