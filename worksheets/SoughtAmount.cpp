#include "worksheets/SoughtAmount.h"

#include <cmath>

#include "core/Globals.h"

namespace zolmara {
namespace {

/// Half of a ten-thousandth, on either side.
constexpr double kNear = 0.00005;

/// An exponent has a sign of its own, which says nothing of the amount's.
bool HasSign(std::string_view text) {
    const auto mantissa = text.substr(0, text.find_first_of("eE"));
    return mantissa.find_first_of("+-(") != std::string_view::npos;
}

}  // namespace

SoughtAmount::SoughtAmount(std::string_view text)
    : amount_(ParseNumber(text)), eitherSign_(!HasSign(text)) {}

bool SoughtAmount::Is(double amount) const {
    const auto isNear = [amount](double wanted) { return std::abs(amount - wanted) <= kNear; };
    return amount_ && (isNear(*amount_) || (eitherSign_ && isNear(-*amount_)));
}

std::optional<SoughtAmount::Range> SoughtAmount::UnderTheOtherSign() const {
    if (!eitherSign_ || *amount_ == 0) return std::nullopt;
    return Around(-*amount_);
}

SoughtAmount::Range SoughtAmount::Around(double amount) { return {amount - kNear, amount + kNear}; }

}  // namespace zolmara
