#pragma once

// The lines that the form fixes: subtotals and totals of worksheet A and of the tables of the
// three component parts, and the classes of cost that the lines of A fall into.

#include <string>
#include <string_view>

#include "core/Currency.h"

namespace zolmara {

/// Lines from one up to but not including another.
struct LineSpan {
    Currency From;
    Currency Below;

    constexpr bool Holds(Currency line) const { return From <= line && line < Below; }
};

// --- Worksheet A -----------------------------------------------------------------------------

inline constexpr Currency kCapitalSubtotal = Currency::FromWhole(3);
inline constexpr Currency kOtherCapitalBegin = Currency::FromWhole(4);
inline constexpr Currency kOtherCapitalSubtotal = Currency::FromWhole(7);
inline constexpr Currency kInterestIncome = Currency::FromWhole(28);
inline constexpr Currency kNonCapitalSubtotal = Currency::FromWhole(99);
inline constexpr Currency kTotalOfA = Currency::FromWhole(100);
/// The total line of and A-8-1 Part I.
inline constexpr Currency kTotalOfEntries = Currency::FromWhole(100);
/// What A-8-1 Part I adds up to, on A-8.
inline constexpr Currency kRelatedOrganizations = Currency::FromWhole(12);

// --- Tables of the three component parts -----------------------------------------------------

/// The lines below it are the components.
inline constexpr Currency kPartTotal = Currency::FromWhole(51);
inline constexpr Currency kGrandTotal = Currency::FromWhole(52);          ///< on the third part
inline constexpr Currency kCostToAllocate = Currency::FromWhole(53);      ///< on C1p3 and D1p3
inline constexpr Currency kUnitCostMultiplier = Currency::FromWhole(54);  ///< on C1p3 and D1p3
/// The total of the three parts, on E.
inline constexpr Currency kTotalOfE = Currency::FromWhole(4);

// --- Classes of cost -------------------------------------------------------------------------

enum class CostClass {
    None,          ///< no line of a cost center
    Capital,       ///< 1 and 2: buildings and fixtures, movable equipment
    OtherCapital,  ///< 4 to 6, which A-7 Part II spreads over the capital lines
    Salaries,      ///< 8 and 9
    AllOther,      ///< 10 to 98 but for 28
    Interest,      ///< 28, interest income
};

/// The class of a line; its subscripts are of the same.
CostClass ClassOfLine(Currency line);

/// True for the lines that a cost center may stand on.
inline bool IsCostCenterLine(Currency line) { return ClassOfLine(line) != CostClass::None; }

/// The condition of a statement for the lines of a class: "(LineNum>=10 And LineNum<28) Or ...".
std::string ConditionFor(CostClass kind, std::string_view field = "LineNum");

}  // namespace zolmara
