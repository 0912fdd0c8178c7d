// Every keyed cell out, and in again into a new file: the same statement, cell by cell.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "spreadsheet/GeneratedStatement.h"
#include "spreadsheet/ImportFile.h"
#include "spreadsheet/WriteCells.h"
#include "store/files/FileDoor.h"
#include "support/Paths.h"
#include "support/TestCrf.h"
#include "worksheets/ExplainedStatements.h"

namespace zolmara {
namespace {

using Statement = std::map<std::string, std::string>;

/// All cells with those of the cost centers. Nothing and an empty text are the same to a reader.
Statement WholeStatement() {
    Statement cells = test::AllCells();
    Recordset rows = gDB.OpenRecordset("SELECT * FROM CostCenters ORDER BY LineNum;");
    for (; !rows.Eof(); rows.MoveNext())
        for (int i = 1; i < rows.FieldCount(); ++i)
            cells[fmt::format("CostCenters|{}|{}", Text(rows[0]), rows.FieldName(i))] =
                Text(rows[i]);
    for (auto& [name, value] : cells)
        if (value == "Null" || value == "\"\"") value.clear();
    return cells;
}

std::vector<std::string> Differences(const Statement& here, const Statement& there) {
    constexpr std::size_t kMost = 10;
    std::vector<std::string> differences;
    const auto add = [&](const std::string& name, const std::string& a, const std::string& b) {
        if (a != b && differences.size() < kMost)
            differences.push_back(fmt::format("{}: {} and {}", name, a, b));
    };
    for (const auto& [name, value] : here)
        add(name, value, there.contains(name) ? there.at(name) : "no cell");
    for (const auto& [name, value] : there)
        if (!here.contains(name)) add(name, "no cell", value);
    return differences;
}

std::vector<std::string> ImportMessages() {
    std::vector<std::string> messages;
    auto rows = gDB.OpenRecordset("SELECT Message FROM Error;");
    for (; !rows.Eof(); rows.MoveNext()) messages.push_back(Text(rows[0]));
    return messages;
}

/// What was left behind, each as "item line field: value".
std::set<std::string> Names(const std::vector<LeftCell>& left) {
    std::set<std::string> names;
    for (const LeftCell& cell : left)
        names.insert(fmt::format("{} {} {}: {}", cell.Cell.Item, NumberText(cell.Cell.Line),
                                 cell.Cell.Field, cell.Value));
    return names;
}

class Cells : public test::SessionTest {
protected:
    Cells() { ImportErrorFlag = false; }

    std::string File(const std::string& name) { return folder.File(name); }

    /// The statement of a new CRF that took the file.
    Statement Again(const std::string& file) {
        CreateCrf(File("Again.CRF"), test::SampleFields());
        ImportErrorFlag = false;
        EXPECT_TRUE(ImportFile(file)) << ::testing::PrintToString(ImportMessages());
        Calc_All();
        Statement cells = WholeStatement();
        DropCrf();
        std::filesystem::remove(File("Again.CRF"));
        return cells;
    }

    std::vector<std::string> Lines(const std::string& path) {
        std::ifstream in(path);
        std::vector<std::string> lines;
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }
};

TEST_F(Cells, OfTheSampleGiveTheSameStatementFromEveryKindOfFile) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    ImportFile(std::string(test::kSamples) + "/northfield.txt");
    Calc_All();
    const Statement sample = WholeStatement();
    for (const char* name : {"c.txt", "c.csv", "c.xlsx"})
        EXPECT_TRUE(WriteCells(File(name)).empty()) << name;
    DropCrf();
    for (const char* name : {"c.txt", "c.csv", "c.xlsx"})
        EXPECT_EQ(Differences(sample, Again(File(name))), std::vector<std::string>{}) << name;
}

TEST_F(Cells, OfGeneratedStatementsGiveTheSameStatement) {
    const ReplaceAsTold told(true, "");
    for (unsigned seed = 1; seed <= 6; ++seed) {
        const char* const kinds[] = {"c.txt", "c.csv", "c.xlsx"};
        const std::string file = File(kinds[seed % 3]);
        CreateCrf(File("Made.CRF"), test::SampleFields());
        test::FillGenerated(folder.Path().string(), seed);
        const Statement made = WholeStatement();
        EXPECT_EQ(Names(WriteCells(file)), std::set<std::string>{}) << seed;
        DropCrf();
        std::filesystem::remove(File("Made.CRF"));
        EXPECT_EQ(Differences(made, Again(file)), std::vector<std::string>{}) << seed;
    }
}

TEST_F(Cells, WithoutARoadAreNamed) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    gDB.Execute("UPDATE Sp1 SET Col_1='3' WHERE LineNum=2;");
    gDB.Execute(
        "UPDATE ES SET StatLabel1='Inpatient',StatLabel2='Days',StatCode=2 WHERE "
        "LineNum=2;");
    gDB.Execute("INSERT INTO G (LineNum,Description,Col_1) VALUES (49,'Other',77);");
    gDB.Execute("UPDATE HeaderLines SET LineText='Draft' WHERE LineNum=1;");
    gDB.Execute("UPDATE S1p2 SET Col_1='Chair' WHERE LineNum=1;");
    gDB.Execute("UPDATE A SET Col_1=10.5 WHERE LineNum=8;");
    EXPECT_EQ(Names(WriteCells(File("c.txt"))),
              (std::set<std::string>{"Sp1 2 Col_1: 3", "ES 2 StatLabel1: Inpatient",
                                     "ES 2 StatLabel2: Days", "ES 2 StatCode: 2", "G 49 Col_1: 77",
                                     "G 49 Description: Other", "HeaderLines 1 LineText: Draft",
                                     "S1p2 1 Col_1: Chair", "A 8 Col_1: 10.5"}));
}

TEST_F(Cells, OfANewFileAreTheFormsOwnAndNoneIsLeftBehind) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    EXPECT_EQ(Names(WriteCells(File("c.txt"))), std::set<std::string>{});
    const std::vector<std::string> lines = Lines(File("c.txt"));
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0], "CostCenter\t1\t0\tCRC-B&F");
    for (const std::string& line : lines)
        EXPECT_TRUE(line.starts_with("CostCenter\t") || line.ends_with("\t0")) << line;
}

TEST_F(Cells, InTextAreQuotedWhereACommaOrDollarStands) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    gDB.Execute("UPDATE S1p1 SET Col_1='1 Main, Suite 2',Col_4='Say \"ah\"' WHERE LineNum=1;");
    WriteCells(File("c.txt"));
    const std::vector<std::string> lines = Lines(File("c.txt"));
    const std::set<std::string> all(lines.begin(), lines.end());
    EXPECT_TRUE(all.contains("S1p1\t1\t1\t\"1 Main, Suite 2\""));
    EXPECT_TRUE(all.contains("S1p1\t1\t4\tSay \"ah\""));
}

TEST_F(Cells, ThatALineOfTextCannotHoldAreNamedAndGoByCsv) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    gDB.Execute("UPDATE S1p1 SET Col_1='\"Elm\", Suite 2' WHERE LineNum=1;");
    const Statement made = WholeStatement();
    EXPECT_EQ(Names(WriteCells(File("c.txt"))),
              std::set<std::string>{"S1p1 1 1: \"Elm\", Suite 2"});
    EXPECT_EQ(Names(WriteCells(File("c.csv"))), std::set<std::string>{});
    DropCrf();
    EXPECT_EQ(Again(File("c.csv")).at("S1p1|1|Col_1"), made.at("S1p1|1|Col_1"));
}

TEST_F(Cells, InCsvThatBeginLikeAFormulaStandBehindAMarkAndComeBackWithout) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    const char* const texts[] = {"=1+1", "+SUM(A1)", "-5", "@cmd", "'=1", "'tis"};
    for (int line = 1; line <= 5; ++line) test::SetCell("S1p2", line, "Col_2", texts[line - 1]);
    test::SetCell("S1p1", 1, "Col_1", texts[5]);
    test::SetCell("A", 8, "Col_1", -5);
    const Statement made = WholeStatement();
    EXPECT_EQ(Names(WriteCells(File("c.csv"))), std::set<std::string>{});
    const std::vector<std::string> lines = Lines(File("c.csv"));
    const std::set<std::string> all(lines.begin(), lines.end());
    for (const char* line :
         {"S1p2,1,2,'=1+1\r", "S1p2,2,2,'+SUM(A1)\r", "S1p2,3,2,'-5\r", "S1p2,4,2,'@cmd\r",
          "S1p2,5,2,''=1\r", "S1p1,1,1,'tis\r", "A,8,1,-5\r"})
        EXPECT_TRUE(all.contains(line)) << line;
    DropCrf();
    Statement again = Again(File("c.csv"));
    for (int line = 1; line <= 5; ++line)
        EXPECT_EQ(again.at(fmt::format("S1p2|{}|Col_2", line)),
                  made.at(fmt::format("S1p2|{}|Col_2", line)));
    EXPECT_EQ(again.at("S1p1|1|Col_1"), made.at("S1p1|1|Col_1"));
}

TEST_F(Cells, OfAnEarlierTimeAreNotReplacedWithoutConsent) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    for (const char* name : {"c.txt", "c.csv", "c.xlsx"}) {
        WriteCells(File(name));
        EXPECT_THROW(WriteCells(File(name)), FileKept) << name << " may have been filled in since";
    }
}

TEST_F(Cells, AreNotWrittenUnderTheNameOfAnotherWorkbook) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    for (const char* name : {"c.ods", "c.xlsm", "c.XLS"}) {
        EXPECT_THROW(WriteCells(File(name)), StoreError) << name;
        EXPECT_FALSE(std::filesystem::exists(File(name))) << name;
    }
}

TEST_F(Cells, AreNotWrittenOverAFileWithoutConsent) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    std::ofstream(File("c.xlsx")) << "somebody's";
    EXPECT_THROW(WriteCells(File("c.xlsx")), FileKept);
    EXPECT_EQ(Lines(File("c.xlsx")), std::vector<std::string>{"somebody's"});
    const ReplaceAsTold told(true, "");
    EXPECT_NO_THROW(WriteCells(File("c.xlsx")));
    EXPECT_NE(Lines(File("c.xlsx")), std::vector<std::string>{"somebody's"});
}

TEST_F(Cells, AreNeverWrittenOverTheOpenCrf) {
    CreateCrf(File("Sample.CRF"), test::SampleFields());
    const ReplaceAsTold told(true, "");
    EXPECT_THROW(WriteCells(File("Sample.CRF")), StoreError);
    EXPECT_EQ(Text(gDB.Scalar("SELECT ProviderNumber FROM Master;")), "12-3456");
}

}  // namespace
}  // namespace zolmara
