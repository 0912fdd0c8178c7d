// A long session of keys, pastes, adds, deletes and closes: what the windows leave, and say, is
// what the same acts leave and say when they are given to the command line.

#include <QClipboard>
#include <QItemSelectionModel>
#include <filesystem>
#include <iostream>
#include <random>
#include <set>

#include "CrfContent.h"
#include "InProcess.h"
#include "SheetTest.h"
#include "core/Dialogs.h"
#include "structure/EditLines.h"

namespace zolmara::ui {
namespace {

constexpr unsigned kSeed = 287;
constexpr int kKeys = 2000;

constexpr const char* kTexts[] = {"1",        "12.5",  "abc", "-7", "A",   "B", "G",
                                  "4.01",     "9",     "yes", "no", "O",   "P", "250",
                                  "1/1/2023", "12345", "0.3", "4",  "x y", "Z"};

constexpr const char* kItems[] = {"A",    "A6",   "A8",  "A81p1", "A81p2", "S2p1", "S2p2",
                                  "S2p3", "S1p2", "Bp1", "B1p2",  "C1p3",  "D1p3", "E1p1",
                                  "ES",   "G",    "G1",  "A7p1",  "CCs",   "S1p1", "Sp1"};

using Words = std::vector<std::string>;

class SheetSession : public SheetTest {
protected:
    /// What was done in the windows, as commands with "FILE" for the CRF, and what the boxes said.
    struct Act {
        std::vector<Words> Commands;
        std::set<std::string> Said;
        bool SaysMore = false;  ///< the windows say it in another way: a list of findings
        bool ClosesA6 = false;  ///< it puts its lines in order, which no command does
    };

    int Random(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }
    std::string RandomText() { return kTexts[Random(static_cast<int>(std::size(kTexts)))]; }
    void PressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Press(key, modifiers);
        ++keys_;
    }
    std::optional<QModelIndex> OpenCell() {
        const SheetModel& model = window_->Model();
        for (int tries = 0; tries < 60 && model.rowCount() > 0; ++tries) {
            const int row = Random(model.rowCount());
            const int column = Random(model.columnCount());
            if (!window_->Grid().isColumnHidden(column) && model.IsOpen(row, column) &&
                !OpensIdentity(model.Form(), model.Line(row), column))
                return model.index(row, column);
        }
        return std::nullopt;
    }
    void TakeKeys() {
        Activate(window_);
        window_->Grid().setFocus();
    }
    std::set<std::string> TakeBoxes() {
        std::set<std::string> texts;
        for (const std::string& text : BoxTexts()) texts.insert(text);
        Boxes.clear();
        return texts;
    }

    Words SetCommand(Currency line, int column, const std::string& text) const {
        return {"set",
                "FILE",
                window_->Form().Table,
                NumberText(line),
                window_->Model().Column(column).Field,
                "--",
                text};
    }
    static Words LineCommand(const char* verb, const std::string& table, Currency line) {
        const std::string at = NumberText(line);
        if (table == "CostCenters") return {"cc", verb, "FILE", at};
        if (table.starts_with("S2p")) return {"component", verb, "FILE", table.substr(3), at};
        return {"line", verb, "FILE", table, at};
    }
    std::string NameOfNext() const { return "Center " + std::to_string(names_); }

    void LeaveRow();
    void KeyCell();
    void KeyInto(const QModelIndex& cell, const std::string& text);
    void PasteSome();
    std::vector<Words> PasteCommands(const QModelIndex& cell, const std::vector<Words>& block,
                                     int row);
    void Add();
    void Delete();
    void Close();
    void OpenNext();
    void NameNewCenter(Currency line);
    void Settle();
    void Play(int keys);
    void RunCommands(const std::string& path);
    std::set<std::string> Run(Words words, const std::string& path);

    std::mt19937 random_{kSeed};
    int names_ = 0;
    int keys_ = 0;
    frmWorksheet* window_ = nullptr;
    std::vector<Act> acts_;
};

// --- In the windows

void SheetSession::LeaveRow() {
    const bool top = window_->Grid().currentIndex().row() == 0;
    PressKey(top ? Qt::Key_End : Qt::Key_Home, Qt::ControlModifier);
    Wait(0);
    for (int i = 0; i < 2 && window_->Model().KeyedRow() >= 0; ++i) {
        PressKey(Qt::Key_Tab);
        PressKey(Qt::Key_Escape);
    }
}

void SheetSession::KeyCell() {
    if (const auto cell = OpenCell()) KeyInto(*cell, RandomText());
}

void SheetSession::KeyInto(const QModelIndex& cell, const std::string& text) {
    TakeKeys();
    window_->Grid().GoTo(cell);
    if (IsOnlyPicked(window_->Form(), window_->Model().EntryOf(cell.row()), cell.column())) return;
    const bool same = S(window_->Model().Plain(cell.row(), cell.column())) == text;
    const Words command = SetCommand(window_->Model().Line(cell.row()), cell.column(), text);
    Boxes.clear();
    Type(text);
    keys_ += static_cast<int>(text.size());
    PressKey(Random(2) == 0 ? Qt::Key_Return : Qt::Key_Tab);
    LeaveRow();
    if (!same) acts_.push_back({{command}, TakeBoxes()});
}

/// Two rows of three texts. What is pasted below the last row goes into a new one on some
/// worksheets.
void SheetSession::PasteSome() {
    const auto cell = OpenCell();
    if (!cell) return;
    std::vector<Words> block(2);
    std::string text;
    for (Words& row : block) {
        for (int i = 0; i < 3; ++i) row.push_back(RandomText());
        text += row[0] + "\t" + row[1] + "\t" + row[2] + "\n";
    }
    QApplication::clipboard()->setText(Q(text));
    TakeKeys();
    window_->Grid().GoTo(*cell);
    const int row = cell->row();
    Act act{PasteCommands(*cell, {block[0]}, row), {}, true};
    const int before = window_->Model().rowCount();
    if (row + 1 < before)
        for (const Words& words : PasteCommands(*cell, {block[1]}, row + 1))
            act.Commands.push_back(words);
    PressKey(Qt::Key_V, Qt::ControlModifier);
    for (QWidget* report : QApplication::topLevelWidgets())
        if (report->objectName() == "wndBlockReport") report->close();
    if (window_->Model().rowCount() > before) {
        const Currency made = window_->Model().Line(before);
        Words add = LineCommand("add", window_->Form().Table, window_->Model().Line(row));
        add.emplace_back(made.IsWhole() ? "--whole" : "--sub");
        act.Commands.push_back(add);
        for (const Words& words : PasteCommands(*cell, {block[1]}, before))
            act.Commands.push_back(words);
    }
    acts_.push_back(act);
}

std::vector<Words> SheetSession::PasteCommands(const QModelIndex& cell,
                                               const std::vector<Words>& block, int row) {
    std::vector<Words> commands;
    const Currency line = window_->Model().Line(row);
    for (const Words& texts : block) {
        int column = cell.column();
        for (const std::string& text : texts) {
            while (column < window_->Model().columnCount() &&
                   window_->Grid().isColumnHidden(column))
                ++column;
            if (column == window_->Model().columnCount()) break;
            commands.push_back(SetCommand(line, column++, text));
        }
    }
    return commands;
}

void SheetSession::Add() {
    const std::string table = window_->Form().Table;
    auto* button = Button(window_, "cmdAdd");
    if (!button->isEnabled() || !HasFreeLines(table)) return;
    const int row = window_->Grid().currentIndex().row();
    std::optional<Currency> line;
    if (window_->Model().HasRow(row)) line = window_->Model().Line(row);
    const int answer = Random(2) == 0 ? kYes : kNo;
    Answers = {answer, answer};
    const int before = window_->Model().rowCount();
    Boxes.clear();
    button->click();
    Answers.clear();
    Words command = LineCommand("add", table, line.value_or(Currency(1)));
    if (!line && table.starts_with("S2p")) command.pop_back();
    if (table == "CostCenters") command.push_back(NameOfNext());
    command.emplace_back(answer == kYes ? "--yes" : "--no");
    acts_.push_back({{command}, TakeBoxes()});
    if (table == "CostCenters" && window_->Model().rowCount() > before)
        NameNewCenter(window_->Model().Line(window_->Grid().currentIndex().row()));
}

/// The editor of cost centers is not left while one has no name; the command that added it has
/// named it.
void SheetSession::NameNewCenter(Currency line) {
    const std::string name = NameOfNext();
    ++names_;
    KeyInto(
        window_->Model().index(window_->Model().RowOf(line), window_->Form().ColumnOf("CCName")),
        name);
    acts_.back().Commands.clear();
}

void SheetSession::Delete() {
    const std::string table = window_->Form().Table;
    const int row = window_->Grid().currentIndex().row();
    auto* button = Button(window_, "cmdDelete");
    if (!button->isEnabled() || !HasFreeLines(table) || window_->Model().rowCount() < 4 ||
        !window_->Model().HasRow(row))
        return;
    // Whatever keys were pressed last.
    window_->Grid().selectionModel()->select(
        window_->Model().index(row, 0),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    const Currency line = window_->Model().Line(row);
    Boxes.clear();
    button->click();
    acts_.push_back({{LineCommand("delete", table, line)}, TakeBoxes()});
}

void SheetSession::Close() {
    const std::string item = window_->Form().Item;
    Settle();
    TakeKeys();
    PressKey(Qt::Key_W, Qt::ControlModifier);
    ASSERT_TRUE(WaitFor([] { return WorksheetWindows().empty(); })) << item;
    if (item == "A6") acts_.push_back({{}, {}, true, true});
    OpenNext();
}

void SheetSession::OpenNext() {
    window_ = Sheet("edit", kItems[Random(static_cast<int>(std::size(kItems)))]);
    ASSERT_NE(window_, nullptr);
}

/// An amended statement without a number, and a number without one, is not left.
void SheetSession::Settle() {
    if (window_->Form().Item != "Sp1") return;
    const int column = window_->Form().ColumnOf("Col_1");
    KeyInto(window_->Model().index(0, column), "no");
    KeyInto(window_->Model().index(1, column), "0");
}

void SheetSession::Play(int keys) {
    OpenNext();
    while (keys_ < keys && !HasFatalFailure()) {
        const int act = Random(100);
        if (act < 60)
            KeyCell();
        else if (act < 72)
            PasteSome();
        else if (act < 82)
            Add();
        else if (act < 88)
            Delete();
        else
            Close();
    }
    Close();
    const bool closesA6 = window_->Form().Item == "A6";
    ASSERT_TRUE(window_->close());
    if (closesA6) acts_.push_back({{}, {}, true, true});
}

// --- By the command line

/// Done, or refused with words; gives what was said, without the answers to questions.
std::set<std::string> SheetSession::Run(Words words, const std::string& path) {
    std::ranges::replace(words, "FILE", path);
    const CommandResult result = RunCommand(words, folder.File("cli.ini"));
    EXPECT_TRUE(result.Status == 0 || result.Status == 2) << result.Status << " " << result.Err;
    std::set<std::string> said;
    for (const QString& line : Q(result.Err).split('\n', Qt::SkipEmptyParts))
        said.insert(S(line.section('\t', 1, 1)));
    return said;
}

void SheetSession::RunCommands(const std::string& path) {
    for (const Act& act : acts_) {
        std::string trace;
        std::set<std::string> said;
        for (const Words& words : act.Commands) {
            for (const std::string& word : words) trace += word + " ";
            said.merge(Run(words, path));
        }
        if (!act.SaysMore && !act.Commands.empty()) {
            EXPECT_EQ(said, act.Said) << trace;
        }
        if (!act.ClosesA6) continue;
        ASSERT_TRUE(OpenCrf(path));
        FormCloses(*DescribeForm(FormMode::Edit, "A6"));
        DropCrf();
    }
}

TEST_F(SheetSession, TwoThousandRandomKeysLeaveAndSayWhatTheSameCommandsDo) {
    std::cout << "seed " << kSeed << "\n";
    Start();
    const std::string path = MakeSample("Sample.CRF");
    const std::string copy = folder.File("Copy.CRF");
    std::filesystem::copy_file(path, copy);
    Open(path);
    main->hide();
    Play(kKeys);
    DropCrf();
    RunCommands(copy);
    // The lines of A-6 are added up as they are keyed in its window.
    for (const std::string& each : {path, copy}) Run({"calc", "FILE"}, each);
    ASSERT_TRUE(OpenCrf(path));
    const std::string byWindows = Content();
    DropCrf();
    ASSERT_TRUE(OpenCrf(copy));
    EXPECT_EQ(FirstDifference(Content(), byWindows), "");
}

}  // namespace
}  // namespace zolmara::ui
