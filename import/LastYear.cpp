#include "import/LastYear.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "import/Period.h"
#include "import/S2Agreement.h"
#include "import/TakeCells.h"
#include "store/CopyRows.h"
#include "store/ReadSnapshot.h"
#include "store/session/Session.h"
#include "worksheets/FurnishedCrf.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

constexpr std::string_view kTitle = "New From Last Year";

std::optional<Period> LastPeriod() {
    const Recordset master = gImportDB.OpenRecordset("SELECT FYStart, FYEnd FROM Master;");
    if (master.Empty()) return std::nullopt;
    const auto start = DateOf(master[0]);
    const auto end = DateOf(master[1]);
    if (!start || !end) return std::nullopt;
    return Period{start->AtMidnight(), end->AtMidnight()};
}

// --- Structure ---------------------------------------------------------------------------------

/// Carried over whole: the schedules take their columns and rows from them.
constexpr std::array<std::string_view, 8> kStructure = {
    "CostCenters", "ES", "HeaderLines", "S1p1", "S1p2", "S2p1", "S2p2", "S2p3"};

bool IsStructure(std::string_view item) {
    return std::ranges::any_of(kStructure,
                               [&](std::string_view each) { return SameText(each, item); });
}

/// Line 2 of S-1 Part I is the identity that the new file was made with; line 4, the financial
/// statements, is of the year that it tells of.
void CarryS1p1(bool withStatements) {
    const Recordset made = gDB.OpenRecordset(
        "SELECT Col_1, Col_2, Col_4, Col_5 FROM S1p1 WHERE LineNum=2;", dbOpenSnapshot);
    TakeRows("S1p1");
    gDB.Execute("UPDATE S1p1 SET Col_1=?, Col_2=?, Col_4=?, Col_5=? WHERE LineNum=2;",
                {made[0], made[1], made[2], made[3]});
    if (withStatements) return;
    gDB.Execute(
        "UPDATE S1p1 SET Col_1=Null, Col_2=Null, Col_3=Null, Col_4=Null, Col_5=Null, Col_6=Null "
        "WHERE LineNum=4;");
}

// --- The components' periods -------------------------------------------------------------------

constexpr std::string_view kDatePattern = "mm/dd/yyyy";

struct PeriodField {
    std::string_view Field;
    std::string_view Title;
    DateTime Was;
    DateTime Is;
};

/// A date that was the old period's becomes the new one's. Any other is the component's own, of
/// a year that is over: it is keyed again.
void MoveDate(std::string_view table, Recordset& row, const PeriodField& field) {
    const Variant& value = row[field.Field];
    if (IsBlankValue(value)) return;
    const auto date = DateOf(value);
    const bool same = date && date->AtMidnight() == field.Was;
    if (!same)
        MsgOrLog(
            fmt::format("Line {} of {}, \"{}\": {} {} is not that of last year's period and "
                        "has been left empty.",
                        Text(row["LineNum"]), table, StrOr(row["Col_1"]), field.Title, Text(value)),
            kExclamation, std::string(kTitle));
    row.Edit();
    row.Set(field.Field, same ? Variant(FormatDate(field.Is, kDatePattern)) : Variant());
    row.Update();
}

void MovePeriods(const Period& last, const Period& next) {
    const std::array<PeriodField, 2> fields = {
        {{"Col_4", "Report Beginning", last.Start, next.Start},
         {"Col_5", "Report Ending", last.End, next.End}}};
    for (const std::string_view table : {"S2p1", "S2p2"}) {
        Recordset rows =
            gDB.OpenRecordset(fmt::format("SELECT * FROM {} ORDER BY LineNum;", table));
        for (; !rows.Eof(); rows.MoveNext())
            for (const PeriodField& field : fields) MoveDate(table, rows, field);
    }
}

/// Last year's period as its file has it; where it has none, no date of a component can be of it.
Period OldPeriod() { return LastPeriod().value_or(Period{}); }

Period NewPeriod() {
    return {DateOf(gFYStart).value_or(DateTime()), DateOf(gFYEnd).value_or(DateTime())};
}

// --- All of it ---------------------------------------------------------------------------------

bool IsNamed(std::span<const std::string> items, std::string_view item) {
    return std::ranges::any_of(items,
                               [&](const std::string& each) { return SameText(each, item); });
}

void CarryStructure(std::span<const std::string> takeAlong) {
    for (const std::string_view table : kStructure) {
        if (table == "S1p1")
            CarryS1p1(IsNamed(takeAlong, table));
        else
            TakeRows(table);
    }
    MovePeriods(OldPeriod(), NewPeriod());
    if (!IsNamed(takeAlong, "S2p3")) gDB.Execute("UPDATE S2p3 SET Col_6=Null;");
    for (const Worksheet& sheet : AllWorksheets())
        if (!IsStructure(sheet.Item)) BuildWorksheet(sheet.Item);
}

/// In the batch that makes the file's tables, where messages are logged.
void Furnish(std::span<const std::string> takeAlong) {
    const ReadSnapshot snapshot(gImportDB);
    TheStatus().ShowCalcMsg(" Carrying over the structure");
    CarryStructure(takeAlong);
    double done = 0;
    for (const std::string& item : takeAlong) {
        TheStatus().ShowCalcMsg(" Processing worksheet " + item);
        if (!IsStructure(item)) TakeKeyedCells(item);
        TheStatus().ShowProgress(++done / static_cast<double>(takeAlong.size()));
        TheStatus().DoEvents();
    }
    CompareS2WithSchedules(takeAlong);
    TheStatus().HideCalcMsg();
}

void NeedKnown(std::span<const std::string> takeAlong) {
    const auto known = WorksheetsToTakeAlong();
    for (const std::string& item : takeAlong)
        if (!IsNamed(known, item))
            throw StoreError(StoreError::Kind::Other,
                             fmt::format("{} has no keyed cells to take along", item));
}

}  // namespace

NewCrfFields FieldsAfterLastYear(const std::string& start, const std::string& end) {
    NewCrfFields fields;
    const Recordset master =
        gImportDB.OpenRecordset("SELECT ProviderNumber, ProviderName FROM Master;");
    fields.ProviderNum = StrOr(master[0]);
    fields.FacilityName = StrOr(master[1]);
    fields.FYStart = start;
    fields.FYEnd = end;
    const auto last = LastPeriod();
    const auto first = ParseDate(start);
    // A start that is no date is for the checks to refuse.
    if (!last || (!Trim(start).empty() && !first)) return fields;
    const Period next = NextPeriod(*last, first);
    if (!first) fields.FYStart = FormatDate(next.Start, "Short Date");
    if (Trim(end).empty()) fields.FYEnd = FormatDate(next.End, "Short Date");
    return fields;
}

std::vector<std::string> WorksheetsToTakeAlong() {
    std::vector<std::string> items;
    for (const Worksheet& sheet : AllWorksheets())
        if (HasKeyedCells(sheet)) items.emplace_back(sheet.Item);
    return items;
}

bool CreateFromLastYear(const std::string& path, const NewCrfFields& fields,
                        std::span<const std::string> takeAlong) {
    NeedKnown(takeAlong);
    return CreateFurnishedCrf(path, fields, [&] { Furnish(takeAlong); });
}

}  // namespace zolmara
