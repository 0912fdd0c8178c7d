#include "editchecks/CheckedCrf.h"

#include <fmt/format.h>

#include "calc/Calc_All.h"
#include "editchecks/modEditChecks.h"

namespace zolmara::test {
namespace {

std::string ShortLevel(const std::string& level) {
    if (level == kNonFatalError) return "NF";
    return level == kPotentialError ? "PE" : level;
}

}  // namespace

Findings AllFindings() {
    Findings findings;
    Recordset rows = gDB.OpenRecordset("Select * From Error;");
    for (; !rows.Eof(); rows.MoveNext())
        findings.push_back(
            fmt::format("{} | {} | {}", ShortLevel(Text(rows[0])), Text(rows[1]), Text(rows[2])));
    return findings;
}

Findings Only(const Findings& findings, std::string_view beginning) {
    Findings result;
    for (const std::string& finding : findings) {
        if (finding.starts_with(beginning)) result.push_back(finding);
    }
    return result;
}

CheckedCrf::CheckedCrf() { Build_Error(); }

Findings CheckedCrf::Found(void (*check)()) { return FoundBy(check); }

void CheckedCrf::AddRow(std::string_view table, double line, Fields fields) {
    gDB.Execute(
        fmt::format("INSERT INTO {} ({}) VALUES (?);", table, gDB.Table(table).Fields.front().Name),
        {Variant(Currency(line))});
    SetRow(table, line, fields);
}

void CheckedCrf::SetRow(std::string_view table, double line, Fields fields) {
    for (const auto& [field, value] : fields) SetCell(table, line, field, value);
}

void CheckedCrf::MakeClean() {
    RunBatch(gDB, [] {
        SetRow("S1p1", 1,
               {{"Col_1", "1 Main St"},
                {"Col_4", "Springfield"},
                {"Col_5", "IL"},
                {"Col_6", "62701"}});
        SetRow("S1p1", 2, {{"Col_3", "01/01/1990"}});
        SetRow("S1p1", 3, {{"Col_1", "3"}});
        SetRow("S1p1", 4, {{"Col_1", "No"}, {"Col_3", "Yes"}, {"Col_5", "Yes"}});
        SetRow("S1p1", 5,
               {{"Col_1", "Ann"},
                {"Col_2", "Lee"},
                {"Col_3", "CFO"},
                {"Col_4", "555-0100"},
                {"Col_5", "ann@example.org"},
                {"Col_6", "Sample"}});
        for (int line = 1; line <= 5; ++line) SetRow("S1p2", line, {{"Col_2", "Ann Lee"}});
        SetRow("A7p1", 1, {{"Col_1", 1000}});
        SetRow("G", 11, {{"Col_1", 1000}});
        SetRow("G", 47, {{"Col_1", 1000}});
        SetRow("G1", 1, {{"Col_2", 500}});
    });
    Calc_All();
}

}  // namespace zolmara::test
