// Every column that allocates costs by a statistic needs the statistic's labels and code.

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

/// What is told of a statistic.
struct Basis {
    bool HasLabel = false;
    bool HasCode = false;
};

// --- C-1 and D-1, by cost center -----------------------------------------------------------

struct ColumnRule {
    std::string_view Code;
    std::string_view Costs;
    bool NeedsCode;
    std::string_view Message;
};
constexpr ColumnRule kColumnRules[] = {
    {"1110", "Select * From C1p3 Where LineNum=53;", true,
     "Each C-1 column with cost on line 53 must have a stat label and stat code defined in Cost "
     "Centers."},
    {"1120", "Select * From D1p3 Where LineNum=53;", false,
     "Each D-1 column with cost on line 53 must have a stat label defined in Cost Centers."},
};

std::map<Currency, Basis> BasesOfCenters() {
    std::map<Currency, Basis> bases;
    Recordset rows = gDB.OpenRecordset("Select * From CostCenters;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const bool label = !IsEmpty(rows, "StatLabel1") || !IsEmpty(rows, "StatLabel2");
        bases.emplace(CellLine(rows, "LineNum"),
                      Basis{label, !IsZero(CellNumber(rows, "StatCode"))});
    }
    return bases;
}

void CheckColumns(const ColumnRule& rule, const std::map<Currency, Basis>& bases) {
    for (const CostCenterCell& cost : CostCenterCells(rule.Costs)) {
        const auto found = bases.find(cost.Line);
        if (found == bases.end()) continue;  // a center that is gone has no labels to ask for
        const Basis& basis = found->second;
        const bool told = basis.HasLabel && (basis.HasCode || !rule.NeedsCode);
        if (!IsZero(cost.Amount) && !told) AddNonFatal(rule.Code, rule.Message);
    }
}

// --- E and E-1, by schedule ----------------------------------------------------------------

struct PoolRule {
    std::string_view Code;
    std::string_view Pools;
    std::string_view Basis;
    std::string_view Message;
};
constexpr PoolRule kPoolRules[] = {
    {"1130", "Select * From E Where LineNum=4;", "Select * from ES Where LineNum=1;",
     "When E line 4 sum of columns 3-8 is non zero, there must be a stat label and stat code "
     "defined in Pooled Allocation Statistical Basis under E."},
    {"1140", "Select * From E1p1 Where LineNum=51;", "Select * from ES Where LineNum=2;",
     "When E1p1 line 51 sum of columns 3-8 is non zero, there must be a stat label and stat code "
     "defined in Pooled Allocation Statistical Basis under E-1 Part I."},
    {"1141", "Select * From E1p2 Where LineNum=51;", "Select * from ES Where LineNum=3;",
     "When E1p2 line 51 sum of columns 3-8 is non zero, there must be a stat label and stat code "
     "defined in Pooled Allocation Statistical Basis under E-1 Part II."},
    {"1141", "Select * From E1p3 Where LineNum=51;", "Select * from ES Where LineNum=4;",
     "When E1p3 line 51 sum of columns 3-8 is non zero, there must be a stat label and stat code "
     "defined in Pooled Allocation Statistical Basis under E-1 Part III."},
};

/// The pools are the fields from the first cost center on; the pool of all other costs stands
/// among them.
double SumOfPools(const Line& line) {
    double sum = 0;
    bool begun = false;
    for (std::size_t i = 0; i < line.Count(); ++i) {
        begun = begun || IsCostCenterColumn(line.Field(i));
        if (begun) sum += line.Number(i);
    }
    return sum;
}

bool IsTold(const Line& basis) {
    const bool label = !IsEmpty(basis.Value("StatLabel1")) || !IsEmpty(basis.Value("StatLabel2"));
    return label && !IsZero(basis.Number("StatCode"));
}

}  // namespace

void CheckColumnLabels() {
    const std::map<Currency, Basis> bases = BasesOfCenters();
    for (const ColumnRule& rule : kColumnRules) CheckColumns(rule, bases);
}

void CheckPoolLabels() {
    for (const PoolRule& rule : kPoolRules) {
        const Line basis(rule.Basis);
        if (!basis.IsThere() || IsTold(basis)) continue;
        if (!IsZero(SumOfPools(Line(rule.Pools)))) AddNonFatal(rule.Code, rule.Message);
    }
}

}  // namespace zolmara
