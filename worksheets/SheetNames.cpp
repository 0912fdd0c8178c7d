#include "worksheets/SheetNames.h"

#include <algorithm>
#include <array>

#include "core/Characters.h"

namespace zolmara {

std::string_view RomanNumeral(int part) {
    static constexpr std::array<std::string_view, 10> kParts{"",  "I",  "II",  "III",  "IV",
                                                             "V", "VI", "VII", "VIII", "IX"};
    return kParts.at(static_cast<std::size_t>(part));
}

std::string PrintedName(std::string_view item) {
    const bool isSheet = item.size() < 2 || item[1] == 'p' || IsDigit(item[1]);
    if (item.empty() || !isSheet) return std::string(item);
    const std::size_t part = std::min(item.find('p', 1), item.size());
    // What a user typed need not be a worksheet of this form, or of any.
    if (part + 1 < item.size() && (item[part + 1] < '1' || item[part + 1] > '9'))
        return std::string(item);
    std::string name(item.substr(0, 1));
    for (const char number : item.substr(0, part).substr(name.size())) (name += '-') += number;
    if (part + 1 < item.size()) (name += " Part ") += RomanNumeral(item[part + 1] - '0');
    return name;
}

}  // namespace zolmara
