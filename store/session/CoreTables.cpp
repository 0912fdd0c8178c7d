// The tables that every CRF carries beside its worksheets, and the registry.

#include "store/session/CoreTables.h"

#include <fmt/format.h>

#include <charconv>

#include "core/Clock.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "store/Dao.h"
#include "store/session/LogRun.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

using enum FieldType;

FieldDef Field(std::string_view name, FieldType type) { return {std::string(name), type, 0}; }
FieldDef TextField(std::string_view name, int size) { return {std::string(name), dbText, size}; }

void MakeTable(std::string_view name, std::vector<FieldDef> fields) {
    TableDef table;
    table.Name = std::string(name);
    table.Fields = std::move(fields);
    gDB.AppendTable(table);
}

}  // namespace

// --- The registry --------------------------------------------------------------------------

void Build_Worksheets() {
    FieldDef item = TextField("Item", 16);
    item.Required = true;
    MakeTable("Worksheets", {item, Field("Calc_Lvl", dbInteger), TextField("ItemName", 100)});
    gDB.Execute("INSERT INTO Worksheets (Item, Calc_Lvl) VALUES (?, ?);",
                {"Worksheets", kNotAWorksheet});
    gDB.Execute("CREATE UNIQUE INDEX ndxWorksheets ON Worksheets (Item) WITH DISALLOW NULL;");
}

void RegisterWorksheet(std::string_view item, std::string_view action, int level) {
    TheStatus().DoEvents();
    Recordset row =
        gDB.OpenRecordset("Select * From Worksheets Where UCase(Item) = ?", {UCase(item)});
    if (action == "Make") {
        if (row.Empty()) {
            row.AddNew();
        } else {
            row.Edit();
        }
        row.Set("Item", item);
        row.Set("ItemName", level < kNotAWorksheet ? Variant(ItemDisplayName(item)) : Variant());
        row.Set("Calc_Lvl", level);
        row.Update();
    }
    row.Close();
    TheStatus().DoEvents();
}

std::string ItemDisplayName(std::string_view item) {
    std::string head(item.substr(0, 1));
    std::size_t at = head.size();
    const std::size_t digitsEnd = std::min(item.find_first_not_of("0123456789", at), item.size());
    if (digitsEnd > at) head += "-" + std::string(item.substr(at, digitsEnd - at));
    std::string parts;
    for (at = digitsEnd; at < item.size(); ++at) {
        if (item[at] != 'p') continue;
        parts += "  Part-";
        parts += item.substr(std::min(++at, item.size()), 1);
    }
    return head + parts;
}

// --- Identity, log, header lines, findings -------------------------------------------------

void Build_Master() {
    // The numbers and subtotals in the middle have their place in the table and no use.
    MakeTable(
        "Master",
        {Field("BuildDate", dbDate), TextField("FormNum", 8), TextField("ProviderNumber", 8),
         Field("FYStart", dbDate), Field("FYEnd", dbDate), TextField("ProviderName", 36),
         Field("AllCCs", dbInteger), Field("GenSvcCCs", dbInteger), Field("CapitalCCs", dbInteger),
         Field("EmpBenCCs", dbInteger), Field("Bp1SubTot1", dbMemo), Field("Bp1SubTot2", dbMemo),
         Field("Bp2SubTot1", dbMemo), Field("Bp2SubTot2", dbMemo), TextField("ESFirstName", 255),
         TextField("ESLastName", 255), TextField("ESTitle", 255), Field("ESDate", dbDate)});
    Recordset master = gDB.OpenRecordset("Master", dbOpenTable);
    master.AddNew();
    master.Set("BuildDate", Now());
    master.Set("FormNum", gFormNum);
    master.Set("ProviderNumber", gProviderNumber);
    master.Set("FYStart", gFYStart);
    master.Set("FYEnd", gFYEnd);
    master.Set("ProviderName", gProviderName);
    master.Update();
}

void Build_Log() {
    MakeTable("Log", {TextField("LogType", 1), Field("DateTime", dbDate), TextField("Severity", 7),
                      TextField("Module", 32), TextField("Procedure", 32),
                      TextField("Worksheet", 16), Field("Message", dbMemo)});
    // No batch has the type "*", so that this row stays.
    gDB.Execute(
        "INSERT INTO Log (LogType, [DateTime], Severity, Module, [Procedure], Worksheet, Message) "
        "VALUES ('*', ?, 'F.Y.I.', 'Build_Log', 'Build_Log', 'Log', "
        "'Log table built/initialized.');",
        {Now()});
    RegisterWorksheet("Log", "Make", kNotAWorksheet);
}

void Build_HeaderLines() {
    MakeTable("HeaderLines", {Field("LineNum", dbInteger), TextField("LineText", 140)});
    for (int line = 1; line <= 3; ++line)
        gDB.Execute("INSERT INTO HeaderLines (LineNum) VALUES (?);", {line});
    RegisterWorksheet("HeaderLines", "Make", kNotAWorksheet);
}

void Build_Error() {
    MakeTable("Error", {TextField("Level", 16), TextField("Code", 5), Field("Message", dbMemo)});
    RegisterWorksheet("Error", "Make", kNotAWorksheet);
}

void AddErrorRow(std::string_view level, std::string_view code, std::string_view message) {
    gDB.Execute("INSERT INTO Error VALUES (?, ?, ?);", {level, code, message});
}

void EmptyErrors() {
    if (!TableExists("Error", false)) Build_Error();
    ClearErrors();
}

void ClearErrors() { gDB.Execute("DELETE * FROM Error;"); }

// --- Cost centers --------------------------------------------------------------------------

namespace {

struct CostCenterSeed {
    int Line;
    std::string_view Name;
};

/// A line with the basis by which the form allocates it.
struct BasisSeed {
    int Line;
    std::string_view Name;
    std::string_view StatLabel1;
    std::string_view StatLabel2;
    int StatCode;
};

constexpr BasisSeed kCapitalCenters[] = {
    {1, "CRC-B&F", "Square", "Feet", 1},
    {2, "CRC-ME", "Dollar", "Value", 2},
};

constexpr CostCenterSeed kOtherCenters[] = {
    {4, "Insurance Premiums-Other CRC"},
    {5, "Taxes & Licenses-Other CRC"},
    {6, "All Other Capital Related Costs"},
    {8, "Salaries of Officers"},
    {9, "Salaries and Wages of Others"},
    {10, "Payroll Taxes"},
    {11, "Employee Benefits-Payroll Related"},
    {12, "Employee Benefits-Non-Payroll Rel"},
    {13, "Profit Sharing/Pension Plans"},
    {14, "Legal Fees"},
    {15, "Auditing and Accounting Fees"},
    {16, "Utilities"},
    {17, "Communications"},
    {18, "Travel and Entertainment"},
    {19, "Transportation"},
    {20, "Cleaning, Office & Admin Supplies"},
    {21, "Minor Equipment"},
    {22, "Repairs and Maintenance"},
    {23, "Dues and Subscriptions"},
    {24, "Contributions"},
    {25, "Insurance Premiums-Non-Capital"},
    {26, "Taxes & Licenses-Non-Capital"},
    {27, "Interest Expense"},
    {28, "Interest Income"},
};

constexpr BasisSeed kPooledBases[] = {
    {1, "E", "Total", "Costs", 1},
    {2, "E-1 Part I", "Total", "Costs", 1},
    {3, "E-1 Part II", "Total", "Costs", 1},
    {4, "E-1 Part III", "Total", "Costs", 1},
};

void InsertBases(std::string_view table, std::span<const BasisSeed> rows) {
    const std::string statement = fmt::format(
        "INSERT INTO {} (LineNum,CCName,StatLabel1,StatLabel2,StatCode) VALUES (?,?,?,?,?);",
        table);
    for (const BasisSeed& row : rows)
        gDB.Execute(statement, {row.Line, row.Name, row.StatLabel1, row.StatLabel2, row.StatCode});
}

}  // namespace

void Build_CC() {
    MakeTable("CostCenters",
              {Field("LineNum", dbCurrency), TextField("CCName", 40), TextField("ColLabel1", 36),
               TextField("ColLabel2", 36), TextField("ColLabel3", 36), TextField("StatLabel1", 16),
               TextField("StatLabel2", 16), Field("StatCode", dbInteger)});
    InsertBases("CostCenters", kCapitalCenters);
    for (const CostCenterSeed& row : kOtherCenters)
        gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (?,?);", {row.Line, row.Name});
    RegisterWorksheet("CostCenters", "Make", kNotAWorksheet);
}

void Build_ES() {
    MakeTable("ES",
              {Field("LineNum", dbCurrency), TextField("CCName", 40), TextField("StatLabel1", 16),
               TextField("StatLabel2", 16), Field("StatCode", dbInteger)});
    InsertBases("ES", kPooledBases);
    RegisterWorksheet("ES", "Make", kNotAWorksheet);
}

int CheckCC4xx(std::string& message) {
    const Recordset row = gDB.OpenRecordset(
        "SELECT Count(LineNum) AS CountOfLineNum, Max(LineNum) AS MaxOfLineNum, "
        "Min(LineNum) AS MinOfLineNum From CostCenters Where LineNum>=4 And LineNum<5;");
    const double count = NumOr(row["CountOfLineNum"]);
    if (count == 0) {
        message = "There must be at least one Administrative And General cost center (4.xx).";
        return 1;
    }
    if (count == 1 && CurOr(row["MaxOfLineNum"]) != Currency::FromWhole(4)) {
        message =
            "There is only one Administrative And General cost center and it must be numbered "
            "4.00";
        return 2;
    }
    return 0;
}

namespace {

constexpr std::string_view kColumnPrefix = "CC_";

}  // namespace

std::string CostCenterColumn(Currency line) {
    return fmt::format("{}{}", kColumnPrefix, line.Units() / kSubscriptStep.Units());
}

bool IsCostCenterColumn(std::string_view column) {
    return column.size() > kColumnPrefix.size() &&
           SameText(column.substr(0, kColumnPrefix.size()), kColumnPrefix) &&
           column.find_first_not_of("0123456789", kColumnPrefix.size()) == std::string_view::npos;
}

Currency LineOfColumn(std::string_view column) {
    std::int64_t hundredths = 0;
    if (column.size() > kColumnPrefix.size()) {
        std::from_chars(column.data() + kColumnPrefix.size(), column.data() + column.size(),
                        hundredths);
    }
    return Currency::FromUnits(hundredths * kSubscriptStep.Units());
}

}  // namespace zolmara
