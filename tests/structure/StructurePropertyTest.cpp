// Whatever has been added and deleted before, taking an added line away again leaves the file as
// it was.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "structure/EditLines.h"
#include "structure/Shape.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr std::string_view kItems[] = {"CostCenters", "CostCenters", "S2p1", "S2p3", "A8",
                                       "A81p1",       "A81p2",       "G1",   "S1p1", "S1p2"};

std::string_view RandomItem() {
    return *rc::gen::elementOf(std::vector<std::string_view>(std::begin(kItems), std::end(kItems)));
}

/// The lines of an item, in ascending order.
std::vector<Currency> LinesOf(std::string_view item) {
    std::vector<Currency> lines;
    const auto key = gDB.Table(item).Fields.front().Name;
    auto rows = gDB.OpenRecordset("SELECT " + key + " FROM " + std::string(item) + " ORDER BY " +
                                  key + ";");
    for (; !rows.Eof(); rows.MoveNext()) lines.push_back(CurOr(rows[0]));
    return lines;
}

void CompleteNames() {
    gDB.Execute("UPDATE CostCenters SET CCName='n' & LineNum WHERE CCName Is Null;");
    gDB.Execute("UPDATE A8 SET Col_1='n' & LineNum WHERE Col_1 Is Null;");
    gDB.Execute("UPDATE G1 SET Col_1='n' & LineNum WHERE Col_1 Is Null;");
}

std::optional<Currency> RandomLine(std::string_view item) {
    const auto lines = LinesOf(item);
    if (lines.empty()) return std::nullopt;
    return lines[*rc::gen::inRange<std::size_t>(0, lines.size())];
}

/// A line that the item's rules offer somewhere; none where the chosen row takes none.
std::optional<Currency> RandomOffer(std::string_view item) {
    const auto offer = OfferLine(item, RandomLine(item));
    if (offer.Refused()) return std::nullopt;
    return *rc::gen::arbitrary<bool>() && offer.Whole ? offer.Whole : offer.Subscript;
}

/// True when the line was added; the columns of a cost center may not all be able to move.
bool TryAdd(std::string_view item, Currency line) {
    try {
        return AddLine(item, line);
    } catch (const StoreError&) {
        return false;
    }
}

void ChangeAtRandom() {
    const auto item =
        *rc::gen::elementOf(std::vector<std::string_view>(std::begin(kItems), std::end(kItems)));
    if (*rc::gen::inRange(0, 3) > 0) {
        if (const auto line = RandomOffer(item)) TryAdd(item, *line);
    } else if (const auto line = RandomLine(item)) {
        DeleteLine(item, *line);
    }
    CompleteNames();
}

void KeyAmounts() {
    for (int part : {1, 3})
        for (double line : {1.0, 2.0, 2.01}) AddS2Line(Line(line), part);
    gDB.Execute("UPDATE Bp1 SET CC_100=1,CC_400=4,CC_600=6;");
    gDB.Execute("UPDATE B1p3 SET CC_800=8,CC_900=9,CC_2800=28;");
    gDB.Execute("UPDATE A SET Col_1=LineNum;");
}

void CheckThatADeleteRestores(std::string_view item, Currency line) {
    const auto before = DumpCrf();
    if (TryAdd(item, line)) RC_ASSERT(DeleteLine(item, line) == LineResult::Done);
    RC_ASSERT(DumpCrf() == before);
}

RC_GTEST_FIXTURE_PROP(TestCrf, DeletingWhatWasAddedRestoresTheFile, ()) {
    RunBatch(gDB, [] {
        KeyAmounts();
        const int changes = *rc::gen::inRange(0, 8);
        for (int i = 0; i < changes; ++i) ChangeAtRandom();
        const auto item = RandomItem();
        if (const auto line = RandomOffer(item)) CheckThatADeleteRestores(item, *line);
    });
}

}  // namespace
}  // namespace zolmara::test
