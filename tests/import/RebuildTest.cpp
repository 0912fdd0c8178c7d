// A worksheet made anew from nothing.

#include "import/Rebuild.h"
#include "store/FilledCrf.h"
#include "structure/AddDeleteCC.h"
#include "structure/Shape.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

class Rebuild : public SessionTest {
protected:
    Rebuild() {
        OpenFilledCopy(folder.File("Filled.CRF"));
        host.Forget();
    }
};

TEST_F(Rebuild, OffersTheWorksheetsInTheWindowsOrder) {
    const auto offered = RebuildableWorksheets();
    EXPECT_EQ(offered.size(), 42u);
    EXPECT_EQ(offered.front(), "A");
    EXPECT_EQ(offered[7], "Bp1");
    EXPECT_EQ(offered[25], "E");
    EXPECT_EQ(offered.back(), "S2p3");
    for (const auto item : offered) EXPECT_NE(FindWorksheet(item), nullptr) << item;
}

TEST_F(Rebuild, Bp1GetsTheNewColumnAndThePresentComponentsAndLosesItsStatistics) {
    SetCell("C1p1", 1, "CC_100", 12);
    ASSERT_TRUE(AddCostCenter(Currency(2.01)));
    AddS2Line(Currency(3), 1);
    RenameS2Line(Currency(3), 1, "Hospice", "14-0003");
    ASSERT_TRUE(RebuildWorksheet("Bp1"));
    EXPECT_EQ(CostCenterColumns("Bp1"), "CC_100 CC_200 CC_201 CC_400 CC_401 CC_500 CC_600");
    EXPECT_EQ(Lines("Bp1"), "1 2 3 51");
    EXPECT_EQ(Cell("Bp1", 3, "Description"), Variant("Hospice"));
    EXPECT_EQ(Cell("Bp1", 3, "Col_0"), Variant("14-0003"));
    EXPECT_EQ(Cell("Bp1", 1, "CC_100"), Variant());
    ASSERT_TRUE(RebuildWorksheet("C1p1"));
    EXPECT_EQ(Cell("C1p1", 1, "CC_100"), Variant());
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(Rebuild, F2p1CanBeMadeThoughItIsNotOffered) {
    gDB.DeleteTable("F2p1");
    EXPECT_TRUE(RebuildWorksheet("F2p1"));
    EXPECT_EQ(Lines("F2p1"), "1 2 51");
}

/// The shape that a table has in a file whose structure was added step by step is the one that it
/// gets when it is made anew.
class RebuildEach : public Rebuild, public ::testing::WithParamInterface<std::string> {};

TEST_P(RebuildEach, KeepsTheShapeThatAddedCostCentersAndComponentsGave) {
    for (const double line : {2.01, 8.01, 29.0, 29.01, 30.0}) {
        ASSERT_TRUE(AddCostCenter(Currency(line)));
        gDB.Execute("UPDATE CostCenters SET CCName=? WHERE LineNum=?;",
                    {"Center " + NumberText(line), Currency(line)});
        RenameCostCenter(Currency(line), "Center " + NumberText(line));
    }
    for (const double line : {3.0, 3.01, 4.0}) {
        AddS2Line(Currency(line), 1);
        RenameS2Line(Currency(line), 1, "Component " + NumberText(line), "14-1");
    }
    const std::string item = GetParam();
    const auto columns = Columns(item);
    const auto lines = Lines(item);
    const bool ownLines = item.starts_with("S2") || item == "A6" || item.starts_with("A81");
    ASSERT_TRUE(RebuildWorksheet(item));
    EXPECT_EQ(Columns(item), columns);
    if (!ownLines) {
        EXPECT_EQ(Lines(item), lines);
    }
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) AS C FROM Worksheets WHERE Item=?;", {item}), Variant(1));
    EXPECT_EQ(gDB.Table(item).Indexes.size(), 1u);
}

std::vector<std::string> AllItems() {
    std::vector<std::string> items;
    for (const Worksheet& sheet : AllWorksheets()) items.emplace_back(sheet.Item);
    return items;
}
INSTANTIATE_TEST_SUITE_P(All, RebuildEach, ::testing::ValuesIn(AllItems()),
                         [](const auto& item) { return item.param; });

TEST_F(Rebuild, TheWorksheetsOwnWindowIsClosed) {
    host.OpenForms = {"frmEditA6", "frmViewA8"};
    RebuildWorksheet("A6");
    EXPECT_EQ(host.OpenForms, std::set<std::string>{"frmViewA8"});
    EXPECT_LT(host.IndexOf("SetPointer: Hourglass"), host.IndexOf("UnloadForm: frmEditA6"));
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
}

TEST_F(Rebuild, ANameThatIsNoWorksheetIsReportedAndChangesNothing) {
    const auto before = DumpCrf();
    for (const char* item : {"A82", "S3p1", "CostCenters", "Master", ""}) {
        host.Forget();
        EXPECT_FALSE(RebuildWorksheet(item));
        ASSERT_EQ(host.Boxes.size(), 1u);
        EXPECT_EQ(host.Boxes[0].Title, "Worksheet Not Built\"");
        EXPECT_EQ(host.Boxes[0].Text, std::string("ERROR, worksheet '") + item +
                                          "' has NOT been successfully rebuilt.");
        EXPECT_EQ(host.Boxes[0].Style, kCritical);
    }
    EXPECT_EQ(DumpCrf(), before);
}

TEST_F(Rebuild, AFailureLeavesTheOldTable) {
    gDB.DeleteTable("S2p1");
    const auto before = DumpCrf();
    EXPECT_FALSE(RebuildWorksheet("Bp1"));
    ASSERT_EQ(host.Boxes.size(), 2u);
    EXPECT_EQ(host.Boxes[0].Title, "Worksheet Bp1 Error");
    EXPECT_EQ(host.Boxes[1].Text, "ERROR, worksheet 'Bp1' has NOT been successfully rebuilt.");
    EXPECT_EQ(DumpCrf(), before);
}

}  // namespace
}  // namespace zolmara::test
