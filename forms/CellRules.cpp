#include "forms/CellRules.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "core/Windows.h"
#include "forms/CellAddress.h"
#include "forms/CellChecks.h"
#include "forms/CellRuleTable.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "worksheets/W_A6.h"
#include "worksheets/W_G.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

/// "?" of the pattern stands for any one character.
bool FitsItem(std::string_view pattern, std::string_view item) {
    if (pattern.size() != item.size()) return false;
    for (std::size_t i = 0; i < item.size(); ++i)
        if (pattern[i] != '?' && !SameText(pattern.substr(i, 1), item.substr(i, 1))) return false;
    return true;
}

bool FitsLine(LineRange range, Currency line) {
    return Between(line.Units(), range.From * std::int64_t{100}, range.To * std::int64_t{100});
}

bool FitsField(std::string_view word, std::string_view field) {
    if (!word.ends_with('*')) return SameText(word, field);
    const auto prefix = word.substr(0, word.size() - 1);
    return field.size() > prefix.size() && SameText(field.substr(0, prefix.size()), prefix);
}

bool FitsAnyField(std::string_view words, std::string_view field) {
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        if (FitsField(words.substr(0, end), field)) return true;
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return false;
}

const CellRule* RuleOf(const CellEntry& entry) {
    for (const CellRule& rule : AllCellRules())
        if (FitsItem(rule.Items, entry.Item) && FitsLine(rule.Lines, entry.Line) &&
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

void CheckRow(CellEntry& entry) {
    if (SameText(entry.Item, "A6")) CheckRow_A6(entry);
    if (SameText(entry.Item, "A81p2")) CheckRow_A81p2(entry);
}

bool IsComponents(std::string_view item) { return FitsItem("S2p?", item); }

bool IsComponentName(const CellEntry& entry) {
    return IsComponents(entry.Item) &&
           (SameText(entry.Field, "Col_1") || SameText(entry.Field, "Col_2"));
}

/// Name and number of a component stand in all the schedules of its part.
void StoreComponentName(const CellEntry& entry) {
    const int part = entry.Item.back() - '0';
    const bool isName = SameText(entry.Field, "Col_1");
    const std::string name = isName ? Text(entry.Value) : Text(RowCell(entry, "Col_1"));
    const std::string ccn = isName ? Text(RowCell(entry, "Col_2")) : Text(entry.Value);
    RenameS2Line(entry.Line, part, name, ccn);
}

void StoreRow(const CellEntry& entry) {
    auto row = gDB.OpenRecordset(
        fmt::format("SELECT * FROM [{}] WHERE {}=?;", entry.Item, LineKeyOf(entry.Item)),
        {entry.Line});
    row.Edit();
    row.Set(entry.Field, entry.Value);
    for (const auto& [field, value] : entry.Others) row.Set(field, value);
    row.Update();
}

/// What follows a stored cell on other lines and worksheets.
void FollowUp(const CellEntry& entry) {
    if (SameText(entry.Item, "A6")) SyncNames_A6();
    if (SameText(entry.Item, "CostCenters") && SameText(entry.Field, "CCName"))
        RenameCostCenter(entry.Line, Text(entry.Value));
}

void Store(const CellEntry& entry) {
    RunBatch(gDB, [&] {
        if (IsComponentName(entry)) return StoreComponentName(entry);
        StoreRow(entry);
        FollowUp(entry);
    });
    TheWindows().EnableMenu("mnuReportSubmit", false);
    TheWindows().RefreshWorksheetForm("View", entry.Item);
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
                               [&](const CellRule& rule) { return FitsItem(rule.Items, item); });
}

bool IsCellOpen(std::string_view item, Currency line, std::string_view field) {
    CellEntry entry;
    entry.Item = item;
    entry.Line = line;
    entry.Field = field;
    return OpenRuleOf(entry) != nullptr;
}

void CheckCell(CellEntry& entry) {
    const CellRule* rule = OpenRuleOf(entry);
    if (rule == nullptr) return entry.Refuse(LockedText(entry));
    if (entry.IsBlank() && !rule->SeesBlanks)
        entry.Value = nullptr;
    else
        rule->Check(entry, rule->Argument);
    if (!entry.Refused) CheckSize(entry);
    if (!entry.Refused) CheckRow(entry);
}

bool EnterCell(CellEntry& entry) {
    CheckCell(entry);
    if (!entry.Text.empty()) MsgOrLog(entry.Text, entry.Style, entry.Title);
    if (entry.Refused) return false;
    Store(entry);
    return true;
}

}  // namespace zolmara
