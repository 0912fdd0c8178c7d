#pragma once

// The other Cost Report File that worksheets are taken over from: gImportDB while an import runs.

#include <cstdint>
#include <string>

namespace zolmara {

enum class SourceResult {
    Open,        ///< gImportDB is the source
    SameFile,    ///< it is the open CRF, by whatever path
    Unreadable,  ///< no Cost Report File, or one that cannot be read
    OtherForm,   ///< of another form than 287
};

/// Opens a source for reading alone and checks it. What is wrong with it has been shown, and then
/// no source is open.
SourceResult OpenImportSource(const std::string& path);

/// The source's name without its folder; empty when none is open.
std::string ImportTitle();

/// Drops the source.
void CloseImportSource();

/// Closes the worksheet windows, lets the user choose the source and opens it. 1 when it is open
/// and the import goes on, 0 when it ends here.
std::int16_t ImportCRF();

}  // namespace zolmara
