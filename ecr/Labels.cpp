#include "ecr/Labels.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "ecr/Record.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kRecordLayout = "B02";

/// The revision is the last part of the program's version; the file counts from one.
int RevisionInFile() { return static_cast<int>(Val(gVersion.substr(gVersion.rfind('.') + 1))) + 1; }

DateTime LayoutDate() { return DateTime(2023, 12, 31); }

std::string JulianField(const Variant& date) { return Fortran(date, "J7", " ", false); }

std::string_view RightText(std::string_view text, std::size_t count) {
    const std::size_t length = TextLength(text);
    return length > count ? MidText(text, length - count + 1) : text;
}

/// The home office's number in the first record.
std::string NumberInFile() { return Fortran(ShortProviderNumber(), "I6", "0", false); }

}  // namespace

std::string ShortProviderNumber() {
    return fmt::format("{}{}", LeftText(gProviderNumber, 2), RightText(gProviderNumber, 4));
}

bool IsOwnEcr(std::string_view head) {
    return head.starts_with(fmt::format("1{:10} 1   {}", "", NumberInFile()));
}

void ECR_Type1(EcrRun& run, const DateTime& stamp) {
    run.ECRLine =
        fmt::format("1{:10} 1   {}{}{}H{}P{}{}{}", "", NumberInFile(), JulianField(gFYStart),
                    JulianField(gFYEnd), kRecordLayout, Fortran(RevisionInFile(), "I3", "0", false),
                    JulianField(stamp), JulianField(LayoutDate()));
    run.WriteRecord();
    run.ECRLine = fmt::format("1{:11}2{:7}287-22", "", "");
    run.WriteRecord();
    run.ECRLine = fmt::format("1{:11}4{:7}{}", "", "", FormatDate(stamp, "hh:nn"));
    run.WriteRecord();
}

// --- Names ---------------------------------------------------------------------------------

namespace {

/// The subscript as the contractors' systems know it in name records: whatever the double
/// arithmetic leaves, cut, so that the first subscript of most lines is blank.
std::string NameSubscript(double line) {
    return Fortran((line - std::trunc(line)) * 100, "I2", " ", true);
}

void WriteCostCenterNames(EcrRun& run) {
    Recordset rows =
        gDB.OpenRecordset("Select * From CostCenters Order By LineNum;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const double line = CurOr(rows["LineNum"]).ToDouble();
        run.ECRLine =
            fmt::format("2A000000  {}{}{:9}{}", Fortran(std::trunc(line), "I3", " ", false),
                        NameSubscript(line), "", Fortran(rows["CCName"], "C36", " ", false));
        run.WriteRecord();
    }
}

// --- Statistics ----------------------------------------------------------------------------

/// How the labels of a table's statistics are written, and where they stand in its rows.
struct LabelRecords {
    std::string_view Query;
    int FirstField;  ///< position of StatLabel1; the fields behind it to the last are written
    int LineOffset;  ///< from a field's position to the line number of its record
    std::string_view CodeFormat;  ///< of StatCode
    std::string (*Worksheet)(const Recordset& row);
    std::string (*Column)(const Recordset& row);
};

std::string ScheduleOfCenter(const Recordset& row) {
    return CurOr(row["LineNum"]) < Currency::FromWhole(3) ? "C100000" : "D100000";
}

std::string ColumnOfCenter(const Recordset& row) { return LineField(CurOr(row["LineNum"])); }

/// "E-1 Part II" is as many characters longer than nine as its part counts.
std::string ScheduleOfPool(const Recordset& row) {
    static constexpr int kNameAheadOfPart = 9;
    if (CurOr(row["LineNum"]) == Currency::FromWhole(1)) return "E000000";
    return fmt::format("E10000{}",
                       static_cast<int>(TextLength(Text(row["CCName"]))) - kNameAheadOfPart);
}

std::string ColumnOfPool(const Recordset& /*row*/) { return ColumnField(1); }

constexpr LabelRecords kCenterLabels = {
    "Select * From CostCenters Order By LineNum;", 5, -1, "I1", ScheduleOfCenter, ColumnOfCenter};
constexpr LabelRecords kPoolLabels = {
    "Select * From ES Order By LineNum;", 2, 2, "C10", ScheduleOfPool, ColumnOfPool};

bool HasLabels(const Recordset& row) {
    return !row["StatLabel1"].IsNull() || !row["StatLabel2"].IsNull();
}

/// A field as it stands in the record; brackets are left out of labels.
std::string LabelField(const Recordset& row, int field, std::string_view codeFormat) {
    if (SameText(row.FieldName(field), "StatCode") && codeFormat.starts_with('I'))
        return Fortran(row[field], codeFormat, " ", false);
    std::string label = Text(row[field]);
    std::erase_if(label, [](char letter) { return letter == '(' || letter == ')'; });
    return Fortran(label, "C10", " ", false);
}

void WriteLabels(EcrRun& run, const LabelRecords& records) {
    Recordset rows = gDB.OpenRecordset(records.Query, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (!HasLabels(rows)) continue;
        const std::string worksheet = records.Worksheet(rows);
        const std::string column = records.Column(rows);
        for (int field = records.FirstField; field < rows.FieldCount(); ++field) {
            const std::string label = LabelField(rows, field, records.CodeFormat);
            if (Trim(label).empty()) continue;
            run.ECRLine =
                fmt::format("2{}  {}  {}{}", worksheet,
                            Fortran(field + records.LineOffset, "I3", " ", true), column, label);
            run.WriteRecord();
        }
    }
}

}  // namespace

void ECR_Type2(EcrRun& run) {
    WriteCostCenterNames(run);
    WriteLabels(run, kCenterLabels);
    WriteLabels(run, kPoolLabels);
}

}  // namespace zolmara
