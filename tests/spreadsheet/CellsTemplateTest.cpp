// The workbook to fill: every open cell in it, and what was filled in is imported.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <zip.h>

#include "forms/CellRules.h"
#include "import/ImportASCII.h"
#include "spreadsheet/BookEvaluator.h"
#include "spreadsheet/CellsTemplate.h"
#include "spreadsheet/ImportFile.h"
#include "spreadsheet/SheetFiles.h"
#include "support/TestCrf.h"
#include "worksheets/ExplainedStatements.h"

namespace zolmara {
namespace {

class CellsTemplate : public test::SessionTest {
protected:
    CellsTemplate() {
        test::MakeNorthfield(folder);
        ImportErrorFlag = false;
        WriteCellsTemplate(Path());
    }
    std::string Path() const { return folder.File("fill.xlsx"); }

    /// The row of a cell on its sheet; 0 when it has none.
    static int RowOf(const test::Book& book, const std::string& sheet, double line, double column) {
        for (const auto& [address, cell] : book.Cells(sheet)) {
            const auto number = [&](int at) {
                const auto found = book.Cells(sheet).find({address.first, at});
                return found == book.Cells(sheet).end() ? -1 : found->second.Cached.Number;
            };
            if (address.second == 1 && number(1) == line && number(2) == column)
                return address.first;
        }
        return 0;
    }

    /// Keys a number into the contents of a row, as a spreadsheet program would store it.
    void Fill(const test::Book& book, const std::string& sheet, int row, double number) {
        std::string part;
        for (std::size_t i = 0; i < book.Sheets().size(); ++i)
            if (book.Sheets()[i] == sheet) part = fmt::format("xl/worksheets/sheet{}.xml", i + 1);
        std::string xml = test::ReadZip(Path(), part);
        const std::size_t cell = xml.find(fmt::format("<c r=\"D{}\"", row));
        const std::size_t end = xml.find("/>", cell);
        xml.replace(end, 2, fmt::format("><v>{}</v></c>", number));
        zip_t* archive = zip_open(Path().c_str(), 0, nullptr);
        zip_source_t* source = zip_source_buffer(archive, xml.data(), xml.size(), 0);
        ASSERT_GE(zip_file_add(archive, part.c_str(), source, ZIP_FL_OVERWRITE), 0);
        ASSERT_EQ(zip_close(archive), 0);
    }
};

TEST_F(CellsTemplate, FilledInIsImported) {
    const test::Book book(Path());
    Fill(book, "A", RowOf(book, "A", 8, 1), 4711);
    Fill(book, "D1p1", RowOf(book, "D1p1", 1, 8.01), 77);
    EXPECT_TRUE(ImportFile(Path()));
    EXPECT_EQ(test::Cell("A", 8, "Col_1"), Variant(4711.0));
    EXPECT_EQ(test::Cell("D1p1", 1, "CC_801"), Variant(77.0));
}

TEST_F(CellsTemplate, LeftEmptyChangesNothing) {
    const auto before = test::AllCells();
    EXPECT_TRUE(ImportFile(Path()));
    EXPECT_EQ(test::AllCells(), before);
}

TEST_F(CellsTemplate, HasEveryOpenAmountOfAAndNoTotal) {
    const test::Book book(Path());
    Recordset rows = gDB.OpenRecordset("SELECT LineNum FROM A;");
    for (; !rows.Eof(); rows.MoveNext()) {
        const Currency line = CurOr(rows[0]);
        EXPECT_EQ(RowOf(book, "A", line.ToDouble(), 1) != 0, IsCellOpen("A", line, "Col_1"))
            << NumberText(line);
    }
}

TEST_F(CellsTemplate, NamesLineAndColumnAndLocksAllButTheContents) {
    const test::Book book(Path());
    const int row = RowOf(book, "A", 8, 1);
    ASSERT_GT(row, 0);
    EXPECT_EQ(book.Cells("A").at({row, 4}).Cached.Text, "Salaries of Officers");
    EXPECT_FALSE(book.Cells("A").at({row, 5}).Cached.Text.empty());
    EXPECT_NE(book.Xml("A").find("<sheetProtection"), std::string::npos);
    EXPECT_NE(test::ReadZip(Path(), "xl/styles.xml").find("<protection locked=\"0\"/>"),
              std::string::npos);
}

}  // namespace
}  // namespace zolmara
