#include "worksheets/W_Fx.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/Rows.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

// --- Fields --------------------------------------------------------------------------------

constexpr std::array<std::string_view, 4> kTitles_F = {"Direct", "Functional", "Pooled",
                                                       "Total|Capital Cost"};
constexpr std::array<std::string_view, 9> kTitles_F1 = {"Direct",
                                                        "Functional",
                                                        "Pooled",
                                                        "Subtotal|Salaries",
                                                        "Direct",
                                                        "Functional",
                                                        "Pooled",
                                                        "Subtotal All|Other|Non-Capital",
                                                        "Total|Non-Capital|Cost"};
constexpr std::array<std::string_view, 4> kTitles_F2 = {"Direct", "Functional", "Pooled",
                                                        "Total|Interest|Income"};
constexpr std::array<std::span<const std::string_view>, 3> kTitles = {kTitles_F, kTitles_F1,
                                                                      kTitles_F2};
constexpr std::array<std::string_view, 3> kNumberTitles = {"CCN", "", "Region-|al HO|#"};

std::vector<WorksheetField> MakeFields(std::span<const std::string_view> titles,
                                       std::string_view numberTitle) {
    std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line|#", Key},
        {"Description", dbText, 40, "Component Name", Label},
        {"Col_0", dbText, 40, std::string(numberTitle), Label},
    };
    int number = 0;
    for (const std::string_view title : titles) {
        fields.push_back(
            {fmt::format("Col_{}", ++number), dbDouble, 0, std::string(title), Computed});
    }
    return fields;
}

/// F, F-1 and F-2, each for the three parts.
std::array<std::array<std::vector<WorksheetField>, 3>, 3> MakeAllFields() {
    std::array<std::array<std::vector<WorksheetField>, 3>, 3> all;
    for (std::size_t form = 0; form < 3; ++form) {
        for (std::size_t part = 0; part < 3; ++part) {
            all[form][part] = MakeFields(kTitles[form], kNumberTitles[part]);
        }
    }
    return all;
}

// --- Classes of cost -----------------------------------------------------------------------

/// The class of a field of B-1, D or E-1. On E-1 all other pools are one field.
CostClass ClassOf(std::string_view field, bool pooled) {
    if (pooled && SameText(field, kAllOtherPools)) return CostClass::AllOther;
    return IsCostCenterColumn(field) ? ClassOfLine(LineOfColumn(field)) : CostClass::None;
}

/// A row of a schedule, summed by class.
struct ClassSums {
    double Salaries = 0;
    double Other = 0;
    double Interest = 0;

    void Add(CostClass kind, double amount) {
        if (kind == CostClass::Salaries) Salaries += amount;
        if (kind == CostClass::AllOther) Other += amount;
        if (kind == CostClass::Interest) Interest += amount;
    }
};

/// The fields of a schedule whose class a summary takes, and their classes.
struct Summed {
    std::vector<CostClass> Classes;
    std::string Select;  ///< the line, then those fields
};

/// A schedule has many fields and F-2 takes but a few: only what is taken is read.
Summed FieldsToSum(std::string_view family, char part, std::span<const CostClass> taken) {
    const Schedule& schedule = *FindSchedule(family);
    const bool pooled = schedule.Kind == ScheduleKind::Pooled;
    const std::string table = fmt::format("{}{}", family, part);
    Summed summed{{}, "Select LineNum"};
    const std::vector<FieldDef>& fields = gDB.Table(table).Fields;
    for (auto i = static_cast<std::size_t>(schedule.FirstColumn); i < fields.size(); ++i) {
        const CostClass kind = ClassOf(fields[i].Name, pooled);
        if (std::ranges::find(taken, kind) == taken.end()) continue;
        summed.Classes.push_back(kind);
        summed.Select += "," + fields[i].Name;
    }
    summed.Select += fmt::format(" From {} Order By LineNum;", table);
    return summed;
}

constexpr std::array<CostClass, 2> kNonCapital = {CostClass::Salaries, CostClass::AllOther};
constexpr std::array<CostClass, 1> kInterest = {CostClass::Interest};

/// Walks a schedule in the order of its lines and hands on each line with its sums.
template <class Write>
void SumRows(std::string_view family, char part, std::span<const CostClass> taken,
             const Write& write) {
    const Summed summed = FieldsToSum(family, part, taken);
    for (Recordset rows = gDB.OpenRecordset(summed.Select); !rows.Eof(); rows.MoveNext()) {
        ClassSums sums;
        int position = 0;
        for (const CostClass kind : summed.Classes) sums.Add(kind, NumOr(rows[++position]));
        write(LineOf(rows), sums);
    }
}

// --- F -------------------------------------------------------------------------------------

/// Behind the capital related pools, which stand first on E-1.
int BehindCapitalPools(const Recordset& rows, int first) {
    int end = first;
    while (end < rows.FieldCount() && IsCostCenterColumn(rows.FieldName(end)) &&
           LineOfColumn(rows.FieldName(end)) < kOtherCapitalBegin) {
        ++end;
    }
    return end;
}

void SumPooledCapital(std::string_view item) {
    Recordset rows =
        gDB.OpenRecordset(fmt::format("Select * From E1p{} Order By LineNum;", PartOf(item)));
    const int first = FindSchedule("E1p")->FirstColumn;
    const int end = BehindCapitalPools(rows, first);
    const std::string pooled = fmt::format("Update {} Set Col_3=? Where LineNum=?;", item);
    const std::string total = fmt::format(
        "UPDATE {} SET Col_4=IIf(IsNull([Col_1]),0,[Col_1])+IIf(IsNull([Col_2]),0,[Col_2])"
        "+IIf(IsNull([Col_3]),0,[Col_3]) Where LineNum=?;",
        item);
    for (; !rows.Eof(); rows.MoveNext()) {
        double sum = 0;
        for (int i = first; i < end; ++i) sum += NumOr(rows[i]);
        const Currency line = LineOf(rows);
        gDB.Execute(pooled, {sum, line});
        gDB.Execute(total, {line});
    }
}

/// Runs for every part; what the last part's run leaves is the final figure.
void WriteGrandTotal() {
    for (const int part : {1, 2, 3}) RequiredRow(fmt::format("Fp{}", part), kPartTotal);
    const Recordset sums = gDB.OpenRecordset(
        "SELECT [Fp1].[Col_1]+[Fp2].[Col_1]+[Fp3].[Col_1] AS C1,"
        "[Fp1].[Col_2]+[Fp2].[Col_2]+[Fp3].[Col_2] AS C2,"
        "[Fp1].[Col_3]+[Fp2].[Col_3]+[Fp3].[Col_3] AS C3,"
        "[Fp1].[Col_4]+[Fp2].[Col_4]+[Fp3].[Col_4] AS C4 "
        "FROM (Fp1 INNER JOIN Fp2 ON Fp1.LineNum = Fp2.LineNum) INNER JOIN Fp3 ON Fp1.LineNum = "
        "Fp3.LineNum WHERE (((Fp1.LineNum)=?));",
        {kPartTotal}, dbOpenSnapshot);
    gDB.Execute("Update Fp3 Set Col_1=?,Col_2=?,Col_3=?,Col_4=? Where LineNum=?;",
                {NumOr(sums[0]), NumOr(sums[1]), NumOr(sums[2]), NumOr(sums[3]), kGrandTotal});
}

}  // namespace

const std::vector<WorksheetField>& Fields_Fx(std::string_view item) {
    static const auto all = MakeAllFields();
    const char form = item[1];
    return all.at(form == '1'   ? 1
                  : form == '2' ? 2
                                : 0)
        .at(static_cast<std::size_t>(PartOf(item) - '1'));
}

void Build_Fx(std::string_view item) {
    if (!DropWorksheetTable(item)) return;
    MakeWorksheetTable(item);
    MakeWorksheetIndex(item);
    InsertComponentRows(item);
    RegisterBuiltWorksheet(item);
}

void Calc_Fpx(std::string_view item) {
    const char part = PartOf(item);
    gDB.Execute(
        fmt::format("UPDATE Fp{0} INNER JOIN Bp{0} ON Fp{0}.LineNum = Bp{0}.LineNum SET "
                    "Fp{0}.Col_1 = [Bp{0}].[Col_7];",
                    part));
    gDB.Execute(
        fmt::format("UPDATE Fp{0} INNER JOIN Cp{0} ON Fp{0}.LineNum = Cp{0}.LineNum SET "
                    "Fp{0}.Col_2 = [Cp{0}].[Col_3];",
                    part));
    SumPooledCapital(item);
    WriteGrandTotal();
}

void Calc_F1px(std::string_view item) {
    const char part = PartOf(item);
    const std::string direct =
        fmt::format("Update F1p{} Set Col_1=?,Col_5=? Where LineNum=?;", part);
    const std::string functional =
        fmt::format("Update F1p{} Set Col_2=?,Col_6=? Where LineNum=?;", part);
    const std::string pooled = fmt::format(
        "Update F1p{} Set Col_3=?,Col_4=Col_1+Col_2+?,Col_7=?,Col_8=Col_5+Col_6+?,"
        "Col_9=Col_1+Col_2+?+Col_5+Col_6 Where LineNum=?;",
        part);
    SumRows("B1p", part, kNonCapital, [&](Currency line, const ClassSums& sums) {
        gDB.Execute(direct, {sums.Salaries, sums.Other, line});
    });
    SumRows("Dp", part, kNonCapital, [&](Currency line, const ClassSums& sums) {
        gDB.Execute(functional, {sums.Salaries, sums.Other, line});
    });
    SumRows("E1p", part, kNonCapital, [&](Currency line, const ClassSums& sums) {
        gDB.Execute(pooled, {sums.Salaries, sums.Salaries, sums.Other, sums.Other,
                             sums.Salaries + sums.Other, line});
    });
}

void Calc_F2px(std::string_view item) {
    const char part = PartOf(item);
    const std::string direct = fmt::format("Update F2p{} Set Col_1=? Where LineNum=?;", part);
    const std::string functional = fmt::format("Update F2p{} Set Col_2=? Where LineNum=?;", part);
    const std::string pooled =
        fmt::format("Update F2p{} Set Col_3=?,Col_4=Col_1+Col_2+? Where LineNum=?;", part);
    SumRows("B1p", part, kInterest, [&](Currency line, const ClassSums& sums) {
        gDB.Execute(direct, {sums.Interest, line});
    });
    SumRows("Dp", part, kInterest, [&](Currency line, const ClassSums& sums) {
        gDB.Execute(functional, {sums.Interest, line});
    });
    SumRows("E1p", part, kInterest, [&](Currency line, const ClassSums& sums) {
        gDB.Execute(pooled, {sums.Interest, sums.Interest, line});
    });
}

}  // namespace zolmara
