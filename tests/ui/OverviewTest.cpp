// What fills the main window while a CRF is open: the list of worksheets, the state, the figures
// and the pictures; and the roads to files.

#include <QAction>
#include <QComboBox>
#include <QDropEvent>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include "SheetTest.h"
#include "ui/main/FileRoads.h"
#include "ui/overview/BarPicture.h"
#include "ui/overview/StatementNotes.h"

namespace zolmara::ui {
namespace {

class OverviewTest : public SheetTest {
protected:
    OverviewTest() { Start(); }
    ~OverviewTest() override {
        DropCrf();
        FollowNotes();
    }
    void OpenSample(bool calculated = true) {
        Open(MakeSample("Sample.CRF"));
        if (calculated) Calculate();
        ASSERT_TRUE(Told([this] { return Rows() == 48; })) << Rows();
    }
    void Calculate() {
        Trigger("mnuReportCalculate");
        Trigger("mnuViewCloseAll");
        Boxes.clear();
        Settle();
    }
    /// Lets what waits for the end of a command run.
    static void Settle() { QCoreApplication::processEvents(); }
    template <class Condition>
    static bool Told(const Condition& condition) {
        return WaitFor(condition);
    }
    template <class T>
    T* Part(const char* name) const {
        return main->findChild<T*>(name);
    }
    QTreeWidget* Sheets() const { return Part<QTreeWidget>("treSheets"); }
    int Rows() const { return Sheets()->topLevelItemCount(); }
    QTreeWidgetItem* Sheet_(const std::string& start) const {
        for (int row = 0; row < Rows(); ++row)
            if (S(Sheets()->topLevelItem(row)->text(0)).starts_with(start))
                return Sheets()->topLevelItem(row);
        ADD_FAILURE() << "no row of " << start;
        return nullptr;
    }
    std::vector<std::string> Shown() const {
        std::vector<std::string> names;
        for (int row = 0; row < Rows(); ++row)
            if (!Sheets()->topLevelItem(row)->isHidden())
                names.push_back(S(Sheets()->topLevelItem(row)->text(0)));
        return names;
    }
    /// Drags files over the window and lets them fall there; whether the window takes them.
    bool Drop(const std::vector<std::string>& files) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& file : files) urls << QUrl::fromLocalFile(Q(file));
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(main.get(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(main.get(), &event);
        // What the drop asks for comes behind it.
        bool next = false;
        QTimer::singleShot(0, [&] { next = true; });
        EXPECT_TRUE(WaitFor([&] { return next; }));
        return true;
    }
    std::string Label(const char* name) const { return S(Part<QLabel>(name)->text()); }
    std::vector<std::string> Next() const {
        std::vector<std::string> steps;
        const auto* const list = Part<QListWidget>("lstNext");
        for (int row = 0; row < list->count(); ++row) steps.push_back(S(list->item(row)->text()));
        return steps;
    }
    bool HasNext(const std::string& text) const {
        const auto steps = Next();
        return std::ranges::find(steps, text) != steps.end();
    }
};

// --- The list of worksheets ----------------------------------------------------------------

TEST_F(OverviewTest, WithoutACrfTheWelcomeFrameStandsAlone) {
    EXPECT_TRUE(Part<QWidget>("overview")->isHidden());
    OpenSample(false);
    EXPECT_FALSE(Part<QWidget>("overview")->isHidden());
    Trigger("mnuReportClose");
    EXPECT_TRUE(Part<QWidget>("overview")->isHidden());
    EXPECT_EQ(Rows(), 0) << "nothing of the closed CRF stays";
}

TEST_F(OverviewTest, EveryWorksheetHasItsTitleAndState) {
    OpenSample(false);
    EXPECT_EQ(S(Sheet_("A-7 Part II")->text(0)),
              "A-7 Part II, Reconciliation of capital cost centers");
    EXPECT_EQ(Sheet_("A, ")->text(1), "keyed");
    EXPECT_EQ(Sheet_("F Part I,")->text(1), "empty");
    Calculate();
    ASSERT_TRUE(Told([this] { return Sheet_("A, ")->text(1) == "calculated"; }));
    EXPECT_EQ(Sheet_("F Part I,")->text(1), "calculated");
    EXPECT_EQ(Sheet_("S-1 Part I,")->text(1), "keyed") << "no calculation writes there";
}

TEST_F(OverviewTest, AWorksheetShowsItsErrorsAndWarnings) {
    OpenSample();
    for (const auto* level : {"Non-Fatal Error", "Non-Fatal Error", "Potential Error"})
        gDB.Execute("INSERT INTO Error ([Level], Code, Message) VALUES (?, '1090', ?);",
                    {level, "Worksheet A-8: line 2 column 3 must"});
    main->RefreshMenus();
    ASSERT_TRUE(Told([this] { return !Sheet_("A-8,")->text(2).isEmpty(); }));
    EXPECT_EQ(Sheet_("A-8,")->text(2), "2 errors, 1 warning");
    EXPECT_TRUE(Sheet_("A-8,")->font(0).bold());
    EXPECT_EQ(Sheet_("A-6,")->text(2), "");
    Part<QLineEdit>("txtFilter")->setText("1090");
    EXPECT_EQ(Shown(), std::vector<std::string>{"A-8, Adjustments to expenses"});
}

TEST_F(OverviewTest, TheFilterFindsAWordOfTheTitle) {
    OpenSample(false);
    Part<QLineEdit>("txtFilter")->setText("POOL");
    EXPECT_EQ(Shown(), (std::vector<std::string>{
                           "Pooled Allocation Statistical Basis",
                           "E, Pooled allocation to the parts of the chain",
                           "E-1 Part I, Pooled allocation, healthcare provider components",
                           "E-1 Part II, Pooled allocation, non-healthcare components",
                           "E-1 Part III, Pooled allocation, region / division components"}));
    Part<QLineEdit>("txtFilter")->clear();
    EXPECT_EQ(Shown().size(), 48u);
}

TEST_F(OverviewTest, ReturnOpensTheViewAndWithControlTheEditor) {
    OpenSample(false);
    Sheets()->setCurrentItem(Sheet_("A-8,"));
    QTest::keyClick(Sheets(), Qt::Key_Return);
    EXPECT_NE(FindOpenForm("view", "A8"), nullptr);
    QTest::keyClick(Sheets(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_NE(FindOpenForm("edit", "A8"), nullptr);
    Part<QLineEdit>("txtFilter")->setText("A-6");
    QTest::keyClick(Part<QLineEdit>("txtFilter"), Qt::Key_Return);
    EXPECT_NE(FindOpenForm("view", "A6"), nullptr);
}

TEST_F(OverviewTest, TheListKeepsToTheGatesOfTheMenus) {
    OpenSample(false);
    Sheet("edit", "CCs");
    Sheets()->setCurrentItem(Sheet_("A-8,"));
    QTest::keyClick(Sheets(), Qt::Key_Return);
    EXPECT_EQ(FindOpenForm("view", "A8"), nullptr);
    ASSERT_EQ(Boxes.size(), 1u);
    EXPECT_TRUE(Boxes[0].Text.starts_with("Worksheet A8 cannot be opened to view now."));
}

TEST_F(OverviewTest, ItsContextMenuPrintsExportsExplainsAndRebuilds) {
    OpenSample();
    Sheets()->setCurrentItem(Sheet_("A-8,"));
    Part<QAction>("actPrint")->trigger();
    EXPECT_EQ(Jobs.size(), 1u);
    Files.emplace_back(folder.File("one.xlsx"));
    Part<QAction>("actExport")->trigger();
    EXPECT_EQ(Dialogs.back().FileName, folder.File("Sample A-8.xlsx"));
    EXPECT_EQ(Done(), "Exported to one.xlsx");
    EXPECT_TRUE(std::filesystem::exists(folder.File("one.xlsx")));
    Part<QAction>("actRebuild")->trigger();
    EXPECT_EQ(Control<QComboBox>("frmReBuild_A_Worksheet", "cboReBuild")->currentText(), "A8");
    Click("frmReBuild_A_Worksheet", "cmdCancel");
    auto* const list = Part<QWidget>("navigator");
    list->findChild<QAction*>("actExplain")->trigger();
    QWidget* told = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == "wndExplain" && !window->isHidden()) told = window;
    ASSERT_NE(told, nullptr);
    EXPECT_TRUE(S(told->findChild<QLabel*>("lblCell")->text()).starts_with("A-8, line 100"));
}

TEST_F(OverviewTest, EveryWorksheetOfTheListIsExportedByItself) {
    OpenSample(false);
    for (const char* start : {"Cost Centers", "Pooled Allocation", "A, ", "E-1 Part II,", "S-2"}) {
        Sheets()->setCurrentItem(Sheet_(start));
        const std::string out = folder.File(std::string("of ") + start + ".xlsx");
        Files.emplace_back(out);
        Part<QAction>("actExport")->trigger();
        EXPECT_TRUE(std::filesystem::exists(out)) << start;
    }
    EXPECT_TRUE(Boxes.empty()) << ::testing::PrintToString(BoxTexts());
}

TEST_F(OverviewTest, TheColumnOfTheFindingsShowsWhereThereAreSome) {
    OpenSample();
    EXPECT_TRUE(Sheets()->isColumnHidden(2)) << "the names have the room";
    gDB.Execute("INSERT INTO Error ([Level], Code, Message) VALUES ('Potential Error', '1090', ?);",
                {"Worksheet A-8: line 2 column 3 must"});
    main->RefreshMenus();
    EXPECT_TRUE(Told([this] { return !Sheets()->isColumnHidden(2); }));
}

// --- State, figures, pictures --------------------------------------------------------------

TEST_F(OverviewTest, TheSummaryTellsWhoseItIsAndItsState) {
    OpenSample(false);
    EXPECT_EQ(Label("lblWho"), "Northfield Health System (14-9012), 1/1/2023 to 12/31/2023");
    EXPECT_EQ(Label("lblSigned"), "no");
    EXPECT_EQ(Label("lblCalculated"), "not in this session");
    EXPECT_EQ(Label("lblSince"), "not calculated in this session");
    Calculate();
    ASSERT_TRUE(Told([this] { return Label("lblSince") == "nothing"; })) << Label("lblSince");
    EXPECT_NE(Label("lblCalculated"), "not in this session");
    EXPECT_EQ(Label("lblChecked"), Label("lblCalculated"));
}

TEST_F(OverviewTest, ACalculationThatChangesNothingIsToldToo) {
    OpenSample();
    const std::string path = gCRFPath;
    DropCrf();
    FollowNotes();
    std::filesystem::remove_all(folder.File("data"));
    Open(path);
    ASSERT_TRUE(Told([this] { return HasNext("Not calculated in this session"); }));
    Calculate();
    EXPECT_TRUE(Told([this] { return !HasNext("Not calculated in this session"); }));
}

TEST_F(OverviewTest, WhatIsKeyedAfterwardsIsCounted) {
    OpenSample();
    auto* a = Sheet("edit", "A");
    Enter(a, 8, "Col_1", "1234");
    ASSERT_TRUE(a->CommitGrid());
    EXPECT_TRUE(Told([this] { return Label("lblSince") == "1 entry"; })) << Label("lblSince");
    EXPECT_TRUE(HasNext("1 entry keyed since the last calculation"));
}

TEST_F(OverviewTest, TheStateIsKnownInTheNextSessionUnlessTheFileWasChanged) {
    OpenSample();
    const std::string when = Label("lblCalculated");
    const std::string path = gCRFPath;
    Trigger("mnuReportClose");
    Open(path);
    ASSERT_TRUE(Told([&] { return Label("lblCalculated") == when; })) << Label("lblCalculated");
    EXPECT_EQ(Label("lblSince"), "nothing");
    Trigger("mnuReportClose");
    // Another program has written to it.
    std::filesystem::last_write_time(
        path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    Open(path);
    EXPECT_TRUE(Told([&] { return Label("lblCalculated") == "not in this session"; }))
        << Label("lblCalculated");
}

/// By the sample's own accounts: 130,744,288 of expenses, 2,991,421 of adjustments taken off.
TEST_F(OverviewTest, TheFiguresAreTheSamplesAndLeadToTheirCells) {
    OpenSample();
    auto* const figures = Part<QTableWidget>("grdFigures");
    ASSERT_EQ(figures->rowCount(), 11);
    EXPECT_EQ(figures->item(0, 0)->text(), "Expenses per books");
    EXPECT_EQ(figures->item(0, 1)->text(), "130,744,288");
    EXPECT_EQ(figures->item(3, 1)->text(), "-2,991,421");
    EXPECT_EQ(figures->item(4, 1)->text(), "127,752,867");
    EXPECT_EQ(figures->item(4, 2)->text(), "A, line 100, column 5");
    emit figures->itemActivated(figures->item(4, 1));
    auto* view = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "A"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Current(view), "100 Col_5");
}

TEST_F(OverviewTest, ThePathOfTheMoneyAddsUpAndIsToldInWords) {
    OpenSample();
    auto* const picture = Part<BarPicture>("picMoney");
    const auto& bars = picture->Bars();
    ASSERT_EQ(bars.size(), 7u);
    EXPECT_EQ(bars[0].Amount + bars[1].Amount + bars[2].Amount, bars[3].Amount);
    EXPECT_EQ(bars[4].Amount + bars[5].Amount + bars[6].Amount, bars[3].Amount);
    EXPECT_EQ(bars[2].From, bars[0].To + bars[1].Amount) << "the adjustments hang on the expenses";
    EXPECT_EQ(bars[6].To, bars[3].To) << "the shares end at the net";
    EXPECT_NE(bars[0].Fill, bars[2].Fill);
    EXPECT_TRUE(picture->accessibleDescription().contains("Adjustments -2,991,421"));
    picture->setFocus();
    QTest::keyClick(picture, Qt::Key_End);
    EXPECT_TRUE(picture->accessibleName().endsWith("Pooled allocations 42,414,093"))
        << S(picture->accessibleName());
    QTest::keyClick(picture, Qt::Key_Return);
    auto* view = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "A"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Current(view), "100 Col_8");
}

/// 4,170,561 on F, 26,905,474 on F-1 and -396,358 on F-2 of the memorial hospital.
TEST_F(OverviewTest, TheTenComponentsThatBearMostStandInOrder) {
    OpenSample();
    auto* const picture = Part<BarPicture>("picComponents");
    const auto& bars = picture->Bars();
    ASSERT_EQ(bars.size(), 10u);
    EXPECT_EQ(bars[0].Name, "Northfield Memorial Hospital");
    EXPECT_EQ(bars[0].Amount, NumOr(gDB.Scalar("SELECT Col_4 FROM Fp1 WHERE LineNum=1;")) +
                                  NumOr(gDB.Scalar("SELECT Col_9 FROM F1p1 WHERE LineNum=1;")) +
                                  NumOr(gDB.Scalar("SELECT Col_4 FROM F2p1 WHERE LineNum=1;")));
    for (std::size_t i = 1; i < bars.size(); ++i) EXPECT_GE(bars[i - 1].Amount, bars[i].Amount);
    QTest::mouseClick(picture, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    auto* view = dynamic_cast<frmWorksheet*>(FindOpenForm("view", "F1p1"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Current(view), "1 Col_9");
}

TEST_F(OverviewTest, NoFigureLosesItsNameOrItsAmount) {
    OpenSample();
    main->resize(1280, 768);
    Settle();
    auto* const figures = Part<QTableWidget>("grdFigures");
    for (int row = 0; row < figures->rowCount(); ++row)
        for (int column = 0; column < 2; ++column) {
            const QString text = figures->item(row, column)->text();
            EXPECT_LE(figures->fontMetrics().horizontalAdvance(text), figures->columnWidth(column))
                << S(text);
        }
    EXPECT_EQ(figures->item(0, 2)->toolTip(),
              "Expenses per books: 130,744,288  (A, line 100, column 1)");
}

TEST_F(OverviewTest, OnASmallScreenItsPartsStandBelowEachOther) {
    OpenSample();
    auto* const state = Part<QLabel>("lblWho");
    auto* const next = Part<QListWidget>("lstNext");
    const auto place = [this](QWidget* part) { return part->mapTo(main.get(), QPoint()); };
    main->resize(1280, 768);
    EXPECT_TRUE(Told([&] { return place(next).x() > place(state).x() + 100; }));
    // Half of 1280 by 800, which a scale of 200 % leaves.
    main->resize(640, 400);
    EXPECT_TRUE(Told([&] {
        return place(next).y() > place(state).y() + 100 &&
               std::abs(place(next).x() - place(state).x()) < 50;
    }));
}

// --- What to do next -----------------------------------------------------------------------

TEST_F(OverviewTest, ANewStatementNamesWhatIsMissing) {
    Open(MakeCrf("New.CRF"));
    ASSERT_TRUE(Told([this] { return !Next().empty(); }));
    EXPECT_EQ(Next(),
              (std::vector<std::string>{
                  "S-1 Part I: no contact is keyed", "S-1 Part I: no type of control is keyed",
                  "S-2: no components are keyed", "A: no expenses are keyed",
                  "Not calculated in this session", "Not signed: calculate first"}));
    auto* const list = Part<QListWidget>("lstNext");
    emit list->itemActivated(list->item(3));
    auto* a = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "A"));
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(Current(a), "1 Col_1");
}

TEST_F(OverviewTest, ACalculatedStatementWaitsForItsSignature) {
    OpenSample();
    EXPECT_TRUE(Told([this] { return Next() == std::vector<std::string>{"Not signed"}; }))
        << ::testing::PrintToString(Next());
    auto* const list = Part<QListWidget>("lstNext");
    emit list->itemActivated(list->item(0));
    EXPECT_NE(FindForm("frmESCert"), nullptr);
}

TEST_F(OverviewTest, SigningAndBuildingTheFilesLeavesTheCalculationGood) {
    OpenSample();
    Trigger("mnuReportElectronically");
    Key("frmESCert", "txtESFirst", "Ingrid");
    Key("frmESCert", "txtESLast", "Vasquez");
    Key("frmESCert", "txtESTitle", "CFO");
    const std::string ecr = folder.File("HO149012.23A1");
    Files.emplace_back(ecr);
    Click("frmESCert", "cmdAccept");
    ASSERT_TRUE(std::filesystem::exists(ecr));
    const std::vector<std::string> done{"Nothing: calculated, checked and signed"};
    EXPECT_TRUE(Told([&] { return Next() == done; })) << ::testing::PrintToString(Next());
    EXPECT_EQ(Label("lblSince"), "nothing");
    Form("frmCopy2Floppy")->close();
    auto* a = Sheet("edit", "A");
    Enter(a, 8, "Col_1", "1234");
    ASSERT_TRUE(a->CommitGrid());
    EXPECT_TRUE(Told([this] { return HasNext("1 entry keyed since the last calculation"); }));
}

TEST_F(OverviewTest, BuildingTheFilesOfASheetSignedByHandLeavesTheCalculationGood) {
    OpenSample();
    Files.emplace_back(folder.File("HO149012.23A1"));
    Trigger("mnuReportManually");
    ASSERT_TRUE(std::filesystem::exists(folder.File("HO149012.23A1")));
    EXPECT_TRUE(Told([this] { return Label("lblSince") == "nothing"; })) << Label("lblSince");
    EXPECT_FALSE(HasNext("The file was changed since the last calculation"));
}

TEST_F(OverviewTest, HeaderLinesAndAPrintLeaveTheCalculationGood) {
    OpenSample();
    Trigger("mnuReportUtilitiesHeader");
    Control<QTableWidget>("frmHeaderLines", "grdHeaderLines")->item(0, 1)->setText("Draft");
    Click("frmHeaderLines", "cmdUpdate");
    Trigger("mnuReportPrint");
    Form("frmHeaderLines")->close();
    EXPECT_EQ(Text(gDB.Scalar("SELECT LineText FROM HeaderLines WHERE LineNum = 1;")), "Draft");
    EXPECT_TRUE(Told([this] { return Label("lblSince") == "nothing"; })) << Label("lblSince");
}

TEST_F(OverviewTest, AStatementThatIsOpenedAgainIsCalculatedAheadOfItsSignature) {
    // It was calculated in an earlier session; the files are built after a calculation of this one.
    OpenSample();
    const std::string path = gCRFPath;
    Trigger("mnuReportClose");
    Open(path);
    EXPECT_FALSE(Enabled("mnuReportElectronically"));
    EXPECT_TRUE(Told([this] {
        return Next() == std::vector<std::string>{"Not signed: calculate first"};
    })) << ::testing::PrintToString(Next());
    auto* const list = Part<QListWidget>("lstNext");
    emit list->itemActivated(list->item(0));
    EXPECT_TRUE(Enabled("mnuReportElectronically"));
    EXPECT_TRUE(Told([this] { return Next() == std::vector<std::string>{"Not signed"}; }))
        << ::testing::PrintToString(Next());
}

TEST_F(OverviewTest, ErrorsLeadToTheFindings) {
    OpenSample();
    gDB.Execute("INSERT INTO Error ([Level], Code, Message) VALUES ('Non-Fatal Error','1','x');");
    main->RefreshMenus();
    ASSERT_TRUE(Told([this] { return HasNext("1 error of the edit checks"); }));
    auto* const list = Part<QListWidget>("lstNext");
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->text() == "1 error of the edit checks")
            emit list->itemActivated(list->item(row));
    EXPECT_NE(FindForm("frmViewError"), nullptr);
}

// A figure that is keyed again takes the errors away; until then the files cannot be built.
TEST_F(OverviewTest, AStatementWithErrorsIsSignedAfterThem) {
    OpenSample();
    gDB.Execute("UPDATE S2p1 SET Col_2 = Null WHERE LineNum = 1;");
    Trigger("mnuReportCalculate");
    EXPECT_FALSE(Enabled("mnuReportElectronically"));
    ASSERT_TRUE(Told([this] { return HasNext("Not signed: the errors come first"); }))
        << ::testing::PrintToString(Next());
    CloseAllForms(false);
    auto* const list = Part<QListWidget>("lstNext");
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->text() == "Not signed: the errors come first")
            emit list->itemActivated(list->item(row));
    EXPECT_NE(FindForm("frmViewError"), nullptr);
}

// --- Files ---------------------------------------------------------------------------------

TEST_F(OverviewTest, RecentFilesStandBesideTheWelcomeFrameAndOpen) {
    EXPECT_TRUE(Part<QWidget>("fraRecent")->isHidden());
    OpenSample(false);
    const std::string path = gCRFPath;
    Trigger("mnuReportClose");
    EXPECT_FALSE(Part<QWidget>("fraRecent")->isHidden());
    auto* const list = Part<QListWidget>("lstRecent");
    ASSERT_EQ(list->count(), 1);
    EXPECT_TRUE(list->item(0)->text().startsWith("Sample.CRF"));
    emit list->itemActivated(list->item(0));
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, path);
}

TEST_F(OverviewTest, OnASmallScreenRecentFilesStandBelowTheWelcomeFrameAndNothingIsCut) {
    OpenSample(false);
    Trigger("mnuReportClose");
    auto* const welcome = Part<QWidget>("fraWelcome");
    auto* const recent = Part<QWidget>("fraRecent");
    main->resize(1280, 768);
    EXPECT_TRUE(Told([&] { return recent->x() > welcome->x() + welcome->width(); }));
    EXPECT_GT(recent->width(), main->fontMetrics().averageCharWidth() * 60);
    // Half of 1280 by 800, which a scale of 200 % leaves: wider, it would lose its title bar.
    const auto fits = [this] {
        main->resize(640, 368);
        return main->width() == 640;
    };
    EXPECT_TRUE(Told(fits));
    EXPECT_LE(main->minimumSizeHint().height(), 368);
    EXPECT_TRUE(Told([&] { return recent->y() > welcome->y() + welcome->height(); }));
    EXPECT_GE(recent->width(), welcome->width());
    EXPECT_LE(recent->mapTo(main.get(), QPoint(0, recent->height())).y(), main->height());
}

TEST_F(OverviewTest, AnOpenedFileGivesTheKeysToTheFilterOfItsWorksheets) {
    OpenSample(false);
    const std::string path = gCRFPath;
    Trigger("mnuReportClose");
    auto* const list = Part<QListWidget>("lstRecent");
    list->setFocus();
    Activate(main.get());
    Press(Qt::Key_Return);
    ASSERT_TRUE(Told([] { return CrfIsOpen(); }));
    EXPECT_EQ(gCRFPath, path);
    EXPECT_EQ(QApplication::focusWidget(), Part<QLineEdit>("txtFilter"));
}

TEST_F(OverviewTest, NoLetterOfTheWelcomeFrameIsThatOfAMenu) {
    std::set<QChar> letters;
    const auto take = [&](const QString& caption) {
        const qsizetype at = caption.indexOf('&');
        if (at < 0) return;
        EXPECT_TRUE(letters.insert(caption[at + 1].toUpper()).second) << S(caption);
    };
    for (const QAction* menu : main->menuBar()->actions()) take(menu->text());
    for (const QPushButton* button : Part<QWidget>("fraWelcome")->findChildren<QPushButton*>())
        take(button->text());
    for (const QLabel* label : Part<QWidget>("fraRecent")->findChildren<QLabel*>())
        take(label->text());
}

TEST_F(OverviewTest, RecentFilesStandInToolsTheLastOneFirst) {
    const std::string one = MakeCrf("One.CRF");
    const std::string two = MakeCrf("Two.CRF");
    for (const std::string& path : {one, two, one}) {
        Open(path);
        Settle();
    }
    EXPECT_EQ(RecentFiles(), (std::vector<std::string>{one, two}));
    QMenu* list = nullptr;
    for (QMenu* menu : main->findChildren<QMenu*>())
        if (menu->menuAction()->objectName() == "tlsRecent") list = menu;
    ASSERT_NE(list, nullptr);
    emit list->aboutToShow();
    ASSERT_EQ(list->actions().size(), 2);
    list->actions()[1]->trigger();
    EXPECT_EQ(gCRFPath, two);
    Trigger("mnuReportClose");
    std::filesystem::remove(two);
    EXPECT_EQ(RecentFiles(), std::vector<std::string>{one});
}

TEST_F(OverviewTest, ADroppedCrfOpensAndADroppedTextAsksToBeImported) {
    const std::string path = MakeCrf("One.CRF");
    const auto drop = [this](const std::string& file) { EXPECT_TRUE(Drop({file})); };
    const std::string text = folder.File("cells.txt");
    std::ofstream(text) << "A\t8\t1\t4711\r\n";
    drop(text);
    ASSERT_EQ(Boxes.size(), 1u);
    EXPECT_NE(Boxes[0].Text.find("when a Cost Report File is open"), std::string::npos);
    drop(path);
    EXPECT_EQ(gCRFPath, path);
    Answers = {kNo};
    drop(text);
    EXPECT_EQ(Boxes.back().Title, "Continue?");
    EXPECT_EQ(Stored("A", 8, "Col_1"), "");
    Answers = {kYes};
    drop(text);
    EXPECT_EQ(Stored("A", 8, "Col_1"), "4711");
}

TEST_F(OverviewTest, ADroppedWorkbookAsksToBeImported) {
    Open(MakeCrf("One.CRF"));
    const std::string csv = folder.File("Cells.CSV");
    std::ofstream(csv) << "Worksheet,Line,Column,Contents\r\nA,8,1,4711\r\n";
    Answers = {kYes};
    EXPECT_TRUE(Drop({csv}));
    ASSERT_EQ(BoxTexts().size(), 1u);
    EXPECT_EQ(Boxes[0].Title, "Continue?");
    EXPECT_EQ(Stored("A", 8, "Col_1"), "4711");
    EXPECT_EQ(Done(), "Imported Cells.CSV");
    const std::string old = folder.File("old.xls");
    std::ofstream(old) << "x";
    Answers = {kYes};
    Boxes.clear();
    EXPECT_TRUE(Drop({old}));
    ASSERT_EQ(BoxTexts().size(), 2u);
    EXPECT_NE(Boxes[1].Text.find("Save it as .xlsx."), std::string::npos) << Boxes[1].Text;
}

TEST_F(OverviewTest, OfSeveralFilesNoneIsTakenAndItIsToldWhy) {
    const std::string one = MakeCrf("One.CRF");
    const std::string two = MakeCrf("Two.CRF");
    Open(one);
    EXPECT_TRUE(Drop({two, folder.File("cells.txt")}));
    EXPECT_EQ(BoxTexts(),
              std::vector<std::string>{
                  "These are 2 files: Two.CRF, cells.txt.\rOne file is opened or "
                  "imported at a time, so none of them was taken.  Please choose one."});
    EXPECT_EQ(gCRFPath, one);
    EXPECT_TRUE(CrfIsOpen());
    Boxes.clear();
    EXPECT_TRUE(Drop({"/1", "/2", "/3", "/4", "/5", "/6", "/7"}));
    ASSERT_EQ(Boxes.size(), 1u);
    EXPECT_TRUE(Boxes[0].Text.starts_with("These are 7 files: 1, 2, 3, 4, 5 and 2 more.\r"))
        << Boxes[0].Text;
    EXPECT_TRUE(Drop({two}));
    EXPECT_EQ(gCRFPath, two);
}

TEST_F(OverviewTest, WhatIsNoFileIsNotTaken) {
    const std::string one = MakeCrf("One.CRF");
    EXPECT_FALSE(Drop({}));
    QMimeData page;
    page.setUrls({QUrl::fromLocalFile(Q(one)), QUrl("https://example.org/One.CRF")});
    QMimeData text;
    text.setText("A\t8\t1\t4711");
    for (const QMimeData* data : {&page, &text}) {
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(main.get(), &enter);
        EXPECT_FALSE(enter.isAccepted());
    }
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_TRUE(Boxes.empty());
    host->ShowCalcMsg(" Calculating");
    EXPECT_FALSE(Drop({one})) << "while a step is at work";
    host->HideCalcMsg();
    EXPECT_TRUE(Drop({one}));
    EXPECT_EQ(gCRFPath, one);
}

TEST_F(OverviewTest, WhatCannotBeOpenedIsToldAndWhatIsOpenStaysOpen) {
    const std::string path = MakeCrf("One.CRF");
    Open(path);
    const std::string picture = folder.File("scan.png");
    std::ofstream(picture) << "\x89PNG";
    const std::string gone = folder.File("gone.CRF");
    for (const std::string& file : {picture, gone, folder.Path().string()})
        EXPECT_TRUE(Drop({file}));
    EXPECT_EQ(BoxTexts(),
              (std::vector<std::string>{
                  picture + " is no Cost Report File, and no text file or workbook "
                            "that could be imported.",
                  "There is no file " + gone + ".", folder.Path().string() + " is no file."}));
    EXPECT_EQ(gCRFPath, path);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
}

TEST_F(OverviewTest, ACrfUnderAnyNameOpens) {
    const std::string path = folder.File("copy.bak");
    std::filesystem::copy_file(MakeCrf("One.CRF"), path);
    EXPECT_TRUE(Drop({path}));
    EXPECT_EQ(gCRFPath, path);
}

/// As `zolmara FILE` does it.
TEST_F(OverviewTest, AFileNamedAtTheStartThatIsNoneLeavesTheWelcomeFrame) {
    const auto start = [this](const std::string& file) { main->Run([&] { TakeFile(file); }); };
    const std::string gone = folder.File("gone.CRF");
    start(gone);
    const std::string text = folder.File("cells.txt");
    std::ofstream(text) << "A\t8\t1\t4711\r\n";
    start(text);
    const std::string empty = folder.File("empty.CRF");
    std::ofstream(empty) << "";
    start(empty);
    ASSERT_EQ(Boxes.size(), 3u) << ::testing::PrintToString(BoxTexts());
    EXPECT_EQ(Boxes[0].Text, "There is no file " + gone + ".");
    EXPECT_TRUE(Boxes[1].Text.starts_with(text + " can be imported when")) << Boxes[1].Text;
    EXPECT_NE(Boxes[2].Text.find("empty.CRF"), std::string::npos) << Boxes[2].Text;
    EXPECT_FALSE(CrfIsOpen());
    EXPECT_TRUE(Visible("fraWelcome"));
    EXPECT_TRUE(Enabled("mnuReportOpen"));
}

TEST_F(OverviewTest, ADamagedFileNamedAtTheStartIsOfferedForRepair) {
    const std::string path = MakeSample("Damaged.CRF");
    std::filesystem::resize_file(path, std::filesystem::file_size(path) * 3 / 4);
    Answers = {kNo};
    main->Run([&] { TakeFile(path); });
    ASSERT_EQ(Boxes.size(), 1u);
    EXPECT_EQ(Boxes[0].Title, "Damaged CRF");
    EXPECT_TRUE(Visible("fraWelcome"));
    Answers = {kYes};
    main->Run([&] { TakeFile(path); });
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(Done(), "Opened Damaged.CRF");
}

TEST_F(OverviewTest, AFileIsNotOpenedWhileAWindowStaysInTheWay) {
    const std::string path = MakeCrf("One.CRF");
    OpenSample(false);
    Sheet("view", "A");
    Answers = {kCancel};
    EXPECT_FALSE(OpenFile(path));
    EXPECT_NE(gCRFPath, path);
    Trigger("mnuReportUtilitiesHeader");
    EXPECT_FALSE(OpenFile(path));
    EXPECT_NE(Boxes.back().Text.find("close the other windows"), std::string::npos);
}

}  // namespace
}  // namespace zolmara::ui
