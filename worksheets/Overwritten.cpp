// Cells that the user keys and that a calculation writes all the same.

#include "worksheets/Descriptions.h"

namespace zolmara {
namespace {

Node KeptIf(Node condition, std::string_view letter = {}) {
    Node node{.Kind = NodeKind::KeptIf};
    node.Parts.push_back(std::move(condition));
    node.Text = letter;
    return node;
}

Node Amended(Node number) {
    Node node{.Kind = NodeKind::Amended};
    node.Parts.push_back(std::move(number));
    return node;
}

/// The calculation leaves it as it stands, or as it is told.
Node AsItStands() { return CellAt({}); }

DescriptionTable MakeTable() {
    const std::vector<LineSpan> entries = {LinesBelow(kTotalOfEntries)};
    const std::string noCenter =
        "The calculation empties it while the entry has no cost center line above 0.";
    const std::string noEntry =
        "An adjustment of 0 with the cost center 0 loses its cost center by the calculation.";
    return {
        {"A6", entries, "Col_3", noCenter, KeptIf(Here("Col_4"))},
        {"A6", entries, "Col_5", noCenter, KeptIf(Here("Col_4"))},
        {"A6", entries, "Col_6", noCenter, KeptIf(Here("Col_7"))},
        {"A6", entries, "Col_8", noCenter, KeptIf(Here("Col_7"))},
        {"A8",
         {LinesBelow(kRelatedOrganizations), LinesBetween(kRelatedOrganizations, kTotalOfEntries)},
         "Col_3",
         noEntry,
         AsItStands()},
        {"A8", {}, "Col_5", noEntry, AsItStands()},
        {"Sp1",
         {OnLine(1)},
         "Col_1",
         "The calculation writes \"No\", \"Yes\" or \"Error\" by the amendment number on line 2.",
         Amended(There("", Currency::FromWhole(2), "Col_1"))},
        {"S1p1",
         {OnLine(4)},
         "Col_4",
         "The calculation empties it unless column 3 says that the statements were not submitted.",
         KeptIf(Here("Col_3"), "N")},
    };
}

}  // namespace

const DescriptionTable& OverwrittenCells() {
    static const DescriptionTable table = MakeTable();
    return table;
}

}  // namespace zolmara
