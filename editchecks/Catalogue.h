#pragma once

// The checks by the names under which the run calls them. The run's table in modEditChecks.cpp
// says which codes each can give, and in which order they are made.

#include <string_view>

#include "core/Currency.h"

namespace zolmara {

// --- References and widths

/// Looks up every line that `field` of a table names, from `low` to `high` once `offset` is added
/// to it, in the cost centers.
void CheckCCRefs(std::string_view table, std::string_view field, Currency low, Currency high,
                 Currency offset);
void CheckCostCenterRefs();
void CheckNumericWidths();

// --- Worksheets S

void CheckUniqueCCNs();
void CheckS2p1Col11();
void CheckSp1();
void CheckS1p1();
void CheckS2p1();
void CheckS2p2();
/// Regional numbers are asked for in years that end after 09/29/2023.
bool RegionsAreChecked();
void CheckS2p3();
void CheckPeriod();
void CheckContact();
void CheckOfficers();

// --- Worksheets A

void CheckA7p1Line9();
/// Part I lines need their Part II line in years that end on or after 12/31/2023.
bool LinksAreChecked();
void CheckA81p1Links();
void CheckALine100();
void CheckA6Totals();
void CheckA6Codes();
void CheckA7p2();
void CheckA8();
void CheckA81p1();
void CheckA81p2();
void CheckFixedAssets();

// --- Schedules B to E and their statistics' labels

void CheckColumnLabels();
void CheckPoolLabels();
void CheckBp3AgainstA();
void CheckB1p3AgainstA();
void CheckCp3AgainstA();
void CheckC1Statistics();
void CheckC1p3Costs();
void CheckDp3AgainstA();
void CheckD1Statistics();
void CheckD1p3Costs();
/// Pools are allocated only where there are non-healthcare or regional components.
bool PoolsAreChecked();
void CheckEAgainstA();
void CheckE1p3AgainstA();
void CheckE1p3AllOther();
void CheckDirectAmounts();

// --- Worksheets G

void CheckG1Descriptions();
void CheckBalanceSheet();
void CheckNetIncome();

// --- Amounts below zero

/// The first row of `item` whose `field` is below zero.
void CheckNotNegative(std::string_view item, std::string_view field);
/// Every cell below zero from the fourth field on, interest income set apart.
void CheckNotNegativeCC(std::string_view item);
/// Every cell below zero on one line, from a position on.
void CheckNotNegativeRows(std::string_view item, int line, int firstColumn);
void CheckGNotNegative();
void CheckAllNotNegative();

}  // namespace zolmara
