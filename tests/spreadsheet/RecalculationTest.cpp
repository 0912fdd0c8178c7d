// A spreadsheet program recalculates the exported workbook, and every cell is held against the
// CRF. It runs by tests/recalculate alone, which installs the program: ZOLMARA_RECALCULATE names
// it.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>

#include "spreadsheet/BookEvaluator.h"
#include "spreadsheet/Export.h"
#include "spreadsheet/GeneratedStatement.h"
#include "spreadsheet/SheetFiles.h"
#include "spreadsheet/SheetProcess.h"
#include "support/TestCrf.h"
#include "worksheets/ExplainedStatements.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using Faults = std::vector<std::string>;
using Cells = std::map<std::string, std::map<test::BookAddress, std::string>>;

class Recalculation : public test::SessionTest {
protected:
    void SetUp() override {
        const char* program = std::getenv("ZOLMARA_RECALCULATE");
        if (program == nullptr) GTEST_SKIP() << "tests/recalculate runs it";
        program_ = program;
        // Whatever results stand in the workbook, they are not to be believed.
        WriteFile("profile/user/registrymodifications.xcu",
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<oor:items "
                  "xmlns:oor=\"http://openoffice.org/2001/registry\"><item "
                  "oor:path=\"/org.openoffice.Office.Calc/Formula/Load\"><prop "
                  "oor:name=\"OOXMLRecalcMode\" oor:op=\"fuse\"><value>0</value></prop></item>"
                  "</oor:items>\n");
    }

    void WriteFile(const std::string& name, const std::string& content) {
        const std::filesystem::path path = folder.Path() / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << content;
    }

    /// The workbook of the open CRF as the program gives it back.
    Cells Recalculated() {
        ExportWorkbook(folder.File("out.xlsx"));
        const std::string command = fmt::format(
            "'{}' -env:UserInstallation=file://{}/profile --headless --convert-to ods --outdir "
            "'{}' '{}' >/dev/null 2>&1",
            program_, folder.Path().string(), folder.Path().string(), folder.File("out.xlsx"));
        EXPECT_EQ(std::system(command.c_str()), 0);
        Cells cells;
        SheetProcess process(folder.File("out.ods"), SheetFileKind::Ods);
        while (auto row = process.Next())
            for (SheetCell& cell : row->Cells)
                cells[row->Sheet][{static_cast<int>(row->Row), cell.Column}] = cell.Text;
        EXPECT_EQ(process.Failure(), "");
        std::filesystem::remove(folder.File("out.xlsx"));
        return cells;
    }

    static bool Same(const std::string& shown, const Variant& stored) {
        if (!stored.IsNumber()) {
            const std::string text = Text(stored);
            return shown == text || (text.empty() && shown == "0");
        }
        const auto number = ParseNumber(shown.empty() ? "0" : shown);
        if (!number) return false;
        const double want = stored.Number();
        if (std::abs(want) <= 1) return std::abs(*number - want) <= 1e-9;
        return Currency(*number) == Currency(want);
    }

    void Prove(int atLeast) {
        constexpr int kFirstRow = 8;
        const Cells cells = Recalculated();
        Faults faults;
        int proved = 0;
        for (const Worksheet& worksheet : AllWorksheets()) {
            const std::string item(worksheet.Item);
            ASSERT_TRUE(cells.contains(item)) << item;
            Recordset rows = gDB.OpenRecordset(
                fmt::format("SELECT * FROM {} ORDER BY {};", item, worksheet.Key));
            for (int row = kFirstRow; !rows.Eof(); rows.MoveNext(), ++row)
                for (int i = 0; i < rows.FieldCount(); ++i) {
                    const auto cell = cells.at(item).find({row, i});
                    const std::string shown = cell == cells.at(item).end() ? "" : cell->second;
                    ++proved;
                    if (!Same(shown, rows[i]) && faults.size() < 20)
                        faults.push_back(fmt::format("{} line {} {}: {} not {}", item,
                                                     Text(rows[0]), rows.FieldName(i), shown,
                                                     Text(rows[i])));
                }
        }
        EXPECT_GE(proved, atLeast);
        EXPECT_EQ(faults, Faults{});
    }

    std::string program_;
};

TEST_F(Recalculation, OfTheSampleGivesItsCells) {
    test::MakeNorthfield(folder);
    Prove(5000);
}

TEST_F(Recalculation, OfPlantedMistakesGivesTheirCells) {
    test::MakeNorthfieldWithMistakes(folder);
    Prove(5000);
}

TEST_F(Recalculation, OfGeneratedStatementsGivesTheirCells) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        CreateCrf(folder.File("Made.CRF"), test::SampleFields());
        test::FillGenerated(folder.Path().string(), seed);
        Prove(1000);
        DropCrf();
        std::filesystem::remove(folder.File("Made.CRF"));
    }
}

/// The proof must be able to fail: with wrong formulas it does.
TEST_F(Recalculation, BelievesNoStoredResult) {
    test::MakeNorthfield(folder);
    gDB.Execute("UPDATE A SET Col_3=4711 WHERE LineNum=8;");
    const Cells cells = Recalculated();
    for (const auto& [address, text] : cells.at("A")) EXPECT_NE(text, "4711");
}

}  // namespace
}  // namespace zolmara
