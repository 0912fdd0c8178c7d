#pragma once

// The columns of an allocation table while cost centers come and go. Changes are noted, and the
// table is rebuilt once, whatever their number.

#include <string>
#include <string_view>
#include <vector>

#include "core/Currency.h"
#include "store/RebuildTables.h"

namespace zolmara {

class TableShape {
public:
    /// The table as it stands.
    explicit TableShape(std::string_view table);

    /// Why the line's column cannot be placed, or empty: two columns would have one name, the
    /// column would stand behind the closing total, or the table has no room.
    std::string Obstacle(Currency line) const;
    /// Notes the line's column at its place, Null on every row. The column that stood there moves
    /// up by .01 where it is of the same group; the others keep their names.
    void Add(Currency line);
    /// Notes the line's column as gone; those behind it in its group come down by .01, so long as
    /// they follow without a hole.
    void Remove(Currency line);
    /// The fields with what was noted.
    std::vector<RebuiltField> Fields() const;

private:
    struct Slot {
        std::string From;  ///< the field whose amounts it has; empty for a new one
        std::string Name;
        Currency Line;          ///< of a cost center's column
        bool IsColumn = false;  ///< of a cost center
    };
    struct Place {
        std::size_t At;
        bool Moves;  ///< the column that stands there
    };
    Place PlaceOf(Currency line) const;
    static void Rename(Slot& slot, Currency line);

    std::string table_;
    std::vector<Slot> slots_;
};

}  // namespace zolmara
