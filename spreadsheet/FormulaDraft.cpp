#include "spreadsheet/FormulaDraft.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "worksheets/Evaluator.h"
#include "worksheets/FormLines.h"

namespace zolmara {

namespace {

/// The text form of 15 digits, as a figure that a statement carries.
std::string InText(const std::string& value) {
    return fmt::format("VALUE(TEXT({},\"0.00000000000000E+00\"))", value);
}

std::string Prefix(const SheetLayout& target, const SheetLayout& own) {
    return &target == &own ? std::string() : fmt::format("'{}'!", target.Item);
}

/// A number as formulas spell it.
std::string Literal(double number) { return UCase(fmt::format("{}", number)); }

}  // namespace

const SheetLayout& FormulaDraft::Sheet(const std::string& item) const {
    const SheetLayout* sheet = layout_.Find(item);
    if (sheet == nullptr) throw CannotWrite{};
    return *sheet;
}

// --- Places ----------------------------------------------------------------------------------

std::string FormulaDraft::RowText(const Place& place, const SheetLayout& target, int row) {
    if (place.Line != Place::LineIs::Own) return fmt::format("${}", row);
    if (!layout_.SameRows(sheet_, target)) {
        sameOnEveryLine_ = false;
        return std::to_string(row);
    }
    return std::string(1, kOwnRow);
}

/// What is not there counts as 0.
std::string FormulaDraft::Reference(const Place& place) {
    if (array_ != nullptr && place.Line == Place::LineIs::Own) return RangeOf(place);
    const CellRef cell = Resolve(place, own_);
    const SheetLayout& target = Sheet(cell.Item);
    if (place.FieldKind == Place::FieldIs::OfLine) sameOnEveryLine_ = false;
    const auto column = target.ColumnOf.find(cell.Field);
    const int row = target.RowOf(cell.Line);
    if (row == 0) sameOnEveryLine_ = false;
    if (row == 0 || column == target.ColumnOf.end()) return "0";
    return Prefix(target, sheet_) + ColumnLetters(column->second) + RowText(place, target, row);
}

/// The same column on all rows of the array; on another sheet they must be the same lines.
std::string FormulaDraft::RangeOf(const Place& place) {
    const CellRef cell = Resolve(place, own_);
    const SheetLayout& target = Sheet(cell.Item);
    const auto column = target.ColumnOf.find(cell.Field);
    const bool reaches =
        target.RowOf(sheet_.Lines[static_cast<std::size_t>(array_->Last - sheet_.FirstRow)]) ==
        array_->Last;
    if (column == target.ColumnOf.end() || !reaches || !layout_.SameRows(sheet_, target))
        throw CannotWrite{};
    return fmt::format("{}${}${}:${}${}", Prefix(target, sheet_), ColumnLetters(column->second),
                       array_->First, ColumnLetters(column->second), array_->Last);
}

std::string FormulaDraft::ColumnTerms(const Node& node) {
    const SheetLayout& target = Sheet(ResolveItem(node.At.Item, own_));
    const auto column = target.ColumnOf.find(Resolve(node.At, own_).Field);
    if (column == target.ColumnOf.end()) return "0";
    const std::string letters = ColumnLetters(column->second);
    const std::vector<LineSpan> all = {
        {target.Lines.empty() ? Currency() : target.Lines.front(), Currency::FromWhole(100000)}};
    std::string terms;
    for (const LineSpan& span : node.Lines.empty() ? all : node.Lines) {
        const auto rows = target.RowsOf(span);
        if (!rows) continue;
        terms += fmt::format("{}{}${}${}:${}${}", terms.empty() ? "" : ",", Prefix(target, sheet_),
                             letters, rows->First, letters, rows->Last);
    }
    return terms.empty() ? "0" : terms;
}

std::string FormulaDraft::RowTerms(const Node& node) {
    const std::string item = ResolveItem(node.At.Item, own_);
    const SheetLayout& target = Sheet(item);
    const int row = target.RowOf(own_.Line);
    if (row == 0) sameOnEveryLine_ = false;
    if (row == 0) return "0";
    const std::string rowText = RowText(node.At, target, row);
    std::string terms;
    int first = -1;
    int last = -1;
    const auto add = [&] {
        if (first < 0) return;
        terms += fmt::format("{}{}{}{}:{}{}", terms.empty() ? "" : ",", Prefix(target, sheet_),
                             ColumnLetters(first), rowText, ColumnLetters(last), rowText);
    };
    for (const std::string& field : ColumnsOfRow(node, item, cells_)) {
        const int column = target.ColumnOf.at(field);
        if (column != last + 1 || first < 0) {
            add();
            first = column;
        }
        last = column;
    }
    add();
    return terms.empty() ? "0" : terms;
}

/// The entries that name the own line. A condition that the line itself fulfils needs no words.
std::string FormulaDraft::Posted(const EntrySource& source) {
    using enum EntrySource::Condition;
    const SheetLayout& target = Sheet(std::string(source.Item));
    const bool ofEntries = source.Takes == AmountAboveZero || source.Takes == LineAboveZero;
    const Currency below = ofEntries ? kTotalOfEntries : Currency::FromWhole(100000);
    const auto rows = target.RowsOf({Currency::FromWhole(-100000), below});
    if (!rows) return "0";
    const auto range = [&](std::string_view field) {
        const std::string letters = ColumnLetters(target.ColumnOf.at(std::string(field)));
        return fmt::format("{}${}${}:${}${}", Prefix(target, sheet_), letters, rows->First, letters,
                           rows->Last);
    };
    const std::string amounts = range(source.AmountField);
    const std::string condition =
        source.Takes == AmountAboveZero ? fmt::format(",{},\">0\"", amounts) : "";
    return fmt::format("{}SUMIFS({},{},$A{}{})", source.Sign < 0 ? "-" : "", amounts,
                       range(source.LineField), kOwnRow, condition);
}

std::string FormulaDraft::Name(const Place& place) {
    const std::string line = Reference(place);
    const SheetLayout& centers = Sheet("CostCenters");
    const auto range = [&](const char* field) {
        const std::string letters = ColumnLetters(centers.ColumnOf.at(field));
        return fmt::format("'{}'!${}${}:${}${}", centers.Item, letters, centers.FirstRow, letters,
                           centers.LastRow());
    };
    return fmt::format("IF({}=\"\",\"\",IFERROR(INDEX({},MATCH({},{},0)),\"\"))", line,
                       range("CCName"), line, range("LineNum"));
}

// --- Values ----------------------------------------------------------------------------------

/// What stands between the brackets of a sum.
std::string FormulaDraft::Terms(const Node& node) {
    switch (node.Kind) {
        case NodeKind::Column:
            return ColumnTerms(node);
        case NodeKind::Row:
            return RowTerms(node);
        case NodeKind::Sum: {
            std::string terms;
            for (const Node& part : node.Parts) terms += (terms.empty() ? "" : ",") + Terms(part);
            return terms.empty() ? "0" : terms;
        }
        default:
            return Scalar(node);
    }
}

std::string FormulaDraft::Difference(const std::vector<Node>& parts) {
    std::string text;
    for (const Node& part : parts) text += (text.empty() ? "" : "-") + Scalar(part);
    return fmt::format("({})", text);
}

/// Without an amount the cell stays as the last calculation left it.
std::string FormulaDraft::Kept(const Node& node) {
    sameOnEveryLine_ = false;
    const Variant stored = cells_.Value(own_);
    return fmt::format("IF({}=0,{},{})", Scalar(node.Parts[0]), Literal(NumOr(stored)),
                       Scalar(node.Parts[1]));
}

/// The form's own rounding, operation by operation: spreadsheets round otherwise at the edge.
std::string FormulaDraft::Rounded(const std::string& value, int digits) const {
    const std::string power =
        digits == 0 ? "" : "1" + std::string(static_cast<std::size_t>(digits), '0');
    const std::string scaled = digits == 0 ? value : fmt::format("({}*{})", value, power);
    return fmt::format(
        "IF(ABS(ABS({0}-TRUNC({0}))-0.5)<0.000001,(TRUNC({0})+IF({0}<0,-1,1)){1},INT({0}+0.5){2})",
        scaled, digits == 0 ? "" : "*" + Literal(1 / Val(power)), digits == 0 ? "" : "/" + power);
}

std::string FormulaDraft::Scalar(const Node& node) {
    const auto part = [&](std::size_t i) { return Scalar(node.Parts.at(i)); };
    switch (node.Kind) {
        case NodeKind::Constant:
            return node.Text.empty() ? Literal(node.Number) : fmt::format("\"{}\"", node.Text);
        case NodeKind::Cell:
            return Reference(node.At);
        case NodeKind::Name:
            return Name(node.At);
        case NodeKind::Postings:
            return Posted(node.Entries);
        case NodeKind::Column:
        case NodeKind::Row:
        case NodeKind::Sum:
            return fmt::format("SUM({})", Terms(node));
        case NodeKind::Less:
            return Difference(node.Parts);
        case NodeKind::Product:
            return fmt::format("({}*{})", part(0), part(1));
        case NodeKind::Ratio:
            return fmt::format("IF({0}=0,0,{1}/{0})", part(1), part(0));
        case NodeKind::Rounded:
            return Rounded(part(0), node.Digits);
        case NodeKind::InText:
            return InText(part(0));
        case NodeKind::InMoney:
            return fmt::format("ROUND({},4)", part(0));
        case NodeKind::UnlessZero:
            return fmt::format("IF({}=0,{},{})", part(0), array_ != nullptr ? "0" : "\"\"",
                               part(1));
        case NodeKind::KeptIfZero:
            return Kept(node);
        case NodeKind::Closed:
            return ClosedShare(*node.Group);
        default:
            throw CannotWrite{};
    }
}

// --- Shares ----------------------------------------------------------------------------------

/// A share, and the difference on the row that takes it.
std::string FormulaDraft::ClosedShare(const Closing& group) {
    const ClosedColumn* column = sheet_.ClosedAt(own_.Field, &group);
    if (column == nullptr) throw CannotWrite{};
    for (const std::string_view item : group.Items) Sheet(std::string(item));
    const std::string letters = ColumnLetters(column->Column);
    const auto helper = [&](Helper which) {
        return fmt::format("{}${}", letters, column->FirstHelper + static_cast<int>(which));
    };
    const std::string taker = helper(Helper::Taker);
    const std::string difference =
        fmt::format("IF({}=ROW(),{},0)", taker, helper(Helper::Difference));
    if (group.Share.Kind != NodeKind::UnlessZero)
        return fmt::format("{}+{}", Scalar(group.Share), difference);
    return fmt::format("IF(AND({}=0,{}<>ROW()),\"\",{}+{})", Scalar(group.Share.Parts[0]), taker,
                       Scalar(group.Share.Parts[1]), difference);
}

std::string FormulaDraft::Shares(const Closing& group, const RowSpan& rows) {
    array_ = &rows;
    return Scalar(group.Share);
}

/// A cell that holds nothing is smaller than any other.
std::string FormulaDraft::Sizes(const Closing& group, const RowSpan& rows) {
    array_ = &rows;
    const Node& weight = group.Weight ? *group.Weight : group.Share;
    const bool bySize = group.Largest == Closing::By::Size;
    const auto size = [&](const std::string& value) {
        return bySize ? fmt::format("ABS({})", value) : value;
    };
    const char* none = bySize ? "-1" : "-1E+300";
    if (weight.Kind == NodeKind::UnlessZero)
        return fmt::format("IF({}=0,{},{})", Scalar(weight.Parts[0]), none,
                           size(Scalar(weight.Parts[1])));
    const std::string value = Scalar(weight);
    if (weight.Kind != NodeKind::Cell) return size(value);
    return fmt::format("IF({0}=\"\",{1},{2})", value, none, size(value));
}

}  // namespace zolmara
