// "Export To Spreadsheet ..." in the menu Tools.

#include <QAction>
#include <fstream>

#include "UiTest.h"

namespace zolmara::ui {
namespace {

class ExportTool : public UiTest {
protected:
    QAction* Command() const { return main->findChild<QAction*>("tlsExport"); }
    bool IsWorkbook(const std::string& path) const {
        std::ifstream in(path, std::ios::binary);
        std::string head(2, '\0');
        in.read(head.data(), 2);
        return head == "PK";
    }
};

TEST_F(ExportTool, WritesTheOpenStatementToTheChosenFile) {
    Start();
    EXPECT_FALSE(Command()->isEnabled());
    const std::string crf = MakeCrf("Mine.CRF");
    Open(crf);
    ASSERT_TRUE(Command()->isEnabled());
    const std::string out = folder.File("mine.xlsx");
    Files = {out};
    Command()->trigger();
    EXPECT_TRUE(IsWorkbook(out));
    EXPECT_EQ(Dialogs.back().Title, "Export To Spreadsheet");
    EXPECT_TRUE(Dialogs.back().FileName.ends_with("Mine.xlsx")) << Dialogs.back().FileName;
    EXPECT_EQ(BoxTexts().back(), "The statement was written to " + out + ".");
}

TEST_F(ExportTool, KeepsAFileThatIsNotToBeReplaced) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    const std::string out = folder.File("mine.xlsx");
    std::ofstream(out) << "somebody's";
    Files = {out};
    Answers = {kNo};
    Command()->trigger();
    EXPECT_FALSE(IsWorkbook(out));
    Files = {out};
    Answers = {kYes};
    Command()->trigger();
    EXPECT_TRUE(IsWorkbook(out));
}

TEST_F(ExportTool, DoesNothingWhereNoFileIsChosen) {
    Start();
    Open(MakeCrf("Mine.CRF"));
    const std::size_t boxes = Boxes.size();
    Command()->trigger();
    EXPECT_EQ(Boxes.size(), boxes);
}

}  // namespace
}  // namespace zolmara::ui
