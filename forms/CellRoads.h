#pragma once

// Which keyed cells the import takes, by which column it names them, and what their contents are.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Currency.h"

namespace zolmara {

/// The worksheet's name in an import file: the table's, but for the cost centers.
std::string ImportNameOf(std::string_view table);

/// The roads into a table of the open CRF.
class TableRoads {
public:
    explicit TableRoads(std::string_view table);

    /// The column by which the import takes the field at a position on a line; nothing where it
    /// does not. A line that the import does not make, such as a subscript on G, is none of its
    /// roads.
    std::optional<Currency> ColumnOf(int field, Currency line) const;

private:
    struct Span {
        std::int64_t From;  ///< in hundredths, both included
        std::int64_t To;
        bool SubscriptsAlike;
    };
    struct Field {
        std::vector<Span> Spans;
        Currency Column;
    };
    std::vector<Field> fields_;
};

/// True where the import keeps whole numbers alone.
bool TakesWholeNumbers(std::string_view table, std::string_view field);

enum class ContentKind {
    Unknown,  ///< no such worksheet, line or column
    Text,
    Amount,
    Date,
    Answer,  ///< "Yes" or "No"
};
/// What the cell holds that an import file names, in the open CRF.
ContentKind ContentOf(std::string_view worksheet, Currency line, Currency column);

}  // namespace zolmara
