// Worksheets taken over whole from another file.

#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "bench/LargeStatement.h"
#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "import/ImportCrfTools.h"
#include "store/harness/Faults.h"
#include "structure/Shape.h"
#include "structure/modAddS2.h"
#include "support/Paths.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class ImportWorksheetsTest : public ImportCrfTest {
protected:
    std::vector<std::string> Log() {
        std::vector<std::string> texts;
        for (const auto& message : ImportMessages())
            texts.push_back(message.Severity + ": " + message.Text);
        return texts;
    }
    static std::vector<std::string> Offered() {
        std::vector<std::string> texts;
        for (const auto& entry : ImportableWorksheets()) texts.push_back(entry.Text);
        return texts;
    }
    static bool Has(const std::vector<std::string>& texts, const std::string& text) {
        return std::ranges::find(texts, text) != texts.end();
    }
};

// --- The list ----------------------------------------------------------------------------------

TEST_F(ImportWorksheetsTest, S1p1IsNotOfferedAndS1p2Is) {
    OpenSource();
    const auto offered = Offered();
    EXPECT_EQ(offered.size(), 45u);
    EXPECT_EQ(offered.front(), "A (A)");
    EXPECT_EQ(offered[1], "A-6 (A6)");
    EXPECT_TRUE(Has(offered, "S-1  Part-2 (S1p2)"));
    EXPECT_FALSE(Has(offered, "S-1  Part-1 (S1p1)"));
    EXPECT_FALSE(Has(offered, " (Log)"));
}

TEST_F(ImportWorksheetsTest, AWorksheetThatOnlyOneSideHasIsNotOffered) {
    InSource([] {
        gDB.Execute("INSERT INTO Worksheets (Item,Calc_Lvl,ItemName) VALUES ('Z9',5,'Z-9');");
        gDB.Execute("DELETE FROM Worksheets WHERE Item='G1';");
    });
    OpenSource();
    const auto offered = Offered();
    EXPECT_FALSE(Has(offered, "Z-9 (Z9)"));
    EXPECT_FALSE(Has(offered, "G-1 (G1)"));
    EXPECT_EQ(offered.size(), 44u);
}

// --- Copying -----------------------------------------------------------------------------------

TEST_F(ImportWorksheetsTest, EveryWorksheetComesOverExactly) {
    InSource([] {
        SetCell("A", 9, "Col_1", 0.1 + 0.2);
        SetCell("A", 10, "Col_1", 123456789012345.67);
        SetCell("S1p2", 2, "Col_2", "Ann \"The Axe\" O'Hara");
        SetCell("Sp1", 8, "Col_1", "05/31/2024");
        gDB.Execute("UPDATE S2p1 SET Col_1=? WHERE LineNum=1;", {std::string(255, 'w')});
    });
    const std::string bytes = BytesOf(source_);
    OpenSource();
    const auto entries = ImportableWorksheets();
    EXPECT_EQ(entries.size(), 45u);
    EXPECT_EQ(ImportWorksheets(entries), std::vector<std::string>{});
    for (const auto& entry : entries)
        EXPECT_EQ(TargetRows(entry.Item), SourceRows(entry.Item)) << entry.Item;
    EXPECT_EQ(Cell("S1p1", 4, "Col_3"), Variant());
    EXPECT_EQ(Cell("A", 9, "Col_1").Number(), 0.1 + 0.2);
    CloseImportSource();
    EXPECT_EQ(BytesOf(source_), bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(folderOfSource_), fs::directory_iterator()), 1);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(ImportWorksheetsTest, ATextWithAQuoteIsNoPartOfAStatement) {
    InSource([] { SetCell("S1p2", 1, "Col_2", "\"); DELETE FROM A; --"); });
    EXPECT_EQ(Take({"S1p2"}), 1u);
    EXPECT_EQ(Cell("S1p2", 1, "Col_2"), Variant("\"); DELETE FROM A; --"));
    EXPECT_GT(Rows("A"), 20);
    EXPECT_EQ(Log(), std::vector<std::string>{});
}

TEST_F(ImportWorksheetsTest, EvenTheSeedRowsGo) {
    InSource([] { gDB.Execute("DELETE FROM S1p2 WHERE LineNum>1;"); });
    Take({"S1p2"});
    EXPECT_EQ(Lines("S1p2"), "1");
}

TEST_F(ImportWorksheetsTest, TheTableIsMadeAnewWithItsIndexAndEntry) {
    gDB.Execute("DELETE FROM Worksheets WHERE Item='G';");
    gDB.DeleteTable("G");
    Take({"G"});
    EXPECT_EQ(Cell("G", 1, "Col_1"), Variant(100.0));
    EXPECT_THROW(gDB.Execute("INSERT INTO G (LineNum) VALUES (1);"), StoreError);
    EXPECT_EQ(gDB.Scalar("SELECT Calc_Lvl FROM Worksheets WHERE Item='G';"), Variant(22));
}

TEST_F(ImportWorksheetsTest, ItRunsAsOneCommitAndShowsEachWorksheet) {
    OpenSource();
    const auto commits = gDB.CommitCount();
    std::vector<std::string> shown;
    const std::vector<ImportEntry> entries = {{"A", "A (A)"}, {"G1", "G-1 (G1)"}};
    double last = 0;
    ImportWorksheets(entries, [&](const std::string& text, double part) {
        if (shown.empty() || shown.back() != text) shown.push_back(text);
        EXPECT_GE(part, last);
        last = part;
    });
    EXPECT_EQ(last, 1.0);
    EXPECT_EQ(gDB.CommitCount(), commits + 1);
    EXPECT_EQ(shown, (std::vector<std::string>{"Processing worksheet A (A)",
                                               "Processing worksheet G-1 (G1)"}));
    EXPECT_GE(host.IndexOf("ShowCalcMsg:  Processing worksheet A (A)"), 0);
    EXPECT_EQ(host.Progress, 1.0);
    EXPECT_GE(host.DoEventsCount, 2);
    EXPECT_EQ(host.CalcMsg, "");
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_TRUE(host.MainEnabled);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
    EXPECT_EQ(gLogType, "");
}

TEST_F(ImportWorksheetsTest, OnlyTheImportsOwnLogRowsGo) {
    gDB.Execute("INSERT INTO Log (LogType,Message) VALUES ('I','old');");
    gDB.Execute("INSERT INTO Log (LogType,Message) VALUES ('C','kept');");
    Take({"G"});
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) AS C FROM Log WHERE Message='old';"), Variant(0));
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) AS C FROM Log WHERE Message='kept';"), Variant(1));
}

// --- Columns -----------------------------------------------------------------------------------

TEST_F(ImportWorksheetsTest, AColumnMoreStopsThatWorksheetAndTheOthersComeOver) {
    InSource([] { gDB.AppendField("A6", {.Name = "Col_9", .Type = FieldType::dbDouble}); });
    EXPECT_EQ(Take({"A6", "G"}), 1u);
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Title, "Version Error");
    EXPECT_EQ(host.Boxes[0].Text, "Unable to import worksheet A6 due to column mismatch.");
    EXPECT_EQ(host.Boxes[0].Style, kCritical);
    EXPECT_EQ(Rows("A6"), 0);
    EXPECT_EQ(Cell("G", 1, "Col_1"), Variant(100.0));
}

TEST_F(ImportWorksheetsTest, AColumnLessOrColumnsInAnotherOrderStopIt) {
    InSource([] {
        gDB.DeleteField("A6", "Col_8");
        gDB.Execute("SELECT LineNum, Col_1, Description INTO tblG FROM G;");
        gDB.DeleteTable("G");
        gDB.Execute("SELECT * INTO G FROM tblG;");
        gDB.RenameField("G1", "Col_2", "Col_3");
    });
    EXPECT_EQ(Take({"A6", "G", "G1", "S1p2"}), 1u);
    EXPECT_EQ(host.Texts(),
              (std::vector<std::string>{"Unable to import worksheet A6 due to column mismatch.",
                                        "Unable to import worksheet G due to column mismatch.",
                                        "Unable to import worksheet G1 due to column mismatch."}));
    EXPECT_EQ(Rows("G"), 0);
    EXPECT_EQ(Rows("S1p2"), 5);
}

TEST_F(ImportWorksheetsTest, AMissingTableOfTheSourceIsAMismatchToo) {
    InSource([] { gDB.DeleteTable("G1"); });
    EXPECT_EQ(Take({"G1"}), 0u);
    EXPECT_EQ(host.Texts()[0], "Unable to import worksheet G1 due to column mismatch.");
}

TEST_F(ImportWorksheetsTest, ARowThatCannotBeHeldIsToldByLineAndTheRestComes) {
    gDB.Close();
    RunRawSql(source_,
              "PRAGMA ignore_check_constraints=ON; UPDATE A6 SET Col_5='a lot' WHERE LineNum=2;");
    gDB = DBEngine::OpenDatabase(target_);
    EXPECT_EQ(Take({"A6"}), 1u);
    EXPECT_EQ(Lines("A6"), "1 100");
    ASSERT_EQ(Log().size(), 1u);
    EXPECT_EQ(Log()[0].find("ERROR: Unable to import line 2 of worksheet A6: "), 0u) << Log()[0];
}

TEST_F(ImportWorksheetsTest, AWorksheetThatCannotBeMadeStaysAsItWas) {
    SetCell("Bp1", 51, "CC_100", 5);
    gDB.DeleteTable("S2p1");
    EXPECT_EQ(Take({"Bp1", "G"}), 1u);
    ASSERT_GE(Log().size(), 1u);
    EXPECT_EQ(Log()[0].find("ERROR: Error: The following error was returned when trying to rebuild "
                            "table Bp1"),
              0u)
        << Log()[0];
    EXPECT_EQ(Cell("Bp1", 51, "CC_100"), Variant(5.0));
}

// --- S-2 and its schedules ---------------------------------------------------------------------

TEST_F(ImportWorksheetsTest, S2WithoutItsSchedulesIsHeldAgainstThem) {
    // The open CRF's schedules have no components at all.
    EXPECT_EQ(Take({"S2p1"}), 1u);
    const std::string all = "Bp1, B1p1, Cp1, C1p1, Dp1, D1p1, E1p1, Fp1, F1p1, F2p1.";
    EXPECT_EQ(Log(),
              (std::vector<std::string>{
                  "Warning: Line 1 of S2p1, \"General Hospital\" (14-0001), is missing from " + all,
                  "Warning: Line 2 of S2p1, \"Clinic\" (14-0002), is missing from " + all}));
}

TEST_F(ImportWorksheetsTest, SchedulesWithoutS2AreHeldAgainstIt) {
    AddS2Line(Currency(1), 1);
    RenameS2Line(Currency(1), 1, "Specific Hospital", "14-0001");
    EXPECT_EQ(Take({"Bp1", "Fp1"}), 2u);
    EXPECT_EQ(Log(), (std::vector<std::string>{
                         "Warning: Line 1 of S2p1, \"Specific Hospital\" (14-0001), is \"General "
                         "Hospital\" (14-0001) on Bp1, Fp1.",
                         "Warning: Line 2 of Bp1, Fp1 is not on S2p1."}));
}

TEST_F(ImportWorksheetsTest, OtherPartsAreNotLookedAt) {
    AddS2Line(Currency(1), 2);
    gDB.Execute("DELETE FROM Bp2 WHERE LineNum=1;");
    Take({"Bp3", "G", "A"});
    // Only line 1 of part 3 comes without its line of S-2.
    EXPECT_EQ(Log(), std::vector<std::string>{"Warning: Line 1 of Bp3 is not on S2p3."});
}

TEST_F(ImportWorksheetsTest, TogetherTheyAgree) {
    EXPECT_EQ(
        Take({"S2p2", "Bp2", "B1p2", "Cp2", "C1p2", "Dp2", "D1p2", "E1p2", "Fp2", "F1p2", "F2p2"}),
        11u);
    EXPECT_EQ(Log(), std::vector<std::string>{});
}

// --- Last year's figures -----------------------------------------------------------------------

/// Every cell of every worksheet but S-1 Part I, after a calculation.
std::vector<std::string> Figures() {
    std::vector<std::string> dump;
    for (const auto& line : DumpCrf()) dump.push_back(line);
    return dump;
}

void TakeAll(const std::string& source, const std::string& target) {
    gDB = DBEngine::OpenDatabase(target);
    SetCrfPath(target);
    ASSERT_EQ(OpenImportSource(source), SourceResult::Open);
    const auto entries = ImportableWorksheets();
    EXPECT_EQ(entries.size(), 45u);
    EXPECT_EQ(ImportWorksheets(entries), std::vector<std::string>{});
    EXPECT_TRUE(ImportMessages().empty());
    CloseImportSource();
    Calc_All();
}

void ExpectSameFigures(const std::string& source, const std::string& target) {
    TakeAll(source, target);
    gDB.Execute("DELETE FROM Error;");
    const auto now = Figures();
    gDB.Close();
    gDB = DBEngine::OpenDatabase(source);
    gDB.Execute("DELETE FROM Error;");
    const auto then = Figures();
    ASSERT_EQ(now.size(), then.size());
    for (std::size_t i = 0; i < now.size(); ++i) EXPECT_EQ(now[i], then[i]);
}

class LastYearsFigures : public SessionTest {
protected:
    /// A calculated statement from an import file, and a file of its structure without anything
    /// keyed but S-1.
    void MakePair(const std::string& import) {
        CreateCrf(source_, {"287", "14-9012", "1/1/2023", "12/31/2023", "Northfield"});
        gDB.Execute("UPDATE Master SET BuildDate=?;", {DateTime(2024, 1, 1)});
        ImportAsciiFile(import);
        Calc_All();
        gDB.Execute("DELETE FROM ImportASCII;");
        DropCrf();
        fs::copy_file(source_, target_);
        gDB = DBEngine::OpenDatabase(target_);
        RunBatch(gDB, [] {
            for (const Worksheet& sheet : AllWorksheets())
                if (sheet.Item != "S1p1") BuildWorksheet(sheet.Item);
        });
        gDB.Close();
    }
    std::string source_ = folder.File("Last.CRF");
    std::string target_ = folder.File("This.CRF");
};

TEST_F(LastYearsFigures, ComeBackOnTheSample) {
    MakePair(std::string(kSamples) + "/northfield.txt");
    ExpectSameFigures(source_, target_);
}

TEST_F(LastYearsFigures, ComeBackOnALargeStatement) {
    const std::string import = folder.File("large.txt");
    std::ofstream text(import);
    bench::WriteLargeStatement(text, {.Components = 300, .CostCenters = 40});
    text.close();
    MakePair(import);
    ExpectSameFigures(source_, target_);
}

// --- A program that dies -----------------------------------------------------------------------

TEST_F(ImportWorksheetsTest, DyingBetweenAnyTwoWorksheetsLeavesTheFileAsItWas) {
    const auto before = DumpCrf();
    gDB.Close();
    for (const int nth : {1, 2, 7, 20, 44, 90, 135}) {
        const auto end = RunInChild(
            [&] {
                gDB = DBEngine::OpenDatabase(target_);
                OpenImportSource(source_);
                host.OnDoEvents = [count = 0, nth]() mutable {
                    if (++count == nth) raise(SIGKILL);
                };
            },
            [] { ImportWorksheets(ImportableWorksheets()); });
        SCOPED_TRACE(nth);
        ASSERT_TRUE(end.Killed);
        EXPECT_FALSE(DBEngine::RepairDatabase(target_).WasDamaged);
        gDB = DBEngine::OpenDatabase(target_);
        EXPECT_EQ(DumpCrf(), before);
        gDB.Close();
    }
}

TEST_F(ImportWorksheetsTest, DyingAtAnyCallLeavesOldOrNew) {
    const auto before = DumpCrf();
    gDB.Close();
    const std::string below = folder.Path().string();
    fs::copy_file(target_, folder.File("Base.CRF"));
    const auto import = [] { ImportWorksheets(ImportableWorksheets()); };
    const auto open = [&](int call) {
        gDB = DBEngine::OpenDatabase(target_);
        OpenImportSource(source_);
        FaultsArm(below.c_str(), call, -1, "");
    };
    RunInChild([&] { open(0); },
               [&] {
                   import();
                   const int calls = FaultsDisarm();
                   std::ofstream(folder.File("calls")) << calls;
               });
    int calls = 0;
    std::ifstream(folder.File("calls")) >> calls;
    ASSERT_GT(calls, 20);
    gDB = DBEngine::OpenDatabase(target_);
    const auto after = DumpCrf();
    gDB.Close();
    for (int round = 0; round < 20; ++round) {
        // The last calls are those of the commit.
        const int call = round < 10 ? 1 + calls * round / 10 : calls - (round - 10);
        SCOPED_TRACE(call);
        fs::copy_file(folder.File("Base.CRF"), target_, fs::copy_options::overwrite_existing);
        EXPECT_TRUE(RunInChild([&] { open(call); }, import).Killed);
        gDB = DBEngine::OpenDatabase(target_);
        const auto found = DumpCrf();
        gDB.Close();
        EXPECT_TRUE(found == before || found == after);
        EXPECT_FALSE(fs::exists(target_ + "-journal"));
    }
}

}  // namespace
}  // namespace zolmara::test
