// Steps through more cells than are gone through at once: the window takes keys in between.

#include <QClipboard>
#include <QTableWidget>

#include "SheetTest.h"
#include "ui/worksheets/BlockCopy.h"

namespace zolmara::ui {
namespace {

/// A-6 with 4,000 lines of one amount each, from 1.02 to 81 in steps of .02: 36,000 cells.
class LargeBlock : public SheetTest {
protected:
    LargeBlock() {
        Start();
        Open(MakeSample("Sample.CRF"));
        RunBatch(gDB, [] {
            gDB.Execute("DELETE FROM A6 WHERE LineNum < 100;");
            for (int line = 1; line <= kLines; ++line)
                gDB.Execute("INSERT INTO A6 (LineNum,Col_5) VALUES (?,7);",
                            {Currency(1) + Currency::FromUnits(200 * line)});
        });
        a6_ = Sheet("edit", "A6");
        Boxes.clear();
        QApplication::clipboard()->setText("before");
    }
    ~LargeBlock() override { QApplication::clipboard()->clear(); }

    // What a key of the toolkit's tests begins may be at its end when the key is let go, so copies
    // and searches are begun without one.
    void CopyAll(bool withHeadings = false) {
        a6_->Grid().selectAll();
        a6_->Copy(withHeadings);
    }
    static std::string Clip() { return S(QApplication::clipboard()->text()); }
    static bool Copied() {
        return WaitFor([] { return Clip() != "before"; });
    }
    std::string StatusNow() const { return S(a6_->findChild<QLabel*>("lblStatus")->text()); }
    /// Every line with its number and its amount; the other seven cells are empty.
    static std::string Whole() {
        std::string text;
        for (int line = 1; line <= kLines; ++line)
            text +=
                NumberText(Currency(1) + Currency::FromUnits(200 * line)) + "\t\t\t\t\t7\t\t\t\n";
        return text;
    }

    void Find(const std::string& text) {
        Press(Qt::Key_F, Qt::ControlModifier);
        Type(text);
        FindNext();
    }
    void FindNext() { Button(a6_, "cmdFindNext")->click(); }
    std::string Found() const { return S(a6_->findChild<QLabel*>("lblFound")->text()); }
    bool Searches() const { return a6_->findChild<QTimer*>("tmrFind")->isActive(); }

    static constexpr int kLines = 4000;
    frmWorksheet* a6_ = nullptr;
};

TEST_F(LargeBlock, IsCopiedWholeAndSaysHowFarItIs) {
    CopyAll();
    EXPECT_EQ(Clip(), "before");
    EXPECT_NE(StatusNow().find("Copying ... 0 % (Escape stops it)"), std::string::npos)
        << StatusNow();
    ASSERT_TRUE(Copied());
    EXPECT_TRUE(Clip() == Whole());
    EXPECT_EQ(StatusNow().find("Copying"), std::string::npos);
}

TEST_F(LargeBlock, IsCopiedAsItStoodThoughItIsKeyedAndClearedMeanwhile) {
    At(a6_, 1.02, "Col_1");
    Type("Rent");
    Press(Qt::Key_Tab);
    EXPECT_EQ(a6_->Model().KeyedRow(), 0);
    // The row is keyed and not stored: it is copied as it is shown.
    CopyAll();
    gDB.Execute("UPDATE A6 SET Col_5 = 0 WHERE LineNum > 2;");
    At(a6_, 1.02, "Col_1");
    Type("Other");
    Press(Qt::Key_Return);
    ASSERT_TRUE(Copied());
    std::string rest = Whole();
    EXPECT_TRUE(Clip() == rest.replace(0, rest.find('\n'), "1.02\tRent\t\t\t\t7\t\t\t"));
    EXPECT_EQ(Stored("A6", 81, "Col_5"), "0");
}

TEST_F(LargeBlock, TakesItsHeadingsAlong) {
    CopyAll(true);
    ASSERT_TRUE(Copied());
    EXPECT_TRUE(Clip() ==
                "Line #\tExplanation\tCode\tUp Cost Center\tUp CC Line #\tUp Amount\tDn Cost "
                "Center\tDn CC Line #\tDn Amount\n" +
                    Whole())
        << Clip().substr(0, 300);
}

TEST_F(LargeBlock, EscapeStopsTheCopyAndTheClipboardKeepsWhatItHas) {
    CopyAll();
    Press(Qt::Key_Escape);
    EXPECT_EQ(StatusNow().find("Copying"), std::string::npos) << StatusNow();
    // Nothing is left that could still come.
    FinishCopy();
    EXPECT_TRUE(Clip() == "before");
}

TEST_F(LargeBlock, WhatIsCopiedLaterStays) {
    CopyAll();
    At(a6_, 81, "Col_5");
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clip(), "7\n");
    EXPECT_EQ(Status(a6_).find("Copying"), std::string::npos);
}

TEST_F(LargeBlock, IsOnTheClipboardBeforeItIsPasted) {
    CopyAll();
    auto* a = Sheet("edit", "A");
    a->Grid().GoTo(a->Model().index(a->Model().rowCount() - 1, a->Form().ColumnOf("Col_1")));
    a->Paste();
    EXPECT_TRUE(Clip() == Whole());
    // One line finds a row of A, the others none.
    QTableWidget* findings = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == "wndBlockReport")
            findings = window->findChild<QTableWidget*>("grdFindings");
    ASSERT_NE(findings, nullptr);
    EXPECT_GE(findings->rowCount(), kLines - 1);
    findings->window()->close();
}

TEST_F(LargeBlock, IsOnTheClipboardWhenItsWindowHasClosed) {
    CopyAll();
    ASSERT_TRUE(a6_->close());
    EXPECT_TRUE(Clip() == Whole());
}

// The windows stay, but the file behind them is closed for a moment.
TEST_F(LargeBlock, IsOnTheClipboardWhenTheStatementIsSavedUnderAnotherName) {
    Files.emplace_back(folder.File("Other.CRF"));
    CopyAll();
    Trigger("mnuReportSaveAs");
    EXPECT_EQ(gCRFTitle, "Other.CRF");
    ASSERT_TRUE(Copied());
    EXPECT_TRUE(Clip() == Whole());
}

TEST_F(LargeBlock, IsOnTheClipboardWhenACopyGetsAnotherIdentity) {
    At(Sheet("edit", "S1p1"), 2, "Col_1");
    Press(Qt::Key_F2);
    Files.emplace_back(folder.File("Other.CRF"));
    CopyAll();
    Click("frmCRFEditInfo", "cmdSaveAs");
    EXPECT_EQ(gCRFTitle, "Other.CRF");
    ASSERT_TRUE(Copied());
    EXPECT_TRUE(Clip() == Whole());
}

TEST_F(LargeBlock, IsSearchedToItsEndAndSaysHowFarItIs) {
    gDB.Execute("UPDATE A6 SET Col_1 = 'Needle' WHERE LineNum = 80.98;");
    At(a6_, 1.02, "LineNum");
    Find("needle");
    EXPECT_TRUE(Found().starts_with("Searching ... ")) << Found();
    EXPECT_EQ(Current(a6_), "1.02 LineNum");
    ASSERT_TRUE(WaitFor([&] { return Current(a6_) == "80.98 Col_1"; }));
    EXPECT_EQ(Found(), "");
    // On from there and around it is the same one, and the other way too.
    for (const auto shift : {Qt::NoModifier, Qt::ShiftModifier}) {
        Press(Qt::Key_Return, shift);
        ASSERT_TRUE(WaitFor([&] { return !Searches(); }));
        EXPECT_EQ(Current(a6_), "80.98 Col_1");
        EXPECT_EQ(Found(), "");
    }
    Find("no such text");
    EXPECT_TRUE(WaitFor([&] { return Found() == "Not found in this worksheet."; })) << Found();
    EXPECT_EQ(Current(a6_), "80.98 Col_1");
}

TEST_F(LargeBlock, ASearchIsGivenUpByEscapeByAnotherTextAndByAnotherCell) {
    At(a6_, 1.02, "LineNum");
    Find("no such text");
    ASSERT_TRUE(Searches());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Searches());
    EXPECT_EQ(Found(), "");
    EXPECT_FALSE(a6_->findChild<QWidget*>("findBar")->isHidden()) << "the next one hides it";
    FindNext();
    ASSERT_TRUE(Searches());
    a6_->findChild<QLineEdit*>("txtFind")->setText("another text");
    EXPECT_FALSE(Searches());
    FindNext();
    ASSERT_TRUE(Searches());
    At(a6_, 2, "Col_5");
    EXPECT_FALSE(Searches());
}

}  // namespace
}  // namespace zolmara::ui
