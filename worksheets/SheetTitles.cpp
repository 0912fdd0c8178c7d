#include "worksheets/SheetTitles.h"

#include <algorithm>
#include <array>

#include "core/Globals.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

struct TitleRow {
    std::string_view Item;  ///< or what begins the name of a schedule in parts
    std::string_view Title;
    bool InParts = false;  ///< the components of the part are added
};

/// The printed form's own titles. The allocation schedules have none there but their columns', and
/// are told by what they hold.
constexpr TitleRow kTitles[] = {
    {"Sp1", "Certification, cost statement status"},
    {"S1p1", "Home office data"},
    {"S1p2", "Key officer data"},
    {"S2p", "Components of the chain", true},
    {"A", "Reclassification and adjustment of trial balance of expenses"},
    {"A6", "Reclassifications"},
    {"A7p1", "Analysis of changes in capital asset balances"},
    {"A7p2", "Reconciliation of capital cost centers"},
    {"A8", "Adjustments to expenses"},
    {"A81p1", "Costs of services from related organizations"},
    {"A81p2", "Related organizations"},
    {"Bp", "Direct allocation of capital cost", true},
    {"B1p", "Direct allocation of non-capital cost", true},
    {"Cp", "Functional allocation of capital cost", true},
    {"C1p", "Functional statistics of capital cost", true},
    {"Dp", "Functional allocation of non-capital cost", true},
    {"D1p", "Functional statistics of non-capital cost", true},
    {"E", "Pooled allocation to the parts of the chain"},
    {"E1p", "Pooled allocation", true},
    {"Fp", "Summary of capital cost", true},
    {"F1p", "Summary of non-capital cost", true},
    {"F2p", "Summary of interest income", true},
    {"G", "Balance sheet"},
    {"G1", "Statement of revenue and expenses"},
};

constexpr std::array<std::string_view, 3> kParts = {
    "healthcare provider components", "non-healthcare components", "region / division components"};

bool IsOf(const TitleRow& row, std::string_view item) {
    if (!row.InParts) return row.Item == item;
    return item.size() == row.Item.size() + 1 && item.starts_with(row.Item);
}

}  // namespace

std::string SheetTitle(std::string_view item) {
    const auto* const row =
        std::ranges::find_if(kTitles, [&](const TitleRow& each) { return IsOf(each, item); });
    if (row == std::end(kTitles)) return {};
    std::string title(row->Title);
    if (row->InParts) (title += ", ") += kParts.at(static_cast<std::size_t>(item.back() - '1'));
    return title;
}

std::vector<std::string> SheetsByLetter() {
    std::vector<std::string> sheets;
    for (const TitleRow& row : kTitles) {
        if (!row.InParts) sheets.emplace_back(row.Item);
        for (int part = 1; row.InParts && part <= 3; ++part)
            sheets.push_back(std::string(row.Item) + std::to_string(part));
    }
    return sheets;
}

}  // namespace zolmara
