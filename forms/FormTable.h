#pragma once

// The windows and what is particular in their columns, as tables. What a worksheet's fields are
// stands with the worksheet; here is only how a window shows them.

#include <span>
#include <string_view>

#include "forms/WorksheetForm.h"

namespace zolmara {

/// The columns that an edit form has beside those that are keyed.
enum class LockedColumns {
    Shown,
    Hidden,      ///< computed columns are for the view
    TotalHidden  ///< of a schedule, the total alone
};

/// The windows of a worksheet, or of several that share their forms: "Bp?" for the three parts.
struct FormSpec {
    std::string_view Items;
    std::string_view Table;     ///< empty where it is the Item
    std::string_view EditName;  ///< empty where there is no editor
    std::string_view ViewName;
    std::string_view EditRows;  ///< the statement, with "{}" for the table
    std::string_view ViewRows;
    int Frozen = 2;
    LockedColumns Locked = LockedColumns::Shown;
    bool Shared = false;
    bool HasLines = false;  ///< cmdAdd and cmdDelete act
    bool GrowsByPaste = false;
    std::string_view EditCaption = {};  ///< where it is not "Edit Worksheet " and the Item
    std::string_view ViewCaption = {};
};

std::span<const FormSpec> AllFormSpecs();

/// The entry for an Item, in any case; null for what is no worksheet.
const FormSpec* FindFormSpec(std::string_view item);

/// How a column is shown where that does not follow from its field.
struct ColumnSpec {
    std::string_view Tables;
    std::string_view Fields;  ///< separated by blanks, "CC_*" for all that begin so
    int Width = 0;            ///< 0: by the field
    std::string_view NumberFormat = {};
    std::string_view EditTitle = {};  ///< the editor's own heading
    std::string_view Title = {};      ///< of a field whose worksheet gives none
    std::string_view Number = {};
    bool Hidden = false;
};

/// The first entry that fits; null where everything follows from the field.
const ColumnSpec* FindColumnSpec(std::string_view table, std::string_view field);

/// "?" of the pattern stands for any one character.
bool FitsPattern(std::string_view pattern, std::string_view name);
/// True where one of the words, separated by blanks, is the field; "CC_*" is a beginning.
bool FitsAnyField(std::string_view words, std::string_view field);

}  // namespace zolmara
