// Every statement of the system runs as it stands.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "calc/Calc_All.h"
#include "import/Staging.h"
#include "store/StatementsCore.h"
#include "store/StatementsHomeOffice.h"
#include "store/StatementsLines.h"
#include "store/StatementsSchedules.h"
#include "store/StatementsSheets.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

struct KeyedCell {
    std::string_view Table;
    double Line;
    std::string_view Field;
    Variant Value;
};

void Fill(const std::vector<KeyedCell>& cells) {
    for (const auto& cell : cells) SetCell(cell.Table, cell.Line, cell.Field, cell.Value);
}

void AddStructure() {
    AddCostCenter(Currency(4.01));
    SetCell("CostCenters", 4.01, "CCName", "Split Insurance");
    RenameCostCenter(Currency(4.01), "Split Insurance");
    const auto component = [](int part, double line, const char* name, const char* ccn) {
        AddS2Line(Currency(line), part);
        RenameS2Line(Currency(line), part, name, ccn);
    };
    component(1, 1, "General Hospital", "14-0001");
    component(1, 2, "Clinic", "14-0002");
    component(2, 1, "Parking", "");
    component(3, 1, "Region One", "HO-0001");
}

void AddEntries() {
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_1,Col_2,Col_4,Col_5,Col_7,Col_8) VALUES "
        "(1,'Officers','A',8,100,9,100);");
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_1,Col_2,Col_4,Col_5,Col_7,Col_8) VALUES "
        "(2,'Insurance','B',4.01,25,4,25);");
    gDB.Execute(
        "INSERT INTO A81p1 (SeqNum,Col_1,Col_3,Col_4,Col_5,Col_6) VALUES "
        "(1,8,'Rent',1,60,45);");
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_1,Col_2) VALUES (1,'G','Owner');");
    Fill({{"A", 1, "Col_1", 1000},     {"A", 2, "Col_1", 2000},
          {"A", 4, "Col_1", 300},      {"A", 4.01, "Col_1", 30},
          {"A", 8, "Col_1", 5000},     {"A", 9, "Col_1", 7000},
          {"A", 10, "Col_1", 100},     {"A8", 1, "Col_2", "A"},
          {"A8", 1, "Col_3", -40},     {"A8", 1, "Col_5", 10},
          {"A7p1", 1, "Col_1", 1000},  {"A7p1", 1, "Col_2", 100},
          {"A7p1", 1, "Col_3", 50},    {"A7p1", 1, "Col_5", 10},
          {"A7p2", 1, "Col_1", 300},   {"A7p2", 2, "Col_1", 100},
          {"G", 1, "Col_1", 100},      {"G", 6, "Col_1", 10},
          {"G", 11, "Col_1", 500},     {"G", 13, "Col_1", 50},
          {"G", 33, "Col_1", 400},     {"G", 41, "Col_1", 40},
          {"G", 47, "Col_1", 100},     {"G1", 1, "Col_2", 20000},
          {"G1", 4, "Col_2", 100},     {"Bp1", 1, "CC_100", 200},
          {"B1p1", 1, "CC_800", 500},  {"C1p1", 1, "CC_100", 10},
          {"C1p1", 2, "CC_100", 20},   {"C1p3", 53, "CC_100", 300},
          {"D1p1", 1, "CC_900", 1},    {"D1p3", 1, "CC_900", 1},
          {"D1p3", 53, "CC_900", 700}, {"E1p1", 1, "Col_1", 60},
          {"E1p1", 2, "Col_1", 20},    {"E1p2", 1, "Col_1", 20},
          {"S1p1", 4, "Col_3", "Yes"}, {"S1p1", 4, "Col_4", "12/31/2023"}});
}

void AddWorkTables() {
    Build_Error();
    AddErrorRow("Potential Error", "2000", "A-6");
    AddErrorRow("Potential Error", "2001", "B");
    ASSERT_TRUE(PrepareStaging());
    for (const auto& [sheet, row, col, contents] : {std::tuple{"A6", 2.0, 1.0, "100"},
                                                    {"a6", 1.0, 5.0, "500"},
                                                    {"A81P2", 1.0, 1.0, "G"},
                                                    {"CostCenter", 4.01, 0.0, "Split"},
                                                    {"S2p1", 1.0, 1.0, "Hospital"}})
        gDB.Execute("INSERT INTO ImportASCII ([WorkSheet],Row,Col,Contents) VALUES (?,?,?,?);",
                    {sheet, Currency(row), Currency(col), contents});
}

/// A calculated Cost Report File with a row of every kind, made once.
const std::string& FilledFile() {
    static const TempFolder folder;
    static const std::string path = [] {
        auto file = folder.File("Filled.CRF");
        CreateCrf(file, SampleFields());
        AddStructure();
        AddEntries();
        Calc_All();
        AddWorkTables();
        DropCrf();
        return file;
    }();
    return path;
}

class Statements : public SessionTest, public testing::WithParamInterface<StatementGroup> {
protected:
    /// Every item's statements begin on the file as it was filled.
    void StartAnew() {
        gDB.Close();
        std::filesystem::copy_file(FilledFile(), path_,
                                   std::filesystem::copy_options::overwrite_existing);
        gDB = DBEngine::OpenDatabase(path_);
    }

private:
    std::string path_ = folder.File("Statements.CRF");
};

std::string WithItem(std::string text, const std::string& item) {
    if (item.empty()) return text;
    const auto replace = [&](std::string_view mark, const std::string& by) {
        for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
            text.replace(at, mark.size(), by);
    };
    replace("{T}", item);
    replace("{P}", item.substr(item.size() - 1));
    replace("{L}", item.substr(0, 1));
    return text;
}

bool IsAction(const std::string& sql) {
    return UCase(sql.substr(0, 6)) != "SELECT" || UCase(sql).find(" INTO ") != std::string::npos;
}

void ExpectSame(const Variant& got, const Variant& expected) {
    if (expected.IsNull() || got.IsNull()) {
        EXPECT_EQ(got.IsNull(), expected.IsNull());
    } else if (expected.IsText()) {
        EXPECT_EQ(StrOr(got), expected.AsText());
    } else {
        EXPECT_NEAR(NumOr(got, -987654), NumOr(expected), 1e-9);
    }
}

Variant FirstValue(const std::string& sql) {
    const auto rows = gDB.OpenRecordset(sql);
    EXPECT_FALSE(rows.Eof()) << "No row";
    return rows.Eof() ? Variant() : rows[0];
}

void ExpectFound(const Step& step, const std::string& source, const std::string& criteria) {
    auto rows = gDB.OpenRecordset(source);
    rows.FindFirst(criteria);
    ASSERT_EQ(rows.NoMatch(), step.Expected.IsNull());
    if (!rows.NoMatch()) ExpectSame(rows[0], step.Expected);
}

void Remake(const std::string& name) {
    TableDef table = gDB.Table(name);
    table.Indexes.clear();
    gDB.DeleteTable(name);
    gDB.AppendTable(table);
    ASSERT_EQ(Rows(name), 0);
}

void RunStep(const Step& step, const std::string& item) {
    const auto text = WithItem(step.Text, item);
    const auto source = WithItem(step.Source, item);
    switch (step.What) {
        case Step::Runs:
            if (IsAction(text))
                gDB.Execute(text);
            else
                gDB.OpenRecordset(text);
            break;
        case Step::Rows:
            EXPECT_EQ(gDB.OpenRecordset(text).RecordCount(),
                      static_cast<std::size_t>(NumOr(step.Expected)));
            break;
        case Step::Gives:
            ExpectSame(FirstValue(text), step.Expected);
            break;
        case Step::Leaves:
            gDB.Execute(text);
            ExpectSame(FirstValue(source), step.Expected);
            break;
        case Step::Finds:
            ExpectFound(step, source, text);
            break;
        case Step::Refused:
            EXPECT_THROW(gDB.Execute(text), StoreError);
            break;
        case Step::Remakes:
            Remake(text);
            break;
        case Step::Appends:
            gDB.AppendField(text, {"CC", FieldType::dbDouble});
            break;
        case Step::Drops:
            gDB.DeleteTable(text);
            break;
    }
}

TEST_P(Statements, RunAsTheyStand) {
    for (const auto& item : GetParam().Items) {
        StartAnew();
        for (const auto& step : GetParam().Steps) {
            SCOPED_TRACE(WithItem(step.Text, item));
            ASSERT_NO_THROW(RunStep(step, item));
        }
    }
}

std::vector<StatementGroup> AllGroups() {
    std::vector<StatementGroup> all;
    for (auto groups :
         {CoreStatements(), TrialBalanceStatements(), AssetStatements(), AdjustmentStatements(),
          HomeOfficeStatements(), FinancialStatements(), ScheduleTables(), ScheduleCalculations(),
          CostCenterLines(), ComponentLines(), FreeLines()})
        all.insert(all.end(), groups.begin(), groups.end());
    return all;
}

INSTANTIATE_TEST_SUITE_P(Form, Statements, testing::ValuesIn(AllGroups()),
                         [](const auto& group) { return group.param.Name; });

}  // namespace
}  // namespace zolmara::test
