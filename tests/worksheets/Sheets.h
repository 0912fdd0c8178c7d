#pragma once

// A new CRF with what the worksheets' tests need: numbers out of cells, chains of components and
// cost centers of one's own.

#include <map>
#include <string>
#include <vector>

#include "support/TestCrf.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {

/// A cell as a number; Null and text count as 0.
double Num(std::string_view table, double line, std::string_view field);
bool IsNullCell(std::string_view table, double line, std::string_view field);
std::string TextCell(std::string_view table, double line, std::string_view field);

/// The first column of a statement's rows.
std::vector<double> Column(std::string_view sql);

/// Names of a table's fields in their order.
std::vector<std::string> FieldNames(std::string_view table);

/// The whole content of every table but Log, a line of text per row.
std::map<std::string, std::vector<std::string>> Dump();

/// The tables of the three parts that copy their rows from S-2.
const std::vector<std::string>& MirrorFamilies();

/// Enters components on S-2 and rebuilds the schedules, whose keyed amounts are lost.
void SetComponents(int part, const std::vector<double>& lines);
/// Adds cost centers to CostCenters and A and rebuilds A-7 Part II and the schedules.
void AddCenters(const std::vector<double>& lines);

class SheetTest : public TestCrf {};

}  // namespace zolmara::test
