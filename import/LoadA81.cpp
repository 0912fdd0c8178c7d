// Loaders of the costs from related organizations.

#include "core/Globals.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

constexpr Range kRows1[] = {{1, 99.9999}};
constexpr Range kColumns1[] = {{1, 1}, {3, 3}, {4, 4}, {5, 5}, {6, 6}};
constexpr Range kRows2[] = {{1, 50}};
constexpr Range kColumns2[] = {{1, 7}};
constexpr int kCostCenter = 1;
constexpr int kCostCenterName = 2;
constexpr Currency kInterrelationship = Currency::FromWhole(2);

/// The cost center's name, empty when there is none on that line.
std::string NameOfLine(const std::string& contents) {
    const auto line = ParseNumber(contents);
    if (!line || !Currency::Holds(*line)) return {};
    return StrOr(gDB.Scalar("Select CCName From CostCenters Where LineNum=?;", {Currency(*line)}));
}

std::string LoadPart1(TargetRow& target, const SourceRow& row) {
    if (!InAny(kRows1, row.Row) || !InAny(kColumns1, row.Col))
        return "Table A81p1 only allows changes to rows 1-99 and columns 1, 3, 4, 5 and 6: ";
    target.GoToOrAdd(row.Row);
    const int column = Ordinal(row.Col, 0);
    target.Set(column, row.Contents);
    if (column == kCostCenter) target.Set(kCostCenterName, NameOfLine(row.Contents));
    return {};
}

std::string LoadPart2(TargetRow& target, const SourceRow& row) {
    if (!InAny(kRows2, row.Row) || !InAny(kColumns2, row.Col))
        return "Table A81p2 only allows changes to rows 1-50 and columns 1-7: ";
    if (!row.Col.IsWhole()) return std::string(kConversionError);
    target.GoToOrAdd(row.Row);
    if (row.Col == kInterrelationship && StrOr(target["Col_1"]) != "G")
        return "Table A81p2 only allows changes to column 2 when column 1 is 'G': ";
    target.Set(Ordinal(row.Col, 0), row.Contents);
    return {};
}

}  // namespace

void Load_A81p1(ImportRun& run) {
    LoadWorksheet(run, "A81p1", {"A81p1", "SeqNum", "SeqNum<100"}, LoadPart1);
}
void Load_A81p2(ImportRun& run) {
    LoadWorksheet(run, "A81p2", {"A81p2", "SeqNum", "SeqNum<51"}, LoadPart2);
}

}  // namespace zolmara
