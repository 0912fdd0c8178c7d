#pragma once

// The 46 worksheets of the form as a table: what each is called, at which level it calculates,
// which fields it has, and the procedures that create and calculate it. Creation, windows,
// print, the electronic report and import all take a worksheet's fields from here.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

enum class CellKind {
    Key,       ///< the line number
    Label,     ///< a name or description that comes with the row
    Keyed,     ///< the user's entry
    Computed,  ///< written by the calculation
};

struct WorksheetField {
    std::string Name;
    FieldType Type = FieldType::dbDouble;
    int Size = 0;
    std::string Title;  ///< of the column on the form; lines of a schedule's heading joined by "|"
    CellKind Kind = CellKind::Keyed;
    bool AllowZeroLength = true;
};

struct Worksheet {
    std::string_view Item;  ///< the table's name and its key in the registry
    int Calc_Lvl;
    std::string_view Key;   ///< "LineNum" or "SeqNum"
    /// The form's fields in their order. A schedule's cost center fields are the CostCenters
    /// of the open CRF.
    std::vector<WorksheetField> (*Fields)(std::string_view item);
    void (*Build)(std::string_view item);
    void (*Calc)(std::string_view item);  ///< none where the worksheet is only keyed
};

/// All worksheets, in the registry's order.
std::span<const Worksheet> AllWorksheets();

/// A worksheet by its Item, without regard to case; none for any other name.
const Worksheet* FindWorksheet(std::string_view item);

/// Makes a worksheet's table anew; its keyed data is lost. False for a name that is no
/// worksheet of this form.
bool BuildWorksheet(std::string_view item);

/// True where the calculation writes the cell: a total line, a computed column.
bool IsComputedCell(std::string_view item, Currency line, std::string_view field);

}  // namespace zolmara
