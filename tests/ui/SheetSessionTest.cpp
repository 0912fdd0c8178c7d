// A long session of keys, pastes, adds, deletes and closes: what the windows leave is what the same
// acts leave when they are done without windows, and by the command line.

#include <QClipboard>
#include <QProcess>
#include <QRegularExpression>
#include <filesystem>
#include <random>

#include "CrfContent.h"
#include "SheetTest.h"
#include "calc/Calc_All.h"
#include "core/Dialogs.h"
#include "forms/CellRules.h"
#include "structure/EditLines.h"
#include "support/Paths.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

constexpr unsigned kSeed = 287;
constexpr int kKeys = 2000;
constexpr int kCommandKeys = 700;

constexpr const char* kTexts[] = {"1",        "12.5",  "abc", "-7", "A",   "B", "G",
                                  "4.01",     "9",     "yes", "no", "O",   "P", "250",
                                  "1/1/2023", "12345", "0.3", "4",  "x y", "Z"};

constexpr const char* kItems[] = {"A",    "A6",  "A8",   "A81p1", "A81p2", "S2p1", "S2p2",
                                  "S1p2", "Bp1", "B1p2", "C1p1",  "D1p3",  "E1p1", "ES",
                                  "G",    "G1",  "A7p1", "CCs",   "S1p1",  "Sp1"};

/// What the command line has a command for, act by act: A-6 is put in order by its window's close,
/// and G-1 asks for its first line of expenses.
constexpr const char* kCommandItems[] = {"A",    "A8",   "A81p1", "A81p2", "S2p1", "S2p2",
                                         "S2p3", "S1p2", "Bp1",   "C1p3",  "E1p1", "ES",
                                         "G",    "A7p1", "CCs",   "S1p1",  "Sp1"};

class SheetSession : public SheetTest {
protected:
    struct Act {
        std::function<void()> Do;
        QStringList Command;  ///< the same for zolmara-cli, "FILE" for the CRF
    };

    int Random(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }
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
    void KeyCell();
    void KeyInto(const QModelIndex& cell, const std::string& text);
    void LeaveRow();
    std::string NameOfNext() const { return "Center " + std::to_string(names_); }
    static QStringList CommandOf(const char* verb, const std::string& table, Currency line) {
        const QString at = Q(NumberText(line));
        if (table == "CostCenters") return {"cc", verb, "FILE", at};
        if (table.starts_with("S2p")) return {"component", verb, "FILE", Q(table.substr(3)), at};
        return {"line", verb, "FILE", Q(table), at};
    }
    void PasteSome();
    void Add();
    void Delete();
    void Close();
    void OpenNext();
    void NameNewCenter(Currency line);
    void Settle();
    void Play(int keys, bool pastes);
    void RunCommands(const std::string& path);

    std::vector<std::string> items_{std::begin(kItems), std::end(kItems)};
    int names_ = 0;
    std::mt19937 random_{kSeed};
    int keys_ = 0;
    frmWorksheet* window_ = nullptr;
    std::vector<Act> acts_;
};

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
    const auto cell = OpenCell();
    if (cell) KeyInto(*cell, kTexts[Random(static_cast<int>(std::size(kTexts)))]);
}

void SheetSession::KeyInto(const QModelIndex& cell, const std::string& text) {
    TakeKeys();
    window_->Grid().GoTo(cell);
    CellEntry entry;
    entry.Item = window_->Form().Table;
    entry.Line = window_->Model().Line(cell.row());
    entry.Field = window_->Model().Column(cell.column()).Field;
    entry.Value = text;
    const bool same = S(window_->Model().Plain(cell.row(), cell.column())) == text;
    Type(text);
    keys_ += static_cast<int>(text.size());
    PressKey(Random(2) == 0 ? Qt::Key_Return : Qt::Key_Tab);
    LeaveRow();
    if (same) return;
    acts_.push_back(
        {[entry]() mutable {
             if (IsCellOpen(entry.Item, entry.Line, entry.Field)) EnterCell(entry);
         },
         {"set", "FILE", Q(entry.Item), Q(NumberText(entry.Line)), Q(entry.Field), "--", Q(text)}});
}

void SheetSession::PasteSome() {
    const auto cell = OpenCell();
    if (!cell) return;
    std::vector<std::vector<std::string>> cells(2);
    std::string text;
    for (auto& row : cells) {
        for (int i = 0; i < 3; ++i)
            row.emplace_back(kTexts[Random(static_cast<int>(std::size(kTexts)))]);
        text += row[0] + "\t" + row[1] + "\t" + row[2] + "\n";
    }
    QApplication::clipboard()->setText(Q(text));
    TakeKeys();
    window_->Grid().GoTo(*cell);
    const std::string item = window_->Form().Item;
    const int row = cell->row();
    const int column = cell->column();
    PressKey(Qt::Key_V, Qt::ControlModifier);
    for (QWidget* report : QApplication::topLevelWidgets())
        if (report->objectName() == "wndBlockReport") report->close();
    acts_.push_back({[=] {
                         const auto form = DescribeForm(FormMode::Edit, item);
                         PasteBlock(*form, FormRows(*form), row, column, cells);
                     },
                     {}});
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
    button->click();
    Answers.clear();
    const bool added = window_->Model().rowCount() > before;
    const Currency made =
        added ? window_->Model().Line(window_->Grid().currentIndex().row()) : Currency();
    QStringList command = CommandOf("add", table, line.value_or(Currency(1)));
    if (!line && table.starts_with("S2p")) command.removeLast();
    if (table == "CostCenters") command << Q(NameOfNext());
    command << (made.IsWhole() ? "--whole" : "--sub");
    acts_.push_back({[=, this] {
                         Answers = {answer, answer};
                         cmdAdd(table, line);
                         Answers.clear();
                     },
                     added ? command : QStringList()});
    if (added && table == "CostCenters") NameNewCenter(made);
}

/// The editor of cost centers is not left while one has no name.
void SheetSession::NameNewCenter(Currency line) {
    const std::string name = NameOfNext();
    ++names_;
    KeyInto(
        window_->Model().index(window_->Model().RowOf(line), window_->Form().ColumnOf("CCName")),
        name);
    acts_.back().Command.clear();  // the command that added it has named it
}

void SheetSession::Delete() {
    const std::string table = window_->Form().Table;
    const int row = window_->Grid().currentIndex().row();
    auto* button = Button(window_, "cmdDelete");
    if (!button->isEnabled() || !HasFreeLines(table) || window_->Model().rowCount() < 4 ||
        !window_->Model().HasRow(row))
        return;
    window_->Grid().selectRow(row);
    const Currency line = window_->Model().Line(row);
    button->click();
    acts_.push_back({[=] {
                         if (table == "A6")
                             DeleteSelectedA6({{line}});
                         else
                             cmdDelete(table, line);
                     },
                     CommandOf("delete", table, line)});
}

void SheetSession::Close() {
    const auto form = window_->Form();
    Settle();
    TakeKeys();
    PressKey(Qt::Key_W, Qt::ControlModifier);
    ASSERT_TRUE(WaitFor([] { return WorksheetWindows().empty(); })) << form.Item;
    acts_.push_back({[form] { FormCloses(form); }, {}});
    OpenNext();
}

void SheetSession::OpenNext() {
    window_ =
        Sheet("edit", items_[static_cast<std::size_t>(Random(static_cast<int>(items_.size())))]);
    ASSERT_NE(window_, nullptr);
}

/// An amended statement without a number, and a number without one, is not left.
void SheetSession::Settle() {
    if (window_->Form().Item != "Sp1") return;
    const int column = window_->Form().ColumnOf("Col_1");
    KeyInto(window_->Model().index(0, column), "no");
    KeyInto(window_->Model().index(1, column), "0");
}

void SheetSession::Play(int keys, bool pastes) {
    OpenNext();
    while (keys_ < keys && !HasFatalFailure()) {
        const int act = Random(100);
        if (act < 60 || (act < 72 && !pastes))
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
    ASSERT_TRUE(window_->close());
    Calc_All();
}

/// Each act by the program itself: taken, or refused with a message, and never more.
void SheetSession::RunCommands(const std::string& path) {
    acts_.push_back({{}, {"calc", "FILE"}});
    for (const Act& act : acts_) {
        if (act.Command.isEmpty()) continue;
        QStringList words = act.Command;
        words.replaceInStrings(QRegularExpression("^FILE$"), Q(path));
        QProcess program;
        program.start(test::kCli, words);
        ASSERT_TRUE(program.waitForFinished(600'000)) << S(words.join(' '));
        ASSERT_EQ(program.exitStatus(), QProcess::NormalExit) << S(words.join(' '));
        EXPECT_TRUE(program.exitCode() == 0 || program.exitCode() == 2)
            << program.exitCode() << " " << S(words.join(' ')) << " "
            << program.readAllStandardError().toStdString();
    }
}

TEST_F(SheetSession, TwoThousandRandomKeysLeaveWhatTheSameActsLeaveWithoutWindows) {
    Start();
    const std::string path = MakeSample("Sample.CRF");
    const std::string copy = folder.File("Copy.CRF");
    std::filesystem::copy_file(path, copy);
    Open(path);
    Play(kKeys, true);
    const std::string byWindows = Content();
    DropCrf();
    ASSERT_TRUE(OpenCrf(copy));
    for (const Act& act : acts_) act.Do();
    Calc_All();
    const std::string byActs = Content();
    EXPECT_EQ(FirstDifference(byActs, byWindows), "");
}

TEST_F(SheetSession, TheCommandLineLeavesWhatTheSameActsLeaveInTheWindows) {
    Start();
    const std::string path = MakeSample("Sample.CRF");
    const std::string copy = folder.File("Copy.CRF");
    std::filesystem::copy_file(path, copy);
    Open(path);
    items_.assign(std::begin(kCommandItems), std::end(kCommandItems));
    Play(kCommandKeys, false);
    const std::string byWindows = Content();
    DropCrf();
    RunCommands(copy);
    ASSERT_TRUE(OpenCrf(copy));
    EXPECT_EQ(FirstDifference(Content(), byWindows), "");
}

}  // namespace
}  // namespace zolmara::ui
