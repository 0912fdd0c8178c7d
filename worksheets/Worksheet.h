#pragma once

// The 46 worksheets of the form as a table: what each is called, at which level it calculates,
// which fields it has, and the procedures that create and calculate it. Creation, windows,
// print, the electronic report and import all take a worksheet's fields from here.

#include <optional>
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

class KeptColumns;

struct WorksheetField {
    std::string Name;
    FieldType Type = FieldType::dbDouble;
    int Size = 0;
    std::string Title;  ///< of the column on the form; lines of a schedule's heading joined by "|"
    CellKind Kind = CellKind::Keyed;
    bool AllowZeroLength = true;
};

/// A line that the calculation writes: a subtotal, a total, a unit cost multiplier. Its
/// subscripts count with it.
struct ComputedLine {
    std::int64_t Line;
    std::string_view Field = {};  ///< the one field that is written; empty where all are
};

struct Worksheet {
    std::string_view Item;  ///< the table's name and its key in the registry
    int Calc_Lvl;
    std::string_view Key;  ///< "LineNum" or "SeqNum"
    /// The form's fields in their order. A schedule's cost center fields are the CostCenters
    /// of the open CRF.
    std::vector<WorksheetField> (*Fields)(std::string_view item);
    void (*Build)(std::string_view item);
    /// None where the worksheet is only keyed. What stands need not be calculated again.
    void (*Calc)(std::string_view item, KeptColumns& kept);
    /// The fields that the worksheet has whatever the cost centers are.
    const std::vector<WorksheetField>& (*FixedFields)(std::string_view item);
    /// Lines whose amounts the calculation writes.
    std::span<const ComputedLine> ComputedLines = {};
    /// What the cost center fields hold; none where the worksheet has no such fields.
    std::optional<CellKind> CostCenterCells = {};
};

/// All worksheets, in the registry's order.
std::span<const Worksheet> AllWorksheets();

/// A worksheet by its Item, without regard to case; none for any other name.
const Worksheet* FindWorksheet(std::string_view item);

/// Makes a worksheet's table anew; its keyed data is lost. False for a name that is no
/// worksheet of this form.
bool BuildWorksheet(std::string_view item);

/// A field of a worksheet by name; none when the worksheet, with the cost centers of the open CRF,
/// has no such field.
std::optional<WorksheetField> FindField(std::string_view item, std::string_view field);

/// True where the calculation writes the cell: a total line, a computed column. Line 1 of Sp1,
/// which the user keys and the calculation rewrites from line 2, counts as keyed. False for a
/// name that is no worksheet or no field of it.
bool IsComputedCell(std::string_view item, Currency line, std::string_view field);

}  // namespace zolmara
