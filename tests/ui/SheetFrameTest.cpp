// The frame that all worksheet windows have: opened again, made smaller and larger, left by their
// buttons.

#include <QHeaderView>

#include "SheetTest.h"
#include "core/Dialogs.h"

namespace zolmara::ui {
namespace {

class SheetFrame : public SheetTest {
protected:
    SheetFrame() {
        Start();
        Open(MakeSample("Sample.CRF"));
        Boxes.clear();
    }
};

TEST_F(SheetFrame, AMinimizedWindowIsRestoredWhenItIsOpenedAgain) {
    auto* a = Sheet("edit", "A");
    a->showMinimized();
    EXPECT_TRUE(a->isMinimized());
    OpenWorksheet("edit", "A");
    EXPECT_FALSE(a->isMinimized());
    EXPECT_TRUE(a->isVisible());
    EXPECT_EQ(WorksheetWindows().size(), 1U);
}

TEST_F(SheetFrame, NoRowIsLowerThanTold) {
    for (const char* item : {"A", "A7p1", "S2p1", "E1p1"}) {
        auto* window = Sheet("edit", item);
        // 230 twips, 1440 to the inch.
        const int least = 230 * window->Grid().logicalDpiY() / 1440;
        EXPECT_GE(window->Grid().rowHeight(0), least) << item;
        window->Grid().verticalHeader()->resizeSection(0, 1);
        EXPECT_GE(window->Grid().rowHeight(0), least) << item;
    }
}

TEST_F(SheetFrame, AWiderWindowHasAWiderGridAndItsButtonsSpread) {
    auto* a = Sheet("edit", "A");
    a->resize(700, 400);
    ASSERT_TRUE(WaitFor([&] { return a->width() == 700; }));
    const int grid = a->Grid().width();
    const int last = Button(a, "cmdClose")->x();
    const int width = Button(a, "cmdClose")->width();
    a->resize(1000, 500);
    EXPECT_TRUE(WaitFor([&] { return a->Grid().width() == grid + 300; }));
    EXPECT_TRUE(WaitFor([&] { return Button(a, "cmdClose")->x() > last; }));
    EXPECT_EQ(Button(a, "cmdClose")->width(), width) << "as wide as its text needs";
}

TEST_F(SheetFrame, OpenViewStoresTheRowAndShowsItInTheView) {
    auto* a = Sheet("edit", "A");
    At(a, 8, "Col_1");
    Type("4321");
    Button(a, "cmdOpenView")->click();
    EXPECT_EQ(Stored("A", 8, "Col_1"), "4321");
    auto* view = Opened("view", "A");
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Shown(view, 8, "Col_1"), "4,321");
    EXPECT_TRUE(a->isVisible());
    EXPECT_TRUE(a->isEnabled());
}

TEST_F(SheetFrame, OpenEditShowsTheEditorOfTheSameWorksheet) {
    auto* view = Sheet("view", "Bp2");
    Button(view, "cmdOpenEdit")->click();
    auto* edit = Opened("edit", "Bp2");
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(S(edit->windowTitle()), "Edit Worksheet Bp2");
    EXPECT_TRUE(view->isVisible());
}

TEST_F(SheetFrame, ARowThatIsRefusedStaysKeyedWhenAnotherWorksheetIsAskedFor) {
    gDB.Execute("UPDATE A6 SET Col_2 = 'A';");
    auto* a6 = Sheet("edit", "A6");
    At(a6, 1, "Col_1");
    Press(Qt::Key_Delete);
    Boxes.clear();
    Button(a6, "cmdNext")->click();
    ASSERT_FALSE(Boxes.empty());
    EXPECT_EQ(Boxes[0].Title, "Error: Blank EXPLANATION Item");
    EXPECT_EQ(FindOpenForm("edit", "A7p1"), nullptr);
    EXPECT_EQ(a6->Model().KeyedRow(), 0);
    Press(Qt::Key_Escape);
}

}  // namespace
}  // namespace zolmara::ui
