// "2000": the sweep for amounts below zero.

#include <fmt/format.h>

#include <variant>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

void ReportNegative(std::string_view item, const Recordset& row, std::string_view field) {
    AddPotential("2000", fmt::format("{} line {} column {} must be greater than or equal zero.",
                                     item, KeyText(row), field));
}

void CheckPosition(std::string_view item, const Recordset& row, int position) {
    if (IsBelowZero(NumOr(row[position]))) ReportNegative(item, row, row.FieldName(position));
}

// --- Interest income -----------------------------------------------------------------------

constexpr std::string_view kInterestColumn = "CC_2800";

/// Interest income is below zero by nature: in the pools, and where D-1 holds amounts.
bool MayBeNegative(std::string_view item, const Recordset& row) {
    if (item == "D1p3")
        return OnLine(row, kCostToAllocate.Whole()) || OnLine(row, kUnitCostMultiplier.Whole());
    return item == "E" || item.starts_with("E1");
}

/// A field of the sweep; what it holds is told once for a table.
struct SweptField {
    int Position;
    bool IsInterest;
};

std::vector<SweptField> SweptFields(const Recordset& rows) {
    static constexpr int kFirst = 3;
    std::vector<SweptField> fields;
    for (int i = kFirst; i < rows.FieldCount(); ++i)
        fields.push_back({i, SameText(rows.FieldName(i), kInterestColumn)});
    return fields;
}

// --- What is swept -------------------------------------------------------------------------

/// Columns of a worksheet, of which the first negative row is told.
struct Columns {
    std::string_view Item;
    int First;
    int Last;
};
/// One line of a schedule.
struct OneLine {
    std::string_view Item;
};
/// All cells of a schedule.
struct AllCells {
    std::string_view Item;
};

/// The grand totals are swept on a line that no schedule of this form has.
constexpr int kSweptLine = 999;
constexpr int kSweptFrom = 3;

using Swept = std::variant<Columns, OneLine, AllCells>;
constexpr Swept kSwept[] = {
    Columns{"S2p3", 6, 6},  Columns{"A6", 4, 5},    Columns{"A6", 7, 8}, Columns{"A7p2", 1, 15},
    Columns{"A81p2", 4, 4}, Columns{"A81p2", 6, 6}, OneLine{"Bp3"},      OneLine{"B1p3"},
    OneLine{"Cp3"},         AllCells{"C1p1"},       AllCells{"C1p2"},    AllCells{"C1p3"},
    OneLine{"Dp3"},         AllCells{"D1p1"},       AllCells{"D1p2"},    AllCells{"D1p3"},
    AllCells{"E"},          AllCells{"E1p1"},       AllCells{"E1p2"},    AllCells{"E1p3"},
    AllCells{"Fp1"},        AllCells{"Fp2"},        AllCells{"Fp3"},     AllCells{"F1p1"},
    AllCells{"F1p2"},       AllCells{"F1p3"},
};

void Sweep(const Columns& columns) {
    for (int n = columns.First; n <= columns.Last; ++n)
        CheckNotNegative(columns.Item, fmt::format("Col_{}", n));
}
void Sweep(const OneLine& line) { CheckNotNegativeRows(line.Item, kSweptLine, kSweptFrom); }
void Sweep(const AllCells& cells) { CheckNotNegativeCC(cells.Item); }

// --- Worksheets G --------------------------------------------------------------------------

constexpr RowCheck kGChecks[] = {
    {"2000", "G line {line} column 1 must be greater than or equal zero.",
     [](const Recordset& row) { return IsBelowZero(CellNumber(row, "Col_1")); }},
};
constexpr Section kG{
    "", "Select * From G Where LineNum In(6, 13, 15, 17, 19, 21, 23) Order By LineNum;", kGChecks,
    Severity::Potential};

constexpr RowCheck kG1Checks[] = {
    {"2000", "G1 line {line} column 2 must be greater than or equal zero.",
     [](const Recordset& row) { return IsBelowZero(CellNumber(row, "Col_2")); }},
};
constexpr Section kG1{"",
                      "Select * From G1 Where LineNum In(1, 2, 4 - 21) or (LineNum>=4 and "
                      "LineNum<22) Order By LineNum;",
                      kG1Checks, Severity::Potential};

}  // namespace

void CheckNotNegative(std::string_view item, std::string_view field) {
    Recordset rows =
        gDB.OpenRecordset(fmt::format("Select * From {} Where {}<0;", item, field), dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (!IsBelowZero(CellNumber(rows, field))) continue;
        ReportNegative(item, rows, field);
        return;
    }
}

void CheckNotNegativeCC(std::string_view item) {
    Recordset rows =
        gDB.OpenRecordset(fmt::format("Select * From {} Order By LineNum;", item), dbOpenSnapshot);
    const std::vector<SweptField> fields = SweptFields(rows);
    for (; !rows.Eof(); rows.MoveNext()) {
        for (const SweptField& field : fields) {
            if (field.IsInterest && MayBeNegative(item, rows)) continue;
            CheckPosition(item, rows, field.Position);
        }
    }
}

/// In Dp3 a field whose name does not sort behind interest income gives its turn to the next one.
void CheckNotNegativeRows(std::string_view item, int line, int firstColumn) {
    const Recordset row = gDB.OpenRecordset(fmt::format("Select * From {} Where LineNum=?;", item),
                                            {line}, dbOpenSnapshot);
    if (row.Eof()) return;
    for (int i = firstColumn; i < row.FieldCount(); ++i) {
        if (item == "Dp3" && CompareText(row.FieldName(i), kInterestColumn) <= 0) ++i;
        if (i < row.FieldCount()) CheckPosition(item, row, i);
    }
}

void CheckGNotNegative() {
    RunSection(kG);
    RunSection(kG1);
}

void CheckAllNotNegative() {
    for (const Swept& swept : kSwept) std::visit([](const auto& what) { Sweep(what); }, swept);
    CheckGNotNegative();
}

}  // namespace zolmara
