#pragma once

// One run of the ASCII import: the cells that it loads, and the messages that it gives.

#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "core/Currency.h"
#include "import/StagedRows.h"

namespace zolmara {

struct ImportLine;

/// Goes along to the reader and to every loader. What they complain of goes to table Error, and
/// ImportErrorFlag is set nowhere else.
class ImportRun {
public:
    /// Tells why a line of the file is dropped.
    void DropLine(std::string_view text, std::string_view echo);
    /// Tells that a line has a fraction where only whole numbers are taken. That calls the load
    /// off, and alone leaves ImportErrorFlag as it is.
    void NotWhole(std::string_view echo);
    /// Tells why the file could not be read to its end. That calls the load off.
    void NotRead(std::string_view reason);
    /// Notes where in a workbook a line stood, for the messages of the loaders. A line of a text
    /// file has no such place: its messages name worksheet, row and column alone.
    void NoteOrigin(const ImportLine& line);
    /// Tells that a worksheet has no loader.
    void NoLoader(std::string_view sheet);
    /// A loader's message: the text and what names the row.
    void Complain(std::string_view sheet, const SourceRow& row, std::string_view text);

    /// The cells to load.
    StagedRows& Staged() { return staged_; }

    /// True until a line had a fraction where only whole numbers are taken, or the file ended
    /// before its end.
    bool MayLoad() const { return mayLoad_; }

private:
    using Cell = std::tuple<std::string, Currency, Currency>;  ///< worksheet, row, column
    std::string OriginOf(const Cell& cell) const;
    std::string FirstOrigin(std::string_view sheet) const;

    bool mayLoad_ = true;
    StagedRows staged_;
    std::map<Cell, std::string> origins_;
};

}  // namespace zolmara
