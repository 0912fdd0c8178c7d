#include "worksheets/W_S2.h"

#include "worksheets/Build.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

constexpr int kTextSize = 255;

/// A text column; one that the form does not use in this part has no title.
WorksheetField Column(int number, std::string_view title) {
    return {.Name = "Col_" + std::to_string(number),
            .Type = dbText,
            .Size = kTextSize,
            .Title = std::string(title),
            .Kind = Keyed};
}

std::vector<WorksheetField> Columns(std::initializer_list<std::string_view> titles) {
    std::vector<WorksheetField> fields = {{"LineNum", dbCurrency, 0, "Line #", Key}};
    int number = 0;
    for (const std::string_view title : titles) fields.push_back(Column(++number, title));
    return fields;
}

std::vector<WorksheetField> RegionColumns() {
    std::vector<WorksheetField> fields =
        Columns({"Component Name", "Regional HO Number", "", "City", "State",
                 "Costs Included in this Statement", "Separate Statement Submitted",
                 "Region / Division Contractor"});
    fields[6].Type = dbCurrency;
    fields[6].Size = 0;
    return fields;
}

void Build(std::string_view item) {
    MakeWorksheetTable(item);
    MakeWorksheetIndex(item);
    RegisterBuiltWorksheet(item);
}

}  // namespace

const std::vector<WorksheetField>& Fields_S2(std::string_view item) {
    static const std::vector<WorksheetField> providers = Columns(
        {"Component Name", "CCN", "Owned or Managed", "Report Beginning", "Report Ending",
         "Date Acquired", "Date Sold / Closed / Ceased", "Medicaid Participation",
         "Medicare Reimbursement Type", "Medicare Contractor Number", "Medicaid Contractor Name"});
    static const std::vector<WorksheetField> others =
        Columns({"Component Name", "", "", "Report Beginning", "Report Ending", "Date Acquired",
                 "Date Sold / Closed / Ceased"});
    static const std::vector<WorksheetField> regions = RegionColumns();
    const char part = PartOf(item);
    return part == '1' ? providers : part == '2' ? others : regions;
}

void Build_S2p1() { Build("S2p1"); }
void Build_S2p2() { Build("S2p2"); }
void Build_S2p3() { Build("S2p3"); }

void Calc_S2() {}

}  // namespace zolmara
