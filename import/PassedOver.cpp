#include "import/PassedOver.h"

#include <fmt/format.h>

namespace zolmara {

namespace {

constexpr std::size_t kMostNamed = 10;

}  // namespace

std::string PassedOver::Note() const {
    if (counts_.empty()) return {};
    int lines = 0;
    std::size_t named = 0;
    std::string list;
    for (const auto& [what, count] : counts_) {
        lines += count;
        if (++named <= kMostNamed)
            list += fmt::format("{}{} ({})", list.empty() ? "" : ", ", what, count);
    }
    if (named > kMostNamed) list += fmt::format(" and {} others", named - kMostNamed);
    return fmt::format(
        "{} passed over: {}.",
        lines == 1 ? "1 line of the file was" : fmt::format("{} lines of the file were", lines),
        list);
}

}  // namespace zolmara
