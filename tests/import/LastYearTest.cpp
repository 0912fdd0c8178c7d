// This year's file started from last year's.

#include <filesystem>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "import/ImportSource.h"
#include "import/ImportWorksheets.h"
#include "import/LastYear.h"
#include "import/Period.h"
#include "store/FilledCrf.h"
#include "structure/AddDeleteCC.h"
#include "structure/Shape.h"
#include "structure/modAddS2.h"
#include "support/Paths.h"
#include "support/TestCrf.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

// --- Periods -----------------------------------------------------------------------------------

Period FromTo(int y1, unsigned m1, unsigned d1, int y2, unsigned m2, unsigned d2) {
    return {DateTime(y1, m1, d1), DateTime(y2, m2, d2)};
}

TEST(NextPeriodTest, AWholeYearIsFollowedByAWholeYear) {
    EXPECT_EQ(NextPeriod(FromTo(2022, 10, 1, 2023, 9, 30)), FromTo(2023, 10, 1, 2024, 9, 30));
    EXPECT_EQ(NextPeriod(FromTo(2023, 7, 15, 2024, 7, 14)), FromTo(2024, 7, 15, 2025, 7, 14));
}

TEST(NextPeriodTest, LeapDaysBelongToTheYear) {
    EXPECT_EQ(NextPeriod(FromTo(2023, 3, 1, 2024, 2, 29)), FromTo(2024, 3, 1, 2025, 2, 28));
    EXPECT_EQ(NextPeriod(FromTo(2023, 1, 1, 2023, 12, 31)), FromTo(2024, 1, 1, 2024, 12, 31));
}

TEST(NextPeriodTest, WholeMonthsAreFollowedByAsMany) {
    EXPECT_EQ(NextPeriod(FromTo(2023, 1, 1, 2023, 6, 30)), FromTo(2023, 7, 1, 2023, 12, 31));
    EXPECT_EQ(NextPeriod(FromTo(2023, 11, 1, 2024, 2, 29)), FromTo(2024, 3, 1, 2024, 6, 30));
    EXPECT_EQ(NextPeriod(FromTo(2023, 1, 1, 2024, 3, 31)), FromTo(2024, 4, 1, 2025, 6, 30));
}

TEST(NextPeriodTest, AnyOtherLengthIsFollowedByAYear) {
    EXPECT_EQ(NextPeriod(FromTo(2022, 11, 17, 2023, 6, 30)), FromTo(2023, 7, 1, 2024, 6, 30));
}

TEST(NextPeriodTest, AStartThatIsGivenKeepsTheLength) {
    EXPECT_EQ(NextPeriod(FromTo(2023, 1, 1, 2023, 6, 30), DateTime(2024, 1, 1)),
              FromTo(2024, 1, 1, 2024, 6, 30));
}

// --- The new file ------------------------------------------------------------------------------

class LastYear : public SessionTest {
protected:
    LastYear() {
        CreateCrf(last_, {"287", "14-9012", "1/1/2023", "12/31/2023", "Northfield Health System"});
        ImportAsciiFile(std::string(kSamples) + "/northfield.txt");
    }
    /// Calculates and closes last year's file as it is now, and opens it as the source.
    void Turn() {
        Calc_All();
        shapes_ = Shapes();
        costCenters_ = Dump("CostCenters");
        bytes_.clear();
        DropCrf();
        bytes_ = BytesOf(last_);
        ASSERT_EQ(OpenImportSource(last_), SourceResult::Open);
        host.Forget();
    }
    void Make(std::vector<std::string> takeAlong = {}) {
        const NewCrfFields fields = FieldsAfterLastYear("", "");
        ASSERT_TRUE(CreateFromLastYear(new_, fields, takeAlong));
    }
    static std::string Dump(std::string_view table) {
        std::string text;
        Recordset rows = gDB.OpenRecordset(std::string(table));
        for (; !rows.Eof(); rows.MoveNext())
            for (int i = 0; i < rows.FieldCount(); ++i) text += StrOr(rows[i], "Null") + "|";
        return text;
    }
    /// The columns and, where they follow the structure, the lines of every worksheet.
    static std::vector<std::string> Shapes() {
        std::vector<std::string> shapes;
        for (const Worksheet& sheet : AllWorksheets()) {
            std::string shape(sheet.Item);
            for (const auto& column : Columns(sheet.Item)) shape += " " + column;
            const bool free = sheet.Item == "A6" || sheet.Item == "A8" || sheet.Item == "G1" ||
                              sheet.Item.starts_with("A81");
            if (!free) shape += " / " + Lines(sheet.Item);
            shapes.push_back(shape);
        }
        return shapes;
    }
    /// The worksheets with an amount other than 0 in a field that is no text and no line number.
    static std::string WithAmounts() {
        std::string items;
        for (const Worksheet& sheet : AllWorksheets()) {
            double sum = 0;
            Recordset rows = gDB.OpenRecordset(std::string(sheet.Item));
            for (; !rows.Eof(); rows.MoveNext())
                for (int i = 1; i < rows.FieldCount(); ++i)
                    if (rows[i].IsNumber()) sum += std::abs(rows[i].Number());
            if (sum != 0) items += std::string(sheet.Item) + " ";
        }
        return items;
    }
    std::vector<std::string> Messages() {
        std::vector<std::string> texts;
        for (const auto& message : ImportMessages()) texts.push_back(message.Text);
        return texts;
    }

    std::string last_ = folder.File("Last.CRF");
    std::string new_ = folder.File("New.CRF");
    std::string bytes_;
    std::string costCenters_;
    std::vector<std::string> shapes_;
};

TEST_F(LastYear, TheStructureIsLastYears) {
    AddCostCenter(Currency(12.01));
    gDB.Execute("UPDATE CostCenters SET CCName='Dental Plan' WHERE LineNum=12.01;");
    RenameCostCenter(Currency(12.01), "Dental Plan");
    AddS2Line(Currency(2.01), 2);
    RenameS2Line(Currency(2.01), 2, "Parking, \"North\"", "");
    gDB.Execute(
        "INSERT INTO S1p1 (LineNum,Description,Col_6) VALUES (5.01,'more email "
        "address','cfo@northfieldhealth.example');");
    Turn();
    Make();
    const auto shapes = Shapes();
    ASSERT_EQ(shapes.size(), shapes_.size());
    for (std::size_t i = 0; i < shapes.size(); ++i) EXPECT_EQ(shapes[i], shapes_[i]);
    EXPECT_EQ(Dump("CostCenters"), costCenters_);
    EXPECT_EQ(Cell("A", 12.01, "CCName"), Variant("Dental Plan"));
    EXPECT_EQ(Cell("Bp2", 2.01, "Description"), Variant("Parking, \"North\""));
    EXPECT_EQ(Cell("S1p1", 5.01, "Col_6"), Variant("cfo@northfieldhealth.example"));
    EXPECT_EQ(gCRFPath, new_);
    CloseImportSource();
    EXPECT_EQ(BytesOf(last_), bytes_);
}

TEST_F(LastYear, IdentityContactsOfficersAndHeaderLinesComeOver) {
    gDB.Execute("UPDATE HeaderLines SET LineText='Draft' WHERE LineNum=2;");
    gDB.Execute(
        "UPDATE ES SET StatLabel1='Inpatient', StatLabel2='Days', StatCode=2 WHERE "
        "LineNum=3;");
    Turn();
    Make();
    EXPECT_EQ(gProviderNumber, "14-9012");
    EXPECT_EQ(gProviderName, "Northfield Health System");
    EXPECT_EQ(gFYStart, Variant(DateTime(2024, 1, 1)));
    EXPECT_EQ(gFYEnd, Variant(DateTime(2024, 12, 31)));
    EXPECT_EQ(Cell("S1p1", 1, "Col_1"), Variant("2200 Sheridan Commons Drive"));
    EXPECT_EQ(Cell("S1p1", 2, "Col_3"), Variant("07/01/1987"));
    EXPECT_EQ(Cell("S1p1", 2, "Col_4"), Variant("01/01/2024"));
    EXPECT_EQ(Cell("S1p1", 2, "Col_5"), Variant("12/31/2024"));
    EXPECT_EQ(Cell("S1p1", 3, "Col_1"), Variant("2"));
    EXPECT_EQ(Cell("S1p1", 5, "Col_2"), Variant("Oduya"));
    EXPECT_EQ(Cell("S1p2", 8, "Col_2"), Variant("Samir Haddad"));
    EXPECT_EQ(Cell("HeaderLines", 2, "LineText"), Variant("Draft"));
    EXPECT_EQ(Cell("ES", 3, "StatCode"), Variant(2));
}

TEST_F(LastYear, NoAmountNoStatisticNoAnswerOfTheYearAndNoSignatureComeOver) {
    gDB.Execute("UPDATE Master SET ESLastName='Oduya', ESDate=?;", {DateTime(2024, 5, 1)});
    gDB.Execute("UPDATE Sp1 SET Col_1='1' WHERE LineNum=2;");
    Turn();
    Make();
    EXPECT_EQ(WithAmounts(), "");
    EXPECT_EQ(gDB.Scalar("SELECT ESLastName FROM Master;"), Variant());
    EXPECT_EQ(gDB.Scalar("SELECT ESDate FROM Master;"), Variant());
    EXPECT_EQ(Cell("Sp1", 2, "Col_1"), Variant("0"));
    EXPECT_EQ(Cell("S1p1", 4, "Col_1"), Variant());
    EXPECT_EQ(Lines("A6"), "100");
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) AS C FROM S2p3 WHERE Col_6 Is Not Null;"), Variant(0));
}

TEST_F(LastYear, ComponentDatesOfTheOldPeriodBecomeTheNewOnesAndOthersAreNamed) {
    for (const char* table : {"S2p1", "S2p2"})
        gDB.Execute(std::string("UPDATE ") + table + " SET Col_4='1/1/2023', Col_5='2023-12-31';");
    SetCell("S2p1", 2, "Col_5", "06/30/2023");
    SetCell("S2p1", 3, "Col_4", "soon");
    SetCell("S2p1", 4, "Col_4", Variant());
    Turn();
    Make();
    EXPECT_EQ(Cell("S2p1", 1, "Col_4"), Variant("01/01/2024"));
    EXPECT_EQ(Cell("S2p1", 1, "Col_5"), Variant("12/31/2024"));
    EXPECT_EQ(Cell("S2p2", 1, "Col_4"), Variant("01/01/2024"));
    EXPECT_EQ(Cell("S2p1", 2, "Col_4"), Variant("01/01/2024"));
    EXPECT_EQ(Cell("S2p1", 2, "Col_5"), Variant());
    EXPECT_EQ(Cell("S2p1", 3, "Col_4"), Variant());
    EXPECT_EQ(Cell("S2p1", 4, "Col_4"), Variant());
    EXPECT_EQ(Cell("S2p1", 1, "Col_6"), Variant("07/01/1987"));
    const auto name = StrOr(Cell("S2p1", 3, "Col_1"));
    EXPECT_EQ(Messages(),
              (std::vector<std::string>{
                  "Line 2 of S2p1, \"Lakeside Community Hospital\": Report Ending 06/30/2023 is "
                  "not that of last year's period and has been left empty.",
                  "Line 3 of S2p1, \"" + name +
                      "\": Report Beginning soon is not that of last year's period and has been "
                      "left empty."}));
}

TEST_F(LastYear, TheKeyedCellsOfNamedWorksheetsComeAlongWithoutComputedOnes) {
    gDB.Execute(
        "INSERT INTO A8 (LineNum,Col_1,Col_2,Col_3,Col_5) VALUES "
        "(20.01,'Golf outing','A',-50,18);");
    Turn();
    const double keyed = NumOr(gImportDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=9;"));
    Make({"A", "A8", "C1p1"});
    EXPECT_NE(keyed, 0);
    EXPECT_EQ(Cell("A", 9, "Col_1"), Variant(keyed));
    EXPECT_EQ(Cell("A", 9, "Col_3"), Variant());
    EXPECT_EQ(Cell("A", 100, "Col_1"), Variant());
    EXPECT_EQ(Cell("A", 100, "CCName"), Variant("Total"));
    EXPECT_EQ(Cell("A8", 20.01, "Col_1"), Variant("Golf outing"));
    EXPECT_EQ(Cell("A8", 20.01, "Col_3"), Variant(-50.0));
    EXPECT_EQ(Cell("C1p1", 51, "CC_100"), Variant());
    EXPECT_EQ(gDB.Scalar("SELECT Sum(CC_100) AS S FROM C1p1 WHERE LineNum<51;"),
              gImportDB.Scalar("SELECT Sum(CC_100) AS S FROM C1p1 WHERE LineNum<51;"));
    EXPECT_EQ(WithAmounts(), "A8 C1p1 A ");
    Calc_All();
    EXPECT_EQ(Cell("A", 100, "Col_1"), gImportDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=100;"));
}

TEST_F(LastYear, EverythingTakenAlongGivesLastYearsFigures) {
    Turn();
    Make(WorksheetsToTakeAlong());
    Calc_All();
    for (const char* item : {"A", "A7p2", "Bp3", "Cp1", "Dp3", "E", "E1p1", "F2p1", "G", "G1"}) {
        const auto rows = [&](Database& db) {
            std::string text;
            Recordset all =
                db.OpenRecordset("SELECT * FROM " + std::string(item) + " ORDER BY LineNum;");
            for (; !all.Eof(); all.MoveNext())
                for (int i = 0; i < all.FieldCount(); ++i) text += StrOr(all[i], "Null") + "|";
            return text;
        };
        EXPECT_EQ(rows(gDB), rows(gImportDB)) << item;
    }
}

TEST_F(LastYear, ACalculationOfTheNewFileRuns) {
    Turn();
    Make();
    host.Forget();
    Calc_All();
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) AS C FROM Log WHERE LogType='C';"), Variant(0));
}

TEST_F(LastYear, AWorksheetWithoutKeyedCellsIsRefusedAheadOfAnyFile) {
    Turn();
    EXPECT_THROW(Make({"A", "E"}), StoreError);
    EXPECT_THROW(Make({"Nonsense"}), StoreError);
    EXPECT_FALSE(fs::exists(new_));
}

TEST_F(LastYear, AFileWhoseTablesCannotBeCarriedLeavesNothing) {
    gDB.Execute("UPDATE CostCenters SET LineNum=1 WHERE LineNum=2;");
    DropCrf();
    ASSERT_EQ(OpenImportSource(last_), SourceResult::Open);
    EXPECT_THROW(Make(), StoreError);
    EXPECT_FALSE(fs::exists(new_));
    EXPECT_FALSE(CrfIsOpen());
}

TEST_F(LastYear, ATableThatLastYearsFileLacksIsNamed) {
    gDB.DeleteTable("HeaderLines");
    gDB.AppendField("S1p2", {.Name = "Col_3", .Type = FieldType::dbDouble});
    Turn();
    Make();
    EXPECT_EQ(Rows("HeaderLines"), 3);
    const auto texts = Messages();
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts[0], "Last year's file has no table HeaderLines.");
    EXPECT_EQ(texts[1], "Column Col_3 of last year's S1p2 has no place and was left out.");
}

TEST_F(LastYear, TheDatesThatAreGivenStand) {
    Turn();
    EXPECT_EQ(FieldsAfterLastYear("", "").FYStart, "1/1/2024");
    EXPECT_EQ(FieldsAfterLastYear("", "").FYEnd, "12/31/2024");
    EXPECT_EQ(FieldsAfterLastYear("2/1/2024", "").FYEnd, "1/31/2025");
    EXPECT_EQ(FieldsAfterLastYear("", "6/30/2024").FYStart, "1/1/2024");
    EXPECT_EQ(FieldsAfterLastYear("", "6/30/2024").FYEnd, "6/30/2024");
    EXPECT_EQ(FieldsAfterLastYear("nonsense", "").FYStart, "nonsense");
}

TEST_F(LastYear, AFileWithoutAPeriodNeedsItGiven) {
    gDB.Execute("UPDATE Master SET FYEnd=Null;");
    Turn();
    NewCrfFields fields = FieldsAfterLastYear("", "");
    EXPECT_EQ(fields.FYStart, "");
    EXPECT_EQ(CheckNewCrfFields(fields), NewCrfField::FYStart);
}

}  // namespace
}  // namespace zolmara::test
