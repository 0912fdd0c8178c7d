#pragma once

// A workbook that is being written: libxlsxwriter with errors raised, and the file behind the one
// door. Rows are written in their order; what was written is on the disk already, so that a large
// workbook takes no more memory than a small one.

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "spreadsheet/XlsxFunctions.h"
#include "store/files/FileDoor.h"

namespace zolmara {

/// How a cell looks; cells that look alike share a format.
struct CellLook {
    std::string NumberFormat = {};
    bool Bold = false;
    bool Wrap = false;
    bool Centered = false;
    bool Shaded = false;    ///< a heading
    bool Unlocked = false;  ///< to be keyed, on a protected sheet
    bool Link = false;
    bool AtTop = false;     ///< in rows of several lines
    bool Indented = false;  ///< apart from the number on its left
    auto operator<=>(const CellLook&) const = default;
};

class Workbook {
public:
    /// FileKept, StoreError as OutFile tells. `streamed`: cells go to the disk row by row.
    Workbook(const std::string& path, bool streamed);
    ~Workbook();
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    lxw_worksheet* AddSheet(const std::string& name);
    lxw_format* Format(const CellLook& look);
    /// A name for a cell or range: "=A!$C$5".
    void DefineName(const std::string& name, const std::string& reference);

    /// Closes the workbook and puts it in place. StoreError when that fails; what stood there is
    /// as it was.
    void Put();

private:
    void Check(lxw_error error) const;
    std::vector<long> StreamedSizes() const;
    void NeedWhole(const std::vector<long>& sizes) const;
    [[noreturn]] void Fail(const std::string& reason) const;

    OutFile file_;
    std::vector<lxw_worksheet*> sheets_;
    lxw_workbook* book_ = nullptr;
    std::map<CellLook, lxw_format*> formats_;
};

/// StoreError::Other for a name that does not end in .xlsx: no spreadsheet would open it.
void NeedWorkbookName(const std::string& path);

/// Text as a cell takes it: what workbooks cannot hold is cut, control characters are blanks.
std::string SheetText(std::string_view text);
/// Writes a text; it stays a text whatever it begins with. Empty ones write nothing.
void PutText(lxw_worksheet* sheet, lxw_row_t row, int column, std::string_view text,
             lxw_format* format = nullptr);
void PutNumber(lxw_worksheet* sheet, lxw_row_t row, int column, double number,
               lxw_format* format = nullptr);

}  // namespace zolmara
