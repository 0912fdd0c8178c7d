#include "ecr/EcrSupport.h"
#include "ecr/Emitters.h"

namespace zolmara::test {
namespace {

class CellRecords : public EcrCrf {
protected:
    /// A record of a worksheet whose lines and columns have no subscripts.
    static std::string Record(std::string_view code, int line, int column, std::string_view value) {
        return "3" + std::string(code) + "  " + InField(std::to_string(line), -3) + "  " +
               InField(std::to_string(column), -3) + "  " + std::string(value);
    }
    void Empty(const std::string& table) { gDB.Execute("DELETE * FROM " + table + ";"); }
};

// --- A -------------------------------------------------------------------------------------

TEST_F(CellRecords, TheWorkedExampleOfWorksheetA) {
    Empty("A");
    AddRow("A", 1, {{"Col_1", 1000}});
    EXPECT_EQ(RecordsOf("A"), Lines{"3A000000    1    1              1000"});
}

TEST_F(CellRecords, ACentSizedResidueOfAIsDropped) {
    Empty("A");
    AddRow("A", 8,
           {{"Col_1", 0.0005},
            {"Col_2", 0.001},
            {"Col_3", 0.0011},
            {"Col_4", -0.0011},
            {"Col_5", -0.001},
            {"Col_6", 0},
            {"Col_8", 0.99}});
    EXPECT_EQ(RecordsOf("A"),
              (Lines{Record("A000000", 8, 3, Amount("0")), Record("A000000", 8, 4, Amount("0")),
                     Record("A000000", 8, 8, Amount("0"))}));
}

TEST_F(CellRecords, OtherCapitalCostsHaveNoAdjustmentAndNoFunctionalColumn) {
    Empty("A");
    for (const double line : {3.0, 4.0, 4.01, 7.0, 7.99, 8.0})
        AddRow("A", line, {{"Col_4", 4}, {"Col_6", 6}, {"Col_7", 7}});
    const Lines lines = RecordsOf("A");
    EXPECT_EQ(lines.size(), 3u + 4 + 3);
    for (const char* start :
         {"3A000000    4  ", "3A000000    4 1", "3A000000    7  ", "3A000000    799"})
        EXPECT_EQ(StartingWith(lines, start), Lines{start + ("  6  " + Amount("6"))});
    EXPECT_EQ(StartingWith(lines, "3A000000    3  ").size(), 3u);
    EXPECT_EQ(StartingWith(lines, "3A000000    8  ").size(), 3u);
}

TEST_F(CellRecords, LineZeroIsBlankOnAAndA81Only) {
    Empty("A");
    AddRow("A", 0, {{"Col_1", 5}});
    EXPECT_EQ(RecordsOf("A"), Lines{"3A000000         1  " + Amount("5")});
    Empty("A81p1");
    AddRow("A81p1", 0, {{"Col_5", 5}});
    EXPECT_EQ(RecordsOf("A81p1"), Lines{"3A810001         5  " + Amount("5")});
    Empty("G");
    AddRow("G", 0, {{"Col_1", 5}});
    EXPECT_EQ(RecordsOf("G"), Lines{"3G000000    0    1  " + Amount("5")});
}

// --- A-7 -----------------------------------------------------------------------------------

TEST_F(CellRecords, A7Part1) {
    Empty("A7p1");
    AddRow("A7p1", 1, {{"Col_1", 100.9}, {"Col_2", 0}, {"Col_5", -3}, {"Col_7", 0.004}});
    EXPECT_EQ(RecordsOf("A7p1"),
              (Lines{Record("A700001", 1, 1, Amount("100")), Record("A700001", 1, 5, Amount("-3")),
                     Record("A700001", 1, 7, Amount("0"))}));
}

TEST_F(CellRecords, A7Part2HasARatioInColumn4) {
    Empty("A7p2");
    AddRow("A7p2", 1.01, {{"Col_3", 10}, {"Col_4", 0.3333335}, {"Col_10", 8}, {"Col_15", 9}});
    EXPECT_EQ(
        RecordsOf("A7p2"),
        (Lines{"3A700002    1 1  3  " + Amount("10"), "3A700002    1 1  4  " + Amount("0.333334"),
               "3A700002    1 1 10  " + Amount("8"), "3A700002    1 1 15  " + Amount("9")}));
}

// --- A-8 -----------------------------------------------------------------------------------

TEST_F(CellRecords, A8PassesOverWhatTheFormPrints) {
    Empty("A8");
    for (const int line : {1, 12, 17, 18, 100})
        AddRow("A8", line,
               {{"Col_1", "Text"},
                {"Col_2", "B"},
                {"Col_3", -5.5},
                {"Col_4", "Name"},
                {"Col_5", 14.01}});
    const std::string text = InField("TEXT", 36);
    const std::string name = InField("NAME", 36);
    EXPECT_EQ(RecordsOf("A8"),
              (Lines{Record("A800000", 1, 2, "B"), Record("A800000", 1, 3, Amount("-5")),
                     Record("A800000", 1, 4, name), Record("A800000", 1, 5, Amount("14.01")),
                     Record("A800000", 12, 3, Amount("-5")), Record("A800000", 17, 2, "B"),
                     Record("A800000", 17, 3, Amount("-5")), Record("A800000", 17, 4, name),
                     Record("A800000", 17, 5, Amount("14.01")), Record("A800000", 18, 1, text),
                     Record("A800000", 18, 2, "B"), Record("A800000", 18, 3, Amount("-5")),
                     Record("A800000", 18, 4, name), Record("A800000", 18, 5, Amount("14.01")),
                     Record("A800000", 100, 3, Amount("-5")),
                     Record("A800000", 100, 5, Amount("14.01"))}));
}

// --- A-8-1 ---------------------------------------------------------------------------------

TEST_F(CellRecords, A81Part1) {
    Empty("A81p1");
    for (const int line : {1, 100})
        AddRow("A81p1", line,
               {{"Col_1", 14},
                {"Col_2", "Legal"},
                {"Col_3", "Rent"},
                {"Col_4", 2},
                {"Col_5", 7},
                {"Col_6", 9},
                {"Col_7", -2}});
    EXPECT_EQ(
        RecordsOf("A81p1"),
        (Lines{
            Record("A810001", 1, 1, Amount("14.00")), Record("A810001", 1, 2, InField("LEGAL", 36)),
            Record("A810001", 1, 3, InField("RENT", 36)), Record("A810001", 1, 4, Amount("2.00")),
            Record("A810001", 1, 5, Amount("7")), Record("A810001", 1, 6, Amount("9")),
            Record("A810001", 1, 7, Amount("-2")), Record("A810001", 100, 5, Amount("7")),
            Record("A810001", 100, 6, Amount("9")), Record("A810001", 100, 7, Amount("-2"))}));
}

TEST_F(CellRecords, A81Part2TakesSymbolsFromAToG) {
    Empty("A81p2");
    const std::vector<std::pair<double, Variant>> symbols = {
        {1, "A"}, {2, "g"}, {3, "H"}, {4, Variant()}, {5, ""}, {6, "GA"}, {7, "Bx"}, {8, "1"}};
    for (const auto& [line, symbol] : symbols)
        AddRow("A81p2", line, {{"Col_1", symbol}, {"Col_2", "Tie"}});
    Lines written;
    for (const std::string& line : RecordsOf("A81p2"))
        if (line.substr(15, 3) == "  1") written.push_back(line.substr(10, 3) + line.substr(20));
    EXPECT_EQ(written, (Lines{"  1A", "  2G", "  7B"}));
}

TEST_F(CellRecords, A81Part2WritesLines1To50) {
    Empty("A81p2");
    for (const double line : {0.5, 1.0, 50.0, 50.01, 51.0})
        AddRow("A81p2", line,
               {{"Col_1", "C"},
                {"Col_4", 33.335},
                {"Col_5", "Org"},
                {"Col_6", 100},
                {"Col_7", "Lab"}});
    const Lines lines = RecordsOf("A81p2");
    EXPECT_EQ(lines.size(), 10u);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 5),
              (Lines{Record("A810002", 1, 1, "C"), Record("A810002", 1, 4, Amount("33.34")),
                     Record("A810002", 1, 5, InField("ORG", 36)),
                     Record("A810002", 1, 6, Amount("100.00")),
                     Record("A810002", 1, 7, InField("LAB", 36))}));
    EXPECT_EQ(lines.at(9).substr(10, 5), " 50  ");
}

// --- G, G-1 --------------------------------------------------------------------------------

TEST_F(CellRecords, GHasOneColumn) {
    Empty("G");
    AddRow("G", 1, {{"Description", "Cash"}, {"Col_1", 12.6}});
    AddRow("G", 9.01, {{"Col_1", -7}});
    EXPECT_EQ(RecordsOf("G"), (Lines{Record("G000000", 1, 1, Amount("12")),
                                     "3G000000    9 1  1  " + Amount("-7")}));
}

TEST_F(CellRecords, G1NamesOnlyTheLinesThatTheUserNames) {
    Empty("G1");
    for (const double line : {9.0, 9.99, 10.0, 14.0, 15.0, 15.5, 16.0, 20.0, 20.99, 21.0, 22.0})
        AddRow("G1", line, {{"Col_1", "Gift"}, {"Col_2", 3}});
    const Lines lines = RecordsOf("G1");
    Lines named;
    for (const std::string& line : lines)
        if (line.substr(15, 3) == "  1") named.push_back(line.substr(10, 5));
    EXPECT_EQ(named, (Lines{" 10  ", " 14  ", " 16  ", " 20  ", " 2099"}));
    EXPECT_EQ(lines.size(), 11u + named.size());
    EXPECT_EQ(StartingWith(lines, "3G100000   10").at(0),
              Record("G100000", 10, 1, InField("GIFT", 36)));
}

// --- S -------------------------------------------------------------------------------------

TEST_F(CellRecords, Sp1KeepsTheFirstCharacter) {
    Empty("Sp1");
    AddRow("Sp1", 1, {{"Col_1", "Yes"}});
    AddRow("Sp1", 2, {{"Col_1", "0"}});
    AddRow("Sp1", 3, {{"Col_1", " 0 "}});
    AddRow("Sp1", 4, {{"Col_1", "0.00"}});
    AddRow("Sp1", 5, {{"Col_1", "  "}});
    AddRow("Sp1", 6, {{"Col_1", " b"}});
    EXPECT_EQ(RecordsOf("Sp1"), (Lines{Record("S000001", 1, 1, "Y"), Record("S000001", 4, 1, "0"),
                                       Record("S000001", 6, 1, " ")}));
}

TEST_F(CellRecords, S1Part1HasAFormForEachLine) {
    Empty("S1p1");
    for (int line = 1; line <= 6; ++line) {
        std::vector<std::pair<std::string, Variant>> cells;
        for (int column = 1; column <= 6; ++column)
            cells.emplace_back("Col_" + std::to_string(column), "x1/2/2023-");
        AddRow("S1p1", line, cells);
    }
    AddRow("S1p1", 5.01, {{"Col_1", "x"}});
    const std::string wide = InField("X1/2/2023-", 36);
    EXPECT_EQ(RecordsOf("S1p1"),
              (Lines{Record("S100001", 1, 1, wide),         Record("S100001", 1, 2, wide),
                     Record("S100001", 1, 3, "X1/2/2023"),  Record("S100001", 1, 4, wide),
                     Record("S100001", 1, 5, "X1"),         Record("S100001", 1, 6, "X1/2/2023-"),
                     Record("S100001", 2, 1, wide),         Record("S100001", 2, 2, "X1/2/2"),
                     Record("S100001", 2, 3, "x1/2/2023-"), Record("S100001", 2, 4, "x1/2/2023-"),
                     Record("S100001", 2, 5, "x1/2/2023-"), Record("S100001", 3, 1, "X1"),
                     Record("S100001", 3, 2, wide),         Record("S100001", 4, 1, "X"),
                     Record("S100001", 4, 2, "X"),          Record("S100001", 4, 3, "X"),
                     Record("S100001", 4, 4, "x1/2/2023-"), Record("S100001", 4, 5, "X"),
                     Record("S100001", 5, 1, wide),         Record("S100001", 5, 2, wide),
                     Record("S100001", 5, 3, wide),         Record("S100001", 5, 4, wide),
                     Record("S100001", 5, 5, wide),         Record("S100001", 5, 6, wide)}));
}

TEST_F(CellRecords, DatesOfS1AreWrittenInFull) {
    Empty("S1p1");
    AddRow("S1p1", 2, {{"Col_2", "12-3456"}, {"Col_3", "7/1/1987"}, {"Col_4", "2022-10-01"}});
    EXPECT_EQ(RecordsOf("S1p1"),
              (Lines{Record("S100001", 2, 2, "123456"), Record("S100001", 2, 3, "07/01/1987"),
                     Record("S100001", 2, 4, "10/01/2022")}));
}

TEST_F(CellRecords, S1Part2NamesThePositionsFromLine6On) {
    Empty("S1p2");
    for (const double line : {1.0, 5.0, 5.99, 6.0})
        AddRow("S1p2", line, {{"Col_1", "Chief"}, {"Col_2", "Zoë Lee"}});
    const std::string name = "ZO\xCB LEE" + std::string(29, ' ');
    EXPECT_EQ(RecordsOf("S1p2"),
              (Lines{Record("S100002", 1, 2, name), Record("S100002", 5, 2, name),
                     "3S100002    599  2  " + name, Record("S100002", 6, 1, InField("CHIEF", 36)),
                     Record("S100002", 6, 2, name)}));
}

TEST_F(CellRecords, S2Part1) {
    AddRow("S2p1", 1.02,
           {{"Col_1", "Hill"},
            {"Col_2", "14-0001"},
            {"Col_3", "Owned"},
            {"Col_4", "1/1/2023"},
            {"Col_5", "12/31/2023"},
            {"Col_6", "7/1/99"},
            {"Col_8", "Yes"},
            {"Col_9", "PPS"},
            {"Col_10", "06101-9"},
            {"Col_11", "HFS"}});
    const std::string head = "3S200001    1 2";
    EXPECT_EQ(RecordsOf("S2p1"),
              (Lines{head + "  1  " + InField("HILL", 36), head + "  2  140001", head + "  3  O",
                     head + "  4  01/01/2023", head + "  5  12/31/2023", head + "  6  07/01/1999",
                     head + "  8  Y", head + "  9  P", head + " 10  06101",
                     head + " 11  " + InField("HFS", 36)}));
}

TEST_F(CellRecords, S2Part2) {
    AddRow("S2p2", 1,
           {{"Col_1", "Laundry"},
            {"Col_4", "1/1/2023"},
            {"Col_5", "12/31/2023"},
            {"Col_6", "x"},
            {"Col_7", "3/4/2023"}});
    EXPECT_EQ(RecordsOf("S2p2"), (Lines{Record("S200002", 1, 1, InField("LAUNDRY", 36)),
                                        Record("S200002", 1, 4, "01/01/2023"),
                                        Record("S200002", 1, 5, InField("12/31/2023", 36)),
                                        Record("S200002", 1, 6, InField("X", 36)),
                                        Record("S200002", 1, 7, "03/04/2023")}));
}

TEST_F(CellRecords, S2Part3) {
    AddRow("S2p3", 1,
           {{"Col_1", "North"},
            {"Col_2", "14-9001"},
            {"Col_3", "a-b"},
            {"Col_4", "Gary"},
            {"Col_5", "Indiana"},
            {"Col_6", 12.6},
            {"Col_7", "Yes"},
            {"Col_8", "WPS"}});
    EXPECT_EQ(
        RecordsOf("S2p3"),
        (Lines{Record("S200003", 1, 1, InField("NORTH", 36)), Record("S200003", 1, 2, "149001"),
               Record("S200003", 1, 3, "A-B   "), Record("S200003", 1, 4, InField("GARY", 36)),
               Record("S200003", 1, 5, "IN"), Record("S200003", 1, 6, Amount("12")),
               Record("S200003", 1, 7, "Y"), Record("S200003", 1, 8, InField("WPS", 36))}));
}

TEST_F(CellRecords, Column3OfS2Part3TakesTheFormOfTheCellBefore) {
    AddRow("S2p3", 1, {{"Col_1", "North"}, {"Col_3", "abc"}, {"Col_7", "Yes"}});
    AddRow("S2p3", 2, {{"Col_3", "abc"}});
    EXPECT_EQ(RecordsOf("S2p3"),
              (Lines{Record("S200003", 1, 1, InField("NORTH", 36)),
                     Record("S200003", 1, 3, InField("ABC", 36)), Record("S200003", 1, 7, "Y"),
                     Record("S200003", 2, 3, "A")}));
}

TEST_F(CellRecords, Column3OfS2Part3WithNoCellBeforeHasNoForm) {
    AddRow("S2p3", 1, {{"Col_3", "abc"}});
    EXPECT_EQ(RecordsOf("S2p3"), Lines{Record("S200003", 1, 3, "")});
}

// --- The signature -------------------------------------------------------------------------

class SignatureRecords : public CellRecords {
protected:
    void Sign(const Variant& first, const Variant& last, const Variant& title,
              const Variant& date) {
        gDB.Execute("Update Master Set ESFirstName=?, ESLastName=?, ESTitle=?, ESDate=?;",
                    {first, last, title, date});
    }
};

TEST_F(SignatureRecords, FiveLinesBehindTheStatus) {
    Sign("Ann", "O'Hara", "Chief Financial Officer", DateTime(2024, 3, 5, 16, 20, 0));
    const Lines lines = RecordsOf("Sp1");
    EXPECT_EQ(lines,
              (Lines{"3S000001    1    1  N", "3S000002    1    1  " + InField("Ann O'Hara", 36),
                     "3S000002    1    2  Y", "3S000002    2    1  " + InField("Ann O'Hara", 36),
                     "3S000002    3    1  " + InField("Chief Financial Officer", 36),
                     "3S000002    4    1  03/05/2024"}));
}

TEST_F(SignatureRecords, NoneWhenItIsSignedByHand) {
    Sign("Ann", "Lee", "CFO", Variant());
    EXPECT_EQ(StartingWith(RecordsOf("Sp1"), "3S000002"), Lines{});
}

TEST_F(SignatureRecords, ALongNameIsCutAndMissingNamesAreBlank) {
    Sign(std::string(30, 'a'), std::string(30, 'b'), Variant(), DateTime(2024, 3, 5));
    const Lines lines = StartingWith(RecordsOf("Sp1"), "3S000002");
    EXPECT_EQ(lines.at(0).substr(20), std::string(30, 'a') + " bbbbb");
    EXPECT_EQ(lines.at(3).substr(20), std::string(36, ' '));
}

TEST_F(SignatureRecords, AStatementWithoutMasterRowHasNone) {
    Empty("Master");
    EXPECT_EQ(StartingWith(RecordsOf("Sp1"), "3S000002"), Lines{});
}

// --- All worksheets ------------------------------------------------------------------------

class Type3 : public CellRecords {};

TEST_F(Type3, WorksheetsComeByItem) {
    Records([](EcrRun& run) { ECR_Type3(run); });
    const Lines expected = {"A",   "A-6",          "A-7  Part-1",  "A-7  Part-2",
                            "A-8", "A-81  Part-1", "A-81  Part-2", "B-1  Part-1"};
    Lines shown;
    for (const std::string& event : host.Events)
        if (event.starts_with("ShowCalcMsg: ")) shown.push_back(event.substr(13));
    ASSERT_EQ(shown.size(), 46u);
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(shown.at(i), "Producing Type 3 For Worksheet: " + expected.at(i));
    EXPECT_EQ(shown.back(), "Producing Type 3 For Worksheet: S  Part-1");
    EXPECT_EQ(shown.at(10), "Producing Type 3 For Worksheet: B  Part-1");
}

TEST_F(Type3, OnlyRegisteredWorksheetsAreWritten) {
    SetCell("G", 1, "Col_1", 5);
    gDB.Execute("UPDATE Worksheets SET Calc_Lvl=999 WHERE Item='G';");
    EXPECT_EQ(StartingWith(Records([](EcrRun& run) { ECR_Type3(run); }), "3G000000"), Lines{});
    gDB.Execute("UPDATE Worksheets SET Calc_Lvl=998 WHERE Item='G';");
    EXPECT_EQ(StartingWith(Records([](EcrRun& run) { ECR_Type3(run); }), "3G000000").size(), 1u);
}

TEST_F(Type3, TheInterfaceBreathesAtEveryRow) {
    const int before = host.DoEventsCount;
    RecordsOf("A");
    EXPECT_GE(host.DoEventsCount - before, Rows("A"));
}

TEST_F(Type3, AMissingTableEndsItWithTheStoresWords) {
    gDB.DeleteTable("G1");
    EXPECT_THROW(Records([](EcrRun& run) { ECR_Type3(run); }), StoreError);
}

}  // namespace
}  // namespace zolmara::test
