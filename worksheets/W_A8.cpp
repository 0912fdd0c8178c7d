#include "worksheets/W_A8.h"

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

/// The form's own limit on a description; the field holds more for the seeded texts.
constexpr std::size_t kDescriptionLimit = 36;

constexpr std::array<SeedRow, 18> kSeeds = {{
    {1,
     "Federal, state income tax, franchise tax, and related interest and penalties on late "
     "payments"},
    {2, "Stockholders servicing costs"},
    {3, "Acquisition expenses"},
    {4, "Bad debts"},
    {5, "Life insurance premiums where home office is direct/indirect beneficiary"},
    {6, "Annual stockholder meeting expenses"},
    {7, "Non-healthcare projects"},
    {8, "Non-competition agreement expenses"},
    {9, "Fund-raising expenses"},
    {10, "Rebatesreunds on expenses"},  // as given
    {11, "Cost of ownership of assets leased from related organization in lieu of rent"},
    {12, "Related organizations"},
    {13, "Value of services of non-paid workers"},
    {14, "Interest on loans between home office and components of chain"},
    {15,
     "Cost of corporate acquisitions of capital stocks and acquisition & developemnt department"},
    {16, "Interest on loans paid to owners/partners"},
    {17, "Abandoned construction in progress cost"},
    {100, "Total"},
}};

void FillNames() {
    gDB.Execute(
        "UPDATE A8 INNER JOIN CostCenters ON A8.Col_5=CostCenters.LineNum SET "
        "A8.Col_4=[CostCenters].[CCName];");
}

int ValidateBasis(Variant& value, Variant& outName) {
    value = UCase(Trim(Text(value)));
    outName = value;
    const std::string& basis = value.AsText();
    return basis.empty() || basis == "A" || basis == "B" ? 0 : 1;
}

int ValidateLine(Variant& value, Variant& outName) {
    if (Text(value).empty()) return 0;
    const double line = NumOr(value);
    value = line;
    if (line == 0 || !Currency::Holds(line)) return 1;
    const Recordset found = gDB.OpenRecordset(
        "SELECT LineNum, CCName FROM CostCenters WHERE LineNum = ? And LineNum Not In(3,99,100) "
        "And (LineNum<3 or LineNum>7) ;",
        {Currency(line)});
    if (found.Eof()) return 1;
    outName = found["CCName"];
    return 0;
}

}  // namespace

const std::vector<WorksheetField>& Fields_A8(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Col_1", dbText, 255, "Description of Adjustment", Keyed},
        {"Col_2", dbText, 12, "Basis", Keyed},
        {"Col_3", dbDouble, 0, "Amount", Keyed},
        {"Col_4", dbText, 40, "Description", Computed},
        {"Col_5", dbCurrency, 0, "", Keyed},
    };
    return fields;
}

std::span<const SeedRow> Seeds_A8() { return kSeeds; }

void Build_A8() {
    MakeWorksheetTable("A8");
    InsertSeedRows("A8", "Col_1", kSeeds);
    gDB.Execute("Update A8 Set Col_2=\"A-8-1\" Where LineNum=12;");
    MakeWorksheetIndex("A8");
    // Nothing equals Null: the amounts of a new worksheet stay Null.
    gDB.Execute("UPDATE A8 SET Col_3 = 0 WHERE Col_3 = Null;");
    FillNames();
    RegisterBuiltWorksheet("A8");
}

void Calc_A8() {
    gDB.Execute("UPDATE A8 SET Col_5=Null,Col_3=0 WHERE Col_3 In(0,Null) And Col_5 In(0,Null);");
    gDB.Execute("Update A8 Set Col_4=Null;");
    FillNames();
    const Recordset related = gDB.OpenRecordset("Select * From A81p1 Where SeqNum=100;");
    const double net = related.Eof() ? 0 : NumOr(related["Col_7"]);
    gDB.Execute("Update A8 Set Col_3=? Where LineNum=12;", {net});
    gDB.Execute("Update A8 Set Col_3=? Where LineNum=100;",
                {SumOf("Select Sum(Col_3) As S1 From A8 Where LineNum<100;")});
}

int ValidateCell_A8(int column, Variant& value, Variant& outName) {
    switch (column) {
        case 1:
            return TextLength(Text(value)) > kDescriptionLimit ? 1 : 0;
        case 2:
            return ValidateBasis(value, outName);
        case 3:
            return 0;
        case 5:
            return ValidateLine(value, outName);
        default:
            return 99;
    }
}

}  // namespace zolmara
