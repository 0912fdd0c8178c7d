#pragma once

// The heading of a column of the schedules.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

inline constexpr int kCaptionLines = 5;

/// A cost center's title: its name, or "Not Named", on C-1 and D-1 with the words of its
/// statistical basis in brackets ahead of it.
std::string CostCenterTitle(const Variant& name, const Variant& statLabel1,
                            const Variant& statLabel2, bool withBasis);
/// True on the schedules of statistics, C-1 and D-1.
bool ShowsBasis(std::string_view item);

/// Cuts a title of 13 characters or more into lines, at most five, at its words.
std::vector<std::string> CutTitle(std::string title);

/// The five heading lines of a column of an allocation schedule, E, E-1, F, F-1 or F-2; the lines
/// fill from the bottom, and each is centred in the width of its column by blanks ahead of it.
/// `costCenters` is open on all fields of CostCenters; its position is lost.
std::array<std::string, kCaptionLines> ColumnCaptions(Recordset& costCenters,
                                                      std::string_view fieldName,
                                                      std::string_view item);

/// One of the five lines; 1 is the topmost.
std::string ColumnCaption(Recordset& costCenters, std::string_view fieldName, int captionLine,
                          std::string_view item);

}  // namespace zolmara
