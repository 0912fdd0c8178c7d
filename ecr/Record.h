#pragma once

// A record of the electronic report: one line of fixed columns, built field by field.

#include <string>
#include <string_view>

#include "core/Currency.h"
#include "print/PrintFile.h"

namespace zolmara {

/// One writing of the report, which goes along to all that write records.
struct EcrRun {
    explicit EcrRun(FileNumber file) : ECRFile(file) {}

    const FileNumber ECRFile;  ///< the open file that records go to
    std::string ECRLine;       ///< the record in hand

    /// Ends the record in hand and writes it to ECRFile. StoreError when the disk takes no more.
    void WriteRecord() const;
};

/// The line number of a key, in three characters, and its subscript, in two; a key without a
/// subscript has blanks there. With `blankZero` line 0 is blank too.
std::string LineField(Currency key, bool blankZero = false);

/// A column number in three characters, and its subscript in two.
std::string ColumnField(Currency column);

/// The same without a subscript.
std::string ColumnField(int column);

/// A text in so many characters, cut or filled with blanks at its right.
std::string PadText(std::string_view text, std::size_t width);

}  // namespace zolmara
