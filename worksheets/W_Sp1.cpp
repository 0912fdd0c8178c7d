#include "worksheets/W_Sp1.h"

#include <array>
#include <cmath>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"

namespace zolmara {
namespace {

std::string_view AmendedText(double amendment) {
    if (amendment == 0) return "No";
    if (std::trunc(amendment) == amendment && Between(amendment, 1.0, 9.0)) return "Yes";
    return "Error";
}

}  // namespace

using enum FieldType;
using enum CellKind;

const std::vector<WorksheetField>& Fields_Sp1(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Description", dbText, 255, "Description", Label},
        {"Col_1", dbText, 10, "Answer", Keyed},
    };
    return fields;
}

void Build_Sp1() {
    static constexpr std::array<SeedRow, 8> kSeeds = {
        {{3, "Date received"},
         {4, "First cost statement for this home office number"},
         {5, "Last cost statement for this home office number"},
         {6, "Cost statement status"},
         {7, "Reopening number"},
         {8, "Date of Finalization of Home Office Cost Structure"},
         {9, "Contractor number"},
         {10, "ADR software vendor code"}}};
    MakeWorksheetTable("Sp1");
    gDB.Execute(
        "INSERT INTO Sp1 (LineNum, Description,Col_1) Values (1,'Amended cost statement "
        "(Y/N)','N');");
    gDB.Execute(
        "INSERT INTO Sp1 (LineNum, Description,Col_1) Values (2,'Amendment number (0-9)',0);");
    InsertSeedRows("Sp1", "Description", kSeeds);
    MakeWorksheetIndex("Sp1");
    RegisterBuiltWorksheet("Sp1");
}

void Calc_Sp1() {
    Recordset rows = gDB.OpenRecordset("Select * From Sp1 Where LineNum=2;");
    const double amendment = rows.Eof() ? 0 : NumOr(rows["Col_1"]);
    gDB.Execute("Update Sp1 Set Col_1=? Where LineNum=1;", {AmendedText(amendment)});
}

}  // namespace zolmara
