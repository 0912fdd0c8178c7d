#include "spreadsheet/BookLayout.h"

#include <fmt/format.h>

#include <algorithm>

#include "spreadsheet/SheetRow.h"
#include "worksheets/Evaluator.h"

namespace zolmara {

int SheetLayout::RowOf(Currency line) const {
    const auto found = std::ranges::lower_bound(Lines, line);
    if (found == Lines.end() || *found != line) return 0;
    return FirstRow + static_cast<int>(found - Lines.begin());
}

std::optional<RowSpan> SheetLayout::RowsOf(const LineSpan& span) const {
    const auto first = std::ranges::lower_bound(Lines, span.From);
    const auto behind = std::ranges::lower_bound(Lines, span.Below);
    if (first >= behind) return std::nullopt;
    return RowSpan{FirstRow + static_cast<int>(first - Lines.begin()),
                   FirstRow + static_cast<int>(behind - Lines.begin()) - 1};
}

const ClosedColumn* SheetLayout::ClosedAt(const std::string& field, const Closing* group) const {
    const auto found = std::ranges::find_if(Closed, [&](const ClosedColumn& column) {
        return column.Group == group && column.Field == field;
    });
    return found == Closed.end() ? nullptr : &*found;
}

ColumnRules::ColumnRules(const std::string& item, const std::string& field) {
    for (const CellDescription* rule : AllDescriptions())
        if (HoldsItem(*rule, item) && MatchesField(rule->Field, field)) rules_.push_back(rule);
}

const CellDescription* ColumnRules::On(Currency line) const {
    const auto found = std::ranges::find_if(
        rules_, [&](const CellDescription* rule) { return HoldsLine(rule->Lines, line); });
    return found == rules_.end() ? nullptr : *found;
}

BookLayout::BookLayout(CellSource& cells, const std::vector<std::string>& items, int headRows) {
    for (const std::string& item : items) {
        SheetLayout sheet;
        sheet.Item = item;
        sheet.Fields = cells.Fields(item);
        sheet.Lines = cells.Lines(item);
        sheet.FirstRow = headRows + 1;
        for (const std::string& field : sheet.Fields)
            sheet.ColumnOf.emplace(field, static_cast<int>(sheet.ColumnOf.size()));
        sheet.FirstHelper = sheet.LastRow() + 2;
        FindClosed(sheet);
        sheets_.push_back(std::move(sheet));
    }
}

namespace {

/// The closing in a formula, behind what else it is wrapped in; null for none.
const Closing* ClosingIn(const Node& node) {
    if (node.Kind == NodeKind::Closed) return node.Group.get();
    for (const Node& part : node.Parts)
        if (const Closing* group = ClosingIn(part)) return group;
    return nullptr;
}

}  // namespace

/// Helper cells of one column stand below those of its other closings.
void BookLayout::FindClosed(SheetLayout& sheet) const {
    for (const std::string& field : sheet.Fields) {
        const ColumnRules rules(sheet.Item, field);
        int next = sheet.FirstHelper;
        for (const Currency line : sheet.Lines) {
            const CellDescription* rule = rules.On(line);
            const Closing* group = rule == nullptr ? nullptr : ClosingIn(rule->Formula);
            if (group == nullptr || sheet.ClosedAt(field, group) != nullptr) continue;
            sheet.Closed.push_back({field, sheet.ColumnOf.at(field), group, next});
            next += kHelpers;
        }
    }
}

const SheetLayout* BookLayout::Find(const std::string& item) const {
    const auto found = std::ranges::find(sheets_, item, &SheetLayout::Item);
    return found == sheets_.end() ? nullptr : &*found;
}

std::vector<const SheetLayout*> BookLayout::SheetsOf(const Closing& group,
                                                     const SheetLayout& own) const {
    if (group.Items.empty()) return {&own};
    std::vector<const SheetLayout*> sheets;
    for (const std::string_view item : group.Items) sheets.push_back(Find(std::string(item)));
    if (std::ranges::find(sheets, nullptr) != sheets.end()) return {};
    return sheets;
}

bool BookLayout::SameRows(const SheetLayout& one, const SheetLayout& other) const {
    if (&one == &other) return true;
    const auto [known, isNew] = sameRows_.try_emplace({&one, &other}, true);
    if (isNew)
        known->second = std::ranges::all_of(one.Lines, [&](Currency line) {
            const int row = other.RowOf(line);
            return row == 0 || row == one.RowOf(line);
        });
    return known->second;
}

std::string ColumnLetters(int column) {
    const std::string cell = CellAddressOf(column, 1);
    return cell.substr(0, cell.size() - 1);
}

std::string Absolute(const SheetLayout& sheet, int column, int row) {
    return fmt::format("'{}'!${}${}", sheet.Item, ColumnLetters(column), row);
}

}  // namespace zolmara
