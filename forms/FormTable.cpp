#include "forms/FormTable.h"

#include <algorithm>

#include "core/Globals.h"

namespace zolmara {

namespace {

using enum LockedColumns;

constexpr std::string_view kAllLines = "SELECT * FROM {} ORDER BY LineNum;";
constexpr std::string_view kAllSequences = "SELECT * FROM {} ORDER BY SeqNum;";
constexpr std::string_view kComponents = "SELECT * FROM {} WHERE LineNum<51 ORDER BY LineNum;";
constexpr std::string_view kComponentsAndCost =
    "SELECT * FROM {} WHERE LineNum<51 or LineNum=53 ORDER BY LineNum;";

constexpr FormSpec Schedule(std::string_view items) {
    return {.Items = items,
            .Table = {},
            .EditName = "frmEditBpx",
            .ViewName = "frmViewBpx",
            .EditRows = kComponentsAndCost,
            .ViewRows = kAllLines,
            .Frozen = 3,
            .Locked = TotalHidden,
            .Shared = true,
            .HasLines = true};
}

constexpr FormSpec Computed(std::string_view items, std::string_view view, int frozen) {
    return {.Items = items,
            .Table = {},
            .EditName = {},
            .ViewName = view,
            .EditRows = {},
            .ViewRows = kAllLines,
            .Frozen = frozen,
            .Locked = Shown,
            .Shared = true};
}

// clang-format off
constexpr FormSpec kForms[] = {
    {"A", "", "frmEditA", "frmViewA",
     "Select * From A Where LineNum Not In(3,7,28,99,100) Order by LineNum;",
     "SELECT * From A ORDER BY LineNum;", 2, Hidden},
    {"A6", "", "frmEditA6", "frmViewA6",
     "SELECT * FROM A6 WHERE LineNum < 100 ORDER BY LineNum;",
     "SELECT * FROM A6 ORDER BY LineNum;", 2, Shown, false, true, true},
    {"A7p1", "", "frmEditA7p1", "frmViewA7p1",
     "SELECT * FROM A7p1 WHERE LineNum < 7 Or LineNum = 8 ORDER BY LineNum;",
     "SELECT * FROM A7p1 ORDER BY LineNum;"},
    {"A7p2", "", "frmEditA7p2", "frmViewA7p2",
     "SELECT * FROM A7p2 WHERE LineNum<3 ORDER BY LineNum;",
     "SELECT * FROM A7p2 ORDER BY LineNum;", 2, Hidden},
    {"A8", "", "frmEditA8", "frmViewA8",
     "SELECT * From A8 WHERE LineNum Not In (12,100) ORDER BY LineNum;",
     kAllLines, 2, Shown, false, true, true},
    {"A81p1", "", "frmEditA81p1", "frmViewA81p1",
     "SELECT * FROM A81p1 WHERE SeqNum < 100 ORDER BY SeqNum;",
     kAllSequences, 3, Shown, false, true, true},
    {"A81p2", "", "frmEditA81p2", "frmViewA81p2",
     "SELECT * FROM A81p2 ORDER BY SeqNum;",
     "SELECT * FROM A81p2 Order By SeqNum;", 1, Shown, false, true, true},
    Schedule("Bp?"),
    Schedule("B1p?"),
    Computed("Cp?", "frmViewBpx", 3),
    Schedule("C1p?"),
    {"CCs", "CostCenters", "frmEditCCs", "frmViewCCs",
     "SELECT * FROM CostCenters Where LineNum Not In(3,7,99) ORDER BY LineNum",
     "Select * from CostCenters order by LineNum", 2, Shown, false, true, false,
     "EDIT: Cost Centers Structure Table"},
    Computed("Dp?", "frmViewBpx", 3),
    Schedule("D1p?"),
    {"ES", "", "frmEditES", "frmViewES",
     "SELECT * FROM ES Where LineNum ORDER BY LineNum",
     "Select * from ES order by LineNum", 2, Shown, false, false, false,
     "Edit: Pooled Allocation Statistical Basis", "View: Pooled Allocation Statistical Basis"},
    Computed("E", "frmViewEx", 2),
    {"E1p?", "", "frmEditEpx", "frmViewEx", kComponents, kAllLines, 3, Shown, true, true},
    Computed("Fp?", "frmViewFpx", 3),
    Computed("F1p?", "frmViewFpx", 3),
    Computed("F2p?", "frmViewFpx", 3),
    {"G", "", "frmEditG", "frmViewG",
     "SELECT * FROM G WHERE LineNum NOT IN (10,26,31,32,40,45,46,48) ORDER BY LineNum;",
     kAllLines, 2, Shown, false, true},
    {"G1", "", "frmEditG1", "frmViewG1",
     "SELECT * FROM G1 WHERE LineNum Not In(2,3,15,21,22) Order by LineNum;",
     kAllLines, 2, Shown, false, true},
    {"Sp1", "", "frmEditSp1", "frmViewSp1",
     "SELECT * FROM Sp1 WHERE LineNum<3 ORDER BY LineNum;",
     "SELECT * FROM Sp1 ORDER BY LineNum;"},
    {"S1p1", "", "frmEditS1p1", "frmViewS1p1",
     "SELECT * FROM S1p1 ORDER BY LineNum;",
     "SELECT * FROM S1p1 ORDER BY LineNum;", 2, Shown, false, true},
    {"S1p2", "", "frmEditS1p2", "frmViewS1p2",
     "SELECT * FROM S1p2 ORDER BY LineNum;",
     "SELECT * FROM S1p2 ORDER BY LineNum;", 1, Shown, false, true},
    {"S2p1", "", "frmEditS2p1", "frmViewS2p1",
     "SELECT * FROM S2p1 ORDER BY LineNum;",
     "SELECT * FROM S2p1 ORDER BY LineNum;", 2, Shown, false, true},
    {"S2p2", "", "frmEditS2p2", "frmViewS2p2",
     "SELECT * FROM S2p2 ORDER BY LineNum;",
     "SELECT * FROM S2p2 ORDER BY LineNum;", 2, Shown, false, true},
    {"S2p3", "", "frmEditS2p3", "frmViewS2p3",
     "SELECT * FROM S2p3 ORDER BY LineNum;",
     "SELECT * FROM S2p3 ORDER BY LineNum;", 2, Shown, false, true},
};

constexpr std::string_view kMoney = "#,##0;(#,##0)";
constexpr std::string_view kAssets = "###,###,##0;(###,###,##0)";
constexpr std::string_view kPercent = "###,###,##0.00;(###,###,##0.00)";
constexpr std::string_view kSequence = "##0.00;(###,##0.00)";
constexpr std::string_view kLine = "##0.00";
constexpr std::string_view kRatio = "0.000000;(0.000000)";

constexpr ColumnSpec kColumns[] = {
    {"A", "Col_*", 1400, kMoney},

    {"A6", "Col_1", 3300},
    {"A6", "Col_3 Col_6", 2600},
    {"A6", "Col_4 Col_7", 900, kLine},
    {"A6", "Col_*", 1400, kMoney},

    {"A7p1", "LineNum", 650, "##0"},
    {"A7p1", "Col_4", 1400, kAssets, "Ending Balance"},
    {"A7p1", "Col_6", 1400, kAssets, "Total"},
    {"A7p2", "Col_4", 1400, kRatio},
    {"A7p?", "Col_*", 1400, kAssets},

    {"A8", "Col_1", 3300},
    {"A8", "Col_3", 1400, kMoney},
    {"A8", "Col_4", 2600},
    {"A8", "Col_5", 900, kLine, "", "CC #"},

    {"A81p1", "SeqNum", 900, kSequence},
    {"A81p1", "Col_1", 900, kSequence},
    {"A81p1", "Col_2", 2600},
    {"A81p1", "Col_3", 3300, "", "Expense Item Description"},
    {"A81p1", "Col_4", 1400, kLine},
    {"A81p2", "SeqNum", 900, kSequence},
    {"A81p2", "Col_1", 900},
    {"A81p2", "Col_2", 1800},
    {"A81p2", "Col_3 Col_5 Col_7", 2600},
    {"A81p2", "Col_4 Col_6", 1400, kPercent},

    {"E", "Col_2", 1400, kRatio},
    {"E1p?", "Col_2", 1400, kRatio},

    {"G", "Col_1", 1800, kAssets, "", "General Fund"},
    {"G", "Description", 4600},
    {"G1", "Col_1", 4600},
    {"G1", "Col_2", 1800, kAssets},

    {"CostCenters", "LineNum", 900, kLine, "", "CC #"},
    {"CostCenters", "CCName", 3300, "", "", "Cost Center Name"},
    {"CostCenters", "ColLabel1", 1400, "", "", "Column Label", "1"},
    {"CostCenters", "ColLabel2", 1400, "", "", "Column Label", "2"},
    {"CostCenters", "ColLabel3", 1400, "", "", "Column Label", "3"},
    {"CostCenters", "StatLabel1", 1400, "", "", "Stat Label", "1"},
    {"CostCenters", "StatLabel2", 1400, "", "", "Stat Label", "2"},
    {"CostCenters", "StatCode", 900, "##0", "", "Stat Code"},
    {"ES", "LineNum", 900, kLine, "", "", "", true},
    {"ES", "CCName", 2600, "", "", "Work Sheet"},
    {"ES", "StatLabel1", 1800, "", "", "Stat Label", "1"},
    {"ES", "StatLabel2", 1800, "", "", "Stat Label", "2"},
    {"ES", "StatCode", 900, "##0", "", "Stat Code"},

    {"Sp1", "Description", 4600},
    {"S1p1", "Col_*", 2400},
    {"S1p2", "Col_*", 3300},
    {"S2p?", "Col_1", 3300},
    {"S2p3", "Col_6", 1800, kMoney},
    {"S2p?", "Col_*", 1600},
};
// clang-format on

}  // namespace

std::span<const FormSpec> AllFormSpecs() { return kForms; }

bool FitsPattern(std::string_view pattern, std::string_view name) {
    if (pattern.size() != name.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i)
        if (pattern[i] != '?' && !SameText(pattern.substr(i, 1), name.substr(i, 1))) return false;
    return true;
}

bool FitsAnyField(std::string_view words, std::string_view field) {
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        std::string_view word = words.substr(0, end);
        const bool beginning = word.ends_with('*');
        if (beginning) word.remove_suffix(1);
        if (SameText(word, beginning ? LeftText(field, word.size()) : field)) return true;
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return false;
}

const FormSpec* FindFormSpec(std::string_view item) {
    const auto found = std::ranges::find_if(
        kForms, [&](const FormSpec& spec) { return FitsPattern(spec.Items, item); });
    const bool real = found != std::end(kForms) &&
                      (!found->Items.ends_with('?') || Between(item.back(), '1', '3'));
    return real ? found : nullptr;
}

const ColumnSpec* FindColumnSpec(std::string_view table, std::string_view field) {
    const auto found = std::ranges::find_if(kColumns, [&](const ColumnSpec& spec) {
        return FitsPattern(spec.Tables, table) && FitsAnyField(spec.Fields, field);
    });
    return found == std::end(kColumns) ? nullptr : found;
}

}  // namespace zolmara
