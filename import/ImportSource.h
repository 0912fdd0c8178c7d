#pragma once

// The other Cost Report File that worksheets are taken over from: gImportDB while an import runs.

#include <cstdint>
#include <optional>
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

/// True where a path names the source that is open.
bool IsImportSource(const std::string& path);

/// Drops the source.
void CloseImportSource();

/// A source that is dropped when this goes.
class ImportSource {
public:
    explicit ImportSource(const std::string& path) : result_(OpenImportSource(path)) {}
    ~ImportSource() { CloseImportSource(); }
    ImportSource(const ImportSource&) = delete;
    ImportSource& operator=(const ImportSource&) = delete;

    SourceResult Result() const { return result_; }

private:
    SourceResult result_;
};

/// The dialog in which a source is chosen, in the folder of the last one; nothing on a cancel.
std::optional<std::string> ChooseImportSource(const std::string& title);

/// Closes the worksheet windows, lets the user choose the source and opens it. 1 when it is open
/// and the import goes on, 0 when it ends here.
std::int16_t ImportCRF();

}  // namespace zolmara
