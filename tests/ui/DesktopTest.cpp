#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <cstdlib>
#include <fstream>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "support/EnvironmentValue.h"
#include "support/Paths.h"
#include "ui/main/SingleCopy.h"

namespace zolmara::ui {
namespace {

/// The boxes and dialogs themselves, as the user sees them.
class RealDialogs : public UiTest {
protected:
    /// Looks at the dialog that the call brings up, and then ends it.
    template <class T>
    void WhenOpen(std::function<void(T*)> look) {
        QTimer::singleShot(0, [look] {
            auto* const dialog = qobject_cast<T*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            look(dialog);
        });
    }
    const Desktop desktop = RealDesktop();
};

TEST_F(RealDialogs, ABoxHasTheIconTheButtonsAndTheDefaultOfItsStyle) {
    struct Case {
        int Style;
        QMessageBox::Icon Icon;
        std::size_t Buttons;
        QMessageBox::StandardButton Default;
        int Answer;
    };
    const Case cases[] = {
        {kOkOnly, QMessageBox::NoIcon, 1, QMessageBox::Ok, kOk},
        {kCritical, QMessageBox::Critical, 1, QMessageBox::Ok, kOk},
        {289, QMessageBox::Question, 2, QMessageBox::Cancel, kCancel},
        {kYesNo + kExclamation, QMessageBox::Warning, 2, QMessageBox::Yes, kYes},
        {kYesNo + kDefaultButton2, QMessageBox::NoIcon, 2, QMessageBox::No, kNo},
        {kYesNoCancel + kInformation, QMessageBox::Information, 3, QMessageBox::Yes, kYes},
    };
    for (const Case& each : cases) {
        WhenOpen<QMessageBox>([&](QMessageBox* box) {
            EXPECT_EQ(box->icon(), each.Icon) << each.Style;
            EXPECT_EQ(static_cast<std::size_t>(box->buttons().size()), each.Buttons);
            EXPECT_EQ(box->defaultButton(), box->button(each.Default)) << each.Style;
            EXPECT_EQ(box->text(), "One\n<b>Two</b>");
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle(), "Title");
            box->defaultButton()->click();
        });
        EXPECT_EQ(desktop.MsgBox("One\r<b>Two</b>", each.Style, "Title"), each.Answer);
    }
}

TEST_F(RealDialogs, EscapeIsCancelWhereThereIsOne) {
    WhenOpen<QMessageBox>([](QMessageBox* box) { box->reject(); });
    EXPECT_EQ(desktop.MsgBox("One", kYesNoCancel, ""), kCancel);
}

TEST_F(RealDialogs, ABoxWithoutATitleHasTheProgramsName) {
    WhenOpen<QMessageBox>([](QMessageBox* box) {
        EXPECT_EQ(box->windowTitle(), "Zolmara 287-22");
        box->accept();
    });
    desktop.MsgBox("One", kOkOnly, "");
}

TEST_F(RealDialogs, ABoxOfManyLinesFitsTheScreenAndHasThemAllInItsDetails) {
    std::string text;
    for (int line = 1; line <= 2000; ++line) text += "Line " + std::to_string(line) + "\r";
    WhenOpen<QMessageBox>([](QMessageBox* box) {
        EXPECT_LE(box->height(), box->screen()->availableGeometry().height());
        EXPECT_TRUE(box->text().startsWith("Line 1\nLine 2\n"));
        EXPECT_TRUE(box->text().endsWith("\n... and 1985 more lines, in the details."))
            << S(box->text());
        EXPECT_TRUE(box->detailedText().contains("Line 2000"));
        QTest::keyClick(box, Qt::Key_Escape);
    });
    EXPECT_EQ(desktop.MsgBox(text, kExclamation, "Title"), kOk) << "Escape is its one button";
}

TEST_F(RealDialogs, TheListOfFilesShowsTheirWholeDates) {
    std::ofstream(folder.File("One.CRF")) << "x";
    FileDialog dialog;
    dialog.FileName = folder.File("*.CRF");
    WhenOpen<QFileDialog>([](QFileDialog* box) {
        const auto* const files = box->findChild<QTreeView*>("treeView");
        ASSERT_NE(files, nullptr);
        constexpr int kDate = 3;
        const QHeaderView* const heads = files->header();
        EXPECT_GE(heads->sectionSize(kDate), heads->sectionSizeHint(kDate));
        EXPECT_LE(heads->sectionViewportPosition(kDate) + heads->sectionSize(kDate),
                  files->viewport()->width())
            << "the date stands in sight";
        box->reject();
    });
    desktop.ChooseFile(dialog);
}

TEST_F(RealDialogs, ACancelledFileDialogChoosesNothing) {
    FileDialog dialog;
    dialog.Title = "Open An Existing CRF";
    dialog.FileName = folder.File("*.CRF");
    WhenOpen<QDialog>([](QDialog* box) {
        EXPECT_EQ(box->windowTitle(), "Open An Existing CRF");
        box->reject();
    });
    EXPECT_EQ(desktop.ChooseFile(dialog), std::nullopt);
}

TEST_F(RealDialogs, ThePreviewShowsTheJobs) {
    const std::vector<PrintJob> jobs = {{"", 7, true, false, {{1, {"one"}}, {2, {"two"}}}}};
    QPrinter printer;
    WhenOpen<QDialog>([](QDialog* box) {
        EXPECT_EQ(box->windowTitle(), "Print Preview");
        Wait(50);
        box->reject();
    });
    desktop.Print(jobs, printer);
}

// --- The program itself --------------------------------------------------------------------

class Program : public ::testing::Test {
protected:
    Program() {
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert("XDG_RUNTIME_DIR", Q(folder.Path().string()));
        environment_.insert("XDG_CONFIG_HOME", Q(folder.Path().string()));
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment_.remove(name);
    }
    void Run(QProcess& process) {
        process.setProcessEnvironment(environment_);
        process.start(test::kGui, {});
    }
    test::TempFolder folder;
    QProcessEnvironment environment_;
};

TEST_F(Program, WithoutADisplayItSaysSoAndEnds) {
    QProcess program;
    Run(program);
    ASSERT_TRUE(program.waitForFinished(120'000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_TRUE(program.readAllStandardError().contains("there is no display"));
}

TEST_F(Program, ADisplayThatDoesNotAnswerIsNoCrash) {
    environment_.insert("DISPLAY", ":987");
    QProcess program;
    Run(program);
    ASSERT_TRUE(program.waitForFinished(120'000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 1);
}

TEST_F(Program, ACopyThatRunsIsSeen) {
    environment_.insert("QT_QPA_PLATFORM", "offscreen");
    const test::EnvironmentValue place("XDG_RUNTIME_DIR", folder.Path());
    QProcess program;
    Run(program);
    ASSERT_TRUE(program.waitForStarted(120'000));
    ASSERT_TRUE(WaitFor([&] { return QFile::exists(Q(folder.File("zolmara-287-22.lock"))); }));
    EXPECT_TRUE(AnotherCopyRuns());
    program.kill();
    program.waitForFinished(120'000);
    EXPECT_FALSE(AnotherCopyRuns());
}

// --- By keyboard ---------------------------------------------------------------------------

class Keyboard : public UiTest {
protected:
    /// The controls that Tab comes to, from the first on.
    std::vector<std::string> TabOrder(const std::string& form) {
        std::vector<std::string> names;
        QWidget* const window = Form(form);
        for (QWidget* at = window->nextInFocusChain(); at != window; at = at->nextInFocusChain())
            if ((at->focusPolicy() & Qt::TabFocus) && at->isEnabled() && at->isVisible() &&
                !at->objectName().startsWith("qt_"))
                names.push_back(S(at->objectName()));
        return names;
    }
};

TEST_F(Keyboard, TabGoesInTheOrderOfReading) {
    Start();
    EXPECT_EQ(TabOrder("frmMain"), (std::vector<std::string>{"cmdNew", "cmdOpen", "cmdExit"}));
    Trigger("mnuReportNew");
    EXPECT_EQ(TabOrder("frmCreateNewCRF"),
              (std::vector<std::string>{"txtFormNum", "txtProviderNum", "txtFYStart", "txtFYEnd",
                                        "txtFacilityName", "cmdCreate", "cmdCancel"}));
    Click("frmCreateNewCRF", "cmdCancel");
    Open(MakeCrf("One.CRF", "ESTitle", "CFO"));
    Trigger("mnuReportPrintSelect");
    EXPECT_EQ(TabOrder("frmSelectivePrints"),
              (std::vector<std::string>{"lstWorksheets", "cmdSelectAll", "cmdClearAll", "cmdPrint",
                                        "cmdClose"}));
}

void PressKey(QWidget* widget, Qt::Key key) {
    for (const auto type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }
}

TEST_F(Keyboard, ReturnOnAButtonOfTheWelcomeFramePressesIt) {
    Start();
    auto* const open = main->findChild<QPushButton*>("cmdOpen");
    EXPECT_EQ(main->focusWidget(), main->findChild<QPushButton*>("cmdNew"));
    open->setFocus();
    PressKey(open, Qt::Key_Return);
    EXPECT_EQ(Dialogs.size(), 1U);
}

TEST_F(Keyboard, ReturnOnCancelCancels) {
    Start();
    Trigger("mnuReportNew");
    auto* const cancel = Control<QPushButton>("frmCreateNewCRF", "cmdCancel");
    PressKey(cancel, Qt::Key_Return);
    EXPECT_EQ(FindForm("frmCreateNewCRF"), nullptr);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(Keyboard, TheFindingsBeginInTheirGrid) {
    Start();
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportCalculate");
    EXPECT_EQ(Form("frmViewError")->focusWidget(), Control<QWidget>("frmViewError", "grd"));
    PressKey(Control<QPushButton>("frmViewError", "cmdClose"), Qt::Key_Enter);
    EXPECT_EQ(FindForm("frmViewError"), nullptr);
}

// --- Owners, places, and what a screen reader hears -----------------------------------------

class Places : public UiTest {};

TEST_F(Places, DialogsBelongToTheMainWindowAndWindowsDoNot) {
    Start();
    Trigger("mnuReportNew");
    EXPECT_EQ(Form("frmCreateNewCRF")->parentWidget(), main.get());
    EXPECT_TRUE(Form("frmCreateNewCRF")->isModal());
    Click("frmCreateNewCRF", "cmdCancel");
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesLog");
    EXPECT_EQ(Form("frmViewError")->parentWidget(), nullptr);
}

TEST_F(Places, HelperWindowsLeaveTheMainWindowUsable) {
    Start();
    Open(MakeCrf("One.CRF"));
    const std::pair<const char*, const char*> helpers[] = {
        {"mnuHelpAbout", "frmHelpAbout"},
        {"mnuReportPrintSelect", "frmSelectivePrints"},
        {"mnuReportUtilitiesHeader", "frmHeaderLines"}};
    for (const auto& [menu, name] : helpers) {
        Trigger(menu);
        EXPECT_FALSE(Form(name)->isModal()) << name;
        EXPECT_EQ(Form(name)->parentWidget(), main.get()) << name;
        UnloadForm(Form(name));
    }
}

TEST_F(Places, AHelperWindowIsOpenedOnce) {
    Start();
    Trigger("mnuHelpAbout");
    Trigger("mnuHelpAbout");
    EXPECT_EQ(OpenForms().size(), 2U);
}

TEST_F(Places, TheFindingsLeaveTheMenusInSight) {
    Start();
    Open(MakeCrf("One.CRF"));
    Trigger("mnuReportUtilitiesLog");
    const QWidget* const menus = main->menuWidget();
    const int end = menus->mapToGlobal(QPoint(0, menus->height())).y();
    EXPECT_GT(Form("frmViewError")->geometry().top(), end);
}

TEST_F(Places, ABoxBelongsToTheFormThatTheUserLooksAt) {
    Start();
    Trigger("mnuReportNew");
    EXPECT_EQ(DialogOwner(), Form("frmCreateNewCRF"));
    Click("frmCreateNewCRF", "cmdCancel");
    EXPECT_EQ(DialogOwner(), main.get());
}

TEST_F(Places, ADialogIsNoTallerThanTheScreenBelowItsTitle) {
    QDialog dialog;
    const QSize screen = dialog.screen()->availableSize();
    FitScreen(&dialog, QSize(300, 200));
    EXPECT_EQ(dialog.size(), QSize(300, 200));
    FitScreen(&dialog, QSize(9000, 9000));
    EXPECT_EQ(dialog.width(), screen.width());
    EXPECT_LT(dialog.height(), screen.height());
}

TEST_F(Places, FormsAnnounceThemselves) {
    Start();
    const auto role = [](QWidget* form) {
        return QAccessible::queryAccessibleInterface(form)->role();
    };
    EXPECT_EQ(role(main.get()), QAccessible::Window);
    Trigger("mnuHelpAbout");
    EXPECT_EQ(role(Form("frmHelpAbout")), QAccessible::Dialog);
    Click("frmHelpAbout", "cmdHelpAboutOK");
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    Trigger("mnuReportUtilitiesLog");
    EXPECT_EQ(role(Form("frmViewError")), QAccessible::Window);
    EXPECT_EQ(S(main->findChild<QWidget*>("lblCRFName")->accessibleName()),
              "Open Cost Report File " + path);
}

TEST_F(Keyboard, NoWindowIsLargerThanASmallScreen) {
    Start();
    Open(MakeCrf("One.CRF"));
    host->EnableMenu("mnuReportSubmit", true);
    // Half of 1280 by 800, which a scale of 200 % leaves.
    for (const char* menu : {"mnuReportUtilitiesLog", "mnuReportPrintSelect", "mnuHelpAbout",
                             "mnuReportUtilitiesHeader", "mnuReportElectronically"}) {
        Trigger(menu);
        QWidget* const form = OpenForms().back();
        EXPECT_NE(form, main.get()) << menu;
        EXPECT_LE(form->minimumSizeHint().width(), 640) << menu;
        EXPECT_LE(form->minimumSizeHint().height(), 400) << menu;
        UnloadForm(form);
    }
}

}  // namespace
}  // namespace zolmara::ui
