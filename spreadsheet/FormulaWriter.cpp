#include "spreadsheet/FormulaWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "core/Globals.h"
#include "spreadsheet/FormulaDraft.h"

namespace zolmara {

namespace {

/// A constant and an empty cell are no formulas.
bool IsFormula(const Node& node) {
    return node.Kind != NodeKind::Nothing && node.Kind != NodeKind::Constant;
}

std::string WithRow(const std::string& pattern, int row) {
    const std::string number = std::to_string(row);
    std::string text;
    text.reserve(pattern.size() + 16);
    for (const char c : pattern)
        if (c == FormulaDraft::kOwnRow)
            text += number;
        else
            text += c;
    return text;
}

}  // namespace

std::optional<std::string> FormulaWriter::Of(const CellDescription& rule, const SheetLayout& sheet,
                                             const CellRef& own) {
    if (!IsFormula(rule.Formula)) return std::nullopt;
    const int row = sheet.RowOf(own.Line);
    const auto key = std::make_tuple(&rule, &sheet, own.Field);
    const auto known = patterns_.find(key);
    if (known != patterns_.end()) return WithRow(known->second, row);
    FormulaDraft draft(layout_, cells_, sheet, own);
    try {
        const std::string pattern = draft.Scalar(rule.Formula);
        if (draft.SameOnEveryLine()) patterns_.emplace(key, pattern);
        return WithRow(pattern, row);
    } catch (const FormulaDraft::CannotWrite&) {
        return std::nullopt;
    }
}

std::string_view FormulaWriter::NameOf(Helper helper) {
    constexpr std::string_view kNames[kHelpers] = {"Sum of the shares",
                                                   "To be closed on",
                                                   "Largest share",
                                                   "Row of the largest",
                                                   "Row that takes the difference",
                                                   "Difference"};
    return kNames[static_cast<std::size_t>(helper)];
}

// --- Helper cells ----------------------------------------------------------------------------

namespace {

class HelperDraft {
public:
    HelperDraft(const BookLayout& layout, CellSource& cells, const ClosedColumn& column,
                const SheetLayout& sheet)
        : layout_(layout),
          cells_(cells),
          column_(column),
          sheet_(sheet),
          group_(*column.Group),
          sheets_(layout.SheetsOf(group_, sheet)),
          rows_(sheet.RowsOf(group_.Lines)) {
        if (sheets_.empty()) throw FormulaDraft::CannotWrite{};
    }

    FormulaWriter::HelperFormula Formula(Helper helper) {
        using enum Helper;
        switch (helper) {
            case Got:
                return Array("SUM", rows_ ? Draft().Shares(group_, *rows_) : "");
            case Want:
                return {Draft().Scalar(group_.Want)};
            case Largest:
                return Array("MAX", rows_ ? Draft().Sizes(group_, *rows_) : "");
            case Place:
                return PlaceFormula();
            case Taker:
                return {TakerFormula()};
            case Difference:
                return {fmt::format("ROUND({}-{},9)", Cell(sheet_, Want), SumOfShares())};
        }
        return {};
    }

private:
    FormulaDraft Draft() const {
        const Currency line =
            rows_ ? sheet_.Lines[static_cast<std::size_t>(rows_->First - sheet_.FirstRow)]
                  : Currency();
        return {layout_, cells_, sheet_, {sheet_.Item, line, column_.Field}};
    }

    static FormulaWriter::HelperFormula Array(const char* function, const std::string& values) {
        if (values.empty()) return {"-1"};
        return {fmt::format("{}({})", function, values), true};
    }

    FormulaWriter::HelperFormula PlaceFormula() const {
        if (!rows_) return {"0"};
        return {fmt::format("MATCH({},{},0)+{}", Cell(sheet_, Helper::Largest),
                            Draft().Sizes(group_, *rows_), rows_->First - 1),
                true};
    }

    /// A helper cell of the same column on any of the sheets.
    std::string Cell(const SheetLayout& sheet, Helper helper) const {
        const ClosedColumn* column = sheet.ClosedAt(column_.Field, &group_);
        if (column == nullptr) return "0";
        const int row = column->FirstHelper + static_cast<int>(helper);
        if (&sheet == &sheet_) return fmt::format("{}{}", ColumnLetters(column->Column), row);
        return Absolute(sheet, column->Column, row);
    }

    std::string SumOfShares() const {
        std::string sum;
        for (const SheetLayout* sheet : sheets_)
            if (sheet->RowsOf(group_.Lines))
                sum += (sum.empty() ? "" : ",") + Cell(*sheet, Helper::Got);
        return sum.empty() ? "0" : fmt::format("SUM({})", sum);
    }

    /// Between sheets a share that is smaller than 0 counts as 0.
    std::string Against(const SheetLayout& sheet) const {
        return fmt::format("MAX({},0)", Cell(sheet, Helper::Largest));
    }

    std::string TakerFormula() const {
        if (!rows_) return "0";
        std::string conditions = fmt::format("{}<>{}", SumOfShares(), Cell(sheet_, Helper::Want));
        if (group_.LeavesZero) conditions += fmt::format(",{}<>0", SumOfShares());
        if (group_.OnlyAboveZero) conditions += fmt::format(",{}>0", Cell(sheet_, Helper::Largest));
        bool ahead = true;
        for (const SheetLayout* other : sheets_) {
            if (other == &sheet_) {
                ahead = false;
            } else if (other->RowsOf(group_.Lines)) {
                conditions +=
                    fmt::format(",{}{}{}", Against(sheet_), ahead ? ">" : ">=", Against(*other));
            }
        }
        return fmt::format("IF(AND({}),{},0)", conditions, Cell(sheet_, Helper::Place));
    }

    const BookLayout& layout_;
    CellSource& cells_;
    const ClosedColumn& column_;
    const SheetLayout& sheet_;
    const Closing& group_;
    std::vector<const SheetLayout*> sheets_;
    std::optional<RowSpan> rows_;
};

}  // namespace

std::optional<FormulaWriter::HelperFormula> FormulaWriter::OfHelper(Helper helper,
                                                                    const ClosedColumn& column,
                                                                    const SheetLayout& sheet) {
    try {
        return HelperDraft(layout_, cells_, column, sheet).Formula(helper);
    } catch (const FormulaDraft::CannotWrite&) {
        return std::nullopt;
    }
}

}  // namespace zolmara
