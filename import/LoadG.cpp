// Loaders of the balance sheet and the statement of income.

#include <fmt/format.h>

#include "core/Globals.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"

namespace zolmara {

namespace {

constexpr Range kRowsG[] = {{1, 9}, {11, 25}, {27, 30}, {33, 39}, {41, 44}, {47, 47}};
constexpr Range kRowsG1[] = {{1, 1}, {4, 9}, {10, 14.99}, {16, 20.99}};
constexpr Range kDescriptionRowsG1[] = {{4, 14.99}, {16, 20.99}};
/// The rows of G-1 that an import may add.
constexpr Range kFreeRowsG1[] = {{4, 14.9999}, {16, 20.9999}};

std::string LineIsMissing(std::string_view item, Currency line) {
    return fmt::format("Table {} line {} doesn't exist: ", item, NumberText(line));
}

std::string LoadG(TargetRow& target, const SourceRow& row) {
    if (row.Col != kWholeStep) return "Table G only allows column 1: ";
    if (!InAny(kRowsG, row.Row))
        return "Table G only allows rows 1 To 9, 11 To 25, 27 To 30, 33 To 39, 41 To 44, and 47: ";
    if (!target.GoTo(row.Row)) return LineIsMissing("G", row.Row);
    target.Set("Col_1", row.Contents);
    return {};
}

std::string BrokenRuleG1(const SourceRow& row) {
    const bool isDescription = row.Col == kWholeStep;
    if (!isDescription && row.Col != Currency::FromWhole(2))
        return "Table G1 only allows columns 1 and 2: ";
    if (!InAny(kRowsG1, row.Row))
        return "Table G1 only allows rows 1, 4 To 9, 10 To 14.99, 16 To 20.99: ";
    if (isDescription && !InAny(kDescriptionRowsG1, row.Row))
        return "Table G1 only allows column 1 for rows 10 To 14.99, and 16 To 20.99: ";
    return {};
}

std::string LoadG1(TargetRow& target, const SourceRow& row) {
    if (auto rule = BrokenRuleG1(row); !rule.empty()) return rule;
    if (InAny(kFreeRowsG1, row.Row))
        target.GoToOrAdd(row.Row);
    else if (!target.GoTo(row.Row))
        return LineIsMissing("G1", row.Row);
    target.Set(Ordinal(row.Col, 0), row.Contents);
    return {};
}

}  // namespace

void Load_G(ImportRun& run) { LoadWorksheet(run, "G", {"G", "LineNum"}, LoadG); }
void Load_G1(ImportRun& run) { LoadWorksheet(run, "G1", {"G1", "LineNum"}, LoadG1); }

}  // namespace zolmara
