#include "import/CompareCostCenters.h"

#include <algorithm>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kCostCenters =
    "SELECT LineNum, IIf([LineNum]<>Int([LineNum]),Right$(Space$(6) & Format([LineNum],\"0.00 "
    "\"),6) & [CCName],Right$(Space$(6) & Format([LineNum],\"0    \"),6) & [CCName]) AS [Cost "
    "Centers] FROM CostCenters ORDER BY LineNum;";

/// Orders two lists that stand on their next lines: negative when the first list's comes first.
int Compare(const Recordset& a, const Recordset& b) {
    if (a.Eof() || b.Eof()) return a.Eof() ? 1 : -1;
    const Currency lineOfA = CurOr(a[0]);
    const Currency lineOfB = CurOr(b[0]);
    return lineOfA < lineOfB ? -1 : lineOfA > lineOfB ? 1 : 0;
}

}  // namespace

std::vector<CostCenterPair> CompareCostCenters() {
    std::vector<CostCenterPair> pairs;
    Recordset current = gDB.OpenRecordset(kCostCenters, dbOpenSnapshot);
    Recordset import = gImportDB.OpenRecordset(kCostCenters, dbOpenSnapshot);
    while (!current.Eof() || !import.Eof()) {
        const int order = Compare(current, import);
        CostCenterPair& pair = pairs.emplace_back();
        if (order <= 0) {
            pair.Current = StrOr(current[1]);
            current.MoveNext();
        }
        if (order >= 0) {
            pair.Import = StrOr(import[1]);
            import.MoveNext();
        }
    }
    return pairs;
}

bool CostCentersMatch(const std::vector<CostCenterPair>& pairs) {
    return std::ranges::none_of(pairs, &CostCenterPair::Mismatch);
}

std::string_view CostCenterWarning(bool match) {
    return match ? "Check all Cost Centers to insure that they are the same."
                 : "Cost Centers must match exactly to allow CRF importing.";
}

}  // namespace zolmara
