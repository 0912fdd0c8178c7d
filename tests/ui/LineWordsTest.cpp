// Adding and deleting lines by the buttons of the windows and by the commands: the same questions,
// the same refusals, the same lines.

#include <filesystem>

#include "InProcess.h"
#include "SheetTest.h"
#include "structure/EditLines.h"

namespace zolmara::ui {
namespace {

using Words = std::vector<std::string>;

struct LineCase {
    std::string Item;  ///< of the window
    double Line;       ///< the current one
    std::string Button;
    std::string Command;  ///< "FILE" stands for the file; answers are Yes or No as in Answer
    Words Boxes;          ///< "Title|text", in their order
    std::string New;      ///< the line that is there afterwards and was not before; empty for none
    int Answer = 0;       ///< to every question
    std::string Before = "";  ///< a statement that makes what the case needs
};

const std::string kProgram = "Zolmara 287-22|";

const std::vector<LineCase>& Cases() {
    const std::string incomplete = "Incomplete entry error, table ";
    const std::string none = "All descriptions must be completed.";
    static const std::vector<LineCase> cases = {
        {"A8",
         17,
         "cmdAdd",
         "line add FILE A8 17",
         {incomplete + "A8|" + none},
         "",
         0,
         "UPDATE A8 SET Col_1 = Null WHERE LineNum = 3;"},
        {"G1",
         9,
         "cmdAdd",
         "line add FILE G1 9",
         {incomplete + "G1|" + none},
         "",
         0,
         "UPDATE G1 SET Col_1 = '  ' WHERE LineNum = 5;"},
        {"CCs",
         12,
         "cmdAdd",
         "cc add FILE 12 Press",
         {incomplete + "CostCenters|All cost center names must be completed."},
         "",
         0,
         "UPDATE CostCenters SET CCName = '' WHERE LineNum = 14;"},
        {"A8",
         17,
         "cmdAdd",
         "line add FILE A8 17",
         {kProgram + "Add description 18? No will add line 17.01."},
         "18",
         kYes},
        {"A8",
         17,
         "cmdAdd",
         "line add FILE A8 17",
         {kProgram + "Add description 18? No will add line 17.01."},
         "17.01",
         kNo},
        {"A8", 3, "cmdAdd", "line add FILE A8 3", {}, "3.01"},
        {"A8", 14, "cmdAdd", "line add FILE A8 14", {}, "14.01"},
        {"CCs",
         28,
         "cmdAdd",
         "cc add FILE 28 Press",
         {kProgram + "Add Cost Center 29? No will add Cost Center 28.01."},
         "29",
         kYes},
        {"CCs",
         28,
         "cmdAdd",
         "cc add FILE 28 Press",
         {kProgram + "Add Cost Center 29? No will add Cost Center 28.01."},
         "28.01",
         kNo},
        {"CCs", 4, "cmdAdd", "cc add FILE 4 Press", {}, "4.01"},
        {"S2p1",
         2,
         "cmdAdd",
         "component add FILE 1 2",
         {kProgram + "Add description 3? No will add line 2.01."},
         "3",
         kYes},
        {"S2p1",
         2,
         "cmdAdd",
         "component add FILE 1 2",
         {kProgram + "Add description 3? No will add line 2.01."},
         "2.01",
         kNo},
        {"S2p1", 1, "cmdAdd", "component add FILE 1 1", {}, "1.01"},
        {"G1",
         9,
         "cmdAdd",
         "line add FILE G1 9",
         {kProgram + "Do you wish to add other expenses, line 16?"},
         "16",
         kYes},
        {"G1",
         9,
         "cmdAdd",
         "line add FILE G1 9",
         {kProgram + "Do you wish to add other expenses, line 16?"},
         "10",
         kNo},
        {"A81p1",
         1,
         "cmdAdd",
         "line add FILE A81p1 1",
         {kProgram + "Add description 2? No will add line 1.01."},
         "2",
         kYes},
        {"A81p2",
         1,
         "cmdAdd",
         "line add FILE A81p2 1",
         {kProgram + "Add description 2? No will add line 1.01."},
         "1.01",
         kNo},
        {"A6", 1, "cmdAdd", "line add FILE A6 1", {}, "2"},
        {"S1p1", 5, "cmdAdd", "line add FILE S1p1 5", {}, "5.01"},
        {"S1p2", 3, "cmdAdd", "line add FILE S1p2 3", {}, "6"},
        {"Bp1",
         1,
         "cmdAdd",
         "line add FILE Bp1 1",
         {kProgram + "Adding/Deleting lines is done from S2p1"},
         ""},
        {"E1p1",
         1,
         "cmdAdd",
         "line add FILE E1p1 1",
         {kProgram + "Adding/Deleting lines is done from S2p1"},
         ""},
        {"D1p1",
         1,
         "cmdDelete",
         "line delete FILE D1p1 1",
         {kProgram + "Adding/Deleting lines is done from S2p1"},
         ""},
    };
    return cases;
}

/// What belongs to the form is not deleted: the button is off, the command says why.
struct KeptLine {
    std::string Item;
    double Line;
    std::string Command;
};
const std::vector<KeptLine>& KeptLines() {
    static const std::vector<KeptLine> lines = {
        {"A8", 17, "line delete FILE A8 17"},   {"G1", 9, "line delete FILE G1 9"},
        {"S1p1", 5, "line delete FILE S1p1 5"}, {"S1p2", 5, "line delete FILE S1p2 5"},
        {"CCs", 28, "cc delete FILE 28"},
    };
    return lines;
}

class LineWords : public SheetTest {
protected:
    LineWords() {
        Start();
        main->hide();
        const std::string path = MakeCrf("Made.CRF");
        EXPECT_TRUE(OpenCrf(path));
        for (const char* item : {"A6", "A81p1", "A81p2", "S2p1", "S2p1"})
            AddLine(item, *OfferLine(item).Whole);
        DropCrf();
    }

    static std::string TableOf(const std::string& item) {
        return item == "CCs" ? "CostCenters" : item;
    }
    static Words LinesOf(const std::string& item) {
        const std::string key = item.starts_with("A81") ? "SeqNum" : "LineNum";
        Words lines;
        Recordset rows = gDB.OpenRecordset(
            "SELECT " + key + " FROM " + TableOf(item) + " ORDER BY " + key + ";", dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext()) lines.push_back(NumberText(CurOr(rows[0])));
        return lines;
    }
    /// A copy of the statement as the case needs it.
    std::string CopyFor(const std::string& name, const std::string& statement) {
        const std::string path = folder.File(name);
        std::filesystem::copy_file(folder.File("Made.CRF"), path,
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_TRUE(OpenCrf(path));
        if (!statement.empty()) gDB.Execute(statement);
        DropCrf();
        return path;
    }
    CommandResult Command(const std::string& words, const std::string& path, int answer) {
        Words all;
        if (answer != 0) all.emplace_back(answer == kYes ? "--yes" : "--no");
        for (const QString& word : Q(words).split(' '))
            all.push_back(word == "FILE" ? path : S(word));
        return RunCommand(all, folder.File("cli.ini"));
    }
    /// The boxes as the command tells them.
    static std::string Told(const LineCase& each) {
        std::string told;
        for (const std::string& box : each.Boxes) {
            const bool refuses = box.starts_with("Incomplete");
            const std::string answer = each.Answer == kYes  ? "\tYes"
                                       : each.Answer == kNo ? "\tNo"
                                                            : "";
            told +=
                (refuses ? "ERROR\t" : "F.Y.I.\t") + box.substr(box.find('|') + 1) + answer + "\n";
        }
        return told;
    }
    static Words With(Words lines, const std::string& line) {
        if (!line.empty()) lines.push_back(line);
        std::ranges::sort(lines, {}, [](const std::string& text) { return Val(text); });
        return lines;
    }

    void ByButton(const LineCase& each);
    void ByCommand(const LineCase& each);
};

void LineWords::ByButton(const LineCase& each) {
    const std::string path = CopyFor("Window.CRF", each.Before);
    ASSERT_TRUE(OpenCrf(path));
    const Words before = LinesOf(each.Item);
    auto* window = Sheet("edit", each.Item);
    ASSERT_NE(window, nullptr);
    window->GoToLine(Currency(each.Line), "");
    Boxes.clear();
    Answers = {each.Answer, each.Answer};
    if (each.Answer == 0) Answers.clear();
    ASSERT_TRUE(Button(window, each.Button)->isEnabled());
    Button(window, each.Button)->click();
    Answers.clear();
    Words boxes;
    for (const test::Box& box : Boxes) boxes.push_back(box.Title + "|" + box.Text);
    EXPECT_EQ(boxes, each.Boxes);
    EXPECT_EQ(LinesOf(each.Item), With(before, each.New));
    for (QWidget* open : WorksheetWindows()) delete open;
    DropCrf();
}

void LineWords::ByCommand(const LineCase& each) {
    const std::string path = CopyFor("Command.CRF", each.Before);
    ASSERT_TRUE(OpenCrf(path));
    const Words before = LinesOf(each.Item);
    DropCrf();
    const CommandResult result = Command(each.Command, path, each.Answer);
    EXPECT_EQ(result.Err, Told(each));
    EXPECT_EQ(result.Out, each.New.empty() ? "" : each.New + "\n");
    EXPECT_EQ(result.Status, each.New.empty() ? 2 : 0);
    ASSERT_TRUE(OpenCrf(path));
    EXPECT_EQ(LinesOf(each.Item), With(before, each.New));
    DropCrf();
}

TEST_F(LineWords, TheButtonsAndTheCommandsAskAndRefuseAlike) {
    for (const LineCase& each : Cases()) {
        SCOPED_TRACE(each.Item + " " + NumberText(each.Line) + " " + each.Command + " " + each.New);
        ByButton(each);
        ByCommand(each);
    }
}

TEST_F(LineWords, WhatBelongsToTheFormStays) {
    for (const KeptLine& each : KeptLines()) {
        SCOPED_TRACE(each.Command);
        const std::string path = CopyFor("Kept.CRF", "");
        ASSERT_TRUE(OpenCrf(path));
        auto* window = Sheet("edit", each.Item);
        ASSERT_NE(window, nullptr);
        window->GoToLine(Currency(each.Line), "");
        EXPECT_FALSE(Button(window, "cmdDelete")->isEnabled());
        const Words before = LinesOf(each.Item);
        delete window;
        DropCrf();
        const CommandResult result = Command(each.Command, path, 0);
        EXPECT_EQ(result.Err, "ERROR\tLine " + NumberText(each.Line) + " of " + TableOf(each.Item) +
                                  " belongs to the form and stays\n");
        EXPECT_EQ(result.Status, 2);
        ASSERT_TRUE(OpenCrf(path));
        EXPECT_EQ(LinesOf(each.Item), before);
        DropCrf();
    }
}

// The editor is not left while the cost centers are not in order, and neither is the command.
TEST_F(LineWords, CostCentersThatAreNotInOrderAreTold) {
    struct Guard {
        std::string Before;
        std::string Text;
    };
    const Guard guards[] = {
        {"UPDATE CostCenters SET LineNum = 4.01 WHERE LineNum = 4;",
         "There is only one Administrative And General cost center and it must be numbered "
         "4.00\r\nPlease either add a new 4.xx cost center or delete the 4.01, which will revert "
         "it to 4.00."},
        {"DELETE FROM CostCenters WHERE LineNum = 4;",
         "There must be at least one Administrative And General cost center (4.xx).\r\nPlease "
         "either add a new 4.xx cost center or delete the 4.01, which will revert it to 4.00."},
        {"UPDATE CostCenters SET CCName = ' ' WHERE LineNum = 14;",
         "All Cost Center names must be completed"},
    };
    for (const Guard& guard : guards) {
        SCOPED_TRACE(guard.Text);
        const std::string setUp = guard.Before;
        const std::string path = CopyFor("Guard.CRF", setUp);
        ASSERT_TRUE(OpenCrf(path));
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (29,'Press');");
        auto* window = Sheet("edit", "CCs");
        Boxes.clear();
        EXPECT_FALSE(window->close());
        EXPECT_EQ(BoxTexts(), Words{guard.Text});
        delete window;
        DropCrf();
        const CommandResult result = Command("cc rename FILE 29 Radio", path, 0);
        const std::string told = S(Q(guard.Text).replace("\r\n", " "));
        EXPECT_EQ(result.Err.substr(result.Err.find('\t') + 1), told + "\n");
        EXPECT_EQ(result.Status, 2);
    }
}

}  // namespace
}  // namespace zolmara::ui
