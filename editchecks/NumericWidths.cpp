// "1090": no number may be wider than its place in the electronic report. This is the one check
// that touches every cell of the statement.

#include <fmt/format.h>

#include <cmath>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

/// A form of a number in the report.
struct NumberForm {
    std::string_view Format;
    double AlwaysFits;  ///< below it, in absolute value, no number can be too wide
    std::string_view Complaint;
};
constexpr std::string_view kTooWide = " Numeric fields cannot exceed 11 positions (";
constexpr NumberForm kWhole{"I16", 1e10, kTooWide};
constexpr NumberForm kCents{"F16.2", 1e7 - 1, kTooWide};
constexpr NumberForm kMultiplier{"F16.6", 1e5 - 1,
                                 " Unit cost multiplier fields may not exceed 13 positions ("};

/// What is the same for all rows of a table.
struct Sheet {
    std::string Item;
    std::string ItemName;
    bool RatioInCol_2;  ///< the schedules of the pools have ratios there
    int Description;    ///< position of the row's description, -1 without one
};

/// A field that can hold a number too wide.
struct NumberField {
    int Position;
    FieldType Type;
    bool IsRatio;
};

std::size_t WidestFor(const NumberForm& form, std::string_view item) {
    if (form.Format != kMultiplier.Format) return 11;
    return item == "D1p3" ? 14 : 13;
}

std::vector<NumberField> NumberFields(const Recordset& rows, const Sheet& sheet) {
    std::vector<NumberField> fields;
    for (int i = 0; i < rows.FieldCount(); ++i) {
        const FieldType type = rows.TypeOf(i);
        const bool ratio = sheet.RatioInCol_2 && SameText(rows.FieldName(i), "Col_2");
        const bool number = type == FieldType::dbInteger || type == FieldType::dbCurrency ||
                            type == FieldType::dbDouble;
        if (number || ratio) fields.push_back({i, type, ratio});
    }
    return fields;
}

/// True for a row of unit cost multipliers, by what it is called.
bool HoldsMultipliers(const Recordset& rows, const Sheet& sheet) {
    if (sheet.Description < 0) return false;
    const std::string description = Text(rows[sheet.Description]);
    return LCase(description).find("unit cost mult") != std::string::npos ||
           description.find("RCC") != std::string::npos;
}

const NumberForm& FormOf(const NumberField& field, bool multipliers) {
    if (field.IsRatio) return kMultiplier;
    if (field.Type == FieldType::dbCurrency) return kCents;
    return field.Type == FieldType::dbDouble && multipliers ? kMultiplier : kWhole;
}

void CheckCell(const Recordset& rows, const Sheet& sheet, int position, const NumberForm& form) {
    const Variant& value = rows[position];
    if (value.IsNull() || (value.IsNumber() && std::abs(value.Number()) < form.AlwaysFits)) return;
    const std::string padded = Fortran(value, form.Format, " ", false);
    const std::string shown(Trim(padded));
    if (!IsNumeric(shown) || shown.size() <= WidestFor(form, sheet.Item)) return;
    AddNonFatal("1090",
                fmt::format("Worksheet {}, Line {}, Column {}{}{}).", sheet.ItemName, Text(rows[0]),
                            rows.FieldName(position), form.Complaint, shown));
}

/// The sort by the key would be slow without an index on it.
void IndexFirstField(const std::string& item) {
    const TableDef& table = gDB.Table(item);
    const std::string key = table.Fields.front().Name;
    for (const IndexDef& index : table.Indexes) {
        if (SameText(index.Fields.front(), key)) return;
    }
    gDB.Execute(fmt::format("CREATE INDEX ndx{0} ON {0} ({1});", item, key));
}

void CheckSheet(const std::string& item, const std::string& itemName) {
    IndexFirstField(item);
    const std::string key = gDB.Table(item).Fields.front().Name;
    Recordset rows =
        gDB.OpenRecordset(fmt::format("Select * From {} Order By {};", item, key), dbOpenSnapshot);
    const Sheet sheet{item, itemName, item.starts_with('E'), rows.FieldIndex("Description")};
    const std::vector<NumberField> fields = NumberFields(rows, sheet);
    for (; !rows.Eof(); rows.MoveNext()) {
        const bool multipliers = HoldsMultipliers(rows, sheet);
        for (const NumberField& field : fields)
            CheckCell(rows, sheet, field.Position, FormOf(field, multipliers));
    }
}

}  // namespace

void CheckNumericWidths() {
    Recordset sheets = gDB.OpenRecordset(
        "Select Item, ItemName From Worksheets Where Calc_Lvl < 900 Order By Item;",
        dbOpenSnapshot);
    for (; !sheets.Eof(); sheets.MoveNext()) CheckSheet(Text(sheets[0]), Text(sheets[1]));
}

}  // namespace zolmara
