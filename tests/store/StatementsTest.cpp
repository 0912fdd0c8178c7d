// Every statement of the system runs as it stands.

#include <gtest/gtest.h>

#include <filesystem>

#include "store/FilledCrf.h"
#include "store/StatementsCore.h"
#include "store/StatementsHomeOffice.h"
#include "store/StatementsLines.h"
#include "store/StatementsSchedules.h"
#include "store/StatementsSheets.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

class Statements : public SessionTest, public testing::WithParamInterface<StatementGroup> {
protected:
    /// Every item's statements begin on the file as it was filled.
    void StartAnew() { OpenFilledCopy(folder.File("Statements.CRF")); }
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
