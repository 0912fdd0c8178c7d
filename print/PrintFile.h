#pragma once

// Print files: text files by number, in code page 1252 with CR LF. A file appears under its name
// only when it is complete.

#include <cstdint>
#include <string>
#include <string_view>

namespace zolmara {

/// An open output file; below 1 none.
using FileNumber = std::int16_t;

/// Opens a file for output under the lowest free number. Nothing has been written to it, so the
/// next page head says its orientation. StoreError when the file cannot be written.
FileNumber OpenPrintFile(const std::string& path);

/// Completes the file and frees the number. StoreError when that fails; then there is no new file,
/// and one of that name is as it was.
void ClosePrintFile(FileNumber file);

/// Gives the file up: nothing of it stays, and one of that name is as it was.
void DropPrintFile(FileNumber file) noexcept;

/// Writes a line of UTF-8 text. Control characters in it become blanks, so that no text from the
/// worksheets begins a page. StoreError when the disk takes no more.
void PrintLine(FileNumber file, std::string_view text = "");

/// Writes the control characters of a page change on a line of their own.
void PrintPageChange(FileNumber file, std::string_view control);

/// A print file that is given up unless it is closed.
class OwnPrintFile {
public:
    explicit OwnPrintFile(const std::string& path) : number_(OpenPrintFile(path)) {}
    ~OwnPrintFile() { DropPrintFile(number_); }
    OwnPrintFile(const OwnPrintFile&) = delete;
    OwnPrintFile& operator=(const OwnPrintFile&) = delete;

    FileNumber Number() const { return number_; }
    void Close();

private:
    FileNumber number_;
};

}  // namespace zolmara
