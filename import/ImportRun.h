#pragma once

// One run of the ASCII import: the messages that it gives.

#include <string_view>

namespace zolmara {

struct SourceRow;

/// Goes along to the reader and to every loader. What they complain of goes to table Error, and
/// ImportErrorFlag is set nowhere else.
class ImportRun {
public:
    /// Tells why a line of the file is dropped.
    void DropLine(std::string_view text, std::string_view echo);
    /// Tells that a line has a fraction where only whole numbers are taken. That calls the load
    /// off, and alone leaves ImportErrorFlag as it is.
    void NotWhole(std::string_view echo);
    /// Tells that a worksheet has no loader.
    void NoLoader(std::string_view sheet);
    /// A loader's message: the text and what names the row.
    void Complain(std::string_view sheet, const SourceRow& row, std::string_view text);

    /// True until a line had a fraction where only whole numbers are taken.
    bool MayLoad() const { return mayLoad_; }

private:
    bool mayLoad_ = true;
};

}  // namespace zolmara
