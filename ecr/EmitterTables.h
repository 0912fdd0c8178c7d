#pragma once

// Which cells of which worksheet are written, and in which form: the tables that the emitters
// walk.

#include <span>
#include <string_view>

#include "store/Dao.h"
#include "worksheets/FormLines.h"

namespace zolmara {

/// How a column's cells are written. An empty format is a column that is not.
struct CellForm {
    std::string_view Format;
    bool NoDashes = false;  ///< every "-" is left out
};

/// The column has no form of its own and takes that of the cell written just before.
inline constexpr std::string_view kFormBefore = "=";

/// The forms of a worksheet's columns, from column 1 on, on some of its lines.
struct LineForms {
    LineSpan Lines;
    std::span<const CellForm> Columns;
};

/// Columns, one digit each, that are passed over on some lines.
struct PassedOver {
    LineSpan Lines;
    std::string_view Columns;
};

/// A worksheet whose columns are Col_1, Col_2, ...
struct CellEmitter {
    std::string_view Item;
    std::string_view Code;
    std::string_view Query;
    std::span<const LineForms> Forms;
    std::span<const PassedOver> Passed = {};
    bool (*TakesRow)(const Recordset& row) = nullptr;  ///< every row where there is none
    bool (*TakesCell)(const Variant& cell) = nullptr;  ///< cells that say something
    bool BlankZeroLine = false;
};

/// A worksheet whose columns are the cost centers of the statement.
struct ScheduleEmitter {
    std::string_view Family;  ///< the Item without its part
    std::string_view Code;    ///< the part's digit stands behind it
    int FirstField;           ///< position of the first field that is written
    bool HasUcm = false;      ///< line 54 is a ratio
    bool Pooled = false;      ///< columns are numbered as the pools are; column 2 is a ratio
};

/// None for a name that is no such worksheet.
const CellEmitter* FindCellEmitter(std::string_view item);
const ScheduleEmitter* FindScheduleEmitter(std::string_view item);

/// True where a cell has a text other than "0".
bool SaysSomething(const Variant& cell);

}  // namespace zolmara
