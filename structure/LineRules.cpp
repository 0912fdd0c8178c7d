#include "structure/LineRules.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

constexpr std::string_view kDescriptions = "All descriptions must be completed.";
constexpr std::string_view kNames = "All cost center names must be completed.";
constexpr std::string_view kG1Shown = "LineNum Not In(2,3,15,21,22)";

using enum LineKeeper;

// clang-format off
constexpr LineRules kRules[] = {
    {"CostCenters", CostCenters, "LineNum", "LineNum Not In(3,7,99)", "<99", 98, 99, 99, 100, 28, "CCName", kNames},
    {"S2p1", Components, "LineNum", "LineNum<51", "<50", 50, 49, 49, 50, 0, "", ""},
    {"S2p2", Components, "LineNum", "LineNum<51", "<50", 50, 49, 49, 50, 0, "", ""},
    {"S2p3", Components, "LineNum", "LineNum<51", "<50", 50, 49, 49, 50, 0, "", ""},
    {"A8", Gap, "LineNum", "LineNum Not In(12,100)", "<100", 99, 99, 99, 100, 17, "Col_1", kDescriptions},
    {"G1", Gap, "LineNum", kG1Shown, "<15", 14, 15, 15, 100, 9, "Col_1", kDescriptions},
    {"G1", Gap, "LineNum", kG1Shown, "<21", 20, 21, 21, 100, 9, "Col_1", kDescriptions},
    {"A81p1", Gap, "SeqNum", "SeqNum<100", "<100", 99, 99, 99, 100, 0, "", ""},
    {"A81p2", Gap, "SeqNum", "SeqNum<51", "<=50", 50, 49, 99, 100, 0, "", ""},
    {"A6", Entries, "LineNum", "LineNum<100", "<100", 99, 0, 0, 0, 0, "", ""},
    {"S1p1", MailLines, "LineNum", "LineNum<1000", "<1000", 0, 0, 0, 0, 5, "", ""},
    {"S1p2", Officers, "LineNum", "LineNum<1000", "<1000", 0, 0, 0, 0, 5, "", ""},
};
// clang-format on

}  // namespace

const LineRules* FindLineRules(std::string_view item, Currency line) {
    const LineRules* found = nullptr;
    for (const auto& rules : kRules) {
        if (rules.Item != item) continue;
        found = &rules;
        if (line < Currency::FromWhole(rules.LastWhole + 1)) break;
    }
    return found;
}

bool IsShownLine(const LineRules& rules, Currency line) {
    auto sql = fmt::format("SELECT Count({0}) From {1} Where {0}=? And {2};", rules.Key, rules.Item,
                           rules.Shown);
    return NumOr(gDB.Scalar(sql, {line})) > 0;
}

}  // namespace zolmara
