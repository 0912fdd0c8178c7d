// After whatever changes, Calc_Changed leaves the file as Calc_All would, to the last bit, and says
// what it would say. ZOLMARA_EDITS=n makes n steps with each seed.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "store/DatabaseImpl.h"
#include "store/WholeStep.h"
#include "store/session/Acts.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "worksheets/ExplainedStatements.h"
#include "worksheets/Schedules.h"
#include "worksheets/Sheets.h"

namespace zolmara {
namespace {

using namespace test;

/// Changes of the kind that a person, an import or a command makes, drawn at random.
class Changes {
public:
    Changes(unsigned seed, const TempFolder& folder) : random_(seed), folder_(folder) {}

    /// Makes one, and tells which.
    std::string Make() {
        struct Kind {
            int Weight;
            std::string (Changes::*Make)();
        };
        static constexpr Kind kKinds[] = {{8, &Changes::KeyCell},
                                          {10, &Changes::KeyInSchedule},
                                          {3, &Changes::KeyInputOfA},
                                          {2, &Changes::ChangeText},
                                          {1, &Changes::AddCenter},
                                          {1, &Changes::DropCenter},
                                          {1, &Changes::AddComponent},
                                          {1, &Changes::DropComponent},
                                          {1, &Changes::RenameComponent},
                                          {1, &Changes::ImportCell},
                                          {1, &Changes::ClearRow},
                                          {1, &Changes::CopyColumn},
                                          {1, &Changes::ChangeElsewhere},
                                          {2, &Changes::TakenBack},
                                          {1, &Changes::MakeAnew},
                                          {2, &Changes::Undo},
                                          {2, &Changes::Redo}};
        int place = 0;
        for (const Kind& kind : kKinds) place += kind.Weight;
        place = Below(place);
        const Kind* kind = kKinds;
        for (; place >= kind->Weight; ++kind) place -= kind->Weight;
        return (this->*kind->Make)();
    }

private:
    struct Place {
        std::string Table;
        double Line;
        std::string Field;
    };

    int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    template <class List>
    const auto& AnyOf(const List& list) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(list.size())))];
    }

    /// Any number of any worksheet, keyed or computed.
    Place AnyNumber() {
        for (;;) {
            const std::string table(AnyOf(AllWorksheets()).Item);
            const TableDef& def = gDB.Table(table);
            const FieldDef& field = AnyOf(def.Fields);
            if (field.Type != FieldType::dbDouble) continue;
            const std::vector<double> lines =
                Column(fmt::format("SELECT {} FROM {};", def.Fields[0].Name, table));
            if (!lines.empty()) return {table, AnyOf(lines), field.Name};
        }
    }

    Variant AnyAmount() {
        switch (Below(7)) {
            case 0:
                return {};
            case 1:
                return 0;
            case 2:
                return (Below(2000000) - 1000000) / 100.0;
            case 3:
                return Below(5);  // so that several are the largest
            case 4:
                return 1e14 + Below(100) / 10.0;
            default:
                return Below(1000000);
        }
    }

    std::string Key(const Place& place) {
        const Variant amount = AnyAmount();
        RunAct("Enter", [&] { SetCell(place.Table, place.Line, place.Field, amount); });
        return fmt::format("{} line {} {} = {}", place.Table, place.Line, place.Field,
                           Text(amount));
    }

    std::string KeyCell() { return Key(AnyNumber()); }

    /// Any number of a schedule, its totals, costs and multipliers among them.
    Place AnyOfSchedule() {
        static const std::vector<std::string> families = {"Bp", "B1p", "C1p", "D1p", "E1p",
                                                          "Cp", "Dp",  "C1p", "D1p"};
        const std::string table = fmt::format("{}{}", AnyOf(families), 1 + Below(3));
        const bool anyField = Below(4) == 0;
        for (;;) {
            const FieldDef& field = AnyOf(gDB.Table(table).Fields);
            // Some columns are keyed again and again, so that the others stand.
            const bool wanted = anyField || field.Name == "Col_1" || field.Name == "CC_100" ||
                                field.Name == "CC_200" || field.Name == "CC_900" ||
                                field.Name == "CC_1000";
            if (field.Type != FieldType::dbDouble || !wanted) {
                if (Below(200) == 0) return AnyNumber();
                continue;
            }
            return {table, AnyOf(Column(fmt::format("SELECT LineNum FROM {};", table))),
                    field.Name};
        }
    }

    std::string KeyInSchedule() { return Key(AnyOfSchedule()); }

    /// What A is made from, and what is spread from it.
    std::string KeyInputOfA() {
        static const std::vector<std::pair<std::string, std::string>> inputs = {
            {"A", "Col_1"},     {"A6", "Col_5"},    {"A6", "Col_8"}, {"A7p1", "Col_1"},
            {"A7p2", "Col_1"},  {"A8", "Col_3"},    {"A8", "Col_5"}, {"A81p1", "Col_4"},
            {"A81p1", "Col_5"}, {"A81p1", "Col_6"}, {"A", "Col_8"},  {"E", "Col_2"}};
        const auto& [table, field] = AnyOf(inputs);
        const std::vector<double> lines =
            Column(fmt::format("SELECT {} FROM {};", gDB.Table(table).Fields[0].Name, table));
        if (lines.empty()) return "nothing";
        return Key({table, AnyOf(lines), field});
    }

    /// More rows at once than one by one are followed.
    std::string CopyColumn() {
        const Place from = AnyOfSchedule();
        const Place to = AnyOfSchedule();
        if (gDB.Table(from.Table).FieldIndex(to.Field) < 0) return "nothing";
        RunAct("Copy", [&] {
            gDB.Execute(fmt::format("UPDATE {} SET {}={};", from.Table, to.Field, from.Field));
        });
        return fmt::format("{} {} copied to {}", from.Table, from.Field, to.Field);
    }

    /// By another program, or by another connection of this one, which is the same to the store.
    std::string ChangeElsewhere() {
        const Place place = AnyOfSchedule();
        const Variant amount = AnyAmount();
        Database other = DBEngine::OpenDatabase(gCRFPath);
        other.Execute(fmt::format("UPDATE {} SET {}=? WHERE LineNum=?;", place.Table, place.Field),
                      {amount, place.Line});
        return fmt::format("elsewhere {} line {} {}", place.Table, place.Line, place.Field);
    }

    /// An edit that is refused half way, behind a calculation that saw its first half.
    std::string TakenBack() {
        const bool calculated = Below(2) == 0;
        std::string made;
        try {
            RunAct("Refused", [&] {
                RunWholeStep(gDB, [&] {
                    made = KeyInSchedule() + " and " + KeyInputOfA();
                    if (calculated) Calc_Changed();
                    throw std::runtime_error("refused");
                });
            });
        } catch (const std::runtime_error&) {
        }
        return made + (calculated ? " calculated and taken back" : " taken back");
    }

    /// The others follow S-2, and its rows would be gone.
    std::string MakeAnew() {
        const std::string item(AnyOf(AllWorksheets()).Item);
        if (FindSchedule(item) == nullptr) return "nothing";
        BuildWorksheet(item);
        return item + " made anew";
    }

    std::string RenameComponent() {
        const int part = 1 + Below(3);
        const std::vector<double> lines =
            Column(fmt::format("SELECT LineNum FROM S2p{} WHERE LineNum<51;", part));
        if (lines.empty()) return "nothing";
        RenameS2Line(Currency(AnyOf(lines)), part, fmt::format("Component {}", Below(100)), "");
        return "a component's name";
    }

    std::string ChangeText() {
        SetCell("A6", 1, "Col_1", fmt::format("a{}\r\nb", Below(100)));
        RenameCostCenter(Currency::FromWhole(8), fmt::format("Center {}", Below(100)));
        return "texts";
    }

    /// Behind the last subscript of its line, or in the place of one. With two and more behind it
    /// the columns cannot move up: it is refused, ahead of any change.
    std::string AddCenter() {
        const int group = Below(5) == 0 ? 1 + Below(2) : 8 + Below(20);
        const auto subscripts =
            Column(fmt::format("SELECT LineNum FROM CostCenters WHERE LineNum>{} And LineNum<{};",
                               group, group + 1))
                .size();
        if (subscripts > 4) return "nothing";
        const double line = group + 0.01 * (1 + Below(static_cast<int>(subscripts) + 1));
        try {
            AddCostCenter(Currency(line));
        } catch (const StoreError&) {
            return fmt::format("cost center {} refused", line);
        }
        return fmt::format("new cost center {}", line);
    }

    std::string DropCenter() {
        const std::vector<double> lines =
            Column("SELECT LineNum FROM CostCenters WHERE LineNum<27;");
        const double line = AnyOf(lines);
        if (line != static_cast<int>(line)) DeleteCostCenter(Currency(line));
        return fmt::format("cost center {} deleted", line);
    }

    std::string AddComponent() {
        const int part = 1 + Below(3);
        const double line = 10 + Below(30) + (Below(3) == 0 ? 0.01 : 0);
        if (Column(fmt::format("SELECT LineNum FROM S2p{} WHERE LineNum={};", part, line)).empty())
            AddS2Line(Currency(line), part);
        return fmt::format("component {} of part {}", line, part);
    }

    std::string DropComponent() {
        const int part = 1 + Below(3);
        const std::vector<double> lines =
            Column(fmt::format("SELECT LineNum FROM S2p{} WHERE LineNum<51;", part));
        if (lines.size() < 2) return "nothing";
        const double line = AnyOf(lines);
        DeleteS2Line(Currency(line), part);
        return fmt::format("component {} of part {} deleted", line, part);
    }

    std::string ImportCell() {
        const std::string path = folder_.File("one.txt");
        std::ofstream(path) << fmt::format("A\t8\t1\t{}\r\nC1p1\t1\t1\t{}\r\nE1p2\t1\t1\t{}\r\n",
                                           Below(100000), Below(5000), Below(5000));
        ImportAsciiFile(path);
        return "an import";
    }

    std::string ClearRow() {
        RunAct("Enter", [&] {
            gDB.Execute("UPDATE A8 SET Col_3=?, Col_5=? WHERE LineNum=?;",
                        {Below(5000), 8 + Below(4), 1 + Below(11)});
        });
        return "an adjustment";
    }

    std::string Undo() {
        if (!TheActs().CanUndo()) return "nothing to undo";
        const std::string name = TheActs().NameOfUndo();
        TheActs().Undo();
        return "undo of " + name;
    }

    std::string Redo() {
        if (!TheActs().CanRedo()) return "nothing to redo";
        const std::string name = TheActs().NameOfRedo();
        TheActs().Redo();
        return "redo of " + name;
    }

    std::mt19937 random_;
    const TempFolder& folder_;
};

// --- Two files, cell by cell -----------------------------------------------------------------

std::string_view BytesOf(sqlite3_stmt* row, int column) {
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
    const int size = sqlite3_column_bytes(row, column);
    return bytes == nullptr ? "" : std::string_view(bytes, static_cast<std::size_t>(size));
}

bool SameCell(sqlite3_stmt* one, sqlite3_stmt* other, int column) {
    const int type = sqlite3_column_type(one, column);
    if (type != sqlite3_column_type(other, column)) return false;
    if (type == SQLITE_NULL) return true;
    if (type == SQLITE_FLOAT) {
        const double a = sqlite3_column_double(one, column);
        const double b = sqlite3_column_double(other, column);
        return std::memcmp(&a, &b, sizeof a) == 0;
    }
    return BytesOf(one, column) == BytesOf(other, column);
}

/// Where the rows differ; empty where they do not.
std::string RowsThatDiffer(Database& one, Database& other, const std::string& table) {
    // The log's rows tell when they were written.
    const std::string fields = table == "Log" ? "LogType,Severity,Worksheet,Message" : "*";
    const std::string sql = fmt::format("SELECT {} FROM \"{}\" ORDER BY rowid", fields, table);
    SqliteStatement here(one.impl().Handle, sql);
    SqliteStatement there(other.impl().Handle, sql);
    for (int row = 1;; ++row) {
        const bool more = here.Step();
        if (more != there.Step()) return fmt::format("{}: number of rows", table);
        if (!more) return "";
        for (int i = 0; i < sqlite3_column_count(here.get()); ++i) {
            if (SameCell(here.get(), there.get(), i)) continue;
            return fmt::format("{} row {} {}: {} and {}", table, row,
                               sqlite3_column_name(here.get(), i), here.Text(i), there.Text(i));
        }
    }
}

class CalcChangedAtRandom : public SheetTest, public ::testing::WithParamInterface<unsigned> {
protected:
    CalcChangedAtRandom() { TheActs().Keep(true); }
    ~CalcChangedAtRandom() override {
        TheActs().Keep(false);
        twin_.Close();
    }

    using Texts = std::vector<std::string>;

    /// What a run tells the person.
    Texts Told(const std::function<void()>& run) {
        host.Boxes.clear();
        run();
        Texts texts;
        for (const auto& box : host.Boxes) texts.push_back(box.Text);
        return texts;
    }

    /// Makes the twin what the file is now: mostly under an open handle, which is cheaper.
    void CopyToTwin() {
        if (!twin_.IsOpen() || ++copies_ % 8 == 0) {
            twin_.Close();
            const std::string path = folder.File("twin.CRF");
            std::filesystem::copy_file(gCRFPath, path,
                                       std::filesystem::copy_options::overwrite_existing);
            twin_ = DBEngine::OpenDatabase(path);
            return;
        }
        sqlite3_backup* const copy =
            sqlite3_backup_init(twin_.impl().Handle, "main", gDB.impl().Handle, "main");
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(sqlite3_backup_step(copy, -1), SQLITE_DONE);
        EXPECT_EQ(sqlite3_backup_finish(copy), SQLITE_OK);
    }

    /// What Calc_All makes of the twin. As a part of a batch it is no act of the open file.
    Texts CalculateTwin() {
        std::swap(gDB, twin_);
        const Texts told = Told([] { RunBatch(gDB, Calc_All); });
        std::swap(gDB, twin_);
        return told;
    }

    void ExpectSameAsAll(const std::string& after) {
        CopyToTwin();
        const Texts all = CalculateTwin();
        const Texts changed = Told(Calc_Changed);
        EXPECT_EQ(changed, all) << after;
        const std::vector<std::string> tables = gDB.TableNames();
        ASSERT_EQ(tables.size(), twin_.TableNames().size()) << after;
        for (const std::string& table : tables)
            ASSERT_EQ(RowsThatDiffer(gDB, twin_, table), "") << after;
    }

    static int Steps() {
        const char* const wanted = std::getenv("ZOLMARA_EDITS");
        return wanted == nullptr ? 40 : std::atoi(wanted);
    }

private:
    Database twin_;
    int copies_ = 0;
};

TEST_P(CalcChangedAtRandom, ComesOutAsCalcAllToTheLastBit) {
    MakeNorthfield(folder);
    Changes changes(GetParam(), folder);
    for (int step = 0; step < Steps(); ++step) {
        std::string made = fmt::format("step {}", step);
        for (int count = 0; count <= step % 3; ++count) made += ", " + changes.Make();
        ExpectSameAsAll(made);
        if (HasFailure()) return;
        // Figures of one run are inputs of the next.
        if (step % 4 == 0) ExpectSameAsAll(made + ", and again");
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, CalcChangedAtRandom, ::testing::Range(1U, 5U));

}  // namespace
}  // namespace zolmara
