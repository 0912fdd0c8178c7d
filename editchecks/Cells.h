#pragma once

// How the checks read a cell. A Null reads as an empty text and as 0, and so does, as a number, a
// text that is none.

#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

// --- Amounts, compared at four decimals: what arithmetic leaves behind them is no finding

bool IsZero(double amount);
bool IsBelowZero(double amount);
bool IsAboveZero(double amount);
bool Differ(double a, double b);

// --- Cells of the current row

std::string CellText(const Recordset& row, std::string_view field);
double CellNumber(const Recordset& row, std::string_view field);
Currency CellLine(const Recordset& row, std::string_view field);
/// The key of the row, its first field, as messages show it.
std::string KeyText(const Recordset& row);
bool OnLine(const Recordset& row, std::int64_t line);

bool IsBlank(const Recordset& row, std::string_view field);
/// Null or no characters; blanks are characters.
bool IsEmpty(const Variant& value);
bool IsEmpty(const Recordset& row, std::string_view field);
bool AnyBlank(const Recordset& row, std::initializer_list<std::string_view> fields);
bool AnyEmpty(const Recordset& row, std::initializer_list<std::string_view> fields);
/// True when the text begins with one of the letters, in either case.
bool BeginsWith(const Recordset& row, std::string_view field, std::string_view letters);

std::optional<DateTime> ValidDate(const Variant& value);
std::string WithoutDashes(std::string_view text);
/// True for exactly six letters or digits.
bool IsSixAlphanumeric(std::string_view text);

// --- Whole lines and tables, read once

/// The first row of a statement. A check whose row is missing is passed over: it asks IsThere.
/// Without the row every cell is Null.
class Line {
public:
    explicit Line(std::string_view statement);

    bool IsThere() const { return there_; }

    std::size_t Count() const { return values_.size(); }
    const std::string& Field(std::size_t position) const { return fields_[position]; }
    double Number(std::size_t position) const;
    double Number(std::string_view field) const;
    std::string Text(std::string_view field) const;
    /// Null when the row has no such field.
    const Variant& Value(std::string_view field) const;

private:
    bool there_;
    std::vector<std::string> fields_;
    std::vector<Variant> values_;
};

/// One cost center's cell of a schedule's row.
struct CostCenterCell {
    std::string Field;
    Currency Line;  ///< the cost center
    double Amount;
    /// The column as messages show it: CC_401 is 4.01.
    std::string Column() const;
};

/// The cost center cells of the first row of a statement, in their order; none without the row.
std::vector<CostCenterCell> CostCenterCells(std::string_view statement);

/// The values of a key field.
std::set<Currency> KeysOf(std::string_view statement, std::string_view field);
/// One column of a table by its line.
std::map<Currency, double> AmountsByLine(std::string_view statement, std::string_view column);

}  // namespace zolmara
