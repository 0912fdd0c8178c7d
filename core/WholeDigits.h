#pragma once

// The digits of a whole number, which nearly every amount is: put together from the last one on,
// three at a time.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zolmara {

/// True for a number without decimals whose text shows every digit of it.
inline bool IsWholeNumber(double number) {
    constexpr double kAllDigits = 1e15;
    return std::abs(number) < kAllDigits && std::trunc(number) == number;
}

enum class Thousands { Plain, Commas };

class WholeDigits {
public:
    /// Needs IsWholeNumber. A zero has no sign.
    WholeDigits(double number, Thousands thousands) {
        const auto whole = static_cast<std::int64_t>(number);
        auto left = static_cast<std::uint64_t>(whole < 0 ? -whole : whole);
        const std::size_t size = thousands == Thousands::Commas ? 4 : 3;
        for (; left >= kGroup; left /= kGroup) Put(kGroups[left % kGroup], size);
        Put(kGroups[left], left >= 100 ? 3 : left >= 10 ? 2 : 1);
        if (whole < 0) text_[--start_] = '-';
    }

    std::size_t Size() const { return text_.size() - start_; }
    std::string_view Text() const { return {text_.data() + start_, Size()}; }

private:
    static constexpr std::size_t kGroup = 1000;
    /// A comma and three digits.
    using Group = std::array<char, 4>;
    static constexpr std::array<Group, kGroup> kGroups = [] {
        std::array<Group, kGroup> groups{};
        for (std::size_t i = 0; i < kGroup; ++i)
            groups[i] = {',', static_cast<char>('0' + i / 100),
                         static_cast<char>('0' + i / 10 % 10), static_cast<char>('0' + i % 10)};
        return groups;
    }();

    /// Puts the last characters of a group ahead of what stands there.
    void Put(const Group& group, std::size_t size) {
        start_ -= size;
        std::memcpy(text_.data() + start_, group.data() + group.size() - size, size);
    }

    /// Fifteen digits, four commas and a sign.
    std::array<char, 20> text_;
    std::size_t start_ = text_.size();
};

}  // namespace zolmara
