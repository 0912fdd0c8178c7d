#include "FormLooks.h"

namespace zolmara::ui {
namespace {

using enum Looks;
using enum Lock;

const ColumnLook kLine{"LineNum", "", "Line #", Line};
const ColumnLook kDescription{"Description", "", "Description", Text};

ColumnLooks operator+(ColumnLooks columns, const ColumnLooks& more) {
    columns.insert(columns.end(), more.begin(), more.end());
    return columns;
}

ColumnLooks Locked_(ColumnLooks columns) {
    for (ColumnLook& column : columns) column.Is = Locked;
    return columns;
}

FormLook Same(const std::string& item, const std::string& menu, const ColumnLooks& columns,
              bool add, bool remove) {
    return {item, menu, "frmEdit" + item, columns, "frmView" + item, Locked_(columns), add, remove};
}

// --- A

FormLook LookOfA() {
    const ColumnLooks edit = {{"LineNum", "", "CC #", Line, Locked, 650},
                              {"CCName", "", "Description", Text, Locked, 3300},
                              {"Col_1", "1", "Expenses per Home Office Books", Money, Keyed, 1400}};
    const ColumnLooks more = {
        {"Col_2", "2", "Reclass- ifications", Money, Locked, 1400},
        {"Col_3", "3", "Reclassified Trial Balance", Money, Locked, 1400},
        {"Col_4", "4", "Adjustments", Money, Locked, 1400},
        {"Col_5", "5", "Net Allowable Expenses", Money, Locked, 1400},
        {"Col_6", "6", "Direct Allocations to Components", Money, Locked, 1400},
        {"Col_7", "7", "Functional Allocations to Components", Money, Locked, 1400},
        {"Col_8", "8", "Pooled Allocations", Money, Locked, 1400}};
    return {"A", "OpenA", "frmEditA", edit, "frmViewA", Locked_(edit) + more};
}

FormLook LookOfA6() {
    return Same("A6", "OpenA6",
                {kLine,
                 {"Col_1", "1", "Explanation", Text, Keyed},
                 {"Col_2", "2", "Code", Text, Keyed},
                 {"Col_3", "3", "Up Cost Center", Text},
                 {"Col_4", "4", "Up CC Line #", Line, Keyed},
                 {"Col_5", "5", "Up Amount", Money, Keyed},
                 {"Col_6", "6", "Dn Cost Center", Text},
                 {"Col_7", "7", "Dn CC Line #", Line, Keyed},
                 {"Col_8", "8", "Dn Amount", Money, Keyed}},
                true, true);
}

/// The editor has the titles of columns 4 and 6 the other way round.
ColumnLooks ColumnsOfA7p1(const std::string& title4, const std::string& title6) {
    return {{"LineNum", "", "Line #", Whole},
            kDescription,
            {"Col_1", "1", "Beginning Balance", Money, Keyed},
            {"Col_2", "2", "Acquisitions - Purchases", Money, Keyed},
            {"Col_3", "3", "Acquisitions - Donation", Money, Keyed},
            {"Col_4", "4", title4, Money},
            {"Col_5", "5", "Retirements and Disposals", Money, Keyed},
            {"Col_6", "6", title6, Money},
            {"Col_7", "7", "Fully Depreciated Assets", Money, Keyed}};
}

FormLook LookOfA7p1() {
    return {"A7p1",        "A7(1)",
            "frmEditA7p1", ColumnsOfA7p1("Ending Balance", "Total"),
            "frmViewA7p1", Locked_(ColumnsOfA7p1("Total", "Ending Balance"))};
}

FormLook LookOfA7p2() {
    const ColumnLooks first = {{"LineNum", "", "CC #", Line},
                               kDescription,
                               {"Col_1", "1", "Gross Assets", Money, Keyed},
                               {"Col_2", "2", "Capitalized Leases", Money, Keyed}};
    const ColumnLooks middle = {{"Col_3", "3", "Gross Assets For Ratio", Money},
                                {"Col_4", "4", "Ratio", Ratio},
                                {"Col_5", "5", "Insurance Premiums Other CRC", Money},
                                {"Col_6", "6", "Taxes & Licenses Other CRC", Money},
                                {"Col_7", "7", "All Other Cap Rel Costs", Money},
                                {"Col_8", "8", "Allocation Total", Money}};
    const ColumnLooks last = {{"Col_9", "9", "Depreciation", Money, Keyed},
                              {"Col_10", "10", "Lease", Money, Keyed},
                              {"Col_11", "11", "Interest", Money, Keyed},
                              {"Col_12", "12", "Insurance Premiums Other CRC", Money, Keyed},
                              {"Col_13", "13", "Taxes & Licenses Other CRC", Money, Keyed},
                              {"Col_14", "14", "All Other Cap Rel Costs", Money, Keyed}};
    const ColumnLooks total = {{"Col_15", "15", "Total", Money}};
    return {"A7p2",       "A7(2)",       "frmEditA7p2",
            first + last, "frmViewA7p2", Locked_(first + middle + last + total)};
}

FormLook LookOfA8() {
    return Same("A8", "OpenA8",
                {kLine,
                 {"Col_1", "1", "Description of Adjustment", Text, Keyed},
                 {"Col_2", "2", "Basis", Text, Keyed},
                 {"Col_3", "3", "Amount", Money, Keyed},
                 {"Col_4", "4", "Description", Text},
                 {"Col_5", "5", "CC #", Line, Keyed}},
                true, false);
}

ColumnLooks ColumnsOfA81p1(const std::string& title3) {
    return {{"SeqNum", "", "Seq #", Sequence},
            {"Col_1", "1", "CC #", Sequence, Keyed},
            {"Col_2", "2", "Cost Center Name", Text},
            {"Col_3", "3", title3, Text, Keyed},
            {"Col_4", "4", "Sch A81 Part II Line #", Line, Keyed},
            {"Col_5", "5", "Amount Allowable In Cost", Money, Keyed},
            {"Col_6", "6", "Amount Included In A Col.3", Money, Keyed},
            {"Col_7", "7", "Net Adjustment", Money}};
}

FormLook LookOfA81p1() {
    return {"A81p1",        "OpenA81p1",
            "frmEditA81p1", ColumnsOfA81p1("Expense Item Description"),
            "frmViewA81p1", Locked_(ColumnsOfA81p1("Expense Items")),
            true,           true};
}

FormLook LookOfA81p2() {
    return Same("A81p2", "OpenA81p2",
                {{"SeqNum", "", "Seq #", Sequence},
                 {"Col_1", "1", "Symbol", Text, Keyed},
                 {"Col_2", "2", "Interrelationship", Text, Keyed},
                 {"Col_3", "3", "Name", Text, Keyed},
                 {"Col_4", "4", "% of Ownership", Percent, Keyed},
                 {"Col_5", "5", "Related Org. Name", Text, Keyed},
                 {"Col_6", "6", "Related Org. % of Ownership", Percent, Keyed},
                 {"Col_7", "7", "Related Org. Type of Business", Text, Keyed}},
                true, true);
}

// --- Cost centers, bases, G

FormLook LookOfCenters() {
    FormLook look = Same("CCs", "OpenCCs",
                         {{"LineNum", "", "CC #", Line},
                          {"CCName", "", "Cost Center Name", Text, Keyed},
                          {"ColLabel1", "1", "Column Label", Text, Keyed},
                          {"ColLabel2", "2", "Column Label", Text, Keyed},
                          {"ColLabel3", "3", "Column Label", Text, Keyed},
                          {"StatLabel1", "1", "Stat Label", Text, Keyed},
                          {"StatLabel2", "2", "Stat Label", Text, Keyed},
                          {"StatCode", "", "Stat Code", Whole, Keyed}},
                         true, false);
    look.EditCaption = "EDIT: Cost Centers Structure Table";
    return look;
}

FormLook LookOfBases() {
    FormLook look = Same("ES", "OpenES",
                         {{"CCName", "", "Work Sheet", Text},
                          {"StatLabel1", "1", "Stat Label", Text, Keyed},
                          {"StatLabel2", "2", "Stat Label", Text, Keyed},
                          {"StatCode", "", "Stat Code", Whole, Keyed}},
                         false, false);
    look.EditCaption = "Edit: Pooled Allocation Statistical Basis";
    look.ViewCaption = "View: Pooled Allocation Statistical Basis";
    return look;
}

FormLook LookOfG() {
    return Same("G", "OpenG",
                {kLine,
                 {"Description", "", "Description", Text, Keyed},
                 {"Col_1", "1", "General Fund", Money, Keyed}},
                false, false);
}

FormLook LookOfG1() {
    return Same(
        "G1", "OpenG1",
        {kLine, {"Col_1", "1", "Description", Text, Keyed}, {"Col_2", "2", "Amount", Money, Keyed}},
        true, false);
}

// --- S

FormLook LookOfSp1() {
    return Same("Sp1", "Sx(0)", {kLine, kDescription, {"Col_1", "1", "Answer", Text, Keyed}}, false,
                false);
}

/// The columns are headed for the line that is current, the first.
FormLook LookOfS1p1() {
    return Same("S1p1", "Sx(1)",
                {kLine,
                 kDescription,
                 {"Col_1", "1", "Street Address 1", Text, Keyed},
                 {"Col_2", "2", "Street Address 2", Text, Keyed},
                 {"Col_3", "3", "P.O. Box", Text, Keyed},
                 {"Col_4", "4", "City", Text, Keyed},
                 {"Col_5", "5", "State", Text, Keyed},
                 {"Col_6", "6", "Zip", Text, Keyed}},
                true, false);
}

FormLook LookOfS1p2() {
    return Same("S1p2", "Sx(2)",
                {kLine,
                 {"Col_1", "1", "Position / Job Title", Text, Keyed},
                 {"Col_2", "2", "Key Officer Name", Text, Keyed}},
                true, false);
}

FormLook LookOfS2p1() {
    return Same("S2p1", "Sx(3)",
                {kLine,
                 {"Col_1", "1", "Component Name", Text, Keyed},
                 {"Col_2", "2", "CCN", Text, Keyed},
                 {"Col_3", "3", "Owned or Managed", Text, Keyed},
                 {"Col_4", "4", "Report Beginning", Text, Keyed},
                 {"Col_5", "5", "Report Ending", Text, Keyed},
                 {"Col_6", "6", "Date Acquired", Text, Keyed},
                 {"Col_7", "7", "Date Sold / Closed / Ceased", Text, Keyed},
                 {"Col_8", "8", "Medicaid Participation", Text, Keyed},
                 {"Col_9", "9", "Medicare Reimbursement Type", Text, Keyed},
                 {"Col_10", "10", "Medicare Contractor Number", Text, Keyed},
                 {"Col_11", "11", "Medicaid Contractor Name", Text, Keyed}},
                true, true);
}

FormLook LookOfS2p2() {
    return Same("S2p2", "Sx(4)",
                {kLine,
                 {"Col_1", "1", "Component Name", Text, Keyed},
                 {"Col_4", "4", "Report Beginning", Text, Keyed},
                 {"Col_5", "5", "Report Ending", Text, Keyed},
                 {"Col_6", "6", "Date Acquired", Text, Keyed},
                 {"Col_7", "7", "Date Sold / Closed / Ceased", Text, Keyed}},
                true, true);
}

FormLook LookOfS2p3() {
    return Same("S2p3", "Sx(5)",
                {kLine,
                 {"Col_1", "1", "Component Name", Text, Keyed},
                 {"Col_2", "2", "Regional HO Number", Text, Keyed},
                 {"Col_4", "4", "City", Text, Keyed},
                 {"Col_5", "5", "State", Text, Keyed},
                 {"Col_6", "6", "Costs Included in this Statement", Money, Keyed},
                 {"Col_7", "7", "Separate Statement Submitted", Text, Keyed},
                 {"Col_8", "8", "Region / Division Contractor", Text, Keyed}},
                true, true);
}

// --- Schedules

struct Center {
    int Line;
    const char* Name;
};
constexpr Center kCapital[] = {{1, "CRC-B&F"}, {2, "CRC-ME"}};
constexpr Center kOtherCapital[] = {{4, "Insurance Premiums-Other CRC"},
                                    {5, "Taxes & Licenses-Other CRC"},
                                    {6, "All Other Capital Related Costs"}};
constexpr Center kNonCapital[] = {{8, "Salaries of Officers"},
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
                                  {28, "Interest Income"}};

ColumnLook OfCenter(const Center& center, const std::string& basis = "") {
    return {"CC_" + std::to_string(center.Line * 100), std::to_string(center.Line),
            basis + center.Name, Money, Keyed};
}

template <std::size_t Count>
ColumnLooks OfCenters(const Center (&centers)[Count]) {
    ColumnLooks columns;
    for (const Center& center : centers) columns.push_back(OfCenter(center));
    return columns;
}

/// Line, name and number of the component; the second part has no numbers.
ColumnLooks OfComponent(char part) {
    ColumnLooks columns = {kLine, {"Description", "", "Component Name", Text}};
    if (part == '1') columns.push_back({"Col_0", "", "CCN", Text});
    if (part == '3') columns.push_back({"Col_0", "", "Region- al HO #", Text});
    return columns;
}

ColumnLooks CentersOf(const std::string& schedule) {
    if (schedule == "Bp") return OfCenters(kCapital) + OfCenters(kOtherCapital);
    if (schedule == "Cp") return OfCenters(kCapital);
    if (schedule == "C1p")
        return {OfCenter(kCapital[0], "(Square Feet) "), OfCenter(kCapital[1], "(Dollar Value) ")};
    return OfCenters(kNonCapital);
}

/// The number of the column of totals; none on the schedules of statistics.
std::string TotalOf(const std::string& schedule) {
    if (schedule == "Bp") return "7";
    if (schedule == "Cp") return "3";
    return schedule == "C1p" || schedule == "D1p" ? "" : "99";
}

FormLook LookOfSchedule(const std::string& schedule, char part) {
    const bool computed = schedule == "Cp" || schedule == "Dp";
    const ColumnLooks edit = OfComponent(part) + CentersOf(schedule);
    ColumnLooks view = Locked_(edit);
    if (const std::string total = TotalOf(schedule); !total.empty())
        view.push_back({"Col_" + total, total, "Total", Money});
    const std::string item = schedule + part;
    return {item,
            "Open" + item,
            computed ? "" : "frmEditBpx",
            computed ? ColumnLooks{} : edit,
            "frmViewBpx",
            view,
            true,
            true};
}

ColumnLooks PoolsOfE() {
    return {{"Col_1", "1", "Allocation Statistics", Money, Keyed},
            {"Col_2", "2", "Allocation Ratio", Ratio},
            {"CC_100", "1", "CRC-B&F", Money},
            {"CC_200", "2", "CRC-ME", Money},
            {"CC_800", "8", "Salaries of Officers", Money},
            {"CC_900", "9", "Salaries and Wages of Others", Money},
            {"Col_7", "7", "All Other Non-CRC", Money},
            {"CC_2800", "28", "Interest Income", Money}};
}

FormLook LookOfE() {
    return {"E",
            "OpenE",
            "",
            {},
            "frmViewEx",
            Locked_(ColumnLooks{kLine, {"Description", "", "Component Name", Text}} + PoolsOfE())};
}

FormLook LookOfE1(char part) {
    const std::string item = std::string("E1p") + part;
    const ColumnLooks columns = OfComponent(part) + PoolsOfE();
    return {item, "Open" + item, "frmEditEpx", columns, "frmViewEx", Locked_(columns), true, true};
}

FormLook LookOfF(const std::string& form, const std::vector<std::string>& titles, char part) {
    ColumnLooks columns = OfComponent(part);
    for (std::size_t i = 1; i <= titles.size(); ++i)
        columns.push_back({"Col_" + std::to_string(i), std::to_string(i), titles[i - 1], Money});
    const std::string item = form + part;
    return {item, "Open" + item, "", {}, "frmViewFpx", columns};
}

void AddSchedules(std::vector<FormLook>& all) {
    for (const char part : {'1', '2', '3'}) {
        for (const char* schedule : {"Bp", "B1p", "Cp", "C1p", "Dp", "D1p"})
            all.push_back(LookOfSchedule(schedule, part));
        all.push_back(LookOfE1(part));
        all.push_back(
            LookOfF("Fp", {"Direct", "Functional", "Pooled", "Total Capital Cost"}, part));
        all.push_back(
            LookOfF("F1p",
                    {"Direct", "Functional", "Pooled", "Subtotal Salaries", "Direct", "Functional",
                     "Pooled", "Subtotal All Other Non-Capital", "Total Non-Capital Cost"},
                    part));
        all.push_back(
            LookOfF("F2p", {"Direct", "Functional", "Pooled", "Total Interest Income"}, part));
    }
    all.push_back(LookOfE());
}

}  // namespace

std::vector<FormLook> FormLooks() {
    std::vector<FormLook> all = {
        LookOfA(),     LookOfA6(),      LookOfA7p1(),  LookOfA7p2(), LookOfA8(),   LookOfA81p1(),
        LookOfA81p2(), LookOfCenters(), LookOfBases(), LookOfG(),    LookOfG1(),   LookOfSp1(),
        LookOfS1p1(),  LookOfS1p2(),    LookOfS2p1(),  LookOfS2p2(), LookOfS2p3(),
    };
    AddSchedules(all);
    return all;
}

const std::vector<NamedItem>& WalkOrder() {
    static const std::vector<NamedItem> order = {
        {"A", "A"},
        {"A6", "A-6"},
        {"A7p1", "A-7  Part-1"},
        {"A7p2", "A-7  Part-2"},
        {"A8", "A-8"},
        {"A81p1", "A-81  Part-1"},
        {"A81p2", "A-81  Part-2"},
        {"Bp1", "B  Part-1"},
        {"Bp2", "B  Part-2"},
        {"Bp3", "B  Part-3"},
        {"B1p1", "B-1  Part-1"},
        {"B1p2", "B-1  Part-2"},
        {"B1p3", "B-1  Part-3"},
        {"Cp1", "C  Part-1"},
        {"Cp2", "C  Part-2"},
        {"Cp3", "C  Part-3"},
        {"C1p1", "C-1  Part-1"},
        {"C1p2", "C-1  Part-2"},
        {"C1p3", "C-1  Part-3"},
        {"Dp1", "D  Part-1"},
        {"Dp2", "D  Part-2"},
        {"Dp3", "D  Part-3"},
        {"D1p1", "D-1  Part-1"},
        {"D1p2", "D-1  Part-2"},
        {"D1p3", "D-1  Part-3"},
        {"E", "E"},
        {"E1p1", "E-1  Part-1"},
        {"E1p2", "E-1  Part-2"},
        {"E1p3", "E-1  Part-3"},
        {"Fp1", "F  Part-1"},
        {"Fp2", "F  Part-2"},
        {"Fp3", "F  Part-3"},
        {"F1p1", "F-1  Part-1"},
        {"F1p2", "F-1  Part-2"},
        {"F1p3", "F-1  Part-3"},
        {"F2p1", "F-2  Part-1"},
        {"F2p2", "F-2  Part-2"},
        {"F2p3", "F-2  Part-3"},
        {"G", "G"},
        {"G1", "G-1"},
        {"Sp1", "S  Part-1"},
        {"S1p1", "S-1  Part-1"},
        {"S1p2", "S-1  Part-2"},
        {"S2p1", "S-2  Part-1"},
        {"S2p2", "S-2  Part-2"},
        {"S2p3", "S-2  Part-3"},
    };
    return order;
}

}  // namespace zolmara::ui
