#pragma once

// The lines of an import from a spreadsheet file: rows below the headings Worksheet, Line, Column
// and Contents, which stand in any order. Other columns and what stands above are passed over, and
// so are rows without contents; a cell of blanks alone empties the cell that it names.

#include <array>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "import/LineSource.h"
#include "spreadsheet/SheetProcess.h"

namespace zolmara {

class SheetLines : public LineSource {
public:
    /// StoreError::CannotOpen as SheetProcess tells.
    SheetLines(const std::string& path, SheetFileKind kind, const SheetLimits& limits = {});

    bool Next(ImportLine& line) override;
    double PartRead() const override { return process_.PartRead(); }
    std::string Failure() const override;
    std::vector<std::string> Notes() const override;

private:
    static constexpr std::size_t kFields = 4;
    /// The columns of the fields, in the order of ImportField; -1 while not found.
    using Columns = std::array<int, kFields>;
    struct Sheet {
        std::string Name;
        std::int64_t Rows = 0;
        std::int64_t HeadingRow = 0;  ///< 0 while not found
        Columns Places = {-1, -1, -1, -1};
    };
    using Cells = std::array<const SheetCell*, kFields>;

    std::optional<ImportLine> LineOf(const SheetRow& row);
    std::optional<ImportLine> CheckedLine(const SheetRow& row, const Cells& cells) const;
    std::optional<ImportLine> Merged(const SheetRow& row) const;
    bool TakeHeadings(const SheetRow& row);
    void BeginSheet(const std::string& name);
    void EndSheet();
    std::string PlaceOf(const SheetRow& row, ImportField field) const;

    std::string path_;
    SheetProcess process_;
    std::optional<Sheet> sheet_;
    std::vector<std::string> passedOver_;  ///< sheets without headings
    bool anyHeadings_ = false;
};

}  // namespace zolmara
