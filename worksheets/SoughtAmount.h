#pragma once

// An amount that somebody looks for, as it was keyed into a field of search.

#include <optional>
#include <string_view>

namespace zolmara {

/// Whoever looks for an amount keys the digits of a page or of the screen; whether it adds or takes
/// away is what the cell is looked up for. So digits alone are found under either sign, and with a
/// sign or in brackets under that one. Amounts are compared to the ten-thousandth.
class SoughtAmount {
public:
    /// A text that reads as no number is no amount, and no cell holds it.
    explicit SoughtAmount(std::string_view text);

    bool Any() const { return amount_.has_value(); }
    bool Is(double amount) const;

    /// Bounds, both included.
    struct Range {
        double Low;
        double High;
    };
    /// Where it lies. Needs Any.
    Range AsKeyed() const { return Around(*amount_); }
    /// Where it lies under the other sign; none where that is another amount.
    std::optional<Range> UnderTheOtherSign() const;

private:
    static Range Around(double amount);

    std::optional<double> amount_;
    bool eitherSign_;
};

}  // namespace zolmara
