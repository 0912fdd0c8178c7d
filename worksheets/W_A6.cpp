#include "worksheets/W_A6.h"

#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

bool IsCode(std::string_view text) { return text.size() == 1 && text[0] >= 'A' && text[0] <= 'Z'; }

int ValidateCode(Variant& value, Variant& outName) {
    value = UCase(Text(value));
    outName = value;
    return IsCode(value.AsText()) ? 0 : 1;
}

/// The name of a cost center that takes reclassifications; none for any other line.
std::optional<Variant> ReclassifiableName(double line) {
    if (!Currency::Holds(line)) return std::nullopt;
    const Recordset found = gDB.OpenRecordset(
        "SELECT LineNum, CCName FROM CostCenters WHERE LineNum = ? And LineNum Not "
        "In(3,7,28,99,100);",
        {Currency(line)});
    if (found.Eof()) return std::nullopt;
    return found["CCName"];
}

int ValidateLine(int column, Variant& value, Variant& outName) {
    if (value.IsNull()) value = "";
    if (IsBlankValue(value)) {
        outName = nullptr;
        return 0;
    }
    if (!IsNumeric(value)) return 1;
    const double line = NumOr(value);
    if (line == 0) return 0;
    const std::optional<Variant> name = ReclassifiableName(line);
    if (!name) return column == 4 ? 3 : 6;
    outName = *name;
    return 0;
}

/// The last whole line that so many entries take; the rest become its subscripts.
std::int64_t LastWholeLine(std::int64_t entries) { return 99 - (entries - 100) / 99; }

void Resequence() {
    gDB.Execute("UPDATE A6 SET LineNum = [LineNum]+10000 WHERE LineNum<100;");
    Recordset entries =
        gDB.OpenRecordset("SELECT LineNum From A6 WHERE LineNum>100 ORDER BY Col_2, LineNum;");
    const auto count = static_cast<std::int64_t>(entries.RecordCount());
    Currency line;
    for (; !entries.Eof(); entries.MoveNext()) {
        line = NextEntryLine(line, count);
        entries.Edit();
        entries.Set(0, line);
        entries.Update();
    }
}

}  // namespace

const std::vector<WorksheetField>& Fields_A6(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Col_1", dbText, 40, "Explanation", Keyed},
        {"Col_2", dbText, 1, "Code", Keyed},
        {"Col_3", dbText, 40, "Up Cost Center", Computed},
        {"Col_4", dbDouble, 0, "Up CC Line #", Keyed},
        {"Col_5", dbDouble, 0, "Up Amount", Keyed},
        {"Col_6", dbText, 40, "Dn Cost Center", Computed},
        {"Col_7", dbDouble, 0, "Dn CC Line #", Keyed},
        {"Col_8", dbDouble, 0, "Dn Amount", Keyed},
    };
    return fields;
}

void Build_A6() {
    MakeWorksheetTable("A6");
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_1,Col_5,Col_8) VALUES (100,'TOTAL RECLASSIFICATIONS',0,0);");
    MakeWorksheetIndex("A6");
    RegisterBuiltWorksheet("A6");
}

void Calc_A6() {
    gDB.Execute(
        "UPDATE A6 SET Col_3 = Null, Col_5 = Null WHERE LineNum<100 AND (Col_4 Is Null Or "
        "Col_4<=0);");
    gDB.Execute(
        "UPDATE A6 SET Col_6 = Null, Col_8 = Null WHERE LineNum<100 AND (Col_7 Is Null Or "
        "Col_7<=0);");
    const Recordset totals = gDB.OpenRecordset(
        "SELECT SUM(Col_5) as TotAmt1, SUM(Col_8) as TotAmt2 FROM A6 WHERE LineNum < 100;");
    gDB.Execute("Update A6 Set Col_5=?,Col_8=? Where LineNum=100;",
                {NumOr(totals[0]), NumOr(totals[1])});
}

void SyncNames_A6() {
    gDB.Execute(
        "UPDATE A6 SET Col_3 = Null, Col_5 = Null WHERE Col_4=0 Or Col_4 Is Null And LineNum < "
        "100;");
    gDB.Execute(
        "UPDATE A6 SET Col_6 = Null, Col_8 = Null WHERE Col_7=0 Or Col_7 Is Null And LineNum < "
        "100;");
    gDB.Execute(
        "UPDATE A6 INNER JOIN CostCenters ON A6.Col_4 = CostCenters.LineNum SET A6.Col_3 = "
        "[CCName];");
    gDB.Execute(
        "UPDATE A6 INNER JOIN CostCenters ON A6.Col_7 = CostCenters.LineNum SET A6.Col_6 = "
        "[CCName];");
}

Currency NextEntryLine(Currency line, std::int64_t entries) {
    return line +
           (line < Currency::FromWhole(LastWholeLine(entries)) ? kWholeStep : kSubscriptStep);
}

void ResequenceLines_A6() { RunAct("Number the lines of A-6", Resequence); }

int ValidateCell_A6(int column, Variant& value, Variant& outName) {
    switch (column) {
        case 1:
            return 0;
        case 2:
            return ValidateCode(value, outName);
        case 4:
        case 7:
            return ValidateLine(column, value, outName);
        case 5:
        case 8:
            return IsNumeric(value) ? 0 : column;
        default:
            return 99;
    }
}

}  // namespace zolmara
