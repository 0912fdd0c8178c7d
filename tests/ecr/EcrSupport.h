#pragma once

// What the tests of the electronic report share: records read back, and the fields of a record.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Clock.h"
#include "ecr/Record.h"
#include "store/FilledCrf.h"
#include "support/TestCrf.h"

namespace zolmara::test {

using Lines = std::vector<std::string>;

/// The lines of a file, each of which must end in CR LF.
Lines LinesOf(const std::string& path);
/// The lines that begin with a text.
Lines StartingWith(const Lines& lines, std::string_view start);
/// True where the folder holds a file that was not put under its name.
bool HasScratchFiles(const TempFolder& folder);

/// A text in a field: blanks behind it up to the width; a negative width puts them in front.
std::string InField(std::string_view text, int width);
/// An amount in its 16 characters.
std::string Amount(std::string_view digits);

/// A new CRF whose program clock goes with the host's.
class EcrCrf : public TestCrf {
protected:
    EcrCrf() { ResetClock(); }
    ~EcrCrf() override;

    /// The records that a step writes.
    Lines Records(const std::function<void(EcrRun&)>& emit);
    /// The records of a worksheet.
    Lines RecordsOf(std::string_view item);
};

/// Adds a row to a table by naming its key and fields.
void AddRow(std::string_view table, double line,
            const std::vector<std::pair<std::string, Variant>>& fields);

}  // namespace zolmara::test
