// The exported workbook, read back from its XML: its formulas are evaluated against the values that
// stand beside them, and against the CRF.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

#include "calc/Calc_All.h"
#include "editchecks/modEditChecks.h"
#include "spreadsheet/BookEvaluator.h"
#include "spreadsheet/Export.h"
#include "spreadsheet/GeneratedStatement.h"
#include "store/files/FileDoor.h"
#include "support/TestCrf.h"
#include "worksheets/Descriptions.h"
#include "worksheets/ExplainedStatements.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using test::Book;
using test::BookAddress;
using test::BookCell;
using test::BookValue;
using Faults = std::vector<std::string>;

std::string Shown(const BookValue& value) {
    using enum test::BookKind;
    if (value.Kind == Number) return fmt::format("{:.17g}", value.Number);
    return value.Kind == Blank ? "nothing" : "\"" + value.Text + "\"";
}

bool IsNothing(const BookValue& value) {
    using enum test::BookKind;
    return value.Kind == Blank || (value.Kind == Number && value.Number == 0) ||
           (value.Kind == Text && value.Text.empty());
}

/// Amounts are equal to their four decimals, ratios within a billionth.
bool Same(const BookValue& a, const BookValue& b) {
    using enum test::BookKind;
    if (IsNothing(a) && IsNothing(b)) return true;
    if (a.Kind != b.Kind) return false;
    if (a.Kind != Number) return a.Kind != Error && a.Text == b.Text;
    if (std::abs(a.Number) <= 1) return std::abs(a.Number - b.Number) <= 1e-9;
    return Currency(a.Number) == Currency(b.Number);
}

BookValue ValueOf(const Variant& value) {
    if (value.IsNumber()) return {.Kind = test::BookKind::Number, .Number = value.Number()};
    if (value.IsNull()) return {};
    return {.Kind = test::BookKind::Text, .Text = Text(value)};
}

class Export : public test::SessionTest {
protected:
    std::string Path() const { return folder.File("out.xlsx"); }

    Book Written(const ExportChoice& choice = {}) {
        const ReplaceAsTold told(true, "");
        ExportWorkbook(Path(), choice);
        return Book(Path());
    }

    /// Every formula against the value that is stored with it. Gives how many there are.
    static int ProveFormulas(Book& book, Faults& faults) {
        int formulas = 0;
        for (const std::string& sheet : book.Sheets()) {
            for (const auto& [address, cell] : book.Cells(sheet)) {
                if (cell.Formula.empty()) continue;
                ++formulas;
                const BookValue& value = book.Value(sheet, address);
                if (!Same(value, cell.Cached) && faults.size() < 10)
                    faults.push_back(fmt::format("{} {},{}: {} not {}: {}", sheet, address.first,
                                                 address.second, Shown(value), Shown(cell.Cached),
                                                 cell.Formula));
            }
        }
        return formulas;
    }

    /// The row on a sheet of the first line: below the head of seven rows.
    static constexpr int kFirstRow = 8;

    /// Every cell of every worksheet against the CRF as it is now; evaluated, not as stored.
    static void ProveStatement(Book& book, Faults& faults) {
        for (const Worksheet& worksheet : AllWorksheets()) {
            const std::string item(worksheet.Item);
            Recordset rows = gDB.OpenRecordset(
                fmt::format("SELECT * FROM {} ORDER BY {};", item, worksheet.Key));
            for (int row = kFirstRow; !rows.Eof(); rows.MoveNext(), ++row)
                for (int i = 0; i < rows.FieldCount(); ++i) {
                    const BookValue& value = book.Value(item, {row, i});
                    if (!Same(value, ValueOf(rows[i])) && faults.size() < 10)
                        faults.push_back(fmt::format("{} line {} {}: {} not {}", item,
                                                     Text(rows[0]), rows.FieldName(i), Shown(value),
                                                     Shown(ValueOf(rows[i]))));
                }
        }
    }

    void Prove(int atLeast) {
        Book book = Written();
        Faults faults;
        EXPECT_GE(ProveFormulas(book, faults), atLeast);
        ProveStatement(book, faults);
        EXPECT_EQ(faults, Faults{});
    }

    static BookAddress Place(const std::string& item, double line, const std::string& field) {
        Recordset rows = gDB.OpenRecordset(fmt::format("SELECT * FROM {0} ORDER BY {1};", item,
                                                       gDB.Table(item).Fields.front().Name));
        for (int row = kFirstRow; !rows.Eof(); rows.MoveNext(), ++row)
            if (CurOr(rows[0]) == Currency(line)) return {row, rows.FieldIndex(field)};
        ADD_FAILURE() << item << " " << line;
        return {};
    }
};

TEST_F(Export, OfTheSampleHasFormulasThatComeToItsCells) {
    test::MakeNorthfield(folder);
    Prove(3000);
}

TEST_F(Export, OfPlantedMistakesHasFormulasThatComeToItsCells) {
    test::MakeNorthfieldWithMistakes(folder);
    Prove(3000);
}

TEST_F(Export, OfGeneratedStatementsHasFormulasThatComeToTheirCells) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        CreateCrf(folder.File("Made.CRF"), test::SampleFields());
        test::FillGenerated(folder.Path().string(), seed);
        Prove(500);
        DropCrf();
        std::filesystem::remove(folder.File("Made.CRF"));
    }
}

TEST_F(Export, ClosesColumnsWithCentsAndNegativeCosts) {
    test::MakeNorthfield(folder);
    gDB.Execute("UPDATE C1p3 SET CC_100=CC_100+.37, CC_200=-1234.56 WHERE LineNum=53;");
    gDB.Execute("UPDATE D1p3 SET CC_800=CC_800-.01, CC_2800=-777.77 WHERE LineNum=53;");
    gDB.Execute("UPDATE A7p2 SET Col_1=Col_1*1.37;");
    Calc_All();
    Prove(3000);
}

TEST_F(Export, KeepsPoolsWithoutStatisticsAsTheyWere) {
    test::MakeNorthfield(folder);
    for (const char* item : {"E1p1", "E1p2", "E1p3"})
        gDB.Execute(fmt::format("UPDATE {} SET Col_1=Null WHERE LineNum<51;", item));
    Calc_All();
    Prove(3000);
}

TEST_F(Export, OfANewFileHasFormulasToo) {
    CreateCrf(folder.File("New.CRF"), test::SampleFields());
    Calc_All();
    Prove(500);
}

TEST_F(Export, LetsTryWhatIf) {
    test::MakeNorthfield(folder);
    Book book = Written();
    const auto change = [&](const char* item, double line, const char* field, double by) {
        const double now = NumOr(test::Cell(item, line, field)) + by;
        book.Set(item, Place(item, line, field), now);
        test::SetCell(item, line, field, now);
    };
    change("A", 8, "Col_1", 1000003);
    change("A", 4, "Col_1", 777);
    change("D1p1", 1, "CC_800", 41);
    change("C1p3", 53, "CC_100", 12345);
    change("E1p2", 1, "Col_1", 99999);
    change("A7p2", 1, "Col_1", 31337);
    Calc_All();
    Faults faults;
    ProveStatement(book, faults);
    EXPECT_EQ(faults, Faults{});
}

TEST_F(Export, WritesEveryDescribedCellAsAFormula) {
    test::MakeNorthfield(folder);
    Book book = Written();
    Faults faults;
    for (const Worksheet& worksheet : AllWorksheets()) {
        const std::string item(worksheet.Item);
        Recordset rows =
            gDB.OpenRecordset(fmt::format("SELECT * FROM {} ORDER BY {};", item, worksheet.Key));
        for (int row = kFirstRow; !rows.Eof(); rows.MoveNext(), ++row)
            for (int i = 1; i < rows.FieldCount(); ++i) {
                const CellDescription* rule =
                    FindDescription({item, CurOr(rows[0]), rows.FieldName(i)});
                const bool computed = rule != nullptr && rule->Formula.Kind != NodeKind::Nothing &&
                                      rule->Formula.Kind != NodeKind::Constant;
                const auto cell = book.Cells(item).find({row, i});
                const bool isFormula =
                    cell != book.Cells(item).end() && !cell->second.Formula.empty();
                if (computed != isFormula && faults.size() < 10)
                    faults.push_back(
                        fmt::format("{} line {} {}", item, Text(rows[0]), rows.FieldName(i)));
            }
    }
    EXPECT_EQ(faults, Faults{});
}

TEST_F(Export, RoundsByTheFormsRuleAndNotByTheSpreadsheets) {
    test::MakeNorthfield(folder);
    Book book = Written();
    const std::string formula = book.Cells("Dp1").at(Place("Dp1", 1, "CC_800")).Formula;
    EXPECT_EQ(formula.find("ROUND("), std::string::npos) << formula;
    EXPECT_NE(formula.find("<0.000001"), std::string::npos) << formula;
}

TEST_F(Export, HidesTheHelperCells) {
    test::MakeNorthfield(folder);
    Book book = Written();
    const std::string xml = book.Xml("Dp1");
    EXPECT_NE(xml.find("hidden=\"1\"><c r=\"A"), std::string::npos);
    EXPECT_NE(xml.find("Row that takes the difference"), std::string::npos);
}

TEST_F(Export, KeepsTextThatBeginsLikeAFormulaAsText) {
    test::MakeNorthfield(folder);
    const char* const texts[] = {"=1+1", "+SUM(A1)", "-5", "@cmd"};
    for (int line = 1; line <= 4; ++line) test::SetCell("S1p2", line, "Col_2", texts[line - 1]);
    Book book = Written();
    for (int line = 1; line <= 4; ++line) {
        const BookCell& cell = book.Cells("S1p2").at(Place("S1p2", line, "Col_2"));
        EXPECT_EQ(cell.Formula, "");
        EXPECT_EQ(Shown(cell.Cached), fmt::format("\"{}\"", texts[line - 1]));
    }
}

TEST_F(Export, HasTheHeadTitlesFrozenPanesPrintTitlesAndThePageOfTheForm) {
    test::MakeNorthfield(folder);
    Book book = Written();
    const auto text = [&](const char* sheet, int row, int column) {
        return Shown(book.Cells(sheet).at({row, column}).Cached);
    };
    EXPECT_EQ(text("A8", 1, 0), "\"Northfield Health System\"");
    EXPECT_EQ(text("A8", 2, 0), "\"Provider CCN: 14-9012\"");
    EXPECT_EQ(text("A8", 3, 0), "\"Period from  1/1/2023  to  12/31/2023\"");
    EXPECT_EQ(text("A8", 4, 0), "\"Worksheet A-8: Adjustments to expenses\"");
    EXPECT_EQ(text("A8", 6, 3), "\"3\"");
    EXPECT_EQ(text("A8", 7, 3), "\"Amount\"");
    EXPECT_NE(book.Xml("A8").find("<pane xSplit=\"2\" ySplit=\"7\""), std::string::npos);
    EXPECT_EQ(book.Xml("A8").find("orientation=\"landscape\""), std::string::npos);
    EXPECT_NE(book.Xml("A").find("orientation=\"landscape\""), std::string::npos);
    EXPECT_NE(book.Xml("Bp1").find("orientation=\"landscape\""), std::string::npos);
    ASSERT_TRUE(book.Names().contains("_xlnm.Print_Titles"));
}

TEST_F(Export, HasTheSheetsInTheOrderOfTheForm) {
    test::MakeNorthfield(folder);
    const std::vector<std::string> sheets = Written().Sheets();
    ASSERT_GT(sheets.size(), 10u);
    EXPECT_EQ(std::vector<std::string>(sheets.begin(), sheets.begin() + 9),
              (std::vector<std::string>{"Sp1", "S1p1", "S1p2", "S2p1", "S2p2", "S2p3", "A", "A6",
                                        "A7p1"}));
    EXPECT_EQ(sheets.back(), "ES");
}

TEST_F(Export, PutsWideSchedulesOnSeveralPagesWithTheirFirstColumnsOnEach) {
    test::MakeNorthfield(folder);
    Book book = Written();
    EXPECT_NE(book.Xml("A").find("fitToHeight=\"0\""), std::string::npos);
    EXPECT_EQ(book.Xml("A").find("fitToWidth"), std::string::npos) << "one page across";
    EXPECT_NE(book.Xml("Dp1").find("fitToWidth=\""), std::string::npos);
    const std::string wide = book.Xml("Dp1");
    EXPECT_GE(Val(wide.substr(wide.find("fitToWidth=\"") + 12)), 2);
}

// On the second page the first columns stand again, and behind them other columns.
TEST_F(Export, WrapsAHeadThatIsLongerThanTheColumnsOnEachPage) {
    test::MakeNorthfield(folder);
    std::string longest;
    while (longest.size() < 140) longest += "word ";
    gDB.Execute("UPDATE HeaderLines SET LineText=? WHERE LineNum=1;", {Trim(longest)});
    gDB.Execute("UPDATE HeaderLines SET LineText='short' WHERE LineNum=2;");
    Book book = Written({{"Dp1", "A"}, false});
    const std::string wide = book.Xml("Dp1");
    EXPECT_NE(wide.find("<mergeCell ref=\"A4:C4\"/>"), std::string::npos);
    const std::string row = wide.substr(wide.find("<row r=\"4\""));
    EXPECT_GE(Val(row.substr(row.find(" ht=\"") + 5)), 30) << row.substr(0, 60);
    EXPECT_EQ(Shown(book.Cells("Dp1").at({4, 0}).Cached), "\"" + std::string(Trim(longest)) + "\"");
    EXPECT_EQ(wide.find("<mergeCell ref=\"A5:C5\"/>"), std::string::npos) << "a short one";
    EXPECT_EQ(book.Xml("A").find("<mergeCell"), std::string::npos) << "one page across";
}

// A spreadsheet program that is not told looks for the end of each sheet, which takes it seconds.
TEST_F(Export, PrintsFromTheHeadToTheLastLineWithoutTheHelpersBelow) {
    test::MakeNorthfield(folder);
    gDB.Execute("DELETE FROM HeaderLines;");
    Book book = Written({{"G"}, false});
    // Three lines of the home office, the title, a blank one, two of headings; 48 lines.
    ASSERT_EQ(NumOr(gDB.OpenRecordset("SELECT Count(*) FROM G;")[0]), 48);
    EXPECT_EQ(book.Names().at("_xlnm.Print_Area"), "G!$A$1:$C$55");
    Book formulas = Written();
    const int lastLine =
        7 + static_cast<int>(NumOr(gDB.OpenRecordset("SELECT Count(*) FROM Cp1;")[0]));
    ASSERT_GT(formulas.Cells("Cp1").rbegin()->first.first, lastLine) << "the helpers";
    const std::string areas = formulas.Names().at("_xlnm.Print_Area");  // of all sheets
    EXPECT_NE(areas.find(fmt::format("Cp1!$A$1:$G${}Cp2!", lastLine)), std::string::npos) << areas;
}

// 140 letters take the room of 122 figures. Those of G have 6, 44 and 17, so that seven empty
// columns of 8.43 are needed behind them.
TEST_F(Export, PrintsTheEmptyColumnsThatALongHeadFlowsOverInto) {
    test::MakeNorthfield(folder);
    gDB.Execute("UPDATE HeaderLines SET LineText=? WHERE LineNum=1;", {std::string(140, 'w')});
    EXPECT_TRUE(Written({{"G"}, false}).Names().at("_xlnm.Print_Area").starts_with("G!$A$1:$J$"));
}

// Nobody is held off meanwhile; but no workbook mixes two states.
TEST_F(Export, IsNotMixedOfTwoStates) {
    test::MakeNorthfield(folder);
    Database other = DBEngine::OpenDatabase(gCRFPath);
    bool done = false;
    host.OnDoEvents = [&] {
        if (!std::exchange(done, true))
            other.Execute("UPDATE A6 SET Col_1='Other' WHERE LineNum<100;");
    };
    try {
        Written();
        FAIL() << "a mixed workbook";
    } catch (const StoreError& error) {
        EXPECT_TRUE(error.IsFileError());
        EXPECT_EQ(std::string(error.what()),
                  Path() +
                      ": another program changed the statement meanwhile, so that the file would "
                      "show a part of it from before and a part from after; nothing was written");
    }
    EXPECT_TRUE(done);
    EXPECT_FALSE(std::filesystem::exists(Path()));
    Written();
    EXPECT_TRUE(std::filesystem::exists(Path()));
}

TEST_F(Export, IsToldOfAnothersChangeThatTakesATableAway) {
    test::MakeNorthfield(folder);
    Database other = DBEngine::OpenDatabase(gCRFPath);
    bool done = false;
    host.OnDoEvents = [&] {
        if (!std::exchange(done, true)) other.DeleteTable("G1");
    };
    try {
        Written();
        FAIL() << "a mixed workbook";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find("another program changed the statement"),
                  std::string::npos)
            << error.what();
    }
    EXPECT_FALSE(std::filesystem::exists(Path()));
}

TEST_F(Export, MakesRoomForTextsOfSeveralLines) {
    test::MakeNorthfield(folder);
    test::SetCell("S1p1", 1, "Col_1", std::string(40, 'x'));
    const std::string xml = Written().Xml("S1p1");
    const std::string row = xml.substr(xml.find("<row r=\"8\""));
    EXPECT_GE(Val(row.substr(row.find(" ht=\"") + 5)), 30) << row.substr(0, 60);
    EXPECT_NE(xml.find("<row r=\"10\">"), std::string::npos) << "a row of short texts";
}

TEST_F(Export, NamesTheTotals) {
    test::MakeNorthfield(folder);
    Book book = Written();
    const BookAddress total = Place("A", 100, "Col_5");
    ASSERT_TRUE(book.Names().contains("A_L100_C5"));
    EXPECT_EQ(book.Names().at("A_L100_C5"), fmt::format("'A'!$G${}", total.first));
}

TEST_F(Export, ListsTheFindingsWithLinksToTheirCells) {
    test::MakeNorthfieldWithMistakes(folder);
    Run_EditChecks();
    Book book = Written();
    EXPECT_EQ(book.Sheets().back(), "Findings");
    const std::size_t rows = static_cast<std::size_t>(test::Rows("Error"));
    EXPECT_GE(book.Cells("Findings").size(), 3 * rows);
    EXPECT_NE(book.Xml("Findings").find("<hyperlink ref=\"D2\" location=\"'"), std::string::npos);
}

TEST_F(Export, WritesPlainValuesWhereTheyAreAskedFor) {
    test::MakeNorthfield(folder);
    Book book = Written({.Values = true});
    Faults faults;
    EXPECT_EQ(ProveFormulas(book, faults), 0);
    ProveStatement(book, faults);
    EXPECT_EQ(faults, Faults{});
}

TEST_F(Export, OfSomeWorksheetsWritesWhatReadsOthersAsValues) {
    test::MakeNorthfield(folder);
    Book book = Written({.Items = {"g1", "A8", "A81P1"}});
    EXPECT_EQ(book.Sheets(), (std::vector<std::string>{"A8", "A81p1", "G1"}));
    Faults faults;
    EXPECT_GT(ProveFormulas(book, faults), 0);
    EXPECT_EQ(faults, Faults{});
    EXPECT_EQ(book.Cells("G1").at(Place("G1", 2, "Col_2")).Formula, "");
    EXPECT_NE(book.Cells("G1").at(Place("G1", 3, "Col_2")).Formula, "");
    EXPECT_NE(book.Cells("A8").at(Place("A8", 12, "Col_3")).Formula, "");
}

TEST_F(Export, RefusesWhatIsNoWorksheetAndKeepsAFileThatStands) {
    test::MakeNorthfield(folder);
    EXPECT_THROW(ExportWorkbook(Path(), {.Items = {"X9"}}), StoreError);
    EXPECT_FALSE(std::filesystem::exists(Path()));
    std::ofstream(Path()) << "somebody's";
    EXPECT_THROW(ExportWorkbook(Path()), FileKept);
    EXPECT_EQ(std::filesystem::file_size(Path()), 10u);
    const ReplaceAsTold told(true, "");
    EXPECT_THROW(ExportWorkbook(gCRFPath), StoreError);
}

}  // namespace
}  // namespace zolmara
