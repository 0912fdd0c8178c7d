#pragma once

// Print files: text files by number, in code page 1252 with CR LF. A file appears under its name
// only when it is complete.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "store/OneState.h"
#include "store/files/FileDoor.h"

namespace zolmara {

/// An open output file; below 1 none.
using FileNumber = std::int16_t;

/// True for the beginning of a file that a report of this program was printed to.
bool IsPrintedReport(std::string_view head);

/// Opens a file for output under the lowest free number. StoreError when the file cannot be
/// written, or when another's file of that name is kept.
FileNumber OpenPrintFile(const std::string& path, const OwnOutput& own = IsPrintedReport);

/// Completes the file and frees the number. StoreError when that fails; then there is no new file,
/// and one of that name is as it was.
void ClosePrintFile(FileNumber file);

/// The file as it is so far, complete on the disk, for what must read it or write to it before it
/// takes its name. More may be printed to it.
const std::string& PrintFileAside(FileNumber file);

/// Gives the file up: nothing of it stays, and one of that name is as it was.
void DropPrintFile(FileNumber file) noexcept;

/// Writes a line of UTF-8 text. Control characters in it become blanks, so that no text from the
/// worksheets begins a page. StoreError when the disk takes no more.
void PrintLine(FileNumber file, std::string_view text = "");

/// What stands at the end of every line.
inline constexpr std::string_view kLineEnd = "\r\n";

/// Writes lines that have their ends, of printable ASCII only: for whoever puts together many of
/// them and knows what is in them.
void PrintPlainLines(FileNumber file, std::string_view lines);

/// Writes the control characters of a page change on a line of their own.
void PrintPageChange(FileNumber file, std::string_view control);

/// A print file that is given up unless it is closed.
class OwnPrintFile {
public:
    explicit OwnPrintFile(const std::string& path, const OwnOutput& own = IsPrintedReport);
    ~OwnPrintFile() { DropPrintFile(number_); }
    OwnPrintFile(const OwnPrintFile&) = delete;
    OwnPrintFile& operator=(const OwnPrintFile&) = delete;

    FileNumber Number() const { return number_; }
    /// The digest of what is printed is made; see OutFile.
    void KeepDigest() const;
    /// StoreError::Locked, too, where another program changed the statement meanwhile.
    void Close();
    /// The file with all that was printed, which is nobody's print file any more, to be put by
    /// whoever takes it.
    std::unique_ptr<OutFile> Release();

private:
    FileNumber number_;
    std::string path_;
    OneState state_;
};

}  // namespace zolmara
