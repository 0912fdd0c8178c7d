// A long session of keys, pastes, adds, deletes and closes: what the windows leave is what the same
// acts leave when they are done without windows.

#include <QClipboard>
#include <filesystem>
#include <random>
#include <sstream>

#include "SheetTest.h"
#include "calc/Calc_All.h"
#include "forms/CellRules.h"
#include "structure/EditLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {
namespace {

constexpr unsigned kSeed = 287;
constexpr int kKeys = 2000;

constexpr const char* kTexts[] = {"1",        "12.5",  "abc", "-7", "A",   "B", "G",
                                  "4.01",     "9",     "yes", "no", "O",   "P", "250",
                                  "1/1/2023", "12345", "0.3", "4",  "x y", "Z"};

constexpr const char* kItems[] = {"A",    "A6",   "A8",  "A81p1", "A81p2", "S2p1",
                                  "S2p2", "S1p2", "Bp1", "B1p2",  "C1p1",  "D1p3",
                                  "E1p1", "ES",   "G",   "G1",    "A7p1"};

class SheetSession : public SheetTest {
protected:
    using Act = std::function<void()>;

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
    void LeaveRow();
    void PasteSome();
    void Add();
    void Delete();
    void Close();

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
    if (!cell) return;
    TakeKeys();
    window_->Grid().GoTo(*cell);
    const std::string text = kTexts[Random(static_cast<int>(std::size(kTexts)))];
    CellEntry entry;
    entry.Item = window_->Form().Table;
    entry.Line = window_->Model().Line(cell->row());
    entry.Field = window_->Model().Column(cell->column()).Field;
    entry.Value = text;
    const bool same = S(window_->Model().Plain(cell->row(), cell->column())) == text;
    Type(text);
    keys_ += static_cast<int>(text.size());
    PressKey(Random(2) == 0 ? Qt::Key_Return : Qt::Key_Tab);
    LeaveRow();
    if (!same)
        acts_.emplace_back([entry]() mutable {
            if (IsCellOpen(entry.Item, entry.Line, entry.Field)) EnterCell(entry);
        });
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
    acts_.emplace_back([=] {
        const auto form = DescribeForm(FormMode::Edit, item);
        PasteBlock(*form, FormRows(*form), row, column, cells);
    });
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
    button->click();
    Answers.clear();
    acts_.emplace_back([=, this] {
        Answers = {answer, answer};
        cmdAdd(table, line);
        Answers.clear();
    });
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
    acts_.emplace_back([=] {
        if (table == "A6")
            DeleteSelectedA6({{line}});
        else
            cmdDelete(table, line);
    });
}

void SheetSession::Close() {
    const auto form = window_->Form();
    TakeKeys();
    PressKey(Qt::Key_W, Qt::ControlModifier);
    ASSERT_EQ(FindOpenForm("edit", form.Item), nullptr) << form.Item;
    acts_.emplace_back([form] { FormCloses(form); });
    window_ = Sheet("edit", kItems[Random(static_cast<int>(std::size(kItems)))]);
    ASSERT_NE(window_, nullptr);
}

/// Every worksheet, cost centers and bases as text.
std::string Content() {
    std::string content;
    std::vector<std::string> tables{"CostCenters", "ES"};
    for (const Worksheet& sheet : AllWorksheets()) tables.emplace_back(sheet.Item);
    for (const std::string& table : tables) {
        content += "\n[" + table + "]\n";
        Recordset rows = gDB.OpenRecordset("SELECT * FROM " + table + ";", dbOpenSnapshot);
        std::vector<std::string> lines;
        for (; !rows.Eof(); rows.MoveNext()) {
            std::string line;
            for (int field = 0; field < rows.FieldCount(); ++field)
                line += rows.FieldName(field) + "=" +
                        (rows[field].IsNull() ? "Null" : Text(rows[field])) + "|";
            lines.push_back(line);
        }
        std::ranges::sort(lines);
        for (const std::string& line : lines) content += line + "\n";
    }
    return content;
}

/// The first line that differs, from both.
std::string FirstDifference(const std::string& a, const std::string& b) {
    std::istringstream first(a);
    std::istringstream second(b);
    std::string x;
    std::string y;
    while (true) {
        const bool more = static_cast<bool>(std::getline(first, x));
        if (more != static_cast<bool>(std::getline(second, y))) return x + y + " is missing";
        if (!more) return "";
        if (x != y) return "acts: " + x + "\nwindows: " + y;
    }
}

TEST_F(SheetSession, TwoThousandRandomKeysLeaveWhatTheSameActsLeaveWithoutWindows) {
    Start();
    const std::string path = MakeSample("Sample.CRF");
    const std::string copy = folder.File("Copy.CRF");
    std::filesystem::copy_file(path, copy);
    Open(path);
    window_ = Sheet("edit", "A6");
    while (keys_ < kKeys && !HasFatalFailure()) {
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
    const auto last = window_->Form();
    ASSERT_TRUE(window_->close());
    acts_.emplace_back([last] { FormCloses(last); });
    Calc_All();
    const std::string byWindows = Content();
    DropCrf();
    ASSERT_TRUE(OpenCrf(copy));
    for (const Act& act : acts_) act();
    Calc_All();
    const std::string byActs = Content();
    EXPECT_EQ(FirstDifference(byActs, byWindows), "");
}

}  // namespace
}  // namespace zolmara::ui
