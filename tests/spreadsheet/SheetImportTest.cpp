// The import of what spreadsheets write, and of what strangers make of it.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <fstream>

#include "import/ImportTools.h"
#include "spreadsheet/ImportFile.h"
#include "spreadsheet/SheetFiles.h"
#include "spreadsheet/SheetLines.h"
#include "store/Dao.h"

namespace zolmara {
namespace {

using test::Message;

std::string ContentOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class SheetImport : public test::ImportTest {
protected:
    std::string File(const std::string& name) { return folder.File(name); }

    std::string Csv(const std::string& content) {
        std::ofstream(File("cells.csv"), std::ios::binary) << content;
        return File("cells.csv");
    }
    /// A sheet of rows of texts below the four headings.
    std::string Xlsx(const std::vector<std::vector<std::string>>& rows) {
        std::string xml = test::TextRow(1, {"Worksheet", "Line", "Column", "Contents"});
        int number = 1;
        for (const auto& row : rows) xml += test::TextRow(++number, row);
        test::WriteRawXlsx(File("cells.xlsx"), xml);
        return File("cells.xlsx");
    }
    /// The messages but the closing one, with the odd line breaks as blanks.
    std::vector<std::string> Told() {
        std::vector<std::string> texts;
        for (const Message& message : Messages())
            if (message.Text != test::kClosing)
                texts.push_back(Replace(message.Text, "\n\r", " | "));
        return texts;
    }
    std::string OnlyMessage() {
        const std::vector<std::string> told = Told();
        EXPECT_EQ(told.size(), 1u) << ::testing::PrintToString(told);
        return told.empty() ? "" : told[0];
    }
    Variant A(double line) { return test::Cell("A", line, "Col_1"); }
};

using Texts = std::vector<std::string>;

TEST_F(SheetImport, FindsItsHeadingsInAnyOrderBesideOtherColumnsAndBelowATitle) {
    ASSERT_TRUE(
        ImportFile(Csv("Our budget\n\nNote,CONTENTS,line,Worksheet,Col\n"
                       "new,1250,8,A,1\n,75,9,a,1\n")));
    EXPECT_EQ(A(8), Variant(1250.0));
    EXPECT_EQ(A(9), Variant(75.0));
}

TEST_F(SheetImport, ReadsAmountsAsSpreadsheetsKeepThem) {
    ASSERT_TRUE(ImportFile(Xlsx({{"A", "8", "1", " 1,234 "},
                                 {"A", "9", "1", "(500)"},
                                 {"A", "10", "1", "$ 2,000.00"},
                                 {"A", "11", "1", "70-"},
                                 {"A", "12", "1", "\u20125"},
                                 {"A", "13", "1", "1\u00a0000"},
                                 {"A", "14", "1", "-"}})) == false);
    EXPECT_EQ(A(8), Variant(1234.0));
    EXPECT_EQ(A(9), Variant(-500.0));
    EXPECT_EQ(A(10), Variant(2000.0));
    EXPECT_EQ(A(11), Variant(-70.0));
    EXPECT_EQ(A(13), Variant(1000.0));
    EXPECT_EQ(A(14), Variant(0.0));
    EXPECT_EQ(OnlyMessage(),
              "Table A only allows numeric input:  | A, 12, 1, \"\u20125\" (Data!D6)");
}

TEST_F(SheetImport, ReadsNumbersWithFormatsAndDatesAsSerialNumbers) {
    lxw_workbook* book = workbook_new(File("cells.xlsx").c_str());
    lxw_worksheet* sheet = workbook_add_worksheet(book, "Data");
    lxw_format* money = workbook_add_format(book);
    format_set_num_format(money, "#,##0.00_);[Red](#,##0.00)");
    lxw_format* date = workbook_add_format(book);
    format_set_num_format(date, "d. mmm yyyy");
    const char* headings[] = {"Worksheet", "Line", "Column", "Contents"};
    for (int i = 0; i < 4; ++i)
        worksheet_write_string(sheet, 0, static_cast<lxw_col_t>(i), headings[i], nullptr);
    const auto put = [&](lxw_row_t row, const char* item, double line, double column, double value,
                         lxw_format* format) {
        worksheet_write_string(sheet, row, 0, item, nullptr);
        worksheet_write_number(sheet, row, 1, line, nullptr);
        worksheet_write_number(sheet, row, 2, column, nullptr);
        worksheet_write_number(sheet, row, 3, value, format);
    };
    put(1, "A", 8, 1, 1250000, money);
    put(2, "S2p1", 1, 4, 44927, date);     // 1/1/2023
    put(3, "S2p1", 1, 5, 45291, nullptr);  // 12/31/2023, its format lost
    put(4, "S1p1", 1, 6, 60201, nullptr);
    put(5, "A6", 1, 5, 0.1 + 0.2, money);
    worksheet_write_string(sheet, 6, 0, "S1p1", nullptr);
    worksheet_write_number(sheet, 6, 1, 4, nullptr);
    worksheet_write_number(sheet, 6, 2, 1, nullptr);
    worksheet_write_boolean(sheet, 6, 3, 1, nullptr);
    ASSERT_EQ(workbook_close(book), LXW_NO_ERROR);
    EXPECT_TRUE(ImportFile(File("cells.xlsx"))) << ::testing::PrintToString(Told());
    EXPECT_EQ(A(8), Variant(1250000.0));
    EXPECT_EQ(test::Cell("S2p1", 1, "Col_4"), Variant("01/01/2023"));
    EXPECT_EQ(test::Cell("S2p1", 1, "Col_5"), Variant("12/31/2023"));
    EXPECT_EQ(test::Cell("S1p1", 1, "Col_6"), Variant("60201"));
    EXPECT_EQ(test::Cell("A6", 1, "Col_5"), Variant(0.3));
    EXPECT_EQ(test::Cell("S1p1", 4, "Col_1"), Variant("Yes"));
}

TEST_F(SheetImport, CountsDatesFrom1904WhereTheWorkbookDoes) {
    const std::string main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string cells = test::TextRow(1, {"Worksheet", "Line", "Column", "Contents"}) +
                              "<row r=\"2\"><c r=\"A2\" t=\"inlineStr\"><is><t>S2p1</t></is></c>"
                              "<c r=\"B2\"><v>1</v></c><c r=\"C2\"><v>4</v></c>"
                              "<c r=\"D2\" s=\"1\"><v>43465</v></c></row>";
    test::WriteRawXlsx(
        File("cells.xlsx"), cells,
        {{"xl/workbook.xml",
          "<workbook xmlns:r=\"r\"><workbookPr date1904=\"1\"/><sheets><sheet name=\"Data\" "
          "r:id=\"rId1\"/></sheets></workbook>"},
         {"xl/_rels/workbook.xml.rels",
          "<Relationships><Relationship Id=\"rId1\" Type=\"x/worksheet\" "
          "Target=\"/xl/worksheets/sheet1.xml\"/><Relationship Id=\"rId2\" Type=\"x/styles\" "
          "Target=\"styles.xml\"/></Relationships>"},
         {"xl/styles.xml",
          "<styleSheet><cellXfs><xf numFmtId=\"0\"/><xf "
          "numFmtId=\"14\"/></cellXfs></styleSheet>"}});
    EXPECT_TRUE(ImportFile(File("cells.xlsx"))) << ::testing::PrintToString(Told());
    EXPECT_EQ(test::Cell("S2p1", 1, "Col_4"), Variant("01/01/2023"));
}

TEST_F(SheetImport, NamesSheetAndCellInEveryMessage) {
    EXPECT_FALSE(ImportFile(Xlsx({{"", "8", "1", "5"},
                                  {"A", "1e20", "1", "5"},
                                  {"A", "", "1", "5"},
                                  {"A", "8", "111", "5"},
                                  {"A", "8", "", "5"},
                                  {"A", "8", "2", "5"},
                                  {"X9", "8", "2", "5"},
                                  {"A", "8", "1", std::string(256, 'x')}})));
    EXPECT_EQ(Told(),
              (Texts{"The Worksheet specification is missing from ASCII Import line:  | Data!A2: , "
                     "8, 1",
                     "The row number is illegal for:  | Data!B3: A, 100000000000000000000, 1",
                     "The Row specification is missing from ASCII Import line:  | Data!B4: A, , 1",
                     "The column number is illegal for:  | Data!C5: A, 8, 111",
                     "The Column specification is missing from ASCII Import line:  | Data!C6: A, "
                     "8, ",
                     "The Contents value is longer than 255 characters for:  | Data!D9: A, 8, 1",
                     "Table A only allows column 1:  | A, 8, 2, \"5\" (Data!D7)",
                     "Table X9 is not currently supported for ASCII import (Data!D8)"}));
}

TEST_F(SheetImport, CallsTheLoadOffForAFractionOnASchedule) {
    EXPECT_FALSE(ImportFile(Xlsx({{"A", "8", "1", "5"}, {"Bp1", "1", "1", "1.5"}})));
    EXPECT_EQ(OnlyMessage(), "The following line must be a whole number:  | Data!D3: Bp1, 1, 1");
    EXPECT_NE(A(8), Variant(5.0));
}

TEST_F(SheetImport, PassesRowsWithoutContentsOverAndTakesBlanksAsEmpty) {
    gDB.Execute("UPDATE S1p1 SET Col_1='Old',Col_2='Old' WHERE LineNum=1;");
    EXPECT_TRUE(ImportFile(Csv("Worksheet,Line,Column,Contents\nS1p1,1,1,\nS1p1,1,2,\" \"\n")));
    EXPECT_EQ(test::Cell("S1p1", 1, "Col_1"), Variant("Old"));
    EXPECT_EQ(Text(test::Cell("S1p1", 1, "Col_2")), "");
}

TEST_F(SheetImport, AddsUpTheLinesOfOneCellAcrossSheets) {
    lxw_workbook* book = workbook_new(File("cells.xlsx").c_str());
    for (const char* name : {"North", "South", "Notes"}) {
        lxw_worksheet* sheet = workbook_add_worksheet(book, name);
        if (std::string(name) == "Notes") {
            worksheet_write_string(sheet, 0, 0, "Nothing to import", nullptr);
            continue;
        }
        const char* rows[2][4] = {{"Worksheet", "Line", "Column", "Contents"},
                                  {"A", "8", "1", "40"}};
        for (lxw_row_t r = 0; r < 2; ++r)
            for (lxw_col_t c = 0; c < 4; ++c)
                worksheet_write_string(sheet, r, c, rows[r][c], nullptr);
    }
    ASSERT_EQ(workbook_close(book), LXW_NO_ERROR);
    EXPECT_TRUE(ImportFile(File("cells.xlsx")));
    EXPECT_EQ(A(8), Variant(80.0));
    EXPECT_EQ(OnlyMessage(),
              "Sheet Notes was passed over: it has no headings Worksheet, Line, Column and "
              "Contents.");
}

TEST_F(SheetImport, OfCsvTakesSemicolonsTabsByteOrderMarksAndOldCodePages) {
    EXPECT_TRUE(ImportFile(
        Csv("\xEF\xBB\xBFWorksheet;Line;Column;Contents\r\nS1p1;1;1;\"a;b \"\"c\"\"\"\r\n")));
    EXPECT_EQ(test::Cell("S1p1", 1, "Col_1"), Variant("a;b \"c\""));
    EXPECT_TRUE(ImportFile(Csv("Worksheet\tLine\tColumn\tContents\rS1p1\t1\t4\tK\xF6ln\r")));
    EXPECT_EQ(test::Cell("S1p1", 1, "Col_4"), Variant("Köln"));
}

TEST_F(SheetImport, OfOdsTakesRepeatedRowsNotesAndTypes) {
    const auto cell = [](const std::string& attributes, const std::string& text) {
        return "<table:table-cell " + attributes + "><text:p>" + text + "</text:p>" +
               "</table:table-cell>";
    };
    const auto words = [&](const std::string& text) {
        return cell("office:value-type=\"string\"", text);
    };
    const auto number = [&](const std::string& value) {
        return cell("office:value-type=\"float\" office:value=\"" + value + "\"", "shown");
    };
    test::WriteRawOds(
        File("cells.ods"),
        "<table:table-row table:number-rows-repeated=\"1000000\"><table:table-cell "
        "table:number-columns-repeated=\"16384\"/></table:table-row><table:table-row>" +
            words("Worksheet") + words("Line") + words("Column") + words("Contents") +
            "</table:table-row><table:table-row table:number-rows-repeated=\"2\">" + words("A") +
            number("8") + number("1") + number("21") + "</table:table-row><table:table-row>" +
            words("S2p1") + number("1") + number("4") +
            cell("office:value-type=\"date\" office:date-value=\"2023-01-01\"", "Jan 1") +
            "</table:table-row><table:table-row>" + words("S1p1") + number("1") + number("1") +
            "<table:table-cell office:value-type=\"string\"><office:annotation><text:p>note"
            "</text:p></office:annotation><text:p>Two<text:s text:c=\"2\"/>Elms</text:p>"
            "</table:table-cell></table:table-row>");
    EXPECT_TRUE(ImportFile(File("cells.ods"))) << ::testing::PrintToString(Told());
    EXPECT_EQ(A(8), Variant(42.0));
    EXPECT_EQ(test::Cell("S2p1", 1, "Col_4"), Variant("01/01/2023"));
    EXPECT_EQ(test::Cell("S1p1", 1, "Col_1"), Variant("Two  Elms"));
}

TEST_F(SheetImport, TellsErrorsAndFormulasWithoutAResult) {
    const std::string row =
        "<row r=\"{}\"><c r=\"A{}\" t=\"inlineStr\"><is><t>A</t></is></c>"
        "<c r=\"B{}\"><v>8</v></c><c r=\"C{}\"><v>1</v></c>{}</row>";
    std::string xml = test::TextRow(1, {"Worksheet", "Line", "Column", "Contents"});
    const std::string contents[] = {
        "<c r=\"D2\" t=\"e\"><f>1/0</f><v>#DIV/0!</v></c>", "<c r=\"D3\"><f>1+1</f></c>",
        "<c r=\"D4\"><f>1+1</f><v>2</v></c>", "<c r=\"D5\" t=\"str\"><f>NA()</f><v>#N/A</v></c>"};
    for (int i = 0; i < 4; ++i)
        xml += fmt::format(fmt::runtime(row), i + 2, i + 2, i + 2, i + 2, contents[i]);
    test::WriteRawXlsx(File("cells.xlsx"), xml);
    EXPECT_FALSE(ImportFile(File("cells.xlsx")));
    EXPECT_EQ(A(8), Variant(2.0));
    EXPECT_EQ(Told(), (Texts{"The cell holds an error instead of a value in ASCII Import line:  | "
                             "Data!D2: A, 8, 1",
                             "The cell holds a formula without its result in ASCII Import line:  | "
                             "Data!D3: A, 8, 1",
                             "The cell holds an error instead of a value in ASCII Import line:  | "
                             "Data!D5: A, 8, 1"}));
}

TEST_F(SheetImport, TellsMergedCellsBelowTheHeadings) {
    const std::string xml = test::TextRow(1, {"Worksheet", "Line", "Column", "Contents"}) +
                            test::TextRow(2, {"A", "8", "1", "5"});
    test::WriteRawXlsx(File("cells.xlsx"), xml, {},
                       "<mergeCells><mergeCell ref=\"A2:A4\"/><mergeCell ref=\"F2:G4\"/>"
                       "<mergeCell ref=\"A1:D1\"/></mergeCells>");
    EXPECT_FALSE(ImportFile(File("cells.xlsx")));
    EXPECT_EQ(OnlyMessage(),
              "Merged cells hold one value for several lines; take them apart in ASCII Import "
              "line:  | Data!A2:A4");
}

// --- Hostile files ---------------------------------------------------------------------------

constexpr const char* kNothing = "Nothing was imported.";

/// What was in the statement stays as it was.
#define EXPECT_REFUSED(file, words)                              \
    do {                                                         \
        gDB.Execute("UPDATE A SET Col_1=4711 WHERE LineNum=8;"); \
        EXPECT_FALSE(ImportFile(file));                          \
        const std::string told = OnlyMessage();                  \
        EXPECT_NE(told.find(words), std::string::npos) << told;  \
        EXPECT_TRUE(told.ends_with(kNothing)) << told;           \
        EXPECT_NE(told.find(file), std::string::npos) << told;   \
        EXPECT_EQ(A(8), Variant(4711.0));                        \
    } while (false)

TEST_F(SheetImport, RefusesAFileWithoutHeadings) {
    EXPECT_REFUSED(Csv("A,8,1,5\nA,9,1,5\n"), "has no sheet with the headings");
}

TEST_F(SheetImport, RefusesWhatIsNoWorkbook) {
    std::ofstream(File("a.xlsx")) << "PK nothing of the kind";
    EXPECT_REFUSED(File("a.xlsx"), "no workbook");
    test::WriteZip(File("b.xlsx"), {{"readme.txt", "hello"}});
    EXPECT_REFUSED(File("b.xlsx"), "its part _rels/.rels is missing");
    test::WriteZip(File("b.ods"), {{"readme.txt", "hello"}});
    EXPECT_REFUSED(File("b.ods"), "it is no workbook");
}

TEST_F(SheetImport, RefusesAWorkbookThatIsCutOff) {
    const std::string whole = ContentOf(Xlsx({{"A", "8", "1", "5"}}));
    for (const std::size_t size : {whole.size() / 2, whole.size() - 30, std::size_t{10}}) {
        std::ofstream(File("cut.xlsx"), std::ios::binary) << whole.substr(0, size);
        EXPECT_REFUSED(File("cut.xlsx"), "it is damaged");
    }
}

TEST_F(SheetImport, RefusesBrokenXml) {
    const std::string head = test::TextRow(1, {"Worksheet", "Line", "Column", "Contents"});
    test::WriteRawXlsx(File("a.xlsx"), head + "<row r=\"2\"><c></row></c>");
    EXPECT_REFUSED(File("a.xlsx"), "its part xl/worksheets/sheet1.xml is broken");
    test::WriteRawXlsx(
        File("b.xlsx"), "",
        {{"xl/worksheets/sheet1.xml", "<worksheet><sheetData>" + head + "<row r=\"2\">"}});
    EXPECT_REFUSED(File("b.xlsx"), "xl/worksheets/sheet1.xml");
    std::string deep;
    for (int i = 0; i < 5000; ++i) deep += "<a>";
    test::WriteRawXlsx(File("c.xlsx"), deep);
    EXPECT_REFUSED(File("c.xlsx"), "too deep");
}

TEST_F(SheetImport, RefusesACellThatNamesATextThatIsNotThere) {
    test::WriteRawXlsx(File("a.xlsx"), "<row r=\"1\"><c r=\"A1\" t=\"s\"><v>7</v></c></row>");
    EXPECT_REFUSED(File("a.xlsx"), "cell Data!A1 names a text that is not there");
    test::WriteRawXlsx(File("b.xlsx"), "<row r=\"99999999\"><c r=\"A1\"><v>7</v></c></row>");
    EXPECT_REFUSED(File("b.xlsx"), "sheet Data has no row 99999999");
}

TEST_F(SheetImport, ReadsNothingOutsideForAnEntity) {
    std::ofstream(File("secret.txt")) << "secret";
    const std::string doctype =
        fmt::format("<!DOCTYPE x [<!ENTITY xxe SYSTEM \"file://{}\">]>", File("secret.txt"));
    const std::string words =
        "<table:table-cell office:value-type=\"string\"><text:p>{}</text:p>"
        "</table:table-cell>";
    std::string rows = "<table:table-row>";
    for (const char* text : {"Worksheet", "Line", "Column", "Contents"})
        rows += fmt::format(fmt::runtime(words), text);
    rows += "</table:table-row><table:table-row>";
    for (const char* text : {"S1p1", "1", "1", "&xxe;"})
        rows += fmt::format(fmt::runtime(words), text);
    test::WriteRawOds(File("a.ods"), rows + "</table:table-row>", doctype);
    ImportFile(File("a.ods"));
    EXPECT_EQ(Text(test::Cell("S1p1", 1, "Col_1")).find("secret"), std::string::npos);
}

TEST_F(SheetImport, RunsNoMacros) {
    test::WriteRawXlsx(File("a.xlsm"),
                       test::TextRow(1, {"Worksheet", "Line", "Column", "Contents"}) +
                           test::TextRow(2, {"A", "8", "1", "5"}),
                       {{"xl/vbaProject.bin", "Sub Auto_Open()"}});
    EXPECT_TRUE(ImportFile(File("a.xlsm")));
    EXPECT_EQ(A(8), Variant(5.0));
}

TEST_F(SheetImport, RefusesAWorkbookThatUnpacksToMoreThanAnyStatement) {
    std::vector<test::ZipPart> parts;
    const std::string zeros(64 << 20, ' ');
    for (int i = 0; i < 9; ++i) parts.emplace_back(fmt::format("xl/media/{}", i), zeros);
    test::WriteRawXlsx(File("bomb.xlsx"), "", std::move(parts));
    EXPECT_LT(std::filesystem::file_size(File("bomb.xlsx")), 2u << 20);
    EXPECT_REFUSED(File("bomb.xlsx"), "it unpacks to more than 512 MB");
}

TEST_F(SheetImport, ReadsAMillionRowsToTheirEnd) {
    const std::string row = "<row><c><v>1</v></c></row>";
    std::string xml;
    for (int i = 0; i < 1000000; ++i) xml += row;
    test::WriteRawXlsx(File("long.xlsx"), xml);
    EXPECT_REFUSED(File("long.xlsx"), "has no sheet with the headings");
}

/// Reads a file under limits and gives the reason why it was not read.
std::string FailureUnder(const std::string& path, const SheetLimits& limits,
                         SheetFileKind kind = SheetFileKind::Xlsx) {
    SheetProcess process(path, kind, limits);
    while (process.Next()) continue;
    return process.Failure();
}

#if !defined(__SANITIZE_ADDRESS__)
TEST_F(SheetImport, EndsAReaderThatTakesTooMuchMemory) {
    test::WriteRawXlsx(File("a.xlsx"), std::string(200 << 20, ' '));
    EXPECT_EQ(FailureUnder(File("a.xlsx"), {.MemoryBytes = 64 << 20}),
              "it takes more memory than a file of cells may");
}
#endif

TEST_F(SheetImport, EndsAReaderThatTakesTooMuchTime) {
    std::string xml;
    for (int i = 0; i < 3000000; ++i) xml += "<a b=\"c\"/>";
    test::WriteRawXlsx(File("a.xlsx"), xml);
    EXPECT_EQ(FailureUnder(File("a.xlsx"), {.CpuSeconds = 0}),
              "it takes more time or memory than a file of cells may");
}

std::string OdsText(const std::string& text, const std::string& attributes = "") {
    return "<table:table-cell office:value-type=\"string\" " + attributes + "><text:p>" + text +
           "</text:p></table:table-cell>";
}
std::string OdsRow(const Texts& texts, const std::string& attributes = "") {
    std::string row = "<table:table-row " + attributes + ">";
    for (const std::string& text : texts) row += OdsText(text);
    return row + "</table:table-row>";
}
const Texts kFour = {"Worksheet", "Line", "Column", "Contents"};

/// A file of less than a kilobyte.
TEST_F(SheetImport, RefusesARowThatIsSaidToStandThereAMillionTimes) {
    test::WriteRawOds(File("a.ods"),
                      OdsRow(kFour) + OdsRow({"A", "8", "1", std::string(900, 'x')},
                                             "table:number-rows-repeated=\"1000000\""));
    EXPECT_LT(std::filesystem::file_size(File("a.ods")), 2000u);
    EXPECT_EQ(FailureUnder(File("a.ods"), {.RowBytes = 8 << 20}, SheetFileKind::Ods),
              "its rows hold more than 8 MB");
}

TEST_F(SheetImport, CutsATextThatNoCellTakesAndSaysThatItIsTooLong) {
    for (const std::string& file :
         {Csv("Worksheet,Line,Column,Contents\nS1p1,1,1," + std::string(3 << 20, 'x') + "\n"),
          Xlsx({{"S1p1", "1", "1", std::string(3 << 20, 'x')}})}) {
        EXPECT_FALSE(ImportFile(file));
        EXPECT_NE(OnlyMessage().find("The Contents value is longer than 255 characters"),
                  std::string::npos);
        EXPECT_TRUE(test::Cell("S1p1", 1, "Col_1").IsNull());
    }
}

TEST_F(SheetImport, OfOdsTellsErrorsFormulasAndMergedCells) {
    const auto row = [](const std::string& contents) {
        return "<table:table-row>" + OdsText("A") + OdsText("8") + OdsText("1") + contents +
               "</table:table-row>";
    };
    test::WriteRawOds(
        File("a.ods"),
        OdsRow(kFour) +
            row("<table:table-cell table:formula=\"of:=1/0\" office:value-type=\"string\">"
                "<text:p>#DIV/0!</text:p></table:table-cell>") +
            row("<table:table-cell table:formula=\"of:=1+1\"/>") +
            row("<table:table-cell table:formula=\"of:=1+1\" office:value-type=\"float\" "
                "office:value=\"2\"><text:p>2</text:p></table:table-cell>") +
            row(OdsText("5", "table:number-rows-spanned=\"3\"")));
    EXPECT_FALSE(ImportFile(File("a.ods")));
    const Texts told = Told();
    ASSERT_EQ(told.size(), 3u) << ::testing::PrintToString(told);
    const auto says = [&](const char* words, const char* cell) {
        return std::ranges::any_of(told, [&](const std::string& text) {
            return text.starts_with(words) && text.find(cell) != std::string::npos;
        });
    };
    EXPECT_TRUE(says("The cell holds an error instead of a value", "D2")) << told[0];
    EXPECT_TRUE(says("The cell holds a formula without its result", "D3")) << told[1];
    EXPECT_TRUE(says("Merged cells hold one value for several lines", "D5:D7")) << told[2];
    EXPECT_EQ(A(8), Variant(7.0)) << "the good lines are there";
}

TEST_F(SheetImport, OfOdsRefusesABombAndBrokenXml) {
    std::vector<test::ZipPart> parts = {{"content.xml", "<a/>"}};
    const std::string zeros(64 << 20, ' ');
    for (int i = 0; i < 9; ++i) parts.emplace_back(fmt::format("Pictures/{}", i), zeros);
    test::WriteZip(File("bomb.ods"), parts);
    EXPECT_REFUSED(File("bomb.ods"), "it unpacks to more than 512 MB");
    test::WriteRawOds(File("a.ods"), OdsRow(kFour) + "<table:table-row>");
    EXPECT_REFUSED(File("a.ods"), "content.xml");
}

TEST_F(SheetImport, OfCsvTellsErrorsAndRefusesWhatIsNoText) {
    EXPECT_FALSE(ImportFile(Csv("Worksheet,Line,Column,Contents\nA,8,1,#DIV/0!\nA,9,1,5\n")));
    EXPECT_EQ(OnlyMessage(),
              "The cell holds an error instead of a value in ASCII Import line:  | D2: A, 8, 1");
    EXPECT_EQ(A(9), Variant(5.0));
    EXPECT_REFUSED(Csv(std::string("Worksheet,Line,Column,Contents\nA,8,1,\0\n", 38)),
                   "it holds characters that are no text");
}

TEST_F(SheetImport, RefusesFilesThatAreTooLargeMissingOrNoFiles) {
    const std::string path = Xlsx({});
    const auto words = [](const auto& act) -> std::string {
        try {
            act();
        } catch (const StoreError& error) {
            EXPECT_EQ(error.kind(), StoreError::Kind::CannotOpen);
            return error.what();
        }
        return "none";
    };
    EXPECT_NE(words([&] {
                  SheetProcess(path, SheetFileKind::Xlsx, {.FileBytes = 10});
              }).find("it is larger than 0 MB"),
              std::string::npos);
    EXPECT_NE(words([&] { ImportFile(File("none.xlsx")); }).find("there is no such file"),
              std::string::npos);
    EXPECT_NE(words([&] { ImportFile(File("old.xls")); }).find("Save it as .xlsx"),
              std::string::npos);
    std::filesystem::create_directory(File("folder.ods"));
    EXPECT_NE(words([&] { ImportFile(File("folder.ods")); }).find("it is a folder"),
              std::string::npos);
}

TEST_F(SheetImport, NeverOpensTheOpenCrf) {
    std::filesystem::create_symlink(gCRFPath, File("link.xlsx"));
    EXPECT_THROW(ImportFile(File("link.xlsx")), StoreError);
}

}  // namespace
}  // namespace zolmara
