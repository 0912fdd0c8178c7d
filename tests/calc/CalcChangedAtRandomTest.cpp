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

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "store/DatabaseImpl.h"
#include "store/session/Acts.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "worksheets/ExplainedStatements.h"
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
        const int kind = Below(24);
        if (kind >= 20) return kind < 22 ? Undo() : Redo();
        if (kind < 12) return KeyCell();
        if (kind < 14) return ChangeText();
        if (kind == 14) return AddCenter();
        if (kind == 15) return DropCenter();
        if (kind == 16) return AddComponent();
        if (kind == 17) return DropComponent();
        if (kind == 18) return ImportCell();
        return ClearRow();
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
        switch (Below(5)) {
            case 0:
                return {};
            case 1:
                return 0;
            case 2:
                return (Below(2000000) - 1000000) / 100.0;
            default:
                return Below(1000000);
        }
    }

    std::string KeyCell() {
        const Place place = AnyNumber();
        const Variant amount = AnyAmount();
        RunAct("Enter", [&] { SetCell(place.Table, place.Line, place.Field, amount); });
        return fmt::format("{} line {} {} = {}", place.Table, place.Line, place.Field,
                           Text(amount));
    }

    std::string ChangeText() {
        SetCell("A6", 1, "Col_1", fmt::format("a{}\r\nb", Below(100)));
        RenameCostCenter(Currency::FromWhole(8), fmt::format("Center {}", Below(100)));
        return "texts";
    }

    /// Behind the last subscript of its line, or in the place of one. With two and more behind it
    /// the columns cannot move up: it is refused, ahead of any change.
    std::string AddCenter() {
        const int group = 8 + Below(20);
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
            Column("SELECT LineNum FROM CostCenters WHERE LineNum>8 And LineNum<27;");
        const double line = AnyOf(lines);
        if (line != static_cast<int>(line)) DeleteCostCenter(Currency(line));
        return fmt::format("cost center {} deleted", line);
    }

    std::string AddComponent() {
        const int part = 1 + Below(3);
        const double line = 10 + Below(30);
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

    static std::string Undo() {
        if (!TheActs().CanUndo()) return "nothing to undo";
        const std::string name = TheActs().NameOfUndo();
        TheActs().Undo();
        return "undo of " + name;
    }

    static std::string Redo() {
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
        if (step % 4 == 0) ExpectSameAsAll(made + ", and again");
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, CalcChangedAtRandom, ::testing::Range(1U, 5U));

}  // namespace
}  // namespace zolmara
