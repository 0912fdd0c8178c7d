#include "core/Variant.h"

namespace zolmara {

double Variant::Number() const {
    if (const auto* whole = std::get_if<std::int64_t>(&value_)) return static_cast<double>(*whole);
    if (const auto* fixed = std::get_if<Currency>(&value_)) return fixed->ToDouble();
    return std::get<double>(value_);
}

bool operator==(const Variant& a, const Variant& b) {
    if (a.value_.index() == b.value_.index()) return a.value_ == b.value_;
    return a.IsNumber() && b.IsNumber() && a.Number() == b.Number();
}

}  // namespace zolmara
