#include "worksheets/Evaluator.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "worksheets/Build.h"
#include "worksheets/Schedules.h"

namespace zolmara {

// --- Places ----------------------------------------------------------------------------------

std::string ResolveItem(std::string_view item, const CellRef& own) {
    if (item.empty()) return own.Item;
    std::string resolved(item);
    if (resolved.back() == '?') resolved.back() = PartOf(own.Item);
    return resolved;
}

CellRef Resolve(const Place& place, const CellRef& own) {
    CellRef cell{ResolveItem(place.Item, own), own.Line, own.Field};
    if (place.Line == Place::LineIs::Fixed) cell.Line = place.At;
    if (place.Line == Place::LineIs::OfColumn) cell.Line = LineOfColumn(own.Field);
    if (place.FieldKind == Place::FieldIs::Fixed) cell.Field = place.Field;
    if (place.FieldKind == Place::FieldIs::OfLine) cell.Field = CostCenterColumn(own.Line);
    return cell;
}

bool HoldsLine(const std::vector<LineSpan>& lines, Currency line) {
    return lines.empty() ||
           std::ranges::any_of(lines, [&](const LineSpan& span) { return span.Holds(line); });
}

bool MatchesField(std::string_view pattern, std::string_view field) {
    return pattern == "CC_*" ? IsCostCenterColumn(field) : pattern == field;
}

std::vector<std::string> ColumnsOfRow(const Node& row, const std::string& item, CellSource& cells) {
    const Schedule& schedule = *FindSchedule(item);
    const bool pooled = schedule.Kind == ScheduleKind::Pooled;
    const auto takes = [&](CostClass kind) {
        return row.Classes.empty() || std::ranges::find(row.Classes, kind) != row.Classes.end();
    };
    std::vector<std::string> columns;
    const std::vector<std::string>& fields = cells.Fields(item);
    for (auto i = static_cast<std::size_t>(schedule.FirstColumn); i < fields.size(); ++i) {
        const bool isOthers = pooled && fields[i] == kAllOtherPools;
        if (!isOthers && !IsCostCenterColumn(fields[i])) continue;
        const CostClass kind =
            isOthers ? CostClass::AllOther : ClassOfLine(LineOfColumn(fields[i]));
        if (takes(kind)) columns.push_back(fields[i]);
    }
    return columns;
}

bool IsPosted(const EntrySource& source, Currency entry, CellSource& cells) {
    const std::string item(source.Item);
    const Variant line = cells.Value({item, entry, std::string(source.LineField)});
    const double amount = NumOr(cells.Value({item, entry, std::string(source.AmountField)}));
    return !line.IsNull() && TakesEntry(source, entry, line, amount);
}

// --- Values ----------------------------------------------------------------------------------

const std::vector<std::string>& Evaluator::RowColumns(const Node& row, const std::string& item) {
    const auto [found, isNew] = rows_.try_emplace({item, row.Classes});
    if (isNew) found->second = ColumnsOfRow(row, item, cells_);
    return found->second;
}

double Evaluator::Number(const Node& node, const CellRef& own) { return NumOr(Value(node, own)); }

void Evaluator::EachNumber(const Node& node, const CellRef& own,
                           const std::function<void(double)>& take) {
    const std::string item = ResolveItem(node.At.Item, own);
    switch (node.Kind) {
        case NodeKind::Column: {
            const std::string field = Resolve(node.At, own).Field;
            cells_.Expect(item, field);
            for (const Currency line : cells_.Lines(item)) {
                if (HoldsLine(node.Lines, line)) take(NumOr(cells_.Value({item, line, field})));
            }
            return;
        }
        case NodeKind::Row: {
            CellRef cell{item, own.Line, {}};
            for (const std::string& field : RowColumns(node, item)) {
                cell.Field = field;
                take(NumOr(cells_.Value(cell)));
            }
            return;
        }
        case NodeKind::Postings:
            Inputs(node, own, [&](const CellRef& cell) {
                take(node.Entries.Sign * NumOr(cells_.Value(cell)));
            });
            return;
        default:
            take(Number(node, own));
    }
}

Variant Evaluator::KeptIf(const Node& node, const CellRef& own) {
    const Variant condition = Value(node.Parts[0], own);
    const bool holds =
        node.Text.empty() ? NumOr(condition) > 0 : FirstLetter(condition) == node.Text;
    return holds ? cells_.Value(own) : Variant();
}

namespace {

Variant AmendedWord(double amendment) {
    if (amendment == 0) return "No";
    const bool isDigit = std::trunc(amendment) == amendment && Between(amendment, 1.0, 9.0);
    return isDigit ? "Yes" : "Error";
}

Variant ConstantOf(const Node& node) {
    return node.Text.empty() ? Variant(node.Number) : Variant(node.Text);
}

double RatioOf(double amount, double divisor) { return divisor == 0 ? 0 : amount / divisor; }

Variant NameOf(const Variant& line, CellSource& cells) {
    return line.IsNull() ? Variant() : cells.Value({"CostCenters", CurOr(line), "CCName"});
}

}  // namespace

double Evaluator::SumOf(const Node& node, const CellRef& own) {
    double sum = 0;
    const auto add = [&](double value) { sum += value; };
    if (node.Kind != NodeKind::Sum) EachNumber(node, own, add);
    for (const Node& part : node.Parts) EachNumber(part, own, add);
    return sum;
}

double Evaluator::RestOf(const Node& node, const CellRef& own) {
    std::optional<double> rest;
    const auto take = [&](double value) { rest = rest ? *rest - value : value; };
    for (const Node& part : node.Parts) EachNumber(part, own, take);
    return rest.value_or(0);
}

Variant Evaluator::Value(const Node& node, const CellRef& own) {
    switch (node.Kind) {
        case NodeKind::Nothing:
            return {};
        case NodeKind::Constant:
            return ConstantOf(node);
        case NodeKind::Cell:
            return cells_.Value(Resolve(node.At, own));
        case NodeKind::Name:
            return NameOf(cells_.Value(Resolve(node.At, own)), cells_);
        case NodeKind::Column:
        case NodeKind::Row:
        case NodeKind::Postings:
        case NodeKind::Sum:
            return SumOf(node, own);
        case NodeKind::Less:
            return RestOf(node, own);
        case NodeKind::Product:
            return Number(node.Parts[0], own) * Number(node.Parts[1], own);
        case NodeKind::Ratio:
            return RatioOf(Number(node.Parts[0], own), Number(node.Parts[1], own));
        case NodeKind::Rounded:
            return RoundTo(Number(node.Parts[0], own), node.Digits);
        case NodeKind::InText:
            return ThroughText(Number(node.Parts[0], own));
        case NodeKind::InMoney:
            return Currency(Number(node.Parts[0], own)).ToDouble();
        case NodeKind::UnlessZero:
            return Number(node.Parts[0], own) == 0 ? Variant() : Value(node.Parts[1], own);
        case NodeKind::KeptIfZero:
            return Number(node.Parts[0], own) == 0 ? cells_.Value(own) : Value(node.Parts[1], own);
        case NodeKind::KeptIf:
            return KeptIf(node, own);
        case NodeKind::Amended:
            return AmendedWord(Number(node.Parts[0], own));
        case NodeKind::Closed:
            return ClosedValue(*node.Group, own);
    }
    return {};
}

// --- Shares ----------------------------------------------------------------------------------

namespace {

/// The largest share so far.
struct Largest {
    std::string Item;
    Currency Line;
    double Size = 0;
    bool Found = false;

    void Take(const std::string& item, Currency line, double size) {
        if (Found && size <= Size) return;
        *this = {item, line, size, true};
    }
};

/// A cell that is Null is smaller than any other of its worksheet.
double SizeOf(const Closing& closing, const Variant& value) {
    if (value.IsNull()) return -std::numeric_limits<double>::infinity();
    return closing.Largest == Closing::By::Size ? std::abs(NumOr(value)) : NumOr(value);
}

/// Between worksheets it counts as 0.
double Against(const Closing& closing, double size) {
    return closing.Items.empty() ? size : std::max(size, 0.0);
}

/// The columns that a share reads down its lines.
void ExpectColumns(const Node& node, const CellRef& own, CellSource& cells) {
    if (node.Kind == NodeKind::Cell && node.At.Line == Place::LineIs::Own) {
        const CellRef cell = Resolve(node.At, own);
        cells.Expect(cell.Item, cell.Field);
    }
    for (const Node& part : node.Parts) ExpectColumns(part, own, cells);
}

}  // namespace

void Evaluator::Gather(Group& group, const Closing& closing, const CellRef& own) {
    ClosedShares& shares = group.Result;
    Largest largest;
    std::vector<std::string> items(closing.Items.begin(), closing.Items.end());
    if (items.empty()) items.push_back(own.Item);
    for (const std::string& item : items) {
        Largest ofItem;
        ShareColumn& column = group.Shares[item];
        CellRef member{item, own.Line, own.Field};
        ExpectColumns(closing.Share, member, cells_);
        if (closing.Weight) ExpectColumns(*closing.Weight, member, cells_);
        for (const Currency line : cells_.Lines(item)) {
            if (!closing.Lines.Holds(line)) continue;
            member.Line = line;
            const Variant share = Value(closing.Share, member);
            column.emplace_back(line, share.IsNull() ? std::nullopt : std::optional(NumOr(share)));
            shares.Got += NumOr(share);
            const Variant weight = closing.Weight ? Value(*closing.Weight, member) : share;
            shares.AllZero = shares.AllZero && NumOr(weight) == 0;
            ofItem.Take(item, line, SizeOf(closing, weight));
        }
        if (ofItem.Found) largest.Take(item, ofItem.Line, Against(closing, ofItem.Size));
    }
    shares.Want = Number(closing.Want, own);
    shares.Item = largest.Item;
    shares.Line = largest.Line;
    shares.Moves = largest.Found && shares.Got != shares.Want &&
                   !(closing.LeavesZero && shares.Got == 0) &&
                   !(closing.OnlyAboveZero && !(largest.Size > 0));
}

Evaluator::Group& Evaluator::GroupOf(const Closing& closing, const CellRef& own) {
    const auto [found, isNew] = groups_.try_emplace(
        {&closing, closing.Items.empty() ? own.Item : std::string(), own.Field});
    if (isNew) Gather(found->second, closing, own);
    return found->second;
}

const ClosedShares& Evaluator::Shares(const Closing& closing, const CellRef& own) {
    return GroupOf(closing, own).Result;
}

Variant Evaluator::Share(const Closing& closing, const CellRef& own) {
    const auto& shares = GroupOf(closing, own).Shares;
    if (const auto column = shares.find(own.Item); column != shares.end()) {
        const auto found =
            std::ranges::lower_bound(column->second, own.Line, {}, &ShareColumn::value_type::first);
        if (found != column->second.end() && found->first == own.Line)
            return found->second ? Variant(*found->second) : Variant();
    }
    return Value(closing.Share, own);
}

Variant Evaluator::ClosedValue(const Closing& closing, const CellRef& own) {
    const ClosedShares& shares = Shares(closing, own);
    Variant share = Share(closing, own);
    if (!shares.Moves || shares.Line != own.Line || shares.Item != own.Item) return share;
    const double part = NumOr(share);
    return ThroughText(closing.WantFirst ? part + shares.Want - shares.Got
                                         : part - shares.Got + shares.Want);
}

// --- Inputs ----------------------------------------------------------------------------------

void Evaluator::PostingInputs(const EntrySource& source, const CellRef& own, const Visit& visit) {
    const std::string entries(source.Item);
    cells_.Expect(entries, std::string(source.LineField));
    cells_.Expect(entries, std::string(source.AmountField));
    for (const Currency entry : cells_.Lines(entries)) {
        const Variant line = cells_.Value({entries, entry, std::string(source.LineField)});
        if (CurOr(line) == own.Line && IsPosted(source, entry, cells_)) {
            visit({entries, entry, std::string(source.AmountField)});
        }
    }
}

void Evaluator::Inputs(const Node& node, const CellRef& own, const Visit& visit) {
    const std::string item = ResolveItem(node.At.Item, own);
    switch (node.Kind) {
        case NodeKind::Cell:
            return visit(Resolve(node.At, own));
        case NodeKind::Column: {
            const std::string field = Resolve(node.At, own).Field;
            for (const Currency line : cells_.Lines(item)) {
                if (HoldsLine(node.Lines, line)) visit({item, line, field});
            }
            return;
        }
        case NodeKind::Row:
            for (const std::string& field : RowColumns(node, item)) {
                visit({item, own.Line, field});
            }
            return;
        case NodeKind::Postings:
            return PostingInputs(node.Entries, own, visit);
        case NodeKind::Name: {
            const CellRef line = Resolve(node.At, own);
            visit(line);
            if (!cells_.Value(line).IsNull()) {
                visit({"CostCenters", CurOr(cells_.Value(line)), "CCName"});
            }
            return;
        }
        case NodeKind::Closed: {
            Inputs(node.Group->Share, own, visit);
            const ClosedShares& shares = Shares(*node.Group, own);
            if (shares.Moves && shares.Line == own.Line && shares.Item == own.Item) {
                Inputs(node.Group->Want, own, visit);
            }
            return;
        }
        default:
            for (const Node& part : node.Parts) Inputs(part, own, visit);
    }
}

}  // namespace zolmara
