#pragma once

// The descriptions of computed cells as formulas of a spreadsheet. Nothing here knows what a cell
// of the form means: it walks the nodes, as the evaluator does.

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "spreadsheet/BookLayout.h"

namespace zolmara {

class FormulaWriter {
public:
    FormulaWriter(const BookLayout& layout, CellSource& cells) : layout_(layout), cells_(cells) {}

    /// The formula of a cell, without "="; nothing where it is no formula: a constant, an empty
    /// cell, or one that reads a sheet which the workbook lacks.
    std::optional<std::string> Of(const CellDescription& rule, const SheetLayout& sheet,
                                  const CellRef& own);

    /// The formula of a helper cell of a closed column.
    struct HelperFormula {
        std::string Text;
        bool IsArray = false;
    };
    std::optional<HelperFormula> OfHelper(Helper helper, const ClosedColumn& column,
                                          const SheetLayout& sheet);

    /// What a helper cell is called, to the left of it.
    static std::string_view NameOf(Helper helper);

private:
    const BookLayout& layout_;
    CellSource& cells_;
    /// With a mark where the own row stands, of those that are the same on every line.
    std::map<std::tuple<const CellDescription*, const SheetLayout*, std::string>, std::string>
        patterns_;
};

}  // namespace zolmara
