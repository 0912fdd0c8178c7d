#include "spreadsheet/SheetDates.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>

namespace zolmara {

bool IsDateFormat(std::string_view code) {
    constexpr std::string_view kDateLetters = "dmyhsDMYHS";
    for (std::size_t i = 0; i < code.size(); ++i) {
        if (code[i] == ';') return false;
        if (code[i] == '\\' || code[i] == '_' || code[i] == '*') {
            ++i;
        } else if (code[i] == '"' || code[i] == '[') {
            const std::size_t end = code.find(code[i] == '[' ? ']' : '"', i + 1);
            if (end == std::string_view::npos) return false;
            i = end;
        } else if (kDateLetters.find(code[i]) != std::string_view::npos) {
            return true;
        } else if (code.substr(i).starts_with("General")) {
            return false;
        }
    }
    return false;
}

bool IsDateFormat(int number) {
    const auto between = [&](int low, int high) { return low <= number && number <= high; };
    return between(14, 22) || between(27, 36) || between(45, 47) || between(50, 58);
}

std::string DateOfSerial(double serial, bool since1904) {
    constexpr double kLastSerial = 2958465;  // 12/31/9999
    constexpr double kFalseLeapDay = 60;     // 2/29/1900, which spreadsheets believe in
    constexpr int kDaysTo1904 = 1462;
    const double days = std::floor(serial) + (since1904 ? kDaysTo1904 : 0);
    if (!(days >= 1 && days <= kLastSerial) || days == kFalseLeapDay) return {};
    using namespace std::chrono;
    const sys_days zero = year{1899} / December / (days < kFalseLeapDay ? 31 : 30);
    const year_month_day date{zero + std::chrono::days(static_cast<int>(days))};
    return fmt::format("{}/{}/{}", static_cast<unsigned>(date.month()),
                       static_cast<unsigned>(date.day()), static_cast<int>(date.year()));
}

}  // namespace zolmara
