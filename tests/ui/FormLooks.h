#pragma once

// How each worksheet's window looks, as the form's instructions have it.

#include <string>
#include <vector>

namespace zolmara::ui {

/// How a column shows -1234.56, or what it holds.
enum class Looks {
    Text,
    Money,     ///< (1,235)
    Percent,   ///< (1,234.56)
    Sequence,  ///< (1,234.56), and a key as 1.00
    Ratio,     ///< (1234.560000)
    Line,      ///< -1234.56, and a key as 1.00
    Whole      ///< 1
};

enum class Lock { Locked, Keyed };

/// A column that is shown.
struct ColumnLook {
    std::string Field;
    std::string Number;  ///< the heading's first line, empty for none
    std::string Title;
    Looks Shows;
    Lock Is = Lock::Locked;  ///< Keyed: on some line at least
    int Twips = 0;           ///< the width, where it is told
};
using ColumnLooks = std::vector<ColumnLook>;

struct FormLook {
    std::string Item;
    std::string Menu;      ///< the entry's name behind "mnuEdit" and "mnuView"
    std::string EditName;  ///< empty where nothing is keyed
    ColumnLooks Edit;
    std::string ViewName;
    ColumnLooks View;
    bool Add = false;              ///< cmdAdd works on the first line
    bool Delete = false;           ///< and cmdDelete
    std::string EditCaption = "";  ///< where it is not "Edit Worksheet " and the Item
    std::string ViewCaption = "";
};

/// The windows of both menus.
std::vector<FormLook> FormLooks();

/// The worksheets in the order of their names, and the names: "A-7  Part-1".
struct NamedItem {
    std::string Item;
    std::string Name;
};
const std::vector<NamedItem>& WalkOrder();

}  // namespace zolmara::ui
