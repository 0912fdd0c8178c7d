// The search through the whole statement, the settings, and what the program says in its stride.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QPointer>
#include <QSpinBox>
#include <QStyle>
#include <QTreeView>
#include <algorithm>

#include "SheetTest.h"
#include "ui/main/Theme.h"
#include "ui/tools/EntryCalculation.h"
#include "ui/worksheets/WindowPlace.h"

namespace zolmara::ui {
namespace {

class ToolWindowsTest : public SheetTest {
protected:
    ToolWindowsTest() { Start(); }
    ~ToolWindowsTest() override {
        // One window takes those that belong to it along.
        std::vector<QPointer<QWidget>> windows;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName().startsWith("wnd")) windows.emplace_back(window);
        for (const QPointer<QWidget>& window : windows) delete window.data();
        SetTheme("desktop");
    }
    static QWidget* Window(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name && !window->isHidden()) return window;
        return nullptr;
    }
    template <class T>
    static T* Part(const char* window, const char* name) {
        return Window(window)->findChild<T*>(name);
    }
    void Tool(const char* name) { main->findChild<QAction*>(name)->trigger(); }
    QTreeView* Found() { return Part<QTreeView>("wndSearch", "lstFound"); }
    std::string Row(int row) {
        const QModelIndex at = Found()->model()->index(row, 0);
        return S(at.data().toString() + " | " + at.siblingAtColumn(2).data().toString());
    }
    int Search(const std::string& text) {
        auto* const field = Part<QLineEdit>("wndSearch", "txtSearch");
        field->setText(Q(text));
        auto* const count = Part<QLabel>("wndSearch", "lblCount");
        count->setText("waiting");
        EXPECT_TRUE(WaitFor([&] { return count->text() != "waiting"; }));
        return Found()->model()->rowCount();
    }
};

class SearchTest : public ToolWindowsTest {
protected:
    SearchTest() {
        Open(MakeSample("Sample.CRF"));
        Activate(main.get());
        Press(Qt::Key_F, Qt::ControlModifier);
    }
};

TEST_F(SearchTest, FindsAComponentByAPartOfItsNameAndGoesThere) {
    ASSERT_NE(Window("wndSearch"), nullptr) << "Ctrl+F in the main window";
    ASSERT_EQ(Search("memorial hospital"), 1);
    EXPECT_EQ(Row(0), "S-2 Part I, line 1, column 1 | Northfield Memorial Hospital");
    QTest::keyClick(Part<QLineEdit>("wndSearch", "txtSearch"), Qt::Key_Return);
    auto* sheet = dynamic_cast<frmWorksheet*>(FindOpenForm("edit", "S2p1"));
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(Current(sheet), "1 Col_1");
}

TEST_F(SearchTest, FindsAnAmountACcnAndACostCenter) {
    gDB.Execute("UPDATE A SET Col_1=4711.25 WHERE LineNum=8;");
    ASSERT_EQ(Search("4,711.25"), 1);
    EXPECT_EQ(Row(0), "A, line 8, column 1 | 4,711.25");
    EXPECT_GE(Search("14-0231"), 1);
    EXPECT_TRUE(Row(0).starts_with("S-2 Part I, line 1, column 2")) << Row(0);
    gDB.Execute("UPDATE CostCenters SET CCName='Quite Another' WHERE LineNum=8;");
    ASSERT_EQ(Search("quite an"), 1);
    EXPECT_TRUE(Row(0).starts_with("CostCenters, line 8")) << Row(0);
}

TEST_F(SearchTest, WhatIsNotThereIsSaidAndABlankFindsNothing) {
    EXPECT_EQ(Search("no such text anywhere"), 0);
    EXPECT_EQ(Part<QLabel>("wndSearch", "lblCount")->text(), "0 cells");
    EXPECT_EQ(Search("  "), 0);
    EXPECT_EQ(Part<QLabel>("wndSearch", "lblCount")->text(), "");
}

TEST_F(SearchTest, ItClosesWithTheCrfAndBarsNoMenu) {
    EXPECT_TRUE(Enabled("mnuReportCalculate"));
    Trigger("mnuReportClose");
    EXPECT_EQ(Window("wndSearch"), nullptr);
    EXPECT_FALSE(main->findChild<QAction*>("tlsFind")->isEnabled());
}

TEST_F(SearchTest, InAWorksheetTheSameKeyFindsInThatWorksheet) {
    Window("wndSearch")->close();
    auto* sheet = Sheet("view", "A");
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Window("wndSearch"), nullptr);
    EXPECT_FALSE(sheet->findChild<QWidget*>("findBar")->isHidden());
}

// --- Settings ------------------------------------------------------------------------------

TEST_F(ToolWindowsTest, SettingsAreTakenByOkAlone) {
    Tool("tlsSettings");
    ASSERT_NE(Window("wndSettings"), nullptr);
    Part<QCheckBox>("wndSettings", "chkEntry")->setChecked(true);
    Part<QSpinBox>("wndSettings", "numZoom")->setValue(150);
    Part<QPushButton>("wndSettings", "cmdCancel")->click();
    EXPECT_FALSE(EntryCalculation::IsOn());
    EXPECT_EQ(SavedZoom(), 1);
    Tool("tlsSettings");
    Part<QCheckBox>("wndSettings", "chkEntry")->setChecked(true);
    Part<QSpinBox>("wndSettings", "numZoom")->setValue(150);
    Part<QSpinBox>("wndSettings", "numLast")->setValue(7);
    Part<QLineEdit>("wndSettings", "txtCrfFolder")->setText(Q(folder.Path().string()));
    Part<QPushButton>("wndSettings", "cmdOK")->click();
    EXPECT_EQ(Window("wndSettings"), nullptr);
    EXPECT_TRUE(EntryCalculation::IsOn());
    EXPECT_EQ(SavedZoom(), 1.5);
    EXPECT_EQ(Done(), "Settings saved");
    EXPECT_EQ(host->GetSetting("Zolmara 287-22", "Backups", "Last", ""), "7");
    EXPECT_EQ(host->GetSetting("Zolmara 287-22", "Startup", "CRFLoc", ""), folder.Path().string());
}

TEST_F(ToolWindowsTest, AFolderThatIsNotThereIsRefusedAndTheWindowStays) {
    Tool("tlsSettings");
    Part<QLineEdit>("wndSettings", "txtImportFolder")->setText("/no/such/folder");
    Part<QSpinBox>("wndSettings", "numZoom")->setValue(150);
    Part<QPushButton>("wndSettings", "cmdOK")->click();
    EXPECT_EQ(BoxTexts(), std::vector<std::string>{"/no/such/folder is no folder."});
    EXPECT_NE(Window("wndSettings"), nullptr);
    EXPECT_EQ(SavedZoom(), 1) << "nothing is taken half";
}

TEST_F(ToolWindowsTest, TheThemeIsDarkOrLightAtOnceAndRemembered) {
    Tool("tlsSettings");
    Part<QComboBox>("wndSettings", "cboTheme")->setCurrentText("Dark");
    Part<QPushButton>("wndSettings", "cmdOK")->click();
    const auto tone = [this](QPalette::ColorRole role) {
        return main->palette().color(role).lightness();
    };
    EXPECT_TRUE(WaitFor([&] { return tone(QPalette::Window) < 128; }));
    EXPECT_GT(tone(QPalette::WindowText), 128);
    const auto line = static_cast<QRgb>(
        QApplication::style()->styleHint(QStyle::SH_Table_GridLineColor, nullptr));
    EXPECT_GT(qGray(line) - qGray(QApplication::palette().color(QPalette::Base).rgb()), 40)
        << "the lines between cells are seen";
    EXPECT_EQ(SavedTheme(), "dark");
    // What is not checked has an outline that can be told from the window.
    QCheckBox box("Box");
    box.resize(box.sizeHint());
    const QImage picture = box.grab().toImage();
    int brightest = 0;
    for (int x = 0; x < 6; ++x)
        brightest = std::max(brightest, picture.pixelColor(x, box.height() / 2).lightness());
    EXPECT_GT(brightest, 120);
    SetTheme("light");
    EXPECT_TRUE(WaitFor([&] { return tone(QPalette::Window) > 128; }));
}

// --- In the flow ---------------------------------------------------------------------------

TEST_F(ToolWindowsTest, AStepThatEndedWellSaysSoInTheStatusLine) {
    const std::string path = MakeSample("Sample.CRF");
    Open(path);
    EXPECT_EQ(Done(), "Opened Sample.CRF");
    Trigger("mnuReportCalculate");
    EXPECT_EQ(Done(), "Calculated and checked");
    Trigger("mnuViewCloseAll");
    EXPECT_EQ(Done(), "") << "of the former command nothing stays";
    Trigger("mnuReportUtilitiesHQ");
    EXPECT_EQ(Done(), "High quality printing is off");
    Trigger("mnuReportUtilitiesHQ");
    EXPECT_EQ(Done(), "High quality printing is on");
    Tool("tlsEntryCalculation");
    EXPECT_EQ(Done(), "Each entry is calculated");
    Tool("tlsEntryCalculation");
    EXPECT_EQ(Done(), "Entries are not calculated");
    Tool("tlsNextFinding");
    EXPECT_EQ(Done(), "No finding leads to a worksheet");
    Files.emplace_back(folder.File("Copy.CRF"));
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(Done(), "Saved as Copy.CRF");
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(Done(), "") << "cancelled";
    Trigger("mnuReportClose");
    EXPECT_EQ(Done(), "Closed Copy.CRF");
    EXPECT_TRUE(Boxes.empty()) << ::testing::PrintToString(BoxTexts());
}

TEST_F(ToolWindowsTest, KeyingIntoASignedStatementIsToldOnce) {
    Open(MakeSample("Sample.CRF"));
    gDB.Execute("UPDATE Master SET ESFirstName='Ann', ESLastName='Lee', ESTitle='CFO';");
    auto* a = Sheet("edit", "A");
    Enter(a, 8, "Col_1", "1234");
    ASSERT_TRUE(a->CommitGrid());
    auto* const done = main->findChild<QLabel*>("lblDone");
    EXPECT_TRUE(done->text().startsWith("This statement is signed.")) << S(done->text());
    done->clear();
    Enter(a, 8, "Col_1", "1235");
    ASSERT_TRUE(a->CommitGrid());
    EXPECT_EQ(done->text(), "");
}

}  // namespace
}  // namespace zolmara::ui
