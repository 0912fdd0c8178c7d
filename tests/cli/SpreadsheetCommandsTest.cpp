// "export" and "cells" on the command line: what they write, refuse and say, with their exit
// status.

#include <sys/stat.h>

#include <filesystem>

#include "cli/CliRunner.h"
#include "spreadsheet/BookEvaluator.h"
#include "store/files/Scratch.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class SpreadsheetCommands : public CliTest {
protected:
    /// A refusal: its exit status and a line of standard error with these words; nothing written.
    void ExpectRefused(const std::vector<std::string>& words, int status,
                       const std::string& message) {
        const CliResult result = Run(words);
        EXPECT_EQ(result.Status, status) << ::testing::PrintToString(words);
        EXPECT_NE(result.Err.find(message), std::string::npos) << result.Err;
        EXPECT_EQ(result.Out, "");
    }
};

class ExportCommand : public SpreadsheetCommands {};
class CellsCommand : public SpreadsheetCommands {};

// Whoever writes files by commands alone never closes the statement.
TEST_F(SpreadsheetCommands, WhatAKilledCommandLeftGoesWithTheNextOne) {
    const std::string crf = NewCrf();
    fs::create_directory(File("out"));
    const auto left = [&] {
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator(File("out")))
            count += IsScratchName(entry.path().filename().string()) ? 1 : 0;
        return count;
    };
    CliSetting killed;
    killed.Faults = FaultPlan{File("out"), 1, -1, "rename", File("report")};
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"--quiet", "export", crf, File("out/a.xlsx"), "A"},
             {"cells", crf, File("out/a.csv")},
             {"cells", crf, File("out/form.xlsx"), "--template"},
             {"diff", crf, crf, "A", "--out", File("out/d.csv")},
             {"--quiet", "print", crf, "A", "--pdf", File("out/a.pdf")}}) {
        EXPECT_EQ(Run(words, killed).Status, 1009) << words[1];
        EXPECT_EQ(left(), 1U) << words[1];
        EXPECT_EQ(Run(words).Status, 0) << words[1];
        EXPECT_EQ(left(), 0U) << words[1];
    }
}

TEST_F(ExportCommand, WritesAWorkbookAndNamesIt) {
    const std::string crf = NewCrf();
    const std::string bytes = ContentOf(crf);
    const std::string out = File("out.xlsx");
    EXPECT_EQ(Do({"export", crf, out}), out + "\n");
    const Book book(out);
    EXPECT_EQ(book.Cells("A").at({4, 0}).Cached.Text,
              "Worksheet A: Reclassification and adjustment of trial balance of expenses");
    EXPECT_NE(book.Cells("A8").size(), 0u);
    EXPECT_EQ(ContentOf(crf), bytes);
}

TEST_F(ExportCommand, TakesWorksheetsInAnyCaseAndPlainValues) {
    const std::string crf = NewCrf();
    Do({"--quiet", "calc", crf});
    const std::string out = File("out.xlsx");
    Do({"export", crf, out, "g1", "CCs", "A8", "a8", "--values"});
    const Book book(out);
    EXPECT_EQ(book.Sheets(), (std::vector<std::string>{"A8", "G1", "CostCenters"}));
    for (const auto& [address, cell] : book.Cells("A8")) EXPECT_EQ(cell.Formula, "");
}

TEST_F(ExportCommand, RefusesWhatIsNoWorksheet) {
    ExpectRefused({"export", NewCrf(), File("out.xlsx"), "A", "X9"}, 2, "X9 is no worksheet");
    EXPECT_FALSE(fs::exists(File("out.xlsx")));
}

TEST_F(ExportCommand, RefusesAnotherEnding) {
    const std::string crf = NewCrf();
    for (const char* name : {"out.xls", "out.ods", "out.csv", "out"}) {
        ExpectRefused({"export", crf, File(name)}, 2, "a workbook is written to .xlsx");
        EXPECT_FALSE(fs::exists(File(name)));
    }
    EXPECT_EQ(Run({"export", crf, File("OUT.XLSX")}).Status, 0);
}

TEST_F(SpreadsheetCommands, KeepAFileThatStandsThereUnlessForced) {
    const std::string crf = NewCrf();
    for (const std::string name : {"a.xlsx", "b.txt", "c.csv", "d.xlsx"}) {
        const std::string out = TextFile(name, "somebody's");
        std::vector<std::string> words = {name == "a.xlsx" ? "export" : "cells", crf, out};
        if (name == "d.xlsx") words.emplace_back("--template");
        ExpectRefused(words, 2, out + " is there already; --force replaces it");
        EXPECT_EQ(ContentOf(out), "somebody's");
        words.emplace_back("--force");
        EXPECT_EQ(Run(words).Status, 0) << name;
        EXPECT_NE(ContentOf(out), "somebody's");
        words.pop_back();
        ExpectRefused(words, 2, "--force replaces it");
    }
}

TEST_F(SpreadsheetCommands, NeverReplaceACostReportFile) {
    const std::string crf = NewCrf();
    const std::string other = NewCrf("Other.CRF");
    const std::string bytes = ContentOf(other);
    fs::create_symlink(crf, File("own.xlsx"));
    fs::create_symlink(other, File("other.xlsx"));
    for (const char* command : {"export", "cells"}) {
        ExpectRefused({command, crf, File("own.xlsx"), "--force"}, 2,
                      "This is the open Cost Report File");
        ExpectRefused({command, crf, File("other.xlsx"), "--force"}, 2,
                      "This is a Cost Report File");
    }
    ExpectRefused({"cells", crf, other, "--force"}, 2, "This is a Cost Report File");
    EXPECT_EQ(ContentOf(other), bytes);
    EXPECT_EQ(Run({"info", crf}).Status, 0);
}

TEST_F(SpreadsheetCommands, RefuseAMissingFolderAPipeAndAFileThatIsNoCrf) {
    const std::string crf = NewCrf();
    ASSERT_EQ(mkfifo(File("pipe.xlsx").c_str(), 0600), 0);
    const std::string text = TextFile("x.CRF", "no database");
    for (const char* command : {"export", "cells"}) {
        ExpectRefused({command, crf, File("nowhere/out.xlsx")}, 4, "nowhere/out.xlsx");
        ExpectRefused({command, crf, File("pipe.xlsx")}, 4, "is no file");
        ExpectRefused({command, text, File("out.xlsx")}, 4, "x.CRF");
        ExpectRefused({command, File("none.CRF"), File("out.xlsx")}, 4, "none.CRF");
        EXPECT_EQ(Run({command, crf}).Status, 1) << "without a file to write";
        EXPECT_EQ(Run({command}).Status, 1);
    }
    EXPECT_FALSE(fs::exists(File("out.xlsx")));
}

TEST_F(SpreadsheetCommands, AFullDiskIsToldAndTheFormerFileStays) {
    const std::string crf = NewCrf();
    CliSetting full;
    full.FileLimit = 1000;
    for (const std::string name : {"a.xlsx", "b.txt", "c.csv"}) {
        const std::string out = TextFile(name, "somebody's");
        const CliResult result =
            Run({name == "a.xlsx" ? "export" : "cells", crf, out, "--force"}, full);
        EXPECT_EQ(result.Status, 4) << name << result.Err;
        EXPECT_NE(result.Err.find(out), std::string::npos) << result.Err;
        EXPECT_EQ(ContentOf(out), "somebody's") << name;
    }
}

TEST_F(CellsCommand, WritesTextCsvOrAWorkbookByTheName) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "150"});
    EXPECT_EQ(Do({"cells", crf, File("c.txt")}), "");
    EXPECT_NE(ContentOf(File("c.txt")).find("A\t8\t1\t150\n"), std::string::npos);
    EXPECT_EQ(Do({"cells", crf, File("c.csv")}), "");
    EXPECT_NE(ContentOf(File("c.csv")).find("A,8,1,150\r\n"), std::string::npos);
    EXPECT_EQ(Do({"cells", crf, File("c.xlsx")}), "");
    EXPECT_EQ(Book(File("c.xlsx")).Sheets(), std::vector<std::string>{"Cells"});
    EXPECT_EQ(Do({"cells", crf, File("t.xlsx"), "--template"}), "");
    EXPECT_GT(Book(File("t.xlsx")).Sheets().size(), 10u);
}

TEST_F(CellsCommand, NamesWhatCannotComeAlongAndEndsWithTwo) {
    const std::string crf = NewCrf();
    Do({"header", crf, "1", "Draft"});
    const CliResult result = Run({"cells", crf, File("c.txt")});
    EXPECT_EQ(result.Status, 2);
    EXPECT_EQ(result.Out, "HeaderLines\t1\tLineText\tDraft\tthe import has no place for it\n");
    EXPECT_TRUE(ContentOf(File("c.txt")).starts_with("CostCenter\t1\t0\t")) << "the rest is there";
    const auto json = Run({"cells", crf, File("c.csv"), "--format", "json"}).Json();
    ASSERT_EQ(json.size(), 1u);
    EXPECT_EQ(json[0]["item"], "HeaderLines");
    EXPECT_EQ(json[0]["line"], 1);
    EXPECT_EQ(json[0]["value"], "Draft");
    EXPECT_EQ(json[0]["reason"], "the import has no place for it");
}

TEST_F(CellsCommand, RefusesTheNamesOfOtherWorkbooksAndATemplateThatIsNone) {
    const std::string crf = NewCrf();
    for (const char* name : {"c.ods", "c.xlsm", "c.xls"}) {
        ExpectRefused({"cells", crf, File(name)}, 2, "cells are written to .txt, .csv or .xlsx");
        EXPECT_FALSE(fs::exists(File(name)));
    }
    ExpectRefused({"cells", crf, File("t.csv"), "--template"}, 2, "a workbook is written to .xlsx");
    EXPECT_FALSE(fs::exists(File("t.csv")));
}

/// The road of a statement kept as text: cells, new, import, calc.
TEST_F(CellsCommand, TheSampleComesBackFromEachForm) {
    const std::string crf = SampleCrf();
    for (const char* name : {"c.txt", "c.csv", "c.xlsx"}) {
        EXPECT_EQ(Do({"cells", crf, File(name)}), "") << name;
        const std::string again = File("Again.CRF");
        Do({"--quiet", "new", again, "--number", "14-9012", "--start", "1/1/2023", "--end",
            "12/31/2023", "--name", "Northfield Health System", "--force"});
        EXPECT_EQ(Run({"--quiet", "import", again, File(name)}).Status, 0) << name;
        Do({"--quiet", "calc", again});
        EXPECT_EQ(Do({"diff", crf, again}), "No differences.\n") << name;
    }
}

}  // namespace
}  // namespace zolmara::test
