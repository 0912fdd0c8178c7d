#include "UiTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "EntryChild.h"
#include "core/Dialogs.h"
#include "import/ImportASCII.h"
#include "support/EnvironmentValue.h"
#include "support/Paths.h"
#include "ui/worksheets/OpenWorksheet.h"

namespace zolmara::ui {

void Wait(int milliseconds) {
    QEventLoop events;
    QTimer::singleShot(milliseconds, &events, &QEventLoop::quit);
    events.exec();
}

bool WaitFor(const std::function<bool()>& isSo) {
    constexpr int kLimit = 120'000;
    QElapsedTimer clock;
    clock.start();
    while (!isSo()) {
        if (clock.hasExpired(kLimit)) return false;
        Wait(1);
    }
    return true;
}

namespace {

/// What the program remembers of a statement goes into the test's own folder.
std::optional<test::EnvironmentValue> dataFolder;

}  // namespace

UiTest::UiTest() {
    dataFolder.emplace("XDG_DATA_HOME", folder.File("data"));
    DropCrf();
    gDebug = false;
    gLogType.clear();
    ImportErrorFlag = false;
    TheDesktop() = Script();
    host = std::make_unique<QtHost>(Settings(folder.File("settings.ini")), folder.Path().string());
}

UiTest::~UiTest() {
    windows_.clear();
    for (QWidget* form : OpenForms())
        if (form != main.get()) delete form;
    main.reset();
    DropCrf();
    gDebug = false;
    gLogType.clear();
    host.reset();
    TheDesktop() = RealDesktop();
    dataFolder.reset();
}

Desktop UiTest::Script() {
    Desktop desktop;
    desktop.MsgBox = [this](const std::string& text, int style, const std::string& title) {
        int answer = DefaultAnswer(style);
        if (!Answers.empty()) {
            answer = Answers.front();
            Answers.pop_front();
        }
        Boxes.push_back({text, style, title, answer});
        if (OnBox) OnBox();
        return answer;
    };
    desktop.ChooseFile = [this](const FileDialog& dialog) -> std::optional<std::string> {
        Dialogs.push_back(dialog);
        if (Files.empty()) return std::nullopt;
        const auto chosen = Files.front();
        Files.pop_front();
        return chosen;
    };
    desktop.SetUpPrinter = [this](QPrinter&, const std::string& title) {
        PrinterDialogs.push_back(title + (main->WelcomeVisible() ? " over the frame" : ""));
    };
    desktop.AskToPrint = [this](QPrinter& printer, int pages) {
        return OnAskToPrint && OnAskToPrint(printer, pages);
    };
    desktop.Print = [this](const std::vector<PrintJob>& jobs, QPrinter&) {
        Jobs.insert(Jobs.end(), jobs.begin(), jobs.end());
    };
    desktop.OpenDocument = [this](const std::string& path) { Documents.push_back(path); };
    desktop.RemovableDrives = [this] { return Drives; };
    desktop.AnotherCopyRuns = [this] { return CopyRuns; };
    desktop.EndProgram = [this] { ++Ended; };
    desktop.SplashTime = 0;
    return desktop;
}

void UiTest::Start() {
    main = std::make_unique<frmMain>();
    main->Load();
    main->show();
}

void UiTest::StartDebug() {
    host->SaveSetting("Zolmara 287-22", "Startup", "Debug", "True");
    Start();
}

std::string UiTest::MakeCrf(const std::string& name, const std::string& field,
                            const Variant& value) {
    const std::string path = folder.File(name);
    CreateCrf(path, test::SampleFields());
    if (!field.empty()) gDB.Execute("UPDATE Master SET " + field + " = ?;", {value});
    DropCrf();
    return path;
}

std::string UiTest::MakeSample(const std::string& name) {
    // Made once in a run; each test has a copy.
    static const test::TempFolder kept;
    static const std::string made = kept.File("Sample.CRF");
    const std::string path = folder.File(name);
    if (std::filesystem::exists(made)) {
        std::filesystem::copy_file(made, path);
        return path;
    }
    CreateCrf(path, {"287", "14-9012", "1/1/2023", "12/31/2023", "Northfield Health System"});
    ImportAsciiFile(std::string(test::kSamples) + "/northfield.txt");
    UnloadFormsLike("frmView");
    DropCrf();
    std::filesystem::copy_file(path, made);
    return path;
}

void UiTest::Open(const std::string& path) {
    Files.emplace_back(path);
    Trigger("mnuReportOpen");
}

bool UiTest::Enabled(const std::string& menu) const {
    const QAction* const action = main->Menu(menu);
    if (!action) ADD_FAILURE() << "There is no " << menu;
    return action && action->isEnabled();
}

bool UiTest::Visible(const std::string& control) const {
    const auto* const widget = main->findChild<QWidget*>(Q(control));
    if (!widget) ADD_FAILURE() << "There is no " << control;
    return widget && !widget->isHidden();
}

void UiTest::Trigger(const std::string& menu) {
    QAction* const action = main->Menu(menu);
    if (!action) ADD_FAILURE() << "There is no " << menu;
    if (action) action->trigger();
}

QWidget* UiTest::Form(const std::string& name) const {
    QWidget* const form = FindForm(name);
    if (!form) ADD_FAILURE() << name << " is not open";
    return form;
}

void UiTest::Click(const std::string& form, const std::string& button) {
    if (auto* const control = Control<QAbstractButton>(form, button)) control->click();
}

std::string UiTest::TextOf(const std::string& form, const std::string& field) const {
    const auto* const control = Control<QLineEdit>(form, field);
    return control ? S(control->text()) : "";
}

void UiTest::Key(const std::string& form, const std::string& field, const std::string& text) {
    if (auto* const control = Control<QLineEdit>(form, field)) control->setText(Q(text));
}

QWidget* UiTest::AddWindow(const std::string& name, const std::string& caption) {
    windows_.push_back(std::make_unique<QWidget>());
    QWidget* const window = windows_.back().get();
    window->setObjectName(Q(name));
    window->setWindowTitle(Q(caption));
    AddForm(window);
    window->show();
    return window;
}

std::string UiTest::Done() const { return S(main->findChild<QLabel*>("lblDone")->text()); }

std::vector<std::string> UiTest::BoxTexts() const {
    std::vector<std::string> texts;
    for (const test::Box& box : Boxes) texts.push_back(box.Text);
    return texts;
}

}  // namespace zolmara::ui

/// Without a screen, unless a platform is told: tests/desktop runs some of the tests on a display.
int main(int argc, char** argv) {
    const char* const platform = std::getenv("ZOLMARA_TEST_PLATFORM");
    setenv("QT_QPA_PLATFORM", platform ? platform : "offscreen", 1);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    if (zolmara::ui::IsEntryChild(argc, argv)) return zolmara::ui::BeEntryChild(argv);
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
