#pragma once

// The descriptions of all computed cells, one table for each worksheet family, beside its
// calculation.

#include <vector>

#include "worksheets/CellDescription.h"

namespace zolmara {

using DescriptionTable = std::vector<CellDescription>;

const DescriptionTable& Descriptions_A();
const DescriptionTable& Descriptions_A6();
const DescriptionTable& Descriptions_A7();
const DescriptionTable& Descriptions_A8();
const DescriptionTable& Descriptions_A81();
const DescriptionTable& Descriptions_Bpx();
const DescriptionTable& Descriptions_Ex();
const DescriptionTable& Descriptions_Fx();
const DescriptionTable& Descriptions_G();
const DescriptionTable& Descriptions_G1();

/// Cells that are keyed and that a calculation writes all the same, each with the reason.
const DescriptionTable& OverwrittenCells();

/// Every description of a computed cell.
const std::vector<const CellDescription*>& AllDescriptions();

/// The description that holds for a cell; none for a cell that nothing computes.
const CellDescription* FindDescription(const CellRef& cell);
/// What a calculation writes over a keyed cell; none where it writes nothing.
const CellDescription* FindOverwriting(const CellRef& cell);
/// True where the description holds for the cell.
bool Holds(const CellDescription& rule, const CellRef& cell);
/// True where the worksheet is one of the rule's.
bool HoldsItem(const CellDescription& rule, std::string_view item);

}  // namespace zolmara
