#include "editchecks/Cells.h"

#include <algorithm>
#include <array>

#include "core/Characters.h"
#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

double AtFourDecimals(double amount) {
    return Currency::Holds(amount) ? Currency(amount).ToDouble() : amount;
}

}  // namespace

bool IsZero(double amount) { return AtFourDecimals(amount) == 0; }
bool IsBelowZero(double amount) { return AtFourDecimals(amount) < 0; }
bool IsAboveZero(double amount) { return AtFourDecimals(amount) > 0; }
bool Differ(double a, double b) { return AtFourDecimals(a) != AtFourDecimals(b); }

std::string CellText(const Recordset& row, std::string_view field) { return StrOr(row[field]); }
double CellNumber(const Recordset& row, std::string_view field) { return NumOr(row[field]); }
Currency CellLine(const Recordset& row, std::string_view field) { return CurOr(row[field]); }
std::string KeyText(const Recordset& row) { return Text(row[0]); }
bool OnLine(const Recordset& row, std::int64_t line) {
    return CurOr(row[0]) == Currency::FromWhole(line);
}

bool IsBlank(const Recordset& row, std::string_view field) { return IsBlankValue(row[field]); }

bool IsEmpty(const Variant& value) { return Text(value).empty(); }
bool IsEmpty(const Recordset& row, std::string_view field) { return IsEmpty(row[field]); }

bool AnyBlank(const Recordset& row, std::initializer_list<std::string_view> fields) {
    return std::any_of(fields.begin(), fields.end(),
                       [&](std::string_view field) { return IsBlank(row, field); });
}

bool AnyEmpty(const Recordset& row, std::initializer_list<std::string_view> fields) {
    return std::any_of(fields.begin(), fields.end(),
                       [&](std::string_view field) { return IsEmpty(row, field); });
}

bool BeginsWith(const Recordset& row, std::string_view field, std::string_view letters) {
    const std::string letter = FirstLetter(row[field]);
    return !letter.empty() && letters.find(letter) != std::string_view::npos;
}

std::optional<DateTime> ValidDate(const Variant& value) {
    return IsValidDate(value) ? DateOf(value) : std::nullopt;
}

std::string WithoutDashes(std::string_view text) { return Replace(text, "-", ""); }

bool IsSixAlphanumeric(std::string_view text) {
    return text.size() == 6 && std::all_of(text.begin(), text.end(), IsLetterOrDigit);
}

// --- Whole lines and tables ----------------------------------------------------------------

Line::Line(std::string_view statement) {
    const Recordset rows = gDB.OpenRecordset(statement, dbOpenSnapshot);
    there_ = !rows.Eof();
    for (int i = 0; i < rows.FieldCount(); ++i) {
        fields_.push_back(rows.FieldName(i));
        values_.push_back(there_ ? rows[i] : Variant());
    }
}

double Line::Number(std::size_t position) const { return NumOr(values_[position]); }
double Line::Number(std::string_view field) const { return NumOr(Value(field)); }
std::string Line::Text(std::string_view field) const { return StrOr(Value(field)); }

const Variant& Line::Value(std::string_view field) const {
    static const Variant null;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (SameText(fields_[i], field)) return values_[i];
    }
    return null;
}

std::string CostCenterCell::Column() const { return NumberText(Line); }

std::vector<CostCenterCell> CostCenterCells(std::string_view statement) {
    const Line line(statement);
    std::vector<CostCenterCell> cells;
    if (!line.IsThere()) return cells;
    for (std::size_t i = 0; i < line.Count(); ++i) {
        const std::string& field = line.Field(i);
        if (IsCostCenterColumn(field))
            cells.push_back({field, LineOfColumn(field), line.Number(i)});
    }
    return cells;
}

std::set<Currency> KeysOf(std::string_view statement, std::string_view field) {
    std::set<Currency> keys;
    Recordset rows = gDB.OpenRecordset(statement, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (!rows[field].IsNull()) keys.insert(CellLine(rows, field));
    }
    return keys;
}

std::map<Currency, double> AmountsByLine(std::string_view statement, std::string_view column) {
    std::map<Currency, double> amounts;
    Recordset rows = gDB.OpenRecordset(statement, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) amounts.emplace(CurOr(rows[0]), CellNumber(rows, column));
    return amounts;
}

}  // namespace zolmara
