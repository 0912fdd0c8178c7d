// Every column of every editor, keyed through the real grid with real keys and given to the
// command: what is taken, what is put right, and what is refused, with the same words.

#include <sqlite3.h>

#include <QDate>
#include <QMenu>
#include <QPointer>
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "CellCases.h"
#include "CrfContent.h"
#include "InProcess.h"
#include "SheetTest.h"
#include "forms/WorksheetForm.h"
#include "worksheets/W_A6.h"

namespace zolmara::ui {
namespace {

std::vector<std::string> WordsOf(const std::string& text, const char* between) {
    std::vector<std::string> words;
    for (const QString& word : Q(text).split(between)) words.push_back(S(word));
    return words;
}

/// A value of a file that no program has open.
std::string ReadCell(const std::string& path, const std::string& sql) {
    sqlite3* file = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open_v2(path.c_str(), &file, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_prepare_v2(file, sql.c_str(), -1, &statement, nullptr);
    std::string value;
    if (sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_text(statement, 0) != nullptr)
        value = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
    sqlite3_close(file);
    return value.ends_with(".0") ? value.substr(0, value.size() - 2) : value;
}

class CellWalk : public SheetTest {
protected:
    CellWalk() {
        Start();
        main->hide();
        const std::string path = MakeSample("Sample.CRF");
        EXPECT_TRUE(OpenCrf(path));
        AddLinesForCases();
        DropCrf();
        std::filesystem::copy_file(path, copy_);
        Open(path);
        Boxes.clear();
    }

    /// Both roads over the same cells leave the same statement.
    void Walk(const std::vector<Cells>& all) {
        for (const Cells& cells : all) {
            TurnTo(cells.Item);
            if (HasFatalFailure()) return;
            for (const auto& [field, each] : Entries(cells))
                Key({cells.Item, cells.Line, field}, each);
        }
        TurnTo("");
        const std::string byWindows = Content();
        DropCrf();
        GiveToCommand(all);
        ASSERT_TRUE(OpenCrf(copy_));
        if (walked_.contains("A6")) DoWhatTheWindowOfA6Does();
        EXPECT_EQ(FirstDifference(Content(), byWindows), "");
    }

    /// It adds up after each row, and puts its lines in order when it closes.
    static void DoWhatTheWindowOfA6Does() {
        Calc_A6();
        FormCloses(*DescribeForm(FormMode::Edit, "A6"));
    }

    void GiveToCommand(const std::vector<Cells>& all) {
        for (const Cells& cells : all)
            for (const auto& [field, each] : Entries(cells))
                Set({cells.Item, cells.Line, field}, each);
    }

    /// The editors whose every shown column that is not locked has been keyed.
    void ExpectAllWalked(const std::vector<std::string>& items) {
        for (const std::string& item : items) {
            std::set<std::string> keyed;
            const auto form = DescribeForm(FormMode::Edit, item);
            for (const FormColumn& column : form->Columns)
                if (!column.Hidden && !column.Locked) keyed.insert(column.Field);
            EXPECT_EQ(walked_[item], keyed) << item;
        }
    }

    struct Cell {
        std::string Item;
        double Line;
        std::string Field;
        std::string Table() const { return Item == "CCs" ? "CostCenters" : Item; }
        std::string Key() const { return Item.starts_with("A81") ? "SeqNum" : "LineNum"; }
        std::string Place() const { return Table() + " line " + NumberText(Line) + " " + Field; }
        std::string InStore(const std::string& field) const {
            return Stored(Table(), Line, field, Key());
        }
    };

    void TurnTo(const std::string& item) {
        if (window_ && window_->Form().Item == item) return;
        if (window_) {
            const QPointer<frmWorksheet> closing = window_;
            EXPECT_TRUE(window_->close()) << S(window_->windowTitle());
            EXPECT_TRUE(WaitFor([&] { return !closing || !closing->isVisible(); }));
        }
        window_ = item.empty() ? nullptr : Sheet("edit", item);
        ASSERT_TRUE(item.empty() || window_) << item;
    }

    /// The first column has all the tries, those that are keyed alike fewer.
    std::vector<std::pair<std::string, Try>> Entries(const Cells& cells) {
        std::vector<std::pair<std::string, Try>> entries;
        const std::vector<std::string> fields = FieldsOf(cells);
        const Tries fewer = cells.Fields == "CC_*" ? Tries{cells.Keyed.back()} : Fewer(cells.Keyed);
        for (const std::string& field : fields) {
            walked_[cells.Item].insert(field);
            for (const Try& each : field == fields.front() ? cells.Keyed : fewer)
                entries.emplace_back(field, each);
        }
        return entries;
    }

    /// One that is put right, one that is refused, and the last.
    static Tries Fewer(const Tries& all) {
        Tries fewer;
        const auto add = [&](auto is) {
            const auto found = std::ranges::find_if(all, is);
            if (found != all.end()) fewer.push_back(*found);
        };
        add([](const Try& each) { return each.Stored && !each.Box.empty(); });
        add([](const Try& each) { return !each.Stored; });
        fewer.push_back(all.back());
        return fewer;
    }

    const std::vector<std::string>& FieldsOf(const Cells& cells) {
        std::vector<std::string>& fields = fields_[cells.Item + " " + cells.Fields];
        if (!fields.empty()) return fields;
        if (cells.Fields != "CC_*") return fields = WordsOf(cells.Fields, " ");
        for (const FormColumn& column : window_->Form().Columns)
            if (column.Field.starts_with("CC_")) fields.push_back(column.Field);
        return fields;
    }

    // --- The grid

    void LeaveRow() {
        const bool first = window_->Grid().currentIndex().row() == 0;
        Press(first ? Qt::Key_Down : Qt::Key_Up);
    }

    void PickFromList(const std::string& entry) {
        Press(Qt::Key_F4);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions())
            if (S(action->text()) == entry) menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
    }

    void KeyEntry(const Try& each) {
        if (each.Picked) return PickFromList(each.Keys);
        if (each.Keys.empty()) return Press(Qt::Key_Delete);
        Type(each.Keys);
        Press(Qt::Key_Return);
    }

    void Key(const Cell& cell, const Try& each) {
        SCOPED_TRACE("grid: " + cell.Place() + " '" + each.Keys + "'");
        At(window_, cell.Line, cell.Field);
        if (HasFatalFailure()) return;
        const std::string before = cell.InStore(cell.Field);
        Boxes.clear();
        if (each.OnLeaving) return KeyRow(cell, each, before);
        KeyEntry(each);
        ExpectBox(cell, each);
        if (!each.Stored) {
            EXPECT_EQ(Current(window_), NumberText(cell.Line) + " " + cell.Field)
                << "keeps the focus";
            EXPECT_EQ(window_->Model().KeyedRow(), -1);
        }
        At(window_, cell.Line, cell.Field);
        LeaveRow();
        ExpectStored(cell, each, before);
        EXPECT_LE(Boxes.size(), each.Box.empty() ? 0U : 1U);
    }

    /// The row stays keyed under the cursor until Escape takes it back.
    void KeyRow(const Cell& cell, const Try& each, const std::string& before) {
        if (each.Keys.empty()) Press(Qt::Key_Delete);
        Type(each.Keys);
        LeaveRow();
        ExpectBox(cell, each);
        const int row = window_->Model().RowOf(Currency(cell.Line));
        EXPECT_EQ(window_->Model().KeyedRow(), row);
        EXPECT_TRUE(WaitFor([&] { return window_->Grid().currentIndex().row() == row; }));
        Press(Qt::Key_Escape);
        EXPECT_EQ(window_->Model().KeyedRow(), -1);
        EXPECT_EQ(cell.InStore(cell.Field), before);
    }

    void ExpectBox(const Cell& cell, const Try& each) {
        if (each.Box.empty()) {
            EXPECT_EQ(BoxTexts(), std::vector<std::string>());
            return;
        }
        ASSERT_EQ(Boxes.size(), 1U);
        EXPECT_EQ(Boxes[0].Title + "|" + Boxes[0].Text, BoxOf(cell, each));
        EXPECT_EQ(Boxes[0].Style, StyleOf(each));
    }

    // --- The command

    void Set(const Cell& cell, const Try& each) {
        SCOPED_TRACE("command: " + cell.Place() + " '" + each.Keys + "'");
        const std::string before = InCopy(cell, cell.Field);
        const CommandResult result = RunCommand(
            {"set", copy_, cell.Table(), NumberText(cell.Line), cell.Field, "--", each.Keys},
            folder.File("cli.ini"));
        EXPECT_EQ(result.Out, "");
        EXPECT_EQ(result.Err, LineOf(cell, each));
        EXPECT_EQ(result.Status, each.Box.empty() ? 0 : 2);
        EXPECT_EQ(InCopy(cell, cell.Field), each.Stored.value_or(before));
        if (each.Also.empty()) return;
        const auto also = WordsOf(each.Also, "=");
        EXPECT_EQ(InCopy(cell, also[0]), also[1]) << also[0];
    }

    /// Read beside the program: it need not open the file for that.
    std::string InCopy(const Cell& cell, const std::string& field) {
        return ReadCell(copy_, "SELECT " + field + " FROM " + cell.Table() + " WHERE " +
                                   cell.Key() + " = " + NumberText(cell.Line) + ";");
    }

    /// The box as a line of the command.
    static std::string LineOf(const Cell& cell, const Try& each) {
        if (each.Box.empty()) return "";
        const std::string box = BoxOf(cell, each);
        const int style = StyleOf(each);
        const std::string severity = style == kCritical      ? "ERROR"
                                     : style == kExclamation ? "Warning"
                                                             : "F.Y.I.";
        return severity + "\t" + box.substr(box.find('|') + 1) + "\n";
    }

    // --- Both

    static std::string BoxOf(const Cell& cell, const Try& each) {
        return S(Q(each.Box).replace("{cell}", Q(cell.Place())));
    }
    static int StyleOf(const Try& each) {
        if (each.Box.starts_with("Entry Warning|")) return kInformation;
        return each.Box.find("|This field may not exceed") != std::string::npos ? kExclamation
                                                                                : kCritical;
    }
    static void ExpectStored(const Cell& cell, const Try& each, const std::string& before) {
        EXPECT_EQ(cell.InStore(cell.Field), each.Stored.value_or(before));
        if (each.Also.empty()) return;
        const auto also = WordsOf(each.Also, "=");
        EXPECT_EQ(cell.InStore(also[0]), also[1]) << also[0];
    }

    std::string copy_ = folder.File("Copy.CRF");
    QPointer<frmWorksheet> window_;
    std::map<std::string, std::set<std::string>> walked_;
    std::map<std::string, std::vector<std::string>> fields_;
};

TEST_F(CellWalk, TheEditorsOfA) {
    Walk(CellsOfA());
    ExpectAllWalked({"A", "A6", "A7p1", "A7p2", "A8", "A81p1", "A81p2"});
}

TEST_F(CellWalk, TheEditorsOfGOfTheCostCentersAndOfTheBases) {
    Walk(CellsOfGAndBases());
    ExpectAllWalked({"G", "G1", "CCs", "ES"});
}

TEST_F(CellWalk, TheEditorsOfS) {
    Walk(CellsOfS());
    ExpectAllWalked({"Sp1", "S1p1", "S1p2", "S2p1", "S2p2", "S2p3"});
}

TEST_F(CellWalk, TheEditorsOfTheSchedules) {
    Walk(CellsOfSchedules());
    ExpectAllWalked({"Bp1", "Bp2", "Bp3", "B1p1", "B1p2", "B1p3", "C1p1", "C1p2", "C1p3", "D1p1",
                     "D1p2", "D1p3", "E1p1", "E1p2", "E1p3"});
}

TEST_F(CellWalk, TheDateOfTheStatementsLiesInTheFuture) {
    // A year that no New Year's Eve reaches while this runs.
    const std::string year = std::to_string(QDate::currentDate().year() + 2);
    Walk({{"S1p1", 4, "Col_3", {{"n", "No"}}},
          {"S1p1", 4, "Col_4", {{"1/1/" + year, "01/01/" + year}}}});
}

// What is shown and not keyed: the keys open nothing, and the command says so.
TEST_F(CellWalk, ClosedCellsTakeNothing) {
    const Try refused{"1", kKeeps, LockedBox()};
    for (const Closed& closed : ClosedCells()) {
        TurnTo(closed.Item);
        ASSERT_FALSE(HasFatalFailure());
        for (const std::string& field : WordsOf(closed.Fields, " ")) {
            SCOPED_TRACE(closed.Item + " " + NumberText(closed.Line) + " " + field);
            At(window_, closed.Line, field);
            ASSERT_FALSE(HasFatalFailure());
            Type("1");
            EXPECT_EQ(window_->Grid().Editor(), nullptr);
            EXPECT_EQ(window_->Model().KeyedRow(), -1);
        }
    }
    TurnTo("");
    EXPECT_EQ(BoxTexts(), std::vector<std::string>());
    DropCrf();
    for (const Closed& closed : ClosedCells())
        for (const std::string& field : WordsOf(closed.Fields, " "))
            Set({closed.Item, closed.Line, field}, refused);
}

}  // namespace
}  // namespace zolmara::ui
