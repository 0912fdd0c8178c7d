#pragma once

// The columns that cost centers have in the allocation tables. The schedules address them by
// position, in the order of their lines and ahead of the closing total, so a new column has to
// stand at its place: a field can only be appended, and the table is rebuilt around it.

#include <string>
#include <string_view>
#include <vector>

#include "core/Currency.h"
#include "structure/TableShape.h"

namespace zolmara {

/// The tables that hold a column for a line, in the order in which they are worked. The three
/// parts of a schedule stand together. None for a line that is no cost center.
std::vector<std::string_view> TablesWithColumn(Currency line);

/// The columns of new cost centers, any number of them: they are noted one after the other, and
/// Finish rebuilds each table once. Until then the tables are as they were.
class NewColumns {
public:
    /// Why the line's column cannot be placed, or empty: two columns would have one name, or the
    /// column would stand behind the closing total.
    std::string Obstacle(Currency line);
    /// Notes the line's column for every table of TablesWithColumn. False when a table cannot take
    /// a field: the reason has been reported, and the tables ahead of it have theirs noted.
    bool Add(Currency line);
    /// Rebuilds the tables. The last one's copy stays behind as tblTemp.
    void Finish();

private:
    struct Family {
        std::vector<std::string_view> Tables;  ///< the parts of a schedule
        std::string Refusal;                   ///< why no field can be added to them
        std::vector<TableShape> Shape;  ///< of the first, which stands for all; none with a refusal
        bool Changed = false;
    };
    std::vector<std::size_t> FamiliesOf(Currency line);
    std::size_t FamilyOf(std::vector<std::string_view> tables);

    std::vector<Family> families_;
};

/// Adds one line's column, Null on every row. False as NewColumns::Add.
bool AddCCColumn(Currency line);

/// Removes the line's column from every worksheet that has it; the columns behind it in the
/// line's group come down by .01.
void DeleteCCColumn(Currency line);

/// Deletes a table if it is there. One that cannot be deleted shows when it is made anew.
void DropTable(std::string_view name);

}  // namespace zolmara
