#pragma once

// This year's file started from last year's: its structure is carried over, its figures are not.
// Last year's file is gImportDB.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "worksheets/NewCrf.h"

namespace zolmara {

/// The identity of the new file: last year's number and name, and the period behind last year's.
/// A start or end that is given, as text, stands in its place; the period is empty where last
/// year's file does not say what it was.
NewCrfFields FieldsAfterLastYear(const std::string& start, const std::string& end);

/// The worksheets of which the keyed cells can be taken along, in the registry's order.
std::vector<std::string> WorksheetsToTakeAlong();

/// Makes the new file, as CreateCrf does, with last year's cost centers, components, regions,
/// statistical bases, header lines, S-1 identity, contacts and officers, and with the keyed cells
/// of the worksheets named. No other amount, statistic or answer comes over, and no signature.
/// What could not come over is told by ImportMessages. StoreError, with no file made, for a name
/// that is none of WorksheetsToTakeAlong.
bool CreateFromLastYear(const std::string& path, const NewCrfFields& fields,
                        std::span<const std::string> takeAlong);

}  // namespace zolmara
