#include "worksheets/W_S1p1.h"

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

struct FormLine {
    std::string_view Description;
    std::array<std::string_view, 6> Columns;
};

constexpr std::array<FormLine, 5> kFormLines = {{
    {"Home Office Location",
     {"Street Address 1", "Street Address 2", "P.O. Box", "City", "State", "Zip"}},
    {"Home Office Information",
     {"Home Office Name", "Home Office Number", "Date Operations Began", "Report Begin",
      "Report End", ""}},
    {"Home Office Control", {"Type of Control", "Description", "", "", "", ""}},
    {"Financial Statements",
     {"Prepared by CPA", "A / C / R", "Submitted", "Date Available", "Reconsile to Cost Statement",
      ""}},
    {"Contact Information",
     {"First Name", "Last Name", "Title", "Telephone Number", "Email Address", "Employer"}},
}};

constexpr std::array<std::string_view, 6> kEmailLine = {"", "", "", "", "", "Email Address"};
constexpr std::array<std::string_view, 6> kNoLine = {};

const std::array<std::string_view, 6>& ColumnsOf(Currency line) {
    if (!line.IsWhole()) return kEmailLine;
    const std::int64_t whole = line.Whole();
    if (!Between<std::int64_t>(whole, 1, std::ssize(kFormLines))) return kNoLine;
    return kFormLines.at(static_cast<std::size_t>(whole - 1)).Columns;
}

/// The kinds of control that are "Other (specify)".
bool IsOtherControl(const Variant& control) {
    const double kind = NumOr(control);
    return kind == 5 || kind == 9 || kind == 14;
}

}  // namespace

const std::vector<WorksheetField>& Fields_S1p1(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Description", dbText, 250, "Description", Label},
        {"Col_1", dbText, 40, "", Keyed},
        {"Col_2", dbText, 40, "", Keyed},
        {"Col_3", dbText, 40, "", Keyed},
        {"Col_4", dbText, 40, "", Keyed},
        {"Col_5", dbText, 40, "", Keyed},
        {"Col_6", dbText, 40, "", Keyed},
    };
    return fields;
}

void Build_S1p1() {
    MakeWorksheetTable("S1p1");
    int line = 0;
    for (const FormLine& form : kFormLines) {
        gDB.Execute("INSERT INTO S1p1 (LineNum,Description) VALUES (?,?);",
                    {++line, form.Description});
    }
    MakeWorksheetIndex("S1p1");
    gDB.Execute("Update S1p1 Set Col_1 = ?,Col_2 = ?,Col_4 = ?,Col_5 = ? WHERE LineNum=2;",
                {gProviderName, gProviderNumber, Format(gFYStart, "mm/dd/yyyy"),
                 Format(gFYEnd, "mm/dd/yyyy")});
    RegisterBuiltWorksheet("S1p1");
}

void Calc_S1p1() {
    Recordset rows = gDB.OpenRecordset("Select * From S1p1 Where LineNum=4;");
    if (rows.Eof() || FirstLetter(rows["Col_3"]) == "N") return;
    gDB.Execute("Update S1p1 Set Col_4=Null Where LineNum=4;");
}

std::array<S1p1Caption, 6> CaptionS1p1(Currency line, const std::array<Variant, 6>& cells) {
    std::array<S1p1Caption, 6> captions = {};
    const auto& columns = ColumnsOf(line);
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const bool meaning = !columns[i].empty();
        captions[i] = {meaning ? columns[i] : "N/A", !meaning};
    }
    if (line == Currency::FromWhole(3)) captions[1].Locked = !IsOtherControl(cells[0]);
    if (line == Currency::FromWhole(4)) captions[3].Locked = FirstLetter(cells[2]) != "N";
    return captions;
}

}  // namespace zolmara
