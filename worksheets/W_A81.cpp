#include "worksheets/W_A81.h"

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"

namespace zolmara {

using enum FieldType;
using enum CellKind;

const std::vector<WorksheetField>& Fields_A81p1(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"SeqNum", dbCurrency, 0, "Seq #", Key},
        {"Col_1", dbCurrency, 0, "CC #", Keyed},
        {"Col_2", dbText, 128, "Cost Center Name", Computed},
        {"Col_3", dbText, 128, "Expense Items", Keyed},
        {"Col_4", dbCurrency, 0, "Sch A81 Part II Line #", Keyed},
        {"Col_5", dbDouble, 0, "Amount Allowable In Cost", Keyed},
        {"Col_6", dbDouble, 0, "Amount Included In A Col.3", Keyed},
        {"Col_7", dbDouble, 0, "Net Adjustment", Computed},
    };
    return fields;
}

const std::vector<WorksheetField>& Fields_A81p2(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"SeqNum", dbCurrency, 0, "Seq #", Key},
        {"Col_1", dbText, 36, "Symbol", Keyed},
        {"Col_2", dbText, 128, "Interrelationship", Keyed},
        {"Col_3", dbText, 128, "Name", Keyed},
        {"Col_4", dbDouble, 0, "% of Ownership", Keyed},
        {"Col_5", dbText, 128, "Related Org. Name", Keyed},
        {"Col_6", dbDouble, 0, "Related Org. % of Ownership", Keyed},
        {"Col_7", dbText, 128, "Related Org. Type of Business", Keyed},
    };
    return fields;
}

void Build_A81p1() {
    MakeWorksheetTable("A81p1");
    gDB.Execute("INSERT INTO A81p1 (SeqNum,Col_2,Col_6) VALUES (100,'TOTALS',0);");
    MakeWorksheetIndex("A81p1");
    RegisterBuiltWorksheet("A81p1");
}

void Build_A81p2() {
    MakeWorksheetTable("A81p2");
    MakeWorksheetIndex("A81p2");
    RegisterBuiltWorksheet("A81p2");
}

void Calc_A81p1() {
    gDB.Execute(
        "UPDATE A81p1 SET Col_1=Null,Col_2='Total',Col_3=Null,Col_4=Null, Col_5=0, Col_6=0,Col_7=0 "
        "WHERE SeqNum = 100;");
    gDB.Execute("Update A81p1 Set Col_2=Null Where SeqNum<100;");
    gDB.Execute(
        "UPDATE A81p1 INNER JOIN CostCenters ON A81p1.Col_1 = CostCenters.LineNum SET "
        "A81p1.Col_2=[CostCenters].[CCName];");
    gDB.Execute("UPDATE A81p1 SET Col_7=IIF(IsNull(Col_5),0,Col_5)-IIF(IsNull(Col_6),0,Col_6);");
    const Recordset sums = gDB.OpenRecordset(
        "SELECT SUM(Col_5) as T5, SUM(Col_6) as T6, Sum(Col_7) As T7 FROM A81p1 WHERE SeqNum < "
        "100;",
        dbOpenSnapshot);
    gDB.Execute("Update A81p1 Set Col_5=?,Col_6=?,Col_7=? Where SeqNum=100;",
                {NumOr(sums[0]), NumOr(sums[1]), NumOr(sums[2])});
}

}  // namespace zolmara
