#include "forms/CellRules.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/CellChecks.h"
#include "forms/CellRuleTable.h"
#include "forms/FormTable.h"
#include "store/session/Session.h"
#include "worksheets/W_G.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

bool FitsLine(LineRange range, Currency line) {
    return Between(line.Units(), range.From * std::int64_t{100}, range.To * std::int64_t{100});
}

const CellRule* RuleOf(const CellEntry& entry) {
    for (const CellRule& rule : AllCellRules())
        if (FitsPattern(rule.Items, entry.Item) && FitsLine(rule.Lines, entry.Line) &&
            FitsAnyField(rule.Fields, entry.Field))
            return &rule;
    return nullptr;
}

/// The rule of a cell that takes entries; none where it is locked.
const CellRule* OpenRuleOf(const CellEntry& entry) {
    if (IsComputedCell(entry.Item, entry.Line, entry.Field)) return nullptr;
    const CellRule* rule = RuleOf(entry);
    if (rule == nullptr || (rule->Open != nullptr && !rule->Open(entry))) return nullptr;
    return rule;
}

std::string LockedText(const CellEntry& entry) {
    std::string text;
    if (SameText(entry.Item, "G")) text = ValidateCell_G(entry.Line);
    return text.empty() ? std::string(kLockedCellText) : text;
}

const FieldDef& FieldOf(const CellEntry& entry) {
    const TableDef& table = gDB.Table(entry.Item);
    const int index = table.FieldIndex(entry.Field);
    if (index < 0)
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("{} has no field {}", entry.Item, entry.Field));
    return table.Fields[static_cast<std::size_t>(index)];
}

/// A text longer than its field would be lost.
void CheckSize(CellEntry& entry) {
    const FieldDef& field = FieldOf(entry);
    if (field.Type != FieldType::dbText) return;
    const std::size_t length = TextLength(Text(entry.Value));
    if (length > static_cast<std::size_t>(field.Size))
        entry.Refuse(fmt::format("{} line {} {} takes at most {} characters, not {}.", entry.Item,
                                 NumberText(entry.Line), field.Name, field.Size, length));
}

}  // namespace

void CellEntry::Refuse(std::string_view text, std::string_view title, int style) {
    Refused = true;
    Warn(text, title, style);
}

void CellEntry::Warn(std::string_view text, std::string_view title, int style) {
    Text = text;
    Title = title;
    Style = style;
}

bool CellEntry::IsBlank() const { return IsBlankValue(Value); }

bool HasEditor(std::string_view item) {
    return std::ranges::any_of(AllCellRules(),
                               [&](const CellRule& rule) { return FitsPattern(rule.Items, item); });
}

bool IsCellOpen(std::string_view item, Currency line, std::string_view field, const RowEntry* row) {
    CellEntry entry;
    entry.Item = item;
    entry.Line = line;
    entry.Field = field;
    entry.Row = row;
    return OpenRuleOf(entry) != nullptr;
}

bool IsKeyedField(std::string_view item, std::string_view field) {
    const auto sheet = FindField(item, field);
    if (sheet && sheet->Kind == CellKind::Computed) return false;
    return std::ranges::any_of(AllCellRules(), [&](const CellRule& rule) {
        return FitsPattern(rule.Items, item) && FitsAnyField(rule.Fields, field);
    });
}

EntryList ListOf(std::string_view item, Currency line, std::string_view field) {
    CellEntry entry;
    entry.Item = item;
    entry.Line = line;
    entry.Field = field;
    const CellRule* rule = RuleOf(entry);
    if (rule == nullptr) return {};
    return {rule->Argument.Menu, rule->Argument.Entries, rule->Argument.OnlyPicked};
}

EntryList ListOf(std::string_view item, std::string_view field) {
    for (const CellRule& rule : AllCellRules())
        if (FitsPattern(rule.Items, item) && FitsAnyField(rule.Fields, field) &&
            !rule.Argument.Entries.empty())
            return {rule.Argument.Menu, rule.Argument.Entries, rule.Argument.OnlyPicked};
    return {};
}

void CheckCell(CellEntry& entry) {
    const CellRule* rule = OpenRuleOf(entry);
    if (rule == nullptr) return entry.Refuse(LockedText(entry));
    if (entry.IsBlank() && !rule->SeesBlanks)
        entry.Value = nullptr;
    else
        rule->Check(entry, rule->Argument);
    if (!entry.Refused) CheckSize(entry);
}

EntryMessage CheckRow(const RowEntry& row) {
    if (SameText(row.Table, "A6")) return CheckRow_A6(row);
    if (SameText(row.Table, "A81p2")) return CheckRow_A81p2(row);
    return {};
}

void Tell(const EntryMessage& message) {
    if (message.Beeps) TheDialogs().Beep();
    if (!message.Text.empty()) MsgOrLog(message.Text, message.Style, message.Title);
}

RowEntry RowOf(const CellEntry& entry) {
    RowEntry row;
    if (entry.Row != nullptr) row = *entry.Row;
    row.Table = entry.Item;
    row.Line = entry.Line;
    row.Set(entry.Field, entry.Value);
    for (const auto& [field, value] : entry.Others) row.Set(field, value);
    return row;
}

bool EnterCell(CellEntry& entry) {
    CheckCell(entry);
    Tell(entry.Message());
    if (entry.Refused) return false;
    const RowEntry row = RowOf(entry);
    const EntryMessage refusal = CheckRow(row);
    Tell(refusal);
    entry.Refused = !refusal.Text.empty();
    if (!entry.Refused) StoreRow(row);
    return !entry.Refused;
}

}  // namespace zolmara
