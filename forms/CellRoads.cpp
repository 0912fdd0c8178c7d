#include "forms/CellRoads.h"

#include <algorithm>

#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/CellRuleTable.h"
#include "forms/FormTable.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

/// Whole lines with their subscripts, or without.
constexpr LineRange Lines(int first, int last) { return {first * 100, last * 100 + 99}; }
constexpr LineRange Line(int line) { return {line * 100, line * 100}; }

/// A line that the import does not make, such as a subscript on G, is none of its roads.
struct Road {
    std::string_view Tables;
    LineRange Lines;
    std::string_view Fields;
    bool SubscriptsAlike = true;
};

constexpr std::string_view kIncomeAmounts = "Col_2";

// clang-format off
constexpr Road kRoads[] = {
    {"CostCenters", Lines(1, 2), "CCName ColLabel1 ColLabel2 ColLabel3 StatLabel1 StatLabel2 StatCode"},
    {"CostCenters", Lines(4, 6), "CCName ColLabel1 ColLabel2 ColLabel3"},
    {"CostCenters", Lines(8, 98), "CCName ColLabel1 ColLabel2 ColLabel3 StatLabel1 StatLabel2"},

    {"S1p1", Line(1), "Col_1 Col_2 Col_3 Col_4 Col_5 Col_6"},
    {"S1p1", Line(2), "Col_3"},
    {"S1p1", Line(3), "Col_1 Col_2"},
    {"S1p1", Line(4), "Col_1 Col_2 Col_3 Col_4 Col_5"},
    {"S1p1", Line(5), "Col_1 Col_2 Col_3 Col_4 Col_5 Col_6"},
    {"S1p2", {100, 500}, "Col_2", false},
    {"S1p2", Lines(6, 20), "Col_1 Col_2"},
    {"S2p1", Lines(1, 50), "Col_*"},
    {"S2p2", Lines(1, 50), "Col_1 Col_4 Col_5 Col_6 Col_7"},
    {"S2p3", Lines(1, 50), "Col_1 Col_2 Col_4 Col_5 Col_6 Col_7 Col_8"},

    {"A", Lines(1, 2), "Col_1"},
    {"A", Lines(4, 6), "Col_1"},
    {"A", Lines(8, 98), "Col_1"},
    {"A6", Lines(1, 99), "Col_1 Col_2 Col_4 Col_5 Col_7 Col_8"},
    {"A7p1", {100, 600}, "Col_1 Col_2 Col_3 Col_5 Col_7", false},
    {"A7p1", Line(8), "Col_1 Col_2 Col_3 Col_5 Col_7"},
    {"A7p2", Lines(1, 2), "Col_1 Col_2 Col_9 Col_10 Col_11 Col_12 Col_13 Col_14"},
    {"A8", {100, 1100}, "Col_2 Col_3 Col_5", false},
    {"A8", {1300, 1700}, "Col_2 Col_3 Col_5", false},
    {"A8", {1800, 9900}, "Col_1 Col_2 Col_3 Col_5"},
    {"A81p1", Lines(1, 99), "Col_1 Col_3 Col_4 Col_5 Col_6"},
    {"A81p2", {100, 5000}, "Col_1 Col_2 Col_3 Col_4 Col_5 Col_6 Col_7"},

    {"Bp?", Lines(1, 50), "CC_100 CC_200 CC_400 CC_500 CC_600 CC_1* CC_2* CC_4* CC_5*"},
    {"B1p?", Lines(1, 50), "CC_*"},
    {"C1p?", Lines(1, 50), "CC_*"},
    {"C1p3", Line(53), "CC_*"},
    {"D1p?", Lines(1, 50), "CC_*"},
    {"D1p3", Line(53), "CC_*"},
    {"E1p?", Lines(1, 50), "Col_1"},

    {"G", {100, 900}, "Col_1", false},
    {"G", {1100, 2500}, "Col_1", false},
    {"G", {2700, 3000}, "Col_1", false},
    {"G", {3300, 3900}, "Col_1", false},
    {"G", {4100, 4400}, "Col_1", false},
    {"G", Line(47), "Col_1"},
    {"G1", Line(1), kIncomeAmounts},
    {"G1", {400, 900}, kIncomeAmounts},
    {"G1", Lines(10, 14), "Col_1 Col_2"},
    {"G1", Lines(16, 20), "Col_1 Col_2"},
};
// clang-format on

constexpr std::string_view kWholeNumbers[] = {"A",    "A7p1", "A7p2", "Bp?",
                                              "B1p?", "C1p?", "D1p?", "E1p?"};

/// The number of a field: that of its name, or its place behind the line number.
Currency NumberOf(std::string_view table, std::string_view field) {
    if (SameText(table, "CostCenters"))
        return Currency::FromWhole(gDB.Table(table).FieldIndex(field) - 1);
    if (IsCostCenterColumn(field)) return LineOfColumn(field);
    return Currency(Val(field.substr(field.find('_') + 1)));
}

std::string TableOfName(std::string_view worksheet) {
    if (SameText(worksheet, "CostCenter")) return "CostCenters";
    return gDB.HasTable(worksheet) ? std::string(worksheet) : std::string();
}

const CellRule* RuleOf(std::string_view table, Currency line, std::string_view field) {
    for (const CellRule& rule : AllCellRules()) {
        const bool fits = FitsPattern(rule.Items, table) && FitsAnyField(rule.Fields, field) &&
                          Between(line.Units(), rule.Lines.From * std::int64_t{100},
                                  rule.Lines.To * std::int64_t{100});
        if (fits) return &rule;
    }
    return nullptr;
}

bool IsDateCheck(CellCheck check) {
    return check == Check_Date || check == Check_Began || check == Check_Available;
}

}  // namespace

std::string ImportNameOf(std::string_view table) {
    return SameText(table, "CostCenters") ? "CostCenter" : std::string(table);
}

TableRoads::TableRoads(std::string_view table) {
    for (const FieldDef& field : gDB.Table(table).Fields) {
        Field roads;
        for (const Road& road : kRoads)
            if (FitsPattern(road.Tables, table) && FitsAnyField(road.Fields, field.Name))
                roads.Spans.push_back({road.Lines.From, road.Lines.To, road.SubscriptsAlike});
        if (!roads.Spans.empty()) roads.Column = NumberOf(table, field.Name);
        fields_.push_back(std::move(roads));
    }
}

std::optional<Currency> TableRoads::ColumnOf(int field, Currency line) const {
    constexpr std::int64_t kUnitsPerSubscript = 100;
    const Field& roads = fields_[static_cast<std::size_t>(field)];
    const bool open = std::ranges::any_of(roads.Spans, [&](const Span& span) {
        return Between(line.Units(), span.From * kUnitsPerSubscript,
                       span.To * kUnitsPerSubscript) &&
               (span.SubscriptsAlike || line.IsWhole());
    });
    return open ? std::optional(roads.Column) : std::nullopt;
}

bool TakesWholeNumbers(std::string_view table, std::string_view field) {
    if (SameText(table, "A8")) return SameText(field, "Col_3");
    return std::ranges::any_of(kWholeNumbers,
                               [&](std::string_view item) { return FitsPattern(item, table); });
}

ContentKind ContentOf(std::string_view worksheet, Currency line, Currency column) {
    const std::string table = TableOfName(worksheet);
    if (table.empty()) return ContentKind::Unknown;
    const auto field = FieldOfColumn(table, NumberText(column));
    if (!field) return ContentKind::Unknown;
    const CellRule* rule = RuleOf(table, line, *field);
    if (rule != nullptr && IsDateCheck(rule->Check)) return ContentKind::Date;
    if (rule != nullptr && rule->Argument.Menu == "ButtonListYN") return ContentKind::Answer;
    const TableDef& shape = gDB.Table(table);
    const FieldType type = shape.Fields[static_cast<std::size_t>(shape.FieldIndex(*field))].Type;
    const bool isText = type == FieldType::dbText || type == FieldType::dbMemo;
    return isText ? ContentKind::Text : ContentKind::Amount;
}

}  // namespace zolmara
