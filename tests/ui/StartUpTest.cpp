#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <fstream>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"

namespace zolmara::ui {
namespace {

class StartUp : public UiTest {};

TEST_F(StartUp, TheProgramBeginsWithTheWelcomeFrameAndItsCaption) {
    Start();
    EXPECT_EQ(S(main->windowTitle()), "Velquist -  Zolmara 287-22 (version " + gVersion + ")");
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_FALSE(Visible("lblHelp"));
    EXPECT_FALSE(Visible("lblCRFName"));
    EXPECT_FALSE(Visible("imgVelquist"));
    EXPECT_FALSE(Visible("txtCalcMsg"));
    EXPECT_EQ(main->pos(), QPoint(0, 0));
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(StartUp, TheFirstLineOfPrtTitleStandsInTheCaption) {
    std::ofstream(folder.File("PrtTitle.txt")) << "Lakeside CPAs - \nnot this\n";
    Start();
    EXPECT_EQ(S(main->windowTitle()), "Lakeside CPAs -  Zolmara 287-22 (version " + gVersion + ")");
}

TEST_F(StartUp, TheSplashShowsTheProgramAndGoes) {
    bool shown = false;
    std::string version;
    QTimer::singleShot(0, [&] {
        if (QWidget* splash = FindForm("frmSplash")) {
            shown = true;
            version = S(splash->findChild<QLabel*>("lblVersion")->text());
            EXPECT_EQ(splash->findChild<QLabel*>("lblProductName")->text(), "Zolmara 287");
            EXPECT_EQ(splash->findChild<QLabel*>("lblPlatform")->text(), "Form 287 22");
        }
    });
    TheDesktop().SplashTime = 50;
    Start();
    EXPECT_TRUE(shown);
    EXPECT_EQ(version, "Version " + gVersion);
    EXPECT_EQ(FindForm("frmSplash"), nullptr);
}

TEST_F(StartUp, TheDeveloperDoesNotWaitForTheSplash) {
    TheDesktop().SplashTime = 60'000;
    StartDebug();
    EXPECT_TRUE(gDebug);
    EXPECT_EQ(FindForm("frmSplash"), nullptr);
}

TEST_F(StartUp, ASecondCopySaysSoAndEnds) {
    CopyRuns = true;
    main = std::make_unique<frmMain>();
    EXPECT_FALSE(main->Load());
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_EQ(Boxes[0].Title, "Attempt to Run Multiple Copies of Zolmara 287-22");
    EXPECT_EQ(Boxes[0].Text,
              "A copy of Zolmara 287-22 is already running.  Only one copy may be run at a time.  "
              "After leaving this message box, this copy of Zolmara 287-22 will shut down.  Then, "
              "you may [1] use the already running copy, [2] shut down the already running copy "
              "and then restart it, or [3] call Velquist for additional assistance.");
    EXPECT_EQ(Ended, 1);
}

TEST_F(StartUp, TheCaptionOfHighQualityPrintingFollowsTheSetting) {
    Start();
    EXPECT_EQ(main->Menu("mnuReportUtilitiesHQ")->text(), "Turn High Quality Printing Off");
    host->SaveSetting("Zolmara-10", "Printing", "PrintQuality", "False");
    main.reset();
    Start();
    EXPECT_EQ(main->Menu("mnuReportUtilitiesHQ")->text(), "Turn High Quality Printing On");
}

TEST_F(StartUp, EachWelcomeButtonRunsItsCommand) {
    Start();
    Click("frmMain", "cmdOpen");
    ASSERT_EQ(Dialogs.size(), 1U);
    EXPECT_EQ(Dialogs[0].Title, "Open An Existing CRF");
    Click("frmMain", "cmdNew");
    EXPECT_NE(FindForm("frmCreateNewCRF"), nullptr);
    Click("frmCreateNewCRF", "cmdCancel");
    Click("frmMain", "cmdExit");
    EXPECT_EQ(Ended, 1);
}

TEST_F(StartUp, TheWelcomeFrameHasTheToldTexts) {
    Start();
    EXPECT_EQ(Control<QLabel>("frmMain", "lblWelcome")->text(),
              "Welcome to Velquist System's Zolmara 287-22");
    EXPECT_EQ(Control<QPushButton>("frmMain", "cmdOpen")->text(), "&Open");
    EXPECT_EQ(Control<QPushButton>("frmMain", "cmdExit")->text(), "E&xit");
}

TEST_F(StartUp, TheWindowFitsASmallScreen) {
    Start();
    EXPECT_LE(main->minimumSizeHint().width(), 640);
    EXPECT_LE(main->minimumSizeHint().height(), 400);
}

// --- The help text -------------------------------------------------------------------------

class HelpText : public UiTest {
protected:
    HelpText() { Start(); }
    /// Starts the animation, with short ticks.
    void Begin() {
        main->StartHelpText();
        Timer()->setInterval(1);
    }
    QTimer* Timer() const { return main->findChild<QTimer*>("tmrMain"); }
    QString Text() const { return Control<QLabel>("frmMain", "lblHelp")->text(); }
};

TEST_F(HelpText, ItTicksTenTimesASecond) {
    main->StartHelpText();
    EXPECT_EQ(Timer()->interval(), 100);
    EXPECT_TRUE(Timer()->isActive());
}

TEST_F(HelpText, ItBeginsFourteenLinesDownAndScrollsUp) {
    const QString rest = Text();
    EXPECT_TRUE(rest.startsWith("Use the menus at the top of the form to manipulate Zolmara.  "));
    qsizetype most = 0;
    Begin();
    QObject ticks;
    QObject::connect(Timer(), &QTimer::timeout, &ticks,
                     [&] { most = std::max(most, Text().count('\n')); });
    EXPECT_TRUE(WaitFor([&] { return !Timer()->isActive(); }));
    EXPECT_EQ(most, 14);
    EXPECT_FALSE(Timer()->isActive());
    EXPECT_EQ(Text(), rest);
    EXPECT_TRUE(Visible("lblHelp"));
}

TEST_F(HelpText, ACloseWhileItScrollsStripsTheReturnsOnTheNextTick) {
    const QString rest = Text();
    Begin();
    ASSERT_TRUE(WaitFor([&] { return Text() != rest; }));
    main->ShowWelcome();
    EXPECT_TRUE(WaitFor([&] { return !Timer()->isActive(); }));
    EXPECT_EQ(Text(), rest);
    EXPECT_FALSE(Timer()->isActive());
    EXPECT_FALSE(Visible("lblHelp"));
}

}  // namespace
}  // namespace zolmara::ui
