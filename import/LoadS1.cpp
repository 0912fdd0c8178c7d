// Loaders of the home office's particulars and officers.

#include <fmt/format.h>

#include "core/Globals.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"

namespace zolmara {

namespace {

/// The columns that a row takes, and the refusal of the others.
struct RowRule {
    Range Rows;
    Range Columns;
    std::string_view Refusal;
};

constexpr RowRule kRulesS1p1[] = {
    {{1, 1}, {1, 6}, "Table S1p1 only allows for row 1 columns 1-6: "},
    {{2, 2}, {2, 3}, "Table S1p1 only allows for row 2 column 2-3: "},
    {{3, 3}, {1, 2}, "Table S1p1 only allows for row 3 column 1-2: "},
    {{4, 4}, {1, 5}, "Table S1p1 only allows for row 4 columns 1-5: "},
    {{5, 5}, {1, 6}, "Table S1p1 only allows for row 5 columns 1-6: "},
};

constexpr std::string_view kOfficersOfForm = "Table S1p2 only allows for rows 1-5 column 2: ";
constexpr RowRule kRulesS1p2[] = {
    {{1, 1}, {2, 2}, kOfficersOfForm},
    {{2, 2}, {2, 2}, kOfficersOfForm},
    {{3, 3}, {2, 2}, kOfficersOfForm},
    {{4, 4}, {2, 2}, kOfficersOfForm},
    {{5, 5}, {2, 2}, kOfficersOfForm},
    {{6, 20.99}, {1, 2}, "Table S1p2 only allows for row 6-20.99 column 1-2: "},
};

const RowRule* FindRule(std::span<const RowRule> rules, Currency row) {
    for (const auto& rule : rules)
        if (InRange(rule.Rows, row)) return &rule;
    return nullptr;
}

std::string LoadS1p1(TargetRow& target, const SourceRow& row) {
    const auto* rule = FindRule(kRulesS1p1, row.Row);
    if (rule != nullptr && !InRange(rule->Columns, row.Col)) return std::string(rule->Refusal);
    if (!target.GoTo(row.Row))
        return fmt::format("Table S1p1 does not have row {}: ", NumberText(row.Row));
    target.Set(Ordinal(row.Col, 1), row.Contents);
    return {};
}

std::string LoadS1p2(TargetRow& target, const SourceRow& row) {
    const auto* rule = FindRule(kRulesS1p2, row.Row);
    if (rule == nullptr) return "Table S1p2 only allows rows 1-20.99: ";
    if (!InRange(rule->Columns, row.Col)) return std::string(rule->Refusal);
    if (!row.Col.IsWhole()) return std::string(kConversionError);
    target.GoToOrAdd(row.Row);
    target.Set(Ordinal(row.Col, 0), row.Contents);
    return {};
}

}  // namespace

void Load_S1p1(ImportRun& run) { LoadWorksheet(run, "S1p1", {"S1p1", "LineNum"}, LoadS1p1); }
void Load_S1p2(ImportRun& run) { LoadWorksheet(run, "S1p2", {"S1p2", "LineNum"}, LoadS1p2); }

}  // namespace zolmara
