#include "worksheets/CellDescription.h"

#include <utility>

#include "core/Globals.h"

namespace zolmara {
namespace {

constexpr Currency kBeforeAll = Currency::FromWhole(-100000);
constexpr Currency kStep = Currency::FromUnits(1);

Node With(NodeKind kind, std::vector<Node> parts) {
    Node node{.Kind = kind};
    node.Parts = std::move(parts);
    return node;
}

}  // namespace

bool TakesEntry(const EntrySource& source, Currency entry, const Variant& line, double amount) {
    switch (source.Takes) {
        case EntrySource::Condition::AmountAboveZero:
            return entry < kTotalOfEntries && amount > 0;
        case EntrySource::Condition::LineAboveZero:
            return entry < kTotalOfEntries && NumOr(line) > 0;
        case EntrySource::Condition::AmountAndLine:
            return amount != 0 && !line.IsNull();
        case EntrySource::Condition::LineOfA:
            return NumOr(line) > 0 && NumOr(line) < kTotalOfA.ToDouble();
    }
    return false;
}

LineSpan LinesBelow(Currency line) { return {kBeforeAll, line}; }
LineSpan OnLine(Currency line) { return {line, line + kStep}; }
LineSpan LinesBetween(Currency above, Currency below) { return {above + kStep, below}; }

Node CellAt(const Place& place) { return {.Kind = NodeKind::Cell, .At = place}; }

Node Here(std::string_view field) {
    return CellAt({.FieldKind = Place::FieldIs::Fixed, .Field = field});
}
Node OnOther(Currency line) { return CellAt({.Line = Place::LineIs::Fixed, .At = line}); }
Node There(std::string_view item, Currency line, std::string_view field) {
    return CellAt({item, Place::LineIs::Fixed, line, Place::FieldIs::Fixed, field});
}
Node SameCell(std::string_view item) { return CellAt({.Item = item}); }
Node SameLine(std::string_view item, std::string_view field) {
    return CellAt({.Item = item, .FieldKind = Place::FieldIs::Fixed, .Field = field});
}
Node SameColumn(std::string_view item, Currency line) {
    return CellAt({.Item = item, .Line = Place::LineIs::Fixed, .At = line});
}

Node ColumnOn(std::vector<LineSpan> lines) {
    return {.Kind = NodeKind::Column, .Lines = std::move(lines)};
}
Node ColumnOf(std::string_view item, std::string_view field, std::vector<LineSpan> lines) {
    return {.Kind = NodeKind::Column,
            .At = {.Item = item, .FieldKind = Place::FieldIs::Fixed, .Field = field},
            .Lines = std::move(lines)};
}
Node RowOf(std::string_view item, std::vector<CostClass> classes) {
    return {.Kind = NodeKind::Row, .At = {.Item = item}, .Classes = std::move(classes)};
}
Node PostingsOf(const EntrySource& source) {
    return {.Kind = NodeKind::Postings, .Entries = source};
}
Node NameBy(std::string_view field) {
    return {.Kind = NodeKind::Name, .At = {.FieldKind = Place::FieldIs::Fixed, .Field = field}};
}

Node Constant(double number) { return {.Kind = NodeKind::Constant, .Number = number}; }
Node Words(std::string_view text) { return {.Kind = NodeKind::Constant, .Text = text}; }
Node Sum(std::vector<Node> parts) { return With(NodeKind::Sum, std::move(parts)); }
Node Less(std::vector<Node> parts) { return With(NodeKind::Less, std::move(parts)); }
Node Product(Node a, Node b, std::string_view word) {
    Node node = Pair(NodeKind::Product, std::move(a), std::move(b));
    node.Text = word;
    return node;
}
Node Ratio(Node a, Node b) { return Pair(NodeKind::Ratio, std::move(a), std::move(b)); }
Node Rounded(Node value, int digits) {
    Node node = With(NodeKind::Rounded, {std::move(value)});
    node.Digits = digits;
    return node;
}
Node Stated(Node value) { return With(NodeKind::InText, {std::move(value)}); }
Node Money(Node value) { return With(NodeKind::InMoney, {std::move(value)}); }
Node Pair(NodeKind kind, Node first, Node second) {
    return With(kind, {std::move(first), std::move(second)});
}
Node Closed(Closing closing) {
    Node node{.Kind = NodeKind::Closed};
    node.Group = std::make_shared<const Closing>(std::move(closing));
    return node;
}

}  // namespace zolmara
