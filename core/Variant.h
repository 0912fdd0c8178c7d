#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "core/Currency.h"
#include "core/DateTime.h"

namespace zolmara {

/// A cell's value: Null, a number, a date or a text. Null is distinct from 0 and from "".
class Variant {
public:
    Variant() = default;
    Variant(std::nullptr_t) {}
    Variant(int value) : value_(std::int64_t{value}) {}
    Variant(std::int64_t value) : value_(value) {}
    Variant(double value) : value_(value) {}
    Variant(Currency value) : value_(value) {}
    Variant(DateTime value) : value_(value) {}
    Variant(std::string value) : value_(std::move(value)) {}
    Variant(std::string_view value) : value_(std::string(value)) {}
    Variant(const char* value) : value_(std::string(value)) {}
    Variant(bool) = delete;

    bool IsNull() const { return std::holds_alternative<std::monostate>(value_); }
    bool IsInteger() const { return std::holds_alternative<std::int64_t>(value_); }
    bool IsDouble() const { return std::holds_alternative<double>(value_); }
    bool IsCurrency() const { return std::holds_alternative<Currency>(value_); }
    bool IsDate() const { return std::holds_alternative<DateTime>(value_); }
    bool IsText() const { return std::holds_alternative<std::string>(value_); }
    bool IsNumber() const { return IsInteger() || IsDouble() || IsCurrency(); }

    std::int64_t AsInteger() const { return std::get<std::int64_t>(value_); }
    double AsDouble() const { return std::get<double>(value_); }
    Currency AsCurrency() const { return std::get<Currency>(value_); }
    const DateTime& AsDate() const { return std::get<DateTime>(value_); }
    const std::string& AsText() const { return std::get<std::string>(value_); }

    /// Takes a double in place, the cheap way to read a cell into a row that is used again.
    void SetDouble(double value) {
        if (auto* held = std::get_if<double>(&value_))
            *held = value;
        else
            value_ = value;
    }

    /// The number held, whatever its number type. Needs IsNumber().
    double Number() const;

    /// Same type and same value; 1 and 1.0 are the same number.
    friend bool operator==(const Variant& a, const Variant& b);

private:
    std::variant<std::monostate, std::int64_t, double, Currency, DateTime, std::string> value_;
};

}  // namespace zolmara
