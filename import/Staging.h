#pragma once

// The staging of an ASCII import: lines of text become rows of table ImportASCII, one for each
// worksheet, row and column.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/Currency.h"
#include "store/Dao.h"

namespace zolmara {

/// One cell of an import file, and the text by which a message names it.
struct ImportLine {
    std::string WorkSheet;  ///< as written in the file
    Currency Row;
    Currency Col;
    std::string Contents;
    std::string Echo;            ///< the line itself, or the worksheet, row and column
    std::string_view Complaint;  ///< why the line is dropped; empty for a good one
    bool Skip = false;           ///< an empty line or a lone "#VALUE!", dropped in silence
    bool IsWhole = false;        ///< the end of the contents was found ahead of the line's end
    std::string Origin = {};     ///< the cell of a workbook that it stood in: "Sheet1!D5"
};

/// Splits a line into its four fields, separated by TABs, and checks them. A line that is but the
/// beginning of a longer one (`cut`) is good when its contents end before that.
ImportLine ParseImportLine(std::string_view line, bool cut = false);

/// The four fields of a line that stand apart already, as in a spreadsheet, held to the same rules.
/// Contents count as quoted: commas and "$" are letters of theirs.
struct ImportFields {
    std::string_view WorkSheet;
    std::string_view Row;
    std::string_view Col;
    std::string_view Contents;
};
enum class ImportField { WorkSheet, Row, Col, Contents };
/// `wrong` becomes the field that a complaint is about.
ImportLine CheckImportLine(const ImportFields& fields, ImportField& wrong);

/// True where contents with a fraction stand on a worksheet whose amounts are whole numbers.
bool MustBeWhole(const ImportLine& line);

/// The text of a "Read" message.
std::string ReadMessage(std::string_view text, std::string_view echo);

inline constexpr std::string_view kContentsTooLong =
    "The Contents value is longer than 255 characters for: ";

/// Empties the staging table, or makes it. False when that fails, which a box has told.
bool PrepareStaging();

/// The staging table while a file is read. A cell that comes again is merged: two numbers add up,
/// except in column 4 of A8, where the first stands; otherwise the later text replaces the former.
/// An index in memory finds the row, so that a line costs the same however many there are.
class Staging {
public:
    Staging();
    /// False for a sum that is longer than a cell's text can be.
    bool Add(const ImportLine& line);

private:
    struct Key {
        std::int64_t Sheet;
        std::int64_t Row;
        std::int64_t Col;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const;
    };

    std::int64_t SheetNumber(const std::string& name);
    void AddRow(const ImportLine& line);
    bool Merge(const ImportLine& line);

    Recordset rows_;
    std::unordered_map<std::string, std::int64_t> sheets_;
    std::unordered_map<Key, std::int64_t, Hash> marks_;
};

}  // namespace zolmara
